#pragma once
// A reader of the clear-text encoding of ISO 10303-21 ("STEP physical files", the form IFC files
// take). No packaged C++ reader of this syntax exists for the platforms we build on, so this is
// our own: it reads the header's schema and every entity instance of the data section into
// values, and nothing of any schema's meaning. Instances that cannot be read are reported with
// their line and left out; a file that is not of this syntax or ends before its data section does
// is refused as a whole.
#include <cstdint>
#include <map>
#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

namespace vantlib {
namespace step {

struct Value {
    enum Kind { kNull, kDerived, kNumber, kString, kEnum, kRef, kList, kTyped };
    Kind kind = kNull;
    double number = 0.0;
    // kString: the decoded UTF-8 text; kEnum: the name between the dots; kTyped: the type name.
    std::string text;
    uint64_t ref = 0;
    // kList: the elements; kTyped: its one value.
    std::vector<Value> items;
};

struct Instance {
    uint64_t id = 0;
    std::string type;  // upper case, as written
    std::vector<Value> arguments;
    int line = 0;
};

struct Fault {
    int line = 0;
    std::string reason;
};

// Why a file as a whole cannot be read; line 0 when no line is to blame.
class FileError : public std::runtime_error {
public:
    FileError(int line, const std::string& reason) : std::runtime_error(reason), m_line(line) {}
    int line() const { return m_line; }

private:
    int m_line;
};

struct File {
    std::vector<std::string> schemas;  // of FILE_SCHEMA, upper case
    std::map<uint64_t, Instance> instances;
    std::vector<Fault> faults;  // instances left out

    const Instance* find(uint64_t id) const {
        auto it = instances.find(id);
        return it == instances.end() ? nullptr : &it->second;
    }
};

// Throws FileError. Deeply nested lists and very long files are read within fixed bounds
// (nesting is limited; an instance nested deeper is a fault).
File parse(const std::string& text);

// Text in the file's encoding: apostrophes doubled and characters beyond ASCII as \X2\...\X0\.
std::string encodeString(const std::string& utf8);

}  // namespace step
}  // namespace vantlib
