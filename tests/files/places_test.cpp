// SPDX-License-Identifier: MIT
// Where files are looked for, by what the environment says and what is there (places.txt).
#include "files/places.h"

#include "tests/support/cases_file.h"
#include "tests/support/temporary_file.h"

#include <gtest/gtest.h>

#include <map>
#include <sstream>

#include <sys/stat.h>

namespace quillon::testing {
namespace {

Environment environment_of(const std::string& assignments) {
    std::map<std::string, std::string> values;
    std::istringstream words(assignments);
    for (std::string word; words >> word;)
        values[word.substr(0, word.find('='))] = word.substr(word.find('=') + 1);
    return {values["HOME"], values["XDG_CONFIG_HOME"], values["LC_ALL"], values["LC_MESSAGES"], values["LANG"]};
}

std::string folder_of_data_files(const FileCase& row) {
    const DataFiles files = find_data_files(environment_of(row.input), "/nowhere/bin");
    EXPECT_EQ(files.settings, files.folder + "/QZ740.ini");
    EXPECT_EQ(files.saved_values, files.folder + "/QZ740.val");
    EXPECT_EQ(files.recent_listings, files.folder + "/recent.txt");
    return files.folder;
}

std::string places_of_program(const FileCase& row) {
    const std::string program = row.input.substr(0, row.input.find(' '));
    const std::string file = row.input.substr(program.size() + 1);
    const TempFolder root;
    const auto inside = [&](const std::string& path) { return path.substr(path.empty() ? 0 : root.path.size() + 1); };
    EXPECT_TRUE(create_folder(std::filesystem::path(root / file).parent_path().string()));
    put_file(root / file, "");
    const std::string at = root / program;
    return inside(find_resources(at)) + "," + inside(find_manual(at)) + "," + inside(find_examples(at));
}

TEST(Places, AreFoundByTheEnvironmentAndByWhatIsThere) {
    const TempFolder working;
    const auto catalogue_of = [&](const FileCase& row) {
        return find_catalogue(environment_of(row.input), "/share/q", working.path);
    };
    expect_cases("files/places.txt",
                 {{"data files", folder_of_data_files}, {"catalogue", catalogue_of}, {"program", places_of_program}});
    put_file(working / "message.ini", "");
    EXPECT_EQ(find_catalogue({.lang = "ja"}, "/share/q", working.path), working / "message.ini");
}

TEST(Places, ABuildFolderIsLaidOutAsWhenInstalled) {
    EXPECT_TRUE(find_resources(program_folder()).ends_with("/share/quillon"));
    const std::string catalogue = find_catalogue({.lang = "ja"}, find_resources(program_folder()));
    EXPECT_TRUE(std::filesystem::is_regular_file(catalogue)) << catalogue;
}

TEST(Places, DataFilesBesideTheProgramWhenTheyAreThere) {
    const TempFolder program;
    const Environment environment{.home = "/users/me"};
    put_file(program / "QZ740.val", "");
    EXPECT_EQ(find_data_files(environment, program.path).folder, "/users/me/.config/quillon");
    put_file(program / "QZ740.ini", "");
    EXPECT_EQ(find_data_files(environment, program.path).saved_values, program / "QZ740.val");
}

TEST(Places, FoldersAreMadeForTheUserAlone) {
    const TempFolder home;
    const std::string folder = home / "a/b/quillon";
    EXPECT_TRUE(create_folder(folder));
    EXPECT_TRUE(create_folder(folder + "/"));
    struct stat made {};
    EXPECT_EQ(::stat((home / "a").c_str(), &made), 0);
    EXPECT_EQ(made.st_mode & 0777, 0700U);
    put_file(home / "file", "");
    EXPECT_FALSE(create_folder(home / "file/quillon"));
    EXPECT_FALSE(create_folder(""));
}

TEST(Places, Desktop) {
    const TempFolder home;
    const Environment environment{.home = home.path};
    const auto configure = [&](const std::string& lines) {
        put_file(home / ".config/user-dirs.dirs", lines);
        return desktop_folder(environment);
    };
    EXPECT_EQ(desktop_folder(environment), home.path);
    for (const char* name : {".config", "Desktop", "Table \"1\""})
        EXPECT_TRUE(create_folder(home / name));
    EXPECT_EQ(desktop_folder(environment), home / "Desktop");
    const std::string table = home / "Table \"1\"";
    EXPECT_EQ(configure("XDG_MUSIC_DIR=\"$HOME\"\n XDG_DESKTOP_DIR = \"$HOME/Table \\\"1\\\"\" \r\n"), table);
    EXPECT_EQ(configure("XDG_DESKTOP_DIR=\"" + home.path + "/Table \\\"1\\\"\""), table);
    EXPECT_EQ(configure("XDG_DESKTOP_DIR=\"$HOME/Desktop\"\nXDG_DESKTOP_DIR=\"$HOME\"\n"), home.path);
    for (const char* useless : {"#XDG_DESKTOP_DIR=\"$HOME\"", "XDG_DESKTOP_DIR=\"$HOME", "XDG_DESKTOP_DIR=$HOME",
                                "XDG_DESKTOP_DIR=\"$HOMEx\"", "XDG_DESKTOP_DIR=\"relative\"",
                                "XDG_DESKTOP_DIR=\"$HOME/gone\"", "XDG_DESKTOP_DIR=\"$HOME/\\", "=", "XDG_DESKTOP_DIR"})
        EXPECT_EQ(configure(useless), home / "Desktop") << useless;
    EXPECT_EQ(desktop_folder({}), "");
}

TEST(Places, OfThisProgram) {
    EXPECT_FALSE(read_environment().home.empty());
    EXPECT_TRUE(std::filesystem::exists(program_folder() + "/files_tests")) << program_folder();
}

} // namespace
} // namespace quillon::testing
