# Front door: every target installs missing dependencies first.
JOBS ?= 2
CMAKE_FLAGS ?=

.PHONY: all deps deps-m32 deps-fuzz build demo test check check-asan check-m32 bench fuzz format
.PHONY: clean deps-armhf check-armhf check-consumer deps-deb deb docs

all: build

deps:
	@scripts/install-deps.sh

deps-m32:
	@scripts/install-deps.sh m32

deps-fuzz:
	@scripts/install-deps.sh fuzz

build: deps
	cmake -S . -B build -DCMAKE_BUILD_TYPE=RelWithDebInfo $(CMAKE_FLAGS)
	cmake --build build -j $(JOBS)

demo: build
	./build/jsoncfgplus dump examples/ap-config.json --signature-dir examples/signatures --icon-dir examples/icons

test: build
	cd build && ctest --output-on-failure -j $(JOBS)

check: check-asan check-m32 check-armhf check-consumer deb

check-asan: deps
	cmake -S . -B build-asan -DCMAKE_BUILD_TYPE=Debug -DJCP_SANITIZE=ON $(CMAKE_FLAGS)
	cmake --build build-asan -j $(JOBS)
	cd build-asan && ctest --output-on-failure -j $(JOBS)

check-m32: deps-m32
	PKG_CONFIG_LIBDIR=/usr/lib/i386-linux-gnu/pkgconfig:/usr/share/pkgconfig \
	  cmake -S . -B build-m32 -DCMAKE_BUILD_TYPE=Debug -DJCP_M32=ON \
	  -DCMAKE_C_FLAGS=-m32 -DCMAKE_CXX_FLAGS=-m32 $(CMAKE_FLAGS)
	cmake --build build-m32 -j $(JOBS)
	cd build-m32 && ctest --output-on-failure -j $(JOBS)

deps-armhf:
	@scripts/install-deps.sh armhf

# The AP's own target: cross-built for 32-bit ARM, every test run under qemu-user.
check-armhf: deps-armhf
	cmake -S . -B build-armhf -DCMAKE_BUILD_TYPE=Debug -DJCP_BUILD_BENCH=OFF \
	  -DCMAKE_TOOLCHAIN_FILE=cmake/armhf-toolchain.cmake $(CMAKE_FLAGS)
	cmake --build build-armhf -j $(JOBS)
	cd build-armhf && ctest --output-on-failure -j $(JOBS)

# A firmware build's view: install into a temporary prefix, build C and C++ callers against it.
check-consumer: build
	tests/consumer/check.sh build

deps-deb:
	@scripts/install-deps.sh deb

# Debian packages of the library, its development files and the tool, checked by lintian.
deb: deps-deb
	cmake -S . -B build-deb -DCMAKE_BUILD_TYPE=RelWithDebInfo -DCMAKE_INSTALL_PREFIX=/usr \
	  -DJCP_PACKAGE_DEB=ON -DJCP_BUILD_TESTS=OFF -DJCP_BUILD_BENCH=OFF $(CMAKE_FLAGS)
	cmake --build build-deb -j $(JOBS)
	cd build-deb && cpack
	scripts/check-deb.sh build-deb

# The API reference of the installed headers, in build/docs/html; any Doxygen warning fails it.
docs:
	@scripts/install-deps.sh docs
	mkdir -p build/docs
	doxygen docs/Doxyfile

bench: build
	./build/bench/jsoncfgplus_bench

# Runs every fuzz target for SECONDS seconds over the committed corpus; what it finds is kept
# in build-fuzz/corpus, crashes in build-fuzz/artifacts (copy them to fuzz/crashes/).
SECONDS ?= 60
FUZZ_TARGETS = parse inspect addr debug_cfg
fuzz: deps-fuzz
	CC=clang CXX=clang++ cmake -S . -B build-fuzz -DCMAKE_BUILD_TYPE=RelWithDebInfo \
	  -DJCP_BUILD_FUZZ=ON -DJCP_BUILD_TESTS=OFF -DJCP_BUILD_BENCH=OFF $(CMAKE_FLAGS)
	cmake --build build-fuzz -j $(JOBS)
	mkdir -p build-fuzz/artifacts
	for t in $(FUZZ_TARGETS); do \
	  mkdir -p build-fuzz/corpus/$$t && \
	  ./build-fuzz/fuzz/$${t}_fuzz -max_total_time=$(SECONDS) -close_fd_mask=1 \
	    -dict=fuzz/dict/$$t.dict -artifact_prefix=build-fuzz/artifacts/$$t- \
	    build-fuzz/corpus/$$t fuzz/corpus/$$t || exit 1; \
	done

format:
	clang-format -i $$(git ls-files '*.h' '*.cpp' '*.c')

clean:
	rm -rf build build-asan build-m32 build-armhf build-deb build-fuzz
