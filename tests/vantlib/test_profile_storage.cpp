// Profiles in library files: identity by profile name and size, the editors' query, classes
// sharing one table, and the migration of libraries written before profiles existed.
#include "support.h"

#include <filesystem>

#include <vantlib/Exchange.h>

#include "LibraryStore.h"

using namespace vltest;

namespace {

// An I-shape of the depth with the other dimensions in proportion.
QcSmartPtr<IShapeProfile> beamOf(const QcSmartPtr<ProfileName>& name, const OdString& size, double depth) {
    QcSmartPtr<IShapeProfile> profile = IShapeProfile::create(name, size);
    profile->set_overall_depth(depth);
    profile->set_overall_width(depth / 2);
    profile->set_web_thickness(depth / 40);
    profile->set_flange_thickness(depth / 25);
    return profile;
}

class ProfileLibrary : public ::testing::Test {
protected:
    void SetUp() override {
        library = Library::create(dir.file("profiles.vlib"), OdDb::kUnitsMillimeters);
        en = library->save(ProfileStandard::create(W("EN 10365")));
        ipe = library->save(ProfileName::create(en, W("IPE"), kProfileStructuralSteel));
        hea = library->save(ProfileName::create(en, W("HEA"), kProfileStructuralSteel));
        duct = library->save(ProfileName::create(QcSmartPtr<ProfileStandard>(), W("Duct"), kProfileHvac));
    }

    QcSmartPtr<Profile> addI(const QcSmartPtr<ProfileName>& name, const OdString& size, double depth) {
        return library->save(QcSmartPtr<Profile>(beamOf(name, size, depth).get()));
    }

    std::vector<OdString> names(const ProfilesPanelQuery& query) {
        std::vector<QcSmartPtr<Profile>> found;
        library->get(found, query);
        std::vector<OdString> result;
        for (const auto& profile : found)
            result.push_back(profile->displayName());
        return result;
    }

    TempDir dir;
    std::shared_ptr<Library> library;
    QcSmartPtr<ProfileStandard> en;
    QcSmartPtr<ProfileName> ipe, hea, duct;
};

using Names = std::vector<OdString>;

// The dump without the tables that versions 2 and 3 add (profiles, property sets).
std::string withoutProfileTables(const std::string& dump) {
    return withoutTables(withoutTables(dump, "[lib_profile"), "[lib_pset");
}

}  // namespace

TEST_F(ProfileLibrary, ASizeIsUniqueWithinItsProfileNameOnly) {
    RecordingReactor reactor;
    QcSmartPtr<Profile> ipe200 = addI(ipe, W("200"), 200);
    QcSmartPtr<Profile> hea200 = addI(hea, W("200"), 190);
    EXPECT_NE(ipe200->id(), hea200->id()) << "the same size under another name is no clash";
    EXPECT_TRUE(reactor.clashes.empty());

    // A circle of the same name and size clashes with the I-shape: identity ignores the shape.
    QcSmartPtr<CircleProfile> round = CircleProfile::create(ipe, W("200"));
    round->set_radius(100);
    reactor.answer = kSaveRename;
    QcSmartPtr<Profile> renamed = library->save(QcSmartPtr<Profile>(round.get()));
    ASSERT_EQ(1u, reactor.clashes.size());
    EXPECT_EQ(kCircleProfile, reactor.clashTypes[0]);
    EXPECT_EQ(W("200_2"), renamed->size()) << "the default rename numbers the size within IPE";
    EXPECT_EQ(ipe->id(), renamed->name()->id());

    // Overwrite replaces the row, and with it the class.
    QcSmartPtr<RectangleProfile> plate = RectangleProfile::create(hea, W("200"));
    plate->set_x_dim(200);
    plate->set_y_dim(20);
    reactor.answer = kSaveOverwrite;
    QcSmartPtr<Profile> overwritten = library->save(QcSmartPtr<Profile>(plate.get()));
    EXPECT_EQ(hea200->id(), overwritten->id());
    EXPECT_EQ(kRectangleProfile, library->get<Profile>(hea200->id())->objectType());
    EXPECT_FALSE(library->get<IShapeProfile>(hea200->id())) << "a shape's kind reads its own rows only";
    EXPECT_EQ(1u, library->count<RectangleProfile>());
    EXPECT_EQ(3u, library->count<Profile>());

    // Profile names are unique within their standard.
    reactor.answer = kSaveSkip;
    QcSmartPtr<ProfileName> again = library->save(ProfileName::create(en, W("ipe"), kProfileGeneric));
    EXPECT_EQ(ipe->id(), again->id());
    QcSmartPtr<ProfileStandard> din = library->save(ProfileStandard::create(W("DIN 1025")));
    EXPECT_NE(ipe->id(), library->save(ProfileName::create(din, W("IPE"), kProfileStructuralSteel))->id());
}

