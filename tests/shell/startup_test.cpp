// From one run to the next: what a start reads, in which order it acts, what an end writes, and the same through
// `quillon-cli run`.
#include "shell/startup.h"

#include "keys/soft_keyboard.h"
#include "shell/commands.h"
#include "shell/saved_values.h"
#include "shell/skins.h"
#include "tests/support/child_process.h"
#include "tests/support/scripts.h"
#include "tests/support/temporary_file.h"

#include <gtest/gtest.h>

namespace quillon::testing {
namespace {

/// A person's folders, and simulators that start in them.
struct Startup : ::testing::Test {
    TempFolder home;
    DataFiles files = find_data_files({.home = home.path}, "/nowhere/bin");
    std::string listing = home / "last.bas";
    std::string order; ///< what the host and the window were asked for

    TestMachine& start() {
        runs.push_back(std::make_unique<TestMachine>());
        TestMachine& t = *runs.back();
        t.simulator->files = files;
        t.m.host.milliseconds = [] { return 99U; };
        t.m.host.show_message = [this](const std::string& text, MessageIcon) {
            order += text.substr(0, text.find('\x01')) + "|";
        };
        t.m.host.stop_tone = [this] { order += "stop-tone|"; };
        t.simulator->window.toggle_soft_keyboard = [this, &t] { order += t.m.soft_open != 0 ? "open|" : "close|"; };
        order.clear();
        EXPECT_TRUE(start_simulator(*t.simulator));
        return t;
    }
    void put_settings(const std::string& lines) {
        std::filesystem::create_directories(files.folder);
        put_file(files.settings, "[QZS]\n" + lines);
    }
    [[nodiscard]] bool saved(const std::string& line) const {
        return get_file(files.settings).find("\n" + line + "\n") != std::string::npos;
    }
    std::vector<std::unique_ptr<TestMachine>> runs;
};

TEST_F(Startup, WithoutFilesIsThePowerOnState) {
    TestMachine& t = start();
    EXPECT_EQ(order, "");
    EXPECT_EQ(home.names(), std::set<std::string>{}) << "a start writes nothing";
    EXPECT_EQ(t.m.run_state, STATE_SELECT);
    EXPECT_EQ(lit_indicators(t.simulator->lcd), (std::vector<std::string_view>{"WRT", "DEG"})) << "it is drawn";
    t.tick();
    EXPECT_EQ(t.visible(), "P  123456789");
    shut_down_simulator(*t.simulator);
    EXPECT_EQ(get_file(files.saved_values).size(), 11700U);
    EXPECT_TRUE(get_file(files.settings).starts_with("[QZS]\nEDITOR = \"notepad.exe\"\nLASTFILE = \"\"\n"));
    std::filesystem::remove_all(home / ".config");
    put_file(home / ".config", "a file where a folder should be");
    const auto unsaved = shut_down_simulator(*t.simulator);
    EXPECT_EQ(unsaved, (std::vector{files.settings, files.saved_values, files.recent_listings}));
    t.m.catalogue.sections["SAVE"][0] = "Lost:\r\n";
    EXPECT_EQ(unsaved_text(*t.simulator, {"a", "b"}), "Lost:\r\na\r\nb\r\n");
    EXPECT_EQ(order, "") << "how it is told is for the caller to say";
    TestMachine without_files;
    EXPECT_TRUE(start_simulator(*without_files.simulator));
    shut_down_simulator(*without_files.simulator);
    EXPECT_EQ(home.names(), std::set<std::string>{".config"});
}

TEST_F(Startup, KeepsStateToTheNextRun) {
    const std::string dollar(30, 'D');
    put_file(listing, "[P0]\n10 A=1/3:B$=\"TEXT\":$=\"" + dollar + "\":Z(196)=-5\n20 END\n[P7]\n10 A=7\n");
    TestMachine& first = start();
    EXPECT_TRUE(open_listing(*first.simulator, listing));
    run_host_command(*first.simulator, COMMAND_RUN);
    first.wait();
    for (const int command : {COMMAND_PAGE_0 + 7, COMMAND_ZOOM_1 + 2, +COMMAND_ASCII_MODE, +COMMAND_GRA,
                              +COMMAND_SOFT_KEYBOARD, +COMMAND_OVERDRIVE})
        run_host_command(*first.simulator, command);
    first.m.set_f_digits = 4;
    first.simulator->settings.pal_on = 0x123456;
    const ValuesImage kept = values_image(first.m);
    shut_down_simulator(*first.simulator);

    TestMachine& second = start();
    EXPECT_EQ(order, "open|");
    EXPECT_EQ(second.simulator->recent, RecentListings{listing});
    EXPECT_EQ(window_title(*second.simulator), "Quillon Simulator. [last.bas]");
    const Machine& m = second.m;
    EXPECT_EQ((std::vector{m.run_page, m.zoom, m.ascii_mode, m.angle_unit, m.saved_run_state, m.soft_open}),
              (std::vector{7, 3, 0, +ANGLE_GRA, 0, 1}));
    EXPECT_EQ((std::vector{m.set_f_digits, m.timer_interval, m.overdrive, m.cursor_interval}),
              (std::vector{4, 30, 0, 13}))
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
    put_settings("TIMER=0\nRUNPAGE=10\nSTARTMODE=1\nSOFTKEY=1\nLASTFILE=\"" + listing + "\"\n");
    TestMachine& t = start();
    EXPECT_EQ(order, "INI 0|INI 1|SYSTEM 20|open|");
    t.tick();
    EXPECT_EQ(moment(t), "run 17 8 [READY P0]") << "the start goes on";
    t.start("BEEPS 4,9,1000\nEND");
    t.tick();
    order.clear();
    shut_down_simulator(*t.simulator);
    EXPECT_NE(order.find("stop-tone|"), std::string::npos) << order;
    EXPECT_EQ(t.m.soft_open, 0);
    EXPECT_TRUE(saved("SOFTKEY= 1")) << "it was open at the end";
    EXPECT_TRUE(saved("STARTMODE= 1"));
    TestMachine& next = start();
    run_host_command(*next.simulator, COMMAND_SOFT_KEYBOARD);
    shut_down_simulator(*next.simulator);
    EXPECT_TRUE(saved("SOFTKEY= 0"));
}

TEST_F(Startup, GoesOnWithoutTheLastListing) {
    const std::pair<const char*, std::string> rows[] = {
        {nullptr, "SYSTEM 2|"}, // there is none, but it may be back the next time
        {"[P0]\nA=1\n", "SYSTEM 20|"},
        {"", "SYSTEM 3|"}};
    for (const auto& [text, message] : rows) {
        SCOPED_TRACE(message);
        if (text != nullptr)
            put_file(listing, text);
        put_settings("LASTFILE=\"" + listing + "\"\n");
        TestMachine& t = start();
        EXPECT_EQ(order, message);
        EXPECT_TRUE(t.m.listing_text.empty());
        EXPECT_EQ(t.simulator->lcd.skin.width, 512);
        shut_down_simulator(*t.simulator);
        EXPECT_TRUE(saved("LASTFILE = \"" + (text == nullptr ? listing : "") + "\""));
    }
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
