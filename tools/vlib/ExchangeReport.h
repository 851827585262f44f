#pragma once
// What vlib's imports share: the --on-clash word and the report of what was written.
#include <iosfwd>
#include <string>

#include <vantlib/Exchange.h>

namespace vlib {

// "skip", "overwrite" or "rename"; throws UsageError for other words.
vantlib::ClashAnswer clashAnswerFromWord(const std::string& word);

// The conversion note, one line per kind that had objects, the renames and the totals.
void printImportReport(const vantlib::ImportReport& report, std::ostream& out);

}  // namespace vlib
