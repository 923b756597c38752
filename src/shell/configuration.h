// SPDX-License-Identifier: MIT
// What the configuration dialog shows and takes over: the rules of the dialog without the dialog.
#pragma once

#include <string>
#include <vector>

namespace quillon {

struct Simulator;

/// The dialog's fields. Numbers are what was typed, in range or not.
struct Configuration {
    std::string editor;
    int run_page = 0;       ///< 0-9
    int timer_interval = 0; ///< milliseconds, 5-1000
    int start_mode = 0;     ///< 1: command mode
    int ascii_mode = 0;     ///< 0 or 1
    int set_e_digits = 0;   ///< -1-8
    int set_f_digits = 0;   ///< -1-9
    int set_g_digits = 0;   ///< 0-18
    int pcm_beep = 0;       ///< 0 or 1
    int beep_volume = 0;    ///< 0-10
};

/// The values that the dialog opens with. Meanwhile Overdrive runs at the configured speed.
Configuration begin_configuration(Simulator& s);

/// Takes the fields over. In place of one that is out of range stands the default (the nearest value for the program
/// area, and below 5 ms for the interval); returns the numbers of the messages of section DLG_CONFIG about them.
std::vector<int> accept_configuration(Simulator& s, const Configuration& fields);

/// Ends the dialog without taking anything over.
void cancel_configuration(Simulator& s);

} // namespace quillon
