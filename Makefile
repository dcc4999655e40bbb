# Front door: every target installs missing dependencies first.
JOBS ?= 2
CMAKE_FLAGS ?=

.PHONY: all deps deps-m32 build demo test check check-asan check-m32 bench format clean

all: build

deps:
	@scripts/install-deps.sh

deps-m32:
	@scripts/install-deps.sh m32

build: deps
	cmake -S . -B build -DCMAKE_BUILD_TYPE=RelWithDebInfo $(CMAKE_FLAGS)
	cmake --build build -j $(JOBS)

demo: build
	./build/jsoncfgplus dump examples/ap-config.json --signature-dir examples/signatures

test: build
	cd build && ctest --output-on-failure -j $(JOBS)

check: check-asan check-m32

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

bench: build
	./build/bench/jsoncfgplus_bench

format:
	clang-format -i $$(git ls-files '*.h' '*.cpp' '*.c')

clean:
	rm -rf build build-asan build-m32
