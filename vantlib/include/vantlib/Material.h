#pragma once
// A building material: identity, class, appearance in views and in 3D, and its assets.
#include <memory>
#include <optional>

#include <vantlib/AnnotatedObject.h>
#include <vantlib/Assets.h>
#include <vantlib/Pattern.h>

namespace vantlib {

class Library;

// Which view a pattern belongs to.
enum HatchView : uint32_t { kSectionView = 0, kElevationView = 1 };

class Material : public AnnotatedObject {
public:
    static constexpr ObjectType kType = kMaterial;

    static QcSmartPtr<Material> create(const OdString& name);
    static void create(const OdString& name, QcSmartPtr<Material>& out) { out = create(name); }
    explicit Material(const OdString& name = OdString());

    // The material's class; null when it has none. Stored by name: saving into a library that
    // lacks a class of that name creates it there.
    const QcSmartPtr<MaterialType>& material_type() const { return m_class; }
    void set_type(const QcSmartPtr<MaterialType>& materialClass) { m_class = materialClass; }

    // Name of the render material used in 3D views.
    const OdString& appearance() const { return m_appearance; }
    void set_appearance(const OdString& renderMaterial) { m_appearance = renderMaterial; }

    const Pattern& pattern(HatchView view) const { return view == kElevationView ? m_elevation : m_section; }
    Pattern& pattern(HatchView view) { return view == kElevationView ? m_elevation : m_section; }
    const Pattern& section_pattern() const { return m_section; }
    Pattern& section_pattern() { return m_section; }
    const Pattern& elevation_pattern() const { return m_elevation; }
    Pattern& elevation_pattern() { return m_elevation; }
    void set_pattern(HatchView view, const Pattern& pattern) { this->pattern(view) = pattern; }

    // Assets are optional: null when absent unless `create` asks to add an empty one. The
    // pointers stay valid as long as the material lives and the asset is not removed.
    BimAsset* bim_asset(bool create = false);
    const BimAsset* bim_asset() const { return m_bim ? &*m_bim : nullptr; }
    void remove_bim_asset() { m_bim.reset(); }
    InformationAsset* information_asset(bool create = false);
    const InformationAsset* information_asset() const { return m_info ? &*m_info : nullptr; }
    void remove_information_asset() { m_info.reset(); }
    PhysicalAsset* physical_asset(bool create = false);
    const PhysicalAsset* physical_asset() const { return m_physical ? &*m_physical : nullptr; }
    void remove_physical_asset() { m_physical.reset(); }

    QcSmartPtr<Material> cloneObject() const { return QcSmartPtr<Material>(static_cast<Material*>(cloneUnstored())); }

protected:
    Object* cloneImpl() const override { return new Material(*this); }

private:
    friend class LibraryAccess;
    QcSmartPtr<MaterialType> m_class;
    OdString m_appearance;
    Pattern m_section;
    Pattern m_elevation;
    std::optional<BimAsset> m_bim;
    std::optional<InformationAsset> m_info;
    std::optional<PhysicalAsset> m_physical;
};

// Gives the material the class of that name from the material's library. An empty name
// removes the class. Returns false, leaving the material unchanged, when the library has no
// class of that name; a material without a library takes a new class of that name.
bool setClass(const QcSmartPtr<Material>& material, const OdString& className);

// True when some material of the library has that class (by id when it has one, else by name).
bool isMaterialClassUsed(const std::shared_ptr<const Library>& library, const QcSmartPtr<MaterialType>& materialClass);

}  // namespace vantlib
