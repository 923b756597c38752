// SPDX-License-Identifier: MIT
// The driving protocol's commands for going back: positions, breakpoints, steps, session files, saved states.
#include "protocols/drive_commands.h"
#include "session/cell_text.h"
#include "session/machine_image.h"
#include "session/replay.h"

namespace quillon {
namespace {

void answer_journey(const Journey& journey, Json& answer) {
    answer["ticks"] = journey.ticks;
    answer["reason"] = stop_reason_word(journey.stop.reason);
    if (journey.stop.id != 0)
        answer["id"] = journey.stop.id;
    if (!journey.stop.problem.empty())
        answer["problem"] = journey.stop.problem;
}

Refusal do_back(DriveSession& drive, std::string_view argument, Json& answer) {
    Session& session = *drive.session;
    const auto count = parse_number(argument, 0, static_cast<long long>(SESSION_TICKS_MAX));
    if (!count)
        return number_refusal("The number of ticks", 0, static_cast<long long>(SESSION_TICKS_MAX));
    const TickCount present = session.tick;
    const TickCount most = present - first_tick(session);
    go_to_tick(session, present - std::min(static_cast<TickCount>(*count), most));
    answer["ticks"] = present - session.tick;
    show_afresh(drive);
    return {};
}

Refusal do_break(DriveSession& drive, std::string_view argument, Json& answer) {
    constexpr long long HIGHEST = 99'999'999;
    const std::string padded = " " + std::string(argument);
    LineReader reader(padded);
    const auto area = reader.number(0, AREA_COUNT - 1);
    const auto line = reader.number(0, HIGHEST);
    Watch watch{.kind = Watch::Kind::LINE};
    const std::string_view condition = reader.rest();
    if (!area || !line || (!condition.empty() && !condition.starts_with("if ")))
        return "Say an area from 0 to 9 and a line, and then nothing, or if and an expression.";
    watch.area = static_cast<int>(*area);
    watch.line = static_cast<int>(*line);
    watch.condition = condition.substr(std::min<std::size_t>(3, condition.size()));
    const int id = add_watch(drive.debugger, drive.simulator->machine, watch);
    if (id == 0)
        return "This area has no such line, and none after it.";
    answer["id"] = id;
    answer["line"] = drive.debugger.watches.back().line;
    return {};
}

Refusal do_watch(DriveSession& drive, std::string_view argument, Json& answer) {
    const auto cell = find_cell(argument);
    if (!cell)
        return "There is no such cell.";
    answer["id"] = add_watch(drive.debugger, drive.simulator->machine, {.kind = Watch::Kind::CELL, .cell = *cell});
    return {};
}

Refusal do_unbreak(DriveSession& drive, std::string_view argument, Json&) {
    if (argument == "all") {
        drive.debugger.watches.clear();
        return {};
    }
    const auto id = parse_number(argument, 1, drive.debugger.last_id);
    return id && remove_watch(drive.debugger, static_cast<int>(*id)) ? Refusal() : "There is none with this number.";
}

using Going = Journey (*)(Session& session, Debugger& debugger, TickCount most, const AfterTick& after_tick);

template <Going Go>
Refusal do_journey(DriveSession& drive, std::string_view argument, Json& answer) {
    const auto most = parse_number(argument, 0, DRIVE_TICKS_MAX);
    if (!most)
        return number_refusal("The number of ticks", 0, DRIVE_TICKS_MAX);
    const Journey journey =
        Go(*drive.session, drive.debugger, static_cast<TickCount>(*most), [&drive] { follow_shown(drive); });
    answer_journey(journey, answer);
    return {};
}

Journey go_back(Session& session, Debugger& debugger, TickCount most, const AfterTick&) {
    return run_back_until_stop(session, debugger, most);
}

Refusal do_reverse(DriveSession& drive, std::string_view argument, Json& answer) {
    Refusal refusal = do_journey<go_back>(drive, argument, answer);
    if (refusal.empty())
        show_afresh(drive);
    return refusal;
}

Refusal do_step(DriveSession& drive, std::string_view argument, Json& answer) {
    constexpr std::pair<std::string_view, StepKind> FORWARD[] = {
        {"into", StepKind::INTO}, {"over", StepKind::OVER}, {"out", StepKind::OUT}};
    for (const auto& [name, kind] : FORWARD) {
        if (argument != name)
            continue;
        answer_journey(
            step_forward(*drive.session, drive.debugger, kind, DRIVE_TICKS_MAX, [&drive] { follow_shown(drive); }),
            answer);
        return {};
    }
    if (argument != "back")
        return "Say into, over, out or back.";
    answer_journey(step_backward(*drive.session, StepKind::INTO), answer);
    show_afresh(drive);
    return {};
}

Refusal do_session(DriveSession& drive, std::string_view argument, Json& answer) {
    if (argument.empty())
        return "Name a file.";
    bool repeats = true;
    const SessionFile file = record_session(*drive.session, repeats);
    if (!drive.disk.write_file(std::string(argument), session_text(file)))
        return "The session cannot be written.";
    if (!repeats)
        answer["repeats"] = false;
    return {};
}

Refusal do_replay(DriveSession& drive, std::string_view argument, Json& answer) {
    const auto text = drive.disk.read_file(std::string(argument), SESSION_FILE_MAX, FileKind::ANY);
    if (text.status != ReadStatus::READ)
        return "This session file cannot be read.";
    SessionFault fault;
    const auto file = parse_session(text.bytes, fault);
    if (!file)
        return "Line " + std::to_string(fault.line) + ": " + fault.text;
    MessageCatalogue catalogue = std::move(drive.simulator->around.catalogue);
    prepare_machine(drive);
    drive.simulator->around.catalogue = std::move(catalogue);
    const ReplayResult result = replay_session(*drive.session, *file);
    answer["verified"] = result.verified;
    answer["ticks"] = result.ticks;
    if (!result.verified)
        answer["differs"] = result.differs;
    return {};
}

Refusal do_save(DriveSession& drive, std::string_view argument, Json&) {
    if (argument.empty())
        return "Name a file.";
    const bool written = drive.disk.write_file(std::string(argument), moment_image(present_moment(*drive.session)));
    return written ? Refusal() : "The state cannot be written.";
}

Refusal do_restore(DriveSession& drive, std::string_view argument, Json&) {
    FileContents image = drive.disk.read_file(std::string(argument), IMAGE_SIZE_MAX, FileKind::ANY);
    if (image.status != ReadStatus::READ)
        return "This state cannot be read.";
    ImageFault fault{};
    if (!read_moment_image(image.bytes, fault))
        return Refusal(fault_text(fault));
    session_input(*drive.session, restore_input(std::move(image.bytes)));
    render_lcd(drive.simulator->lcd, drive.simulator->machine);
    show_afresh(drive);
    return {};
}

// clang-format off
constexpr DriveCommand COMMANDS[] = {
    {"back", do_back},       {"break", do_break},     {"watch", do_watch}, {"unbreak", do_unbreak},
    {"continue", do_journey<run_on_until_stop>},      {"reverse", do_reverse}, {"step", do_step},
    {"session", do_session}, {"replay", do_replay},   {"save", do_save},   {"restore", do_restore},
};
// clang-format on

} // namespace

std::span<const DriveCommand> travel_commands() { return COMMANDS; }

} // namespace quillon
