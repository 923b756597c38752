// SPDX-License-Identifier: MIT
// Reading files: what is read, what is missing and what is there but cannot be read, through any fault and
// interruption; listings in files.
#include "files/file_reading.h"

#include "core/errors.h"
#include "core/fields.h"
#include "shell/listing_file.h"
#include "tests/files/failing_calls.h"
#include "tests/support/evaluation.h"
#include "tests/support/temporary_file.h"
#include "tests/support/test_machine.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <thread>

#include <sys/stat.h>

namespace quillon::testing {
namespace {

constexpr std::size_t LIMIT = 10000;

TEST(Files, AreReadThroughSignals) {
    const TemporaryFile file(std::string(LIMIT, 'x'));
    int at = 1;
    for (std::string interrupted = "open"; !interrupted.empty(); ++at) {
        FileContents read;
        interrupted = run_with_fault({at, EINTR, false}, [&] { read = read_file(file.path, LIMIT); });
        EXPECT_EQ(read.status, ReadStatus::READ) << interrupted;
        EXPECT_EQ(read.bytes.size(), LIMIT);
    }
    EXPECT_GT(at, 5);
}

TEST(Files, ThatAreThereAndCannotBeReadAreNotMissing) {
    const TemporaryFile file("text");
    for (const int error : {EIO, EMFILE, EACCES, ESTALE}) {
        int at = 1;
        for (std::string failed = "open"; !failed.empty() && failed != "close"; ++at) {
            FileContents read;
            failed = run_with_fault({at, error, false}, [&] { read = read_file(file.path, LIMIT); });
            const bool harmless = failed.empty() || failed == "close";
            EXPECT_EQ(read.status, harmless ? ReadStatus::READ : ReadStatus::UNREADABLE) << failed;
            EXPECT_EQ(read.error, harmless ? 0 : error) << failed;
        }
        EXPECT_GT(at, 4);
    }
}

TEST(Files, AreToldByWhatTheyAre) {
    const TempFolder folder;
    put_file(folder / "full", std::string(LIMIT, 'x'));
    put_file(folder / "over", std::string(LIMIT + 1, 'x'));
    ASSERT_EQ(::mkfifo((folder / "pipe").c_str(), 0600), 0);
    std::filesystem::create_symlink("nothing", folder / "link");
    const std::pair<std::string, ReadStatus> rows[] = {{folder / "full", ReadStatus::READ},
                                                       {folder / "over", ReadStatus::TOO_LARGE},
                                                       {folder / "none", ReadStatus::MISSING},
                                                       {folder / "full/below", ReadStatus::MISSING},
                                                       {folder / "link", ReadStatus::MISSING},
                                                       {"", ReadStatus::MISSING},
                                                       {folder.path, ReadStatus::UNREADABLE},
                                                       {folder / "pipe", ReadStatus::UNREADABLE},
                                                       {"/dev/zero", ReadStatus::UNREADABLE},
                                                       {"/proc/self/mem", ReadStatus::UNREADABLE},
                                                       {std::string("/\0", 2), ReadStatus::UNREADABLE}};
    for (const auto& [path, status] : rows) {
        const FileContents read = read_file(path, LIMIT);
        EXPECT_EQ(read.status, status) << path;
        EXPECT_EQ(read.bytes.size(), path == folder / "full" || path == folder / "over" ? LIMIT : 0) << path;
    }
    EXPECT_EQ(read_file("/dev/zero", LIMIT, FileKind::ANY).status, ReadStatus::TOO_LARGE);
}

// --- Listings ---

LoadResult load_from(Machine& m, const std::string& path, FileKind kind = FileKind::ANY) {
    return load_listing(m, path, read_file(path, LISTING_SIZE_MAX, kind)).result;
}

TEST(ListingFile, ThatCannotBeReadChangesNothing) {
    const TempFolder folder;
    const std::string plain = folder / "plain.txt", huge = folder / "huge.txt";
    put_file(plain, "[P1]\n10 A\n");
    put_file(huge, "[P0]\n");
    std::filesystem::resize_file(huge, LISTING_SIZE_MAX + 1);
    TestMachine machine, other;
    for (TestMachine* same : {&machine, &other}) {
        ASSERT_TRUE(same->load("[P0]\n10 DATA 1\n"));
        same->m.run.run_state = STATE_RUN;
        same->m.random_seed = 99;
        same->m.program.data_pos = 1;
    }
    for (const std::string& path :
         {folder.path, folder / "missing", plain + "/below", std::string(), std::string("/proc/self/mem"),
          std::string(5000, 'x'), huge, std::string("/dev/zero")}) {
        EXPECT_EQ(load_from(machine.m, path), LoadResult::UNREADABLE) << path;
        const bool too_large = path == huge || path == "/dev/zero";
        const std::string expected = too_large ? "SYSTEM 1" : "SYSTEM 2:[" + path.substr(0, 1000);
        EXPECT_EQ(system_message_of(machine.m).substr(0, expected.size()), expected);
        other.m.error.system_message = machine.m.error.system_message;
        EXPECT_EQ(record_difference(machine.m, other.m), "") << path;
        EXPECT_EQ(machine.m.listing->areas[0].lines.size(), 1U) << path;
    }
    std::filesystem::resize_file(huge, LISTING_SIZE_MAX);
    EXPECT_EQ(load_from(machine.m, huge), LoadResult::LOADED);
    EXPECT_EQ(load_from(machine.m, plain), LoadResult::LOADED);
    EXPECT_EQ(machine.m.listing->areas[1].lines.size(), 1U);
}

TEST(ListingFile, MayBeAPipeForThoseWhoWait) {
    const TempFolder folder;
    const std::string path = folder / "pipe";
    ASSERT_EQ(::mkfifo(path.c_str(), 0600), 0);
    TestMachine machine;
    EXPECT_EQ(load_from(machine.m, path, FileKind::ORDINARY), LoadResult::UNREADABLE);
    std::thread writer([&path] {
        std::ofstream pipe(path, std::ios::binary);
        pipe << "[P0]\n10 A\n#" << std::flush;
        pipe << std::string(300000, '.') << "\n20 B";
    });
    EXPECT_EQ(load_from(machine.m, path), LoadResult::LOADED);
    writer.join();
    EXPECT_EQ(machine.m.listing->areas[0].lines.size(), 2U);
}

} // namespace
} // namespace quillon::testing
