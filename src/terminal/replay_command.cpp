// SPDX-License-Identifier: MIT
// Replaying a session file.
#include "terminal/replay_command.h"

#include "files/file_reading.h"
#include "session/replay.h"
#include "shell/lcd_text.h"
#include "terminal/lines.h"
#include "terminal/printing.h"

#include <memory>

namespace quillon {
namespace {

enum ReplayStatus : int { REPLAY_VERIFIED = 0, REPLAY_DIVERGED = 1, REPLAY_BAD_CALL = 2 };

std::optional<SessionFile> read_session(const std::string& path) {
    const FileContents contents = read_file(path, SESSION_FILE_MAX, FileKind::ANY);
    if (contents.status != ReadStatus::READ) {
        print_error("cannot read the session in " + path + ": " + read_fault_text(contents));
        return std::nullopt;
    }
    SessionFault fault;
    auto file = parse_session(contents.bytes, fault);
    if (!file)
        print_error(path + ":" + std::to_string(fault.line) + ": " + fault.text);
    return file;
}

} // namespace

int replay_file(const ReplayOptions& options) {
    const auto file = read_session(options.file);
    if (!file)
        return REPLAY_BAD_CALL;
    const auto simulator = std::make_unique<Simulator>();
    Session session(*simulator);
    const ReplayResult result = replay_session(session, *file, options.until.value_or(SESSION_TICKS_MAX));
    render_lcd(simulator->lcd, simulator->machine);
    if (options.lcd)
        write_output(lcd_text(*simulator) + "\n" + lcd_indicator_text(*simulator) + "\n");
    if (result.verified)
        write_output("verified, " + std::to_string(result.ticks) + " ticks\n");
    else
        print_error(options.file + ": at tick " + std::to_string(result.ticks) + " the " + result.differs + " differs");
    return status_with_output(result.verified ? REPLAY_VERIFIED : REPLAY_DIVERGED);
}

} // namespace quillon
