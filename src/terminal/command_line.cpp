// Subcommands and their options.
#include "terminal/command_line.h"

#include "terminal/check_command.h"
#include "terminal/drive.h"
#include "terminal/lines.h"
#include "terminal/play.h"
#include "terminal/run.h"

#include <CLI/CLI.hpp>

#include <cstdio>
#include <iostream>

namespace quillon {
namespace {

constexpr int BAD_CALL = 2;

// The texts behind the names of options say what stands there, in place of CLI11's own.

void add_play(CLI::App& app, PlayOptions& options) {
    CLI::App* play = app.add_subcommand("play", "The whole machine in the terminal");
    play->add_option("LISTING", options.listing, "The listing to open (default: the one of the last time)")
        ->option_text(" ");
    play->add_option("--catalogue", options.catalogue, "Message catalogue (default: that of your language)")
        ->option_text("FILE");
    play->add_flag("--no-save", options.no_save, "Write no settings and no variables at the end");
    play->add_flag("--bell", options.bell, "Ring the terminal's bell for each tone");
    play->footer("F5 runs the program, Ctrl+C stops it, Ctrl+A chooses the level of the next key, Ctrl+Q leaves.\n"
                 "Exit status: 0 left; 2 no terminal to play on, or a wrong command line.");
}

void add_run_files(CLI::App& run, RunOptions& options) {
    run.add_option("--values", options.values, "File that variables are restored from and saved to")
        ->option_text("FILE");
    run.add_option("--catalogue", options.catalogue, "Message catalogue (default: that of your language)")
        ->option_text("FILE");
}

void add_run(CLI::App& app, RunOptions& options) {
    CLI::App* run = app.add_subcommand("run", "Run a listing and print what it shows");
    run->add_option("LISTING", options.listing, "The listing file")->required()->option_text(" ");
    run->add_option("--page", options.page, "Program area to run, 0 to 9 (default: the first in use)")
        ->check(CLI::Range(0, 9))
        ->option_text("AREA");
    run->add_option("--max-ticks", options.max_ticks, "Stop after this many ticks")
        ->check(CLI::NonNegativeNumber)
        ->option_text("N");
    run->add_option("--seed", options.seed, "Start value of the random generator")
        ->check(CLI::NonNegativeNumber)
        ->option_text("N");
    run->add_option("--keys", options.keys, "What KEY$ reads, a character each time")->option_text("TEXT");
    run->add_option("--settings", options.settings, "As in the settings file (may be repeated)")
        ->allow_extra_args(false)
        ->option_text("KEY=VALUE");
    add_run_files(*run, options);
    run->footer("INPUT takes lines of standard input.\n"
                "Exit status: 0 ended; 1 an error of the program; 2 a wrong command line, or a listing that does not\n"
                "load; 3 INPUT with no more input; 4 the limit of ticks reached.");
}

void add_check(CLI::App& app, CheckOptions& options) {
    CLI::App* check = app.add_subcommand("check", "Look for faults in listings without running them");
    check->add_option("LISTING...", options.listings, "The listing files; - is standard input")
        ->required()
        ->option_text(" ");
    check->add_flag("--json", options.json, "Report in JSON");
    check->footer(
        "Reports FILE:LINE:COLUMN: error: TEXT for what the machine refuses, or warning: for what is probably\n"
        "not meant. Exit status: 0 no error; 1 at least one error; 2 a listing that cannot be read, or a wrong\n"
        "command line.");
}

void add_drive(CLI::App& app) {
    CLI::App* drive = app.add_subcommand("drive", "Take commands, one a line, and answer each in JSON");
    drive->footer("Reads standard input until its end or the command quit. Exit status: 0; 2 a wrong command line.");
}

int drive() {
    DriveSession session;
    std::string line;
    while (!session.finished && read_line(stdin, line, DRIVE_LINE_MAX + 1)) {
        const std::optional<std::string> answer = drive_line(session, line);
        if (answer && (std::fprintf(stdout, "%s\n", answer->c_str()) < 0 || std::fflush(stdout) != 0))
            break;
    }
    return 0;
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
    add_play(app, play_options);
    add_run(app, run_options);
    add_check(app, check_options);
    add_drive(app);
    try {
        app.parse(argc, argv);
    } catch (const CLI::ParseError& error) {
        return app.exit(error) == 0 ? 0 : BAD_CALL;
    }
    if (app.got_subcommand("play"))
        return play(play_options);
    if (app.got_subcommand("check"))
        return check_listings(check_options);
    return app.got_subcommand("run") ? run_listing(run_options) : drive();
}

} // namespace quillon