TEST_F(ProfileLibrary, KeysFindProfilesAndNames) {
    addI(ipe, W("100x10"), 100);
    EXPECT_EQ(W("100x10"), library->get<Profile>(ProfileKey(ipe->id(), W("100X10")))->size());
    EXPECT_FALSE(library->get<Profile>(ProfileKey(hea->id(), W("100x10"))));
    EXPECT_FALSE(library->get<Profile>(ProfileKey(0, W("100x10"))));

    EXPECT_EQ(ipe->id(), library->get<ProfileName>(ProfileNameKey(W("ipe"), en->id(), kProfileStructuralSteel))->id());
    EXPECT_FALSE(library->get<ProfileName>(ProfileNameKey(W("IPE"), en->id(), kProfileGeneric)));
    EXPECT_EQ(duct->id(), library->get<ProfileName>(ProfileNameKey(W("Duct"), 0, kProfileHvac))->id());

    QcSmartPtr<Profile> read = library->get<Profile>(ProfileKey(ipe->id(), W("100x10")));
    ASSERT_TRUE(read->name());
    ASSERT_TRUE(read->name()->standard()) << "a profile is read with its whole profile name";
    EXPECT_EQ(W("EN 10365"), read->name()->standard()->name());
    EXPECT_EQ(kProfileStructuralSteel, read->name()->type());
}

TEST_F(ProfileLibrary, SizeCriteriaIgnoreHowTheSizeIsWritten) {
    StringCriteria size(W("100 X 10"), StringCriteria::kSize);
    EXPECT_TRUE(size.matches(W("100x10")));
    EXPECT_TRUE(size.matches(W("100*10")));
    EXPECT_TRUE(size.matches(W("100\u00D710")));
    EXPECT_FALSE(size.matches(W("100x100")));

    for (const char* written : {"100x10", "100 * 10", "90x10"})
        addI(ipe, W(written), 100);
    addI(hea, W("100x10"), 96);
    std::vector<QcSmartPtr<Profile>> found;
    library->get(found, size);
    EXPECT_EQ(3u, found.size());
    ProfileCriteria ofIpe;
    ofIpe.nameId = ipe->id();
    ofIpe.size = size;
    library->get(found, ofIpe);
    EXPECT_EQ(2u, found.size());
    ofIpe.size = StringCriteria(W("90 X 10"), StringCriteria::kSize);
    library->get(found, ofIpe);
    ASSERT_EQ(1u, found.size());
    EXPECT_EQ(W("90x10"), found[0]->size());
    ofIpe.nameId = hea->id();
    library->get(found, ofIpe);
    EXPECT_TRUE(found.empty());
}

