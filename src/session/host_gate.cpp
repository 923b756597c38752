// SPDX-License-Identifier: MIT
// Wrapping the callbacks of host, window and disk.
#include "session/host_gate.h"

#include "session/session.h"

namespace quillon {
namespace {

/// The answer that was given here; null, and the session is not that machine's, when it was another.
const Input* recorded_answer(Session& session, InputVerb verb) {
    const auto& entries = session.log.entries;
    const bool is_next = session.next_entry < entries.size() && entries[session.next_entry].tick == session.tick &&
                         entries[session.next_entry].input.verb == verb;
    return is_next ? &entries[session.next_entry++].input : nullptr;
}

void remember_answer(Session& session, Input answer) {
    add_entry(session.log, std::move(answer));
    session.next_entry = session.log.entries.size();
}

BoundedText<15> paste_text(Session& session) {
    if (session.hearing == Hearing::LIVE) {
        const BoundedText<15> text = session.host.paste_text();
        remember_answer(session, {.verb = InputVerb::ANSWER_PASTE, .text = std::string(text)});
        return text;
    }
    const Input* answer = recorded_answer(session, InputVerb::ANSWER_PASTE);
    session.answers_missing |= answer == nullptr;
    return answer != nullptr ? BoundedText<15>(answer->text) : BoundedText<15>();
}

std::uint32_t milliseconds(Session& session) {
    if (session.hearing == Hearing::LIVE) {
        const std::uint32_t time = session.host.milliseconds();
        remember_answer(session, {.verb = InputVerb::ANSWER_TIME, .numbers = {time}});
        return time;
    }
    const Input* answer = recorded_answer(session, InputVerb::ANSWER_TIME);
    session.answers_missing |= answer == nullptr;
    return answer != nullptr ? static_cast<std::uint32_t>(answer->numbers[0]) : 0U;
}

FileContents read_file(Session& session, const std::string& path, std::size_t limit, FileKind kind) {
    if (session.hearing == Hearing::LIVE) {
        FileContents file = session.disk.read_file(path, limit, kind);
        remember_answer(session, file_answer(file));
        return file;
    }
    const Input* answer = recorded_answer(session, InputVerb::ANSWER_FILE);
    if (answer == nullptr)
        answer = recorded_answer(session, InputVerb::ANSWER_NO_FILE);
    session.answers_missing |= answer == nullptr;
    return answer != nullptr ? file_of_answer(*answer) : FileContents{};
}

bool is_heard(const Session& session) { return session.hearing != Hearing::QUIET; }
bool is_live(const Session& session) { return session.hearing == Hearing::LIVE; }

/// What sounds and shows is heard again with a past that is gone through again.
void gate_sound_and_messages(Session& session, Host& gate) {
    gate.play_tone = [&session](std::span<const std::uint8_t> image) {
        session.tone_plays = true;
        if (is_heard(session))
            session.host.play_tone(image);
    };
    gate.stop_tone = [&session] {
        session.tone_plays = false;
        if (is_heard(session))
            session.host.stop_tone();
    };
    gate.show_message = [&session](const std::string& text, MessageIcon icon) {
        if (is_heard(session))
            session.host.show_message(text, icon);
    };
    gate.refresh_trace = [&session] {
        if (is_heard(session))
            session.host.refresh_trace();
    };
    gate.reset_trace = [&session] {
        if (is_heard(session))
            session.host.reset_trace();
    };
}

/// What leaves a trace outside happens once.
void gate_what_stays(Session& session, Host& gate) {
    gate.resize_window = [&session] {
        if (is_live(session))
            session.host.resize_window();
    };
    gate.take_snapshot = [&session] {
        if (is_live(session))
            session.host.take_snapshot();
    };
    gate.write_dump = [&session] {
        if (is_live(session))
            session.host.write_dump();
    };
    gate.copy_text = [&session](std::string_view text) {
        if (is_live(session))
            session.host.copy_text(text);
    };
}

void gate_window(Session& session, Window& gate) {
    gate.perform = [&session](HostCommand command) {
        if (is_live(session))
            session.window.perform(command);
    };
    gate.toggle_trace = [&session] {
        if (is_live(session))
            session.window.toggle_trace();
    };
    gate.toggle_soft_keyboard = [&session] {
        if (is_live(session))
            session.window.toggle_soft_keyboard();
    };
    gate.refresh = [&session] {
        if (is_live(session))
            session.window.refresh();
    };
}

} // namespace

void close_gate(Session& session) {
    Simulator& s = session.simulator;
    session.host = s.around.host;
    session.window = s.window;
    session.disk = s.disk;
    gate_sound_and_messages(session, s.around.host);
    gate_what_stays(session, s.around.host);
    gate_window(session, s.window);
    s.around.host.paste_text = [&session] { return paste_text(session); };
    s.around.host.milliseconds = [&session] { return milliseconds(session); };
    s.disk.read_file = [&session](const std::string& path, std::size_t limit, FileKind kind) {
        return read_file(session, path, limit, kind);
    };
}

Input file_answer(const FileContents& file) {
    if (file.status != ReadStatus::READ)
        return {.verb = InputVerb::ANSWER_NO_FILE, .numbers = {static_cast<long long>(file.status)}};
    return {.verb = InputVerb::ANSWER_FILE,
            .numbers = {static_cast<long long>(file.bytes.size())},
            .content = std::make_shared<const std::string>(file.bytes)};
}

FileContents file_of_answer(const Input& answer) {
    if (answer.verb == InputVerb::ANSWER_FILE && answer.content)
        return {ReadStatus::READ, *answer.content};
    return {static_cast<ReadStatus>(answer.numbers[0])};
}

} // namespace quillon
