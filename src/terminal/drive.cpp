// The commands of the driving protocol.
#include "terminal/drive.h"

#include "core/listing.h"
#include "shell/catalogue.h"
#include "shell/commands.h"
#include "terminal/drive_state.h"

#include <nlohmann/json.hpp>

#include <charconv>

namespace quillon {
namespace {

using Json = nlohmann::ordered_json;

/// What a command says against itself; empty when it was carried out.
using Refusal = std::string;

/// A command of the protocol. `argument` is the rest of the line behind one blank.
struct DriveCommand {
    std::string_view name;
    Refusal (*carry_out)(DriveSession& session, std::string_view argument, Json& answer);
};

constexpr long long TICKS_MAX = 10'000'000;

/// A whole number that fills the whole text and lies in a range; nothing otherwise.
std::optional<long long> parse_number(std::string_view text, long long lowest, long long highest) {
    long long number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (error != std::errc() || end != text.data() + text.size() || number < lowest || number > highest)
        return std::nullopt;
    return number;
}

Refusal number_refusal(const char* what, long long lowest, long long highest) {
    return std::string(what) + " must be a whole number from " + std::to_string(lowest) + " to " +
           std::to_string(highest) + ".";
}

Refusal refuse_argument(std::string_view argument) {
    return argument.empty() ? Refusal() : "This command takes no argument.";
}

/// Splits off the first word of an argument.
std::string_view take_word(std::string_view& text) {
    const std::size_t end = text.find(' ');
    const std::string_view word = text.substr(0, end);
    text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
    return word;
}

void record_host(DriveSession& session) {
    Host& host = session.simulator->machine.host;
    std::vector<std::string>& log = session.host_log;
    host.stop_tone = [&log] { log.emplace_back("stop-sound"); };
    host.show_message = [&log](const std::string& text, MessageIcon) { log.push_back("message-box " + text); };
    host.refresh_trace = [&log] { log.emplace_back("trace-refresh"); };
    host.reset_trace = [&log] { log.emplace_back("trace-reset"); };
}

void start_new_machine(DriveSession& session) {
    session.simulator = std::make_unique<Simulator>();
    session.host_log.clear();
    record_host(session);
}

Refusal do_new(DriveSession& session, std::string_view argument, Json&) {
    if (!argument.empty())
        return refuse_argument(argument);
    start_new_machine(session);
    return {};
}

Refusal do_catalogue(DriveSession& session, std::string_view argument, Json&) {
    if (argument.empty())
        return "Name a catalogue file, or - for none.";
    std::optional<MessageCatalogue> catalogue = MessageCatalogue{};
    if (argument != "-")
        catalogue = read_catalogue(std::string(argument));
    if (!catalogue)
        return "This catalogue cannot be read.";
    session.simulator->machine.catalogue = std::move(*catalogue);
    return {};
}

Refusal do_load(DriveSession& session, std::string_view argument, Json& answer) {
    if (argument.empty())
        return "Name a listing file.";
    Machine& m = session.simulator->machine;
    const LoadResult result = load_listing(m, std::string(argument));
    if (result != LoadResult::UNREADABLE)
        m.random_seed = 1; // the milliseconds would make runs differ
    if (result != LoadResult::LOADED)
        m.host.show_message(m.system_message.c_str(), MessageIcon::STOP);
    answer["loaded"] = result == LoadResult::LOADED;
    answer["system_message"] = m.system_message.c_str();
    return {};
}

Refusal do_set(DriveSession& session, std::string_view argument, Json&) {
    const std::string_view name = take_word(argument);
    const DriveField* field = find_settable_field(name);
    if (field == nullptr)
        return "There is no such field to set.";
    const auto number = parse_number(argument, field->lowest, field->highest);
    if (!number)
        return number_refusal("This field", field->lowest, field->highest);
    set_field(session.simulator->machine, *field, *number);
    return {};
}

Refusal do_run(DriveSession& session, std::string_view argument, Json&) {
    if (argument.empty())
        host_run(session.simulator->machine);
    return refuse_argument(argument);
}

Refusal do_stop(DriveSession& session, std::string_view argument, Json&) {
    if (argument.empty())
        host_stop(session.simulator->machine);
    return refuse_argument(argument);
}

Refusal do_page(DriveSession& session, std::string_view argument, Json&) {
    const auto page = parse_number(argument, 0, AREA_COUNT - 1);
    if (!page)
        return number_refusal("A page", 0, AREA_COUNT - 1);
    select_page(session.simulator->machine, static_cast<int>(*page));
    return {};
}

Refusal do_key(DriveSession& session, std::string_view argument, Json&) {
    BoundedText<15> keys;
    if (argument.empty() || argument.size() % 2 != 0 || argument.size() > 2 * keys.capacity())
        return "Give 1 to 15 bytes, two hexadecimal digits each.";
    for (std::size_t i = 0; i < argument.size(); i += 2) {
        unsigned byte = 0;
        const char* digits = argument.data() + i;
        const auto [end, error] = std::from_chars(digits, digits + 2, byte, 16);
        if (error != std::errc() || end != digits + 2)
            return "Give 1 to 15 bytes, two hexadecimal digits each.";
        keys.push_back(static_cast<char>(byte));
    }
    session.simulator->machine.key_string = keys;
    session.simulator->machine.held_key = 0;
    return {};
}

Refusal do_tick(DriveSession& session, std::string_view argument, Json& answer) {
    const auto count = argument.empty() ? 1 : parse_number(argument, 0, TICKS_MAX);
    if (!count)
        return number_refusal("The number of ticks", 0, TICKS_MAX);
    for (long long i = 0; i < *count; ++i)
        simulator_tick(*session.simulator);
    answer["ticks"] = *count;
    return {};
}

/// Whether the machine waits for a person, or has ended.
bool waits(const Machine& m) {
    const bool running = m.run_state == STATE_RUN || m.run_state == STATE_TO_COMMAND;
    const bool asks = m.stmt_kind == KIND_PROMPT || m.stmt_kind == KIND_INPUT_ERROR || m.stmt_kind == KIND_RESULT;
    return !running || asks || m.error_code != ERROR_NONE;
}

Refusal do_wait(DriveSession& session, std::string_view argument, Json& answer) {
    const auto most = parse_number(argument, 0, TICKS_MAX);
    if (!most)
        return number_refusal("The number of ticks", 0, TICKS_MAX);
    long long ticks = 0;
    for (; ticks < *most && !waits(session.simulator->machine); ++ticks)
        simulator_tick(*session.simulator);
    answer["ticks"] = ticks;
    return {};
}

Refusal do_exe(DriveSession& session, std::string_view argument, Json&) {
    if (!argument.empty())
        return refuse_argument(argument);
    session.simulator->machine.enter_request = 1;
    simulator_tick(*session.simulator);
    return {};
}

Refusal do_type(DriveSession& session, std::string_view argument, Json&) {
    Machine& m = session.simulator->machine;
    for (const char c : argument) {
        m.key_string.assign({&c, 1});
        simulator_tick(*session.simulator);
        m.key_string.clear();
        simulator_tick(*session.simulator);
    }
    return {};
}

Refusal do_state(DriveSession& session, std::string_view argument, Json& answer) {
    if (!argument.empty())
        return refuse_argument(argument);
    answer_state(*session.simulator, answer);
    answer["host"] = session.host_log;
    session.host_log.clear();
    return {};
}

Refusal do_vars(DriveSession& session, std::string_view argument, Json& answer) {
    if (argument.empty())
        answer_variables(session.simulator->machine, answer);
    return refuse_argument(argument);
}

Refusal do_quit(DriveSession& session, std::string_view argument, Json&) {
    session.finished = argument.empty();
    return refuse_argument(argument);
}

// clang-format off
constexpr DriveCommand COMMANDS[] = {
    {"new", do_new},     {"catalogue", do_catalogue}, {"load", do_load},   {"set", do_set},   {"run", do_run},
    {"stop", do_stop},   {"page", do_page},           {"key", do_key},     {"tick", do_tick}, {"wait", do_wait},
    {"exe", do_exe},     {"type", do_type},           {"state", do_state}, {"vars", do_vars}, {"quit", do_quit},
};

Refusal carry_out(DriveSession& session, std::string_view line, Json& answer) {
    std::string_view argument = line;
    const std::string_view name = take_word(argument);
    for (const DriveCommand& command : COMMANDS) {
        if (command.name == name)
            return command.carry_out(session, argument, answer);
    }
    return "There is no such command.";
}

} // namespace

DriveSession::DriveSession() { start_new_machine(*this); }

std::optional<std::string> drive_line(DriveSession& session, std::string_view line) {
    if (line.ends_with('\r'))
        line.remove_suffix(1);
    if (line.empty() || line.front() == '#')
        return std::nullopt;
    Json answer = Json::object();
    answer["ok"] = true;
    const Refusal refusal = carry_out(session, line, answer);
    if (!refusal.empty())
        answer = {{"ok", false}, {"error", refusal}};
    return answer.dump(-1, ' ', false, Json::error_handler_t::replace);
}

} // namespace quillon
