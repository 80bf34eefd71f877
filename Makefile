# Quick start: `make run` and `make test`. Both install missing Debian
# packages first (scripts/install-deps), then configure and build.

BUILD      ?= build
ASAN_BUILD ?= build-asan
JOBS       ?= $(shell nproc)
EXAMPLE    ?= examples/demo.plax

TRIAL_BUILD ?= build-trial

# Compilations go through ccache when it is installed: a rebuild, or a build
# in a fresh clone (.ci/run sets CCACHE_BASEDIR), reuses earlier results.
CCACHE      := $(shell command -v ccache 2>/dev/null)
CMAKE_FLAGS ?= $(if $(CCACHE),-DCMAKE_CXX_COMPILER_LAUNCHER=ccache -DCMAKE_C_COMPILER_LAUNCHER=ccache)

# Every test is bounded: each has a CTest TIMEOUT (tests/CMakeLists.txt), and
# --timeout bounds any test added without one.
CTEST_FLAGS ?= --output-on-failure --timeout 120 -j $(JOBS)

FUZZ_BUILD   ?= build-fuzz
FUZZ_SECONDS ?= 60
FUZZ_TARGETS ?= scenereader rawinforeader preprocessor export decomposition runtimereader

PREFIX     ?= /usr/local

.PHONY: all deps build run test test-sanitize test-trial bench fuzz clean install package

all: build

deps:
	@scripts/install-deps

$(BUILD)/CMakeCache.txt: | deps
	cmake -S . -B $(BUILD) -DCMAKE_BUILD_TYPE=RelWithDebInfo $(CMAKE_FLAGS)

build: deps $(BUILD)/CMakeCache.txt
	cmake --build $(BUILD) -j $(JOBS)

# Opens the editor with the example scene when a display is available (in
# $(BUILD), whose config/ is a copy of the project's); otherwise runs the
# batch tool on the example and writes its results into $(BUILD).
run: build
	@if [ -n "$$DISPLAY" ] || [ -n "$$WAYLAND_DISPLAY" ]; then \
	  cd $(BUILD) && ./plax "$(abspath $(EXAMPLE))"; \
	else \
	  echo "No display found: running the batch tool on $(EXAMPLE)"; \
	  ./$(BUILD)/plax -v -i $(EXAMPLE) -r $(BUILD)/demo-resaved.plax -e $(BUILD)/demo-rawinfo.json && \
	  echo "Wrote $(BUILD)/demo-resaved.plax and $(BUILD)/demo-rawinfo.json"; \
	fi

# Core tests need no display; the interface tests start their own Xvfb
# through xvfb-run and draw with Mesa (see tests/CMakeLists.txt). The fuzz
# corpora are replayed as tests too (tests/fuzz).
test: build
	cd $(BUILD) && QT_QPA_PLATFORM=offscreen ctest $(CTEST_FLAGS)

# The same suite, fuzz replays included, built with the address and
# undefined-behaviour sanitizers, with leak checking on. The leaks that
# tests/lsan-suppressions.txt names are the libraries' own, not ours.
# LeakSanitizer's own tracer now and then crashes ("Tracer caught signal
# 11") when Mesa's threads end while it stops the world at exit, failing a
# test that passed: a failing test is run once more, and a real fault, which
# fails again, still fails the step.
test-sanitize: deps
	cmake -S . -B $(ASAN_BUILD) -DCMAKE_BUILD_TYPE=Debug -DPLAX_SANITIZE=ON -DPLAX_BUILD_BENCH=OFF $(CMAKE_FLAGS)
	cmake --build $(ASAN_BUILD) -j $(JOBS)
	cd $(ASAN_BUILD) && QT_QPA_PLATFORM=offscreen ASAN_OPTIONS=detect_leaks=1 \
	  LSAN_OPTIONS=suppressions=$(CURDIR)/tests/lsan-suppressions.txt:print_suppressions=0 \
	  ctest $(CTEST_FLAGS) --repeat until-pass:2

# The restricted edition (PLAX_TRIAL=ON): plax and the tests of what that
# edition refuses and says (tests/app/edition*_test.cpp), nothing else.
# Unoptimised, which builds in less than half the time.
test-trial: deps
	cmake -S . -B $(TRIAL_BUILD) -DCMAKE_BUILD_TYPE=Debug -DPLAX_TRIAL=ON -DPLAX_BUILD_BENCH=OFF $(CMAKE_FLAGS)
	cmake --build $(TRIAL_BUILD) -j $(JOBS) --target plax app_edition_tests app_edition_gui_tests
	cd $(TRIAL_BUILD) && QT_QPA_PLATFORM=offscreen ctest $(CTEST_FLAGS) -R '^app_edition'

bench: build
	./$(BUILD)/bench/plax-bench
	@if [ -n "$$DISPLAY" ]; then ./$(BUILD)/bench/plax-render-bench; \
	else xvfb-run -a -s "-screen 0 1600x1000x24" ./$(BUILD)/bench/plax-render-bench; fi

# Builds the libFuzzer targets with clang and runs each for FUZZ_SECONDS on
# a copy of its seed corpus (tests/fuzz/corpus/<target>); new inputs stay in
# $(FUZZ_BUILD)/corpus. A finding stops the run; its input is saved as
# $(FUZZ_BUILD)/<target>-crash-* and copied into the target's corpus as
# crash-*, where `make test` replays it from then on (commit it with the fix).
fuzz: deps
	CC=clang CXX=clang++ cmake -S . -B $(FUZZ_BUILD) -DCMAKE_BUILD_TYPE=RelWithDebInfo -DPLAX_FUZZ=ON \
	  -DPLAX_BUILD_TESTS=OFF -DPLAX_BUILD_BENCH=OFF
	cmake --build $(FUZZ_BUILD) --target plax-fuzzers -j $(JOBS)
	@for t in $(FUZZ_TARGETS); do \
	  mkdir -p $(FUZZ_BUILD)/corpus/$$t && \
	  echo "== fuzz-$$t for $(FUZZ_SECONDS) s" && \
	  ASAN_OPTIONS=detect_leaks=0 UBSAN_OPTIONS=print_stacktrace=1 QT_QPA_PLATFORM=offscreen $(FUZZ_BUILD)/tests/fuzz/fuzz-$$t \
	    -max_total_time=$(FUZZ_SECONDS) -timeout=30 -rss_limit_mb=4096 -print_final_stats=1 \
	    -artifact_prefix=$(FUZZ_BUILD)/$$t- $(FUZZ_BUILD)/corpus/$$t tests/fuzz/corpus/$$t || { \
	    for f in $(FUZZ_BUILD)/$$t-crash-*; do \
	      [ -e "$$f" ] && cp "$$f" tests/fuzz/corpus/$$t/$${f##*/$$t-} && \
	        echo "copied $$f into tests/fuzz/corpus/$$t: make test replays it"; \
	    done; exit 1; }; \
	done

# Installs the program, its default configuration, desktop entry, file type,
# icons, metadata and manual page under PREFIX (DESTDIR is honoured, for
# staging).
install: build
	DESTDIR="$(DESTDIR)" cmake --install $(BUILD) --prefix "$(PREFIX)"

# Builds the Debian package $(BUILD)/plax_VERSION_ARCH.deb.
package: build
	cd $(BUILD) && cpack --config CPackConfig.cmake

clean:
	rm -rf $(BUILD) $(ASAN_BUILD) $(TRIAL_BUILD) $(FUZZ_BUILD)
