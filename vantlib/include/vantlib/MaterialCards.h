#pragma once
// Material cards of the open CAD format: the INI-style ".FCMat" files and the YAML ones of its
// newer versions. A card gives a material its name, description, class (the card's kind of
// material, else its folder) and density, thermal conductivity and specific heat, converted
// exactly into kg/m³, W/(m·K) and J/(kg·K).
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include <vantlib/Exchange.h>

namespace vantlib {

// What one card holds, read and converted.
struct MaterialCard {
    std::string file;
    OdString name;
    OdString description;
    OdString className;
    std::optional<double> density;              // kg/m³
    std::optional<double> thermalConductivity;  // W/(m·K)
    std::optional<double> specificHeat;         // J/(kg·K)
};

// A card that could not be read: its file, the line (0 when the file as a whole failed) and why.
class CardError : public FileReadError {
public:
    using FileReadError::FileReadError;
};

// Reads one card file (either form); throws CardError.
MaterialCard readMaterialCard(const std::string& path);

// The card files at `paths`: files as given, folders searched for "*.FCMat" below them, in
// the order of their paths. Throws ExchangeError for a path that does not exist.
std::vector<std::string> findMaterialCards(const std::vector<std::string>& paths);

struct CardImportReport {
    size_t cardsFound = 0;
    std::vector<MaterialCard> imported;  // the cards that were read, in file order
    std::vector<CardError> failed;       // the cards that were not, in file order
    ImportReport import;                 // materials and classes created, skipped, ...
};

// Reads every card and imports those that could be read in one transaction (a name the
// library or an earlier card already has is handled by `onClash`). Cards that cannot be read
// are reported and left out.
CardImportReport importMaterialCards(const std::shared_ptr<Library>& library, const std::vector<std::string>& paths,
                                     ClashAnswer onClash = ClashAnswer::kSkip, const ExchangeProgress& progress = {});

}  // namespace vantlib