TEST_F(ProfileLibrary, PanelQueryCombinesTypeClassStandardNameAndText) {
    addI(ipe, W("200"), 200);
    addI(ipe, W("300"), 300);
    addI(hea, W("200"), 190);
    QcSmartPtr<CircleHollowProfile> pipe = CircleHollowProfile::create(duct, W("DN 100"));
    pipe->set_description(W("spiral seam"));
    pipe->set_radius(50);
    pipe->set_wall_thickness(1);
    library->save(QcSmartPtr<Profile>(pipe.get()));
    QcSmartPtr<AsymmetricIShapeProfile> girder = AsymmetricIShapeProfile::create(hea, W("W1"));
    girder->set_overall_depth(400);
    girder->set_overall_width(300);
    girder->set_web_thickness(10);
    girder->set_flange_thickness(20);
    girder->set_top_flange_width(200);
    library->save(QcSmartPtr<Profile>(girder.get()));

    ProfilesPanelQuery all;
    EXPECT_EQ(5u, names(all).size());

    ProfilesPanelQuery steel;
    steel.type = kProfileStructuralSteel;
    EXPECT_EQ(4u, names(steel).size());
    steel.type = ProfileType(kProfileHvac | kProfilePiping);
    EXPECT_EQ(Names{W("Duct DN 100")}, names(steel));

    ProfilesPanelQuery shape;
    shape.className = W("vantlib::IShapeProfile");
    EXPECT_EQ(3u, names(shape).size()) << "the asymmetric I-shape is a class of its own";
    shape.className = W("vantlib::AsymmetricIShape");
    EXPECT_EQ(Names{W("EN 10365 HEA W1")}, names(shape));
    shape.className = W("vantlib::NoSuchShape");
    EXPECT_TRUE(names(shape).empty());

    ProfilesPanelQuery standards;
    standards.standards = {W("en 10365"), W("DIN 1025")};
    EXPECT_EQ(4u, names(standards).size());
    standards.standards = {W("DIN 1025")};
    EXPECT_TRUE(names(standards).empty());

    ProfilesPanelQuery byName;
    byName.name.equals(W("ipe"));
    EXPECT_EQ((Names{W("EN 10365 IPE 200"), W("EN 10365 IPE 300")}), names(byName));
    byName.text.contains(W("300"));
    EXPECT_EQ(Names{W("EN 10365 IPE 300")}, names(byName));

    ProfilesPanelQuery text;
    text.text.contains(W("SPIRAL"));
    EXPECT_EQ(Names{W("Duct DN 100")}, names(text)) << "the description is searched";
    text.text.contains(W("10365 HEA 2"));
    EXPECT_EQ(Names{W("EN 10365 HEA 200")}, names(text)) << "the full name is searched";
}

