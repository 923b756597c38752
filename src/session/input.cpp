// SPDX-License-Identifier: MIT
// The vocabulary as a table: how the line of each input is read and written. session/apply_input.cpp carries them out.
#include "session/input.h"

#include "keys/virtual_keys.h"
#include "session/cell_text.h"
#include "session/line_reader.h"
#include "shell/commands.h"
#include "shell/key_queue.h"

#include <iterator>
#include <limits>
#include <optional>

namespace quillon {
namespace {

/// How the arguments of a line are read and written, one letter each.
///   n  a whole number within the row's range      w  a word
///   x  bytes, within the row's range of how many  t  bytes to the end of the line
///   h  modifier keys: letters of "scar", or "-"
struct Row {
    std::string_view name;
    InputVerb verb;
    std::string_view arguments;
    long long lowest = 0;
    long long highest = 0;
    std::string_view numbers = "The number"; ///< what the numbers are, for the sentence about their range
    std::string_view usage{};                ///< said instead, about any argument that is not right
};

constexpr long long COORDINATE_MAX = 100'000;
constexpr long long KEY_CODE_MAX = CHARACTER_KEY_BASE + 0xFFFF;
constexpr long long FILE_SIZE_MAX = 1 << 21;
constexpr std::string_view MODIFIER_USAGE = "Name shift, ctrl or alt.";
constexpr std::string_view BYTES_USAGE = "Give 1 to 15 bytes, two hexadecimal digits each.";
constexpr std::string_view CLICK_USAGE = "Say left, double or right, and two whole numbers.";
constexpr std::string_view SOFT_USAGE = "Say up, or down with a row from 0 to 3 and a column from 0 to 13.";
constexpr std::string_view CELL_USAGE = "Name a cell, and a number or a text in quotes.";

// clang-format off
constexpr Row ROWS[] = {
    {"set",            InputVerb::SET,            "wt"},
    {"cell",           InputVerb::CELL,           "wt", 0, 0, "", CELL_USAGE},
    {"host",           InputVerb::HOST_COMMAND,   "n", HOST_COMMAND_FIRST, HOST_COMMAND_LAST, "A command"},
    {"load",           InputVerb::LOAD,           "t", 0, 0, "", "Name a listing file."},
    {"hold",           InputVerb::HOLD,           "w", 0, 0, "", MODIFIER_USAGE},
    {"unhold",         InputVerb::UNHOLD,         "w", 0, 0, "", MODIFIER_USAGE},
    {"press",          InputVerb::PRESS,          "n", 0, 255, "A virtual key"},
    {"repeat",         InputVerb::REPEAT,         "n", 0, 255, "A virtual key"},
    {"altpress",       InputVerb::ALT_PRESS,      "n", 0, 255, "A virtual key"},
    {"release",        InputVerb::RELEASE,        "n", 0, 255, "A virtual key"},
    {"key",            InputVerb::KEY_STRING,     "x", 1, 15, "", BYTES_USAGE},
    {"exe",            InputVerb::EXE,            ""},
    {"soft down",      InputVerb::SOFT_DOWN,      "nn", 0, 13, "", SOFT_USAGE},
    {"soft up",        InputVerb::SOFT_UP,        "", 0, 0, "", SOFT_USAGE},
    {"click left",     InputVerb::CLICK_LEFT,     "nn", -COORDINATE_MAX, COORDINATE_MAX, "", CLICK_USAGE},
    {"click double",   InputVerb::CLICK_DOUBLE,   "nn", -COORDINATE_MAX, COORDINATE_MAX, "", CLICK_USAGE},
    {"click right",    InputVerb::CLICK_RIGHT,    "nn", -COORDINATE_MAX, COORDINATE_MAX, "", CLICK_USAGE},

    {"key-down",       InputVerb::KEY_DOWN,       "nhx", 0, KEY_CODE_MAX},
    {"alt-key-down",   InputVerb::ALT_KEY_DOWN,   "nh", 0, KEY_CODE_MAX},
    {"key-up",         InputVerb::KEY_UP,         "n", 0, KEY_CODE_MAX},
    {"drop-keys",      InputVerb::DROP_KEYS,      ""},
    {"text",           InputVerb::TEXT,           "x", 0, 15, "", BYTES_USAGE},
    {"character",      InputVerb::CHARACTER,      "x", 0, 15, "", BYTES_USAGE},
    {"entry",          InputVerb::ENTRY,          "x", 0, 127, "", BYTES_USAGE},
    {"begin-entry",    InputVerb::BEGIN_ENTRY,    ""},
    {"ask-again",      InputVerb::ASK_AGAIN,      ""},
    {"exe-held",       InputVerb::EXE_HELD,       "n", 0, 1},
    {"adjust",         InputVerb::ADJUST,         "wt"},
    {"step-statement", InputVerb::STEP,           ""},
    {"restore-state",  InputVerb::RESTORE,        "n", 0, FILE_SIZE_MAX},

    {"answer-file",    InputVerb::ANSWER_FILE,    "n", 0, FILE_SIZE_MAX},
    {"answer-no-file", InputVerb::ANSWER_NO_FILE, "n", 1, 3}, // a ReadStatus
    {"answer-paste",   InputVerb::ANSWER_PASTE,   "x", 0, 15},
    {"answer-time",    InputVerb::ANSWER_TIME,    "n", 0, std::numeric_limits<std::uint32_t>::max()},
};

// clang-format on

bool begins_with_word(std::string_view line, std::string_view name) {
    return line.starts_with(name) && (line.size() == name.size() || line[name.size()] == ' ');
}

const Row* row_of(std::string_view line) {
    for (const Row& row : ROWS) {
        if (begins_with_word(line, row.name))
            return &row;
    }
    return nullptr;
}

const Row& row_of(InputVerb verb) {
    const Row* row = std::begin(ROWS);
    while (row->verb != verb)
        ++row;
    return *row;
}

Refusal refusal_of(const Row& row) {
    if (!row.usage.empty())
        return Refusal(row.usage);
    return row.arguments.empty() ? "This command takes no argument."
                                 : number_refusal(row.numbers, row.lowest, row.highest);
}

/// Modifier keys as bits, in the order of their letters.
constexpr std::string_view MODIFIER_LETTERS = "scar";

std::optional<long long> parse_modifiers(std::string_view word) {
    long long bits = 0;
    for (const char letter : word == "-" ? std::string_view() : word) {
        const std::size_t bit = MODIFIER_LETTERS.find(letter);
        if (bit == std::string_view::npos)
            return std::nullopt;
        bits |= 1LL << bit;
    }
    return bits;
}

std::string modifier_word(long long bits) {
    std::string word;
    for (std::size_t bit = 0; bit < MODIFIER_LETTERS.size(); ++bit)
        word += (bits >> bit & 1) != 0 ? MODIFIER_LETTERS.substr(bit, 1) : "";
    return word.empty() ? "-" : word;
}

/// Reads one argument; false when it is not what its letter says.
bool read_argument(char letter, const Row& row, LineReader& reader, Input& input, std::size_t& count) {
    if (letter == 'w') {
        input.word = reader.word();
        return true;
    }
    if (letter == 't') {
        input.text = reader.rest();
        return true;
    }
    if (letter == 'x') {
        const bool of_key = row.verb == InputVerb::KEY_DOWN; // at most the character that it types
        auto bytes = parse_hexadecimal(reader.word(), static_cast<std::size_t>(of_key ? 0 : row.lowest),
                                       static_cast<std::size_t>(of_key ? 1 : row.highest));
        input.text = bytes.value_or("");
        return bytes.has_value();
    }
    const auto number = letter == 'h' ? parse_modifiers(reader.word()) : reader.number(row.lowest, row.highest);
    input.numbers[count++] = number.value_or(0);
    return number.has_value();
}

/// The number of a `set` or `adjust`, whose range is that of its field.
Refusal check_set(Input& input, unsigned uses) {
    const Field* field = find_field(input.word);
    if (field == nullptr || (field->uses & uses) == 0)
        return "There is no such field to set.";
    const long long highest = highest_to_set(*field);
    const auto number = parse_number(input.text, field->lowest, highest);
    if (!number)
        return number_refusal("This field", field->lowest, highest);
    input.numbers[0] = *number;
    input.text.clear();
    return {};
}

/// What no single argument tells.
Refusal check_input(const Row& row, Input& input) {
    const bool modifier = input.word == "shift" || input.word == "ctrl" || input.word == "alt";
    switch (input.verb) {
    case InputVerb::SET: return check_set(input, FIELD_SETTABLE);
    case InputVerb::ADJUST: return check_set(input, ADJUSTABLE);
    case InputVerb::CELL: return find_cell(input.word) && parse_cell(input.text) ? Refusal() : refusal_of(row);
    case InputVerb::LOAD: return input.text.empty() ? refusal_of(row) : Refusal();
    case InputVerb::HOLD:
    case InputVerb::UNHOLD: return modifier ? Refusal() : refusal_of(row);
    case InputVerb::SOFT_DOWN: return input.numbers[0] > 3 ? refusal_of(row) : Refusal();
    default: return {};
    }
}

/// Lines whose words stand for a host command; nothing when the line is none.
std::optional<Refusal> parse_command_word(std::string_view line, Input& input) {
    for (const HostCommandRow& row : host_commands()) {
        if (row.script.empty() || !begins_with_word(line, row.script))
            continue;
        input = {.verb = InputVerb::HOST_COMMAND, .numbers = {row.number}};
        return LineReader(line.substr(row.script.size())).at_end() ? Refusal() : "This command takes no argument.";
    }
    constexpr std::string_view PAGE = "page";
    if (!begins_with_word(line, PAGE))
        return std::nullopt;
    const auto page = parse_number(LineReader(line.substr(PAGE.size())).rest(), 0, AREA_COUNT - 1);
    input = {.verb = InputVerb::HOST_COMMAND, .numbers = {COMMAND_PAGE_0 + page.value_or(0)}};
    return page ? Refusal() : number_refusal("A page", 0, AREA_COUNT - 1);
}

} // namespace

long long highest_to_set(const Field& field) {
    constexpr long long TICKS_MAX = 100'000; // where the record takes any number of ticks
    return field.highest == std::numeric_limits<int>::max() ? TICKS_MAX : field.highest;
}

bool is_input_line(std::string_view line) {
    Input ignored;
    return row_of(line) != nullptr || parse_command_word(line, ignored).has_value() || begins_with_word(line, "soft") ||
           begins_with_word(line, "click");
}

Refusal parse_input(std::string_view line, Input& input) {
    if (const auto refusal = parse_command_word(line, input))
        return *refusal;
    const Row* row = row_of(line);
    if (row == nullptr)
        return Refusal(begins_with_word(line, "soft")    ? SOFT_USAGE
                       : begins_with_word(line, "click") ? CLICK_USAGE
                                                         : "There is no such command.");
    input = {.verb = row->verb};
    LineReader reader(line.substr(row->name.size()));
    std::size_t count = 0;
    for (const char letter : row->arguments) {
        if (!read_argument(letter, *row, reader, input, count))
            return refusal_of(*row);
    }
    return reader.at_end() ? check_input(*row, input) : refusal_of(*row);
}

std::string input_line(const Input& input) {
    const Row& row = row_of(input.verb);
    std::string line(row.name);
    if (input.verb == InputVerb::SET || input.verb == InputVerb::ADJUST)
        return line + " " + input.word + " " + std::to_string(input.numbers[0]);
    std::size_t count = 0;
    for (const char letter : row.arguments) {
        line += ' ';
        switch (letter) {
        case 'w': line += input.word; break;
        case 't': line += input.text; break;
        case 'x': line += hexadecimal(input.text); break;
        case 'h': line += modifier_word(input.numbers[count++]); break;
        default: line += std::to_string(input.numbers[count++]);
        }
    }
    return line;
}

Input restore_input(std::string image) {
    return {.verb = InputVerb::RESTORE,
            .numbers = {static_cast<long long>(image.size())},
            .content = std::make_shared<const std::string>(std::move(image))};
}

Input key_input(const KeyEvent& event) {
    if (event.kind == KeyEvent::Kind::UP)
        return {.verb = InputVerb::KEY_UP, .numbers = {event.key}};
    const Modifiers& keys = event.modifiers;
    const long long bits =
        (keys.shift ? 1 : 0) | (keys.ctrl ? 2 : 0) | (keys.alt ? 4 : 0) | (event.auto_repeat ? 8 : 0);
    Input input{.verb = InputVerb::KEY_DOWN, .numbers = {event.key, bits}};
    if (event.kind == KeyEvent::Kind::SYS_DOWN)
        input.verb = InputVerb::ALT_KEY_DOWN;
    else if (event.kind == KeyEvent::Kind::CHARACTER)
        input.text = std::string(1, event.character);
    return input;
}

} // namespace quillon
