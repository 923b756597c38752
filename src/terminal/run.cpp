// Running a listing to its end, with EXE held down.
#include "terminal/run.h"

#include "core/charset.h"
#include "core/listing.h"
#include "driver/tick.h"
#include "shell/catalogue.h"
#include "shell/commands.h"
#include "shell/places.h"
#include "shell/saved_values.h"
#include "shell/settings.h"
#include "shell/simulator.h"
#include "statements/input.h"
#include "terminal/lines.h"
#include "terminal/shown_lines.h"

#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <memory>

namespace quillon {
namespace {

/// Standard output, until it fails.
struct Output {
    std::string text; ///< of the tick, not written yet
    bool failed = false;
};

void add_output(Output& output, std::string_view machine_text) {
    for (const char c : machine_text) // a line feed is the end of a line; all else is the machine's
        output.text += c == '\n' ? std::string_view("\n") : unicode_of(as_byte(c));
}

void write_output(Output& output) {
    const std::string& text = output.text;
    const bool written = std::fwrite(text.data(), 1, text.size(), stdout) == text.size() && std::fflush(stdout) == 0;
    output.failed = output.failed || !written;
    output.text.clear();
}

void print_error(const std::string& text) { std::fprintf(stderr, "quillon-cli: %s\n", text.c_str()); }

/// Text of the machine's catalogue for standard error: without the CRs of its line ends.
std::string with_plain_line_ends(std::string_view text) {
    std::string plain;
    for (const char c : text) {
        if (c != '\r')
            plain += c;
    }
    return plain;
}

std::string_view without_trailing_blanks(std::string_view text) {
    return text.substr(0, text.find_last_not_of(' ') + 1);
}

void print_program_error(const Machine& m) {
    const std::string_view line(m.display_line, DISPLAY_LINE_SIZE);
    std::fprintf(stderr, "%s\n%s", to_unicode(without_trailing_blanks(line)).c_str(),
                 with_plain_line_ends(m.error_detail).c_str());
}

std::uint32_t milliseconds_since_epoch() {
    using namespace std::chrono;
    return static_cast<std::uint32_t>(duration_cast<milliseconds>(system_clock::now().time_since_epoch()).count());
}

/// Reads the texts: those that were named, else the ones of the user's language, where they are installed.
bool load_catalogue(Machine& m, const std::string& named) {
    const std::string path =
        named.empty() ? find_catalogue(read_environment(), find_resources(program_folder())) : named;
    auto catalogue = read_catalogue(path);
    if (catalogue)
        m.catalogue = std::move(*catalogue);
    else if (!named.empty())
        print_error("cannot read the catalogue " + path);
    return catalogue || named.empty();
}

bool use_settings(Machine& m, const std::vector<std::string>& assignments) {
    Settings settings;
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
    apply_settings(m, settings);
    return true;
}

/// The area to run: the one asked for, else the first in use. One that holds no program is told; it ends at once.
int choose_page(const Machine& m, const std::optional<int>& page) {
    int first = 0;
    while (first < AREA_COUNT - 1 && area_is_empty(m, first))
        ++first;
    const int chosen = page.value_or(first);
    if (area_is_empty(m, chosen))
        print_error("the listing has no program in area P" + std::to_string(chosen));
    return chosen;
}

/// Puts everything in place and starts the program; false, with a message, when that cannot be.
bool start_program(Simulator& s, const RunOptions& options) {
    Machine& m = s.machine;
    if (!load_catalogue(m, options.catalogue) || !use_settings(m, options.settings))
        return false;
    if (!options.values.empty())
        read_saved_values(options.values, m);
    if (load_listing(m, options.listing) != LoadResult::LOADED) {
        print_error(options.listing + ": the listing does not load: " + with_plain_line_ends(m.system_message));
        return false;
    }
    s.settings.last_file = options.listing;
    if (options.seed)
        m.random_seed = *options.seed;
    run_host_command(s, COMMAND_PAGE_0 + choose_page(m, options.page));
    run_host_command(s, COMMAND_RUN);
    return true;
}

bool has_ended(const Machine& m) {
    const bool under_way = m.run_state == STATE_RUN || m.run_state == STATE_PRINT_WAIT ||
                           m.run_state == STATE_STOPPED || m.run_state == STATE_INPUT;
    return !under_way;
}

/// Puts the next line of standard input in the place of an entry; false when there is none.
bool enter_line(Machine& m, ShownLines& shown) {
    constexpr std::size_t LINE_MAX_SIZE = 1024; // more than an entry holds, symbols of several bytes included
    std::string line;
    if (!read_line(stdin, line, LINE_MAX_SIZE))
        return false;
    if (isatty(STDIN_FILENO) != 0)
        shown.stands = true; // the terminal has shown the end of the line
    else
        finish_shown_lines(shown);
    if (line.ends_with('\r'))
        line.pop_back();
    begin_entry(m);
    m.entry_line.text = from_unicode(line);
    return true;
}

/// What KEY$ reads: each character is pending until it has been read once.
struct FedKeys {
    std::string keys; ///< machine text
    std::size_t index = 0;
    bool read = false; ///< the pending one has been read
};

void feed_key(FedKeys& fed, Machine& m) {
    if (fed.keys.empty())
        return m.key_string.clear();
    fed.index += fed.read && fed.index < fed.keys.size() ? 1 : 0;
    fed.read = false;
    m.key_string = std::string_view(fed.keys).substr(fed.index, 1);
}

RunStatus tick_to_the_end(Simulator& s, const RunOptions& options, ShownLines& shown, Output& output) {
    Machine& m = s.machine;
    FedKeys fed{from_unicode(options.keys)};
    m.host.key_read = [&fed] { fed.read = true; };
    for (std::uint64_t tick = 0; !has_ended(m) && !output.failed; ++tick) {
        if (options.max_ticks && tick >= *options.max_ticks)
            return RUN_TICKS_USED;
        if (m.stmt_kind == KIND_INPUT_ERROR)
            prompt_again(m);
        if (m.stmt_kind == KIND_PROMPT && !enter_line(m, shown))
            return RUN_NO_INPUT;
        feed_key(fed, m);
        m.enter_request = 1;
        machine_tick(m); // without what a simulator's tick does for a keyboard and a picture
        follow_display(shown, m);
        if (!output.text.empty())
            write_output(output);
    }
    return m.error_code != ERROR_NONE ? RUN_ERROR : RUN_ENDED;
}

} // namespace

RunStatus run_listing(const RunOptions& options) {
    const auto simulator = std::make_unique<Simulator>();
    simulator->machine.host.milliseconds = milliseconds_since_epoch;
    if (!start_program(*simulator, options))
        return RUN_BAD_CALL;
    Output output;
    ShownLines shown;
    shown.write = [&output](std::string_view text) { add_output(output, text); };
    const RunStatus status = tick_to_the_end(*simulator, options, shown, output);
    finish_shown_lines(shown);
    write_output(output);
    if (status == RUN_ERROR)
        print_program_error(simulator->machine);
    if (!options.values.empty() && !write_saved_values(options.values, simulator->machine)) {
        print_error("cannot write the values to " + options.values);
        return status == RUN_ENDED ? RUN_BAD_CALL : status;
    }
    return status;
}

} // namespace quillon
