#pragma once
// What vlib's imports share: the --on-clash word and the report of what was written.
#include <iosfwd>
#include <memory>
#include <string>
#include <vector>

#include <vantlib/Exchange.h>

namespace vlib {

// "skip", "overwrite" or "rename"; throws UsageError for other words.
vantlib::ClashAnswer clashAnswerFromWord(const std::string& word);

class Arguments;

// What every import command starts from: the library to write (opened writable; a read-only
// one is refused), the --on-clash answer and the files after the library.
struct ImportTarget {
    std::shared_ptr<vantlib::Library> library;
    vantlib::ClashAnswer answer;
    std::vector<std::string> files;
};
ImportTarget importTarget(const Arguments& args);

// The conversion note, one line per kind that had objects, the renames and the totals.
void printImportReport(const vantlib::ImportReport& report, std::ostream& out);

}  // namespace vlib
