// Running a listing to its end, with EXE held down.
#include "terminal/run.h"

#include "core/charset.h"
#include "core/listing.h"
#include "shell/catalogue.h"
#include "shell/commands.h"
#include "shell/simulator.h"
#include "terminal/shown_lines.h"

#include <chrono>
#include <cstdio>
#include <memory>

namespace quillon {
namespace {

/// Standard output, until it fails.
struct Output {
    bool failed = false;
};

void write_output(Output& output, std::string_view machine_text) {
    std::string text;
    for (const char c : machine_text) // a line feed is the end of a line; all else is the machine's
        text += c == '\n' ? std::string_view("\n") : unicode_of(as_byte(c));
    const bool written = std::fwrite(text.data(), 1, text.size(), stdout) == text.size() && std::fflush(stdout) == 0;
    output.failed = output.failed || !written;
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

/// Loads catalogue and listing and starts the program; false, with a message, when that cannot be.
bool start_program(Simulator& s, const RunOptions& options) {
    Machine& m = s.machine;
    if (!options.catalogue.empty()) {
        auto catalogue = read_catalogue(options.catalogue);
        if (!catalogue) {
            print_error("cannot read the catalogue " + options.catalogue);
            return false;
        }
        m.catalogue = std::move(*catalogue);
    }
    if (load_listing(m, options.listing) != LoadResult::LOADED) {
        print_error(options.listing + ": the listing does not load: " + with_plain_line_ends(m.system_message));
        return false;
    }
    if (options.seed)
        m.random_seed = *options.seed;
    int page = options.page.value_or(0);
    while (!options.page && page < AREA_COUNT - 1 && area_is_empty(m, page))
        ++page;
    select_page(m, page);
    host_run(m);
    return true;
}

bool has_ended(const Machine& m) {
    const bool under_way = m.run_state == STATE_RUN || m.run_state == STATE_PRINT_WAIT ||
                           m.run_state == STATE_STOPPED || m.run_state == STATE_INPUT;
    return !under_way;
}

RunStatus tick_to_the_end(Simulator& s, const RunOptions& options, ShownLines& shown, const Output& output) {
    Machine& m = s.machine;
    for (std::uint64_t tick = 0; !has_ended(m) && !output.failed; ++tick) {
        if (options.max_ticks && tick >= *options.max_ticks)
            return RUN_TICKS_USED;
        m.enter_request = 1;
        simulator_tick(s);
        follow_display(shown, m);
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
    shown.write = [&output](std::string_view text) { write_output(output, text); };
    const RunStatus status = tick_to_the_end(*simulator, options, shown, output);
    finish_shown_lines(shown);
    if (status == RUN_ERROR)
        print_program_error(simulator->machine);
    return status;
}

} // namespace quillon
