# Two commands matter: `make run` and `make test`. The work itself is in the CMake presets and in scripts/.
.PHONY: all setup build package package-test run tour test bench asan tsan fuzz coverage endurance format format-check tidy clean

all: build

setup:
	@scripts/setup

build: setup
	@scripts/build release pellar

package:
	@scripts/setup build package
	@scripts/package

package-test: setup
	@scripts/setup package package-test
	@scripts/package-test

run: setup
	@scripts/run

# The demonstration of `make run` on its private desktop, also where there is a display.
tour: setup
	@scripts/tour

test: setup
	@scripts/test

bench: setup
	@scripts/bench

asan: setup
	@scripts/asan

tsan: setup
	@scripts/tsan

endurance: setup
	@scripts/endurance

coverage: setup
	@scripts/setup coverage
	@scripts/coverage

fuzz: setup
	@scripts/setup fuzz
	@scripts/fuzz

format:
	@scripts/setup format
	@scripts/format

format-check:
	@scripts/setup format
	@scripts/format --check

tidy: setup
	@scripts/setup format
	@scripts/tidy

clean:
	rm -rf build
