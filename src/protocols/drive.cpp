// SPDX-License-Identifier: MIT
// The commands of the driving protocol.
#include "protocols/drive.h"

#include "protocols/drive_commands.h"
#include "protocols/drive_state.h"
#include "shell/clipboard.h"
#include "shell/skins.h"
#include "shell/snapshot.h"

#include <nlohmann/json.hpp>

#include <utility>

namespace quillon {
namespace {

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

} // namespace

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

namespace {

void drive_tick(DriveSession& session) {
    session_tick_drawn(*session.session);
    follow_shown(session);
}

void record_host(DriveSession& session) {
    Host& host = session.simulator->around.host;
    host.play_tone = [&session](std::span<const std::uint8_t>) { log(session.host, "play"); };
    host.milliseconds = [] { return 1U; }; // what a load seeds the generator with: so runs repeat
    host.stop_tone = [&session] { log(session.host, "stop-sound"); };
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

} // namespace

void prepare_machine(DriveSession& session) {
    session.session.reset(); // it refers to the simulator
    session.simulator = std::make_unique<Simulator>();
    session.session = std::make_unique<Session>(*session.simulator);
    session.debugger = {};
    session.host = {};
    session.shown = {};
    show_afresh(session);
    session.clipboard.clear();
    session.simulator->disk = session.disk;
    session.simulator->reads_pipes = true;
    load_skin(*session.simulator, {});
    record_host(session);
    record_window(session);
    render_lcd(session.simulator->lcd, session.simulator->machine);
}

void show_afresh(DriveSession& session) {
    session.shown_line = {};
    session.shown_part.clear();
    session.shown_line.write = [&session](std::string_view piece) { take_shown(session, piece); };
}

namespace {

void start_new_machine(DriveSession& session) {
    prepare_machine(session);
    begin_session(*session.session);
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
        catalogue = session.disk.read_catalogue(session.disk.installed_catalogue(argument));
    else if (argument != "-")
        catalogue = session.disk.read_catalogue(std::string(argument));
    if (!catalogue)
        return "This catalogue cannot be read.";
    session.simulator->around.catalogue = std::move(*catalogue);
    return {};
}

Refusal do_load(DriveSession& session, std::string_view argument, Json& answer) {
    Input input;
    if (Refusal refusal = parse_input("load " + std::string(argument), input); !refusal.empty())
        return refusal;
    answer["loaded"] = session_input(*session.session, std::move(input));
    answer["system_message"] = session.simulator->machine.error.system_message.c_str();
    return {};
}

// Time.

Refusal do_tick(DriveSession& session, std::string_view argument, Json& answer) {
    const auto count = argument.empty() ? 1 : parse_number(argument, 0, DRIVE_TICKS_MAX);
    if (!count)
        return number_refusal("The number of ticks", 0, DRIVE_TICKS_MAX);
    for (long long i = 0; i < *count; ++i)
        drive_tick(session);
    answer["ticks"] = *count;
    return {};
}

Refusal do_wait(DriveSession& session, std::string_view argument, Json& answer) {
    const auto most = parse_number(argument, 0, DRIVE_TICKS_MAX);
    if (!most)
        return number_refusal("The number of ticks", 0, DRIVE_TICKS_MAX);
    long long ticks = 0;
    for (; ticks < *most && !waits_for_person(session.simulator->machine); ++ticks)
        drive_tick(session);
    answer["ticks"] = ticks;
    return {};
}

void tick_with_exe(DriveSession& session) {
    session_input(*session.session, {.verb = InputVerb::EXE});
    drive_tick(session);
}

Refusal do_exe(DriveSession& session, std::string_view argument, Json&) {
    if (!argument.empty())
        return refuse_argument(argument);
    tick_with_exe(session);
    return {};
}

/// An input, and a tick with it.
void give(DriveSession& session, InputVerb verb, std::string_view text) {
    session_input(*session.session, {.verb = verb, .text = std::string(text)});
    drive_tick(session);
}

/// Each byte is the pending key for a tick, and no key is pending in the next one.
void type_bytes(DriveSession& session, std::string_view bytes) {
    for (std::size_t i = 0; i < bytes.size(); ++i) {
        give(session, InputVerb::TEXT, bytes.substr(i, 1));
        give(session, InputVerb::TEXT, {});
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
    give(session, InputVerb::CHARACTER, character);
    give(session, InputVerb::CHARACTER, {});
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

// The picture, sound and clipboard.

Refusal do_lcd(DriveSession& session, std::string_view argument, Json& answer) {
    if (argument.empty())
        answer_lcd(session.simulator->lcd, answer);
    return refuse_argument(argument);
}

Refusal do_snapshot(DriveSession& session, std::string_view argument, Json&) {
    if (argument.empty())
        return "Name a file.";
    const bool written = session.disk.write_file(std::string(argument), snapshot_bitmap(session.simulator->lcd.canvas));
    return written ? Refusal() : "The snapshot cannot be written.";
}

Refusal do_sound(DriveSession& session, std::string_view argument, Json& answer) {
    const Tone& tone = session.simulator->machine.sound.tone;
    answer["playing"] = session.session->tone_plays;
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
    {"new", do_new},     {"catalogue", do_catalogue}, {"load", do_load},   {"tick", do_tick},
    {"wait", do_wait},   {"exe", do_exe},             {"type", do_type},   {"enter", do_enter},
    {"state", do_state}, {"vars", do_vars},           {"lcd", do_lcd},     {"snapshot", do_snapshot},
    {"sound", do_sound}, {"clipboard", do_clipboard}, {"quit", do_quit},
};
// clang-format on

/// An input takes no time and answers nothing.
Refusal do_input(DriveSession& session, std::string_view line) {
    Input input;
    Refusal refusal = parse_input(line, input);
    if (refusal.empty() && !is_for_scripts(input))
        refusal = "There is no such command.";
    if (refusal.empty())
        session_input(*session.session, std::move(input));
    return refusal;
}

Refusal carry_out(DriveSession& session, std::string_view line, Json& answer) {
    const std::size_t blank = line.find(' ');
    const std::string_view name = line.substr(0, blank);
    const std::string_view argument = blank == std::string_view::npos ? "" : line.substr(blank + 1);
    for (const std::span<const DriveCommand> commands : {std::span<const DriveCommand>(COMMANDS), travel_commands()}) {
        for (const DriveCommand& command : commands) {
            if (command.name == name)
                return command.carry_out(session, argument, answer);
        }
    }
    return do_input(session, line);
}

} // namespace

DriveSession::DriveSession(Disk disk_) : disk(std::move(disk_)) { start_new_machine(*this); }

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