// Editors narrow a list they hold instead of reading the library again: for every query the
// profiles that match in memory are exactly those the library returns.
TEST_F(ProfileLibrary, AQueryMatchesInMemoryWhatTheLibraryReturns) {
    addI(ipe, W("200"), 200);
    addI(hea, W("200"), 190);
    auto bs = library->save(ProfileStandard::create(W("BS 4")));
    auto ub = library->save(ProfileName::create(bs, W("UB"), ProfileType(kProfileStructuralSteel | kProfileGeneric)));
    QcSmartPtr<IShapeProfile> universal = beamOf(ub, W("203x133x25"), 203);
    universal->set_description(W("Universal beam, grade S275"));
    library->save(QcSmartPtr<Profile>(universal.get()));
    QcSmartPtr<CircleHollowProfile> pipe = CircleHollowProfile::create(duct, W("DN 100"));
    pipe->set_description(W("Spiral seam, Ø 100"));
    pipe->set_radius(50);
    pipe->set_wall_thickness(1);
    library->save(QcSmartPtr<Profile>(pipe.get()));
    QcSmartPtr<RectangleProfile> plate = RectangleProfile::create(QcSmartPtr<ProfileName>(), W("Plate 10"));
    plate->set_x_dim(100);
    plate->set_y_dim(10);
    library->save(QcSmartPtr<Profile>(plate.get()));

    std::vector<ProfilesPanelQuery> queries(1);
    for (ProfileType type : {kProfileGeneric, kProfileStructuralSteel, kProfileHvac, kProfileElectrical,
                             ProfileType(kProfileHvac | kProfileStructuralSteel)}) {
        queries.emplace_back();
        queries.back().type = type;
    }
    for (const wchar_t* shape : {L"vantlib::IShapeProfile", L"vantlib::CircleHollow", L"vantlib::CircleProfile",
                                 L"Rectangle", L"vantlib::NoSuchShape"}) {
        queries.emplace_back();
        queries.back().className = shape;
    }
    for (std::set<OdString> standards : std::vector<std::set<OdString>>{
             {W("EN 10365")}, {W("en 10365"), W("bs 4")}, {W("DIN 1025")}, {W("EN")}}) {
        queries.emplace_back();
        queries.back().standards = standards;
    }
    for (const wchar_t* name : {L"IPE", L"ub", L"Duct", L"Plate", L"I"}) {
        queries.emplace_back();
        queries.back().name.equals(name);
        queries.emplace_back();
        queries.back().name.contains(name);
    }
    for (const wchar_t* text : {L"", L"200", L"10365 hea 2", L"SPIRAL", L"Ø", L"ø", L"plate 1", L"bs 4 ub 203",
                                L"200 ", L"grade s275", L" "}) {
        queries.emplace_back();
        queries.back().text.contains(text);
    }
    queries.emplace_back();
    queries.back().type = kProfileStructuralSteel;
    queries.back().standards = {W("EN 10365")};
    queries.back().text.contains(W("20"));

    std::vector<QcSmartPtr<Profile>> everything;
    library->get(everything, ProfilesPanelQuery());
    ASSERT_EQ(5u, everything.size());
    for (size_t q = 0; q < queries.size(); ++q) {
        std::vector<QcSmartPtr<Profile>> read;
        library->get(read, queries[q]);
        std::set<unsigned> fromLibrary, inMemory;
        for (const auto& profile : read)
            fromLibrary.insert(profile->id());
        for (const auto& profile : everything)
            if (queries[q].matches(*profile))
                inMemory.insert(profile->id());
        EXPECT_EQ(fromLibrary, inMemory) << "query " << q;
    }
}

TEST_F(ProfileLibrary, AProfileThatMakesNoSectionIsRefusedWithTheReason) {
    QcSmartPtr<IShapeProfile> flat = beamOf(ipe, W("0"), 200);
    flat->set_overall_depth(0);
    try {
        library->save(QcSmartPtr<Profile>(flat.get()));
        FAIL() << "a profile without depth was saved";
    } catch (const ConsistencyError& error) {
        EXPECT_NE(-1, error.message().find(L"depth")) << error.what();
    }
    QcSmartPtr<UShapeProfile> channel = UShapeProfile::create(ipe, W("U"));
    channel->set_depth(100);
    channel->set_flange_width(50);
    channel->set_web_thickness(60);
    channel->set_flange_thickness(8);
    EXPECT_THROW(library->save(QcSmartPtr<Profile>(channel.get())), ConsistencyError);
    channel->set_web_thickness(6);
    channel->set_flange_slope(-0.1);
    // The reason reaches the user in the user's language, through the module's translations.
    struct Translator : Translations {
        bool translate(OdString& out, const OdString& text) override {
            if (text == L"The dimension \"%ls\" is negative.")
                out = L"Das Maß \"%ls\" ist negativ.";
            else if (text == L"The profile \"%ls\" cannot be saved: %ls")
                out = L"Das Profil \"%ls\" kann nicht gespeichert werden: %ls";
            else
                return false;
            return true;
        }
    } german;
    Translations::set(&german);
    try {
        library->save(QcSmartPtr<Profile>(channel.get()));
        ADD_FAILURE() << "a negative slope was saved";
    } catch (const ConsistencyError& error) {
        EXPECT_EQ(OdString(L"Das Profil \"EN 10365 IPE U\" kann nicht gespeichert werden: Das Maß \"flange slope\" ist negativ."),
                  error.message());
    }
    Translations::set(nullptr);
    channel->set_flange_slope(0.1);
    EXPECT_NO_THROW(library->save(QcSmartPtr<Profile>(channel.get())));
    EXPECT_EQ(1u, library->count<Profile>()) << "nothing of the refused saves was kept";
}

