// Host commands: one table of what each does to the machine.
#include "shell/commands.h"

#include "core/display_line.h"
#include "core/errors.h"
#include "core/listing.h"
#include "keys/soft_keyboard.h"
#include "shell/listing_file.h"
#include "shell/paths.h"
#include "shell/simulator.h"
#include "shell/skins.h"
#include "statements/command_line.h"

#include <algorithm>
#include <cstdio>
#include <optional>
#include <sstream>

namespace quillon {
namespace {

constexpr MessageId MESSAGE_NO_EDITOR{"SYSTEM", 10};

/// Loads, and listings that run, silence what is left of a tone.
void stop_sound(Machine& m) {
    if (m.tone.samples == 0)
        return;
    m.sound_ticks_left = 0;
    m.sound_holds_run = 0;
    m.host.stop_tone();
}

/// The default skin; without any skin there is nothing to show, and the window closes.
bool restore_default_skin(Simulator& s) {
    if (load_skin(s, {}))
        return true;
    s.window.perform(COMMAND_EXIT);
    return false;
}

void show_catalogue_message(Machine& m, MessageId message) {
    m.host.show_message(lookup_message(m.catalogue, message.section, message.number), MessageIcon::WARNING);
}

// RUN and STOP.

/// The selected area from its beginning; an empty one leads to command mode.
void start_area(Machine& m) {
    m.error_detail.clear();
    reset_machine(m);
    const char* start = select_area(m, m.run_page);
    restore_area_data(m);
    m.prev_state = m.run_state;
    m.stmt_kind = KIND_NONE;
    if (start != nullptr) {
        m.scan_ptr = start;
        m.base_state = STATE_RUN;
        m.run_state = STATE_RUN;
        if (m.trace_mode != 0)
            m.host.refresh_trace();
        return;
    }
    clear_entry_line(m);
    m.error_detail.clear();
    m.error_code = ERROR_NONE;
    m.base_state = STATE_COMMAND;
    m.run_state = STATE_COMMAND;
}

void run(Simulator& s, int) {
    Machine& m = s.machine;
    if (m.run_state == STATE_STOPPED) {
        enter_state(m, m.saved_run_state);
        clear_display(m);
        return;
    }
    stop_sound(m);
    if (m.listing_text.empty())
        return show_catalogue_message(m, MESSAGE_NO_LISTING);
    start_area(m);
}

/// The place of the program, or of its last line where that has been passed. A text that scrolls is not touched by it.
void show_position(Machine& m) {
    const int last_line = m.areas[static_cast<std::size_t>(m.cur_area)].line_count - 1;
    char text[32];
    std::snprintf(text, sizeof text, "P%d-%d", m.cur_area, line_number(m, std::min(m.cur_line, last_line)));
    show_text(m, text);
    m.run_state = STATE_LINE_SHOWN;
}

/// What is typed on a command line waits for EXE, or for an entry. A stop ends that; a program that is stopped
/// meanwhile is where it was.
void drop_typed_wait(Machine& m) {
    m.typed_wait = 0;
    m.token = m.stopped_token;
    m.stmt_kind = m.stopped_kind;
    m.value = m.stopped_value;
    m.entry_line = m.stopped_entry;
    m.entry_line.text.clear();
}

/// Halts a running program; a halted one shows its position.
void stop(Simulator& s, int) {
    Machine& m = s.machine;
    const int state = m.run_state;
    const bool nothing_runs =
        state == STATE_ENDED || state == STATE_SELECT || state == STATE_COMMAND || state == STATE_LINE_SHOWN;
    if (m.listing_text.empty() || nothing_runs)
        return;
    const bool typed = m.typed_wait != 0 || (state == STATE_RUN && m.stmt_kind == KIND_RESULT);
    if (typed)
        drop_typed_wait(m);
    save_stop(m);
    m.prev_state = state;
    if (state == STATE_STOPPED || state == STATE_PRINT_WAIT)
        return show_position(m);
    m.saved_run_state = typed ? m.base_state : state;
    m.run_state = STATE_STOPPED;
}

// Tracing and listings.

/// Opening or closing, a statement that waits for its step is let go.
void toggle_trace(Simulator& s, int) {
    Machine& m = s.machine;
    m.trace_mode = 1 - m.trace_mode;
    m.trace_step_flag = 1;
    m.trace_step_request = 0;
    s.window.toggle_trace();
}

void reload(Simulator& s, int) {
    if (s.settings.last_file.empty())
        return show_catalogue_message(s.machine, MESSAGE_NO_LISTING);
    open_listing(s, s.settings.last_file);
}

/// The program of the setting, and its own arguments. What is a file as it stands has none, whatever blanks are in it.
EditorCall split_editor(const std::string& editor) {
    // There is no such program here: the system's own opener of text files stands for it.
    if (name_of(editor) == "notepad.exe")
        return {"xdg-open", {}};
    if (is_regular_file(editor))
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

void select_page(Simulator& s, int number) { s.machine.run_page = number - COMMAND_PAGE_0; }

void select_angle_unit(Simulator& s, int number) { s.machine.angle_unit = number - COMMAND_DEG; }

void set_zoom(Simulator& s, int number) {
    s.machine.zoom = number - COMMAND_ZOOM_1 + 1;
    s.window.perform(static_cast<HostCommand>(number));
}

void toggle_ascii_mode(Simulator& s, int) {
    s.machine.ascii_mode = 1 - s.machine.ascii_mode;
    s.window.refresh();
}

void toggle_overdrive(Simulator& s, int) {
    Machine& m = s.machine;
    if (m.overdrive != 0) {
        m.timer_interval = m.saved_timer_interval;
    } else {
        m.saved_timer_interval = m.timer_interval;
        m.timer_interval = OVERDRIVE_INTERVAL_MS;
    }
    m.overdrive = 1 - m.overdrive;
    s.window.refresh();
}

void toggle_soft_keyboard(Simulator& s, int) {
    s.settings.soft_keyboard = 1 - s.machine.soft_open;
    if (s.machine.soft_open != 0)
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
    {COMMAND_STOP,          COMMAND_STOP,          stop},
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
    const auto [result, is_cut] = load_listing(s.machine, path, kind);
    if (result == LoadResult::FAULTY && s.machine.trace_mode != 0)
        toggle_trace(s, COMMAND_TRACE); // there is nothing left to trace
    if (result != LoadResult::LOADED)
        s.machine.host.show_message(s.machine.system_message.c_str(), MessageIcon::STOP);
    else if (is_cut)
        s.machine.host.show_message(s.machine.system_message.c_str(), MessageIcon::WARNING);
    if (result == LoadResult::UNREADABLE)
        return result;
    s.settings.last_file = absolute_path(path);
    s.listing_was_read = true;
    s.kept_last_file.reset();
    if (result == LoadResult::LOADED)
        add_recent_listing(s.recent, s.settings.last_file);
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
    if (s.settings.editor.empty()) {
        show_catalogue_message(s.machine, MESSAGE_NO_EDITOR);
        return std::nullopt;
    }
    if (s.settings.last_file.empty()) {
        show_catalogue_message(s.machine, MESSAGE_NO_LISTING);
        return std::nullopt;
    }
    EditorCall call = split_editor(s.settings.editor);
    call.arguments.push_back(s.settings.last_file);
    return call;
}

std::string window_title(const Simulator& s) {
    const std::string program = "Quillon Simulator.";
    return s.listing_was_read ? program + " [" + std::string(name_of(s.settings.last_file)) + "]" : program;
}

} // namespace quillon
