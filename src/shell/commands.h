// SPDX-License-Identifier: MIT
// The host's commands, by number: what the menu, the toolbar, keys and the machine itself ask for. What a window needs
// to know of each stands in its row.
#pragma once

#include "core/controls.h"
#include "core/errors.h"
#include "core/host_commands.h"
#include "shell/window_texts.h"

#include <span>
#include <string>
#include <string_view>

namespace quillon {

struct Simulator;

/// A row of core/host_commands.def, which says what the columns mean.
struct HostCommandRow {
    HostCommand number;
    int button;
    std::string_view script;
    WindowText menu;
    WindowText tooltip;
    std::string_view icon;
    void (*carry_out)(Simulator& s, int number);
    bool (*is_on)(const Machine& m);
};

/// All commands, by number.
std::span<const HostCommandRow> host_commands();

/// The command with the number of a menu entry or of a toolbar button, null when there is none.
const HostCommandRow* find_host_command(int number);

/// Carries out a command by its number (40001-40049); the numbers of toolbar buttons act as the commands they stand
/// for. Any other number does nothing. The machine's own commands take effect at once, also from within a tick.
void run_host_command(Simulator& s, int number);

/// Reads a listing file, and tells a fault in a message box. What can be read is the current listing from then on, with
/// its whole path, a faulty one too, which is to be mended and loaded again. What cannot be read changes nothing.
LoadResult load_listing_file(Simulator& s, const std::string& path);

/// Opens a listing, as the Open command's dialog chose it or as it was dropped on the window: stops the tone, loads it,
/// and puts the default skin in place. True when it was loaded.
bool open_listing(Simulator& s, const std::string& path);

/// Shows a text of the catalogue as a warning.
void show_catalogue_message(Machine& m, MessageId message);

/// The window's title: the program's name, and the current listing's.
std::string window_title(const Simulator& s);

} // namespace quillon
