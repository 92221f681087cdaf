# Commands for people; README.md says what each is for.
BUILD := build
SOAK_SECONDS ?= 300
SOAK_SEED ?= $(shell date +%s)
PREFIX ?= /usr
JOBS ?= $(shell nproc)
CTEST := ctest --output-on-failure

GALLERY := $(BUILD)/gallery

.PHONY: all build setup test sanitize soak lint format rehearsal gallery bench fuzz run install \
  package package-check coverage clean

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
	@LSAN_OPTIONS=suppressions=$(CURDIR)/tests/leaks.txt $(CTEST) --test-dir $(BUILD)/sanitize -j$(JOBS)

# How much of the logic the tests reach.
coverage:
	@tools/setup.sh gcovr
	@cmake --preset coverage
	@cmake --build $(BUILD)/coverage -j$(JOBS)
	@tools/coverage.sh $(BUILD)/coverage

# Long runs of what `make test` tries briefly; the seed repeats one.
soak: build
	@echo 'SOAK_SEED=$(SOAK_SEED)'
	@$(BUILD)/bin/lunevra-soak --seed $(SOAK_SEED) --seconds $$(($(SOAK_SECONDS) / 5))
	@LUNEVRA_SOAK_SECONDS=$$(($(SOAK_SECONDS) / 10)) $(BUILD)/bin/lunevra_app_tests
	@LUNEVRA_SOAK_SECONDS=$$(($(SOAK_SECONDS) / 10)) $(BUILD)/bin/lunevra_linux_tests \
	  --gtest_filter='KilledWriter*'
	@LUNEVRA_SOAK_SECONDS=$$(($(SOAK_SECONDS) / 2)) LUNEVRA_SOAK_SEED=$(SOAK_SEED) \
	  $(BUILD)/bin/lunevra_host_tests \
	  --gtest_filter='BadNights*:*Outlasts*:*CoversWhatever*:*WaitsBlack*:KeyOnX11*'

lint: build
	@tools/lint.sh

format:
	@git ls-files '*.h' '*.cpp' | xargs clang-format -i

rehearsal: build
	@tools/rehearsal/rehearse.sh

gallery: build
	@$(BUILD)/bin/lunevra-gallery $(GALLERY)
	@QT_SCALE_FACTOR=2 $(BUILD)/bin/lunevra-gallery $(GALLERY) 1920x1080
	@for scale in 1 1.5 2; do QT_SCALE_FACTOR=$$scale $(BUILD)/bin/lunevra-daytime-gallery $(GALLERY) \
	  || exit 1; done

# Beside lockers that Debian packages; one that cannot be installed is left out.
bench: build
	@for locker in i3lock suckless-tools xtrlock xsecurelock; do \
	  tools/setup.sh $$locker || echo "bench: $$locker cannot be installed"; done
	@mkdir -p $(BUILD)/bench
	@$(BUILD)/bin/lunevra_bench --benchmark_repetitions=5 --benchmark_report_aggregates_only=true \
	  --benchmark_out=$(BUILD)/bench/logic.json
	@xvfb-run -a -s '-screen 0 1920x1080x24' $(BUILD)/bin/lunevra_cover_bench \
	  $(BUILD)/bench/cover.json
	@xvfb-run -a -s '-screen 0 1920x1080x24' $(BUILD)/bin/lunevra_program_bench \
	  $(BUILD)/bench/program.json
	@xvfb-run -a -s '-screen 0 5760x1080x24' $(BUILD)/bin/lunevra_lock_screen_bench \
	  --benchmark_out=$(BUILD)/bench/lock_screen.json
	@$(BUILD)/bin/lunevra_bench_table $(BUILD)/bench

fuzz: setup
	@cmake --preset fuzz
	@cmake --build $(BUILD)/fuzz -j$(JOBS) --target fuzz_key_file fuzz_mount_table
	@for target in key_file mount_table; do mkdir -p $(BUILD)/fuzz/found/$$target && \
	  $(BUILD)/fuzz/bin/fuzz_$$target -max_total_time=60 -print_final_stats=1 \
	    $(BUILD)/fuzz/found/$$target tests/fuzz/corpus/$$target || exit 1; done

run: build
	@$(BUILD)/bin/lunevra

# The bus and the service manager look for their files under /usr.
install: build
	@cmake $(BUILD) -DCMAKE_INSTALL_PREFIX=$(PREFIX) >/dev/null
	@cmake --install $(BUILD)

# A .deb, the same bytes wherever it is built: every time in it is that of the last commit.
package: export SOURCE_DATE_EPOCH ?= $(shell git log -1 --format=%ct)
package: setup
	@cmake --preset package
	@cmake --build $(BUILD)/package -j$(JOBS)
	@cd $(BUILD)/package && cpack

# Installs, uses and purges it in a Debian of its own; needs root and debootstrap.
package-check: package
	@tools/package_check.sh $(BUILD)/package/lunevra_*.deb

clean:
	@rm -rf $(BUILD)
