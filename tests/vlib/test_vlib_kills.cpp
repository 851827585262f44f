// `vlib copy` killed at random changes of the destination library: inside the write of the
// copy, inside its commit, and inside the move of a library left by an earlier version in
// write-ahead-log mode to the rollback journal. After every kill the library must open, pass
// `vlib check` and hold exactly the objects from before or from after the copy.
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>
#include <random>
#include <sstream>
#include <string>
#include <vector>

#include <SQLiteCpp/Database.h>
#include <gtest/gtest.h>

namespace {

namespace fs = std::filesystem;

struct VlibRun {
    int exitCode = -1;  // 128 + signal when killed
    std::string out;
    std::string err;
};

std::string readText(const fs::path& path) {
    std::ifstream in(path, std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
}

// Runs vlib with `environment` added, without a shell in between, so that a kill is seen as such.
VlibRun runVlib(const std::vector<std::string>& args, const fs::path& scratch,
            const std::map<std::string, std::string>& environment = {}) {
    const fs::path outFile = scratch / "run.out", errFile = scratch / "run.err";
    const pid_t child = ::fork();
    if (child == 0) {
        std::FILE* out = std::freopen(outFile.c_str(), "w", stdout);
        std::FILE* err = std::freopen(errFile.c_str(), "w", stderr);
        if (!out || !err)
            ::_exit(126);
        for (const auto& [name, value] : environment)
            ::setenv(name.c_str(), value.c_str(), 1);
        const std::string program = std::string(VL_BIN_DIR) + "/vlib";
        std::vector<char*> argv{const_cast<char*>(program.c_str())};
        for (const auto& arg : args)
            argv.push_back(const_cast<char*>(arg.c_str()));
        argv.push_back(nullptr);
        ::execv(program.c_str(), argv.data());
        ::_exit(127);
    }
    int status = 0;
    ::waitpid(child, &status, 0);
    VlibRun run;
    run.exitCode = WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
    run.out = readText(outFile);
    run.err = readText(errFile);
    return run;
}

// One change of the destination seen by the preloaded counter: its call and the file's suffix
// ("" for the library itself, "-journal", "-wal", ...).
struct Change {
    std::string call;
    std::string file;
};

std::vector<Change> readChanges(const fs::path& log, const std::string& library) {
    std::vector<Change> changes;
    std::istringstream lines(readText(log));
    for (std::string line; std::getline(lines, line);) {
        std::istringstream words(line);
        long number = 0;
        Change change;
        std::string path;
        words >> number >> change.call;
        std::getline(words >> std::ws, path);
        change.file = path.substr(std::min(path.size(), library.size()));
        changes.push_back(change);
    }
    return changes;
}

enum class Phase { kModeSwitch, kCopyWrite, kCommit };

// Phase of each change. The move to the rollback journal is a transaction of its own before
// the copy's: everything up to the first deletion of the journal. In the copy's transaction
// the journal is written first; the commit begins with its sync and ends with its deletion.
std::vector<Phase> phasesOf(const std::vector<Change>& changes, bool switchesMode) {
    std::vector<Phase> phases;
    bool inSwitch = switchesMode, committing = false;
    for (const Change& change : changes) {
        if (inSwitch) {
            phases.push_back(Phase::kModeSwitch);
            if (change.call == "unlink" && change.file == "-journal")
                inSwitch = false;
            continue;
        }
        if (change.call == "sync" && change.file == "-journal")
            committing = true;
        phases.push_back(committing ? Phase::kCommit : Phase::kCopyWrite);
    }
    return phases;
}

class VlibKills : public ::testing::Test {
protected:
    void SetUp() override {
        m_dir = fs::temp_directory_path() / ("vlib_kills_" + std::to_string(::getpid()));
        fs::remove_all(m_dir);
        fs::create_directories(m_dir);
    }
    void TearDown() override { fs::remove_all(m_dir); }

    VlibRun vlib(const std::vector<std::string>& args, const std::map<std::string, std::string>& environment = {}) {
        return runVlib(args, m_dir, environment);
    }
    std::string objects(const fs::path& library) {
        const VlibRun materials = vlib({"list", library.string(), "material"});
        const VlibRun compositions = vlib({"list", library.string(), "composition"});
        EXPECT_EQ(materials.exitCode, 0) << materials.err;
        EXPECT_EQ(compositions.exitCode, 0) << compositions.err;
        return materials.out + "--\n" + compositions.out;
    }

    fs::path m_dir;
};

TEST_F(VlibKills, CopyKilledAtRandomChangesLeavesTheLibraryBeforeOrAfter) {
    const auto started = std::chrono::steady_clock::now();
    ASSERT_EQ(vlib({"demo", (m_dir / "demo").string()}).exitCode, 0);
    const std::string central = (m_dir / "demo" / "central-metric.vlib").string();

    // The destination already holds a wall; the copy adds roofs, floors and their materials.
    const fs::path rollbackTarget = m_dir / "target-rollback.vlib";
    ASSERT_EQ(vlib({"create", rollbackTarget.string()}).exitCode, 0);
    ASSERT_EQ(vlib({"copy", central, rollbackTarget.string(), "composition", "EW-02 Concrete, ETICS"}).exitCode, 0);
    // The same library as an earlier version could leave it: in write-ahead-log mode.
    const fs::path walTarget = m_dir / "target-wal.vlib";
    fs::copy_file(rollbackTarget, walTarget);
    {
        SQLite::Database db(walTarget.string(), SQLite::OPEN_READWRITE);
        ASSERT_EQ(db.execAndGet("PRAGMA journal_mode = WAL").getString(), "wal");
    }
    ASSERT_FALSE(fs::exists(walTarget.string() + "-wal"));

    const std::vector<std::string> copied{"RF-01 Flat roof, warm deck, tapered", "EW-05 Basement wall",
                                          "EW-01 Clay block, rendered"};
    const fs::path work = m_dir / "work.vlib";
    auto copyInto = [&](const std::map<std::string, std::string>& environment) {
        std::vector<std::string> args{"copy", central, work.string(), "composition"};
        args.insert(args.end(), copied.begin(), copied.end());
        return vlib(args, environment);
    };
    std::map<std::string, std::string> environment{{"LD_PRELOAD", VL_KILL_PRELOAD}, {"VL_KILL_PREFIX", work.string()}};

    // Unkilled runs give the objects after the copy and the changes a kill can fall before.
    const std::string before = objects(rollbackTarget);
    std::string after;
    std::map<bool, std::vector<Phase>> phases;
    for (const bool wal : {false, true}) {
        fs::copy_file(wal ? walTarget : rollbackTarget, work, fs::copy_options::overwrite_existing);
        const fs::path log = m_dir / "changes.log";
        fs::remove(log);
        auto logged = environment;
        logged["VL_KILL_LOG"] = log.string();
        const VlibRun full = copyInto(logged);
        ASSERT_EQ(full.exitCode, 0) << full.err;
        const std::vector<Change> changes = readChanges(log, work.string());
        phases[wal] = phasesOf(changes, wal);
        ASSERT_FALSE(changes.empty());
        EXPECT_EQ(std::count(phases[wal].begin(), phases[wal].end(), Phase::kModeSwitch) > 0, wal);
        const std::string result = objects(work);
        if (after.empty())
            after = result;
        EXPECT_EQ(result, after);
    }
    ASSERT_NE(before, after);

    const unsigned seed = std::random_device()();
    SCOPED_TRACE("random seed " + std::to_string(seed));
    std::mt19937 random(seed);
    const int kills = 100;
    std::map<Phase, int> landed;
    int recoveredBefore = 0, recoveredAfter = 0, readableWithoutRecovery = 0;
    for (int i = 0; i < kills; ++i) {
        // Every phase of the run gets its share of kills, whatever its number of changes.
        const bool wal = i % 2 == 1;
        const std::vector<Phase>& runPhases = phases[wal];
        std::vector<Phase> present;
        for (const Phase phase : {Phase::kModeSwitch, Phase::kCopyWrite, Phase::kCommit})
            if (std::count(runPhases.begin(), runPhases.end(), phase) > 0)
                present.push_back(phase);
        const Phase phase = present[std::uniform_int_distribution<size_t>(0, present.size() - 1)(random)];
        std::vector<size_t> candidates;
        for (size_t c = 0; c < runPhases.size(); ++c)
            if (runPhases[c] == phase)
                candidates.push_back(c + 1);
        size_t change = candidates[std::uniform_int_distribution<size_t>(0, candidates.size() - 1)(random)];
        bool killAfter = std::uniform_int_distribution<int>(0, 1)(random) == 1;
        // Right after the journal's deletion, the moment the commit takes effect, now and then.
        if (phase == Phase::kCommit && std::uniform_int_distribution<int>(0, 3)(random) == 0) {
            change = candidates.back();
            killAfter = true;
        }
        SCOPED_TRACE((wal ? "write-ahead-log target, " : "rollback-journal target, ") + std::string("kill ") +
                     (killAfter ? "after" : "before") + " change " + std::to_string(change));
        ++landed[runPhases[change - 1]];

        fs::copy_file(wal ? walTarget : rollbackTarget, work, fs::copy_options::overwrite_existing);
        auto killing = environment;
        killing["VL_KILL_AT"] = std::to_string(change);
        if (killAfter)
            killing["VL_KILL_AFTER"] = "1";
        const VlibRun killed = copyInto(killing);
        ASSERT_EQ(killed.exitCode, 128 + SIGKILL) << killed.err;

        // A reading command either reads the library or says what to do; it never calls the
        // file something else.
        const VlibRun info = vlib({"info", work.string()});
        if (info.exitCode == 0)
            ++readableWithoutRecovery;
        else
            EXPECT_NE(info.err.find("needs recovery"), std::string::npos) << info.err;

        const VlibRun recover = vlib({"recover", work.string()});
        ASSERT_EQ(recover.exitCode, 0) << recover.err;
        const VlibRun check = vlib({"check", work.string()});
        EXPECT_EQ(check.exitCode, 0) << check.out << check.err;
        const std::string result = objects(work);
        if (result == before)
            ++recoveredBefore;
        else if (result == after)
            ++recoveredAfter;
        else
            ADD_FAILURE() << "objects neither from before nor from after the copy:\n" << result;
        // Recovered means in the rollback journal for good. (A journal cut off before its
        // first sync may stay beside the file: it holds nothing and the next write reuses it.)
        EXPECT_FALSE(fs::exists(work.string() + "-wal"));
        EXPECT_FALSE(fs::exists(work.string() + "-shm"));
    }
    const double seconds = std::chrono::duration<double>(std::chrono::steady_clock::now() - started).count();
    std::printf("%d kills: %d in the switch to the rollback journal, %d in the copy's writes, %d in its commit; "
                "%d readable before recovery; %d recovered as before the copy, %d as after; %.1f s\n",
                kills, landed[Phase::kModeSwitch], landed[Phase::kCopyWrite], landed[Phase::kCommit],
                readableWithoutRecovery, recoveredBefore, recoveredAfter, seconds);
    EXPECT_GT(landed[Phase::kModeSwitch], 0);
    EXPECT_GT(landed[Phase::kCommit], 0);
    EXPECT_LT(seconds, 60.0);
}

}  // namespace