TEST_F(ProfileLibrary, RemovalIsRefusedWhileUsedAndCopyBringsStandardAndName) {
    RecordingReactor reactor;
    QcSmartPtr<Material> steel = library->save(Material::create(W("S355")));
    QcSmartPtr<IShapeProfile> beam = beamOf(ipe, W("240"), 240);
    beam->set_material(steel);
    beam->set_fillet_radius(15);
    QcSmartPtr<Profile> stored = library->save(QcSmartPtr<Profile>(beam.get()));
    QcSmartPtr<Profile> other = addI(ipe, W("270"), 270);

    EXPECT_EQ(Library::kReferenced, library->remove<Material>(steel->id()));
    EXPECT_EQ(Library::kReferenced, library->remove<ProfileName>(ipe->id()));
    // An open drawing that uses a profile vetoes its removal.
    reactor.removeAnswer = [&](const ObjectKey& key) { return key.id == stored->id() ? kRemoveVeto : kRemoveAllow; };
    EXPECT_EQ((std::set<unsigned>{stored->id()}), library->remove<Profile>(std::set<unsigned>{stored->id(), other->id()}));
    EXPECT_TRUE(library->get<Profile>(stored->id()));
    EXPECT_FALSE(library->get<Profile>(other->id()));

    auto target = Library::create(dir.file("target.vlib"), OdDb::kUnitsMillimeters);
    IdMapping mapping = target->copy<Profile>(library, {stored->id()});
    QcSmartPtr<Profile> copied = target->get<Profile>(mapping.find(stored->key())->second.id);
    ASSERT_TRUE(copied);
    EXPECT_EQ(W("EN 10365 IPE 240"), copied->displayName());
    EXPECT_EQ(W("S355"), copied->material()->name());
    EXPECT_EQ(15.0, static_cast<IShapeProfile&>(*copied).fillet_radius());

    // A second profile of the same name reuses the target's name and standard without a
    // question, while a clash of the profile itself is put to the reactor.
    reactor.clashes.clear();
    QcSmartPtr<Profile> ipe300 = addI(ipe, W("300"), 300);
    IdMapping more = target->copy<Profile>(library, {ipe300->id(), stored->id()});
    EXPECT_EQ(std::vector<OdString>{W("240")}, reactor.clashes);
    EXPECT_EQ(IdMapping::kReused, more.find(ipe->key())->second.state);
    EXPECT_EQ(IdMapping::kCopied, more.find(ipe300->key())->second.state);
    EXPECT_EQ(1u, target->count<ProfileName>());
    EXPECT_EQ(1u, target->count<ProfileStandard>());
    EXPECT_EQ(2u, target->count<Profile>());
}

