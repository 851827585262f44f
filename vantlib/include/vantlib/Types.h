#pragma once
// Keys and enumerations shared by every part of the library data module.
#include <cstdint>

#include <OdString.h>

namespace vantlib {

// Kind of a library object. The numbers are stored in library files and exchanged with the
// drawing side, so they never change meaning.
enum ObjectType : uint32_t {
    kUnknownObject = 0,
    kTag = 1,                  // free keyword attached to materials and compositions
    kLayer = 2,                // drawing layer name used by section / elevation views and compositions
    kMaterialType = 3,         // class of a material
    kMaterial = 4,
    kComposition = 5,
    kCompositionType = 6,      // user-defined kind of a composition
    kCustomProperty = 7,       // user-defined property whose values objects carry
    kBimAssetRecord = 8,       // part of a material, never stored or copied alone
    kInformationAssetRecord = 9,   // part of a material, never stored or copied alone
    kPatternRecord = 10,       // part of a material, never stored or copied alone
    kPhysicalAsset = 11,       // thermal / structural values of a material
    kPlyRecord = 12,           // part of a composition, never stored or copied alone
    kProfileStandard = 13,     // catalogue a profile name belongs to (e.g. "EN 10365")
    kProfileName = 14,         // family of profiles of one standard (e.g. "IPE")
    kReserved15 = 15,
    kReserved16 = 16,
    kConstructionProfile = 17, // a profile of any shape: queries and keys that span all shapes
    // Construction profiles by shape (each object carries the type of its shape).
    kAsymmetricIShapeProfile = 18,
    kIShapeProfile = 19,
    kLShapeProfile = 20,
    kUShapeProfile = 21,
    kCShapeProfile = 22,
    kZShapeProfile = 23,
    kTShapeProfile = 24,
    kCraneRailAShapeProfile = 25,
    kCraneRailFShapeProfile = 26,
    kCircleProfile = 27,
    kCircleHollowProfile = 28,
    kEllipseProfile = 29,
    kRectangleProfile = 30,
    kRectangleHollowProfile = 31,
    kRoundedRectangleProfile = 32,
    kTrapeziumProfile = 33,
    kCustomProfile = 34,       // outline taken from drawing geometry
    kFirstProfileShape = 18,   // 18..35 are construction profiles; 35 is kept free for a shape to come
    kLastProfileShape = 35,
    kFirstPropertySetKind = 36,    // 36..44: property-set definitions (PropertySets.h)
    kPropertyNamespace = 36,       // a group of property sets (the official ones, an office's own)
    kPropertySet = 37,
    kPropertyDefinition = 38,      // a property of a set
    kValueDefinition = 39,         // a value a set computes (formula, measure)
    kLastPropertySetKind = 44,
};

// One object of one library: kind then identifier. Ordered, so usable in std::set / std::map.
struct ObjectKey {
    ObjectType type = kUnknownObject;
    uint32_t id = 0;

    ObjectKey() = default;
    ObjectKey(ObjectType t, uint32_t i) : type(t), id(i) {}

    friend bool operator<(const ObjectKey& a, const ObjectKey& b) {
        return a.type != b.type ? a.type < b.type : a.id < b.id;
    }
    friend bool operator==(const ObjectKey& a, const ObjectKey& b) { return a.type == b.type && a.id == b.id; }
    friend bool operator!=(const ObjectKey& a, const ObjectKey& b) { return !(a == b); }
};
static_assert(sizeof(ObjectKey) == 8, "ObjectKey is exchanged as two 32-bit fields");

// Finds an object by its name; names of one kind are unique regardless of letter case.
class NameKey {
public:
    explicit NameKey(const OdString& name) : m_name(name) {}
    const OdString& name() const { return m_name; }

private:
    OdString m_name;
};

// Answer of the reactor to a name clash (values fixed by the reactor contract).
enum SaveResolution : uint32_t {
    kSaveSkip = 1,       // keep the existing object, drop the incoming one
    kSaveOverwrite = 2,  // the incoming object replaces the existing one (keeping its id)
    kSaveRename = 3,     // the incoming object is stored under a new, free name
};

// Answer of the reactor before an object is removed.
enum RemoveResolution : uint32_t {
    kRemoveAllow = 0,
    kRemoveVeto = 1,     // somebody (an open drawing) still uses the object
};

// How an outer transaction ended.
enum TransactionResult : uint32_t {
    kTransactionCommitted = 0,
    kTransactionRolledBack = 1,
};

// Function of a material inside a composition.
enum MaterialFunction : uint32_t {
    kFunctionNone = 0,
    kFunctionStructure = 1,
    kFunctionSubstrate = 2,
    kFunctionInsulation = 3,
    kFunctionFinish1 = 4,
    kFunctionFinish2 = 5,
    kFunctionMembrane = 6,
};

}  // namespace vantlib
