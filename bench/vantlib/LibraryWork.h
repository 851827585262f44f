#pragma once
// The library side of the benchmark: objects made from the records, and the operations timed.
#include <vector>

#include <vantlib/vantlib.h>

#include "Records.h"

QcSmartPtr<vantlib::Material> toMaterial(const MaterialRecord& record);
QcSmartPtr<vantlib::Composition> toComposition(const CompositionRecord& record,
                                               const std::vector<QcSmartPtr<vantlib::Material>>& storedMaterials);

// Answers every name clash with overwrite, like a user replacing a whole set.
class OverwriteReactor : public vantlib::Library::Reactor {
public:
    vantlib::SaveResolution onObjectNotUnique(ObjectInfo&) override { return vantlib::kSaveOverwrite; }
};
