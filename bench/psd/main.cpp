// Reading the official property-set definition files into the model, against the floor of
// parsing the same files with pugixml alone (the files are read from disk in both); importing
// them into a library, against the raw SQLite insert of the same rows (import.cpp).
// Usage: bench_psd [FOLDER]   (default: the official files of the source tree)
#include <algorithm>
#include <cstdio>
#include <fstream>
#include <sstream>
#include <stdexcept>
#include <string>
#include <vector>

#include <pugixml.hpp>

#include <vl_db/PsdXml.h>

#include "BenchBasics.h"
#include "ImportBench.h"

namespace {

std::string fileText(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    std::ostringstream text;
    text << in.rdbuf();
    return text.str();
}

}  // namespace

int main(int argc, char** argv) {
    try {
        const std::string folder = argc > 1 ? argv[1] : VL_PSD_DIR;
        const std::vector<std::string> files = vl_db::findPsdFiles({folder});
        if (files.empty())
            throw std::runtime_error("no definition files in " + folder);
        size_t properties = 0, bytes = 0;
        const double readMs = vl_bench::bestMs([&] {
            properties = 0;
            for (const std::string& file : files)
                properties += vl_db::readPsd(file).properties.size();
        }, 20);
        const double floorMs = vl_bench::bestMs([&] {
            bytes = 0;
            for (const std::string& file : files) {
                const std::string text = fileText(file);
                pugi::xml_document document;
                if (!document.load_buffer(text.data(), text.size()))
                    throw std::runtime_error("floor: cannot parse " + file);
                bytes += text.size();
            }
        }, 20);
        std::printf("\npsd: reading the official property-set definition files into the model, against parsing "
                    "them alone\n");
        std::printf("%-10s %6s %10s %9s %10s %10s %7s\n", "operation", "files", "properties", "kB", "time ms",
                    "floor ms", "ratio");
        std::printf("%-10s %6zu %10zu %9.1f %10.2f %10.2f %6.2fx\n", "read", files.size(), properties, bytes / 1e3,
                    readMs, floorMs, readMs / floorMs);
        printImportFigures(folder, files);
        return 0;
    } catch (const std::exception& e) {
        std::fprintf(stderr, "benchmark failed: %s\n", e.what());
        return 1;
    }
}
