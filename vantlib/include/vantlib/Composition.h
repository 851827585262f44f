#pragma once
// A composition: an ordered build-up of plies of materials, from the exterior (top) side to
// the interior (bottom) side, such as the type of a wall, slab or roof.
#include <vector>

#include <vantlib/AnnotatedObject.h>
#include <vantlib/Material.h>

namespace vantlib {

// One layer of a composition. Copyable; the material is the library's material that the ply
// refers to, loaded with the composition. Plies of one read (one composition or one query
// result) that use the same material share one copy of it.
class Ply {
public:
    Ply() = default;
    Ply(const QcSmartPtr<Material>& material, double thickness, MaterialFunction function)
        : m_material(material), m_thickness(thickness), m_function(function) {}
    // The ply a material makes by default: its default function and first thickness.
    static Ply defaultPly(const QcSmartPtr<Material>& material);

    const QcSmartPtr<Material>& material() const { return m_material; }
    void set_material(const QcSmartPtr<Material>& material) { m_material = material; }
    double thickness() const { return m_thickness; }
    void set_thickness(double thickness) { m_thickness = thickness; }
    MaterialFunction function() const { return m_function; }
    void set_function(MaterialFunction function) { m_function = function; }

private:
    QcSmartPtr<Material> m_material;
    double m_thickness = 0.0;
    MaterialFunction m_function = kFunctionNone;
};

class Composition : public AnnotatedObject {
public:
    static constexpr ObjectType kType = kComposition;

    // Base type: one bit per kind of building element; kAll (64) stands for any kind.
    enum Type : uint32_t {
        kWall = 1,
        kRoof = 2,
        kSlab = 4,     // horizontal: its sides are top and bottom
        kBeam = 8,
        kColumn = 16,
        kMember = 32,
        kAll = 64,
        kGeneric = 128,
        kFooting = 256,
        kCovering = 512,
        kPlate = 1024,
    };

    static QcSmartPtr<Composition> create(const OdString& name, Type baseType = kWall);
    static void create(const OdString& name, QcSmartPtr<Composition>& out) { out = create(name); }
    explicit Composition(const OdString& name = OdString(), Type baseType = kWall);

    // Base type. (Hides Object::type(); use objectType() for the kind of object.)
    Type type() const { return m_baseType; }
    void set_type(Type baseType) { m_baseType = baseType; }
    void set_base_type(Type baseType) { m_baseType = baseType; }

    // User-defined composition type; null when none. Stored by name like a material's class.
    const QcSmartPtr<CompositionType>& composition_type() const { return m_compositionType; }
    void set_type(const QcSmartPtr<CompositionType>& type) { m_compositionType = type; }

    const QcSmartPtr<Layer>& layer() const { return m_layer; }
    void set_layer(const QcSmartPtr<Layer>& layer) { m_layer = layer; }

    const std::vector<Ply>& plies() const { return m_plies; }
    unsigned numPlies() const { return unsigned(m_plies.size()); }
    // Index checks throw OdError_InvalidIndex.
    const Ply& ply(unsigned index) const;
    void set_ply(unsigned index, const Ply& ply);
    void append_ply(const Ply& ply) { m_plies.push_back(ply); }
    void insert_ply(unsigned index, const Ply& ply);
    void remove_ply(unsigned index);
    void move_ply(unsigned from, unsigned to);

    // The ply whose thickness adapts to the element; -1 when none. Follows its ply when plies
    // are inserted, removed or moved.
    int variable_ply() const { return m_variablePly; }
    bool has_variable_ply() const { return m_variablePly >= 0; }
    void set_variable_ply(int index);
    void clear_variable_ply() { m_variablePly = -1; }
    double variable_ply_min_thickness() const { return m_variableMin; }
    void set_variable_ply_min_thickness(double thickness) { m_variableMin = thickness; }

    // Sum of the ply thicknesses.
    double thickness() const;

    QcSmartPtr<Composition> cloneObject() const { return QcSmartPtr<Composition>(static_cast<Composition*>(cloneUnstored())); }

protected:
    Object* cloneImpl() const override { return new Composition(*this); }

private:
    friend class LibraryAccess;
    Type m_baseType;
    QcSmartPtr<CompositionType> m_compositionType;
    QcSmartPtr<Layer> m_layer;
    std::vector<Ply> m_plies;
    int m_variablePly = -1;
    double m_variableMin = 0.0;
};

}  // namespace vantlib
