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

# Each test is its own process with its own display connection. -noreset keeps Xvfb from
# resetting whenever its last client leaves, which refused the connections that came in during
# the reset; the test programs retry a refused start a few times before they fail.
XVFB_ARGS  := -screen 0 1600x1000x24 -noreset

test: build
	cd $(BUILD) && xvfb-run -a -s "$(XVFB_ARGS)" ctest -j $(JOBS) --output-on-failure

bench: build
	@for b in $(BUILD)/bin/bench_*; do [ -x "$$b" ] && "$$b" || exit 1; done

# The template covers every text of the module, the host and the studio (one catalogue) and of the layouts (wxrc -g lists the
# layouts' texts as C++ that xgettext reads like the code).
POT        := res/locale/vantlib_app.pot
XRC_TEXTS  := $(BUILD)/pot/xrc_texts.cpp

pot:
	mkdir -p $(BUILD)/pot
	wxrc -g -o $(XRC_TEXTS) res/xrc/*.xrc
	xgettext --keyword=_ --keyword=wxTRANSLATE --keyword=wxPLURAL:1,2 --from-code=UTF-8 -C \
	    --add-comments=TRANSLATORS --package-name=vantlib_app -o $(POT) \
	    $$(find app platform/host studio vantlib/src vl_db -name '*.cpp' -o -name '*.h' | LC_ALL=C sort) $(XRC_TEXTS)

clean:
	rm -rf $(BUILD)
