# The two commands of a fresh machine: `make demo` and `make test`. Each installs what is
# missing, configures into build/ and builds what it runs.
BUILD ?= build
ASAN_BUILD ?= build-asan
JOBS ?= $(shell nproc)
# ccache, when the machine has it, makes rebuilds in other work trees cheap; CI does without.
LAUNCHER := $(if $(shell command -v ccache),-DCMAKE_CXX_COMPILER_LAUNCHER=ccache)
DEMO_OUT ?= out/demo

.PHONY: deps configure build demo test test-asan valgrind fuzz-smoke bench format clean \
	windows-configure windows test-windows

deps:
	@bash cmake/install-deps.sh

configure: deps
	@cmake -S . -B $(BUILD) -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo $(LAUNCHER) >/dev/null

build: configure
	@cmake --build $(BUILD) -j $(JOBS)

demo: build
	@$(BUILD)/apps/demo/qzgui-demo --headless --out $(DEMO_OUT)

# The valgrind run is left out here: `make valgrind` runs it on its own.
test: build
	@cd $(BUILD) && ctest --output-on-failure -j $(JOBS) -LE valgrind

# The same tests under AddressSanitizer and UBSan, in a folder of their own.
test-asan: deps
	@cmake -S . -B $(ASAN_BUILD) -G Ninja -DCMAKE_BUILD_TYPE=Debug -DQZGUI_SANITIZE=ON \
		-DQZGUI_BUILD_BENCH=OFF $(LAUNCHER) >/dev/null
	@cmake --build $(ASAN_BUILD) -j $(JOBS)
	@cd $(ASAN_BUILD) && ASAN_OPTIONS=detect_leaks=1 UBSAN_OPTIONS=print_stacktrace=1 \
		LSAN_OPTIONS=suppressions=$(CURDIR)/cmake/lsan.supp ctest --output-on-failure -j $(JOBS)

# The demo's headless replay of its recording under valgrind's memcheck (docs/fuzzing.md).
valgrind: configure
	@cmake --build $(BUILD) -j $(JOBS) --target qzgui-demo
	@cd $(BUILD) && ctest --output-on-failure --no-tests=error -L valgrind

# Every fuzz target for FUZZ_SECONDS on its seeds, built with clang under AddressSanitizer and
# UBSan in a folder of its own (docs/fuzzing.md). The corpora it grows stay in that folder.
FUZZ_BUILD ?= build-fuzz
FUZZ_SECONDS ?= 10
fuzz-smoke: deps
	@CC=clang CXX=clang++ cmake -S . -B $(FUZZ_BUILD) -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo \
		-DQZGUI_FUZZ=ON -DQZGUI_SANITIZE=ON -DQZGUI_BUILD_CAIRO=OFF -DQZGUI_BUILD_BENCH=OFF \
		-DQZGUI_BUILD_TESTS=OFF -DQZGUI_BUILD_DEMO=OFF -DQZGUI_BUILD_TOOLS=OFF \
		-DQZGUI_BUILD_SDL=OFF $(LAUNCHER) >/dev/null
	@cmake --build $(FUZZ_BUILD) -j $(JOBS) --target $(addprefix qzgui-fuzz-,$(basename $(notdir $(wildcard fuzz/*.cpp))))
	@bash fuzz/run.sh $(FUZZ_BUILD) $(FUZZ_SECONDS) $(FUZZ_BUILD)/fuzz-smoke

# The Windows build with the mingw-w64 cross compiler, in a folder of its own (docs/platform.md):
# `make windows` builds QzGui.dll and its import library libQzGui.dll.a; `make test-windows`
# builds the tests that run on the null and recording devices and runs them under Wine.
WINDOWS_BUILD ?= build-windows
windows-configure: deps
	@cmake -S . -B $(WINDOWS_BUILD) -G Ninja -DCMAKE_TOOLCHAIN_FILE=cmake/mingw-w64-x86_64.cmake \
		-DCMAKE_BUILD_TYPE=RelWithDebInfo -DQZGUI_BUILD_CAIRO=OFF -DQZGUI_BUILD_SDL=OFF \
		-DQZGUI_BUILD_DEMO=OFF -DQZGUI_BUILD_TOOLS=OFF -DQZGUI_BUILD_BENCH=OFF $(LAUNCHER) >/dev/null

windows: windows-configure
	@cmake --build $(WINDOWS_BUILD) -j $(JOBS) --target QzGui

test-windows: windows-configure
	@cmake --build $(WINDOWS_BUILD) -j $(JOBS)
	@cd $(WINDOWS_BUILD) && ctest --output-on-failure -j $(JOBS)

bench: build
	@for b in $(BUILD)/bench/qzgui-bench-*; do $$b; done

format:
	@git ls-files '*.h' '*.cpp' | xargs clang-format -i

clean:
	@rm -rf $(BUILD) $(ASAN_BUILD) $(WINDOWS_BUILD) out
