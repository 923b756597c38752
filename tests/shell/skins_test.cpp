// SPDX-License-Identifier: MIT
// Skins from files: what is taken, every refusal with its text and names that lead out of the folder (skins.txt), and
// what brings the default skin back.
#include "shell/skins.h"

#include "shell/commands.h"
#include "tests/support/cases_file.h"
#include "tests/support/outcomes.h"
#include "tests/support/temporary_file.h"

#include <gtest/gtest.h>

#include <regex>
#include <sstream>
#include <utility>

#include <sys/stat.h>

namespace quillon::testing {
namespace {

int index_at(int x, int y) { return (x * 3 + y * 5 + x * y / 7) & 255; }

Colour colour_at(int index) { return static_cast<Colour>((index << 16) | ((255 - index) << 8) | 3); }

/// A skin's bitmap file: 8 bits per pixel, behind a file header and another of 40 bytes.
std::string skin_file() {
    IndexedImage image = make_indexed_image(512, 480, 0);
    for (int i = 0; i < 256; ++i)
        image.palette[static_cast<std::size_t>(i)] = colour_at(i);
    for (int i = 0; i < 512 * 480; ++i)
        image.pixels[static_cast<std::size_t>(i)] = static_cast<std::uint8_t>(index_at(i % 512, i / 512));
    const auto bitmap = write_bitmap(image);
    return std::string("BM\0\0\0\0\0\0\0\0\x36\4\0\0", 14) + std::string(bitmap.begin(), bitmap.end());
}

/// A file with some bytes of it changed, or its size.
std::string changed(std::string file, const std::string& change) {
    std::istringstream words(change);
    std::size_t number = 0;
    if (change.starts_with("size "))
        file.resize(std::stoul(change.substr(5)));
    else if (words >> number && words.ignore(1))
        for (unsigned byte = 0; words >> std::hex >> byte; ++number)
            file.at(number) = static_cast<char>(byte);
    return file;
}

struct Skins : ::testing::Test {
    Skins() {
        put_file(folder / "dots.bmp", skin_file());
        t.simulator->preferences.last_file = folder / "program.bas";
        load_skin(*t.simulator, "");
        t.tick();
    }
    static Colour pixel(const Canvas& canvas, int x, int y) {
        return canvas.pixels.at(pixel_index(canvas, x, y)) & 0xFFFFFFU;
    }
    [[nodiscard]] bool is_default() const {
        const Canvas& skin = t.simulator->lcd.skin;
        return t.simulator->skin_name.empty() && pixel(skin, 33, 336) == 0x90B068 && pixel(skin, 32, 336) == 0xB0C86E;
    }
    static Colour pixel_of_file(int x, int y) { return colour_at(index_at(x, y)); }
    /// Asks for a skin; returns the message boxes that came.
    std::string load(const std::string& name) {
        EXPECT_TRUE(load_skin(*t.simulator, name));
        return told();
    }
    std::string told() {
        std::string all;
        for (const std::string& text : std::exchange(t.messages, {}))
            all += text + "|";
        return all;
    }
    TempFolder folder;
    TestMachine t;
};

TEST_F(Skins, TakeEveryPixelAndColourFromTheFile) {
    t.simulator->preferences.pal_on = 0xFF0000; // colours that the file does not take
    EXPECT_EQ(load("dots.bmp"), "");
    for (int y = 0; y < 480; ++y)
        for (int x = 0; x < 512; ++x)
            ASSERT_EQ(pixel(t.simulator->lcd.skin, x, y), pixel_of_file(x, y)) << x << ',' << y;
    EXPECT_TRUE(simulator_tick(*t.simulator)) << "drawn at the next rendering";
    const Canvas& canvas = t.simulator->lcd.canvas;
    EXPECT_EQ(pixel(canvas, 391, 87), pixel_of_file(511, 95)) << "the panel";
    EXPECT_EQ(pixel(canvas, 8, 40), pixel_of_file(0, 288)) << "the P of the selection";
    EXPECT_EQ(pixel(canvas, 84, 16), pixel_of_file(0, 28)) << "DEG";
    put_file(folder / "dots.bmp", "");
    EXPECT_EQ(load("dots.bmp"), "") << "in place already";
    put_file(folder / "more.bmp", skin_file());
    EXPECT_EQ(load("more.bmp"), "");
    EXPECT_NE(load("dots.bmp"), "") << "asked for again, it is read again";
    EXPECT_TRUE(is_default());
}

TEST_F(Skins, AreRefusedWithTheirTextAndNotLookedForOutsideTheirFolder) {
    std::filesystem::create_directory(folder / "sub");
    put_file(folder / "sub/dots.bmp", skin_file());
    put_file(folder / "sub/\\dots.bmp", skin_file());
    std::filesystem::create_directory(folder / "sub/folder.bmp");
    ASSERT_EQ(::mkfifo((folder / "sub/pipe.bmp").c_str(), 0600), 0);
    std::filesystem::create_symlink("/dev/zero", folder / "sub/endless.bmp");
    std::filesystem::create_symlink("ring.bmp", folder / "sub/ring.bmp");
    t.simulator->preferences.last_file = folder / "sub/program.bas";
    const auto told_of = [this](const std::string& name) {
        EXPECT_EQ(load("dots.bmp"), "");
        std::string text = load(name);
        EXPECT_FALSE(failed(t.m));
        EXPECT_EQ(is_default(), name != "dots.bmp");
        std::erase_if(text, [](char c) { return c == '\x01' || c == '|'; });
        return std::regex_replace(text, std::regex(folder.path), "FOLDER");
    };
    const auto told_of_file = [&](const FileCase& row) {
        put_file(folder / "sub/bad.bmp", changed(skin_file(), row.input));
        const std::string text = told_of("bad.bmp");
        EXPECT_EQ(t.m.error.error_detail.view(), "SYSTEM 8\x01" + text.substr(8));
        return text;
    };
    const auto told_of_name = [&](const FileCase& row) {
        return told_of(std::regex_replace(row.input, std::regex("FOLDER"), folder.path));
    };
    expect_cases("shell/skins.txt", {{"files", told_of_file}, {"names", told_of_name}});
}

TEST_F(Skins, LieInTheWorkingFolderWithoutAListing) {
    const std::filesystem::path was = std::filesystem::current_path();
    std::filesystem::current_path(folder.path);
    for (const char* listing : {"", "program.bas"}) {
        t.simulator->preferences.last_file = listing;
        EXPECT_EQ(load("dots.bmp"), "");
        EXPECT_EQ(t.simulator->skin_name, "dots.bmp");
        EXPECT_EQ(load(""), "");
        EXPECT_TRUE(is_default());
    }
    std::filesystem::current_path(was);
}

TEST_F(Skins, ComeFromAProgramAndGoWithIt) {
    t.start("GLOAD \"dots.bmp\"\nA=1:B$=\"none\"\nGLOAD B$+\".bmp\"\nA=2");
    t.tick();
    EXPECT_EQ(t.simulator->skin_name, "dots.bmp");
    t.tick(3);
    EXPECT_EQ(told(), "SYSTEM 2\x01 \"none.bmp\"|");
    EXPECT_TRUE(is_default());
    EXPECT_FALSE(failed(t.m)) << "no error of the program";
    t.tick();
    EXPECT_EQ(t.m.variables[0].number, 2);
    t.start("GLOAD \"dots.bmp\"\nGLOAD \"\"");
    t.tick(2);
    EXPECT_TRUE(is_default());

    put_file(folder / "program.bas", "[P0]\n10 A=1\n");
    for (const int command : {0, +COMMAND_RELOAD, +COMMAND_LINE}) {
        SCOPED_TRACE(command);
        ASSERT_EQ(load("dots.bmp"), "");
        t.tick();
        if (command == 0)
            open_listing(*t.simulator, folder / "program.bas");
        run_host_command(*t.simulator, command);
        EXPECT_TRUE(is_default());
        EXPECT_TRUE(simulator_tick(*t.simulator));
    }
}

} // namespace
} // namespace quillon::testing
