#pragma once
// A fresh folder per test, removed afterwards.
#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <string>

#include "OdString.h"

class TempFolder {
public:
    TempFolder() {
        std::random_device seed;
        m_path = std::filesystem::temp_directory_path() / ("vl_sdk_test_" + std::to_string(seed()) + std::to_string(seed()));
        std::filesystem::create_directories(m_path);
    }
    ~TempFolder() {
        std::error_code ignored;
        std::filesystem::remove_all(m_path, ignored);
    }
    std::filesystem::path path(const std::string& name) const { return m_path / name; }
    OdString file(const std::string& name) const { return OdString::fromUtf8(path(name).string()); }

private:
    std::filesystem::path m_path;
};

inline std::string fileBytes(const OdString& path) {
    std::ifstream in(path.toUtf8(), std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
}
