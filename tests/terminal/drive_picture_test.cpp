// The driving protocol's picture, and every key of the soft keyboard.
#include "tests/terminal/driven.h"

#include <map>
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

TEST(DriveLcd, TellsTheChecksumOfThePixels) {
    ASSERT_EQ(crc32_of("123456789"), 0xCBF43926U);
    const TempFolder folder;
    Driven drive;
    std::string last;
    for (const char* commands : {"new", "tick", "command; tick", "hold shift; tick"}) {
        drive.all(std::string(commands) + "; snapshot " + (folder / "a b.bmp"));
        char hex[9];
        std::snprintf(hex, sizeof hex, "%08x", crc32_of(rows_of_snapshot(get_file(folder / "a b.bmp"))));
        EXPECT_EQ(drive("lcd")["crc32"], hex);
        EXPECT_NE(hex, last) << "another picture each time";
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
bool repeats(const std::string& typed) {
    return typed[0] == '\xC2' || (typed.size() == 1 && typed.find_first_of("\3\5\6\7") != 0);
}

/// What a press does, by the state that follows: what is typed, or the change of a mode.
std::string effect_of(const Json& state, const Json& before) {
    std::string text;
    for (const char* field : {"soft_ctrl_latch", "soft_shift_latch", "soft_alt_latch", "run_page", "run_state"})
        if (state[field] != before[field])
            text += std::string(field) + "=" + state[field].dump() + " ";
    return text + "typed:" + state["key_string"].get<std::string>();
}

std::string expected_effect(const std::string& key, int layer) {
    const bool shift = layer % 3 == 1, function = layer % 3 == 2;
    const std::string no_shift = shift ? "soft_shift_latch=0 " : "";
    const std::string no_function = function ? "soft_alt_latch=0 " : "";
    const std::map<std::string, std::string> acting = {
        {"close", ""},
        {"EXT", (layer < 3 ? "soft_ctrl_latch=1 " : "soft_ctrl_latch=0 ") + no_shift + no_function},
        {"S", (shift ? no_shift : "soft_shift_latch=1 ") + no_function},
        {"F", no_shift + (function ? no_function : "soft_alt_latch=1 ")},
        {"BRK", no_shift + no_function + "run_state=3 "},
        {"EXE", no_shift + no_function},
        {"P9", no_shift + no_function}}; // the area that runs
    if (acting.contains(key))
        return acting.at(key) + "typed:";
    if (key.size() == 2 && key[0] == 'P')
        return no_shift + no_function + "run_page=" + key[1] + " typed:";
    return "typed:" + typed_by(key);
}

TEST(DriveSoft, ReachesEveryKeyOfEveryLayer) {
    const std::string ext = "; soft down 0 1; tick; soft up; tick", s = "; soft down 0 4; tick; soft up; tick",
                      f = "; soft down 0 5; tick; soft up; tick";
    const std::string latches[] = {"", s, f, ext, ext + s, ext + f};
    const TemporaryFile listing("[P0]\n10 GOTO 10\n[P9]\n10 GOTO 10\n");
    Driven drive;
    for (int place = 0; place < 6 * 56; ++place) {
        const int layer = place / 56, row = place % 56 / 14, column = place % 14;
        std::istringstream keys(LAYERS[layer][row]);
        std::string key;
        for (int i = 0; i <= column; ++i)
            keys >> key;
        SCOPED_TRACE("layer " + std::to_string(layer) + ", row " + std::to_string(row) + ": " + key);
        drive.all("new; load " + listing.path + "; page 9; run; soft up; tick 2" + latches[layer]);
        const Json before = drive.state();
        drive.all("soft down " + std::to_string(row) + " " + std::to_string(column) + "; tick");
        const Json pressed = drive.state();
        EXPECT_EQ(effect_of(pressed, before), expected_effect(key, layer));
        const std::string typed = pressed["key_string"];
        EXPECT_EQ(pressed["soft_key_code"] != 0, !typed.empty());
        drive.all("tick 10");
        if (!typed.empty()) {
            EXPECT_EQ(drive.state()["soft_key_code"] == 0, repeats(typed));
        }
        drive.all("soft up; tick 2");
        const Json after = drive.state();
        EXPECT_EQ(after["key_string"], "");
        EXPECT_EQ(after["soft_key_code"], 0);
        const bool latch = key == "S" || key == "F" || key == "close";
        EXPECT_TRUE(latch || (after["soft_shift_latch"] == 0 && after["soft_alt_latch"] == 0)) << "for one key only";
    }
}

} // namespace
} // namespace quillon::testing
