#pragma once
#include <cstddef>
#include <vector>

// Prints the catalogue import's figures for each number of rows; false when one is beyond 3x.
bool benchCatalogueImport(const std::vector<size_t>& sizes);
