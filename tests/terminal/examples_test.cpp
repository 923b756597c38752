// Every listing of examples/ prints what stands beside it.
#include "tests/support/child_process.h"
#include "tests/support/temporary_file.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <set>
#include <sstream>

namespace quillon::testing {
namespace {

namespace fs = std::filesystem;

/// The words of the file beside a listing that gives it options; none where there is no such file.
std::vector<std::string> options_of(const fs::path& listing) {
    std::istringstream words(bytes_of(fs::path(listing).replace_extension(".args")));
    std::vector<std::string> options{"run", listing};
    for (std::string word; words >> word;)
        options.push_back(word);
    return options;
}

std::set<fs::path> files_with(const char* extension) {
    std::set<fs::path> files;
    for (const fs::directory_entry& entry : fs::directory_iterator(QUILLON_EXAMPLES)) {
        if (entry.path().extension() == extension)
            files.insert(entry.path());
    }
    return files;
}

TEST(Examples, PrintWhatStandsBesideThem) {
    const std::set<fs::path> listings = files_with(".bas");
    EXPECT_GE(listings.size(), 6U);
    for (const fs::path& listing : listings) {
        SCOPED_TRACE(listing);
        const fs::path expected = fs::path(listing).replace_extension(".out");
        ASSERT_TRUE(fs::exists(expected)) << "no expected output";
        const Outcome outcome = run_program(options_of(listing), bytes_of(fs::path(listing).replace_extension(".in")));
        EXPECT_EQ(outcome.out, bytes_of(expected));
        EXPECT_EQ(outcome.err, "");
        EXPECT_EQ(outcome.status, 0);
    }
}

TEST(Examples, HaveNoOutputWithoutAListing) {
    for (const char* extension : {".out", ".args", ".in"}) {
        for (const fs::path& file : files_with(extension))
            EXPECT_TRUE(fs::exists(fs::path(file).replace_extension(".bas"))) << file;
    }
}

} // namespace
} // namespace quillon::testing
