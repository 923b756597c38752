// Subcommands and their options.
#include "terminal/command_line.h"

#include "terminal/drive.h"
#include "terminal/lines.h"
#include "terminal/run.h"

#include <CLI/CLI.hpp>

#include <cstdio>
#include <iostream>

namespace quillon {
namespace {

constexpr int BAD_CALL = 2;

void add_run(CLI::App& app, RunOptions& options) {
    CLI::App* run = app.add_subcommand("run", "Run a listing and print what it shows");
    run->add_option("listing", options.listing, "The listing file")->required();
    run->add_option("--page", options.page, "Program area to run (default: the first in use)")->check(CLI::Range(0, 9));
    run->add_option("--max-ticks", options.max_ticks, "Stop after this many ticks")->check(CLI::NonNegativeNumber);
    run->add_option("--seed", options.seed, "Start value of the random generator")->check(CLI::NonNegativeNumber);
    run->add_option("--keys", options.keys, "What KEY$ reads, a character each time");
    run->add_option("--settings", options.settings, "KEY=VALUE, as in the settings file (may be repeated)")
        ->allow_extra_args(false);
    run->add_option("--values", options.values, "File that variables are restored from and saved to");
    run->add_option("--catalogue", options.catalogue, "Message catalogue (default: that of your language)");
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
    CLI::App app("Runs and drives listings of a simulated pocket computer");
    app.name("quillon-cli");
    app.set_version_flag("--version", QUILLON_VERSION);
    app.require_subcommand(1);
    RunOptions run_options;
    add_run(app, run_options);
    const CLI::App* drive_command =
        app.add_subcommand("drive", "Take commands from standard input, one a line, and answer each in JSON");
    try {
        app.parse(argc, argv);
    } catch (const CLI::ParseError& error) {
        return app.exit(error) == 0 ? 0 : BAD_CALL;
    }
    return drive_command->parsed() ? drive() : run_listing(run_options);
}

} // namespace quillon
