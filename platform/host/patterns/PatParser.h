#pragma once
// Reader of hatch pattern files in the .pat text format.
//
//   ; comment                         anywhere, also after the numbers of a line
//   ;%TYPE=MODEL                      the following pattern(s) scale with the model
//   ;%UNITS=MM | INCH                 units of the numbers that follow
//   *NAME, optional description
//   angle, x-origin, y-origin, delta-x, delta-y [, dash1, dash2, ...]
//
// Blank lines, CRLF line ends, a UTF-8 byte order mark and spaces around numbers are accepted.
#include <string>
#include <vector>

#include "HatchPattern.h"
#include "OdError.h"

namespace ca {

// A malformed .pat line; the message names the file and the 1-based line.
class PatParseError : public OdError {
public:
    PatParseError(const OdString& fileName, int lineNumber, const OdString& problem);
    const OdString& fileName() const { return m_fileName; }
    int lineNumber() const { return m_lineNumber; }
    const OdString& problem() const { return m_problem; }

private:
    OdString m_fileName;
    int m_lineNumber;
    OdString m_problem;
};

// Parses the text of a .pat file; `fileName` is used in messages and recorded in the patterns.
// Patterns come back in file order, including repeated names (the catalogue decides which wins).
// Throws PatParseError on the first malformed line.
std::vector<HatchPattern> parsePatText(const std::string& text, const OdString& fileName);

// Reads and parses a file. Throws OdError_FileNotFound / OdError(eFileAccessErr) when it cannot
// be read, PatParseError when it is malformed.
std::vector<HatchPattern> parsePatFile(const OdString& path);

}  // namespace ca
