// SPDX-License-Identifier: MIT
// Where the simulator's files are: settings and saved values, the message catalogue, the desktop. The environment is
// handed in, so that these are plain questions with plain answers.
#pragma once

#include <string>
#include <string_view>

namespace quillon {

/// What the user's environment says; empty where it says nothing.
struct Environment {
    std::string home{};        ///< HOME, or the home directory of the user's account
    std::string config_home{}; ///< XDG_CONFIG_HOME
    std::string lc_all{};
    std::string lc_messages{};
    std::string lang{};
};

/// The environment of this program.
Environment read_environment();

/// The folder that this program lies in; empty when the system does not tell.
std::string program_folder();

/// The paths of the files that carry state from one run to the next, all in one folder.
struct DataFiles {
    std::string folder;
    std::string settings;
    std::string saved_values;
    std::string recent_listings;
};

/// The data files: in the program's own folder when a settings file lies there already, else in the user's folder for
/// configuration, which may not be there yet. Without a home they are in the program's folder too.
DataFiles find_data_files(const Environment& environment, const std::string& program);

/// Makes a folder, for the user alone, with those above it that are missing; false when it is not there afterwards.
bool create_folder(const std::string& folder);

/// The folder of the catalogues and other files that come with the program: `share/quillon` beside the program's folder
/// when it is installed, else `resources` of the tree that it was built in. Empty when there is neither.
std::string find_resources(const std::string& program);

/// The manual's first page: the installed one or the one of the build, else its source in the tree that the program was
/// built in. Empty when there is none.
std::string find_manual(const std::string& program);

/// The folder of the listings that come with the program, installed or of the tree; empty when there is none.
std::string find_examples(const std::string& program);

/// The user's language: "ja" for Japanese, "en" for any other.
std::string_view user_language(const Environment& environment);

/// The installed catalogue of a language, "en" or "ja"; whether it is there is not looked at.
std::string installed_catalogue(const std::string& resources, std::string_view language);

/// The message catalogue: `message.ini` in the working folder when there is one, else the catalogue of the user's
/// language (Japanese or English) in the folder of installed ones; whether that one is there is not looked at.
std::string find_catalogue(const Environment& environment, const std::string& installed,
                           const std::string& working = ".");

/// The user's desktop folder: as the user's folders are configured, else `Desktop`, else the home directory. Always a
/// folder that is there, save for a home that is not; empty when there is no home.
std::string desktop_folder(const Environment& environment);

} // namespace quillon
