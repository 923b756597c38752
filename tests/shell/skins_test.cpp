// Skins from files: what is taken, every refusal with its text, names that lead out of the folder, and what brings the
// default skin back.
#include "shell/skins.h"

#include "shell/commands.h"
#include "tests/support/scripts.h"
#include "tests/support/temporary_file.h"

#include <gtest/gtest.h>

#include <functional>
#include <utility>

#include <sys/stat.h>

namespace quillon::testing {
namespace {

/// A number to be put into the bytes of a file, little end first.
struct Patch {
    std::size_t offset;
    int size;
    long long number;
};

void put_number(std::string& bytes, const Patch& patch) {
    for (int i = 0; i < patch.size; ++i)
        bytes.at(patch.offset + static_cast<std::size_t>(i)) = static_cast<char>(patch.number >> (8 * i));
}

constexpr std::size_t SKIN_FILE_SIZE = 1078 + std::size_t{512} * 480;

int index_at(int x, int y) { return (x * 3 + y * 5 + x * y / 7) & 255; }

/// A bitmap file laid out by hand: 8 bits per pixel, entry n of the colours is red n, green 255-n, blue 3.
std::string skin_file() {
    std::string file(SKIN_FILE_SIZE, '\0');
    for (const Patch& patch : {Patch{0, 2, 0x4D42},
                               {2, 4, SKIN_FILE_SIZE},
                               {10, 4, 1078},
                               {14, 4, 40},
                               {18, 4, 512},
                               {22, 4, 480},
                               {26, 2, 1},
                               {28, 2, 8}})
        put_number(file, patch);
    for (int i = 0; i < 256; ++i)
        put_number(file, {54 + 4 * static_cast<std::size_t>(i), 4, (i << 16) | ((255 - i) << 8) | 3});
    for (int y = 0; y < 480; ++y) // rows from the bottom up
        for (int x = 0; x < 512; ++x)
            file[1078 + static_cast<std::size_t>((479 - y) * 512 + x)] = static_cast<char>(index_at(x, y));
    return file;
}

Colour expected_pixel(int x, int y) {
    const int index = index_at(x, y);
    return static_cast<Colour>((index << 16) | ((255 - index) << 8) | 3);
}

struct Skins : ::testing::Test {
    Skins() {
        put_file(folder / "dots.bmp", skin_file());
        t.simulator->settings.last_file = folder / "program.bas";
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
    t.simulator->settings.pal_on = 0xFF0000; // colours that the file does not take
    EXPECT_EQ(load("dots.bmp"), "");
    for (int y = 0; y < 480; ++y)
        for (int x = 0; x < 512; ++x)
            ASSERT_EQ(pixel(t.simulator->lcd.skin, x, y), expected_pixel(x, y)) << x << ',' << y;
    EXPECT_TRUE(simulator_tick(*t.simulator)) << "drawn at the next rendering";
    const Canvas& canvas = t.simulator->lcd.canvas;
    EXPECT_EQ(pixel(canvas, 391, 87), expected_pixel(511, 95)) << "the panel";
    EXPECT_EQ(pixel(canvas, 8, 40), expected_pixel(0, 288)) << "the P of the selection";
    EXPECT_EQ(pixel(canvas, 84, 16), expected_pixel(0, 28)) << "DEG";
    put_file(folder / "dots.bmp", "");
    EXPECT_EQ(load("dots.bmp"), "") << "in place already";
    put_file(folder / "more.bmp", skin_file());
    EXPECT_EQ(load("more.bmp"), "");
    EXPECT_NE(load("dots.bmp"), "") << "asked for again, it is read again";
    EXPECT_TRUE(is_default());
}

TEST_F(Skins, RefuseWithTheirText) {
    const std::string not_bitmap = "(not BMP) ", not_256 = "(not 256color) ", wrong_size = "(not not 512x480) ";
    struct Row {
        const char* what;
        std::vector<Patch> patches;
        std::string remark;
        std::size_t size = SKIN_FILE_SIZE;
    };
    const Row rows[] = {
        {"empty", {}, not_bitmap, 0},
        {"one byte", {}, not_bitmap, 1},
        {"no BM", {{0, 2, 0x4D43}}, not_bitmap},
        {"24 bits", {{28, 2, 24}}, not_256},
        {"no bits", {{28, 2, 0}}, not_256},
        {"24 bits and a wrong size", {{28, 2, 24}, {18, 4, 1}}, not_256},
        {"narrow", {{18, 4, 511}}, wrong_size},
        {"low", {{22, 4, 479}}, wrong_size},
        {"top-down", {{22, 4, -480}}, wrong_size},
        {"huge", {{18, 4, 0x7FFFFFFF}}, wrong_size},
        {"turned", {{18, 4, 480}, {22, 4, 512}}, wrong_size},
        // refused without a remark; nothing may be read beyond the end
        {"run-length compressed", {{30, 4, 1}}, ""},
        {"cut in its pixels", {}, "", SKIN_FILE_SIZE - 1},
        {"pixels outside", {{10, 4, 0x7FFFFFFF}}, ""},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.what);
        std::string file = skin_file();
        for (const Patch& patch : row.patches)
            put_number(file, patch);
        file.resize(row.size);
        put_file(folder / "bad.bmp", file);
        load("dots.bmp");
        const std::string text = load("bad.bmp");
        EXPECT_TRUE(text.starts_with("SYSTEM 8\x01 " + row.remark) && text.ends_with("\"bad.bmp\"|")) << text;
        EXPECT_EQ(std::string(t.m.error_detail) + "|", text);
        EXPECT_EQ(t.m.error_code, 0);
        EXPECT_TRUE(is_default());
    }
}

TEST_F(Skins, AreNotLookedForOutsideTheirFolder) {
    std::filesystem::create_directory(folder / "sub");
    put_file(folder / "sub/dots.bmp", skin_file());
    std::filesystem::create_directory(folder / "sub/folder.bmp");
    ASSERT_EQ(::mkfifo((folder / "sub/pipe.bmp").c_str(), 0600), 0); // none of these may hang
    std::filesystem::create_symlink("/dev/zero", folder / "sub/endless.bmp");
    std::filesystem::create_symlink("ring.bmp", folder / "sub/ring.bmp");
    t.simulator->settings.last_file = folder / "sub/program.bas";
    const std::string names[] = {
        "../dots.bmp", "..\\dots.bmp", folder / "dots.bmp", "./dots.bmp", "..",
        ".",           "C:dots.bmp",   "sub/dots.bmp",      "\\dots.bmp", "dots.bmp/",
        "missing.bmp", "pipe.bmp",     "endless.bmp",       "ring.bmp",   "folder.bmp",
    };
    for (const std::string& name : names) {
        SCOPED_TRACE(name);
        ASSERT_EQ(load("dots.bmp"), "");
        EXPECT_EQ(load(name), "SYSTEM 2\x01 \"" + name + "\"|");
        EXPECT_TRUE(is_default());
    }
}

TEST_F(Skins, LieInTheWorkingFolderWithoutAListing) {
    const std::filesystem::path was = std::filesystem::current_path();
    std::filesystem::current_path(folder.path);
    for (const char* listing : {"", "program.bas"}) {
        t.simulator->settings.last_file = listing;
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
    EXPECT_EQ(t.m.error_code, 0) << "no error of the program";
    t.tick();
    EXPECT_EQ(t.m.variables[0].number, 2);
    t.start("GLOAD \"dots.bmp\"\nGLOAD \"\"\nA=3");
    t.tick(3);
    EXPECT_TRUE(is_default());
    EXPECT_EQ(t.m.variables[0].number, 3);

    put_file(folder / "program.bas", "[P0]\n10 A=1\n");
    const std::pair<const char*, std::function<void()>> rows[] = {
        {"open", [this] { open_listing(*t.simulator, folder / "program.bas"); }},
        {"reload", [this] { run_host_command(*t.simulator, COMMAND_RELOAD); }},
        {"command line", [this] { run_host_command(*t.simulator, COMMAND_LINE); }},
    };
    for (const auto& [what, action] : rows) {
        SCOPED_TRACE(what);
        ASSERT_EQ(load("dots.bmp"), "");
        t.tick();
        action();
        EXPECT_TRUE(is_default());
        EXPECT_TRUE(simulator_tick(*t.simulator));
    }
}

TEST(GloadStatement, RefusesWhatIsNoName) {
    const std::pair<const char*, const char*> rows[] = {
        {"GLOAD A", "ERR2 GLOAD 0"}, {"GLOAD A+1", "ERR2 GLOAD 0"},  {"GLOAD 5", "ERR2 GLOAD 1"},
        {"GLOAD", "ERR2 GLOAD 1"},   {"GLOAD 1/0", "ERR3 SYSTEM 5"},
    };
    for (const auto& [line, error] : rows)
        EXPECT_EQ(error_of(line), error) << line;
}

} // namespace
} // namespace quillon::testing
