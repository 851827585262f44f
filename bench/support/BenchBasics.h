#pragma once
// What every benchmark program needs: a stopwatch and a temporary folder that goes with it.
#include <stdlib.h>

#include <chrono>
#include <filesystem>
#include <stdexcept>
#include <string>
#include <system_error>

namespace vl_bench {

// Milliseconds `work` takes.
template <class F>
double timeMs(F&& work) {
    const auto start = std::chrono::steady_clock::now();
    work();
    return std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start).count();
}

// The best of `runs` timings of `work`: the figures compare costs, not the machine's hiccups.
template <class F>
double bestMs(F&& work, int runs = 3) {
    double best = 1e300;
    for (int i = 0; i < runs; ++i) {
        const double ms = timeMs(work);
        best = ms < best ? ms : best;
    }
    return best;
}

// A fresh folder under the system's temporary folder (or under `parent`), removed with
// everything in it.
class Folder {
public:
    explicit Folder(const char* prefix, const std::filesystem::path& parent = std::filesystem::temp_directory_path()) {
        std::string pattern = (parent / (std::string(prefix) + "-XXXXXX")).string();
        if (!mkdtemp(pattern.data()))
            throw std::runtime_error("cannot create a temporary folder");
        m_path = pattern;
    }
    ~Folder() {
        std::error_code ignored;
        std::filesystem::remove_all(m_path, ignored);
    }
    Folder(const Folder&) = delete;
    Folder& operator=(const Folder&) = delete;
    std::string file(const char* name) const { return m_path + "/" + name; }

private:
    std::string m_path;
};

}  // namespace vl_bench
