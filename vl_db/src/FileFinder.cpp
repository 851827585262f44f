#include <vl_db/FileFinder.h>

namespace vl_db {

namespace {
FileFinder* g_fileFinder = nullptr;
}

FileFinder::~FileFinder() = default;

FileFinder* FileFinder::instance() {
    return g_fileFinder;
}

void FileFinder::setInstance(FileFinder* finder) {
    g_fileFinder = finder;
}

}  // namespace vl_db
