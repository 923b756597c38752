// SPDX-License-Identifier: MIT
// The rules for finding folders: XDG base directories, user directories, locale names.
#include "files/places.h"

#include "files/file_reading.h"
#include "shell/profile.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdlib>
#include <filesystem>
#include <optional>
#include <string_view>

#include <pwd.h>
#include <sys/stat.h>
#include <unistd.h>

namespace quillon {
namespace {

namespace fs = std::filesystem;

constexpr const char* SETTINGS_NAME = "QZ740.ini";
constexpr const char* SAVED_VALUES_NAME = "QZ740.val";
constexpr const char* RECENT_NAME = "recent.txt";
constexpr const char* FOLDER_NAME = "quillon";

bool is_file(const fs::path& path) {
    std::error_code fault;
    return fs::is_regular_file(path, fault);
}

bool is_folder(const fs::path& path) {
    std::error_code fault;
    return fs::is_directory(path, fault);
}

bool is_absolute(std::string_view path) { return path.starts_with('/'); }

std::string variable(const char* name) {
    const char* value = std::getenv(name);
    return value != nullptr ? value : "";
}

std::string home_of_account() {
    std::array<char, 4096> buffer{};
    passwd account{};
    passwd* found = nullptr;
    ::getpwuid_r(::getuid(), &account, buffer.data(), buffer.size(), &found);
    return found != nullptr && found->pw_dir != nullptr ? found->pw_dir : "";
}

/// The folder above the folders of programs' configurations; empty without a home. Relative paths are no answer.
std::string config_home(const Environment& environment) {
    if (is_absolute(environment.config_home))
        return environment.config_home;
    return is_absolute(environment.home) ? environment.home + "/.config" : "";
}

DataFiles data_files_in(const fs::path& folder) {
    return {folder.string(), (folder / SETTINGS_NAME).string(), (folder / SAVED_VALUES_NAME).string(),
            (folder / RECENT_NAME).string()};
}

/// The text within double quotes at the start of `value`, where a backslash stands before a character that is meant as
/// it stands; nothing when it is not closed.
std::optional<std::string> quoted_text(std::string_view value) {
    if (!value.starts_with('"'))
        return std::nullopt;
    std::string text;
    for (std::size_t i = 1; i < value.size(); ++i) {
        if (value[i] == '"')
            return text;
        if (value[i] == '\\')
            ++i;
        if (i < value.size())
            text += value[i];
    }
    return std::nullopt;
}

/// The folder that one line of the user's folders names for the desktop; nothing in any other line.
std::optional<std::string> desktop_in_line(std::string_view line, const std::string& home) {
    constexpr std::string_view KEY = "XDG_DESKTOP_DIR";
    constexpr std::string_view HOME = "$HOME";
    const std::string_view content = without_blanks(line);
    const std::size_t equals = content.find('=');
    if (equals == std::string_view::npos || without_blanks(content.substr(0, equals)) != KEY)
        return std::nullopt;
    std::optional<std::string> folder = quoted_text(without_blanks(content.substr(equals + 1)));
    if (!folder || is_absolute(*folder))
        return folder;
    const std::string_view rest = std::string_view(*folder).substr(std::min(HOME.size(), folder->size()));
    if (!folder->starts_with(HOME) || !(rest.empty() || is_absolute(rest)))
        return std::nullopt;
    return home + std::string(rest);
}

/// The desktop as the user's folders are configured; as in a shell script the last line counts.
std::optional<std::string> configured_desktop(const Environment& environment) {
    constexpr std::size_t FILE_MAX = std::size_t{1} << 16;
    const std::string text = read_whole_file(config_home(environment) + "/user-dirs.dirs", FILE_MAX).value_or("");
    std::optional<std::string> desktop;
    for (std::size_t begin = 0; begin < text.size();) {
        const std::size_t end = std::min(text.find('\n', begin), text.size());
        if (auto named = desktop_in_line(std::string_view(text).substr(begin, end - begin), environment.home))
            desktop = std::move(named);
        begin = end + 1;
    }
    return desktop;
}

/// The first of these files in the program's folder or one above it; a build tree lies below the sources. Empty when
/// there is none.
fs::path find_above(const fs::path& program, std::initializer_list<const char*> files) {
    constexpr int LEVELS = 6;
    fs::path folder = program;
    for (int level = 0; level < LEVELS; ++level, folder = folder.parent_path()) {
        for (const char* file : files) {
            if (is_file(folder / file))
                return folder / file;
        }
    }
    return {};
}

} // namespace

Environment read_environment() {
    Environment environment{variable("HOME"), variable("XDG_CONFIG_HOME"), variable("LC_ALL"), variable("LC_MESSAGES"),
                            variable("LANG")};
    if (environment.home.empty())
        environment.home = home_of_account();
    return environment;
}

std::string program_folder() {
    std::error_code fault;
    return fs::read_symlink("/proc/self/exe", fault).parent_path().string();
}

DataFiles find_data_files(const Environment& environment, const std::string& program) {
    const std::string config = config_home(environment);
    const bool is_portable = !program.empty() && is_file(fs::path(program) / SETTINGS_NAME);
    if (is_portable || config.empty())
        return data_files_in(program);
    return data_files_in(fs::path(config) / FOLDER_NAME);
}

bool create_folder(const std::string& folder) {
    constexpr mode_t FOR_THE_USER_ALONE = 0700;
    fs::path path;
    for (const fs::path& part : fs::path(folder)) {
        path /= part;
        if (!is_folder(path) && ::mkdir(path.c_str(), FOR_THE_USER_ALONE) != 0 && errno != EEXIST)
            return false;
    }
    return is_folder(path);
}

std::string find_resources(const std::string& program) {
    const fs::path found = find_above(program, {"share/quillon/message.en.ini", "resources/message.en.ini"});
    return found.parent_path().string();
}

std::string find_manual(const std::string& program) {
    return find_above(program, {"share/quillon/manual/index.html", "docs/index.md"}).string();
}

std::string find_examples(const std::string& program) {
    return find_above(program, {"share/quillon/examples/primes.bas", "examples/primes.bas"}).parent_path().string();
}

/// The first variable that says something decides.
std::string_view user_language(const Environment& environment) {
    const std::array<std::string_view, 3> names = {environment.lc_all, environment.lc_messages, environment.lang};
    const auto* name =
        std::find_if(names.begin(), names.end(), [](std::string_view candidate) { return !candidate.empty(); });
    const bool is_japanese = name != names.end() && name->substr(0, name->find_first_of("_.@")) == "ja";
    return is_japanese ? "ja" : "en";
}

std::string installed_catalogue(const std::string& resources, std::string_view language) {
    return (fs::path(resources) / ("message." + std::string(language) + ".ini")).string();
}

std::string find_catalogue(const Environment& environment, const std::string& installed, const std::string& working) {
    const fs::path own = fs::path(working) / "message.ini";
    if (is_file(own))
        return own.string();
    return installed_catalogue(installed, user_language(environment));
}

std::string desktop_folder(const Environment& environment) {
    const std::string standard = environment.home + "/Desktop";
    for (const std::string& folder : {configured_desktop(environment).value_or(standard), standard}) {
        if (is_absolute(folder) && is_folder(folder))
            return folder;
    }
    return environment.home;
}

} // namespace quillon
