// The driving protocol presses every key of the soft keyboard (soft_keys.txt).
#include "tests/support/cases_file.h"
#include "tests/terminal/driven.h"

#include <algorithm>

namespace quillon::testing {
namespace {

/// Fields that the mode keys change, by the names of the file of cases.
constexpr const char* FIELDS[] = {"soft_ctrl_latch", "soft_shift_latch", "soft_alt_latch", "run_page", "run_state"};
constexpr const char* NAMES[] = {"EXT", "S", "F", "P", "state "};

/// Codes of one byte as "\\xNN" where they are no ASCII, blanks as "_" or "SP".
std::string legible(std::string typed) {
    if (typed == " ")
        return "SP";
    std::replace(typed.begin(), typed.end(), ' ', '_');
    if (typed.empty() || (typed[0] > ' ' && typed[0] < 127))
        return typed;
    char hex[8];
    std::snprintf(hex, sizeof hex, "\\x%02X", static_cast<unsigned char>(typed.back()));
    return hex;
}

/// Presses a key and releases it; tells what it typed or which fields it changed.
std::string effect_of_key(Driven& drive, const std::string& place) {
    const Json before = drive.state();
    drive.all("soft down " + place + "; tick");
    const Json pressed = drive.state();
    const std::string typed = pressed["key_string"];
    EXPECT_EQ(pressed["soft_key_code"] != 0, !typed.empty());
    std::string changes;
    for (std::size_t i = 0; i < std::size(FIELDS); ++i) {
        if (pressed[FIELDS[i]] != before[FIELDS[i]])
            changes += (changes.empty() ? "" : ",") + std::string(NAMES[i]) + pressed[FIELDS[i]].dump();
    }
    drive.all("tick 10");
    const bool held = drive.state()["soft_key_code"] != 0;
    drive.all("soft up; tick 2");
    const Json after = drive.state();
    EXPECT_EQ(after["key_string"], "");
    EXPECT_EQ(after["soft_key_code"], 0);
    if (typed.empty() || !changes.empty())
        return "[" + changes + "]" + legible(typed);
    EXPECT_TRUE(after["soft_shift_latch"] == 0 && after["soft_alt_latch"] == 0) << "for one key only";
    return legible(typed) + (held ? "!" : "");
}

TEST(DriveSoft, ReachesEveryKeyOfEveryLayer) {
    const TemporaryFile listing("[P0]\n10 GOTO 10\n[P9]\n10 GOTO 10\n");
    Driven drive;
    expect_cases("terminal/soft_keys.txt", [&](const FileCase& row) {
        std::string keys;
        for (int column = 0; column < 14; ++column) {
            drive.all("new; load " + listing.path + "; page 9; run; soft up; tick 2");
            for (const auto& [latch, place] : {std::pair{"EXT", "0 1"}, {"S", "0 4"}, {"F", "0 5"}}) {
                if ((" " + row.heading + " ").find(" " + std::string(latch) + " ") != std::string::npos)
                    drive.all("soft down " + std::string(place) + "; tick; soft up; tick");
            }
            keys += (keys.empty() ? "" : " ") + effect_of_key(drive, row.input + " " + std::to_string(column));
        }
        return keys;
    });
}

} // namespace
} // namespace quillon::testing
