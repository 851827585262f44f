#pragma once
// Keywords, layers, material classes and composition types: objects identified by their name.
#include <vantlib/Object.h>

namespace vantlib {

class Tag : public NamedObject<Tag, kTag> {
public:
    explicit Tag(const OdString& name = OdString()) : NamedObject(name) {}
};

class Layer : public NamedObject<Layer, kLayer> {
public:
    explicit Layer(const OdString& name = OdString()) : NamedObject(name) {}
};

class MaterialType : public NamedObject<MaterialType, kMaterialType> {
public:
    explicit MaterialType(const OdString& name = OdString()) : NamedObject(name) {}
};

class CompositionType : public NamedObject<CompositionType, kCompositionType> {
public:
    explicit CompositionType(const OdString& name = OdString()) : NamedObject(name) {}
};

using Tags = std::vector<QcSmartPtr<Tag>>;

}  // namespace vantlib
