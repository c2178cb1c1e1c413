# Thin wrapper over the CMake presets: `make run` and `make test` are all a new user needs.
PRESET ?= default
BUILD_DIR := build/$(PRESET)

.PHONY: all deps configure build run test test-asan fuzz bench screenshots docs package format clean

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

# Every window and dialog rendered offscreen into build/screenshots/ (normal and high DPI).
screenshots: build
	@QT_QPA_PLATFORM=offscreen $(BUILD_DIR)/tools/quorvex-screenshots build/screenshots
	@QT_QPA_PLATFORM=offscreen QT_SCALE_FACTOR=2 $(BUILD_DIR)/tools/quorvex-screenshots build/screenshots/hidpi

# The manual (Help > Quorvex Help) as HTML files in build/docs/, its examples computed by the engine.
docs: configure
	@cmake --build --preset $(PRESET) --target quorvex-docs
	@$(BUILD_DIR)/tools/quorvex-docs docs/manual data/builtins.txt build/docs

# A Debian package of the programs, data, menu entry, document type, icon and manual pages.
package: deps
	@cmake --preset package >/dev/null
	@cmake --build --preset package
	@cd build/package && cpack -G DEB

bench: build
	@for b in $(BUILD_DIR)/bench/bench_*; do [ -x "$$b" ] && "$$b"; done; true

format:
	@git ls-files '*.cpp' '*.h' | xargs clang-format -i

clean:
	@rm -rf build
