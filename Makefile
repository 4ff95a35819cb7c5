# SPDX-FileCopyrightText: 2026 The KT964 launcher authors
# SPDX-License-Identifier: Apache-2.0
#
# The two commands that matter: `make demo` runs the program in the lab, `make check` runs every test.

JOBS ?= $(shell nproc)

.PHONY: help demo check deb deb-check deb-reproducible deb-cross-check device-check bench fuzz torture mutants tidy build packages release debug sanitize format clean

help:
	@echo "make demo    run the launcher in the lab: on your display, or unattended without one"
	@echo "make check   check format, lengths, headers and texts; build and run every test, plainly and with the sanitizers"
	@echo "make deb     build the Debian packages in build/packages; ARCH=arm64 or armhf cross-builds them"
	@echo "make deb-check, deb-reproducible, deb-cross-check ARCH=...  install and purge them; compare two builds; emulate"
	@echo "make device-check  install the packages on a Debian in a virtual machine, and work it; ONLY=wifi runs that alone"
	@echo "make tidy    have clang-tidy look for likely mistakes"
	@echo "make bench   measure start-up, pauses, memory, long lists, consoles, the agent and firmware transfers"
	@echo "make fuzz    fuzz every decoder of what arrives, FUZZ_SECONDS (60) each"
	@echo "make torture fail every system call by which the launcher keeps something, and kill it TORTURE_KILLS (500) times"
	@echo "make mutants make small mistakes one at a time and tell which of them no test notices"
	@echo "make build   build the release binaries in build/release/bin"
	@echo "make format  bring all sources into the house's format"

packages:
	scripts/install-packages

release debug sanitize: packages
	cmake --preset $@
	cmake --build --preset $@ --parallel $(JOBS)

build: release

demo: packages
	cmake --preset release
	cmake --build --preset release --target demo --parallel $(JOBS)
	lab/demo build/release/bin

check:
	scripts/install-packages --check
	scripts/check $(JOBS)

deb:
	scripts/install-packages --deb
	$(if $(ARCH),scripts/install-packages --chroot)
	scripts/deb --jobs $(JOBS) $(ARCH:%=--arch %)

deb-check: deb
	scripts/install-packages --chroot
	scripts/check-packages

deb-reproducible:
	scripts/install-packages --deb
	scripts/check-reproducible $(JOBS)

deb-cross-check: deb
	scripts/check-cross $(ARCH) $(JOBS)

device-check: deb
	scripts/install-packages --device-check
	cmake --preset release
	cmake --build --preset release --target kt-lab kt-console --parallel $(JOBS)
	appliance/device-check build/release/bin build/packages $(ONLY)

tidy:
	scripts/install-packages --tidy
	cmake --preset sanitize
	scripts/tidy $(JOBS)

bench: release
	scripts/install-packages --bench
	bench/run build/release/bin

fuzz:
	scripts/install-packages --fuzz
	cmake --preset fuzz
	cmake --build --preset fuzz --parallel $(JOBS)
	tests/fuzz/run build/fuzz

torture: release
	scripts/install-packages --torture
	tests/torture/run build/release --jobs $(JOBS)
	tests/torture/kills build/release/bin --count $${TORTURE_KILLS:-500}

mutants: packages
	JOBS=$(JOBS) tests/mutants/run

format:
	git ls-files '*.cpp' '*.h' | xargs clang-format -i

clean:
	rm -rf build
