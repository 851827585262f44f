# Entry points: `make run` opens the studio on the demo drawing, `make test` runs every suite.
BUILD      ?= build
JOBS       ?= $(shell nproc)
DEMO_DIR   := $(BUILD)/demo
DEMO       := $(DEMO_DIR)/demo.vldwg
CMAKE_ARGS ?=

.PHONY: all deps configure build run test bench pot clean

all: build

deps:
	@tools/install-deps.sh

$(BUILD)/CMakeCache.txt:
	cmake -S . -B $(BUILD) -DCMAKE_BUILD_TYPE=Release $(CMAKE_ARGS)

configure: deps $(BUILD)/CMakeCache.txt

build: configure
	cmake --build $(BUILD) -j $(JOBS)

$(DEMO): | build
	$(BUILD)/bin/vlib demo $(DEMO_DIR)

CENTRAL    := $(DEMO_DIR)/central-metric.vlib

run: build $(DEMO)
	$(BUILD)/bin/vlstudio $(DEMO) --central $(CENTRAL)

test: build
	cd $(BUILD) && xvfb-run -a -s "-screen 0 1600x1000x24" ctest --output-on-failure -j $(JOBS)

bench: build
	@for b in $(BUILD)/bin/bench_*; do [ -x "$$b" ] && "$$b" || exit 1; done

pot:
	xgettext --keyword=_ --keyword=wxTRANSLATE --keyword=wxPLURAL:1,2 --from-code=UTF-8 -C \
	    -o res/locale/vantlib_app.pot $$(git ls-files 'app/*.cpp' 'app/*.h' 'platform/host/*.cpp')

clean:
	rm -rf $(BUILD)
