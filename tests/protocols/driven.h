// SPDX-License-Identifier: MIT
// A driven machine for tests; every answer is read back as JSON.
#pragma once

#include "files/host_disk.h"
#include "protocols/drive.h"
#include "tests/support/temporary_file.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <string>
#include <string_view>

namespace quillon::testing {

using Json = nlohmann::json;

struct Driven {
    DriveSession session{host_disk()};

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

    Json state() { return (*this)("state"); }

    /// What a command changed, as "name=value" by the alphabet, and what it asked for. A new display always shows from
    /// another place, so of the offset and of `visible` nothing is said; nor of the token, which is nobody's any more.
    std::string changed_by(const std::string& command) {
        const Json before = state();
        all(command);
        std::string changes;
        const Json after = state();
        for (const auto& [name, value] : after.items()) {
            const bool said = name != "host" && name != "visible" && name != "display_offset" && name != "token";
            if (said && before[name] != value)
                changes += " " + name + "=" + (value.is_string() ? value.get<std::string>() : value.dump());
        }
        for (const Json& asked : after["host"])
            changes += " | " + asked.get<std::string>();
        return changes.substr(std::min<std::size_t>(1, changes.size()));
    }
};

} // namespace quillon::testing
