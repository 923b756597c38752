// SPDX-License-Identifier: MIT
// Whole files or none: after a kill at any system call, after any call that fails, and with several writers at once.
#include "files/safe_write.h"

#include "core/machine.h"
#include "files/settings_file.h"
#include "files/values_file.h"
#include "shell/saved_values.h"
#include "shell/settings.h"
#include "tests/files/failing_calls.h"
#include "tests/support/temporary_file.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <cstring>
#include <functional>
#include <map>
#include <memory>
#include <vector>

#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

namespace quillon::testing {
namespace {

using Names = std::set<std::string>;

constexpr const char* NO_FILE = "(none)";
const std::string OLD = "the old file";
const std::string NEW(20000, 'n');

/// A way to write the file "file", which holds OLD before where `is_there`.
struct Way {
    const char* what;
    bool is_there;
    std::function<bool(const std::string& file, const TempFolder&)> write_file;
    std::string bytes = NEW;

    bool write(const TempFolder& folder) const { return write_file(folder / "file", folder); }
};

std::vector<Way> ways() {
    const auto new_file = [](const std::string& file, const TempFolder& f) {
        return write_new_file({f / "taken", file, f / "spare"}, NEW) == NewFile::WRITTEN;
    };
    return {{"new", false, [](const auto& file, auto&) { return safe_write(file, NEW); }},
            {"in place of an old one", true, [](const auto& file, auto&) { return safe_write(file, NEW); }},
            {"and the old one kept", true, [](const auto& file, auto&) { return safe_write_keeping_old(file, NEW); }},
            {"under a free name", false, new_file}};
}

void prepare(const TempFolder& folder, const Way& way) {
    put_file(folder / "taken", OLD);
    if (!way.is_there)
        return;
    put_file(folder / "file", OLD);
    ::chmod((folder / "file").c_str(), 0640);
}

/// Looks that nothing was lost: the old file is whole, at its place or kept, or the new one is whole.
void expect_whole(const TempFolder& folder, const Way& way) {
    const std::string file = get_file(folder / "file");
    const bool old_is_kept = get_file(folder / "file.bad") == OLD;
    EXPECT_TRUE(file == way.bytes || file == (way.is_there ? OLD : NO_FILE) || (file == NO_FILE && old_is_kept))
        << file.substr(0, 20) << ' ' << file.size();
    EXPECT_EQ(get_file(folder / "taken"), OLD);
}

/// The files that are written in these ways.
std::vector<Way> ways_of_files() {
    const auto machine = std::make_shared<Machine>();
    const auto image = values_image(*machine);
    return {{"settings", true, [](const auto& file, auto&) { return write_settings(file, {}); }, settings_text({})},
            {"values", true, [machine](const auto& file, auto&) { return write_saved_values(file, *machine); },
             std::string(image.begin(), image.end())}};
}

Names leftovers(const TempFolder& folder) {
    Names names = folder.names();
    std::erase_if(names, [](const std::string& name) { return !name.starts_with(".quillon-"); });
    return names;
}

TEST(SafeWrite, SurvivesBeingKilledAtAnyCall) {
    std::vector<Way> all = ways();
    for (Way& way : ways_of_files())
        all.push_back(std::move(way));
    for (const Way& way : all) {
        int stop = 0;
        for (bool killed = true; killed; ++stop) {
            SCOPED_TRACE(way.what + std::string(", stop ") + std::to_string(stop));
            const TempFolder folder;
            prepare(folder, way);
            killed = run_and_kill([&] { way.write(folder); }, stop);
            expect_whole(folder, way);
            EXPECT_TRUE(killed || get_file(folder / "file") == way.bytes);
            EXPECT_TRUE(way.write(folder));
            EXPECT_EQ(leftovers(folder), Names()) << "the next write clears up";
        }
        EXPECT_GT(stop, 16) << "too few to be all";
    }
}

/// One run with one fault; false when it did not come, for want of so many calls.
bool write_with_fault(const Way& way, const Fault& fault) {
    const TempFolder folder;
    prepare(folder, way);
    bool written = false;
    const std::string failed = run_with_fault(fault, [&] { written = way.write(folder); });
    SCOPED_TRACE(way.what + std::string(", ") + std::strerror(fault.error) + " at " + failed + ", call " +
                 std::to_string(fault.at) + (fault.lasts ? " and later" : ""));
    expect_whole(folder, way);
    if (written || (way.is_there && get_file(folder / "file.bad") == NO_FILE)) {
        EXPECT_EQ(get_file(folder / "file"), written ? NEW : OLD);
    }
    EXPECT_TRUE(fault.lasts || failed == "unlink" || leftovers(folder).empty());
    // After the file has its name nothing can fail any more, and a link that cannot be made is done without.
    const Names harmless = {"", "open folder", "fsync folder", "close folder", "link", "lstat", "unlink"};
    EXPECT_TRUE(written ? harmless.contains(failed) : !failed.empty());
    return !failed.empty();
}

TEST(SafeWrite, SurvivesEveryFaultOfEveryCall) {
    for (const Way& way : ways()) {
        for (const int error : {ENOSPC, EIO, EACCES}) {
            for (const bool lasts : {false, true}) {
                int at = 1;
                while (write_with_fault(way, {at, error, lasts}))
                    ++at;
                EXPECT_GT(at, 6);
            }
        }
    }
}

TEST(SafeWrite, GoesOnAfterShortWritesAndSignals) {
    for (const Way& way : ways()) {
        for (const int error : {0, EINTR}) {
            int at = 1;
            for (std::string failed = "open"; !failed.empty(); ++at) {
                const TempFolder folder;
                prepare(folder, way);
                bool written = false;
                failed = run_with_fault({at, error, false}, [&] { written = way.write(folder); });
                EXPECT_TRUE(written) << way.what << ", " << failed;
                EXPECT_EQ(get_file(folder / "file"), NEW);
            }
            EXPECT_GT(at, 10);
        }
    }
}

TEST(SafeWrite, RemovesNothingThatIsStillWrittenOrNotItsOwn) {
    const TempFolder folder;
    const Names others = {".quillon-1-0", ".quillon-", ".quillon-x-0", ".quillon-2147483647", "quillon-2147483647-0"};
    for (const std::string& name : others)
        put_file(folder / name, OLD);
    std::filesystem::create_directory(folder / ".quillon-2147483647-1");
    put_file(folder / ".quillon-2147483647-0", OLD); // there is no such process
    remove_leftovers(folder.path);
    remove_leftovers(folder / "missing");
    Names left = folder.names();
    EXPECT_EQ(left.erase(".quillon-2147483647-1"), 1U);
    EXPECT_EQ(left, others);
}

TEST(SafeWrite, KeepsPermissions) {
    const TempFolder folder;
    const mode_t mask = ::umask(027);
    for (const mode_t mode : {0640U, 0600U, 0666U, 0755U}) { // the first is that of a new file
        EXPECT_TRUE(mode == 0640 || ::chmod((folder / "file").c_str(), mode) == 0);
        EXPECT_TRUE(safe_write(folder / "file", NEW));
        struct stat now {};
        ::stat((folder / "file").c_str(), &now);
        EXPECT_EQ(now.st_mode & 0777, mode);
    }
    ::umask(mask);
}

TEST(SafeWrite, LeavesAloneWhatMayNotBeWritten) {
    const TempFolder folder;
    ::chmod(folder.path.c_str(), 0777);
    put_file(folder / "file", OLD);
    ::chmod((folder / "file").c_str(), 0444);
    EXPECT_FALSE(run_as_a_user([&] { return safe_write(folder / "file", NEW); }));
    EXPECT_EQ(get_file(folder / "file"), OLD);

    std::filesystem::create_directory(folder / "folder");
    ::mkfifo((folder / "pipe").c_str(), 0666);
    for (const std::string& path : {folder / "folder", folder / "pipe", folder / "missing/file", std::string()})
        EXPECT_FALSE(safe_write(path, NEW) || safe_write_keeping_old(path, NEW)) << path;
    EXPECT_EQ(write_new_file({folder / "missing/file"}, NEW), NewFile::FAILED);
    EXPECT_EQ(folder.names(), (Names{"file", "folder", "pipe"}));
}

TEST(SafeWrite, FollowsLinks) {
    const TempFolder folder;
    std::filesystem::create_directory(folder / "away");
    put_file(folder / "away/target", OLD);
    std::filesystem::create_symlink("away/second", folder / "first");
    std::filesystem::create_symlink("target", folder / "away/second");
    EXPECT_TRUE(safe_write_keeping_old(folder / "first", NEW));
    EXPECT_EQ(std::filesystem::read_symlink(folder / "first"), "away/second");
    EXPECT_EQ(std::filesystem::read_symlink(folder / "away/second"), "target");
    EXPECT_EQ(get_file(folder / "away/target"), NEW);
    EXPECT_EQ(get_file(folder / "away/target.bad"), OLD);

    std::filesystem::create_symlink("away/unborn", folder / "to nothing");
    EXPECT_TRUE(safe_write(folder / "to nothing", NEW));
    EXPECT_EQ(get_file(folder / "away/unborn"), NEW);
    std::filesystem::create_symlink("round", folder / "round");
    EXPECT_FALSE(safe_write(folder / "round", NEW));
    EXPECT_EQ(folder.names(), (Names{"away", "first", "round", "to nothing"}));
}

TEST(SafeWrite, SeveralWritersMixNothing) {
    constexpr int WRITERS = 3, ROUNDS = 20;
    const TempFolder folder;
    std::vector<std::string> names;
    for (int i = 0; i < WRITERS * ROUNDS; ++i)
        names.push_back(folder / ("snap" + std::to_string(i)));
    const auto bytes_of_writer = [](int writer) { return std::string(5000, static_cast<char>('0' + writer)); };
    const auto writer_of = [&](const std::string& path) { // -1 for a mixed file
        const std::string bytes = get_file(path);
        return bytes == bytes_of_writer(bytes[0] - '0') ? bytes[0] - '0' : -1;
    };
    put_file(folder / "file", bytes_of_writer(0));
    std::vector<pid_t> children;
    for (int writer = 1; writer <= WRITERS; ++writer) {
        children.push_back(::fork());
        if (children.back() != 0)
            continue;
        const std::string bytes = bytes_of_writer(writer);
        bool good = true;
        for (int i = 0; i < ROUNDS; ++i)
            good = safe_write(folder / "file", bytes) && write_new_file(names, bytes) == NewFile::WRITTEN && good;
        ::_exit(good ? 0 : 1);
    }
    for (std::size_t ended = 0; ended < children.size();) {
        EXPECT_NE(writer_of(folder / "file"), -1);
        int status = 0;
        if (::waitpid(children[ended], &status, WNOHANG) == 0)
            continue;
        EXPECT_EQ(status, 0);
        ++ended;
    }
    std::map<int, int> count;
    for (const std::string& name : names)
        ++count[writer_of(name)];
    EXPECT_EQ(count, (std::map<int, int>{{1, ROUNDS}, {2, ROUNDS}, {3, ROUNDS}}));
    EXPECT_EQ(folder.names().size(), names.size() + 1);
}

} // namespace
} // namespace quillon::testing
