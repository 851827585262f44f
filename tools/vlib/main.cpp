// vlib: command line over library files.
#include <iostream>

#include <vantlib/Exception.h>

#include "Arguments.h"
#include "Commands.h"

int main(int argc, char** argv) {
    const vlib::Words words(argv + 1, argv + argc);
    try {
        return vlib::dispatch(words, std::cout);
    } catch (const vantlib::NeedsRecovery& e) {
        std::cerr << "vlib: " << e.what() << " (vlib recover FILE does that)\n";
        return 1;
    } catch (const vlib::UsageError& e) {
        std::cerr << "vlib: " << e.what() << " (see 'vlib help')\n";
        return 2;
    } catch (const std::exception& e) {
        std::cerr << "vlib: " << e.what() << '\n';
        return 1;
    }
}
