// vlib demo DIR
#include "Arguments.h"
#include "Commands.h"
#include "DemoWriter.h"

namespace vlib {

int demoCommand(const Words& words, std::ostream& out) {
    const Arguments args(words, {}, {});
    args.requirePositional(1, "DIR");
    demo::writeDemo(args.positional()[0], out);
    return 0;
}

}  // namespace vlib
