// Documents that must not be imported: each is refused with a message that says what and where,
// and the library file keeps every byte it had.
#include "ExchangeFixture.h"

#include <fstream>

namespace vltest {

namespace {

struct BadDocument {
    const char* what;
    std::string document;
    const char* message;  // a part of the error message
};

// A valid document with `change` applied to one spot of it.
std::string replaced(std::string text, const std::string& from, const std::string& to) {
    const size_t at = text.find(from);
    EXPECT_NE(at, std::string::npos) << from;
    if (at != std::string::npos)
        text.replace(at, from.size(), to);
    return text;
}

}  // namespace

TEST_F(ExchangeTest, EveryBadDocumentIsRefusedAndLeavesTheLibraryByteIdentical) {
    const OdString path = dir.file("target.vlib");
    {
        auto target = Library::create(path, OdDb::kUnitsMillimeters);
        fillSample(target);
    }
    auto source = newLibrary("source.vlib");
    fillSample(source);
    source->save(Material::create(W("Only in the document")));
    // Every object is new to the target except the sample's, so a write would show.
    std::string good = exportLibrary(*source);
    good = replaced(good, "\"name\": \"Brick \u00C4\"", "\"name\": \"Brick new\"");

    const std::string binary("\x7f" "ELF\x02\x01\x01\x00\x00\xff\xfe\x00\x01", 14);
    const std::vector<BadDocument> cases = {
        {"malformed JSON", replaced(good, "\"version\": 3,", "\"version\": 3"), "line 4, column 8"},
        {"newer format version", replaced(good, "\"version\": 3", "\"version\": 4"), "format version 4"},
        {"unknown kind", replaced(good, "\"tags\": [", "\"windows\": [], \"tags\": ["), "unknown field 'windows'"},
        {"unknown field", replaced(good, "\"appearance\": \"Masonry", "\"colour\": 3, \"appearance\": \"Masonry"),
         "unknown field 'colour'"},
        {"reference to nothing", replaced(good, "\"material\": \"insulation\"", "\"material\": \"Nowhere\""),
         "'Nowhere' in 'materials', which is neither in the document nor in the library"},
        {"unknown length unit", replaced(good, "\"unit\": \"millimeters\"", "\"unit\": \"furlongs\""),
         "names no length unit: 'furlongs'"},
        {"unknown physical unit", replaced(good, "\"unit\": \"kg/m\u00B3\"", "\"unit\": \"kg/m^3\""),
         "names no unit of density: 'kg/m^3'"},
        {"duplicate name", replaced(good, "\"name\": \"Plain\"", "\"name\": \"ONLY in the document\""),
         "occurs twice in 'materials'"},
        {"non-number thickness", replaced(good, "\"thickness\": 120.0", "\"thickness\": \"120\""), "is not a number"},
        {"property that does not apply", replaced(good, "\"Rating\": \"REI 90\"", "\"Fire class\": \"REI 90\""),
         "does not apply to its kind"},
        {"not a library document", "{\"materials\": []}", "not a library exchange document"},
        {"empty file", "", "empty"},
        {"only white space", " \n\t\n", "empty"},
        {"binary file", binary, "not valid JSON"},
        {"a list at the top", "[1, 2]", "not a library exchange document"},
    };

    const std::string before = fileBytes(path.toUtf8());
    auto target = Library::open(path);
    for (const BadDocument& bad : cases) {
        SCOPED_TRACE(bad.what);
        try {
            importLibrary(target, bad.document, ClashAnswer::kOverwrite);
            ADD_FAILURE() << "imported";
        } catch (const ExchangeError& e) {
            EXPECT_NE(std::string(e.what()).find(bad.message), std::string::npos) << e.what();
        }
    }
    target.reset();
    EXPECT_EQ(fileBytes(path.toUtf8()), before);

    // The same document without the fault goes in, so the faults above were what stopped it.
    target = Library::open(path);
    EXPECT_EQ(importLibrary(target, good, ClashAnswer::kOverwrite).total().created, 2u);
}

TEST_F(ExchangeTest, AFailureWhileWritingUndoesEverythingWrittenBefore) {
    auto source = newLibrary("source.vlib");
    fillSample(source);
    const std::string document = exportLibrary(*source);
    const OdString path = dir.file("target.vlib");
    { Library::create(path, OdDb::kUnitsMillimeters)->save(Material::create(W("Kept"))); }
    const std::string before = fileBytes(path.toUtf8());

    // An observer that fails once the import has written a good part of the document: the
    // storage's own failures (disk full, lock timeout) end an import the same way.
    struct FailingReactor : RecordingReactor {
        void onSaved(const std::shared_ptr<const Library>&, const ObjectKey& key) override {
            if (key.type == kComposition)
                throw StorageError(OdString(L"disk full"));
        }
    };
    auto target = Library::open(path);
    {
        FailingReactor reactor;
        EXPECT_THROW(importLibrary(target, document), StorageError);
    }
    EXPECT_EQ(target->count<Material>(), 1u);
    EXPECT_EQ(target->count<Tag>(), 0u);
    target.reset();
    EXPECT_EQ(fileBytes(path.toUtf8()), before);
}

}  // namespace vltest
