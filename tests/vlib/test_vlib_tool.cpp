// Runs the built vlib binary the way a user would: on the demo files, copies of them and
// files that are not libraries.
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>
#include <set>
#include <sstream>
#include <string>

#include <SQLiteCpp/Database.h>
#include <gtest/gtest.h>

#include <vantlib/vantlib.h>

#include "DemoContent.h"

namespace {

namespace fs = std::filesystem;

struct ToolRun {
    int exitCode;
    std::string out;
    std::string err;
};

std::string quoted(const std::string& word) {
    std::string text = "'";
    for (char c : word)
        text += c == '\'' ? std::string("'\\''") : std::string(1, c);
    return text + "'";
}

std::string readBytes(const fs::path& path) {
    std::ifstream in(path, std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
}

void writeBytes(const fs::path& path, const std::string& bytes) {
    std::ofstream(path, std::ios::binary | std::ios::trunc) << bytes;
}

// "key: value" lines of `vlib info`.
std::map<std::string, std::string> fields(const std::string& text) {
    std::map<std::string, std::string> result;
    std::istringstream lines(text);
    for (std::string line; std::getline(lines, line);)
        if (const auto colon = line.find(": "); colon != std::string::npos)
            result[line.substr(0, colon)] = line.substr(colon + 2);
    return result;
}

std::set<std::string> lines(const std::string& text) {
    std::set<std::string> result;
    std::istringstream in(text);
    for (std::string line; std::getline(in, line);)
        result.insert(line);
    return result;
}

std::set<std::string> namesOf(const std::vector<vlib::demo::Material>& materials) {
    std::set<std::string> names;
    for (const auto& m : materials)
        names.insert(m.name);
    return names;
}

class VlibTool : public ::testing::Test {
protected:
    static void SetUpTestSuite() {
        s_dir = fs::temp_directory_path() / ("vlib_test_" + std::to_string(::getpid()));
        fs::remove_all(s_dir);
        const ToolRun demo = vlib({"demo", (s_dir / "demo").string()});
        ASSERT_EQ(demo.exitCode, 0) << demo.err;
    }
    static void TearDownTestSuite() { fs::remove_all(s_dir); }

    static ToolRun vlib(const std::vector<std::string>& args) {
        const fs::path errFile = s_dir.parent_path() / ("vlib_err_" + std::to_string(::getpid()));
        std::string command = quoted(std::string(VL_BIN_DIR) + "/vlib");
        for (const auto& arg : args)
            command += " " + quoted(arg);
        command += " 2>" + quoted(errFile.string());
        ToolRun run{-1, {}, {}};
        FILE* pipe = ::popen(command.c_str(), "r");
        if (!pipe)
            return run;
        std::array<char, 4096> buffer;
        for (size_t n; (n = std::fread(buffer.data(), 1, buffer.size(), pipe)) > 0;)
            run.out.append(buffer.data(), n);
        const int status = ::pclose(pipe);
        run.exitCode = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
        run.err = readBytes(errFile);
        fs::remove(errFile);
        return run;
    }

    static fs::path demoFile(const std::string& name) { return s_dir / "demo" / name; }
    static fs::path scratch(const std::string& name) { return s_dir / name; }
    static fs::path copyOf(const std::string& demoName, const std::string& name) {
        fs::copy_file(demoFile(demoName), scratch(name), fs::copy_options::overwrite_existing);
        return scratch(name);
    }

    static fs::path s_dir;
};

fs::path VlibTool::s_dir;

TEST_F(VlibTool, DemoLibrariesHoldTheDemoContent) {
    const ToolRun central = vlib({"info", demoFile("central-metric.vlib").string()});
    ASSERT_EQ(central.exitCode, 0) << central.err;
    auto info = fields(central.out);
    EXPECT_EQ(info["materials"], std::to_string(vlib::demo::centralMaterials().size()));
    EXPECT_EQ(info["compositions"], std::to_string(vlib::demo::centralCompositions().size()));
    EXPECT_EQ(info["unit"], "millimetres (metric)");
    EXPECT_GE(std::stoi(info["material-classes"]), 10);
    EXPECT_GE(std::stoi(info["tags"]), 10);
    EXPECT_GE(vlib::demo::centralMaterials().size(), 40u);
    EXPECT_GE(vlib::demo::centralCompositions().size(), 12u);

    const ToolRun project = vlib({"info", demoFile("demo.vldwg").string()});
    ASSERT_EQ(project.exitCode, 0) << project.err;
    info = fields(project.out);
    EXPECT_EQ(info["materials"], std::to_string(vlib::demo::projectMaterials().size()));
    EXPECT_EQ(info["compositions"], std::to_string(vlib::demo::projectCompositions().size()));
}

TEST_F(VlibTool, DemoLibrariesHoldTheSteelCatalogueAndTheProjectsOwnProfiles) {
    // Read with SQLite directly (the table names are the storage's own): the series by name.
    SQLite::Database central(demoFile("central-metric.vlib").string(), SQLite::OPEN_READONLY);
    std::map<std::string, int> series;
    SQLite::Statement rows(central, "SELECT n.name, count(*) FROM lib_profile p JOIN lib_profile_name n ON n.id = p.name_id "
                                    "GROUP BY n.name");
    while (rows.executeStep())
        series[rows.getColumn(0).getString()] = rows.getColumn(1).getInt();
    EXPECT_EQ(series, (std::map<std::string, int>{{"CHS", 220}, {"HEA", 24}, {"HEB", 24}, {"HEM", 24}, {"IPE", 18},
                                                  {"L", 39}, {"RHS", 112}, {"SHS", 106}, {"UPE", 14}, {"UPN", 14}}));
    SQLite::Database project(demoFile("demo.vldwg").string(), SQLite::OPEN_READONLY);
    EXPECT_EQ(project.execAndGet("SELECT count(*) FROM lib_profile").getInt(), 5);
    EXPECT_EQ(project.execAndGet("SELECT count(*) FROM lib_profile_name WHERE standard_id IS NULL OR standard_id = 0")
                  .getInt(),
              5);
}

TEST_F(VlibTool, PsetsListsTheOfficesEditableSetsWithTheirTypes) {
    const std::string central = demoFile("central-metric.vlib").string();
    const ToolRun all = vlib({"psets", central, "list", "--namespace", "Office"});
    ASSERT_EQ(all.exitCode, 0) << all.err;
    const auto listed = lines(all.out);
    EXPECT_EQ(listed.count("namespace Office \"Office standards\""), 1u) << all.out;
    EXPECT_EQ(listed.count("  set Office_DoorSchedule \"Door schedule\" for IfcDoor"), 1u) << all.out;
    EXPECT_EQ(listed.count("    property FireResistance \"Fire resistance\": Integer enumeration "
                           "(30 : EI2 30-C5, 60 : EI2 60-C5, 90 : EI2 90-C5)"),
              1u)
        << all.out;
    EXPECT_EQ(listed.count("    value FinishedArea \"Finished area\": Real, measure AREA"), 1u) << all.out;

    EXPECT_EQ(vlib({"psets", central, "list", "--namespace", "OFFICE"}).out, all.out) << "names match in any letter case";
    const ToolRun missing = vlib({"psets", central, "list", "--namespace", "Nowhere"});
    EXPECT_EQ(missing.exitCode, 1);
    EXPECT_NE(missing.err.find("no namespace named 'Nowhere'"), std::string::npos) << missing.err;
    EXPECT_EQ(vlib({"psets", central, "rename"}).exitCode, 2) << "an unknown action is wrong use";
}

TEST_F(VlibTool, DemoCentralLibraryHoldsTheOfficialSetsReadOnlyBesideTheOffices) {
    const std::string central = demoFile("central-metric.vlib").string();
    const ToolRun official = vlib({"psets", central, "list", "--namespace", "IFC4"});
    ASSERT_EQ(official.exitCode, 0) << official.err;
    const auto listed = lines(official.out);
    EXPECT_EQ(listed.count("namespace IFC4 \"IFC4 official property sets\" (read-only)"), 1u) << official.out;
    size_t sets = 0;
    for (const std::string& line : listed)
        sets += line.rfind("  set ", 0) == 0;
    EXPECT_EQ(sets, 27u);
    EXPECT_EQ(listed.count("  set Qto_WallBaseQuantities for IfcWall"), 1u) << official.out;
    EXPECT_NE(official.out.find(": Extended type ("), std::string::npos) << "kinds the editors cannot change are shown";
    const ToolRun office = vlib({"psets", central, "list", "--namespace", "Office"});
    EXPECT_NE(office.out.find("namespace Office \"Office standards\"\n"), std::string::npos) << office.out;
}

TEST_F(VlibTool, DemoWithoutTheOfficialFilesSaysSoAndWritesTheRest) {
    // A vlib with no res/psd beside or above it.
    const fs::path bin = scratch("lonely") / "bin";
    fs::remove_all(bin.parent_path());
    fs::create_directories(bin);
    fs::copy_file(fs::path(VL_BIN_DIR) / "vlib", bin / "vlib");
    const fs::path out = bin.parent_path() / "out.txt";
    const std::string demo = (bin.parent_path() / "demo").string();
    ASSERT_EQ(std::system((quoted((bin / "vlib").string()) + " demo " + quoted(demo) + " > " + quoted(out.string())).c_str()), 0);
    const std::string said = readBytes(out);
    EXPECT_NE(said.find("The official property-set definitions were not found"), std::string::npos) << said;
    EXPECT_NE(said.find("0 official and 3 office property sets"), std::string::npos) << said;
    const ToolRun listed = vlib({"psets", demo + "/central-metric.vlib", "list"});
    EXPECT_EQ(listed.out.find("namespace IFC4"), std::string::npos) << listed.out;
    EXPECT_NE(listed.out.find("namespace Office"), std::string::npos) << listed.out;
    EXPECT_EQ(vlib({"info", demo + "/demo.vldwg"}).exitCode, 0) << "the drawing is written too";
}

TEST_F(VlibTool, PsetsImportAndExportDefinitionFiles) {
    const std::string officialFolder = std::string(VL_TEST_DATA_DIR) + "/psd/IFC4_ADD2_TC1";
    const std::string library = scratch("psets.vlib").string();
    fs::remove(library);
    ASSERT_EQ(vlib({"create", library}).exitCode, 0);
    const ToolRun imported = vlib({"psets", library, "import", officialFolder});
    ASSERT_EQ(imported.exitCode, 0) << imported.err;
    EXPECT_EQ(imported.out, "Imported 27 property sets into the namespace 'IFC4_ADD2_TC1' of " + library + "\n");

    // Exported and imported again under another name, the namespace lists the same.
    const fs::path folder = scratch("psets-exported");
    fs::remove_all(folder);
    const ToolRun exported = vlib({"psets", library, "export", folder.string()});
    ASSERT_EQ(exported.exitCode, 0) << exported.err;
    EXPECT_TRUE(fs::exists(folder / "Pset_WallCommon.xml"));
    ASSERT_EQ(vlib({"psets", library, "import", folder.string(), "--namespace", "Again"}).exitCode, 0);
    std::string first = vlib({"psets", library, "list", "--namespace", "IFC4_ADD2_TC1"}).out;
    std::string again = vlib({"psets", library, "list", "--namespace", "Again"}).out;
    first.erase(0, first.find('\n'));
    again.erase(0, again.find('\n'));
    EXPECT_EQ(first, again);

    // One set to one file; a set name two namespaces share needs the namespace.
    const std::string single = scratch("wall.xml").string();
    EXPECT_EQ(vlib({"psets", library, "export", single, "--set", "Pset_WallCommon"}).exitCode, 1);
    const ToolRun one = vlib({"psets", library, "export", single, "--set", "pset_wallcommon", "--namespace", "Again"});
    ASSERT_EQ(one.exitCode, 0) << one.err;
    EXPECT_EQ(readBytes(single).substr(readBytes(single).find('\n')),
              readBytes(officialFolder + "/Pset_WallCommon.xml").substr(readBytes(officialFolder + "/Pset_WallCommon.xml").find('\n')) + "\n");

    // A broken file among good ones: nothing is imported, and the message says where.
    const fs::path broken = scratch("psets-broken");
    fs::remove_all(broken);
    fs::create_directories(broken);
    fs::copy_file(officialFolder + "/Pset_BeamCommon.xml", broken / "Pset_BeamCommon.xml");
    writeBytes(broken / "Pset_Zzz.xml", "<PropertySetDef>\n  <Name>Pset_Zzz</Name>\n  <PropertyDefs>\n    <PropertyDef>\n"
                                       "      <Name>X</Name>\n      <PropertyType><TypePropertySingleValue><DataType type=\"IfcNoSuchType\"/>"
                                       "</TypePropertySingleValue></PropertyType>\n    </PropertyDef>\n  </PropertyDefs>\n</PropertySetDef>\n");
    const ToolRun refused = vlib({"psets", library, "import", broken.string(), "--namespace", "Broken"});
    EXPECT_EQ(refused.exitCode, 1);
    EXPECT_NE(refused.err.find((broken / "Pset_Zzz.xml").string() + ":6: "), std::string::npos) << refused.err;
    EXPECT_NE(refused.err.find("nothing was imported"), std::string::npos) << refused.err;
    EXPECT_EQ(vlib({"psets", library, "list", "--namespace", "Broken"}).exitCode, 1);
}

TEST_F(VlibTool, ProjectLibraryHoldsEditedCopiesUnderCentralNames) {
    const auto central = namesOf(vlib::demo::centralMaterials());
    size_t shared = 0;
    for (const auto& name : namesOf(vlib::demo::projectMaterials()))
        shared += central.count(name);
    EXPECT_GE(shared, 3u);
    const ToolRun list = vlib({"list", demoFile("demo.vldwg").string(), "composition"});
    ASSERT_EQ(list.exitCode, 0) << list.err;
    EXPECT_EQ(lines(list.out).count("EW-01 Clay block, rendered"), 1u);
}

TEST_F(VlibTool, ListFiltersByClassAndTag) {
    const std::string central = demoFile("central-metric.vlib").string();
    const ToolRun insulation = vlib({"list", central, "material", "--class", "Insulation"});
    ASSERT_EQ(insulation.exitCode, 0) << insulation.err;
    const auto insulationNames = lines(insulation.out);
    EXPECT_EQ(insulationNames.count("Mineral wool, glass"), 1u);
    EXPECT_EQ(insulationNames.count("Concrete C30/37"), 0u);

    const auto roofing = lines(vlib({"list", central, "materials", "--tag", "roofing"}).out);
    EXPECT_EQ(roofing.count("EPDM membrane"), 1u);
    EXPECT_EQ(roofing.count("Granite"), 0u);

    const auto roofs = lines(vlib({"list", central, "composition", "--class", "Roofs"}).out);
    EXPECT_EQ(roofs.count("RF-01 Flat roof, warm deck, tapered"), 1u);
    EXPECT_EQ(roofs.count("EW-05 Basement wall"), 0u);

    EXPECT_TRUE(vlib({"list", central, "material", "--class", "No such class"}).out.empty());
    EXPECT_EQ(vlib({"list", central, "tag", "--class", "x"}).exitCode, 2);
    EXPECT_EQ(vlib({"list", central, "gizmo"}).exitCode, 2);
}

TEST_F(VlibTool, CheckPassesOnTheDemoAndFailsClearlyOnACorruptedCopy) {
    for (const char* name : {"central-metric.vlib", "demo.vldwg"}) {
        const ToolRun check = vlib({"check", demoFile(name).string()});
        EXPECT_EQ(check.exitCode, 0) << name << ": " << check.out << check.err;
    }
    const fs::path damaged = copyOf("central-metric.vlib", "damaged.vlib");
    std::string bytes = readBytes(damaged);
    ASSERT_GT(bytes.size(), 3 * 4096u);
    for (size_t i = 4096 + 100; i < 3 * 4096; ++i)
        bytes[i] = char(i * 131 + 7);
    writeBytes(damaged, bytes);

    const ToolRun check = vlib({"check", damaged.string()});
    EXPECT_EQ(check.exitCode, 1);
    EXPECT_EQ(check.err.rfind("vlib: ", 0), 0u) << check.err;
    EXPECT_NE(check.err.find("damaged.vlib"), std::string::npos) << check.err;
    EXPECT_EQ(readBytes(damaged), bytes);

    // Writing into it is refused before anything is written, in the user's words.
    const ToolRun copy = vlib({"copy", demoFile("central-metric.vlib").string(), damaged.string(), "material", "Granite"});
    EXPECT_EQ(copy.exitCode, 1);
    EXPECT_NE(copy.err.find("the library is damaged: "), std::string::npos) << copy.err;
    EXPECT_NE(copy.err.find("; run vlib check"), std::string::npos) << copy.err;
    EXPECT_EQ(copy.err.find("SELECT"), std::string::npos) << copy.err;
    EXPECT_EQ(readBytes(damaged), bytes);
    EXPECT_FALSE(fs::exists(damaged.string() + "-journal"));
    EXPECT_FALSE(fs::exists(damaged.string() + "-wal"));
}

TEST_F(VlibTool, SqliteFileOfAnotherProgramIsNotALibraryWhateverItsVersion) {
    const fs::path other = scratch("other.db");
    {
        SQLite::Database db(other.string(), SQLite::OPEN_READWRITE | SQLite::OPEN_CREATE);
        db.exec("CREATE TABLE notes(text); PRAGMA user_version = 7");
    }
    const ToolRun info = vlib({"info", other.string()});
    EXPECT_EQ(info.exitCode, 1);
    EXPECT_NE(info.err.find("Not a library file"), std::string::npos) << info.err;
    EXPECT_EQ(info.err.find("schema version"), std::string::npos) << info.err;
}

TEST_F(VlibTool, CheckFindsUsesOfObjectsThatAreGone) {
    const std::string central = demoFile("central-metric.vlib").string();
    const ToolRun sound = vlib({"check", demoFile("demo.vldwg").string(), "--central", central});
    EXPECT_EQ(sound.exitCode, 0) << sound.out << sound.err;
    // Ten uses of materials and compositions, six of profiles.
    EXPECT_NE(sound.out.find("16 uses of library objects checked"), std::string::npos) << sound.out;

    // Removes a composition behind the library's back, as a foreign tool might (the table name
    // is the storage's own).
    const fs::path broken = copyOf("demo.vldwg", "broken.vldwg");
    {
        SQLite::Database db(broken.string(), SQLite::OPEN_READWRITE);
        db.exec("PRAGMA foreign_keys = OFF");
        ASSERT_EQ(db.exec("DELETE FROM lib_composition WHERE name = 'EW-01 Clay block, rendered'"), 1);
        ASSERT_EQ(db.exec("DELETE FROM lib_profile WHERE size = 'Oak 60'"), 1);
    }
    const std::string before = readBytes(broken);
    const ToolRun check = vlib({"check", broken.string()});
    EXPECT_EQ(check.exitCode, 1);
    EXPECT_NE(check.out.find("uses the project composition 'EW-01 Clay block, rendered', which the library lacks"),
              std::string::npos) << check.out;
    EXPECT_NE(check.out.find("'Handrail Oak 60', which the library lacks"), std::string::npos) << check.out;
    EXPECT_EQ(check.err.rfind("vlib: ", 0), 0u) << check.err;
    EXPECT_EQ(readBytes(broken), before);
}

TEST_F(VlibTool, CopyBringsMaterialsAlongAndAnswersClashesAsAsked) {
    const std::string target = scratch("copy-target.vlib").string();
    ASSERT_EQ(vlib({"create", target}).exitCode, 0);
    const std::string central = demoFile("central-metric.vlib").string();
    const std::string wall = "EW-02 Concrete, ETICS";

    const ToolRun first = vlib({"copy", central, target, "composition", wall});
    ASSERT_EQ(first.exitCode, 0) << first.err;
    auto info = fields(vlib({"info", target}).out);
    EXPECT_EQ(info["compositions"], "1");
    EXPECT_EQ(info["materials"], "4");  // one per ply

    const ToolRun skipped = vlib({"copy", central, target, "composition", wall});
    EXPECT_EQ(skipped.exitCode, 0) << skipped.err;
    EXPECT_NE(skipped.out.find("skipped"), std::string::npos) << skipped.out;
    EXPECT_EQ(fields(vlib({"info", target}).out)["compositions"], "1");

    const ToolRun overwritten = vlib({"copy", central, target, "material", "Gypsum plaster", "--on-clash", "overwrite"});
    EXPECT_EQ(overwritten.exitCode, 0) << overwritten.err;
    EXPECT_NE(overwritten.out.find("overwritten"), std::string::npos) << overwritten.out;
    EXPECT_EQ(fields(vlib({"info", target}).out)["materials"], "4");

    const ToolRun renamed = vlib({"copy", central, target, "composition", wall, "--on-clash", "rename"});
    EXPECT_EQ(renamed.exitCode, 0) << renamed.err;
    const auto names = lines(vlib({"list", target, "composition"}).out);
    EXPECT_EQ(names.size(), 2u);
    EXPECT_EQ(names.count(wall), 1u);
    EXPECT_EQ(names.count(wall + "_2"), 1u);
}

TEST_F(VlibTool, WrongFilesAreNeverModified) {
    const fs::path text = scratch("readme.vlib");
    writeBytes(text, "This is not a library.\n");
    const std::string central = demoFile("central-metric.vlib").string();
    const std::string before = readBytes(text);

    for (const auto& args : std::vector<std::vector<std::string>>{
             {"info", text.string()},
             {"check", text.string()},
             {"list", text.string(), "material"},
             {"create", text.string()},
             {"copy", central, text.string(), "material", "Granite"},
         }) {
        SCOPED_TRACE(args.front());
        const ToolRun run = vlib(args);
        EXPECT_EQ(run.exitCode, 1);
        EXPECT_EQ(run.err.rfind("vlib: ", 0), 0u) << run.err;
        EXPECT_EQ(std::count(run.err.begin(), run.err.end(), '\n'), 1) << run.err;
        EXPECT_EQ(readBytes(text), before);
    }

    // An unknown name fails before the destination is opened for writing.
    const fs::path target = copyOf("central-metric.vlib", "unchanged.vlib");
    const std::string targetBefore = readBytes(target);
    const ToolRun unknown = vlib({"copy", demoFile("demo.vldwg").string(), target.string(), "material", "Unobtainium"});
    EXPECT_EQ(unknown.exitCode, 1);
    EXPECT_NE(unknown.err.find("Unobtainium"), std::string::npos);
    EXPECT_EQ(readBytes(target), targetBefore);

    const ToolRun missing = vlib({"info", scratch("missing.vlib").string()});
    EXPECT_EQ(missing.exitCode, 1);
    EXPECT_FALSE(fs::exists(scratch("missing.vlib")));
}

TEST_F(VlibTool, UsageErrorsExitWithTwo) {
    const ToolRun none = vlib({});
    EXPECT_EQ(none.exitCode, 2);
    EXPECT_EQ(none.err, "vlib: no command given (see 'vlib help')\n");
    EXPECT_EQ(vlib({"frobnicate"}).exitCode, 2);
    EXPECT_EQ(vlib({"info"}).exitCode, 2);
    EXPECT_EQ(vlib({"create", scratch("x.vlib").string(), "--metric"}).exitCode, 2);
    EXPECT_EQ(vlib({"copy", "a", "b", "material", "n", "--on-clash", "merge"}).exitCode, 2);
    EXPECT_FALSE(fs::exists(scratch("x.vlib")));
    const ToolRun help = vlib({"help"});
    EXPECT_EQ(help.exitCode, 0);
    EXPECT_NE(help.out.find("demo DIR"), std::string::npos);
}

TEST_F(VlibTool, CreateMakesAnEmptyLibraryOfTheChosenUnit) {
    const std::string imperial = scratch("imperial.vlib").string();
    ASSERT_EQ(vlib({"create", imperial, "--imperial"}).exitCode, 0);
    auto info = fields(vlib({"info", imperial}).out);
    EXPECT_EQ(info["unit"], "inches (imperial)");
    EXPECT_EQ(info["materials"], "0");
    EXPECT_EQ(vlib({"check", imperial}).exitCode, 0);
}


TEST_F(VlibTool, ShowPrintsACompositionsPliesAndItsThermalValues) {
    const ToolRun wall = vlib({"show", demoFile("central-metric.vlib").string(), "composition", "EW-02 Concrete, ETICS"});
    ASSERT_EQ(wall.exitCode, 0) << wall.err;
    // 5 mm render (0.7, 1800), 160 mm EPS (0.035, 20), 200 mm concrete (2.3, 2400), 10 mm plaster
    // (0.43, 1200): R = 0.00714 + 4.57143 + 0.08696 + 0.02326 = 4.689; U = 1 / (0.13 + R + 0.04)
    // = 0.206; mass = 9 + 3.2 + 480 + 12 = 504.2.
    const auto shown = fields(wall.out);
    EXPECT_EQ(shown.at("Thermal resistance R"), "4.69 m2K/W");
    EXPECT_EQ(shown.at("Thermal transmittance U").substr(0, 14), "0.206 W/(m2K),");
    EXPECT_EQ(shown.at("Mass per area"), "504.2 kg/m2");
    EXPECT_NE(wall.out.find("2. Expanded polystyrene EPS 035, insulation, 160 mm (variable, at least 160 mm)"),
              std::string::npos)
        << wall.out;

    const ToolRun roof = vlib({"show", demoFile("central-metric.vlib").string(), "composition",
                                "RF-01 Flat roof, warm deck, tapered"});
    ASSERT_EQ(roof.exitCode, 0) << roof.err;
    EXPECT_NE(roof.out.find("Rsi 0.10 and Rse 0.04"), std::string::npos) << "heat flows upward through a roof";

    const ToolRun concrete = vlib({"show", demoFile("central-metric.vlib").string(), "material", "Concrete C30/37"});
    ASSERT_EQ(concrete.exitCode, 0) << concrete.err;
    EXPECT_EQ(fields(concrete.out).at("Density"), "2400 kg/m\u00B3");

    const ToolRun missing = vlib({"show", demoFile("central-metric.vlib").string(), "composition", "No such wall"});
    EXPECT_NE(missing.exitCode, 0);
    EXPECT_NE(missing.err.find("No such wall"), std::string::npos) << missing.err;
    const ToolRun tag = vlib({"show", demoFile("central-metric.vlib").string(), "tag", "exterior"});
    EXPECT_EQ(tag.exitCode, 2) << "show prints materials and compositions only";
}

TEST_F(VlibTool, ExportImportExportOfTheDemoLibrariesGivesIdenticalDocuments) {
    for (const char* demoName : {"central-metric.vlib", "demo.vldwg"}) {
        SCOPED_TRACE(demoName);
        const std::string name(demoName);
        const std::string first = scratch(name + ".json").string();
        const std::string copy = scratch(name + ".copy.vlib").string();
        const std::string second = scratch(name + ".copy.json").string();
        const ToolRun exported = vlib({"export", demoFile(name).string(), first});
        ASSERT_EQ(exported.exitCode, 0) << exported.err;
        ASSERT_EQ(vlib({"create", copy}).exitCode, 0);
        const ToolRun imported = vlib({"import", copy, first});
        ASSERT_EQ(imported.exitCode, 0) << imported.err;
        EXPECT_NE(imported.out.find("0 skipped, 0 overwritten, 0 renamed\n"), std::string::npos) << imported.out;
        ASSERT_EQ(vlib({"export", copy, second}).exitCode, 0);
        EXPECT_EQ(readBytes(second), readBytes(first));
        EXPECT_GT(readBytes(first).size(), 1000u);
        EXPECT_EQ(vlib({"check", copy}).exitCode, 0);
    }
}

TEST_F(VlibTool, ExportOfProfilesBringsTheirStandardsAndNamesOnly) {
    const std::string document = scratch("profiles.json").string();
    const ToolRun exported = vlib({"export", demoFile("demo.vldwg").string(), document, "profiles"});
    ASSERT_EQ(exported.exitCode, 0) << exported.err;
    const std::string text = readBytes(document);
    EXPECT_NE(text.find("\"compositions\": []"), std::string::npos);
    EXPECT_NE(text.find("\"materials\": []"), std::string::npos);
    const std::string target = scratch("profiles-only.vlib").string();
    ASSERT_EQ(vlib({"create", target}).exitCode, 0);
    const ToolRun imported = vlib({"import", target, document});
    ASSERT_EQ(imported.exitCode, 0) << imported.err;
    EXPECT_NE(imported.out.find("profiles: 5 created"), std::string::npos) << imported.out;
    EXPECT_NE(vlib({"export", demoFile("demo.vldwg").string(), document, "profile-thing"}).exitCode, 0);
}

TEST_F(VlibTool, ImportReportsClashesAndConversionAndRefusesBadDocumentsWithoutWriting) {
    const std::string document = scratch("project.json").string();
    ASSERT_EQ(vlib({"export", demoFile("demo.vldwg").string(), document, "composition"}).exitCode, 0);
    const std::string imperial = scratch("exchange-imperial.vlib").string();
    ASSERT_EQ(vlib({"create", imperial, "--imperial"}).exitCode, 0);
    const ToolRun converted = vlib({"import", imperial, document});
    ASSERT_EQ(converted.exitCode, 0) << converted.err;
    EXPECT_NE(converted.out.find("Lengths converted from millimeters to inches"), std::string::npos) << converted.out;
    const ToolRun renamed = vlib({"import", imperial, document, "--on-clash", "rename"});
    ASSERT_EQ(renamed.exitCode, 0) << renamed.err;
    EXPECT_NE(renamed.out.find("compositions: 0 created, 0 skipped, 0 overwritten, " +
                               std::to_string(vlib::demo::projectCompositions().size()) + " renamed"),
              std::string::npos)
        << renamed.out;

    const std::string before = readBytes(imperial);
    const std::string broken = scratch("broken.json").string();
    writeBytes(broken, readBytes(document).substr(0, 200));
    const ToolRun refused = vlib({"import", imperial, broken});
    EXPECT_EQ(refused.exitCode, 1);
    EXPECT_NE(refused.err.find("not valid JSON"), std::string::npos) << refused.err;
    EXPECT_NE(refused.err.find("nothing was imported"), std::string::npos) << refused.err;
    EXPECT_EQ(readBytes(imperial), before);
    EXPECT_EQ(vlib({"import", imperial, document, "--on-clash", "merge"}).exitCode, 2);
}

TEST_F(VlibTool, ImportCardsReadsTheSharedCardsAndCountsThem) {
    const std::string library = scratch("cards.vlib").string();
    ASSERT_EQ(vlib({"create", library}).exitCode, 0);
    const ToolRun run = vlib({"import-cards", library, std::string(VL_TEST_DATA_DIR) + "/materials"});
    ASSERT_EQ(run.exitCode, 0) << run.err;
    EXPECT_NE(run.out.find("31 cards found, 31 read, 0 could not be read"), std::string::npos) << run.out;
    // Three names occur in two cards each; the second of each is skipped.
    EXPECT_NE(run.out.find("materials: 28 created, 3 skipped"), std::string::npos) << run.out;
    EXPECT_EQ(fields(vlib({"info", library}).out)["materials"], "28");
}

}  // namespace

TEST_F(VlibTool, ImportProfilesReportsCountsPerClassAndExportProfilesReadsBack) {
    const std::string data = std::string(VL_TEST_DATA_DIR) + "/profiles/";
    const std::string steel = scratch("steel.vlib").string();
    ASSERT_EQ(vlib({"create", steel}).exitCode, 0);
    const ToolRun imported = vlib({"import-profiles", steel, data + "bolts/profile_i.blt", data + "bolts/profile_l.blt",
                                   data + "freecad/profiles.csv"});
    ASSERT_EQ(imported.exitCode, 0) << imported.err;
    const auto counts = fields(imported.out);
    // A class of two files counts both: 24 HEA of the YAML table and the CSV category's 24 HEA;
    // its 24 HEAA the YAML table had already (both without a standard), so they are skipped.
    EXPECT_EQ(counts.at("HEA"), "48");
    EXPECT_NE(imported.out.find("profiles.csv:224: the profile 'HEAA 100' was read before (skipped)"), std::string::npos);
    EXPECT_NE(imported.out.find("1321 profiles read, 79 rows or entities skipped"), std::string::npos);
    EXPECT_EQ(counts.at("L"), "39");
    EXPECT_EQ(counts.at("American Wide Flange"), "132");
    EXPECT_EQ(counts.at("profiles"), "1321 created, 0 skipped, 0 overwritten, 0 renamed");

    const std::string ifc = scratch("steel.ifc").string();
    const ToolRun exported = vlib({"export-profiles", steel, ifc});
    ASSERT_EQ(exported.exitCode, 0) << exported.err;
    EXPECT_NE(exported.out.find("Exported 1321 profiles"), std::string::npos) << exported.out;
    const std::string back = scratch("back.vlib").string();
    ASSERT_EQ(vlib({"create", back}).exitCode, 0);
    const ToolRun reread = vlib({"import-profiles", back, ifc});
    ASSERT_EQ(reread.exitCode, 0) << reread.err;
    EXPECT_EQ(fields(reread.out).at("profiles"), "1321 created, 0 skipped, 0 overwritten, 0 renamed");

    // A truncated file: reported, nothing imported, exit code of a failed operation.
    const std::string text = readBytes(ifc);
    writeBytes(scratch("cut.ifc"), text.substr(0, text.size() / 2));
    const std::string empty = scratch("empty.vlib").string();
    ASSERT_EQ(vlib({"create", empty}).exitCode, 0);
    const ToolRun cut = vlib({"import-profiles", empty, data + "bolts/profile_z.blt", scratch("cut.ifc").string()});
    EXPECT_EQ(cut.exitCode, 1);
    EXPECT_NE(cut.err.find("truncated"), std::string::npos) << cut.err;
    EXPECT_NE(cut.err.find("nothing was imported"), std::string::npos) << cut.err;
}

// A library with a few sections of the tables and a user-defined profile.
fs::path profileLibrary() {
    const fs::path file = fs::temp_directory_path() / ("vlib_profiles_" + std::to_string(::getpid()) + ".vlib");
    fs::remove(file);
    using namespace vantlib;
    auto library = Library::create(OdString(file.wstring()), OdDb::kUnitsMillimeters);
    auto en = ProfileStandard::create(OdString(L"EN 10365"));
    auto ipe = library->save(ProfileName::create(en, OdString(L"IPE"), kProfileStructuralSteel));
    auto hea = library->save(ProfileName::create(en, OdString(L"HEA"), kProfileStructuralSteel));
    auto angle = library->save(
        ProfileName::create(ProfileStandard::create(OdString(L"EN 10056")), OdString(L"L"), kProfileStructuralSteel));
    auto duct = library->save(ProfileName::create(QcSmartPtr<ProfileStandard>(), OdString(L"Duct"), kProfileHvac));
    auto addI = [&](const QcSmartPtr<ProfileName>& name, const wchar_t* size, double h, double b, double tw,
                    double tf, double r) {
        auto p = IShapeProfile::create(name, OdString(size));
        p->set_overall_depth(h);
        p->set_overall_width(b);
        p->set_web_thickness(tw);
        p->set_flange_thickness(tf);
        p->set_fillet_radius(r);
        library->save(QcSmartPtr<Profile>(p.get()));
    };
    addI(ipe, L"200", 200, 100, 5.6, 8.5, 12);
    addI(ipe, L"80", 80, 46, 3.8, 5.2, 5);
    addI(hea, L"200", 190, 200, 6.5, 10, 18);
    auto l = LShapeProfile::create(angle, OdString(L"100x10"));
    l->set_depth(100);
    l->set_thickness(10);
    l->set_fillet_radius(12);
    l->set_edge_radius(6);
    library->save(QcSmartPtr<Profile>(l.get()));
    auto round = CircleHollowProfile::create(duct, OdString(L"DN 200"));
    round->set_radius(100);
    round->set_wall_thickness(1);
    round->set_description(OdString(L"spiral seam"));
    library->save(QcSmartPtr<Profile>(round.get()));
    return file;
}

TEST_F(VlibTool, ShowPrintsAProfilesSectionAndListFiltersAsTheDialog) {
    const std::string library = profileLibrary().string();
    const ToolRun ipe = vlib({"show", library, "profile", "IPE 200"});
    ASSERT_EQ(ipe.exitCode, 0) << ipe.err;
    const auto shown = fields(ipe.out);
    EXPECT_EQ(shown.at("Standard"), "EN 10365");
    EXPECT_EQ(shown.at("Type"), "Structural Steel");
    EXPECT_EQ(shown.at("Area"), "2848.41 mm2 (28.48 cm2)");
    EXPECT_EQ(shown.at("Extents"), "100 x 200 mm");
    EXPECT_EQ(shown.at("  web_thickness"), "5.6 mm");
    EXPECT_EQ(shown.at("Centroid from the centre of the extents"), "0.00, 0.00 mm");

    const ToolRun hea = vlib({"show", library, "profile", "en 10365 hea 200"});
    ASSERT_EQ(hea.exitCode, 0) << hea.err;
    EXPECT_EQ(fields(hea.out).at("Area").substr(0, 19), "5383.12 mm2 (53.83 ");
    const ToolRun angle = vlib({"show", library, "profile", "L 100x10"});
    ASSERT_EQ(angle.exitCode, 0) << angle.err;
    EXPECT_EQ(fields(angle.out).at("Area"), "1915.45 mm2 (19.15 cm2)");
    EXPECT_EQ(vlib({"show", library, "profile", "IPE 999"}).exitCode, 1);

    EXPECT_EQ(vlib({"list", library, "profiles"}).out,
              "Duct DN 200\nEN 10056 L 100x10\nEN 10365 HEA 200\nEN 10365 IPE 80\nEN 10365 IPE 200\n");
    EXPECT_EQ(vlib({"list", library, "profile", "--standard", "EN 10365", "--shape", "IShape", "--text", "ipe"}).out,
              "EN 10365 IPE 80\nEN 10365 IPE 200\n");
    EXPECT_EQ(vlib({"list", library, "profile", "--type", "hvac"}).out, "Duct DN 200\n");
    EXPECT_EQ(vlib({"list", library, "profile", "--text", "spiral"}).out, "Duct DN 200\n");
    EXPECT_EQ(vlib({"list", library, "profile", "--shape", "Banana"}).exitCode, 2);
    EXPECT_EQ(vlib({"list", library, "material", "--text", "x"}).exitCode, 2);
    fs::remove(library);
}
