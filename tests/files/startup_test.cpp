// SPDX-License-Identifier: MIT
// From one run to the next: what a start reads, in which order it acts, what an end writes, and the same through
// `quillon-cli run`.
#include "core/controls.h"
#include "shell/startup.h"

#include "files/state_files.h"
#include "keys/soft_keyboard.h"
#include "shell/commands.h"
#include "shell/editor_call.h"
#include "shell/saved_values.h"
#include "shell/skins.h"
#include "tests/support/child_process.h"
#include "tests/support/outcomes.h"
#include "tests/support/temporary_file.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

namespace quillon::testing {
namespace {

/// A simulator and its files.
struct Instance : TestMachine {
    StateFiles state;
};

std::vector<std::string> shut_down(Instance& t) {
    shut_down_simulator(*t.simulator);
    return save_state(*t.simulator, t.state);
}

/// A person's folders, and simulators that start in them.
struct Startup : ::testing::Test {
    TempFolder home;
    DataFiles files = find_data_files({.home = home.path}, "/nowhere/bin");
    std::string listing = home / "last.bas";
    std::string order; ///< what the host and the window were asked for

    Instance& start(const std::string& named = "") {
        runs.push_back(std::make_unique<Instance>());
        Instance& t = *runs.back();
        t.state.paths = files;
        t.simulator->around.host.milliseconds = [] { return 99U; };
        t.simulator->around.host.show_message = [this](const std::string& text, MessageIcon) {
            order += text.substr(0, text.find('\x01')) + "|";
        };
        t.simulator->around.host.stop_tone = [this] { order += "stop-tone|"; };
        t.simulator->window.toggle_soft_keyboard = [this, &t] { order += t.m.soft.soft_open ? "open|" : "close|"; };
        order.clear();
        read_state(*t.simulator, t.state);
        EXPECT_TRUE(start_simulator(*t.simulator, named));
        return t;
    }
    void put_settings(const std::string& lines) {
        std::filesystem::create_directories(files.folder);
        put_file(files.settings, "[QZS]\n" + lines);
    }
    [[nodiscard]] bool saved(const std::string& line) const {
        return get_file(files.settings).find("\n" + line + "\n") != std::string::npos;
    }
    std::vector<std::unique_ptr<Instance>> runs;
};

TEST_F(Startup, WithoutFilesIsThePowerOnState) {
    Instance& t = start();
    EXPECT_EQ(order, "");
    EXPECT_EQ(home.names(), std::set<std::string>{}) << "a start writes nothing";
    EXPECT_EQ(t.m.run.run_state, STATE_SELECT);
    EXPECT_EQ(lit_indicators(t.simulator->lcd), (std::vector<std::string_view>{"WRT", "DEG"})) << "it is drawn";
    t.tick();
    EXPECT_EQ(t.visible(), "P  123456789");
    shut_down(t);
    EXPECT_EQ(get_file(files.saved_values).size(), 11700U);
    EXPECT_TRUE(get_file(files.settings).starts_with("[QZS]\nEDITOR = \"notepad.exe\"\nLASTFILE = \"\"\n"));
    std::filesystem::remove_all(home / ".config");
    put_file(home / ".config", "a file where a folder should be");
    const auto unsaved = shut_down(t);
    EXPECT_EQ(unsaved, (std::vector{files.settings, files.saved_values, files.recent_listings}));
    t.simulator->around.catalogue.sections["SAVE"][0] = "Lost:\r\n";
    EXPECT_EQ(unsaved_text(*t.simulator, {"a", "b"}), "Lost:\r\na\r\nb\r\n");
    EXPECT_EQ(order, "") << "how it is told is for the caller to say";
    Instance without_files;
    read_state(*without_files.simulator, without_files.state);
    EXPECT_TRUE(start_simulator(*without_files.simulator));
    shut_down(without_files);
    EXPECT_EQ(home.names(), std::set<std::string>{".config"});
}

TEST_F(Startup, KeepsStateToTheNextRun) {
    const std::string dollar(30, 'D');
    put_file(listing, "[P0]\n10 A=1/3:B$=\"TEXT\":$=\"" + dollar + "\":Z(196)=-5\n20 END\n[P7]\n10 A=7\n");
    Instance& first = start();
    EXPECT_TRUE(open_listing(*first.simulator, listing));
    run_host_command(*first.simulator, COMMAND_RUN);
    first.wait();
    for (const int command : {COMMAND_PAGE_0 + 7, COMMAND_ZOOM_1 + 2, +COMMAND_ASCII_MODE, +COMMAND_GRA,
                              +COMMAND_SOFT_KEYBOARD, +COMMAND_OVERDRIVE})
        run_host_command(*first.simulator, command);
    first.m.settings.set_f_digits = 4;
    first.simulator->preferences.pal_on = 0x123456;
    const ValuesImage kept = values_image(first.m);
    shut_down(first);

    Instance& second = start();
    EXPECT_EQ(order, "open|");
    EXPECT_EQ(second.simulator->recent, RecentListings{listing});
    EXPECT_EQ(window_title(*second.simulator), "Quillon Simulator. [last.bas]");
    const Machine& m = second.m;
    EXPECT_EQ((std::vector{m.settings.run_page, m.settings.zoom, number_of(m.settings.angle_unit),
                           number_of(m.run.saved_run_state)}),
              (std::vector{7, 3, 2, 0}));
    EXPECT_TRUE(!m.settings.ascii_mode && m.soft.soft_open && !m.speed.overdrive);
    EXPECT_EQ((std::vector{m.settings.set_f_digits, m.settings.timer_interval, m.settings.cursor_interval}),
              (std::vector{4, 30, 13}))
        << "the interval is not Overdrive's";
    EXPECT_EQ(m.random_seed, 99U) << "a load seeds anew";
    const Canvas& skin = second.simulator->lcd.skin;
    EXPECT_EQ(skin.pixels.at(pixel_index(skin, 129, 96)) & 0xFFFFFF, 0x123456U) << "a dot of the block";
    EXPECT_EQ(values_image(m), kept);
    EXPECT_EQ(m.variables[222].text.view(), dollar);
    second.tick();
    EXPECT_EQ(second.visible(), "P _123456 89") << "the listing is there, and its area 7 blinks";
}

TEST_F(Startup, GoesByItsOrderAndSoDoesTheEnd) {
    put_file(listing, "[P0]\nA=1\n");
    std::filesystem::create_directories(files.folder);
    ASSERT_EQ(::mkfifo(files.settings.c_str(), 0600), 0);
    start();
    EXPECT_EQ(order, "FILES 0|") << "nothing waits for what may come through a pipe";
    std::filesystem::remove(files.settings);
    put_settings("TIMER=0\nRUNPAGE=10\nSTARTMODE=1\nSOFTKEY=1\nLASTFILE=\"" + listing + "\"\n");
    Instance& t = start();
    EXPECT_EQ(order, "INI 0|INI 1|SYSTEM 20|open|");
    t.tick();
    EXPECT_EQ(t.display(), "READY P0") << "the start goes on";
    t.start("BEEPS 4,9,1000\nEND");
    t.tick();
    order.clear();
    shut_down(t);
    EXPECT_NE(order.find("stop-tone|"), std::string::npos) << order;
    EXPECT_FALSE(t.m.soft.soft_open);
    EXPECT_TRUE(saved("SOFTKEY= 1")) << "it was open at the end";
    EXPECT_TRUE(saved("STARTMODE= 1"));
    Instance& next = start();
    run_host_command(*next.simulator, COMMAND_SOFT_KEYBOARD);
    shut_down(next);
    EXPECT_TRUE(saved("SOFTKEY= 0"));
}

/// Listings that do not load at the start: the machine is empty, and Reload and Edit mean the one that was asked for.
TEST_F(Startup, GoesOnWithoutAListing) {
    struct Row {
        std::string text;      ///< of the file; "missing" and "pipe" are what they say
        std::string message;   ///< without the file's name
        bool is_named = false; ///< by the title, while it does not load
    };
    const Row rows[] = {
        {"missing", "SYSTEM 2|"}, {"pipe", "SYSTEM 2|"}, {"[P0]\nA=1\n", "SYSTEM 20|", true}, {"", "SYSTEM 3|", true}};
    for (const bool on_command_line : {false, true}) {
        for (const Row& row : rows) {
            SCOPED_TRACE(row.text);
            std::filesystem::remove(listing);
            if (row.text == "pipe")
                ASSERT_EQ(::mkfifo(listing.c_str(), 0600), 0);
            else if (row.text != "missing")
                put_file(listing, row.text);
            const std::string old = on_command_line ? home / "old.bas" : listing;
            put_settings("LASTFILE=\"" + old + "\"\n");
            Instance& t = start(on_command_line ? listing : "");
            Simulator& s = *t.simulator;
            EXPECT_EQ(order, row.message) << "and nothing of a listing that is not asked for";
            EXPECT_TRUE(t.m.listing->text.empty());
            EXPECT_EQ(s.lcd.skin.width, 512);
            EXPECT_EQ(window_title(s), row.is_named ? "Quillon Simulator. [last.bas]" : "Quillon Simulator.");
            shut_down(t);
            EXPECT_TRUE(saved("LASTFILE = \"" + (row.is_named ? listing : old) + "\""));
            run_host_command(s, COMMAND_RELOAD);
            EXPECT_EQ(order, row.message + row.message);
            EXPECT_EQ(editor_call(s)->arguments, std::vector{listing});
            std::filesystem::remove(listing);
            put_file(listing, "[P0]\n10 A=1\n");
            run_host_command(s, COMMAND_RELOAD);
            EXPECT_EQ(order, row.message + row.message) << "mended";
            EXPECT_FALSE(t.m.listing->text.empty());
            shut_down(t);
            EXPECT_TRUE(saved("LASTFILE = \"" + listing + "\""));
        }
    }
}

TEST_F(Startup, KeepsWholePaths) {
    const std::filesystem::path was = std::filesystem::current_path();
    std::filesystem::create_directory(home / "bas");
    std::filesystem::current_path(home.path);
    const std::string real = std::filesystem::current_path() / "bas/t.bas";
    put_file("bas/t.bas", "[P0]\n10 A=1\n");
    for (const char* name : {"bas/t.bas", "./bas/./t.bas"}) {
        Instance& t = start(name);
        EXPECT_EQ(t.simulator->preferences.last_file, real);
        EXPECT_TRUE(open_listing(*t.simulator, name));
        EXPECT_EQ(t.simulator->recent, RecentListings{real});
    }
    std::filesystem::current_path(was);
}

TEST_F(Startup, SaysThatThereIsNothingToReload) {
    Instance& t = start();
    run_host_command(*t.simulator, COMMAND_RELOAD);
    EXPECT_EQ(order, "SYSTEM 3|");
}

// --- The program ---

TEST(RunValues, GoFromRunToRun) {
    const TempFolder folder;
    const std::string listing = folder / "count.bas", values = folder / "mine.val";
    const std::string counting = "[P0]\n10 A=A+1:B$=B$+\"X\":PRINT A;B$\n";
    const std::pair<std::string, const char*> rows[] = {
        {counting, " 1X\n"},
        {counting, " 2XX\n"},
        {"[P0]\n10 A=A+10:C=1/0\n", ""}, // a program that fails keeps them too
        {"[P0]\n10 PRINT A\n", " 12\n"}};
    for (const auto& [program, output] : rows) {
        put_file(listing, program);
        const Outcome outcome = run_program({"run", listing, "--values", values});
        EXPECT_EQ(outcome.out, output);
        EXPECT_EQ(outcome.status, *output == 0 ? 1 : 0);
    }
    EXPECT_EQ(run_program({"run", listing}).out, " 0\n") << "without it nothing is kept";
}

} // namespace
} // namespace quillon::testing
