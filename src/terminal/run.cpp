// SPDX-License-Identifier: MIT
// Running a listing to its end, with EXE held down.
#include "terminal/run.h"

#include "core/charset.h"
#include "core/controls.h"
#include "core/program.h"
#include "files/file_reading.h"
#include "files/host_disk.h"
#include "files/safe_write.h"
#include "files/values_file.h"
#include "protocols/shown_lines.h"
#include "session/replay.h"
#include "shell/listing_file.h"
#include "shell/settings.h"
#include "shell/simulator.h"
#include "shell/skins.h"
#include "terminal/catalogue_choice.h"
#include "terminal/lines.h"
#include "terminal/printing.h"

#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <memory>
#include <utility>

namespace quillon {
namespace {

/// The machine's text in that of the terminal; a line feed is the end of a line, all else is the machine's.
std::string output_text(std::string_view machine_text) {
    std::string text;
    for (const char c : machine_text)
        text += c == '\n' ? std::string_view("\n") : unicode_of(as_byte(c));
    return text;
}

/// Where the program is, as STOP shows it: beyond the last line, there.
std::string position(const Machine& m) {
    const int last_line = static_cast<int>(current_area(m).lines.size()) - 1;
    return "P" + std::to_string(m.program.cur_area) + "-" +
           std::to_string(line_number(m, std::min(m.program.cur_line, last_line)));
}

void print_program_error(const Machine& m) {
    const std::string_view line(m.screen.display_line.data(), DISPLAY_LINE_SIZE);
    const std::string_view shown = line.substr(0, line.find_last_not_of(' ') + 1);
    std::fprintf(stderr, "%s\n%s", to_unicode(shown).c_str(), printable_lines(m.error.error_detail).c_str());
}

std::uint32_t milliseconds_since_epoch() {
    using namespace std::chrono;
    return static_cast<std::uint32_t>(duration_cast<milliseconds>(system_clock::now().time_since_epoch()).count());
}

bool use_settings(Machine& m, const std::vector<std::string>& assignments) {
    StoredSettings settings;
    for (const std::string& assignment : assignments) {
        const std::size_t equals = std::min(assignment.find('='), assignment.size());
        const std::string key = assignment.substr(0, equals);
        std::vector<int> messages;
        const bool has_value = equals < assignment.size();
        if (!has_value || !set_setting(settings, key, assignment.substr(equals + 1), messages) || !messages.empty()) {
            print_error("--settings takes KEY=VALUE with a key and a value of the settings file, not " + assignment);
            return false;
        }
    }
    apply_settings(m, settings.machine);
    return true;
}

/// What KEY$ reads: each character is pending until it has been read once.
struct FedKeys {
    std::string keys; ///< machine text
    std::size_t index = 0;
    bool read = false; ///< the pending one has been read
};

/// A run, between two ticks.
struct Run {
    Simulator simulator{};
    std::unique_ptr<Session> session{}; ///< where it is recorded
    ShownLines shown{};
    FedKeys keys{};
    std::string output{}; ///< what was shown and has yet to be written; UTF-8
    std::string entry{};  ///< the line that INPUT read last; UTF-8
    bool echo = false;
};

/// Whatever the run does to the machine.
void give(Run& run, Input input) {
    if (run.session)
        session_input(*run.session, std::move(input));
    else
        apply_input(run.simulator, input);
}

/// Selects the area to run: the one asked for, else the first in use. False, with a message, if it holds no program.
bool choose_page(Run& run, const std::optional<int>& page) {
    const Machine& m = run.simulator.machine;
    int first = 0;
    while (first < AREA_COUNT && area_is_empty(m, first))
        ++first;
    const int chosen = page.value_or(first);
    if (first == AREA_COUNT)
        print_error("the listing has no program: there is no line in any area");
    else if (area_is_empty(m, chosen))
        print_error("the listing has no program in area P" + std::to_string(chosen));
    else
        give(run, {.verb = InputVerb::HOST_COMMAND, .numbers = {COMMAND_PAGE_0 + chosen}});
    return first < AREA_COUNT && !area_is_empty(m, chosen);
}

/// Reads a file, or the rest of standard input.
FileContents read_listing(const std::string& path, std::size_t limit, FileKind kind) {
    if (path != "-")
        return read_file(path, limit, kind);
    FileContents contents{ReadStatus::READ};
    if (!read_rest(stdin, contents.bytes, limit))
        contents.status = std::ferror(stdin) != 0 ? ReadStatus::UNREADABLE : ReadStatus::TOO_LARGE;
    return contents;
}

/// Loads by the gate of a session, whose message boxes are not wanted here.
ListingLoad load_recorded(Session& session, const std::string& listing) {
    const auto show_message = std::exchange(session.host.show_message, [](const std::string&, MessageIcon) {});
    const bool loaded = session_input(session, {.verb = InputVerb::LOAD, .text = listing});
    session.host.show_message = show_message;
    const bool is_cut = !session.simulator.machine.error.system_message.empty();
    return {loaded ? LoadResult::LOADED : LoadResult::FAULTY, is_cut};
}

bool load_program(Run& run, const std::string& listing) {
    Simulator& s = run.simulator;
    Machine& m = s.machine;
    const auto [result, is_cut] =
        run.session ? load_recorded(*run.session, listing)
                    : load_listing(m, listing, s.disk.read_file(listing, LISTING_SIZE_MAX, FileKind::ANY));
    if (result != LoadResult::LOADED)
        print_load_fault(listing, m.error.system_message);
    else if (is_cut)
        print_error(listing + ": " + std::string(m.error.system_message));
    if (listing != "-")
        s.preferences.last_file = listing;
    return result == LoadResult::LOADED;
}

/// False, with a message, when there are values that cannot be read.
bool read_values(Machine& m, const std::string& path) {
    const FileContents file = read_values_file(path);
    if (file.status == ReadStatus::UNREADABLE) {
        print_error("cannot read the values in " + path + ": " + read_fault_text(file));
        return false;
    }
    if (!read_values_image(m, file))
        print_error(path + " holds no values of this program, or not only: it is kept as " + path + ".bad");
    return true;
}

/// Begins to record. Skins are put in place as in a replay.
void record(Run& run) {
    load_skin(run.simulator, {});
    run.simulator.reads_pipes = true;
    run.session = std::make_unique<Session>(run.simulator);
    begin_session(*run.session);
}

/// Puts everything in place and starts the program; false, with a message, when that cannot be.
bool start_program(Run& run, const RunOptions& options) {
    Simulator& s = run.simulator;
    Machine& m = s.machine;
    if (!use_catalogue(s.around.catalogue, options.catalogue) || !use_settings(m, options.settings))
        return false;
    if (!options.values.empty() && !read_values(m, options.values))
        return false;
    if (!options.record.empty())
        record(run);
    if (!load_program(run, options.listing))
        return false;
    if (options.seed)
        give(run, {.verb = InputVerb::SET, .numbers = {*options.seed}, .word = "random_seed"});
    if (!choose_page(run, options.page))
        return false;
    give(run, {.verb = InputVerb::HOST_COMMAND, .numbers = {COMMAND_RUN}});
    give(run, {.verb = InputVerb::EXE_HELD, .numbers = {1}});
    return true;
}

bool has_ended(const Machine& m) {
    const bool under_way = m.run.run_state == STATE_RUN || m.run.run_state == STATE_PRINT_WAIT ||
                           m.run.run_state == STATE_STOPPED || m.run.run_state == STATE_INPUT;
    return !under_way;
}

/// False when it cannot be written.
bool write_shown(Run& run) {
    if (run.output.empty())
        return true;
    const bool written = write_output(run.output);
    run.output.clear();
    return written;
}

/// Ends the line of the prompt; with the entry, where that is wanted.
void end_prompt(Run& run) {
    if (isatty(STDIN_FILENO) != 0)
        run.shown.stands = true; // the terminal has shown the entry and the end of the line
    else
        finish_shown_lines(run.shown, run.echo ? run.simulator.machine.entry.entry_line.text.view() : "");
}

/// Puts the next line of standard input in the place of an entry; false when there is none.
bool enter_line(Run& run) {
    constexpr std::size_t LINE_MAX_SIZE = 1024; // more than an entry holds, symbols of several bytes included
    if (!read_line(stdin, run.entry, LINE_MAX_SIZE))
        return false;
    if (run.entry.ends_with('\r'))
        run.entry.pop_back();
    give(run, {.verb = InputVerb::BEGIN_ENTRY});
    constexpr std::size_t ENTRY_MAX = 127;
    give(run, {.verb = InputVerb::ENTRY, .text = from_unicode(run.entry).substr(0, ENTRY_MAX)});
    end_prompt(run);
    return true;
}

/// Makes the next key of those that are fed the pending one, until it has been read.
void feed_key(Run& run) {
    FedKeys& fed = run.keys;
    fed.index += fed.read && fed.index < fed.keys.size() ? 1 : 0;
    fed.read = false;
    const std::string_view key = std::string_view(fed.keys).substr(fed.index, 1);
    if (run.simulator.machine.keys.key_string.view() != key)
        give(run, {.verb = InputVerb::TEXT, .text = std::string(key)});
}

/// One tick, with EXE down. A run that nobody records does without what a tick does for a keyboard.
void run_tick(Run& run) {
    Machine& m = run.simulator.machine;
    feed_key(run);
    if (run.session) {
        session_tick(*run.session);
    } else {
        press_exe(m);
        machine_tick(m);
    }
    follow_display(run.shown, m);
    if (m.eval.stmt_kind == KIND_INPUT_ERROR)
        print_error(position(m) + ": INPUT needs a number, not \"" + run.entry + "\"");
}

RunStatus tick_to_the_end(Run& run, const std::optional<std::uint64_t>& max_ticks) {
    Machine& m = run.simulator.machine;
    for (std::uint64_t tick = 0; !has_ended(m); ++tick) {
        if (max_ticks && tick >= *max_ticks)
            return RUN_TICKS_USED;
        if (m.eval.stmt_kind == KIND_INPUT_ERROR)
            give(run, {.verb = InputVerb::ASK_AGAIN});
        if (m.eval.stmt_kind == KIND_PROMPT && !enter_line(run))
            return RUN_NO_INPUT;
        run_tick(run);
        if (!write_shown(run))
            return RUN_ENDED;
    }
    return failed(m) ? RUN_ERROR : RUN_ENDED;
}

/// Says why the program has not come to its own end.
void print_end(const Machine& m, RunStatus status, const RunOptions& options) {
    switch (status) {
    case RUN_ERROR: return print_program_error(m);
    case RUN_NO_INPUT: return print_error(position(m) + ": INPUT found no more input");
    case RUN_TICKS_USED:
        return print_error(position(m) + ": stopped by --max-ticks " + std::to_string(*options.max_ticks));
    default: return;
    }
}

/// False, with a message, when it cannot be written.
bool write_session(const Session& session, const std::string& path) {
    bool repeats = true;
    const bool written = safe_write(path, session_text(record_session(session, repeats)));
    if (!written)
        print_error("cannot write the session to " + path);
    else if (!repeats)
        print_error("the session in " + path + " does not go the same way again");
    return written;
}

void connect(Run& run, const RunOptions& options) {
    const Machine& m = run.simulator.machine;
    Host& host = run.simulator.around.host;
    host.milliseconds = milliseconds_since_epoch;
    host.show_message = [&m](const std::string& text, MessageIcon) {
        print_error(position(m) + ": " + one_line(text));
    };
    host.key_read = [&run] { run.keys.read = true; };
    run.simulator.disk = host_disk();
    run.simulator.disk.read_file = read_listing;
    run.keys.keys = from_unicode(options.keys);
    run.shown.write = [&run](std::string_view text) { run.output += output_text(text); };
    run.echo = options.echo;
}

} // namespace

int run_listing(const RunOptions& options) {
    const auto run = std::make_unique<Run>();
    connect(*run, options);
    Simulator& s = run->simulator;
    if (!start_program(*run, options))
        return RUN_BAD_CALL;
    int status = tick_to_the_end(*run, options.max_ticks);
    finish_shown_lines(run->shown);
    write_shown(*run);
    print_end(s.machine, static_cast<RunStatus>(status), options);
    if (!options.values.empty() && !write_saved_values(options.values, s.machine)) {
        print_error("cannot write the values to " + options.values);
        status = status == RUN_ENDED ? RUN_BAD_CALL : status;
    }
    if (run->session && !write_session(*run->session, options.record))
        status = status == RUN_ENDED ? RUN_BAD_CALL : status;
    return status_with_output(status);
}

} // namespace quillon
