#pragma once
// The official definition files and small helpers of the definition-file tests.
#include <fstream>
#include <sstream>
#include <stdexcept>
#include <string>
#include <vector>

#include <vl_db/PsdXml.h>

namespace psd_test {

inline std::string officialFolder() { return std::string(VL_TEST_DATA_DIR) + "/psd/IFC4_ADD2_TC1"; }
inline std::string officialFile(const std::string& name) { return officialFolder() + "/" + name + ".xml"; }

inline std::string readText(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    if (!in)
        throw std::runtime_error("cannot open " + path);
    std::ostringstream text;
    text << in.rdbuf();
    return text.str();
}

// The 1-based line on which `needle` first occurs.
inline int lineOf(const std::string& text, const std::string& needle) {
    const size_t at = text.find(needle);
    if (at == std::string::npos)
        throw std::runtime_error("not in the text: " + needle);
    int line = 1;
    for (size_t i = 0; i < at; ++i)
        line += text[i] == '\n';
    return line;
}

// The text with the first `from` replaced by `to`; the test data must contain `from`.
inline std::string replaced(std::string text, const std::string& from, const std::string& to) {
    const size_t at = text.find(from);
    if (at == std::string::npos)
        throw std::runtime_error("not in the text: " + from);
    return text.replace(at, from.size(), to);
}

inline const vl_db::PsdProperty& property(const vl_db::PsdSet& set, const std::string& name) {
    for (const vl_db::PsdProperty& p : set.properties) {
        if (p.name == name)
            return p;
    }
    throw std::runtime_error(set.name + " has no property " + name);
}

}  // namespace psd_test
