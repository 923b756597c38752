// SPDX-License-Identifier: MIT
// Subcommands and their options.
#include "terminal/command_line.h"

#include "files/host_disk.h"
#include "protocols/drive.h"
#include "session/session_file.h"
#include "terminal/check_command.h"
#include "terminal/lines.h"
#include "terminal/play.h"
#include "terminal/printing.h"
#include "terminal/replay_command.h"
#include "terminal/run.h"

#include <CLI/CLI.hpp>

#include <charconv>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <optional>
#include <sstream>

namespace quillon {
namespace {

constexpr int BAD_CALL = 2;

/// Adds an option that takes a whole number from 0 to `most`. CLI11's own numbers may be octal, and what does not fit
/// becomes the nearest that does.
template <class Number>
CLI::Option* add_number(CLI::App& app, const char* name, std::optional<Number>& number, Number most,
                        const char* description) {
    const auto take = [name, &number, most](const std::string& text) {
        Number value = 0;
        const char* end = text.data() + text.size();
        const auto [rest, fault] = std::from_chars(text.data(), end, value);
        if (fault != std::errc() || rest != end || value < 0 || value > most)
            throw CLI::ValidationError(name, text + " is not a whole number from 0 to " + std::to_string(most));
        number = value;
    };
    return app.add_option_function<std::string>(name, take, description);
}

// The texts behind the names of options say what stands there, in place of CLI11's own.

void add_play(CLI::App& app, PlayOptions& options) {
    CLI::App* play = app.add_subcommand("play", "The whole machine in the terminal");
    play->add_option("LISTING", options.listing, "The listing to open (default: the one of the last time)")
        ->option_text(" ");
    play->add_option("--catalogue", options.catalogue, "Message catalogue (default: that of your language)")
        ->type_name("FILE");
    play->add_flag("--no-save", options.no_save, "Write no settings and no variables at the end");
    play->add_flag("--text", options.text, "Show the display as a line of text, as screen readers need it");
    play->add_flag("--bell", options.bell, "Ring the terminal's bell for each tone");
    play->footer(
        "F5 runs the program, Ctrl+C stops it, Ctrl+A chooses the level of the next key, Ctrl+Q leaves.\n"
        "Exit status: 0 left; 1 left, but something could not be saved; 2 a wrong command line, a listing that\n"
        "cannot be opened, or no terminal to play on.");
}

void add_run_files(CLI::App& run, RunOptions& options) {
    run.add_option("--record", options.record, "Session file to write, for replay")->type_name("FILE");
    run.add_option("--values", options.values, "File that variables are restored from and saved to")->type_name("FILE");
    run.add_option("--catalogue", options.catalogue, "Message catalogue (default: that of your language)")
        ->type_name("FILE");
}

void add_run(CLI::App& app, RunOptions& options) {
    CLI::App* run = app.add_subcommand("run", "Run a listing and print what it shows");
    run->add_option("LISTING", options.listing, "The listing file; - is standard input")->required()->option_text(" ");
    add_number(*run, "--page", options.page, 9, "Program area to run, 0 to 9 (default: the first in use)")
        ->type_name("AREA");
    add_number(*run, "--max-ticks", options.max_ticks, UINT64_MAX, "Stop after this many ticks")->type_name("N");
    add_number(*run, "--seed", options.seed, UINT32_MAX, "Start value of the random generator")->type_name("N");
    run->add_option("--keys", options.keys, "What KEY$ reads, a character each time")->type_name("TEXT");
    run->add_flag("--echo", options.echo, "Print what INPUT reads, after its prompt");
    run->add_option("--settings", options.settings, "As in the settings file (may be repeated)")
        ->allow_extra_args(false)
        ->option_text("KEY=VALUE");
    add_run_files(*run, options);
    run->footer(
        "INPUT takes lines of standard input.\n"
        "Exit status: 0 ended; 1 an error of the program; 2 a wrong command line, a listing that does not load,\n"
        "or output that cannot be written; 3 INPUT with no more input; 4 the limit of ticks reached.");
}

void add_check(CLI::App& app, CheckOptions& options) {
    CLI::App* check = app.add_subcommand("check", "Look for faults in listings without running them");
    check->add_option("LISTING...", options.listings, "The listing files; - is standard input")
        ->required()
        ->option_text(" ");
    check->add_flag("--json", options.json, "Report in JSON");
    check->footer(
        "Reports FILE:LINE:COLUMN: error: TEXT for what the machine refuses, or warning: for what is probably\n"
        "not meant. Exit status: 0 no error; 1 at least one error; 2 a wrong command line, a listing that cannot\n"
        "be read, or output that cannot be written.");
}

void add_replay(CLI::App& app, ReplayOptions& options) {
    CLI::App* replay = app.add_subcommand("replay", "Go through a recorded session once more");
    replay->add_option("FILE", options.file, "The session file")->required()->option_text(" ");
    add_number(*replay, "--until", options.until, SESSION_TICKS_MAX, "Stop after this tick")->type_name("TICK");
    replay->add_flag("--lcd", options.lcd, "Print what the display shows at the end");
    replay->footer(
        "Says \"verified\" when the machine went the same way, else the first tick at which the display, the state,\n"
        "a tone or an error code differs. Exit status: 0 verified; 1 it differs; 2 a wrong command line, a file\n"
        "that cannot be read, or output that cannot be written.");
}

void add_drive(CLI::App& app) {
    CLI::App* drive = app.add_subcommand("drive", "Take commands, one a line, and answer each in JSON");
    drive->footer("Reads standard input until its end or the command quit.\n"
                  "Exit status: 0; 2 a wrong command line, or output that cannot be written.");
}

/// What is wrong with a call. CLI11 misses a subcommand before it looks at the words that are there.
std::string fault_of(const CLI::App& app, const CLI::ParseError& error, const std::string& first_word) {
    if (first_word.empty())
        return "a command is required: play, run, check, replay or drive";
    const auto is_named = [&first_word](const CLI::App* command) { return command->get_name() == first_word; };
    if (!app.get_subcommands(is_named).empty())
        return error.what();
    const std::string name = "\"" + first_word + "\"";
    std::error_code fault;
    if (first_word[0] == '-')
        return name + " is not an option; see quillon-cli --help";
    if (std::filesystem::path(first_word).has_extension() || std::filesystem::is_regular_file(first_word, fault))
        return name + " is not a command; to run a listing: quillon-cli run " + first_word;
    return name + " is not a command; the commands are play, run, check, replay and drive";
}

int drive() {
    DriveSession session(host_disk());
    std::string line;
    while (!session.finished && read_line(stdin, line, DRIVE_LINE_MAX + 1)) {
        const std::optional<std::string> answer = drive_line(session, line);
        if (answer && !write_output(*answer + "\n"))
            break;
    }
    if (std::ferror(stdin) != 0) {
        print_error("cannot read the commands");
        return BAD_CALL;
    }
    return status_with_output(0);
}

} // namespace

int run_command_line(int argc, char** argv) {
    CLI::App app("Listings of a simulated pocket computer: play, run, check and drive them");
    app.name("quillon-cli");
    app.set_version_flag("--version", QUILLON_VERSION);
    app.require_subcommand(1);
    PlayOptions play_options;
    RunOptions run_options;
    CheckOptions check_options;
    ReplayOptions replay_options;
    add_play(app, play_options);
    add_run(app, run_options);
    add_check(app, check_options);
    add_replay(app, replay_options);
    add_drive(app);
    try {
        app.parse(argc, argv);
    } catch (const CLI::Success& request) { // --help or --version
        std::ostringstream text;
        app.exit(request, text, text);
        write_output(text.str());
        return status_with_output(0);
    } catch (const CLI::ParseError& error) {
        print_error(fault_of(app, error, argc > 1 ? argv[1] : ""));
        return BAD_CALL;
    }
    if (app.got_subcommand("play"))
        return play(play_options);
    if (app.got_subcommand("check"))
        return check_listings(check_options);
    if (app.got_subcommand("replay"))
        return replay_file(replay_options);
    return app.got_subcommand("run") ? run_listing(run_options) : drive();
}

} // namespace quillon
