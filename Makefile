# The commands of this repository. All of them set up what they need.

SHELL := /bin/bash
.SHELLFLAGS := -eo pipefail -c

PRESET ?= release
BUILD := build/$(PRESET)
JOBS ?= $(shell nproc)
RUN := tools/wine-run $(CURDIR)/$(BUILD)/wineprefix

.PHONY: all setup demo test run bench package format lint lint-check clean

all: build

setup:
	@tools/setup

.PHONY: configure build
configure: setup
	@mkdir -p build; test -e $(BUILD)/build.ninja || cmake --preset $(PRESET) >$(BUILD).log 2>&1 || { cat $(BUILD).log; exit 1; }

build: configure
	@cmake --build $(BUILD) -j $(JOBS) --target varden VardenBridge prefix -- --quiet

# Runs the main job: a script that logs on, walks the Inbox and shows each message.
demo: build
	@tools/demo $(CURDIR)/$(BUILD)

# Everything: builds all programs, runs all tests, ends with CTest's summary.
test: configure
	@tools/setup test
	@cmake --build $(BUILD) -j $(JOBS) -- --quiet
	@ctest --test-dir $(BUILD) -j $(JOBS) --output-on-failure

# make run SCRIPT=examples/inbox.fms ARGS="--mailbox DIR"
run: build
	@$(RUN) $(BUILD)/bin/varden.exe $(ARGS) $(SCRIPT)

bench: configure
	@cmake --build $(BUILD) -j $(JOBS) --target bench -- --quiet
	@tools/bench $(CURDIR)/$(BUILD)

package: build
	@tools/package $(BUILD) dist

format:
	@tools/setup lint
	@git ls-files '*.cpp' '*.h' | xargs clang-format -i

lint: configure
	@tools/setup lint
	@tools/lint $(BUILD)

clean:
	rm -rf build dist
