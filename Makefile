# Nimbrel: the two commands a new machine needs are `make run` and `make test`.
PRESET_DIR := build/default
FUZZ_SECONDS ?= 60
JOBS ?= $(shell nproc)

.PHONY: all deps configure build test run run-headless demo package bench test-asan test-tsan fuzz stress format clean

all: build

deps:
	@./tools/install-deps.sh

configure: deps
	@cmake --preset default >/dev/null

build: configure
	@cmake --build --preset default -j $(JOBS)

test: build
	@ctest --preset default -j $(JOBS)

run: build
	@$(PRESET_DIR)/src/shell/nimbrel

run-headless: build
	@./tools/run-headless-demo.sh

demo: build
	@./tools/run-desktop-demo.sh

# The Debian package, in build/.
package: build
	@cd $(PRESET_DIR) && cpack -B $(CURDIR)/build

bench: configure
	@cmake --build --preset default -j $(JOBS) --target nimbrel_bench nimbrel-library nimbrel-plutil nimbrel-bench-pictures
	@$(PRESET_DIR)/bench/nimbrel_bench
	@./bench/plist_vs_python.sh
	@./bench/startup_vs_reference.sh
	@cmake --build --preset default -j $(JOBS) --target nimbrel nimbrel-library nimbrel-library-media nimbrel-demo-library
	@python3 bench/window/window_start.py $(PRESET_DIR) 20000 5

test-asan: deps
	@cmake --preset asan >/dev/null
	@cmake --build --preset asan -j $(JOBS)
	@ctest --preset asan -j $(JOBS)

test-tsan: deps
	@cmake --preset tsan >/dev/null
	@cmake --build --preset tsan -j $(JOBS)
	@ctest --preset tsan -j $(JOBS)

fuzz: deps
	@cmake --preset fuzz >/dev/null
	@cmake --build --preset fuzz -j $(JOBS)
	@./fuzz/run.sh build/fuzz $(FUZZ_SECONDS)

# The preference-write kill test at 1,000 SIGKILLs (CI runs a shorter one); fails on one torn file.
STRESS_KILLS ?= 1000
stress: configure
	@cmake --build --preset default -j $(JOBS) --target desktop_tests
	@NIMBREL_KILL_ROUNDS=$(STRESS_KILLS) $(PRESET_DIR)/tests/desktop_tests \
	  --gtest_filter='PreferencesFileTest.AKillAtAnyMomentLeavesAWholeFileThatDecodes'

format:
	@git ls-files '*.cpp' '*.h' | xargs clang-format -i

clean:
	@rm -rf build
