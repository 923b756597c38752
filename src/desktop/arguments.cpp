// SPDX-License-Identifier: MIT
// Reading the command line.
#include "desktop/arguments.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <iostream>
#include <iterator>
#include <string_view>
#include <vector>

namespace quillon {
namespace {

// The toolkit takes its options with one dash or two.
constexpr std::string_view TOOLKIT_FLAGS[] = {"nograb", "dograb", "sync", "reverse", "widgetcount"};
constexpr std::string_view TOOLKIT_OPTIONS[] = {"display",
                                                "geometry",
                                                "icon",
                                                "platform",
                                                "platformpluginpath",
                                                "platformtheme",
                                                "plugin",
                                                "qwindowgeometry",
                                                "qwindowicon",
                                                "qwindowtitle",
                                                "session",
                                                "style",
                                                "stylesheet",
                                                "title"};

template <std::size_t N>
bool is_one_of(std::string_view name, const std::string_view (&names)[N]) {
    return std::find(std::begin(names), std::end(names), name) != std::end(names);
}

/// How many arguments a toolkit's option takes up, itself included; 0 for what is none.
int toolkit_arguments(std::string_view argument) {
    const std::size_t dashes = std::min(argument.find_first_not_of('-'), argument.size());
    if (dashes < 1 || dashes > 2)
        return 0;
    const std::string_view name = argument.substr(dashes, argument.find('=') - dashes);
    if (is_one_of(name, TOOLKIT_FLAGS))
        return 1;
    const bool has_value = argument.find('=') != std::string_view::npos;
    return is_one_of(name, TOOLKIT_OPTIONS) ? (has_value ? 1 : 2) : 0;
}

/// The arguments that are the program's own, the last one first, as the parser takes them.
std::vector<std::string> own_arguments(int argc, char** argv) {
    std::vector<std::string> own;
    bool options_end = false;
    for (int i = 1; i < argc; ++i) {
        const std::string_view argument = argv[i];
        const int skipped = options_end ? 0 : toolkit_arguments(argument);
        options_end = options_end || argument == "--";
        if (skipped == 0)
            own.emplace_back(argument);
        else
            i += skipped - 1;
    }
    std::reverse(own.begin(), own.end());
    return own;
}

} // namespace

std::optional<int> read_arguments(int argc, char** argv, Arguments& arguments) {
    CLI::App app("A simulated pocket computer that runs BASIC listings, in a window");
    app.name("quillon");
    app.set_version_flag("-v,--version", QUILLON_VERSION);
    app.add_option("LISTING", arguments.listing, "The listing to open (default: the one opened last)")
        ->option_text(" ");
    app.footer(
        "Without a graphical desktop, quillon-cli play is the same machine in a terminal.\n"
        "Exit status: 0 ended; 1 settings or variables could not be saved; 2 a wrong command line, or no display.");
    try {
        app.parse(own_arguments(argc, argv));
        return std::nullopt;
    } catch (const CLI::ParseError& error) {
        const bool is_wrong = app.exit(error) != 0;
        return is_wrong || !std::cout.flush() ? BAD_CALL : EXIT_SUCCESS;
    }
}

} // namespace quillon
