// libFuzzer harness: any bytes, read as a specifier's JSON by every kind and as the stored data
// of every kind, are read or refused with ValueError; what is read writes JSON that reads back
// to the same specifier.
#include <cstdint>
#include <cstdlib>
#include <string>

#include <vl_db/TypeSpecifier.h>

using namespace vl_db;

namespace {

// Reads `json` into a fresh specifier; a specifier that reads must survive its own JSON.
template <class Specifier>
void readAndRewrite(const JsonValue& json, Specifier fresh) {
    try {
        fresh.fromJson(json);
    } catch (const ValueError&) {
        return;
    }
    const JsonValue written = fresh.toJson();
    Specifier again = fresh;
    again.fromJson(JsonValue::parse(written.dump()));
    if (again.toJson() != written)
        std::abort();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    const std::string text(reinterpret_cast<const char*>(data), size);
    const JsonValue json = JsonValue::parse(text, nullptr, false);
    if (!json.is_discarded()) {
        readAndRewrite(json, EnumTypeSpecifier<long long>());
        readAndRewrite(json, EnumTypeSpecifier<double>());
        readAndRewrite(json, EnumTypeSpecifier<OdString>());
        readAndRewrite(json, FormulaTypeSpecifier<OdString>());
        readAndRewrite(json, ParentRefTypeSpecifier<OdString>());
        readAndRewrite(json, ValueDefinitionTypeSpecifier<OdString>());
        readAndRewrite(json, ExtendedTypeSpecifier(kRealCode, kListValue, std::string()));
    }
    for (int kind = 0; kind <= int(vantlib::TypeSpecification::kLastKind); ++kind)
        for (int code : {int(kBooleanCode), int(kIntegerCode), int(kRealCode), int(kStringCode), 0}) {
            const vantlib::TypeSpecification stored{vantlib::TypeSpecification::Kind(kind), code,
                                                    kind == vantlib::TypeSpecification::kExtended ? kTableValue : kSingleValue,
                                                    text};
            try {
                const TypeSpecifierPtr specifier = specifierFromStorage(stored);
                const vantlib::TypeSpecification back = storageOf(*specifier);
                if (specifierFromStorage(back)->toJson() != specifier->toJson())
                    std::abort();
            } catch (const ValueError&) {
            }
        }
    return 0;
}
