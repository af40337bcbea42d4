# The two commands of the README: `make run` and `make test`.
# The project's own builds treat warnings as errors (QUORVA_WERROR); a plain cmake build,
# a user's or a packager's, does not. QUORVA_SKIP_BOOTSTRAP=1 skips the package check.
BUILD      ?= build
ASAN_BUILD ?= build-asan
FUZZ_BUILD ?= build-fuzz
RELEASE_BUILD ?= build-release
DEMO       ?= demo
JOBS       ?= $(shell nproc 2>/dev/null || echo 2)
GENERATOR  := $(shell command -v ninja >/dev/null 2>&1 && echo "-G Ninja")
QUORVA     := $(BUILD)/src/quorva
QUORVA_GUI := $(BUILD)/src/ui/quorva-gui

.PHONY: run test bootstrap build build-asan build-release unit-test asan-test bench fuzz format clean

run: build
	@if [ ! -d "$(DEMO)/Resource" ]; then \
	  $(QUORVA) init --sample $(DEMO) && \
	  echo DEMOPW | $(QUORVA) --home $(DEMO) user set ip=127.0.0.1 library=DEMO.SOURCE \
	    user=DEMO password=- "name=Demo Programmer" "company=Demo Company" \
	    folder=$(abspath $(DEMO))/programs/ >/dev/null; \
	fi
	@echo "Demo working folder: $(abspath $(DEMO))"
	@$(QUORVA) --home $(DEMO) --yes generate --check
	@echo "Sample program generated: $(abspath $(DEMO))/programs/CUSTMOV.txt"
	@if [ ! -x "$(QUORVA_GUI)" ]; then \
	  echo "The desktop application was not built (it needs Qt 6 Widgets: qt6-base-dev)."; \
	elif [ -n "$${DISPLAY:-}$${WAYLAND_DISPLAY:-}" ]; then \
	  echo "Opening the desktop application on $(abspath $(DEMO))"; \
	  $(QUORVA_GUI) --home $(DEMO); \
	else \
	  echo "No display here. On a desktop, start the application with:"; \
	  echo "  $(abspath $(QUORVA_GUI)) --home $(abspath $(DEMO))"; \
	fi

test: build build-asan
	cd $(BUILD) && ctest --output-on-failure -j $(JOBS)
	cd $(ASAN_BUILD) && ctest --output-on-failure -j $(JOBS)

bootstrap:
	@scripts/bootstrap

build: bootstrap
	@cmake -S . -B $(BUILD) $(GENERATOR) -DCMAKE_BUILD_TYPE=RelWithDebInfo -DQUORVA_WERROR=ON -DQUORVA_GUI=AUTO >/dev/null
	@cmake --build $(BUILD) -j $(JOBS)

build-asan: bootstrap
	@cmake -S . -B $(ASAN_BUILD) $(GENERATOR) -DCMAKE_BUILD_TYPE=Debug -DQUORVA_SANITIZE=ON -DQUORVA_BENCH=OFF -DQUORVA_WERROR=ON -DQUORVA_GUI=AUTO >/dev/null
	@cmake --build $(ASAN_BUILD) -j $(JOBS)

# The optimised build users and packagers make: the command line and the core, no tests.
build-release: bootstrap
	@cmake -S . -B $(RELEASE_BUILD) $(GENERATOR) -DCMAKE_BUILD_TYPE=Release -DQUORVA_WERROR=ON -DQUORVA_TESTS=OFF -DQUORVA_BENCH=OFF -DQUORVA_GUI=AUTO >/dev/null
	@cmake --build $(RELEASE_BUILD) -j $(JOBS)

bench: build
	@for b in $(BUILD)/bench/bench_*; do echo "== $$b"; $$b; done

fuzz: bootstrap
	@cmake -S . -B $(FUZZ_BUILD) $(GENERATOR) -DCMAKE_CXX_COMPILER=clang++ -DQUORVA_FUZZ=ON -DQUORVA_TESTS=OFF -DQUORVA_WERROR=ON >/dev/null
	@cmake --build $(FUZZ_BUILD) -j $(JOBS)

format:
	@git ls-files '*.h' '*.cpp' | xargs clang-format -i

clean:
	rm -rf $(BUILD) $(ASAN_BUILD) $(FUZZ_BUILD) $(RELEASE_BUILD)
