#pragma once
// Importing the definition files into a library against the raw insert of the same rows.
#include <string>
#include <vector>

// Prints the import's figures; throws when either side stores something else.
void printImportFigures(const std::string& folder, const std::vector<std::string>& files);
