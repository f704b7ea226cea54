# The commands of daily work. Each works as the only one on a fresh Debian 12: scripts/setup installs what is
# missing. Everything that is built stays below build/.
#
#   make build    the programs, in build/bin
#   make run      builds, then opens the window on the sample plan (without a display: works on it, leaves pictures);
#                 DRAWING=path takes your own drawing
#   make test     every test, under the address and undefined-behaviour sanitizers
#   make bench    the measurements
#   make fuzz     every fuzz target for FUZZ_SECONDS
#   make lint     formatting, include arrows, clang-tidy
#   make format   formats the sources in place
#   make clean    removes build/

SHELL := /bin/bash
JOBS ?= $(shell nproc)
FUZZ_SECONDS ?= 60
DRAWING ?=

.PHONY: build run test bench fuzz lint format clean
.PHONY: setup-build setup-test setup-bench setup-fuzz setup-lint
.DELETE_ON_ERROR:

build: build/build.ninja
	cmake --build build -j $(JOBS)

run: build
	samples/run.sh build $(if $(DRAWING),'$(subst ','\'',$(DRAWING))')

test: build/sanitize/build.ninja
	cmake --build build/sanitize -j $(JOBS)
	ctest --preset sanitizers -j $(JOBS)

bench: build/benchmarking/build.ninja
	cmake --build build/benchmarking -j $(JOBS)
	ctest --test-dir build/benchmarking/bench --verbose --no-tests=error

fuzz: build/fuzzing/build.ninja
	cmake --build build/fuzzing --target fuzzers -j $(JOBS)
	FUZZ_SECONDS=$(FUZZ_SECONDS) JOBS=$(JOBS) scripts/fuzz build/fuzzing/fuzz

lint: build/linting/build.ninja
	scripts/lint build/linting

format: setup-lint
	scripts/format

clean:
	rm -rf build

setup-build:
	@scripts/setup build
setup-test:
	@scripts/setup build test
setup-bench:
	@scripts/setup build bench
setup-fuzz:
	@scripts/setup build fuzz
setup-lint:
	@scripts/setup build lint

# Ninja runs CMake again when a CMakeLists.txt changes, but it doesn't know of the presets.
build/build.ninja: CMakePresets.json | setup-build
	cmake --preset release && touch $@
build/sanitize/build.ninja: CMakePresets.json | setup-test
	cmake --preset sanitizers && touch $@
build/benchmarking/build.ninja: CMakePresets.json | setup-bench
	cmake --preset bench && touch $@
build/fuzzing/build.ninja: CMakePresets.json | setup-fuzz
	cmake --preset fuzz && touch $@
build/linting/build.ninja: CMakePresets.json | setup-lint
	cmake --preset lint && touch $@
