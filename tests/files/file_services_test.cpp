// SPDX-License-Identifier: MIT
// The keys for snapshot and dump: where their files go, under which names, and what is said of them.
#include "core/controls.h"
#include "files/file_services.h"

#include "keys/key_map.h"
#include "shell/skins.h"
#include "shell/snapshot.h"
#include "tests/support/temporary_file.h"
#include "tests/support/test_machine.h"

#include <gtest/gtest.h>

#include <cstdlib>

namespace quillon::testing {
namespace {

TEST(Snapshot, TakesTheFirstFreeNumber) {
    const TempFolder desktop;
    const Canvas canvas = make_canvas(4, 4, 0x123456);
    const std::string bytes = snapshot_bitmap(canvas);
    put_file(desktop / "qzsnap_000.bmp", "old");
    std::filesystem::create_directory(desktop / "qzsnap_001.bmp");
    std::filesystem::create_symlink(desktop / "elsewhere", desktop / "qzsnap_002.bmp"); // leads nowhere
    std::string path;
    EXPECT_EQ(take_snapshot(canvas, desktop.path, path), NewFile::WRITTEN);
    EXPECT_EQ(path, desktop / "qzsnap_003.bmp");
    EXPECT_EQ(get_file(path), bytes);
    EXPECT_EQ(get_file(desktop / "qzsnap_000.bmp"), "old") << "never over an old one";
    EXPECT_EQ(get_file(desktop / "elsewhere"), "(none)");
    std::filesystem::remove(desktop / "qzsnap_000.bmp");
    EXPECT_EQ(take_snapshot(canvas, desktop.path, path), NewFile::WRITTEN);
    EXPECT_EQ(get_file(desktop / "qzsnap_000.bmp"), bytes);
    EXPECT_EQ(take_snapshot(canvas, desktop / "not there", path), NewFile::FAILED);
}

TEST(FileServices, PutSnapshotsOnTheDesktopAndTheDumpWhereOneWorks) {
    constexpr int F9 = 120, F12 = 123;
    const std::filesystem::path was = std::filesystem::current_path();
    const TempFolder home;
    const std::string dump_path = home / "debug.bin";
    ::setenv("HOME", home.path.c_str(), 1);
    ::setenv("XDG_CONFIG_HOME", (home / "config").c_str(), 1);
    std::filesystem::create_directory(home / "Desktop");
    std::filesystem::current_path(home.path);
    TestMachine t;
    load_skin(*t.simulator, "");
    use_file_services(*t.simulator);
    std::vector<std::string> notes;
    t.simulator->window.note = [&notes](const std::string& text) { notes.push_back(text); };
    t.simulator->around.catalogue.sections["SNAPSHOT"] = {{0, "no free name"}, {1, "picture lost:"}, {2, "picture:"}};
    t.simulator->around.catalogue.sections["DUMP"] = {{0, "dump lost:"}, {1, "dump:"}};
    t.m.variables[0].kind = CELL_NUMBER;
    t.m.variables[0].number = 2;
    t.m.settings.zoom = 7; // the picture is that of the canvas all the same
    t.tick();
    on_key_down(t.m, F12, false);
    EXPECT_EQ(get_file(home / "Desktop/qzsnap_000.bmp"), snapshot_bitmap(t.simulator->lcd.canvas));
    put_file(home / "precious", "old");
    std::filesystem::create_symlink("precious", dump_path);
    put_file(home / "debug_001.bin", "old");
    on_key_down(t.m, F9, false);
    const std::string dump = get_file(home / "debug_002.bin");
    EXPECT_EQ(dump.size(), 11700U);
    EXPECT_EQ(dump.substr(0, 20), std::string("A\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0\x40", 20));
    EXPECT_EQ(get_file(home / "precious") + get_file(home / "debug_001.bin"), "oldold") << "never over an old one";
    std::filesystem::create_directory(home / "gone");
    std::filesystem::current_path(home / "gone");
    std::filesystem::remove(home / "gone");
    on_key_down(t.m, F9, false);
    for (int i = 1; i < 255; ++i)
        put_file(home / ("Desktop/qzsnap_" + std::to_string(1000 + i).substr(1) + ".bmp"), "");
    on_key_down(t.m, F12, false);
    EXPECT_EQ(get_file(home / "Desktop/qzsnap_255.bmp"), snapshot_bitmap(t.simulator->lcd.canvas));
    on_key_down(t.m, F12, false);
    ::setenv("HOME", (home / "gone").c_str(), 1);
    on_key_down(t.m, F12, false);
    EXPECT_EQ(t.messages, (std::vector<std::string>{"dump lost:\r\ndebug.bin", "no free name",
                                                    "picture lost:\r\n" + home / "gone"}));
    EXPECT_EQ(notes, (std::vector<std::string>{"picture: " + home / "Desktop/qzsnap_000.bmp",
                                               "dump: " + home / "debug_002.bin",
                                               "picture: " + home / "Desktop/qzsnap_255.bmp"}));
    EXPECT_TRUE(t.m.keys.key_string.empty());
    std::filesystem::current_path(was);
}

} // namespace
} // namespace quillon::testing