// A later version may add dimensions and shapes. A dimension this version does not know is
// damage to it (a save would drop it); a shape it does not know is listed without dimensions
// and written back exactly as read.
TEST_F(ProfileLibrary, RowsOfALaterVersionAreReportedOrKeptWhole) {
    RecordingReactor reactor;
    QcSmartPtr<Profile> sound = addI(ipe, W("200"), 200);
    QcSmartPtr<Profile> odd = addI(ipe, W("220"), 220);
    QcSmartPtr<Profile> later = addI(ipe, W("240"), 240);
    const std::string laterParameters = "{\"arm\":12.5,\"wing\":3}";
    sqlite3* db = library->store().db();
    ASSERT_EQ(SQLITE_OK, sqlite3_exec(db,
                                      ("UPDATE lib_profile SET parameters = '{\"overall_depth\":220,\"wing\":3}' WHERE id = " +
                                       std::to_string(odd->id()) + ";UPDATE lib_profile SET object_type = 35, parameters = '" +
                                       laterParameters + "' WHERE id = " + std::to_string(later->id()))
                                          .c_str(),
                                      nullptr, nullptr, nullptr));
    std::vector<QcSmartPtr<Profile>> all;
    library->get(all, ProfilesPanelQuery());
    ASSERT_EQ(2u, all.size());
    EXPECT_EQ(sound->id(), all[0]->id());
    EXPECT_EQ(1u, reactor.loadFailures.size());

    QcSmartPtr<Profile> kept = all[1];
    ASSERT_EQ(&UnknownShapeProfile::desc(), &kept->isA());
    EXPECT_EQ(W("EN 10365 IPE 240"), kept->displayName());
    kept->set_description(W("from a later version"));
    library->save(kept);

    auto storedRow = [](sqlite3* handle, unsigned id) {
        sqlite3_stmt* stmt = nullptr;
        sqlite3_prepare_v2(handle, "SELECT object_type, parameters, description FROM lib_profile WHERE id = ?", -1, &stmt, nullptr);
        sqlite3_bind_int(stmt, 1, int(id));
        std::string row;
        if (sqlite3_step(stmt) == SQLITE_ROW)
            row = std::to_string(sqlite3_column_int(stmt, 0)) + " " +
                  reinterpret_cast<const char*>(sqlite3_column_text(stmt, 1)) + " " +
                  reinterpret_cast<const char*>(sqlite3_column_text(stmt, 2));
        sqlite3_finalize(stmt);
        return row;
    };
    EXPECT_EQ("35 " + laterParameters + " from a later version", storedRow(db, later->id()));

    auto target = Library::create(dir.file("target.vlib"), OdDb::kUnitsMillimeters);
    target->copy<Profile>(library, {kept->id()});
    std::vector<QcSmartPtr<Profile>> copied;
    target->get(copied, ProfilesPanelQuery());
    ASSERT_EQ(1u, copied.size());
    EXPECT_EQ("35 " + laterParameters + " from a later version", storedRow(target->store().db(), copied[0]->id()));

    // Written to the exchange format its dimensions could not be read back anywhere.
    EXPECT_THROW(exportLibrary(*library), ExchangeError);
}

TEST(ProfileMigration, AVersionOneLibraryOpensWithEveryObjectAndTakesProfiles) {
    TempDir dir;
    const std::string copy = dir.path() + "/v1.vlib";
    std::filesystem::copy_file(std::filesystem::path(VL_VANTLIB_TEST_DATA) / "v1-library.vlib", copy);
    const OdString path = OdString::fromUtf8(copy);

    std::string before;
    {
        auto readOnly = Library::open(path, true);
        EXPECT_EQ(1, readOnly->schemaVersion()) << "a read-only open leaves the file as it is";
        before = dumpLibrary(path);
    }
    auto library = Library::open(path);
    EXPECT_EQ(Library::kSchemaVersion, library->schemaVersion());
    const std::string after = dumpLibrary(path);
    EXPECT_NE(after, withoutProfileTables(after)) << "version 2 has the profile tables";
    EXPECT_EQ(before, withoutProfileTables(after)) << "the migration keeps every row of version 1";
    EXPECT_EQ(7u, library->count<Material>());
    EXPECT_EQ(2u, library->count<Composition>());
    QcSmartPtr<Composition> wall = library->get<Composition>(NameKey(W("EW-01 Clay block, rendered")));
    ASSERT_TRUE(wall);
    EXPECT_FALSE(wall->plies().empty());

    QcSmartPtr<ProfileName> name =
        library->save(ProfileName::create(ProfileStandard::create(W("EN 10365")), W("IPE"), kProfileStructuralSteel));
    QcSmartPtr<IShapeProfile> beam = beamOf(name, W("200"), 200);
    beam->set_material(library->get<Material>(NameKey(W("Concrete C30/37"))));
    library->save(QcSmartPtr<Profile>(beam.get()));
    library.reset();

    auto reopened = Library::open(path);
    EXPECT_EQ(1u, reopened->count<Profile>());
    EXPECT_EQ(W("Concrete C30/37"), reopened->get<Profile>(ProfileKey(name->id(), W("200")))->material()->name());
}
