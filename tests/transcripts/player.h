// SPDX-License-Identifier: MIT
// Plays transcripts: commands of the driving protocol, some of which a person at a window gives, and the members of
// their answers. tests/README.md describes the language.
#pragma once

#include "tests/protocols/driven.h"
#include "tests/support/cases_file.h"

#include <string>
#include <string_view>

namespace quillon::testing {

/// A driven machine whose error texts name their section and number in the catalogue.
class Player {
public:
    Player();

    /// Begins again with a new machine, and with the listing that begins at the heading's "[".
    void begin(const std::string& heading);

    /// Carries out a row's commands. Gives the members that the row expects with the values that they have, "refused"
    /// where the last command was, or what that command of the player's own tells.
    std::string outcome_of(const FileCase& row);

private:
    void carry_out(const std::string& line);
    bool carry_out_as_person(const std::string& word, const std::string& argument);
    std::string told_by(const std::string& word, const std::string& argument);
    void push(KeyEvent::Kind kind, const std::string& key, bool auto_repeat = false);
    void push_character(char c);
    void feed();
    void type(std::string_view text, bool at_once);
    void start(const std::string& lines);
    std::string accepted(const std::string& lines);
    Json member(const std::string& name);
    Json member_of_state(const std::string& name);

    std::unique_ptr<Driven> drive_;
    Json answer_; ///< the last command's
    Json state_;  ///< after the row, once it was asked for
};

} // namespace quillon::testing
