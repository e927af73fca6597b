# Kelmoran: the two set-up commands on a fresh Debian 12 machine.
#   make run    install what is missing, build, start the program
#   make test   install what is missing, build, run every test (UI tests headless)
# Further targets: make build, make bench, make data (regenerate the tables under data/).

BUILD_DIR ?= build
BUILD_TYPE ?= Release
JOBS ?= $(shell nproc)

# Debian packages for building, testing and running. The reference libraries (ERFA,
# Swiss Ephemeris, GeographicLib) are linked by tests only; tzdata holds the zones that the
# summer-time tests run under; Xvfb gives `make run` a display on a machine without one;
# poppler-utils reads the printed PDFs back in the print tests.
PACKAGES := build-essential cmake ninja-build pkg-config \
    qt6-base-dev libgl-dev fonts-dejavu-core \
    libgtest-dev libgmock-dev googletest libbenchmark-dev \
    liberfa-dev libswe-dev swe-data libgeographiclib-dev \
    tzdata xvfb xauth poppler-utils
# Only for regenerating the tables.
DATA_PACKAGES := nodejs npm swe-data stellarium-data

SUDO := $(shell [ "$$(id -u)" = 0 ] || echo sudo)

.PHONY: run test build configure deps data-deps data bench clean

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

data: data-deps
	./tools/generate_all.sh

clean:
	rm -rf $(BUILD_DIR)
