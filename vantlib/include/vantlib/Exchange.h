#pragma once
// Exchange of whole libraries as one JSON document (docs/library-exchange.md describes the
// format, docs/library-exchange.schema.json validates it). The document names every reference
// by the name of its target and states the length unit of its thicknesses once, so it can be
// read into any library; export, import into an empty library and export again give the same
// bytes.
#include <cstddef>
#include <functional>
#include <memory>
#include <set>
#include <string>
#include <vector>

#include <OdString.h>
#include <OdUnits.h>

#include <vantlib/Exception.h>
#include <vantlib/Types.h>

namespace vantlib {

class Library;

// The newest format version this build reads; the version it writes.
constexpr int kExchangeFormatVersion = 3;

// A document that cannot be read or imported. The library was not changed.
class ExchangeError : public Exception {
public:
    using Exception::Exception;
};

// A file that cannot be read: its name, the line (0 when the file as a whole is to blame) and
// why. The message is "file:line: reason" ("file: reason" without a line).
class FileReadError : public ExchangeError {
public:
    FileReadError(std::string file, int line, const std::string& reason);
    const std::string& file() const { return m_file; }
    int line() const { return m_line; }
    const std::string& reason() const { return m_reason; }

private:
    std::string m_file;
    int m_line;
    std::string m_reason;
};

// Called now and then during long work with the number of objects done and their total.
using ExchangeProgress = std::function<void(size_t done, size_t total)>;

// Every kind the document holds, in the order it holds them.
const std::vector<ObjectType>& exchangedKinds();
// The key of a kind's list in the document ("materials", "materialClasses", ...); empty for
// kinds the document does not hold.
std::string exchangeKindKey(ObjectType type);

// The document of the library. With `kinds`, only the objects of those kinds and what they
// refer to (a composition's materials, a material's class, ...).
std::string exportLibrary(const Library& library, const std::set<ObjectType>& kinds = {},
                          const ExchangeProgress& progress = {});

// What to do with an incoming material or composition whose name the library already uses.
// Tags, layers, classes, composition types and custom properties are shared by name: the
// library's object of that name is used and counted as skipped.
enum class ClashAnswer { kSkip, kOverwrite, kRename };

struct ImportCounts {
    unsigned created = 0;
    unsigned skipped = 0;
    unsigned overwritten = 0;
    unsigned renamed = 0;
};

struct ImportReport {
    struct KindCounts {
        ObjectType type = kUnknownObject;
        ImportCounts counts;
    };
    // One entry per kind of exchangedKinds(), in that order.
    std::vector<KindCounts> kinds;
    struct Rename {
        ObjectType type = kUnknownObject;
        OdString from, to;
    };
    std::vector<Rename> renames;
    // Set when the document's lengths were converted into the library's unit.
    bool converted = false;
    OdDb::UnitsValue documentUnit = OdDb::kUnitsUndefined;
    OdDb::UnitsValue libraryUnit = OdDb::kUnitsUndefined;

    ImportCounts total() const;
};

// Reads the document into the library in one transaction: every object or none. Throws
// ExchangeError for a document that is not valid (the message names the place), and passes
// on the library's own errors; in both cases the library stays as it was.
ImportReport importLibrary(const std::shared_ptr<Library>& library, const std::string& document,
                           ClashAnswer onClash = ClashAnswer::kSkip, const ExchangeProgress& progress = {});

// The document's name of a length unit ("millimeters", "inches", ...).
std::string exchangeUnitName(OdDb::UnitsValue unit);

}  // namespace vantlib
