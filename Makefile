# make run      installs what is missing, builds, and opens an example pattern (FILE=... another one)
# make test     the same, then runs all tests under a virtual display
# make sanitize the tests under AddressSanitizer and UndefinedBehaviorSanitizer
# make clang    builds everything with the other compiler, which warns of other things
# make package  a Debian package, build-package/*.deb; make check-package tries it in a clean system of its own
# make bench, fuzz (SECONDS_EACH=60), format, format-check, install (PREFIX=/usr/local), clean

jobs := $(shell nproc)
FILE ?=
SECONDS_EACH ?= 60
PREFIX ?= /usr/local
sources = $(shell git ls-files '*.cpp' '*.hpp' 2>/dev/null || find src tests bench fuzz -name '*.[ch]pp')
configure = cmake -S . -G Ninja -DCMAKE_CXX_COMPILER_LAUNCHER=ccache

.PHONY: all run test clang sanitize bench fuzz format format-check install package check-package clean
all:
	@scripts/packages.sh run
	@$(configure) -B build -DVANTRELO_TESTS=OFF -DCMAKE_INSTALL_PREFIX=$(PREFIX) >build.log 2>&1 || { cat build.log; exit 1; }
	@cmake --build build -j $(jobs)

run: all
	@scripts/run.sh build $(if $(FILE),"$(FILE)")

test:
	@scripts/packages.sh run test
	@$(configure) -B build-test -DVANTRELO_TESTS=ON >build.log 2>&1 || { cat build.log; exit 1; }
	@cmake --build build-test -j $(jobs)
	@scripts/with_display.sh ctest --test-dir build-test -j $(jobs) --output-on-failure

clang:
	@scripts/packages.sh run test
	@$(configure) -B build-clang -DCMAKE_CXX_COMPILER=clang++-14 -DVANTRELO_TESTS=ON >build.log 2>&1 || { cat build.log; exit 1; }
	@cmake --build build-clang -j $(jobs)

# The leak checker stops all threads of a program to look, and gives up where one is just ending: a test that failed is run once more.
sanitize:
	@scripts/packages.sh run test
	@$(configure) -B build-sanitize -DVANTRELO_TESTS=ON -DVANTRELO_SANITIZE=ON -DCMAKE_BUILD_TYPE=Debug -DCMAKE_CXX_FLAGS=-O1 >build.log 2>&1 \
		|| { cat build.log; exit 1; }
	@cmake --build build-sanitize -j $(jobs)
	@ASAN_OPTIONS=detect_leaks=1:allocator_may_return_null=1 LSAN_OPTIONS=suppressions=$(CURDIR)/scripts/lsan.supp:print_suppressions=0 \
		UBSAN_OPTIONS=print_stacktrace=1 scripts/with_display.sh ctest --test-dir build-sanitize -j $(jobs) --output-on-failure --repeat until-pass:2

bench:
	@scripts/packages.sh run bench
	@$(configure) -B build-bench -DVANTRELO_TESTS=OFF -DVANTRELO_BENCH=ON >build.log 2>&1 || { cat build.log; exit 1; }
	@cmake --build build-bench -j $(jobs)
	@scripts/with_display.sh sh -c 'for program in build-bench/bench/bench_*; do \
		[ -x $$program ] && [ -f $$program ] && QT_QPA_PLATFORM=offscreen $$program || exit 1; done'

fuzz:
	@scripts/packages.sh run fuzz
	@cmake -S . -G Ninja -B build-fuzz -DCMAKE_CXX_COMPILER=clang++-14 -DVANTRELO_TESTS=OFF -DVANTRELO_FUZZ=ON >build.log 2>&1 || { cat build.log; exit 1; }
	@cmake --build build-fuzz -j $(jobs) --target fuzz_targets
	@for program in build-fuzz/fuzz/fuzz_*; do [ -x $$program ] && [ -f $$program ] || continue; \
		corpus=build-fuzz/corpus/$$(basename $$program); mkdir -p $$corpus; \
		LSAN_OPTIONS=suppressions=$(CURDIR)/scripts/lsan.supp:print_suppressions=0 \
		$$program -max_total_time=$(SECONDS_EACH) -timeout=10 -rss_limit_mb=2048 -print_final_stats=1 -artifact_prefix=build-fuzz/ $$corpus tests/data/patterns || exit 1; done

format:
	@scripts/packages.sh test
	@clang-format-14 -i $(sources)

format-check:
	@scripts/packages.sh test
	@clang-format-14 --dry-run --Werror $(sources)

install: all
	@cmake --install build

package:
	@scripts/packages.sh run package
	@$(configure) -B build-package -DVANTRELO_TESTS=OFF -DCMAKE_INSTALL_PREFIX=/usr >build.log 2>&1 || { cat build.log; exit 1; }
	@cmake --build build-package -j $(jobs)
	@cd build-package && rm -f *.deb && umask 022 && cpack -G DEB >/dev/null && ls $$PWD/*.deb

check-package: package
	@scripts/packages.sh check-package
	@scripts/check_package.sh build-package/vantrelo_*.deb

clean:
	@rm -rf build build-* build.log
