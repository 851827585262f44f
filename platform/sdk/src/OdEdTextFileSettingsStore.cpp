#include <filesystem>
#include <fstream>
#include <sstream>

#include "OdEdSettingsManager.h"
#include "OdError.h"

namespace {

namespace fs = std::filesystem;

fs::path toPath(const OdString& path) { return fs::u8path(path.toUtf8()); }

std::wstring escape(const std::wstring& text) {
    std::wstring out;
    for (wchar_t ch : text) {
        switch (ch) {
        case L'\\': out += L"\\\\"; break;
        case L'\t': out += L"\\t"; break;
        case L'\n': out += L"\\n"; break;
        case L'\r': out += L"\\r"; break;
        default: out += ch;
        }
    }
    return out;
}

bool unescape(const std::wstring& text, std::wstring& out) {
    out.clear();
    for (size_t i = 0; i < text.size(); ++i) {
        if (text[i] != L'\\') {
            out += text[i];
            continue;
        }
        if (++i == text.size()) return false;
        switch (text[i]) {
        case L'\\': out += L'\\'; break;
        case L't': out += L'\t'; break;
        case L'n': out += L'\n'; break;
        case L'r': out += L'\r'; break;
        default: return false;
        }
    }
    return true;
}

bool parseLine(const std::wstring& line, OdString& name, OdTypedValue& value) {
    size_t tab = line.find(L'\t');
    if (tab == std::wstring::npos) return false;
    std::wstring rawName, rawValue;
    if (!unescape(line.substr(0, tab), rawName) || !unescape(line.substr(tab + 1), rawValue) || rawName.empty()) return false;
    try {
        value = OdTypedValue::fromText(OdString(rawValue));
    } catch (const OdError&) {
        return false;
    }
    name = OdString(rawName);
    return true;
}

}  // namespace

OdEdTextFileSettingsStore::OdEdTextFileSettingsStore(const OdString& path) : m_path(path) {
    if (path.isEmpty()) throw OdError(eInvalidInput, L"The settings file needs a name");
    std::error_code ec;
    const fs::path file = toPath(path);
    if (!fs::exists(file, ec)) return;
    std::ifstream in(file, std::ios::binary);
    if (!in) throw OdError(eFileAccessErr, L"Cannot read the settings file " + path);
    std::string line;
    while (std::getline(in, line)) {
        if (line.empty()) continue;
        OdString name;
        OdTypedValue value;
        OdString text = OdString::fromUtf8(line);
        if (parseLine(text.str(), name, value))
            m_values[name] = value;
        else
            m_unreadableLines.push_back(text);
    }
}

OdEdTextFileSettingsStore::~OdEdTextFileSettingsStore() {
    try {
        flush();
    } catch (const OdError&) {
        // A destructor cannot report it; every setValue already flushed its change.
    }
}

bool OdEdTextFileSettingsStore::read(const OdString& name, OdTypedValue& value) {
    std::lock_guard<std::mutex> lock(m_mutex);
    auto found = m_values.find(name);
    if (found == m_values.end()) return false;
    value = found->second;
    return true;
}

void OdEdTextFileSettingsStore::write(const OdString& name, const OdTypedValue& value) {
    if (name.isEmpty()) throw OdError(eInvalidInput, L"A setting needs a name");
    std::lock_guard<std::mutex> lock(m_mutex);
    auto found = m_values.find(name);
    if (found != m_values.end() && found->second == value) return;
    m_values[name] = value;
    m_dirty = true;
}

void OdEdTextFileSettingsStore::remove(const OdString& name) {
    std::lock_guard<std::mutex> lock(m_mutex);
    if (m_values.erase(name)) m_dirty = true;
}

std::vector<OdString> OdEdTextFileSettingsStore::names() {
    std::lock_guard<std::mutex> lock(m_mutex);
    std::vector<OdString> result;
    for (const auto& entry : m_values) result.push_back(entry.first);
    return result;
}

void OdEdTextFileSettingsStore::flush() {
    std::lock_guard<std::mutex> lock(m_mutex);
    if (!m_dirty) return;
    std::ostringstream text;
    for (const auto& entry : m_values)
        text << OdString(escape(entry.first.str()) + L"\t" + escape(entry.second.toText().str())).toUtf8() << '\n';
    for (const OdString& line : m_unreadableLines) text << line.toUtf8() << '\n';

    const fs::path file = toPath(m_path);
    const fs::path temporary = file.string() + ".tmp";
    std::error_code ec;
    if (file.has_parent_path()) fs::create_directories(file.parent_path(), ec);
    {
        std::ofstream out(temporary, std::ios::binary | std::ios::trunc);
        out << text.str();
        out.flush();
        if (!out) {
            fs::remove(temporary, ec);
            throw OdError(eFileAccessErr, L"Cannot write the settings file " + m_path);
        }
    }
    fs::rename(temporary, file, ec);
    if (ec) {
        fs::remove(temporary, ec);
        throw OdError(eFileAccessErr, L"Cannot replace the settings file " + m_path);
    }
    m_dirty = false;
}
