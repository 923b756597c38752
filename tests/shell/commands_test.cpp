// SPDX-License-Identifier: MIT
// What the window asks for beside the commands (window.txt), what goes to the clipboard, the list of recent listings,
// and a simulator whose disk is none or a map in memory. What each command changes, by its number, is tested through
// the driving protocol.
#include "shell/clipboard.h"
#include "shell/commands.h"
#include "shell/configuration.h"
#include "shell/editor_call.h"
#include "shell/recent_listings.h"
#include "shell/skins.h"
#include "tests/support/cases_file.h"
#include "tests/support/test_machine.h"

#include <gtest/gtest.h>

namespace quillon::testing {
namespace {

TEST(HostRun, NeedsAListing) {
    for (const bool refused : {false, true}) {
        TestMachine t;
        if (refused) {
            t.start("A=1\nGOTO 10");
            EXPECT_FALSE(t.load("[P0]\n10 A=1\nx\n"));
        }
        run_host_command(*t.simulator, COMMAND_RUN);
        EXPECT_EQ(t.messages, std::vector<std::string>{"SYSTEM 3\x01"});
        EXPECT_EQ(t.m.run.run_state, STATE_SELECT) << "nothing of a refused listing runs, nor of the one before it";
        t.m.run.run_state = STATE_RUN;
        run_host_command(*t.simulator, COMMAND_STOP);
        EXPECT_EQ(t.m.run.run_state, STATE_RUN);
    }
}

TEST(HostRun, OfAnUnusedAreaShowsNoOldFault) {
    TestMachine t;
    t.start("A=1/0");
    t.wait();
    EXPECT_FALSE(t.m.error.error_detail.empty());
    run_host_command(*t.simulator, COMMAND_PAGE_0 + 5);
    run_host_command(*t.simulator, COMMAND_RUN);
    EXPECT_EQ(t.m.run.run_state, STATE_COMMAND);
    EXPECT_EQ(t.m.error.error_code, ERROR_NONE);
    EXPECT_TRUE(t.m.error.error_detail.empty());
}

/// What a typed number becomes, and the messages about it; `typed` is "KEY NUMBER".
std::string configured(const FileCase& row) {
    TestMachine t;
    const std::size_t blank = row.input.find(' ');
    const SettingRow& setting = *find_setting(row.input.substr(0, blank));
    const auto& number = std::get<NumberSetting>(setting.field);
    StoredSettings typed = begin_configuration(*t.simulator);
    t.m.settings.angle_unit = ANGLE_GRA; // the machine runs on while the dialog is open
    number.set(typed, std::stoi(row.input.substr(blank)));
    const std::vector<int> messages = accept_configuration(*t.simulator, typed);
    const StoredSettings taken = collect_settings(t.m, t.simulator->preferences);
    EXPECT_EQ(taken.machine.angle_unit, ANGLE_GRA);
    EXPECT_EQ(taken.machine.cursor_interval, cursor_interval_for(taken.machine.timer_interval));
    std::string told = std::to_string(number.get(taken));
    for (const int message : messages)
        told += " DLG_CONFIG " + std::to_string(message);
    return told;
}

TEST(ConfigurationDialog, TakesOverWhatTheRowsAccept) {
    expect_cases("shell/configuration.txt", configured);
    TestMachine t;
    run_host_command(*t.simulator, COMMAND_OVERDRIVE);
    StoredSettings typed = begin_configuration(*t.simulator);
    EXPECT_EQ(t.m.settings.timer_interval, 30) << "Overdrive pauses";
    typed.machine.timer_interval = 50;
    typed.preferences.editor = "vi";
    accept_configuration(*t.simulator, typed);
    EXPECT_EQ(t.simulator->preferences.editor, "vi");
    EXPECT_EQ(t.m.settings.timer_interval, OVERDRIVE_INTERVAL_MS);
    run_host_command(*t.simulator, COMMAND_OVERDRIVE);
    EXPECT_EQ(t.m.settings.timer_interval, 50);
}

std::string title_of(const FileCase& row) {
    TestMachine t;
    t.simulator->preferences.last_file = row.input;
    t.simulator->listing_was_read = true;
    return window_title(*t.simulator);
}

/// The editor's call, or the message box; of an input "EDITOR < LISTING".
std::string call_of_editor(const FileCase& row) {
    TestMachine t;
    const std::size_t end = row.input.find("<");
    t.simulator->preferences.editor = row.input.substr(0, end);
    t.simulator->preferences.last_file = row.input.substr(end + 1);
    t.simulator->disk.home_folder = [] { return "/home/me"; };
    const auto call = editor_call(*t.simulator, 7);
    std::string told = call ? call->program : "";
    for (const std::string& argument : call ? call->arguments : t.messages)
        told += "|" + argument;
    std::erase(told, '\x01');
    return told;
}

TEST(Window, NamesTheListingAndHandsItToTheEditorAsItIs) {
    EXPECT_EQ(window_title(*TestMachine().simulator), "Quillon Simulator.");
    expect_cases("shell/window.txt", {{"title", title_of}, {"editor", call_of_editor}});
}

TEST(Clipboard, TakesTheFirst1024Characters) {
    for (const std::size_t length : {0U, 1U, 1024U, 1025U, 2000U})
        EXPECT_EQ(clipboard_part(std::string(length, '\x87')).size(), std::min<std::size_t>(length, 1024));
}

TEST(Clipboard, GivesWhatALineCanTake) {
    const std::pair<std::string_view, std::string_view> rows[] = {
        {"", ""},
        {"AB\r\nC", "AB\rC"},
        {std::string_view("AB\0CD", 5), "AB"},
        {"\x83\x41\x83\x42", "AB"}, // double-byte text goes byte by byte
        {"123456789012345", "123456789012345"},
        {"1234567890123456", "123456789012345"},
        {"\n\n\n\n\n\n\n\n\n\n\n\n\nABC", "AB"}, // fifteen bytes are read, not fifteen taken over
        {"\t\x1F\x7F", "\t\x1F\x7F"}};
    for (const auto& [on_clipboard, pasted] : rows)
        EXPECT_EQ(pasted_part(on_clipboard).view(), pasted) << ::testing::PrintToString(on_clipboard);
}

// --- The disk ---

TEST(Disk, MayBeMissing) {
    TestMachine t;
    t.simulator->disk = {};
    EXPECT_FALSE(open_listing(*t.simulator, "a.bas"));
    EXPECT_TRUE(load_skin(*t.simulator, "a.bmp")) << "the default skin";
    EXPECT_EQ(t.messages, (std::vector<std::string>{"SYSTEM 2\x01:[a.bas]", "SYSTEM 2\x01 \"a.bmp\""}));
}

TEST(Disk, MayHaveFilesOfItsOwn) {
    TestMachine t;
    std::string asked;
    t.simulator->disk = {.read_file = [&asked](const std::string& path, std::size_t limit, FileKind) {
        asked += path + " ";
        return FileContents{ReadStatus::READ, limit == LISTING_SIZE_MAX ? "[P0]\n10 A=1\n" : "none"};
    }};
    EXPECT_TRUE(open_listing(*t.simulator, "mine/a.bas"));
    run_host_command(*t.simulator, COMMAND_RELOAD);
    load_skin(*t.simulator, "dots.bmp");
    EXPECT_EQ(asked, "mine/a.bas mine/a.bas mine/dots.bmp ");
    EXPECT_EQ(t.simulator->recent, RecentListings{"mine/a.bas"});
}

// --- The list of recent listings: its order and its limits ---

TEST(RecentListings, LatestFirstNoneTwiceTenAtMost) {
    RecentListings recent;
    for (char c = 'a'; c <= 'l'; ++c)
        add_recent_listing(recent, std::string(1, c));
    EXPECT_EQ(recent_listings_text(recent), "l\nk\nj\ni\nh\ng\nf\ne\nd\nc\n");
    add_recent_listing(recent, recent[4]);
    add_recent_listing(recent, "h");
    for (const std::string& path : {std::string(), std::string("a\nb"), std::string("a\r"), std::string("a\0b", 3)})
        add_recent_listing(recent, path);
    EXPECT_EQ(recent_listings_text(recent), "h\nl\nk\nj\ni\ng\nf\ne\nd\nc\n");
}

TEST(RecentListings, ReadsAnyText) {
    const RecentListings expected = {" /a b.bas ", "\"q\"", "/\xFF.bas", "d"};
    EXPECT_EQ(parse_recent_listings(" /a b.bas \r\n\n\"q\"\n/\xFF.bas\n\"q\"\nx\ry\nd"), expected);
    EXPECT_EQ(parse_recent_listings(recent_listings_text(expected)), expected);
    std::string long_list;
    for (int i = 0; i < 100; ++i)
        long_list += std::to_string(i) + "\n";
    EXPECT_EQ(parse_recent_listings(long_list).size(), RECENT_LISTINGS_MAX);
}

} // namespace
} // namespace quillon::testing
