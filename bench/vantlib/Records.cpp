#include "Records.h"

#include <cstdio>

const char* const kQueryClass = "Class 7";
const char* const kQueryTag = "Tag 7";
// Compositions of base type 1 are every tenth one, so this tag selects one in a hundred.
const char* const kQueryCompositionTag = "Tag 10";

static std::string numbered(const char* format, size_t n) {
    char buffer[64];
    std::snprintf(buffer, sizeof buffer, format, n);
    return buffer;
}

std::vector<MaterialRecord> makeMaterials(size_t count) {
    std::vector<MaterialRecord> records(count);
    for (size_t i = 0; i < count; ++i) {
        MaterialRecord& r = records[i];
        r.name = numbered("Material %06zu", i);
        r.description = numbered("Generated material number %zu for the benchmark", i);
        r.className = numbered("Class %zu", i % 50);
        r.tag1 = numbered("Tag %zu", i % 100);
        r.tag2 = numbered("Tag %zu", (i * 7 + 3) % 100);
        if (r.tag2 == r.tag1)
            r.tag2 = "Tag extra";
        r.layer = numbered("Layer %zu", i % 10);
        r.uniqueCode = numbered("MAT-%zu", i);
        r.manufacturer = numbered("Maker %zu", i % 200);
        r.function = int(i % 7);
        r.thickness1 = 0.01 * double(1 + i % 30);
        r.thickness2 = r.thickness1 * 2;
        r.density = 500.0 + double(i % 2000);
    }
    return records;
}

std::vector<CompositionRecord> makeCompositions(size_t count, size_t materialCount) {
    static const int baseTypes[] = {1, 2, 4, 8, 16, 32, 128, 256, 512, 1024};
    std::vector<CompositionRecord> records(count);
    for (size_t i = 0; i < count; ++i) {
        CompositionRecord& r = records[i];
        r.name = numbered("Composition %06zu", i);
        r.description = numbered("Generated composition number %zu", i);
        r.typeName = numbered("Type %zu", i % 20);
        r.tag = numbered("Tag %zu", i % 100);
        r.layer = numbered("Layer %zu", i % 10);
        r.baseType = baseTypes[i % 10];
        for (int p = 0; p < 3; ++p) {
            r.plyMaterial[p] = int((i * 3 + size_t(p)) % materialCount);
            r.plyThickness[p] = 0.05 * (p + 1);
            r.plyFunction[p] = p + 1;
        }
    }
    return records;
}
