// A driven machine for tests; every answer is read back as JSON.
#pragma once

#include "terminal/drive.h"
#include "tests/support/temporary_file.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <string>
#include <string_view>

namespace quillon::testing {

using Json = nlohmann::json;

struct Driven {
    DriveSession session;

    Json operator()(std::string_view line) {
        const auto answer = drive_line(session, line);
        if (!answer)
            return nullptr;
        EXPECT_EQ(answer->find('\n'), std::string::npos) << line;
        return Json::parse(*answer);
    }

    /// Commands with "; " between them, all of which must be carried out. Returns the last one's answer.
    Json all(std::string_view lines) {
        Json answer;
        while (!lines.empty()) {
            const std::string_view line = lines.substr(0, lines.find("; "));
            answer = (*this)(line);
            EXPECT_TRUE(answer["ok"]) << line << ": " << answer;
            lines.remove_prefix(std::min(line.size() + 2, lines.size()));
        }
        return answer;
    }

    /// Loads a listing and answers the loading's answer.
    Json load(std::string_view listing) { return (*this)("load " + TemporaryFile(listing).path); }

    /// Loads and starts a program.
    void start(std::string_view listing) {
        EXPECT_EQ(load(listing)["loaded"], true);
        all("run");
    }

    Json state() { return (*this)("state"); }
    Json vars() { return (*this)("vars")["vars"]; }

    /// A command that must be refused, and change nothing.
    void expect_refused(const std::string& line) {
        const Json before = state();
        const Json answer = (*this)(line);
        EXPECT_EQ(answer["ok"], false) << line;
        EXPECT_TRUE(answer.size() == 2 && answer["error"].is_string()) << line << ": " << answer;
        EXPECT_EQ(state(), before) << line;
    }
};

} // namespace quillon::testing
