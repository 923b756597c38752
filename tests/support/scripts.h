// SPDX-License-Identifier: MIT
// Scripts for a machine under test, and what it looks like afterwards, each as one short text for the rows of a table.
#pragma once

#include "tests/support/test_machine.h"

#include <string>
#include <string_view>

namespace quillon::testing {

/// Plays a script, words with a blank between them: a number ticks so often; "exe" is EXE and its tick; "home", "up"
/// and "soft" are a tick with Home, with the Up key or with the soft keyboard's clear key; "run" and "stop" are the
/// host's commands; a single letter is a tick with that key.
void play(TestMachine& t, std::string_view script);

/// The run state by name, the statement context, the write column and the visible columns: "wait 0 3 [ABC]".
std::string moment(const TestMachine& t);

/// How a program has ended: "ok"; "ERR4 P0-10 GOTO 5[99]" with the error text, the catalogue entry and the detail
/// behind it; or "ended GOTO 3[3]" where a detail but no error is left.
std::string failure_of(const TestMachine& t);

/// What `PRINT expression` shows after the lines of `setup`, without the sign blank, or how it fails ("ERR3 SIN 2
/// [1441]"). Unit, formats and variables are those of a new machine.
std::string printed(TestMachine& t, std::string_view setup, std::string_view expression);

} // namespace quillon::testing
