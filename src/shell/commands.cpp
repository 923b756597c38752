// SPDX-License-Identifier: MIT
// Host commands: one table of what each does to the machine.
#include "shell/commands.h"

#include "core/errors.h"
#include "core/program.h"
#include "core/run_control.h"
#include "keys/soft_keyboard.h"
#include "shell/listing_file.h"
#include "shell/paths.h"
#include "shell/simulator.h"
#include "shell/skins.h"

#include <optional>
#include <sstream>

namespace quillon {
namespace {

constexpr MessageId MESSAGE_NO_EDITOR{"SYSTEM", 10};

/// Loads, and listings that run, silence what is left of a tone.
void stop_sound(Machine& m) {
    if (m.sound.tone.samples == 0)
        return;
    m.sound.sound_ticks_left = 0;
    m.sound.sound_holds_run = false;
    m.around->host.stop_tone();
}

/// The default skin; without any skin there is nothing to show, and the window closes.
bool restore_default_skin(Simulator& s) {
    if (load_skin(s, {}))
        return true;
    s.window.perform(COMMAND_EXIT);
    return false;
}

void show_catalogue_message(Machine& m, MessageId message) {
    m.around->host.show_message(lookup_message(m.around->catalogue, message.section, message.number),
                                MessageIcon::WARNING);
}

// RUN and STOP.

void run(Simulator& s, int) {
    Machine& m = s.machine;
    if (m.run.run_state == STATE_STOPPED)
        return run_on(m);
    stop_sound(m);
    if (m.listing->text.empty())
        return show_catalogue_message(m, MESSAGE_NO_LISTING);
    start_area(m);
}

void stop_program(Simulator& s, int) { stop(s.machine); }

// Tracing and listings.

/// Opening or closing, a statement that waits for its step is let go.
void toggle_trace(Simulator& s, int) {
    Machine& m = s.machine;
    m.trace.trace_mode = !m.trace.trace_mode;
    m.trace.trace_step_flag = true;
    m.trace.trace_step_request = false;
    s.window.toggle_trace();
}

void reload(Simulator& s, int) {
    if (s.preferences.last_file.empty())
        return show_catalogue_message(s.machine, MESSAGE_NO_LISTING);
    open_listing(s, s.preferences.last_file);
}

/// The program of the setting, and its own arguments. What is a file as it stands has none, whatever blanks are in it.
EditorCall split_editor(const Disk& disk, const std::string& editor) {
    // There is no such program here: the system's own opener of text files stands for it.
    if (name_of(editor) == "notepad.exe")
        return {"xdg-open", {}};
    if (disk.is_regular_file(editor))
        return {editor, {}};
    std::istringstream words(editor);
    EditorCall call;
    words >> call.program;
    for (std::string word; words >> word;)
        call.arguments.push_back(word);
    return call;
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
    Machine& m = s.machine;
    if (m.speed.overdrive) {
        m.settings.timer_interval = m.speed.saved_timer_interval;
    } else {
        m.speed.saved_timer_interval = m.settings.timer_interval;
        m.settings.timer_interval = OVERDRIVE_INTERVAL_MS;
    }
    m.speed.overdrive = !m.speed.overdrive;
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
    stop_sound(s.machine);
    s.window.perform(static_cast<HostCommand>(number));
}

/// Dialogs, other windows and leaving are the window's alone.
void ask_window(Simulator& s, int number) { s.window.perform(static_cast<HostCommand>(number)); }

/// A command, or a row of them, and what it does.
struct CommandRow {
    int first;
    int last;
    void (*carry_out)(Simulator& s, int number);
};

// clang-format off
constexpr CommandRow COMMANDS[] = {
    {COMMAND_OPEN,          COMMAND_OPEN,          open_with_dialog},
    {COMMAND_EXIT,          COMMAND_EXIT,          ask_window},
    {COMMAND_RUN,           COMMAND_RUN,           run},
    {COMMAND_STOP,          COMMAND_STOP,          stop_program},
    {COMMAND_EDITOR,        COMMAND_ABOUT,         ask_window},
    {COMMAND_CONFIGURE,     COMMAND_CONFIGURE,     ask_window},
    {COMMAND_RELOAD,        COMMAND_RELOAD,        reload},
    {COMMAND_ZOOM_1,        COMMAND_ZOOM_4,        set_zoom},
    {COMMAND_ERROR_DETAIL,  COMMAND_ERROR_DETAIL,  ask_window},
    {COMMAND_PAGE_0,        COMMAND_PAGE_9,        select_page},
    {COMMAND_TRACE,         COMMAND_TRACE,         toggle_trace},
    {COMMAND_ASCII_MODE,    COMMAND_ASCII_MODE,    toggle_ascii_mode},
    {COMMAND_LINE,          COMMAND_LINE,          begin_command_line},
    {COMMAND_HELP,          COMMAND_HELP,          ask_window},
    {COMMAND_OVERDRIVE,     COMMAND_OVERDRIVE,     toggle_overdrive},
    {COMMAND_DEG,           COMMAND_GRA,           select_angle_unit},
    {COMMAND_SOFT_KEYBOARD, COMMAND_SOFT_KEYBOARD, toggle_soft_keyboard},
};

/// Toolbar buttons that act as another command.
struct Alias {
    int button;
    HostCommand command;
};

constexpr Alias ALIASES[] = {
    {40007, COMMAND_OPEN},      {40008, COMMAND_EDITOR},       {40009, COMMAND_RUN},   {40010, COMMAND_STOP},
    {40011, COMMAND_ABOUT},     {40012, COMMAND_CONFIGURE},    {40014, COMMAND_RELOAD}, {40025, COMMAND_ERROR_DETAIL},
    {40026, COMMAND_TRACE},     {40040, COMMAND_LINE},         {40049, COMMAND_SOFT_KEYBOARD},
};
// clang-format on

} // namespace

void run_host_command(Simulator& s, int number) {
    for (const Alias& alias : ALIASES) {
        if (alias.button == number)
            return run_host_command(s, alias.command);
    }
    for (const CommandRow& row : COMMANDS) {
        if (number >= row.first && number <= row.last)
            return row.carry_out(s, number);
    }
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
    stop_sound(s.machine);
    const LoadResult result = load_listing_file(s, std::string(path)); // `path` may be the one that is kept
    if (result != LoadResult::UNREADABLE && restore_default_skin(s))
        s.window.refresh();
    return result == LoadResult::LOADED;
}

std::optional<EditorCall> editor_call(Simulator& s) {
    if (s.preferences.editor.empty()) {
        show_catalogue_message(s.machine, MESSAGE_NO_EDITOR);
        return std::nullopt;
    }
    if (s.preferences.last_file.empty()) {
        show_catalogue_message(s.machine, MESSAGE_NO_LISTING);
        return std::nullopt;
    }
    EditorCall call = split_editor(s.disk, s.preferences.editor);
    call.arguments.push_back(s.preferences.last_file);
    return call;
}

std::string window_title(const Simulator& s) {
    const std::string program = "Quillon Simulator.";
    return s.listing_was_read ? program + " [" + std::string(name_of(s.preferences.last_file)) + "]" : program;
}

} // namespace quillon
