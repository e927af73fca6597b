# Kelmoran: the two set-up commands on a fresh Debian 12 machine.
#   make run    install what is missing, build, start the program
#   make test   install what is missing, build, run every test (UI tests headless)
# Further targets: make build, make bench, make data (regenerate the tables under data/).
#   make install      PREFIX=/usr/local by default, DESTDIR honoured
#   make package      a Debian package in the build folder
#   make check-asan   the whole suite built by Clang under AddressSanitizer and UBSan, with
#                     the file fuzzers (libFuzzer) run for FUZZ_SECONDS each (20)
#   make fuzz         the fuzzers alone in that build, longer: make fuzz FUZZ_SECONDS=600

BUILD_DIR ?= build
BUILD_TYPE ?= Release
JOBS ?= $(shell nproc)
PREFIX ?= /usr/local

# Debian packages for building, testing and running. The reference libraries (ERFA,
# Swiss Ephemeris, GeographicLib) are linked by tests only; tzdata holds the zones that the
# summer-time tests run under; Xvfb gives `make run` a display on a machine without one;
# poppler-utils reads the printed PDFs back in the print tests.
PACKAGES := build-essential cmake ninja-build pkg-config \
    qt6-base-dev libgl-dev fonts-dejavu-core \
    libgtest-dev libgmock-dev googletest libbenchmark-dev \
    liberfa-dev libswe-dev swe-data libgeographiclib-dev \
    tzdata xvfb xauth \
    desktop-file-utils appstream libxml2-utils file dpkg-dev poppler-utils
# Only for the sanitizer and fuzzer build: Clang with its runtimes (ASan, UBSan, libFuzzer).
ASAN_PACKAGES := clang libclang-rt-14-dev
ASAN_DIR ?= build-asan
FUZZ_SECONDS ?= 20
# Only for regenerating the tables.
DATA_PACKAGES := nodejs npm swe-data stellarium-data

SUDO := $(shell [ "$$(id -u)" = 0 ] || echo sudo)

.PHONY: run test build configure deps data-deps data bench install package clean asan-deps asan-configure check-asan fuzz

define install_missing
	@missing=$$(for p in $(1); do dpkg-query -W -f='$${Status}\n' $$p 2>/dev/null | grep -q '^install ok installed' || echo $$p; done); \
	if [ -n "$$missing" ]; then \
	    echo "Installing:" $$missing; \
	    $(SUDO) apt-get update -qq && \
	    DEBIAN_FRONTEND=noninteractive $(SUDO) apt-get install -y -qq --no-install-recommends $$missing; \
	fi
endef

deps:
	$(call install_missing,$(PACKAGES))

data-deps:
	@command -v node >/dev/null && command -v npm >/dev/null || { $(call install_missing,nodejs npm) ; }
	$(call install_missing,swe-data stellarium-data)

$(BUILD_DIR)/build.ninja:
	cmake -S . -B $(BUILD_DIR) -G Ninja -DCMAKE_BUILD_TYPE=$(BUILD_TYPE)

configure: deps $(BUILD_DIR)/build.ninja

build: configure
	cmake --build $(BUILD_DIR) -j $(JOBS)

# Without a display (a server, a container) the window opens on a virtual screen.
run: build
	@if [ -n "$$DISPLAY" ] || [ -n "$$WAYLAND_DISPLAY" ]; then \
	    ./$(BUILD_DIR)/app/kelmoran; \
	else \
	    echo "No display: starting on a virtual screen (Xvfb)"; \
	    xvfb-run -a -s "-screen 0 1280x900x24" ./$(BUILD_DIR)/app/kelmoran; \
	fi

test: build
	cd $(BUILD_DIR) && QT_QPA_PLATFORM=offscreen ctest --output-on-failure -j $(JOBS)

bench: build
	@for b in $(BUILD_DIR)/bench/*; do [ -x "$$b" ] && [ -f "$$b" ] && { echo "== $$b"; "$$b" || exit 1; }; done

asan-deps: deps
	$(call install_missing,$(ASAN_PACKAGES))

# Configured again at every run so that FUZZ_SECONDS takes effect.
asan-configure: asan-deps
	CC=clang CXX=clang++ cmake -S . -B $(ASAN_DIR) -G Ninja -DCMAKE_BUILD_TYPE=Release \
	    -DKELMORAN_SANITIZE=ON -DKELMORAN_FUZZ=ON -DKELMORAN_BUILD_BENCHMARKS=OFF \
	    -DKELMORAN_FUZZ_SECONDS=$(FUZZ_SECONDS)

ASAN_ENV := QT_QPA_PLATFORM=offscreen \
    ASAN_OPTIONS=detect_leaks=1:strict_string_checks=1:check_initialization_order=1 \
    LSAN_OPTIONS=suppressions=$(CURDIR)/tests/fuzz/lsan.supp:print_suppressions=0 \
    UBSAN_OPTIONS=print_stacktrace=1:halt_on_error=1

check-asan: asan-configure
	cmake --build $(ASAN_DIR) -j $(JOBS)
	cd $(ASAN_DIR) && $(ASAN_ENV) ctest --output-on-failure -j $(JOBS)

fuzz: asan-configure
	cmake --build $(ASAN_DIR) -j $(JOBS) --target fuzz_user_dat fuzz_voyage fuzz_sights
	cd $(ASAN_DIR) && $(ASAN_ENV) ctest --output-on-failure -L fuzz

data: data-deps
	./tools/generate_all.sh

install: build
	DESTDIR=$(DESTDIR) cmake --install $(BUILD_DIR) --prefix $(PREFIX)

# A Debian package in the build folder, installable with `apt install ./kelmoran_*.deb`.
package: build
	cd $(BUILD_DIR) && cpack -G DEB

clean:
	rm -rf $(BUILD_DIR)
