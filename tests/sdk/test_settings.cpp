#include <gtest/gtest.h>

#include <cstdlib>
#include <fstream>
#include <map>

#include "OdEdSettingsManager.h"
#include "TempFolder.h"

namespace {

// A host-side store, as the host plugs in its own configuration file.
class RecordingStore : public OdEdSettingsStore {
public:
    bool read(const OdString& name, OdTypedValue& value) override {
        auto found = values.find(name);
        if (found == values.end()) return false;
        value = found->second;
        return true;
    }
    void write(const OdString& name, const OdTypedValue& value) override { values[name] = value; }
    void remove(const OdString& name) override { values.erase(name); }
    std::vector<OdString> names() override { return {}; }
    void flush() override { ++flushes; }

    std::map<OdString, OdTypedValue> values;
    int flushes = 0;
};

}  // namespace

TEST(SettingsTextFile, ValuesKeepTheirTypesAcrossSessions) {
    TempFolder folder;
    const OdString path = folder.file("nested/dir/settings.txt");
    const OdString awkward = L"tab\there\nnew line \\ back \u00B5";
    {
        OdEdSettingsManager settings(std::make_shared<OdEdTextFileSettingsStore>(path));
        settings.setBool(L"DlgMaterials/ShowPreview", true);
        settings.setShort(L"ProfileOffsetBehavior", 1);
        settings.setInt(L"DlgMaterials/Width", -640);
        settings.setDouble(L"Scale", 0.1);
        settings.setString(L"Odd\tname", awkward);
        settings.setInt(L"Removed", 5);
        settings.remove(L"Removed");
    }
    OdEdSettingsManager settings(std::make_shared<OdEdTextFileSettingsStore>(path));
    EXPECT_EQ(settings.getValue(L"DlgMaterials/ShowPreview"), OdTypedValue(true));
    EXPECT_EQ(settings.getValue(L"ProfileOffsetBehavior"), OdTypedValue(int16_t(1)));
    EXPECT_EQ(settings.getInt(L"DlgMaterials/Width"), -640);
    EXPECT_EQ(settings.getDouble(L"Scale"), 0.1);
    EXPECT_EQ(settings.getString(L"Odd\tname"), awkward);
    EXPECT_FALSE(settings.has(L"Removed"));
}

TEST(SettingsTextFile, UnreadableLinesAreKeptAndDoNotStopReading) {
    TempFolder folder;
    const OdString path = folder.file("settings.txt");
    std::ofstream(path.toUtf8()) << "garbage without tab\nGood\tint:3\nBad\tint:x\n";
    {
        OdEdTextFileSettingsStore store(path);
        OdTypedValue value;
        ASSERT_TRUE(store.read(L"Good", value));
        EXPECT_EQ(value.asInt(), 3);
        EXPECT_FALSE(store.read(L"Bad", value));
        store.write(L"New", OdTypedValue(1));
        store.flush();
    }
    const std::string text = fileBytes(path);
    EXPECT_NE(text.find("garbage without tab"), std::string::npos);
    EXPECT_NE(text.find("Bad\tint:x"), std::string::npos);
    EXPECT_NE(text.find("New\tint:1"), std::string::npos);
}

TEST(SettingsManager, TypedReadsFallBackToDefaults) {
    auto store = std::make_shared<RecordingStore>();
    OdEdSettingsManager settings(store);
    EXPECT_EQ(settings.getInt(L"Missing", 9), 9);
    settings.setString(L"Text", L"abc");
    EXPECT_EQ(settings.getInt(L"Text", 4), 4);
    settings.setDouble(L"Fraction", 2.5);
    EXPECT_EQ(settings.getInt(L"Fraction", 4), 4);
    EXPECT_EQ(settings.getDouble(L"Fraction"), 2.5);
    settings.setInt(L"Big", 70000);
    EXPECT_EQ(settings.getShort(L"Big", 7), 7);
    EXPECT_EQ(settings.getDouble(L"Big"), 70000.0);
    EXPECT_THROW(settings.setInt(L"", 1), OdError);
    EXPECT_EQ(store->flushes, 3);  // every change is made durable at once
}

TEST(SettingsManager, DefaultStoreLivesInTheConfigFolder) {
    TempFolder folder;
    const char* previous = std::getenv("VL_CONFIG_DIR");
    const std::string saved = previous ? previous : "";
    setenv("VL_CONFIG_DIR", folder.path("").string().c_str(), 1);
    EXPECT_EQ(OdEdSettingsManager::defaultSettingsPath(), OdString::fromUtf8(folder.path("").string()) + L"/sdk-settings.txt");
    {
        OdEdSettingsManager settings;
        settings.setInt(L"Answer", 42);
    }
    EXPECT_EQ(OdEdSettingsManager().getInt(L"Answer"), 42);
    if (previous)
        setenv("VL_CONFIG_DIR", saved.c_str(), 1);
    else
        unsetenv("VL_CONFIG_DIR");
}
