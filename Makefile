# SPDX-License-Identifier: MIT
# Front door: every target installs missing dependencies first.
JOBS ?= 2
CMAKE_FLAGS ?=

.PHONY: all deps deps-m32 deps-fuzz build demo test check check-asan check-m32 bench fuzz format
.PHONY: clean deps-armhf check-armhf check-consumer deps-deb deb deb-symbols docs
.PHONY: deps-abi check-abi abi-baseline deps-coverage coverage release-armhf

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

# Builds only the library and the tool (their log in build/demo-build.log), then the summary.
demo: deps
	@echo "demo: building the library and the tool (log: build/demo-build.log)"
	@mkdir -p build
	@{ cmake -S . -B build -DCMAKE_BUILD_TYPE=RelWithDebInfo $(CMAKE_FLAGS) && \
	  cmake --build build -j $(JOBS) --target jsoncfgplus_tool; } >build/demo-build.log 2>&1 || \
	  { tail -n 40 build/demo-build.log; exit 1; }
	./build/jsoncfgplus summary examples/ap-config.json --signature-dir examples/signatures --icon-dir examples/icons
	@echo "demo: every entry: ./build/jsoncfgplus dump examples/ap-config.json --signature-dir examples/signatures --icon-dir examples/icons"

test: build
	cd build && ctest --output-on-failure -j $(JOBS)

check: check-asan check-m32 check-armhf check-consumer deb check-abi coverage docs

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

DEB_CONFIGURE = cmake -S . -B build-deb -DCMAKE_BUILD_TYPE=RelWithDebInfo \
	-DCMAKE_INSTALL_PREFIX=/usr -DJCP_PACKAGE_DEB=ON -DJCP_BUILD_TESTS=OFF -DJCP_BUILD_BENCH=OFF

# Debian packages of the library, its development files and the tool, checked by lintian.
deb: deps-deb
	$(DEB_CONFIGURE) $(CMAKE_FLAGS)
	cmake --build build-deb -j $(JOBS)
	cd build-deb && cpack
	scripts/check-deb.sh build-deb

# The API reference of the installed headers, in build/docs/html; any Doxygen warning fails it.
docs:
	@scripts/install-deps.sh docs
	mkdir -p build/docs
	doxygen docs/Doxyfile

# Rewrites cmake/deb/libjsoncfgplus1.symbols from the library as packaged; after a change of the
# exports, run it and commit the file.
deb-symbols: deps-deb
	$(DEB_CONFIGURE) $(CMAKE_FLAGS)
	cmake --build build-deb -j $(JOBS) --target jsoncfgplus
	scripts/deb-symbols.sh build-deb/libjsoncfgplus.so.$(shell sed -n 's/^#define JSONCFGPLUS_VERSION_STRING "\(.*\)"$$/\1/p' src/api/version.h)

deps-abi:
	@scripts/install-deps.sh abi

# The shared library's ABI against the committed baseline abi/libjsoncfgplus.so.1.abi: an
# incompatible change fails, an addition passes. After an intended incompatible change, move
# the major version (src/api/version.h), then regenerate the baseline with make abi-baseline.
check-abi: deps-abi build
	scripts/abi.sh check build/libjsoncfgplus.so

abi-baseline: deps-abi build
	scripts/abi.sh baseline build/libjsoncfgplus.so

deps-coverage:
	@scripts/install-deps.sh coverage

# Line coverage of src/ by the tests; fails below COVERAGE_MIN percent.
COVERAGE_MIN ?= 95
coverage: deps-coverage
	cmake -S . -B build-coverage -DCMAKE_BUILD_TYPE=Debug -DJCP_COVERAGE=ON \
	  -DJCP_BUILD_BENCH=OFF $(CMAKE_FLAGS)
	cmake --build build-coverage -j $(JOBS)
	find build-coverage -name '*.gcda' -delete
	cd build-coverage && ctest --output-on-failure -j $(JOBS)
	gcovr --root . --filter 'src/' --object-directory build-coverage --print-summary \
	  --fail-under-line $(COVERAGE_MIN) -o build-coverage/coverage.txt
	@tail -n 4 build-coverage/coverage.txt

# The AP's release build: the armhf library and tool at their smallest (MinSizeRel, unused
# sections dropped at link time, stripped), with their sizes.
release-armhf: deps-armhf
	cmake -S . -B build-release-armhf -DCMAKE_BUILD_TYPE=MinSizeRel -DJCP_GC_SECTIONS=ON \
	  -DJCP_BUILD_TESTS=OFF -DJCP_BUILD_BENCH=OFF \
	  -DCMAKE_TOOLCHAIN_FILE=cmake/armhf-toolchain.cmake $(CMAKE_FLAGS)
	cmake --build build-release-armhf -j $(JOBS) --target jsoncfgplus jsoncfgplus_tool
	arm-linux-gnueabihf-strip --strip-unneeded build-release-armhf/libjsoncfgplus.so.*.*.*
	arm-linux-gnueabihf-strip build-release-armhf/jsoncfgplus
	@cd build-release-armhf && ls -l libjsoncfgplus.so.*.*.* jsoncfgplus | \
	  awk '{ printf "release-armhf: %-28s %8d bytes (%d KB)\n", $$9, $$5, ($$5 + 1023) / 1024 }'

bench: build
	./build/bench/jsoncfgplus_bench

# Runs every fuzz target for SECONDS seconds over the committed corpus; what it finds is kept
# in build-fuzz/corpus, crashes in build-fuzz/artifacts (copy them to fuzz/crashes/).
SECONDS ?= 60
FUZZ_TARGETS = parse inspect addr debug_cfg lint
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
	rm -rf build build-asan build-m32 build-armhf build-deb build-fuzz build-coverage \
	  build-release-armhf
