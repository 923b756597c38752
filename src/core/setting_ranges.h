// SPDX-License-Identifier: MIT
// What numbers the settings of the record may be, by the name of their field: the columns of settings.def that the
// machine needs.
#pragma once

#include "core/listing.h"

#include <limits>

namespace quillon {

struct SettingRange {
    int lowest;
    int highest;
};

constexpr int ANY_NUMBER = std::numeric_limits<int>::max(); ///< no other end than the type's

/// `SettingRanges::zoom` is the range of the record's `settings.zoom`.
struct SettingRanges {
    // NOLINTBEGIN(cppcoreguidelines-macro-usage): the rows are the includer's to take apart
#define SETTING(label, field, lowest, highest, record, ...) static constexpr SettingRange field{lowest, record};
#define WRITTEN_SETTING SETTING
#define PREFERENCE(...)
#define PREFERENCE_COLOUR(...)
#define PREFERENCE_TEXT(...)
#define SETTING_REMARK(...)
#include "core/settings.def"
    // NOLINTEND(cppcoreguidelines-macro-usage)
};

} // namespace quillon
