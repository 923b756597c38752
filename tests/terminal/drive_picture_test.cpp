// The driving protocol's picture, soft keyboard, mouse, sound and clipboard.
#include "tests/support/temporary_file.h"
#include "tests/terminal/driven.h"

#include <sstream>

namespace quillon::testing {
namespace {

/// CRC-32 bit by bit, as zlib's.
std::uint32_t crc32_of(std::string_view bytes) {
    std::uint32_t crc = 0xFFFFFFFFU;
    for (const char byte : bytes) {
        crc ^= static_cast<unsigned char>(byte);
        for (int bit = 0; bit < 8; ++bit)
            crc = (crc >> 1) ^ ((crc & 1U) != 0 ? 0xEDB88320U : 0U);
    }
    return ~crc;
}

/// The canvas as R, G, B from the top row, out of a snapshot file of 24 bits per pixel.
std::string rows_of_snapshot(const std::string& file) {
    std::string bytes;
    for (std::size_t y = 0; y < 88; ++y) {
        for (std::size_t x = 0; x < 392; ++x) {
            const std::size_t at = 54 + (87 - y) * 1176 + 3 * x;
            bytes += {file.at(at + 2), file.at(at + 1), file.at(at)};
        }
    }
    return bytes;
}

TEST(DriveLcd, TellsTextIndicatorsAndThePixels) {
    ASSERT_EQ(crc32_of("123456789"), 0xCBF43926U);
    struct Row {
        const char* commands;
        const char* text;
        std::vector<std::string> indicators;
    };
    const Row rows[] = {
        {"new", "            ", {"WRT", "DEG"}},
        {"tick", "P  123456789", {"WRT", "DEG"}},
        {"tick 15", "P 0123456789", {"WRT", "DEG"}},
        {"command; tick", "READY P0    ", {"RUN", "DEG"}},
        {"exe; type PRINT \"A\xB1\"; exe", "A\u0094          ", {"RUN", "DEG", "STOP"}},
        {"host 40046; host 40037; hold shift; hold ctrl; tick",
         "A\u0094          ",
         {"EXT", "S", "RUN", "RAD", "TR", "STOP"}},
        {"unhold shift; hold alt; host 40047; tick", "A\u0094          ", {"EXT", "F", "RUN", "GRA", "TR", "STOP"}},
    };
    const TempFolder folder;
    Driven drive;
    std::string last;
    for (const Row& row : rows) {
        SCOPED_TRACE(row.commands);
        drive.all(row.commands);
        const Json lcd = drive("lcd");
        EXPECT_EQ(lcd.size(), 4U);
        EXPECT_EQ(lcd["text"], row.text);
        EXPECT_EQ(lcd["indicators"], row.indicators);
        drive.all("snapshot " + (folder / "a b.bmp"));
        char hex[9];
        std::snprintf(hex, sizeof hex, "%08x", crc32_of(rows_of_snapshot(get_file(folder / "a b.bmp"))));
        EXPECT_EQ(lcd["crc32"], hex);
        EXPECT_NE(lcd["crc32"], last) << "another picture each time";
        last = hex;
    }
    EXPECT_EQ(folder.names(), std::set<std::string>{"a b.bmp"});
}

/// What stands on the keys, row by row: characters as they are, codes as \xNN, "_" behind a word for its blank, "SP"
/// for the blank itself; P0-P9 select an area; "close", "EXT", "S", "F", "BRK" and "EXE" act, "S." and "F." are
/// letters.
constexpr const char* ROW_0 = R"(close EXT \x01 \x02 S F \x06 \x03 BRK / 7 8 9 *)";
constexpr const char* SHIFTED_ROW_0 = R"(close EXT \x01 \x02 S F \x06 \x05 BRK < P7 P8 P9 >)";
constexpr const char* ROW_1 = "Q W E R T Y U I O P 4 5 6 -";
constexpr const char* ROW_2 = R"(A S. D F. G H J K L \x07 1 2 3 +)";
constexpr const char* ROW_3 = R"(Z X C V B N M SP = \x8D 0 . EXE EXE)";
constexpr const char* LAYERS[][4] = {
    {ROW_0, ROW_1, ROW_2, ROW_3},
    {SHIFTED_ROW_0, R"(! " # $ ( ) ? : ; , P4 P5 P6 \x81)",
     R"(GOSUB_ FOR_ TO_ STEP_ NEXT_ GOTO_ IF_ THEN_ PRINT_ \x07 P1 P2 P3 \x83)",
     R"(RETURN_ STOP_ END_ DEFM_ RUN_ LIST_ INPUT_ SP \x82 \x87 P0 ^ EXE EXE)"},
    {ROW_0, ROW_1, R"(SIN_ COS_ TAN_ ASN_ ACS_ ATN_ LOG_ LN_ EXP_ \x07 1 2 3 +)",
     R"(SQR_ ABS_ SGN_ INT_ FRAC_ RAN#_ CSR_ SP = \x8D 0 . EXE EXE)"},
    {ROW_0, "q w e r t y u i o p 4 5 6 -", R"(a s d f g h j k l \x07 1 2 3 +)",
     R"(z x c v b n m SP = \x8D 0 . EXE EXE)"},
    {SHIFTED_ROW_0, R"(% ' @ \ [ ] & \x84 \x85 \x86 P4 P5 P6 \x81)",
     R"(\x88 \x89 \x8A \x8B \x8C \x90 \x91 \x92 \x93 \x07 P1 P2 P3 \x83)",
     R"(\x94 \x8E \x8F _ \x95 \x96 \x97 SP \x82 \x87 P0 . EXE EXE)"},
    {ROW_0, ROW_1, ROW_2, ROW_3},
};

/// The text that a key types, as answers write it.
std::string typed_by(std::string key) {
    if (key == "SP")
        return " ";
    if (key.size() == 2 && key[1] == '.')
        return key.substr(0, 1);
    if (key.starts_with("\\x")) {
        const int code = std::stoi(key.substr(2), nullptr, 16);
        return (code >= 0x80 ? "\xC2" : "") + std::string(1, static_cast<char>(code));
    }
    if (key.size() > 1 && key.back() == '_')
        key.back() = ' ';
    return key;
}

/// Words, and the keys with the codes 3, 5, 6 and 7, do not repeat.
bool repeats(const std::string& typed) { return typed.size() == 1 && typed.find_first_of("\3\5\6\7") != 0; }

/// What a press does, by the state that follows: what is typed, or the change of a mode.
std::string effect_of(const Json& state, const Json& before) {
    std::string text;
    for (const char* field : {"soft_ctrl_latch", "soft_shift_latch", "soft_alt_latch", "run_page", "run_state"})
        if (state[field] != before[field])
            text += std::string(field) + "=" + state[field].dump() + " ";
    return text + "typed:" + state["key_string"].get<std::string>();
}

std::string expected_effect(const std::string& key, int layer) {
    const bool shift = layer % 3 == 1, function = layer % 3 == 2, extension = layer >= 3;
    const std::string no_shift = shift ? "soft_shift_latch=0 " : "";
    const std::string no_function = function ? "soft_alt_latch=0 " : "";
    if (key == "close")
        return "typed:";
    if (key == "EXT")
        return std::string("soft_ctrl_latch=") + (extension ? "0 " : "1 ") + no_shift + no_function + "typed:";
    if (key == "S")
        return (shift ? no_shift : "soft_shift_latch=1 ") + no_function + "typed:";
    if (key == "F")
        return no_shift + (function ? no_function : "soft_alt_latch=1 ") + "typed:";
    if (key == "BRK")
        return no_shift + no_function + "run_state=3 typed:";
    if (key == "EXE")
        return no_shift + no_function + "typed:";
    if (key.size() == 2 && key[0] == 'P')
        return no_shift + no_function + (key == "P9" ? "" : std::string("run_page=") + key[1] + " ") + "typed:";
    return "typed:" + typed_by(key);
}

TEST(DriveSoft, ReachesEveryKeyOfEveryLayer) {
    const char* const latches[] = {"", "0 4", "0 5", "0 1", "0 1|0 4", "0 1|0 5"};
    const TemporaryFile listing("[P0]\n10 GOTO 10\n[P9]\n10 GOTO 10\n");
    Driven drive;
    for (int place = 0; place < 6 * 56; ++place) {
        const int layer = place / 56, row = place % 56 / 14, column = place % 14;
        std::istringstream keys(LAYERS[layer][row]);
        std::string key;
        for (int i = 0; i <= column; ++i)
            keys >> key;
        SCOPED_TRACE("layer " + std::to_string(layer) + ", row " + std::to_string(row) + ": " + key);
        drive.all("new; load " + listing.path + "; page 9; run; soft up; tick 2");
        std::istringstream presses(latches[layer]);
        for (std::string press; std::getline(presses, press, '|');)
            drive.all("soft down " + press + "; tick; soft up; tick");
        const Json before = drive.state();
        drive.all("soft down " + std::to_string(row) + " " + std::to_string(column) + "; tick");
        const Json pressed = drive.state();
        EXPECT_EQ(effect_of(pressed, before), expected_effect(key, layer));
        const std::string typed = pressed["key_string"];
        EXPECT_EQ(pressed["soft_key_code"] != 0, !typed.empty());
        drive.all("tick 10");
        const bool types = !typed.empty() && expected_effect(key, layer) == "typed:" + typed;
        if (types) {
            const bool one_byte = typed.size() == 1 || typed[0] == '\xC2';
            EXPECT_EQ(drive.state()["soft_key_code"] == 0, one_byte && (typed.size() == 2 || repeats(typed)));
        }
        drive.all("soft up; tick 2");
        const Json after = drive.state();
        EXPECT_EQ(after["key_string"], "");
        EXPECT_EQ(after["soft_key_code"], 0);
        const bool latch = key == "S" || key == "F" || key == "close";
        EXPECT_TRUE(latch || (after["soft_shift_latch"] == 0 && after["soft_alt_latch"] == 0)) << "for one key only";
    }
}

TEST(DriveClick, IsTheMouseAtZoomOne) {
    struct Row {
        const char* commands;
        const char* field;
        int number;
    };
    const Row rows[] = {
        {"click right 179 20", "angle_unit", 2},
        {"host 40019; click left 116 20", "angle_unit", 1}, // the coordinates stay those of zoom 1
        {"host 40019; click left 116 20", "zoom", 4},
        {"click left 360 40", "run_page", 9},
        {"click left 67 62", "run_page", 0},
        {"click double 100 62", "run_state", 0},
        {"click double 100 62", "cur_area", 1},
        {"run; tick; click left 300 70", "enter_request", 1},
    };
    for (const Row& row : rows) {
        Driven drive;
        drive.load("[P0]\n10 PRINT 1\n[P1]\n10 GOTO 10\n");
        drive.all(row.commands);
        EXPECT_EQ(drive.state()[row.field], row.number) << row.commands << ": " << row.field;
    }
}

TEST(DriveSound, TellsTheTone) {
    Driven drive;
    const Json silent = {{"ok", true}, {"playing", false}, {"samples", 0}, {"half_period", 0}};
    EXPECT_EQ(drive("sound"), silent);
    drive.start("[P0]\n10 BEEP\n20 BEEPS 4,9,60\n30 GOTO 30\n");
    // 958.7 Hz: half a period of 23 samples, 48 periods in about 50 ms
    EXPECT_EQ(drive.all("tick; sound"),
              Json({{"ok", true}, {"playing", true}, {"samples", 2208}, {"half_period", 23}}));
    EXPECT_EQ(drive.state()["sound_ticks_left"], 3);
    const Json second = drive.all("tick 3; sound");
    EXPECT_EQ(second["half_period"], 49) << "450 Hz";
    EXPECT_EQ(second["samples"], 23 * 98);
    EXPECT_EQ(drive.all("tick 2; sound")["playing"], false);
    EXPECT_EQ(drive.state()["host"].back(), "stop-sound");
    EXPECT_EQ(drive.all("run; tick; run; sound")["playing"], false) << "a new start ends the tone";
    EXPECT_EQ(drive.all("set pcm_beep 0; run; tick 2; sound")["playing"], false);
}

TEST(DriveClipboard, IsItsOwn) {
    Driven drive;
    EXPECT_EQ(drive("clipboard"), Json({{"ok", true}, {"text", ""}}));
    EXPECT_EQ(drive("clipboard  A B\x87 "), Json({{"ok", true}, {"text", " A B\u0087 "}}));
    drive.all("clipboard 12*3; command; exe; key 0A; tick; key 41; tick");
    EXPECT_EQ(drive.state()["entry"], "12*3A");
    EXPECT_EQ(drive.all("key 06; tick; type 6*7; key 0B; tick; clipboard")["text"], "6*7");
    EXPECT_EQ(drive.state()["host"], Json({"copy 6*7"}));
    drive.all("press 36; tick; release 36; tick; type \"R\"; exe; hold ctrl; tick; press 67; tick; release 67; tick");
    EXPECT_EQ(drive("clipboard")["text"], "R") << "a result, by Ctrl and C";
    EXPECT_EQ(drive.state()["run_state"], 6);
    EXPECT_EQ(drive.all("new; clipboard")["text"], "");
}

} // namespace
} // namespace quillon::testing
