// SPDX-License-Identifier: MIT
// Every transcript of this folder, played from its first row to its last.
#include "tests/transcripts/player.h"

#include <algorithm>
#include <filesystem>

namespace quillon::testing {
namespace {

std::vector<std::string> transcripts() {
    std::vector<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(QUILLON_TRANSCRIPTS)) {
        if (entry.path().extension() == ".drv")
            names.push_back(entry.path().stem());
    }
    std::sort(names.begin(), names.end());
    return names;
}

class Transcripts : public ::testing::TestWithParam<std::string> {};

TEST_P(Transcripts, IsAsWritten) {
    Player player;
    std::string heading;
    expect_cases("transcripts/" + GetParam() + ".drv", [&](const FileCase& row) {
        if (row.heading != heading)
            player.begin(heading = row.heading);
        return player.outcome_of(row);
    });
}

INSTANTIATE_TEST_SUITE_P(Of, Transcripts, ::testing::ValuesIn(transcripts()),
                         [](const auto& name) { return name.param; });

} // namespace
} // namespace quillon::testing
