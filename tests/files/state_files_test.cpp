// SPDX-License-Identifier: MIT
// The files of the state: what a fault while reading, another instance or a kill costs.
#include "files/state_files.h"

#include "core/variables.h"
#include "files/values_file.h"
#include "shell/commands.h"
#include "shell/startup.h"
#include "tests/files/failing_calls.h"
#include "tests/support/outcomes.h"
#include "tests/support/temporary_file.h"

#include <gtest/gtest.h>

#include <cerrno>

namespace quillon::testing {
namespace {

using Unsaved = std::vector<std::string>;

/// A simulator and its files.
struct Instance : TestMachine {
    StateFiles state;

    explicit Instance(const DataFiles& paths) { state.paths = paths; }
    void begin() {
        read_state(*simulator, state);
        start_simulator(*simulator);
    }
    Unsaved save() { return save_state(*simulator, state); }
};

/// A user's folder with the state of an earlier session: volume 3, A = 5, one recent listing.
struct State : ::testing::Test {
    State() {
        std::filesystem::create_directories(files.folder);
        put_file(files.settings, "[QZS]\nBEEPVOLUME=3\n");
        put_file(files.recent_listings, "/old.bas\n");
        const auto m = std::make_unique<Machine>();
        store_number(m->variables[0], 5);
        EXPECT_TRUE(write_saved_values(files.saved_values, *m));
        for (const std::string& path : {files.settings, files.saved_values, files.recent_listings})
            originals.emplace_back(path, get_file(path));
    }
    /// An instance that has started and read the state.
    Instance& instance() {
        Instance& t = *instances.emplace_back(std::make_unique<Instance>(files));
        t.simulator->window.note = [this](const std::string& text) { notes.push_back(text); };
        t.begin();
        return t;
    }
    /// A as the file has it.
    double saved_a() {
        const auto m = std::make_unique<Machine>();
        EXPECT_TRUE(read_values_image(*m, read_values_file(files.saved_values)));
        return m->variables[0].number;
    }
    [[nodiscard]] bool saved(const std::string& line) const {
        return get_file(files.settings).find("\n" + line + "\n") != std::string::npos;
    }
    TempFolder home;
    DataFiles files = find_data_files({.home = home.path}, "/nowhere/bin");
    std::vector<std::unique_ptr<Instance>> instances;
    std::vector<std::string> notes;
    std::vector<std::pair<std::string, std::string>> originals; ///< path and bytes
};

TEST_F(State, IsNeverReplacedWhereItCouldNotBeRead) {
    for (const std::string& path : {files.settings, files.saved_values, files.recent_listings}) {
        SCOPED_TRACE(path);
        const std::string before = get_file(path);
        for (const int error : {EIO, EMFILE}) {
            int faults_of_this_file = 0;
            std::string failed = "open";
            for (int call = 1; !failed.empty(); ++call) {
                Instance& t = *instances.emplace_back(std::make_unique<Instance>(files));
                failed = run_with_fault({call, error, false}, [&] { t.begin(); });
                const std::string told = t.messages.empty() ? "" : t.messages[0];
                if (!told.starts_with("FILES 0\x01\r\n" + path + ": "))
                    continue;
                ++faults_of_this_file;
                store_number(t.m.variables[0], 77);
                t.m.settings.run_page = 8;
                t.simulator->recent = {"/new.bas"};
                t.save();
                EXPECT_EQ(get_file(path), before) << failed;
                for (const auto& [other, bytes] : originals)
                    put_file(other, bytes);
            }
            EXPECT_GE(faults_of_this_file, 3) << "open, fstat, read";
        }
    }
}

TEST_F(State, SaysWhatItDoesNotUnderstand) {
    put_file(files.settings, "A shopping list\n");
    put_file(files.saved_values, "Another\n");
    Instance& t = instance();
    EXPECT_EQ(t.messages,
              (std::vector<std::string>{"FILES 1\x01\r\n" + files.settings, "FILES 1\x01\r\n" + files.saved_values}));
    EXPECT_EQ(t.save(), Unsaved{});
    EXPECT_EQ(get_file(files.settings + ".bad") + get_file(files.saved_values + ".bad"), "A shopping list\nAnother\n");
}

TEST_F(State, OfTwoInstancesIsMerged) {
    Instance& first = instance();
    Instance& second = instance();
    first.m.settings.beep_volume = 7;
    first.simulator->recent.insert(first.simulator->recent.begin(), "/first.bas");
    second.m.settings.run_page = 9;
    second.simulator->recent.insert(second.simulator->recent.begin(), "/second.bas");
    EXPECT_EQ(first.save(), Unsaved{});
    EXPECT_EQ(second.save(), Unsaved{});
    EXPECT_TRUE(saved("BEEPVOLUME= 7"));
    EXPECT_TRUE(saved("RUNPAGE= 9"));
    EXPECT_EQ(get_file(files.recent_listings), "/second.bas\n/old.bas\n/first.bas\n");
    EXPECT_EQ(first.save(), Unsaved{});
    EXPECT_TRUE(saved("RUNPAGE= 9")) << "the one that did not change it leaves it";
}

TEST_F(State, KeepsTheVariablesThatChangedLastAndTheOthersBeside) {
    const std::string beside = files.saved_values + ".other";
    Instance& first = instance();
    Instance& second = instance();
    store_number(first.m.variables[0], 11);
    EXPECT_EQ(first.save(), Unsaved{});
    const std::string of_first = get_file(files.saved_values);
    EXPECT_EQ(second.save(), Unsaved{}) << "it changed nothing";
    EXPECT_EQ(saved_a(), 11);
    store_number(second.m.variables[0], 22);
    EXPECT_EQ(second.save(), Unsaved{});
    EXPECT_EQ(saved_a(), 22);
    EXPECT_EQ(get_file(beside), of_first);
    EXPECT_EQ(first.save(), Unsaved{});
    EXPECT_EQ(saved_a(), 22) << "the first has not changed since";
    EXPECT_EQ(notes, std::vector<std::string>{"FILES 2\x01\r\n" + beside});
}

TEST_F(State, IsSavedWhileTheProgramRuns) {
    Instance& t = instance();
    Simulator& s = *t.simulator;
    t.m.settings.beep_volume = 4;
    const auto saves = [&](std::int64_t now) {
        store_number(t.m.variables[0], t.m.variables[0].number + 1);
        save_when_due(s, t.state, now);
        return saved_a() == t.m.variables[0].number;
    };
    EXPECT_TRUE(saves(100'000));
    EXPECT_TRUE(saved("BEEPVOLUME= 4"));
    EXPECT_FALSE(saves(104'999));
    EXPECT_TRUE(saves(105'000)) << "each 5 s while nothing runs";
    t.start("PRINT \"A\";:GOTO 10");
    t.tick();
    ASSERT_EQ(t.m.run.run_state, STATE_RUN);
    EXPECT_FALSE(saves(164'999));
    EXPECT_TRUE(saves(165'000)) << "each 60 s while something does";
    s.preferences.last_file = "/other.bas";
    EXPECT_TRUE(saves(165'001)) << "at once with another listing";
}

TEST_F(State, ThatCannotBeSavedIsNotedOnce) {
    Instance& t = instance();
    std::filesystem::remove(files.settings);
    std::filesystem::create_directory(files.settings);
    t.m.settings.beep_volume = 4;
    for (int i = 1; i <= 3; ++i)
        save_when_due(*t.simulator, t.state, i * 10'000);
    EXPECT_EQ(notes, std::vector<std::string>{files.settings + "\r\n"});
    std::filesystem::remove(files.settings);
    save_when_due(*t.simulator, t.state, 40'000);
    EXPECT_TRUE(saved("BEEPVOLUME= 4")) << "as soon as it can be";
}

TEST_F(State, GrowsNoSettingsThatCouldNotBeReadAgain) {
    const std::string settings = "[QZS]\n;" + std::string((1 << 20) - 100, 'x') + "\n";
    put_file(files.settings, settings);
    Instance& t = instance();
    t.m.settings.run_page = 1;
    EXPECT_EQ(t.save(), Unsaved{files.settings});
    EXPECT_EQ(get_file(files.settings), settings);
}

} // namespace
} // namespace quillon::testing
