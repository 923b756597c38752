// SPDX-License-Identifier: MIT
// What the driving protocol shows of a machine, and which of its fields it sets.
#pragma once

#include "shell/simulator.h"

#include <nlohmann/json_fwd.hpp>

#include <string>
#include <string_view>

namespace quillon {

/// Machine text as UTF-8: each byte as the code point of the same number.
std::string machine_text(std::string_view bytes);

/// A text without the blanks at its end.
std::string_view without_trailing_blanks(std::string_view text);

/// Adds the members of a `state` answer, all but the logs.
void answer_state(const Simulator& s, nlohmann::ordered_json& answer);

/// Adds what the LCD shows.
void answer_lcd(const LcdPicture& picture, nlohmann::ordered_json& answer);

/// Adds the assigned variables.
void answer_variables(const Machine& m, nlohmann::ordered_json& answer);

} // namespace quillon
