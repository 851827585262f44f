#pragma once
// A user-defined property. Materials and compositions carry text values of such properties.
#include <vector>

#include <vantlib/Object.h>

namespace vantlib {

class Library;

class CustomProperty : public Object {
public:
    static constexpr ObjectType kType = kCustomProperty;

    // objectType: the kind whose objects may carry the property: kMaterial, kComposition, or
    // kUnknownObject (0) for any kind. Other kinds throw ConsistencyError.
    static QcSmartPtr<CustomProperty> create(const OdString& name, ObjectType objectType);
    explicit CustomProperty(const OdString& name = OdString(), ObjectType objectType = kUnknownObject);

    ObjectType object_type() const { return m_objectType; }
    void set_object_type(ObjectType objectType);
    // True when objects of `kind` may carry this property.
    bool appliesTo(ObjectType kind) const { return m_objectType == kUnknownObject || m_objectType == kind; }

    QcSmartPtr<CustomProperty> cloneObject() const { return QcSmartPtr<CustomProperty>(static_cast<CustomProperty*>(cloneUnstored())); }

protected:
    Object* cloneImpl() const override { return new CustomProperty(*this); }

private:
    ObjectType m_objectType;
};

// The value of one custom property on one object. The property is matched by name when the
// object is saved or copied into another library.
struct CustomValue {
    QcSmartPtr<CustomProperty> property;
    OdString value;
};
using CustomValues = std::vector<CustomValue>;

// The properties of a library that objects of `objectType` may carry (those of that kind and
// those of any kind); with kUnknownObject, every property. Sorted by name.
std::vector<QcSmartPtr<CustomProperty>> getCustomProperties(const std::shared_ptr<const Library>& library,
                                                            ObjectType objectType);
// True when some object of the library carries a value of the property.
bool isCustomPropUsed(const std::shared_ptr<const Library>& library, const QcSmartPtr<CustomProperty>& property);

}  // namespace vantlib
