// SPDX-License-Identifier: MIT
// The files of the settings and of the saved values: written whole, read back, and kept where they are not understood.
#include "core/variables.h"
#include "files/settings_file.h"
#include "files/values_file.h"
#include "shell/saved_values.h"
#include "shell/settings.h"
#include "tests/files/failing_calls.h"
#include "tests/support/temporary_file.h"

#include <gtest/gtest.h>

#include <memory>

#include <sys/stat.h>

namespace quillon::testing {
namespace {

std::string image_of(const Machine& m) {
    const ValuesImage image = values_image(m);
    return {image.begin(), image.end()};
}

/// A machine whose A is 7.
std::unique_ptr<Machine> seven() {
    auto m = std::make_unique<Machine>();
    store_number(m->variables[0], 7);
    return m;
}

TEST(SettingsFile, KeepsAsideWhatItDoesNotUnderstand) {
    const TempFolder folder;
    const std::string path = folder / "QZ740.ini", usual = settings_text({});
    StoredSettings other;
    other.machine.zoom = 7;
    const std::string other_text = settings_text(other);
    EXPECT_TRUE(write_settings(path, other));
    EXPECT_EQ(get_file(path), other_text);
    const std::string foreign("[\0Q\0Z\0S\0]\0\n\0", 12), huge = usual + std::string(std::size_t{1} << 20, ';');
    std::size_t files = 0;
    for (const std::string& before : {other_text, foreign, huge}) {
        ++files;
        put_file(path, before);
        EXPECT_TRUE(write_settings(path, {}));
        EXPECT_EQ(get_file(path), usual);
        EXPECT_TRUE(files == 1 || get_file(path + (files == 2 ? ".bad" : ".bad1")) == before);
        EXPECT_EQ(folder.names().size(), files) << "the old one is kept where it is not understood";
    }
}

TEST(ValuesFile, BringsTheValuesBack) {
    const TempFolder folder;
    const std::string path = folder / "QZ740.val";
    const auto m = std::make_unique<Machine>(), back = std::make_unique<Machine>();
    store_string(m->variables[1], "HI");
    EXPECT_TRUE(write_saved_values(path, *m));
    store_number(back->variables[7], 7);
    read_values_image(*back, read_values_file(path));
    EXPECT_EQ(image_of(*back), image_of(*m));
    for (const std::size_t size : {std::size_t{0}, std::size_t{104}}) {
        std::filesystem::resize_file(path, size);
        EXPECT_TRUE(write_saved_values(path, *back));
    }
    EXPECT_EQ(folder.names().size(), 1U) << "nothing was lost";
    EXPECT_TRUE(read_values_image(*back, read_values_file(folder / "none")));
    EXPECT_EQ(back->variables[1].kind, CELL_UNASSIGNED);
}

TEST(ValuesFile, KeepsAsideWhatItDoesNotUnderstand) {
    const TempFolder folder;
    const std::string path = folder / "QZ740.val", laid_out = image_of(*seven());
    const auto m = std::make_unique<Machine>();
    const std::pair<const char*, std::string> foreign[] = {
        {".bad", laid_out + '\0'}, {".bad1", laid_out.substr(0, 11699) + '\1'}, {".bad2", "A shopping list\n"}};
    for (const auto& [kept, bytes] : foreign) {
        put_file(path, bytes);
        EXPECT_FALSE(read_values_image(*m, read_values_file(path)));
        EXPECT_TRUE(write_saved_values(path, *m));
        EXPECT_EQ(get_file(path), image_of(*m));
        EXPECT_EQ(get_file(path + kept), bytes);
    }
    EXPECT_TRUE(write_saved_values(path, *m));
    EXPECT_EQ(folder.names().size(), 4U);
}

TEST(ValuesFile, LeavesAloneWhatItCannotRead) {
    const TempFolder folder;
    ::chmod(folder.path.c_str(), 0777);
    const std::string path = folder / "QZ740.val";
    EXPECT_FALSE(run_as_a_user([&] {
        put_file(path, image_of(*seven()));
        ::chmod(path.c_str(), 0222);
        return write_saved_values(path, *std::make_unique<Machine>());
    }));
    ::chmod(path.c_str(), 0600);
    EXPECT_EQ(get_file(path), image_of(*seven()));
}

} // namespace
} // namespace quillon::testing
