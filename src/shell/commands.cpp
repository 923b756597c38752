// SPDX-License-Identifier: MIT
// Host commands: one table of what each does to the machine.
#include "shell/commands.h"

#include "core/controls.h"
#include "shell/listing_file.h"
#include "shell/paths.h"
#include "shell/simulator.h"
#include "shell/skins.h"

#include <optional>

namespace quillon {
namespace {

/// The default skin; without any skin there is nothing to show, and the window closes.
bool restore_default_skin(Simulator& s) {
    if (load_skin(s, {}))
        return true;
    s.window.perform(COMMAND_EXIT);
    return false;
}

// RUN and STOP.

void run(Simulator& s, int) {
    Machine& m = s.machine;
    if (m.run.run_state == STATE_STOPPED)
        return run_on(m);
    stop_tone(m);
    if (m.listing->text.empty())
        return show_catalogue_message(m, MESSAGE_NO_LISTING);
    start_area(m);
}

void stop_program(Simulator& s, int) { stop(s.machine); }

// Tracing and listings.

void toggle_trace(Simulator& s, int) {
    set_tracing(s.machine, !s.machine.trace.trace_mode);
    s.window.toggle_trace();
}

void reload(Simulator& s, int) {
    if (s.preferences.last_file.empty())
        return show_catalogue_message(s.machine, MESSAGE_NO_LISTING);
    open_listing(s, s.preferences.last_file);
}

// The command line.

void begin_command_line(Simulator& s, int) {
    if (restore_default_skin(s))
        begin_command_mode(s.machine);
}

// Modes.

void select_page(Simulator& s, int number) { s.machine.settings.run_page = number - COMMAND_PAGE_0; }

void select_angle_unit(Simulator& s, int number) {
    s.machine.settings.angle_unit = static_cast<AngleUnit>(number - COMMAND_DEG);
}

void set_zoom(Simulator& s, int number) {
    s.machine.settings.zoom = number - COMMAND_ZOOM_1 + 1;
    s.window.perform(static_cast<HostCommand>(number));
}

void toggle_ascii_mode(Simulator& s, int) {
    s.machine.settings.ascii_mode = !s.machine.settings.ascii_mode;
    s.window.refresh();
}

void toggle_overdrive(Simulator& s, int) {
    set_overdrive(s.machine, !s.machine.speed.overdrive);
    s.window.refresh();
}

void toggle_soft_keyboard(Simulator& s, int) {
    s.preferences.soft_keyboard = s.machine.soft.soft_open ? 0 : 1;
    if (s.machine.soft.soft_open)
        close_soft_keyboard(s.machine);
    else
        open_soft_keyboard(s.machine);
    s.window.toggle_soft_keyboard();
    s.window.refresh();
}

void open_with_dialog(Simulator& s, int number) {
    stop_tone(s.machine);
    s.window.perform(static_cast<HostCommand>(number));
}

/// Dialogs, other windows and leaving are the window's alone.
void ask_window(Simulator& s, int number) { s.window.perform(static_cast<HostCommand>(number)); }

// What shows a check mark.

bool is_in_ascii_mode(const Machine& m) { return m.settings.ascii_mode; }
bool is_in_overdrive(const Machine& m) { return m.speed.overdrive; }
bool has_soft_keyboard(const Machine& m) { return m.soft.soft_open; }

constexpr HostCommandRow COMMANDS[] = {
// NOLINTNEXTLINE(cppcoreguidelines-macro-usage): the rows are the includer's to take apart
#define HOST_COMMAND(name, number, button, key, script, menu, tooltip, icon, carry_out, is_on)                         \
    {COMMAND_##name, button, script, menu, tooltip, icon, carry_out, is_on},
#include "core/host_commands.def"
#undef HOST_COMMAND
};

constexpr bool is_of(const HostCommandRow& row, int number) { return row.number == number || row.button == number; }

/// Every number stands for one command at most, and scripts and fuzzers know where to look for it.
constexpr bool numbers_are_in_order() {
    std::size_t found = 0;
    for (int number = HOST_COMMAND_FIRST; number <= HOST_COMMAND_LAST; ++number) {
        std::size_t rows = 0;
        for (const HostCommandRow& row : COMMANDS) {
            rows += is_of(row, number) ? 1 : 0;
            found += row.number == number ? 1 : 0;
        }
        if (rows > 1)
            return false;
    }
    return found == std::size(COMMANDS);
}
static_assert(numbers_are_in_order());

} // namespace

std::span<const HostCommandRow> host_commands() { return COMMANDS; }

const HostCommandRow* find_host_command(int number) {
    for (const HostCommandRow& row : COMMANDS) {
        if (is_of(row, number))
            return &row;
    }
    return nullptr;
}

void show_catalogue_message(Machine& m, MessageId message) {
    m.around->host.show_message(lookup_message(m.around->catalogue, message.section, message.number),
                                MessageIcon::WARNING);
}

void run_host_command(Simulator& s, int number) {
    if (const HostCommandRow* row = find_host_command(number))
        row->carry_out(s, row->number);
}

LoadResult load_listing_file(Simulator& s, const std::string& path) {
    const FileKind kind = s.reads_pipes ? FileKind::ANY : FileKind::ORDINARY; // nobody at a window can wait for a pipe
    const auto [result, is_cut] = load_listing(s.machine, path, s.disk.read_file(path, LISTING_SIZE_MAX, kind));
    if (result == LoadResult::FAULTY && s.machine.trace.trace_mode)
        toggle_trace(s, COMMAND_TRACE); // there is nothing left to trace
    if (result != LoadResult::LOADED)
        s.machine.around->host.show_message(s.machine.error.system_message.c_str(), MessageIcon::STOP);
    else if (is_cut)
        s.machine.around->host.show_message(s.machine.error.system_message.c_str(), MessageIcon::WARNING);
    if (result == LoadResult::UNREADABLE)
        return result;
    s.preferences.last_file = s.disk.absolute_path(path);
    s.listing_was_read = true;
    s.kept_last_file.reset();
    if (result == LoadResult::LOADED)
        add_recent_listing(s.recent, s.preferences.last_file);
    return result;
}

bool open_listing(Simulator& s, const std::string& path) {
    stop_tone(s.machine);
    const LoadResult result = load_listing_file(s, std::string(path)); // `path` may be the one that is kept
    if (result != LoadResult::UNREADABLE && restore_default_skin(s))
        s.window.refresh();
    return result == LoadResult::LOADED;
}

std::string window_title(const Simulator& s) {
    const std::string program = "Quillon Simulator.";
    return s.listing_was_read ? program + " [" + std::string(name_of(s.preferences.last_file)) + "]" : program;
}

} // namespace quillon
