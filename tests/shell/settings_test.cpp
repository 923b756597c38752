// The settings file: every key with its ends, the written form to the byte, what else stands in the file, any bytes.
#include "shell/settings.h"

#include "core/machine.h"
#include "tests/support/temporary_file.h"

#include <gtest/gtest.h>

#include <climits>
#include <memory>
#include <random>

namespace quillon {
namespace {

using testing::get_file;
using testing::put_file;
using testing::TempFolder;
using Numbers = std::vector<int>;

LoadedSettings parse_lines(const std::string& lines) { return parse_settings("[QZS]\n" + lines + "\n"); }

/// The file's text to the byte: as it is with nothing set, or with everything.
std::string written_text(bool all_set) {
    const char* const rows[][3] = {
        // clang-format off
        {"EDITOR = ", R"("notepad.exe")", R"("/opt/my editor")"},
        {"LASTFILE = ", R"("")", R"("/users/me/a.bas")"},
        {"FILETYPE = ", "0", "2"},
        {"MODE = ", "0", "1"},
        {"RUNPAGE= ", "0", "9"},
        {"TIMER= ", "30", "5"},
        {"ZOOM= ", "1", "8"},
        {"INPUTMODE= ", "1", "0"},
        {"WAITPRINTSC_INI= ", "64", "7"},
        {"WAITPRINTSC= ", "24", "3"},
        {"CURSOR_INT= ", "13", "83"},
        {"PCMBEEP= ", "1", "1"},
        {"PALETTE= ", R"("0xRRGGBB")", R"("0xRRGGBB")"},
        {"PAL_ON = ", "0x001900", "0xff8000"},
        {"PAL_OFF = ", "0x90b068", "0x000001"},
        {"PAL_BG = ", "0xb0c86e", "0xffffff"},
        {"DECIMAL = ", "-1", "9"},
        {"INTEGER = ", "-1", "8"},
        {"FIXED= ", "9", "18"},
        {"STARTMODE= ", "0", "1"},
        {"BEEPVOLUME= ", "10", "0"},
        {"SOFTKEY= ", "0", "1"},
        // clang-format on
    };
    std::string text = "[QZS]\n";
    for (const auto& [key, unset, set] : rows)
        text += std::string(key) + (all_set ? set : unset) + "\n";
    return text;
}

const std::string DEFAULT_TEXT = written_text(false);
const std::string OTHER_TEXT = written_text(true);

TEST(Settings, AreWrittenToTheByte) {
    EXPECT_EQ(settings_text(Settings{}), DEFAULT_TEXT);
    const LoadedSettings read = parse_settings(OTHER_TEXT);
    EXPECT_EQ(read.messages, Numbers{});
    EXPECT_EQ(read.settings.editor, "/opt/my editor");
    EXPECT_EQ(read.settings.pal_on, 0xFF8000U);
    EXPECT_EQ(settings_text(read.settings), OTHER_TEXT);
}

TEST(Settings, NumbersHaveTheirRanges) {
    struct RowOfKey {
        const char* key;
        int Settings::*field;
        int otherwise;
        Numbers accepted;
        Numbers refused;
        int message;
    };
    constexpr int none = -1;
    // clang-format off
    const RowOfKey rows[] = {
        {"FILETYPE",        &Settings::file_type,          0, {0, 3},             {-1, 4, INT_MAX},  none},
        {"MODE",            &Settings::angle_unit,         0, {0, 1, 2},          {-1, 3, INT_MIN},  none},
        {"RUNPAGE",         &Settings::run_page,           0, {0, 9},             {-1, 10},          0},
        {"TIMER",           &Settings::timer_interval,    30, {1, 3, 1000},       {0, -5, 1001},     1},
        {"ZOOM",            &Settings::zoom,               1, {1, 8},             {0, 9, 12},        2},
        {"WAITPRINTSC_INI", &Settings::wait_print_sc_ini,  0, {0, 500, INT_MAX},  {-1, INT_MIN},     none},
        {"WAITPRINTSC",     &Settings::wait_print_sc,      0, {0, 500, INT_MAX},  {-1, INT_MIN},     none},
        {"INPUTMODE",       &Settings::ascii_mode,         1, {0, 1},             {2, -1},           none},
        {"INTEGER",         &Settings::set_e_digits,      -1, {-1, 0, 8},         {-2, 9},           3},
        {"DECIMAL",         &Settings::set_f_digits,      -1, {-1, 0, 9},         {-2, 10},          4},
        {"FIXED",           &Settings::set_g_digits,       9, {0, 18},            {-1, 19},          5},
        {"STARTMODE",       &Settings::start_mode,         0, {0, 1},             {2, -1},           none},
        {"BEEPVOLUME",      &Settings::beep_volume,       10, {0, 10},            {-1, 11},          none},
        {"SOFTKEY",         &Settings::soft_keyboard,      0, {0, 1},             {2, -1},           none},
    };
    // clang-format on
    for (const RowOfKey& row : rows) {
        for (const int number : row.accepted) {
            const auto [settings, messages] = parse_lines(row.key + std::string(" = ") + std::to_string(number));
            EXPECT_EQ(settings.*row.field, number) << row.key;
            EXPECT_EQ(messages, Numbers{}) << row.key << number;
        }
        for (const int number : row.refused) {
            const auto [settings, messages] = parse_lines(row.key + std::string("=") + std::to_string(number));
            EXPECT_EQ(settings.*row.field, row.otherwise) << row.key << number;
            EXPECT_EQ(messages, row.message == none ? Numbers{} : Numbers{row.message}) << row.key << number;
        }
    }
}

TEST(Settings, ReadsColours) {
    const std::pair<const char*, Colour> rows[] = {
        {"0xABCDEF", 0xABCDEF}, {"0xff123456", 0x123456}, {"0X00ff", 0xFF}, {"255", 0xFF},
        {"\"0x10\"", 0x10},     {"-1", 0xFFFFFF},         {"red", 0},       {"0xffffffffffffffff", 0xFFFFFF},
    };
    for (const auto& [value, colour] : rows) {
        const Settings settings =
            parse_lines("PAL_ON=" + std::string(value) + "\npal_off=" + value + "\nPal_Bg=" + value).settings;
        for (const Colour read : {settings.pal_on, settings.pal_off, settings.pal_bg})
            EXPECT_EQ(read, colour) << value;
    }
}

TEST(Settings, PathsComeBackByteForByte) {
    const std::string paths[] = {
        "",         "/a b/c.bas",        " /blanks ", "\"/quoted\"",          "/a\"b", "\"", "/a\"",
        "/x;y=[z]", "/\xC3\xA4\xFF\x80", "/tab\t\r",  std::string(5000, 'p'),
    };
    for (const std::string& path : paths) {
        Settings settings;
        settings.editor = path;
        settings.last_file = path;
        const Settings read = parse_settings(settings_text(settings)).settings;
        EXPECT_EQ(read.editor, path);
        EXPECT_EQ(read.last_file, path);
    }
    for (const std::string& path : {std::string("/a\nTIMER= 7"), std::string("/a\0b", 4)}) {
        Settings settings;
        settings.last_file = path;
        EXPECT_EQ(settings_text(settings), DEFAULT_TEXT) << path;
    }
    EXPECT_EQ(parse_lines("LASTFILE = /plain path").settings.last_file, "/plain path");
}

TEST(Settings, KeepWhatElseStandsInTheFile) {
    const std::string text = "\xEF\xBB\xBF; on top\r\nnothing\n[Window]\r\nx=1\r\n\r\n; two\n[qzs]\r\n"
                             "  THEME = dark\r\n\n;TIMER= 5\nTimer=40\ngarbage\nPCMBEEP=0\nLANG=ja\n"
                             "TIMER=50\n[Other]\n[QZS]\nTIMER=60\nlast";
    const LoadedSettings read = parse_settings(text);
    EXPECT_EQ(read.settings.timer_interval, 40);
    EXPECT_EQ(read.settings.pcm_beep, 1);
    std::string expected = DEFAULT_TEXT;
    expected.replace(expected.find("TIMER= 30"), 9, "TIMER= 40");
    expected.replace(expected.find("CURSOR_INT= 13"), 14, "CURSOR_INT= 10");
    expected += "; on top\nTHEME = dark\n;TIMER= 5\nLANG=ja\n"
                "[Window]\r\nx=1\r\n\r\n; two\n[Other]\n[QZS]\nTIMER=60\nlast";
    EXPECT_EQ(settings_text(read.settings), expected);
    EXPECT_EQ(settings_text(parse_settings(expected).settings), expected);
}

TEST(Settings, AnyBytesGiveDefaults) {
    std::mt19937 random(4);
    for (int round = 0; round < 500; ++round) {
        std::string bytes(random() % 3000, '\0');
        for (char& byte : bytes)
            byte = static_cast<char>(random());
        auto [settings, messages] = parse_settings(bytes);
        settings.other_lines.clear();
        settings.other_sections.clear();
        EXPECT_EQ(settings_text(settings), DEFAULT_TEXT);
        EXPECT_EQ(messages, Numbers{});
    }
}

TEST(Settings, DamagedFilesStayInRange) {
    std::mt19937 random(5);
    for (int round = 0; round < 3000; ++round) {
        std::string bytes = OTHER_TEXT + "[More]\nx=1\n";
        for (int i = 0; i < 20; ++i)
            bytes[random() % bytes.size()] = static_cast<char>(random() % 2 != 0 ? random() : '0' + random() % 10);
        const Settings settings = parse_settings(bytes).settings;
        const std::string text = settings_text(settings);
        const LoadedSettings again = parse_settings(text);
        EXPECT_EQ(again.messages, Numbers{}) << text;
        EXPECT_EQ(settings_text(again.settings), text);
        EXPECT_TRUE(settings.timer_interval >= 1 && settings.wait_print_sc >= 0 && settings.pal_on <= 0xFFFFFF);
    }
}

TEST(Settings, OneByOne) {
    Settings settings;
    Numbers messages;
    EXPECT_TRUE(set_setting(settings, "timer", "10", messages));
    EXPECT_EQ(settings.cursor_interval, 41);
    EXPECT_TRUE(set_setting(settings, "ZOOM", "9", messages));
    EXPECT_EQ(messages, Numbers{2});
    for (const char* key : {"", "TIMERS", "PALETTE", "CURSOR_INT", "PCMBEEP"})
        EXPECT_FALSE(set_setting(settings, key, "5", messages)) << key;
}

TEST(Settings, GoIntoTheRecordAndBack) {
    const auto machine = std::make_unique<Machine>();
    Machine& m = *machine;
    m.pcm_beep = 0;
    m.saved_run_state = STATE_INPUT;
    const Settings settings = parse_settings(OTHER_TEXT).settings;
    apply_settings(m, settings);
    const Numbers fields = {m.angle_unit,        m.run_page,      m.timer_interval,  m.zoom,     m.ascii_mode,
                            m.wait_print_sc_ini, m.wait_print_sc, m.cursor_interval, m.pcm_beep, m.set_f_digits,
                            m.set_e_digits,      m.set_g_digits,  m.beep_volume};
    EXPECT_EQ(fields, (Numbers{1, 9, 5, 8, 0, 7, 3, 83, 1, 9, 8, 18, 0}));
    EXPECT_EQ(m.saved_run_state, STATE_INPUT);

    Settings back = settings;
    m.zoom = 12;
    m.overdrive = 1;
    m.saved_timer_interval = 77;
    collect_settings(m, back);
    EXPECT_EQ(back.zoom, 12);
    EXPECT_EQ(back.timer_interval, 77);
    EXPECT_EQ(back.last_file, "/users/me/a.bas");
    apply_settings(m, settings); // Overdrive stays
    EXPECT_EQ(m.timer_interval, 5);
    EXPECT_EQ(m.saved_timer_interval, 5);
}

TEST(Settings, LiveInAFile) {
    const TempFolder folder;
    const std::string path = folder / "QZ740.ini";
    EXPECT_EQ(settings_text(read_settings(path).settings), DEFAULT_TEXT);
    EXPECT_TRUE(write_settings(path, parse_settings(OTHER_TEXT).settings));
    EXPECT_EQ(settings_text(read_settings(path).settings), OTHER_TEXT);
    EXPECT_TRUE(write_settings(path, Settings{}));
    EXPECT_EQ(folder.names().size(), 1U);

    const std::string foreign("[\0Q\0Z\0S\0]\0\n\0", 12);
    put_file(path, foreign);
    EXPECT_TRUE(write_settings(path, Settings{}));
    EXPECT_EQ(get_file(path), DEFAULT_TEXT);
    EXPECT_EQ(get_file(path + ".bad"), foreign);

    put_file(path, DEFAULT_TEXT + std::string(std::size_t{1} << 20, ';'));
    EXPECT_EQ(settings_text(read_settings(path).settings), DEFAULT_TEXT);
    EXPECT_TRUE(write_settings(path, Settings{}));
    EXPECT_EQ(get_file(path), DEFAULT_TEXT);
    EXPECT_EQ(folder.names().size(), 3U);
}

} // namespace
} // namespace quillon
