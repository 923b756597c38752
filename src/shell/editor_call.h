// SPDX-License-Identifier: MIT
// How the user's text editor is started: the command of the settings, with the listing and a line in their places.
#pragma once

#include <optional>
#include <string>
#include <vector>

namespace quillon {

struct Machine;
struct Simulator;

/// A program and its arguments, which no shell ever sees.
struct EditorCall {
    std::string program;
    std::vector<std::string> arguments;
};

/// How to start the editor with the current listing; nothing, after a message box, when there is no editor or no
/// listing. In the setting, quotes keep blanks together, `~/` is the home folder, `%f` stands for the listing, `%l` for
/// the line and `%%` for a percent sign; without `%f` the listing is the last argument. A setting that is an ordinary
/// file as it stands is a program without arguments, whatever is in its name.
/// `line` is one of the file, from 1.
std::optional<EditorCall> editor_call(Simulator& s, int line = 1);

/// The line of the listing file, from 1, that the program is at; nothing when it is at none.
std::optional<int> current_file_line(const Machine& m);

} // namespace quillon
