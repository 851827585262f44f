#pragma once
// Runs the built vlstudio with arguments and collects its exit code and output.
#include <string>
#include <vector>

struct StudioResult {
    int exitCode = -1;
    std::string out;
    std::string err;
};

class StudioRunner {
public:
    StudioRunner();
    ~StudioRunner();
    StudioRunner(const StudioRunner&) = delete;
    StudioRunner& operator=(const StudioRunner&) = delete;

    // A scratch folder of this runner (settings, pictures, drawings).
    const std::string& folder() const { return m_folder; }
    std::string file(const std::string& name) const { return m_folder + "/" + name; }

    // Under the test's display, or under xvfb-run when the test has none.
    StudioResult run(const std::vector<std::string>& args) const;
    // With no display at all (DISPLAY and WAYLAND_DISPLAY unset).
    StudioResult runWithoutDisplay(const std::vector<std::string>& args) const;

private:
    StudioResult runWith(const std::string& launcher, const std::vector<std::string>& args) const;

    std::string m_folder;
};
