// SPDX-License-Identifier: MIT
// The commands of transcripts, and the members of answers that they expect.
#include "tests/transcripts/player.h"

#include "core/controls.h"
#include "keys/virtual_keys.h"
#include "shell/key_queue.h"
#include "tests/support/test_machine.h"

#include <cmath>
#include <map>
#include <sstream>
#include <stdexcept>

namespace quillon::testing {
namespace {

const std::map<std::string, int> KEYS = {{"BS", 8},    {"EXE", 13}, {"END", 35},   {"HOME", 36},
                                         {"LEFT", 37}, {"UP", 38},  {"RIGHT", 39}, {"DOWN", 40},
                                         {"INS", 45},  {"DEL", 46}, {"PAD-", 109}, {"EX", 118}};

/// Splits at each "; " that a command follows: those of the language are in capitals.
std::vector<std::string> commands_of(std::string text) {
    std::vector<std::string> commands;
    for (std::size_t at = 0; (at = text.find("; ", at)) != std::string::npos; ++at) {
        if (text[at + 2] < 'a' || text[at + 2] > 'z')
            continue;
        commands.push_back(text.substr(0, at));
        text.erase(0, at + 2);
        at = 0;
    }
    commands.push_back(text);
    return commands;
}

/// The names in `A=5 seen="X Y" host=["a", "b"]`.
std::vector<std::string> names_of(const std::string& members) {
    std::vector<std::string> names(1);
    bool in_value = false, in_text = false;
    int depth = 0;
    for (std::size_t i = 0; i < members.size(); ++i) {
        const char c = members[i];
        if (in_text)
            i += c == '\\' ? 1 : 0;
        in_text = in_text != (c == '"');
        depth += in_text ? 0 : (c == '[' || c == '{') - (c == ']' || c == '}');
        if (c == ' ' && !in_text && depth == 0) {
            names.emplace_back();
            in_value = false;
        }
        in_value = in_value || c == '=';
        if (!in_value && c != ' ')
            names.back() += c;
    }
    return names;
}

/// Numbers without a fraction as whole ones.
Json simplified(Json value) {
    if (value.is_structured()) {
        for (Json& part : value)
            part = simplified(part);
    } else if (value.is_number_float() && std::fabs(value.get<double>()) < 1e15 &&
               std::trunc(value.get<double>()) == value.get<double>()) {
        value = static_cast<long long>(value.get<double>());
    }
    return value;
}

std::string without_trailing_blanks(std::string text) { return text.erase(text.find_last_not_of(' ') + 1); }

/// "ERR4 P0-10 GOTO 5[99]": the error text, the catalogue's entry and the detail; "ended GOTO 3[5]" without an error.
std::string error_of(const Json& state) {
    std::string detail = state["error_detail"];
    std::erase(detail, '\x01');
    const bool failed = state["error_code"] != 0;
    const std::string shown = failed ? state["display"].get<std::string>() : detail.empty() ? "" : "ended";
    return shown + (detail.empty() ? "" : " ") + detail.substr(0, detail.find("\r\n"));
}

/// The line that is typed, with the cursor as a bar; null where none is.
Json line_of(const Json& state) {
    if (state["run_state"] != number_of(STATE_INPUT) && state["run_state"] != number_of(STATE_COMMAND))
        return nullptr;
    std::string line = state["entry"]; // each character from 0x80 on takes two bytes here
    std::size_t cursor = 0;
    for (int left = state["display_cursor"]; left > 0 && cursor < line.size(); --left)
        cursor += static_cast<unsigned char>(line[cursor]) < 0x80 ? 1 : 2;
    return line.insert(cursor, "|");
}

} // namespace

Player::Player() { begin(""); }

void Player::begin(const std::string& heading) {
    drive_ = std::make_unique<Driven>();
    drive_->session.simulator->around.catalogue = naming_catalogue();
    if (const std::size_t listing = heading.find('['); listing != std::string::npos)
        carry_out("load " + heading.substr(listing));
}

std::string Player::outcome_of(const FileCase& row) {
    const std::vector<std::string> commands = commands_of(row.input);
    for (const std::string& command : commands) {
        const std::size_t blank = std::min(command.find(' '), command.size());
        const std::string word = command.substr(0, blank);
        if (word == "refuses" || word == "changes")
            return told_by(word, command.substr(blank + 1));
        carry_out(command);
        if (answer_["ok"] == false)
            return &command == &commands.back() ? "refused" : "refused: " + command;
    }
    if (row.expected.empty())
        return "";
    state_ = nullptr;
    std::string values;
    for (const std::string& name : names_of(row.expected))
        values += (values.empty() ? "" : " ") + name + "=" + simplified(member(name)).dump(-1, ' ', true);
    return values;
}

Json Player::member(const std::string& name) {
    if (answer_.contains(name))
        return answer_[name];
    const Json variables = (*drive_)("vars")["vars"];
    if (name == "vars")
        return variables;
    if (name.size() == 1) // a cell
        return variables.value(name, Json());
    for (const char* question : {"sound", "lcd"}) {
        const Json told = (*drive_)(question);
        if (told.contains(name))
            return told[name];
    }
    return member_of_state(name);
}

/// The state is asked for once in a row, and only then: that empties what it lists.
Json Player::member_of_state(const std::string& name) {
    if (state_.is_null())
        state_ = drive_->state();
    if (state_.contains(name))
        return state_[name];
    if (name == "seen")
        return without_trailing_blanks(state_["visible"]);
    if (name == "line")
        return line_of(state_);
    return name == "error" ? Json(error_of(state_)) : Json();
}

void Player::carry_out(const std::string& line) {
    const std::size_t blank = std::min(line.find(' '), line.size());
    const std::string word = line.substr(0, blank);
    const std::string argument = line.substr(std::min(blank + 1, line.size()));
    answer_ = Json{{"ok", true}};
    if (word == "start")
        start(argument);
    else if (word == "load" && argument.starts_with('['))
        answer_ = drive_->load(argument + "\n");
    else if (!carry_out_as_person(word, argument))
        answer_ = (*drive_)(line);
}

void Player::start(const std::string& lines) {
    begin(numbered_listing(lines));
    EXPECT_EQ(answer_["loaded"], true) << lines;
    drive_->all("run");
}

bool Player::carry_out_as_person(const std::string& word, const std::string& argument) {
    if (word == "down" || word == "again")
        push(KeyEvent::Kind::DOWN, argument, word == "again");
    else if (word == "up")
        push(KeyEvent::Kind::UP, argument);
    else if (word == "lose-focus")
        release_all_keys(drive_->session.simulator->keys);
    else if (word == "keys" || word == "fast")
        type(argument, word == "fast");
    else if (word == "hit")
        drive_->all("press " + argument + "; tick; release " + argument);
    else if (word == "tap")
        drive_->all("soft down " + argument + "; tick; soft up; tick 2");
    else
        return false;
    return true;
}

/// A key goes down or comes up: "A", "36", "HOME", "SHIFT-A", "SHIFT-CTRL-36".
void Player::push(KeyEvent::Kind kind, const std::string& key, bool auto_repeat) {
    KeyEvent event{.kind = kind, .auto_repeat = auto_repeat};
    std::string name = key;
    for (const auto& [prefix, flag] : {std::pair("SHIFT-", &event.modifiers.shift),
                                       {"CTRL-", &event.modifiers.ctrl},
                                       {"ALT-", &event.modifiers.alt}}) {
        *flag = name.starts_with(prefix);
        name.erase(0, *flag ? std::string_view(prefix).size() : 0);
    }
    event.key = KEYS.contains(name) ? KEYS.at(name) : name.size() == 1 ? name[0] : std::stoi(name);
    if (kind == KeyEvent::Kind::DOWN && event.modifiers.alt)
        event.kind = KeyEvent::Kind::SYS_DOWN;
    push_key_event(drive_->session.simulator->keys, event);
}

/// A key of the user's own keyboard: a letter alone is upper case.
void Player::push_character(char c) {
    KeyEvent event{.kind = KeyEvent::Kind::CHARACTER, .key = CHARACTER_KEY_BASE + static_cast<unsigned char>(c)};
    event.character = c;
    event.modifiers.shift = c >= 'a' && c <= 'z';
    push_key_event(drive_->session.simulator->keys, event);
    event.kind = KeyEvent::Kind::UP;
    push_key_event(drive_->session.simulator->keys, event);
}

/// Ticks until the machine has taken all keys, and once more without one.
void Player::feed() {
    constexpr int TICKS_MAX = 2000;
    for (int i = 0; i < TICKS_MAX && !drive_->session.simulator->keys.events.empty(); ++i)
        (*drive_)("tick");
    (*drive_)("tick");
}

void Player::type(std::string_view text, bool at_once) {
    while (!text.empty()) {
        const bool is_named = text[0] == '{' && text.find('}') != std::string_view::npos;
        const std::string name(is_named ? text.substr(1, text.find('}') - 1) : text.substr(0, 1));
        text.remove_prefix(name.size() + (is_named ? 2 : 0));
        if (is_named) {
            push(KeyEvent::Kind::DOWN, name);
            push(KeyEvent::Kind::UP, name);
        } else {
            push_character(name[0]);
        }
        if (at_once)
            continue;
        feed();
        if (name == "EXE")
            drive_->all("wait 100000");
    }
    if (at_once)
        feed();
}

std::string Player::told_by(const std::string& word, const std::string& argument) {
    return word == "changes" ? drive_->changed_by(argument) : accepted(argument);
}

/// Those of some commands, with "|" between them, that are not refused, or change something all the same.
std::string Player::accepted(const std::string& lines) {
    drive_->state();
    const Json before = drive_->state();
    std::istringstream commands(lines);
    std::string accepted;
    for (std::string line; std::getline(commands, line, '|');) {
        const Json answer = (*drive_)(line);
        const bool refused = answer["ok"] == false && answer.size() == 2 && answer["error"].is_string();
        if (!refused || drive_->state() != before || drive_->session.finished)
            accepted += line + "|";
    }
    return accepted;
}

} // namespace quillon::testing
