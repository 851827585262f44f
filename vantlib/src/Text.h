#pragma once
// Conversions between OdString and the UTF-8 text SQLite stores, and the case folding that
// matches SQLite's NOCASE collation (ASCII letters only), so that in-memory name lookups
// agree with the unique indexes of the file.
#include <string>

#include <OdString.h>

namespace vantlib {

OdString textFromUtf8(const char* utf8, size_t length);
inline OdString textFromUtf8(const std::string& utf8) { return textFromUtf8(utf8.data(), utf8.size()); }
std::string textToUtf8(const OdString& text);

// Folds A-Z to a-z, like SQLite NOCASE.
std::wstring foldCase(const OdString& text);
bool sameName(const OdString& a, const OdString& b);

// A profile size as StringCriteria::kSize compares it: folded, without blanks, with "*" and
// the multiplication sign as "x". sizeKeySql gives the SQL expression that does
// the same to a column.
std::wstring sizeKey(const OdString& size);
std::string sizeKeySql(const std::string& column);

}  // namespace vantlib
