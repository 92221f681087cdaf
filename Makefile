# Commands for people; README.md says what each is for.
BUILD := build
JOBS ?= $(shell nproc)
CTEST := ctest --output-on-failure

.PHONY: all build setup test sanitize lint format rehearsal run install clean

all: build

setup:
	@tools/setup.sh

build: setup
	@cmake --preset release
	@cmake --build $(BUILD) -j$(JOBS)

test: build
	@$(CTEST) --test-dir $(BUILD) -j$(JOBS)

sanitize: setup
	@cmake --preset sanitize
	@cmake --build $(BUILD)/sanitize -j$(JOBS)
	@$(CTEST) --test-dir $(BUILD)/sanitize -j$(JOBS)

lint: setup
	@tools/lint.sh

format:
	@git ls-files '*.h' '*.cpp' | xargs clang-format -i

rehearsal: build
	@tools/rehearsal/rehearse.sh

run: build
	@$(BUILD)/bin/lunevra

install: build
	@cmake --install $(BUILD)

clean:
	@rm -rf $(BUILD)
