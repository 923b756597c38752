// SPDX-License-Identifier: MIT
// The commands of the driving protocol.
#include "protocols/drive.h"

#include "core/controls.h"
#include "keys/virtual_keys.h"
#include "protocols/drive_state.h"
#include "shell/catalogue.h"
#include "shell/clipboard.h"
#include "shell/commands.h"
#include "shell/places.h"
#include "shell/skins.h"
#include "shell/snapshot.h"

#include <nlohmann/json.hpp>

#include <charconv>
#include <utility>

namespace quillon {
namespace {

using Json = nlohmann::ordered_json;

/// What a command says against itself; empty when it was carried out.
using Refusal = std::string;

/// A command of the protocol. `argument` is the rest of the line behind one blank.
struct DriveCommand {
    std::string_view name;
    Refusal (*carry_out)(DriveSession& session, std::string_view argument, Json& answer);
};

constexpr long long TICKS_MAX = 10'000'000;

/// A whole number that fills the whole text and lies in a range; nothing otherwise.
std::optional<long long> parse_number(std::string_view text, long long lowest, long long highest) {
    long long number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (error != std::errc() || end != text.data() + text.size() || number < lowest || number > highest)
        return std::nullopt;
    return number;
}

Refusal number_refusal(const char* what, long long lowest, long long highest) {
    return std::string(what) + " must be a whole number from " + std::to_string(lowest) + " to " +
           std::to_string(highest) + ".";
}

Refusal refuse_argument(std::string_view argument) {
    return argument.empty() ? Refusal() : "This command takes no argument.";
}

/// Splits off the first word of an argument.
std::string_view take_word(std::string_view& text) {
    const std::size_t end = text.find(' ');
    const std::string_view word = text.substr(0, end);
    text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
    return word;
}

/// Nobody may ever ask for the state: what is kept for it is bounded.
void log(DriveLog& log, std::string text) {
    constexpr std::size_t TEXTS_MAX = 10'000;
    constexpr std::size_t BYTES_MAX = std::size_t{1} << 20;
    if (log.texts.size() == TEXTS_MAX || log.bytes + text.size() > BYTES_MAX) {
        ++log.dropped;
        return;
    }
    log.bytes += text.size();
    log.texts.push_back(std::move(text));
}

/// Adds what a log holds to an answer, and empties it.
void answer_log(DriveLog& log, const std::string& name, Json& answer) {
    answer[name] = log.texts;
    if (log.dropped > 0)
        answer[name + "_dropped"] = log.dropped;
    log = {};
}

/// Takes what a program shows, in pieces with a line feed after each whole line.
void take_shown(DriveSession& session, std::string_view piece) {
    for (const char c : piece) {
        if (c != '\n') {
            session.shown_part += c;
            continue;
        }
        log(session.shown, machine_text(session.shown_part));
        session.shown_part.clear();
    }
}

/// Notes what a program or a command line's PRINT shows; nothing of what is typed.
void follow_shown(DriveSession& session) {
    const Machine& m = session.simulator->machine;
    const bool waits_for_exe = m.run.run_state == STATE_PRINT_WAIT;
    const bool runs = m.run.run_state == STATE_RUN && m.eval.stmt_kind != KIND_RESULT;
    if (waits_for_exe && m.run.typed_wait) {
        if (!session.shown_line.stands)
            log(session.shown,
                machine_text(without_trailing_blanks({m.screen.display_line.data(), DISPLAY_LINE_SIZE})));
        session.shown_line.stands = true;
        return;
    }
    if (waits_for_exe && session.shown_line.stands)
        return; // the same wait as in the last tick
    if (runs || waits_for_exe || m.run.run_state == STATE_STOPPED)
        follow_display(session.shown_line, m);
    if (!waits_for_exe && (!runs || m.eval.stmt_kind == KIND_PROMPT))
        finish_shown_lines(session.shown_line);
}

void tick(DriveSession& session) {
    simulator_tick(*session.simulator);
    follow_shown(session);
}

void record_host(DriveSession& session) {
    Host& host = session.simulator->around.host;
    host.play_tone = [&session](std::span<const std::uint8_t>) {
        session.tone_playing = true;
        log(session.host, "play");
    };
    host.milliseconds = [] { return 1U; }; // what a load seeds the generator with: so runs repeat
    host.stop_tone = [&session] {
        session.tone_playing = false;
        log(session.host, "stop-sound");
    };
    host.show_message = [&session](const std::string& text, MessageIcon) { log(session.host, "message-box " + text); };
    host.refresh_trace = [&session] { log(session.host, "trace-refresh"); };
    host.reset_trace = [&session] { log(session.host, "trace-reset"); };
    host.copy_text = [&session](std::string_view text) {
        session.clipboard = clipboard_part(text);
        log(session.host, "copy " + machine_text(session.clipboard));
    };
    host.paste_text = [&session] { return pasted_part(session.clipboard); };
}

void record_window(DriveSession& session) {
    Window& window = session.simulator->window;
    window.perform = [&session](HostCommand command) { log(session.host, "command " + std::to_string(command)); };
    window.toggle_trace = [&session] { log(session.host, "trace"); };
}

void start_new_machine(DriveSession& session) {
    session.simulator = std::make_unique<Simulator>();
    session.host = {};
    session.shown = {};
    session.shown_line = {};
    session.shown_part.clear();
    session.shown_line.write = [&session](std::string_view piece) { take_shown(session, piece); };
    session.clipboard.clear();
    session.tone_playing = false;
    session.simulator->reads_pipes = true;
    load_skin(*session.simulator, {});
    record_host(session);
    record_window(session);
    render_lcd(session.simulator->lcd, session.simulator->machine);
}

Refusal do_new(DriveSession& session, std::string_view argument, Json&) {
    if (!argument.empty())
        return refuse_argument(argument);
    start_new_machine(session);
    return {};
}

Refusal do_catalogue(DriveSession& session, std::string_view argument, Json&) {
    if (argument.empty())
        return "Name a catalogue file, en or ja for the one that comes with the program, or - for none.";
    std::optional<MessageCatalogue> catalogue = MessageCatalogue{};
    if (argument == "en" || argument == "ja")
        catalogue = read_catalogue(installed_catalogue(find_resources(program_folder()), argument));
    else if (argument != "-")
        catalogue = read_catalogue(std::string(argument));
    if (!catalogue)
        return "This catalogue cannot be read.";
    session.simulator->around.catalogue = std::move(*catalogue);
    return {};
}

Refusal do_load(DriveSession& session, std::string_view argument, Json& answer) {
    if (argument.empty())
        return "Name a listing file.";
    Machine& m = session.simulator->machine;
    answer["loaded"] = open_listing(*session.simulator, std::string(argument));
    answer["system_message"] = m.error.system_message.c_str();
    return {};
}

Refusal do_set(DriveSession& session, std::string_view argument, Json&) {
    const std::string_view name = take_word(argument);
    const Field* field = find_field(name);
    if (field == nullptr || (field->uses & FIELD_SETTABLE) == 0)
        return "There is no such field to set.";
    const long long highest = highest_to_set(*field);
    const auto number = parse_number(argument, field->lowest, highest);
    if (!number)
        return number_refusal("This field", field->lowest, highest);
    field->set(session.simulator->machine, *number);
    return {};
}

Refusal do_host(DriveSession& session, std::string_view argument, Json&) {
    const auto number = parse_number(argument, HOST_COMMAND_FIRST, HOST_COMMAND_LAST);
    if (!number)
        return number_refusal("A command", HOST_COMMAND_FIRST, HOST_COMMAND_LAST);
    run_host_command(*session.simulator, static_cast<int>(*number));
    return {};
}

Refusal do_page(DriveSession& session, std::string_view argument, Json&) {
    const auto page = parse_number(argument, 0, AREA_COUNT - 1);
    if (!page)
        return number_refusal("A page", 0, AREA_COUNT - 1);
    run_host_command(*session.simulator, COMMAND_PAGE_0 + static_cast<int>(*page));
    return {};
}

// Keys. They go straight to the machine, not through the queue: a script has its own pace.

Refusal set_modifier(DriveSession& session, std::string_view name, bool down) {
    Modifiers& modifiers = session.simulator->modifiers;
    if (name == "shift")
        modifiers.shift = down;
    else if (name == "ctrl")
        modifiers.ctrl = down;
    else if (name == "alt")
        modifiers.alt = down;
    else
        return "Name shift, ctrl or alt.";
    return {};
}

Refusal do_hold(DriveSession& session, std::string_view argument, Json&) {
    return set_modifier(session, argument, true);
}

Refusal do_unhold(DriveSession& session, std::string_view argument, Json&) {
    return set_modifier(session, argument, false);
}

std::optional<long long> parse_virtual_key(std::string_view text) { return parse_number(text, 0, 255); }

Refusal virtual_key_refusal() { return number_refusal("A virtual key", 0, 255); }

void set_key_down(DriveSession& session, int key, bool down) {
    std::vector<int>& keys = session.simulator->keys.down_keys;
    std::erase(keys, key);
    if (down)
        keys.push_back(key);
}

Refusal press_key(DriveSession& session, std::string_view argument, bool auto_repeat) {
    const auto key = parse_virtual_key(argument);
    if (!key)
        return virtual_key_refusal();
    set_key_down(session, static_cast<int>(*key), true);
    on_key_down(session.simulator->machine, static_cast<int>(*key), auto_repeat);
    return {};
}

Refusal do_press(DriveSession& session, std::string_view argument, Json&) {
    return press_key(session, argument, false);
}

Refusal do_repeat(DriveSession& session, std::string_view argument, Json&) {
    return press_key(session, argument, true);
}

Refusal do_altpress(DriveSession& session, std::string_view argument, Json&) {
    const auto key = parse_virtual_key(argument);
    if (!key)
        return virtual_key_refusal();
    set_key_down(session, static_cast<int>(*key), true);
    on_sys_key_down(session.simulator->machine, static_cast<int>(*key));
    return {};
}

Refusal do_release(DriveSession& session, std::string_view argument, Json&) {
    const auto key = parse_virtual_key(argument);
    if (!key)
        return virtual_key_refusal();
    set_key_down(session, static_cast<int>(*key), false);
    return {};
}

Refusal do_key(DriveSession& session, std::string_view argument, Json&) {
    BoundedText<15> keys;
    if (argument.empty() || argument.size() % 2 != 0 || argument.size() > 2 * keys.capacity())
        return "Give 1 to 15 bytes, two hexadecimal digits each.";
    for (std::size_t i = 0; i < argument.size(); i += 2) {
        unsigned byte = 0;
        const char* digits = argument.data() + i;
        const auto [end, error] = std::from_chars(digits, digits + 2, byte, 16);
        if (error != std::errc() || end != digits + 2)
            return "Give 1 to 15 bytes, two hexadecimal digits each.";
        keys.push_back(static_cast<char>(byte));
    }
    set_pending_key(session.simulator->machine, keys.c_str()); // a byte 00 ends the text
    return {};
}

Refusal do_tick(DriveSession& session, std::string_view argument, Json& answer) {
    const auto count = argument.empty() ? 1 : parse_number(argument, 0, TICKS_MAX);
    if (!count)
        return number_refusal("The number of ticks", 0, TICKS_MAX);
    for (long long i = 0; i < *count; ++i)
        tick(session);
    answer["ticks"] = *count;
    return {};
}

Refusal do_wait(DriveSession& session, std::string_view argument, Json& answer) {
    const auto most = parse_number(argument, 0, TICKS_MAX);
    if (!most)
        return number_refusal("The number of ticks", 0, TICKS_MAX);
    long long ticks = 0;
    for (; ticks < *most && !waits_for_person(session.simulator->machine); ++ticks)
        tick(session);
    answer["ticks"] = ticks;
    return {};
}

void tick_with_exe(DriveSession& session) {
    press_exe(session.simulator->machine);
    tick(session);
}

Refusal do_exe(DriveSession& session, std::string_view argument, Json&) {
    if (!argument.empty())
        return refuse_argument(argument);
    tick_with_exe(session);
    return {};
}

/// Each byte is the pending key for a tick, and no key is pending in the next one.
void type_bytes(DriveSession& session, std::string_view bytes) {
    Machine& m = session.simulator->machine;
    for (const char c : bytes) {
        set_pending_key(m, {&c, 1}, m.keys.held_key);
        tick(session);
        set_pending_key(m, {}, m.keys.held_key);
        tick(session);
    }
}

Refusal do_type(DriveSession& session, std::string_view argument, Json&) {
    type_bytes(session, argument);
    return {};
}

/// Whether a key, and not just its character, is what the machine waits for.
bool waits_for_first_key(const Machine& m) {
    return m.run.run_state == STATE_RUN && (m.eval.stmt_kind == KIND_PROMPT || m.eval.stmt_kind == KIND_RESULT);
}

/// A key with this character goes down, and comes up after a tick.
void press_character(DriveSession& session, std::string_view character) {
    set_pending_key(session.simulator->machine, character, CHARACTER_KEY_BASE);
    set_key_down(session, CHARACTER_KEY_BASE, true);
    tick(session);
    set_key_down(session, CHARACTER_KEY_BASE, false);
    tick(session);
}

Refusal do_enter(DriveSession& session, std::string_view argument, Json&) {
    const Machine& m = session.simulator->machine;
    if (m.eval.stmt_kind == KIND_INPUT_ERROR) // a refused entry's error takes a key of its own
        press_character(session, argument.substr(0, 1));
    if (!argument.empty() && waits_for_first_key(m)) {
        press_character(session, argument.substr(0, 1));
        argument.remove_prefix(1);
    }
    type_bytes(session, argument);
    tick_with_exe(session);
    return {};
}

Refusal do_state(DriveSession& session, std::string_view argument, Json& answer) {
    if (!argument.empty())
        return refuse_argument(argument);
    answer_state(*session.simulator, answer);
    answer_log(session.shown, "shown", answer);
    answer_log(session.host, "host", answer);
    return {};
}

// The mouse, the picture, sound and clipboard.

Refusal do_soft(DriveSession& session, std::string_view argument, Json&) {
    Machine& m = session.simulator->machine;
    const std::string_view action = take_word(argument);
    if (action == "up" && argument.empty()) {
        open_soft_keyboard(m);
        soft_mouse_up(m);
        return {};
    }
    const auto row = parse_number(take_word(argument), 0, 3);
    const auto column = parse_number(argument, 0, 13);
    if (action != "down" || !row || !column)
        return "Say up, or down with a row from 0 to 3 and a column from 0 to 13.";
    open_soft_keyboard(m);
    soft_mouse_down(m, static_cast<int>(*row), static_cast<int>(*column));
    return {};
}

Refusal do_click(DriveSession& session, std::string_view argument, Json&) {
    constexpr long long COORDINATE_MAX = 100'000;
    constexpr std::pair<std::string_view, LcdClick> BUTTONS[] = {
        {"left", LcdClick::LEFT}, {"double", LcdClick::LEFT_DOUBLE}, {"right", LcdClick::RIGHT}};
    const std::string_view button = take_word(argument);
    const auto x = parse_number(take_word(argument), -COORDINATE_MAX, COORDINATE_MAX);
    const auto y = parse_number(argument, -COORDINATE_MAX, COORDINATE_MAX);
    for (const auto& [name, click] : BUTTONS) {
        if (name != button || !x || !y)
            continue;
        on_lcd_click(session.simulator->machine, click, static_cast<int>(*x), static_cast<int>(*y));
        return {};
    }
    return "Say left, double or right, and two whole numbers.";
}

Refusal do_lcd(DriveSession& session, std::string_view argument, Json& answer) {
    if (argument.empty())
        answer_lcd(session.simulator->lcd, answer);
    return refuse_argument(argument);
}

Refusal do_snapshot(DriveSession& session, std::string_view argument, Json&) {
    if (argument.empty())
        return "Name a file.";
    const bool written = write_snapshot(session.simulator->lcd.canvas, std::string(argument));
    return written ? Refusal() : "The snapshot cannot be written.";
}

Refusal do_sound(DriveSession& session, std::string_view argument, Json& answer) {
    const Tone& tone = session.simulator->machine.sound.tone;
    answer["playing"] = session.tone_playing;
    answer["samples"] = tone.samples;
    answer["half_period"] = tone.half_period;
    return refuse_argument(argument);
}

Refusal do_clipboard(DriveSession& session, std::string_view argument, Json& answer) {
    if (!argument.empty())
        session.clipboard = argument;
    answer["text"] = machine_text(session.clipboard);
    return {};
}

Refusal do_vars(DriveSession& session, std::string_view argument, Json& answer) {
    if (argument.empty())
        answer_variables(session.simulator->machine, answer);
    return refuse_argument(argument);
}

Refusal do_quit(DriveSession& session, std::string_view argument, Json&) {
    session.finished = argument.empty();
    return refuse_argument(argument);
}

// clang-format off
constexpr DriveCommand COMMANDS[] = {
    {"new", do_new},         {"catalogue", do_catalogue}, {"load", do_load},
    {"set", do_set},         {"page", do_page},           {"host", do_host},
    {"hold", do_hold},       {"unhold", do_unhold},       {"press", do_press},
    {"repeat", do_repeat},   {"altpress", do_altpress},   {"release", do_release},
    {"key", do_key},         {"type", do_type},           {"soft", do_soft},
    {"click", do_click},     {"tick", do_tick},           {"wait", do_wait},
    {"exe", do_exe},         {"enter", do_enter},         {"state", do_state},         {"vars", do_vars},
    {"lcd", do_lcd},         {"snapshot", do_snapshot},   {"sound", do_sound},
    {"clipboard", do_clipboard}, {"quit", do_quit},
};
// clang-format on

/// A host command that has a word of its own here.
Refusal give_command(DriveSession& session, HostCommand command, std::string_view argument) {
    if (argument.empty())
        run_host_command(*session.simulator, command);
    return refuse_argument(argument);
}

Refusal carry_out(DriveSession& session, std::string_view line, Json& answer) {
    std::string_view argument = line;
    const std::string_view name = take_word(argument);
    for (const DriveCommand& command : COMMANDS) {
        if (command.name == name)
            return command.carry_out(session, argument, answer);
    }
    for (const HostCommandRow& row : host_commands()) {
        if (row.script == name && !name.empty())
            return give_command(session, row.number, argument);
    }
    return "There is no such command.";
}

} // namespace

DriveSession::DriveSession() { start_new_machine(*this); }

std::optional<std::string> drive_line(DriveSession& session, std::string_view line) {
    const bool too_long = line.size() > DRIVE_LINE_MAX; // with its CR: a line may have been cut after one
    if (line.ends_with('\r'))
        line.remove_suffix(1);
    if (line.empty() || line.front() == '#')
        return std::nullopt;
    Json answer = Json::object();
    answer["ok"] = true;
    Refusal refusal = "This line is too long.";
    if (!too_long)
        refusal = line.find('\0') == std::string_view::npos ? carry_out(session, line, answer) : "A line holds no NUL.";
    if (!refusal.empty())
        answer = {{"ok", false}, {"error", refusal}};
    return answer.dump(-1, ' ', false, Json::error_handler_t::replace);
}

} // namespace quillon
