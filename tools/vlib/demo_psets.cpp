// The demo office's own property sets, written through the interfaces the property sets
// editor uses, so the demo also shows that they keep what they are given.
#include "DemoPropertySets.h"

#include <filesystem>

#include <vl_db/PropertySets.h>
#include <vl_db/PsdLibrary.h>

namespace vlib::demo {

namespace {

using vl_db::EnumTypeSpecifier;
using vl_db::TypeSpecifier;

void addProperty(vl_db::IPropertySet& set, const wchar_t* name, const wchar_t* label, const wchar_t* description,
                 const vl_db::AbstractTypeSpecifier& type) {
    auto definition = set.createPropertyDefinition(name);
    definition->setLabel(label);
    definition->setDescription(description);
    definition->setTypeSpecifier(type);
}

std::shared_ptr<vl_db::IPropertySet> addSet(vl_db::INamespace& ns, const wchar_t* name, const wchar_t* label,
                                            const wchar_t* description, std::initializer_list<const wchar_t*> ifcTypes) {
    auto set = ns.createPropertySet(name);
    set->setLabel(label);
    set->setDescription(description);
    for (const wchar_t* ifcType : ifcTypes)
        set->addIfcType(ifcType);
    return set;
}

}  // namespace

size_t addOfficePropertySets(const std::shared_ptr<vantlib::Library>& central) {
    const auto library = vl_db::propertySetLibrary(central);
    auto office = library->createNamespace(L"Office", L"Office standards", true);

    auto finishes = addSet(*office, L"Office_WallFinishes", L"Wall finishes",
                           L"How the faces of walls are finished, for the finishes schedule.", {L"IfcWall", L"IfcCovering"});
    addProperty(*finishes, L"FinishType", L"Finish type", L"The finish as the finishes schedule names it.",
                EnumTypeSpecifier<OdString>(vl_db::kStringCode,
                                            {{L"PL", L"Gypsum plaster, painted"},
                                             {L"TI", L"Ceramic tiles"},
                                             {L"WP", L"Wallpaper"},
                                             {L"FC", L"Fair-faced concrete"}},
                                            false));
    addProperty(*finishes, L"FinishThickness", L"Finish thickness", L"Thickness of the finish in millimetres.",
                TypeSpecifier<double>(vl_db::kRealCode));
    addProperty(*finishes, L"MoistureResistant", L"Moisture resistant", L"Suitable for wet rooms.",
                TypeSpecifier<long long>(vl_db::kBooleanCode));
    auto finishedArea = finishes->createValueDefinition(L"FinishedArea");
    finishedArea->setLabel(L"Finished area");
    finishedArea->setDescription(L"Area of the face that receives the finish.");
    finishedArea->setTypeSpecifier(TypeSpecifier<double>(vl_db::kRealCode));
    finishedArea->setMeasure(L"AREA");

    auto doors = addSet(*office, L"Office_DoorSchedule", L"Door schedule", L"What the door schedule lists of a door.",
                        {L"IfcDoor"});
    addProperty(*doors, L"DoorNumber", L"Door number", L"Room number followed by a letter.",
                TypeSpecifier<OdString>(vl_db::kStringCode));
    addProperty(*doors, L"FireResistance", L"Fire resistance", L"Minutes the door set holds back a fire.",
                EnumTypeSpecifier<long long>(vl_db::kIntegerCode, {{30, L"EI2 30-C5"}, {60, L"EI2 60-C5"}, {90, L"EI2 90-C5"}},
                                             false));
    addProperty(*doors, L"Hardware", L"Hardware set", L"Hardware set of the ironmongery schedule.",
                EnumTypeSpecifier<OdString>(vl_db::kStringCode, {{L"H1", OdString()}, {L"H2", OdString()}, {L"H3", OdString()}},
                                            true));

    auto handover = addSet(*office, L"Office_Handover", L"Handover", L"What the client receives for maintenance.",
                           {L"IfcWall", L"IfcDoor", L"IfcWindow", L"IfcSlab"});
    addProperty(*handover, L"Supplier", L"Supplier", L"Company that supplied the element.",
                TypeSpecifier<OdString>(vl_db::kStringCode));
    addProperty(*handover, L"WarrantyYears", L"Warranty (years)", L"Years of warranty from the handover.",
                TypeSpecifier<long long>(vl_db::kIntegerCode));
    addProperty(*handover, L"Inspected", L"Inspected", L"Inspected at handover.", TypeSpecifier<long long>(vl_db::kBooleanCode));

    library->commit();
    return office->propertySets().size();
}

size_t addOfficialPropertySets(const std::shared_ptr<vantlib::Library>& central, std::string& missing) {
    std::error_code error;
    const std::filesystem::path program = std::filesystem::read_symlink("/proc/self/exe", error);
    const std::string programFolder = error ? std::string(".") : program.parent_path().string();
    const std::string folder = vl_db::findOfficialPsdFolder(programFolder);
    if (folder.empty()) {
        missing = "The official property-set definitions were not found (no res/psd beside or above " + programFolder +
                  "); the central library holds only the office's own property sets.";
        return 0;
    }
    vantlib::PropertySetStore store(central);
    const uint32_t official =
        vl_db::importPsdFiles(store, {folder}, {L"IFC4", L"IFC4 official property sets", false});
    return store.propertySets(official).size();
}

}  // namespace vlib::demo
