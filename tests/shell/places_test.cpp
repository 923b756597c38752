// Where files are looked for, by what the environment says and what is there.
#include "shell/places.h"

#include "tests/support/temporary_file.h"

#include <gtest/gtest.h>

#include <sys/stat.h>

namespace quillon {
namespace {

using testing::put_file;
using testing::TempFolder;

TEST(Places, DataFilesByTheUsersConfiguration) {
    struct Row {
        const char* home;
        const char* config_home;
        const char* folder;
    };
    const Row rows[] = {
        {"/users/me", "", "/users/me/.config/quillon"},
        {"/users/me", "/cfg", "/cfg/quillon"},
        {"/users/me", "relative", "/users/me/.config/quillon"},
        {"", "/cfg", "/cfg/quillon"},
        {"", "", "/nowhere/bin"},
        {"relative", "", "/nowhere/bin"},
    };
    for (const Row& row : rows) {
        const DataFiles files = find_data_files({.home = row.home, .config_home = row.config_home}, "/nowhere/bin");
        EXPECT_EQ(files.folder, row.folder);
        EXPECT_EQ(files.settings, row.folder + std::string("/QZ740.ini"));
        EXPECT_EQ(files.saved_values, row.folder + std::string("/QZ740.val"));
        EXPECT_EQ(files.recent_listings, row.folder + std::string("/recent.txt"));
    }
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

TEST(Places, CatalogueByLanguage) {
    struct Row {
        const char *lc_all, *lc_messages, *lang, *name;
    };
    const Row rows[] = {
        {"", "", "", "message.en.ini"},
        {"", "", "ja_JP.UTF-8", "message.ja.ini"},
        {"", "", "ja", "message.ja.ini"},
        {"", "ja.eucJP", "de_DE.UTF-8", "message.ja.ini"},
        {"C", "ja_JP", "ja_JP", "message.en.ini"},
        {"ja@x", "C", "C", "message.ja.ini"},
        {"", "", "jam_JM", "message.en.ini"},
        {"", "en_GB", "ja_JP", "message.en.ini"},
    };
    const TempFolder working;
    for (const Row& row : rows) {
        const Environment environment{.lc_all = row.lc_all, .lc_messages = row.lc_messages, .lang = row.lang};
        EXPECT_EQ(find_catalogue(environment, "/share/q", working.path), std::string("/share/q/") + row.name);
    }
    put_file(working / "message.ini", "");
    EXPECT_EQ(find_catalogue({.lang = "ja"}, "/share/q", working.path), working / "message.ini");
}

TEST(Places, InstalledFilesAndThoseOfATree) {
    struct Row {
        const char *file, *program, *resources, *manual, *examples;
    };
    const Row rows[] = {
        {"share/quillon/message.en.ini", "bin", "share/quillon", "", ""},
        {"share/quillon/manual/index.html", "bin", "", "share/quillon/manual/index.html", ""},
        {"share/quillon/examples/primes.bas", "bin", "", "", "share/quillon/examples"},
        {"resources/message.en.ini", "build/x/src/desktop", "resources", "", ""},
        {"docs/index.md", "build/x/src/desktop", "", "docs/index.md", ""},
        {"examples/primes.bas", "build/x/src/desktop", "", "", "examples"},
    };
    for (const Row& row : rows) {
        const TempFolder root;
        const auto absolute = [&](const char* path) { return *path == '\0' ? "" : root / path; };
        EXPECT_TRUE(create_folder(std::filesystem::path(root / row.file).parent_path().string()));
        put_file(root / row.file, "");
        EXPECT_EQ(find_resources(root / row.program), absolute(row.resources)) << row.file;
        EXPECT_EQ(find_manual(root / row.program), absolute(row.manual)) << row.file;
        EXPECT_EQ(find_examples(root / row.program), absolute(row.examples)) << row.file;
    }
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
    EXPECT_TRUE(std::filesystem::exists(program_folder() + "/shell_tests")) << program_folder();
}

} // namespace
} // namespace quillon
