// SPDX-License-Identifier: MIT
// Session files and saved states. What is read is written and read again as the same; a session file is gone through
// for a bounded number of ticks, twice with the same result; a state that is accepted is one the machine can live with.
#include "fuzz/user.h"

#include "session/checksum.h"
#include "session/machine_image.h"
#include "session/replay.h"
#include "session/session_file.h"

using namespace quillon;

namespace {

constexpr TickCount TICKS_MAX = 400;

ReplayResult replay_bounded(const SessionFile& file) {
    const auto s = fuzz::make_simulator();
    Session session(*s);
    return replay_session(session, file, TICKS_MAX);
}

void try_session(std::string_view text) {
    SessionFault fault;
    const auto file = parse_session(text, fault);
    fuzz::require(file.has_value() != (fault.line > 0 && !fault.text.empty()),
                  "a fault without a place and a sentence");
    if (!file)
        return;
    const std::string written = session_text(*file);
    const auto again = parse_session(written, fault);
    fuzz::require(again.has_value(), "a session that was written is not understood");
    fuzz::require(session_text(*again) == written, "a session changes when it is kept");
    const ReplayResult first = replay_bounded(*file);
    const ReplayResult second = replay_bounded(*again);
    fuzz::require(first.verified == second.verified && first.ticks == second.ticks && first.differs == second.differs,
                  "a session that was kept is gone through differently");
}

/// Bytes with the checksum that they ought to have: otherwise hardly any change would be looked at.
std::string with_right_checksum(std::string_view bytes) {
    constexpr std::size_t SUM = IMAGE_MAGIC.size() + 4;
    constexpr std::size_t BODY = SUM + 4;
    std::string image(bytes);
    if (!bytes.starts_with(IMAGE_MAGIC) || bytes.size() < BODY)
        return image;
    std::uint32_t sum = CRC32_START;
    for (const char byte : bytes.substr(BODY))
        sum = crc32(sum, static_cast<std::uint8_t>(byte));
    for (std::size_t i = 0; i < 4; ++i)
        image[SUM + i] = static_cast<char>(~sum >> (8 * i));
    return image;
}

void try_state(const std::string& bytes) {
    ImageFault fault{};
    const auto moment = read_moment_image(bytes, fault);
    fuzz::require(moment.has_value() == (fault == ImageFault::NONE), "a state that is refused without a reason");
    if (!moment)
        return;
    const std::string image = moment_image(*moment);
    const auto again = read_moment_image(image, fault);
    fuzz::require(again && *again == *moment, "a state changes when it is kept");
    const auto s = fuzz::make_simulator();
    Session session(*s);
    begin_session(session);
    session_input(session, restore_input(bytes));
    for (TickCount i = 0; i < TICKS_MAX; ++i)
        session_tick(session);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view bytes = fuzz::as_text(data, size);
    if (bytes.starts_with("quillon session"))
        try_session(bytes);
    else
        try_state(with_right_checksum(bytes));
    return 0;
}
