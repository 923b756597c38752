// SPDX-License-Identifier: MIT
// Recording a session as a file, and going through such a file on a machine of its own.
#pragma once

#include "session/session.h"
#include "session/session_file.h"

#include <string>

namespace quillon {

/// What a replay found.
struct ReplayResult {
    bool verified = false;
    TickCount ticks = 0;   ///< that were made: to the end, to `until`, or to the first difference
    std::string differs{}; ///< "display", "state", "tone" or "error_code"; empty when verified
};

/// The session so far, as a file: it is gone through once more on a machine of its own, to note what is to be seen.
/// `repeats` tells whether that ended as the session itself did.
SessionFile record_session(const Session& session, bool& repeats);

/// Goes through a session file with a simulator that is new, up to a tick at most, and stays there: `session` is that
/// of a simulator nobody has used, not begun yet, whose skins may be loaded. Stops at the first difference.
ReplayResult replay_session(Session& session, const SessionFile& file, TickCount until = SESSION_TICKS_MAX);

/// What is compared, as it is now.
Observation observe(const Session& session);

} // namespace quillon
