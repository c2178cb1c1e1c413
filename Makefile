# Thin wrapper over the CMake presets: `make run` and `make test` are all a new user needs.
PRESET ?= default
BUILD_DIR := build/$(PRESET)

.PHONY: all deps configure build run test test-asan fuzz bench format clean

all: build

deps:
	@scripts/install-deps

configure: deps
	@cmake --preset $(PRESET) >/dev/null

build: configure
	@cmake --build --preset $(PRESET)

# Starts the desktop program; without a display the interactive command line takes its place.
run: build
	@if [ -n "$${DISPLAY:-}$${WAYLAND_DISPLAY:-}" ] && [ -x $(BUILD_DIR)/app/quorvex ]; then \
		exec $(BUILD_DIR)/app/quorvex; \
	else \
		exec $(BUILD_DIR)/cli/quorvex-cli; \
	fi

test: build
	@ctest --preset $(PRESET)

test-asan:
	@$(MAKE) --no-print-directory test PRESET=asan

fuzz: deps
	@cmake --preset fuzz >/dev/null
	@cmake --build --preset fuzz

bench: build
	@for b in $(BUILD_DIR)/bench/bench_*; do [ -x "$$b" ] && "$$b"; done; true

format:
	@git ls-files '*.cpp' '*.h' | xargs clang-format -i

clean:
	@rm -rf build
