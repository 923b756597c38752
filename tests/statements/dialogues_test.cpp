// SPDX-License-Identifier: MIT
// A person and the machine: what is shown after each thing that the person does. In the files characters stand for
// their keys and words in braces for other keys and events; the machine is at an empty command line below each heading.
#include "shell/commands.h"
#include "tests/statements/changes.h"
#include "tests/support/cases_file.h"
#include "tests/support/keyboard.h"
#include "tests/support/scripts.h"

#include <gtest/gtest.h>

#include <stdexcept>

namespace quillon::testing {
namespace {

using Act = std::function<void(CommandLine& t, const std::string& rest)>;

Act key(int virtual_key, Modifiers modifiers = NONE) {
    return [=](CommandLine& t, const std::string&) { press(t, virtual_key, modifiers); };
}

Act host_command(int command) {
    return [=](CommandLine& t, const std::string&) { run_host_command(*t.simulator, command); };
}

void exe(CommandLine& t, const std::string&) {
    t.exe();
    t.wait();
}

void start(CommandLine& t, const std::string& program) {
    t.start(program);
    t.wait();
}

int code_of_key(const std::string& name) { return name == "EXE" ? ENTER : static_cast<unsigned char>(name.at(0)); }

/// The words in braces; what stands behind a word's blank is its rest.
const std::map<std::string, Act> WORDS = {
    {"EXE", exe},
    {"HOME", key(HOME)},
    {"END", key(END)},
    {"LEFT", key(LEFT)},
    {"RIGHT", key(RIGHT)},
    {"UP", key(UP)},
    {"DOWN", key(DOWN)},
    {"BS", key(BACKSPACE)},
    {"DEL", key(DEL)},
    {"INS", key(INSERT)},
    {"EX", key(F7)},
    {"PAD-", key(109)},
    {"SHIFT-LEFT", key(LEFT, SHIFT)},
    {"SHIFT-RIGHT", key(RIGHT, SHIFT)},
    {"SHIFT-A", key('A', SHIFT)},
    {"SHIFT-K", key('K', SHIFT)},
    {"CLEAR", [](CommandLine& t, const std::string&) { play(t, "soft"); }},
    {"STOP", host_command(COMMAND_STOP)},
    {"RUN", host_command(COMMAND_RUN)},
    {"load", [](CommandLine& t, const std::string& program) { t.load_program(program); }},
    {"start", start},
    {"page", [](CommandLine& t, const std::string& area) { t.m.settings.run_page = std::stoi(area); }},
    {"ticks", [](CommandLine& t, const std::string& count) { t.tick(std::stoi(count)); }},
    {"machine-keys", [](CommandLine& t, const std::string&) { t.m.settings.ascii_mode = false; }},
    // text and EXE, all keys before the first tick
    {"fast", [](CommandLine& t, const std::string& text) { type_at_once(t, text + "\n"), t.wait(); }},
    // two keys, "3 EXE": the second goes down before the first comes up
    {"roll", [](CommandLine& t, const std::string& keys) { roll_over(t, keys.at(0), code_of_key(keys.substr(2))); }},
};

void act(CommandLine& t, std::string_view doing) {
    while (!doing.empty()) {
        if (doing[0] == '{') {
            if (doing.find('}') == std::string_view::npos)
                throw std::invalid_argument("a brace stays open");
            const std::string word(doing.substr(1, doing.find('}') - 1));
            const std::size_t blank = std::min(word.find(' '), word.size());
            WORDS.at(word.substr(0, blank))(t, word.substr(std::min(blank + 1, word.size())));
            doing.remove_prefix(word.size() + 2);
        } else {
            type(t, doing.substr(0, 1));
            doing.remove_prefix(1);
        }
    }
}

/// The error; or "line AB|C", "entry AB|C" with the cursor while a line is typed; "asks N?"; "result 5"; or the run
/// state with what is displayed. At prompts and behind a program's end the variables follow.
std::string seen(const TestMachine& t) {
    const Machine& m = t.m;
    if (failed(m))
        return failure_of(t);
    if (m.run.run_state == STATE_COMMAND || m.run.run_state == STATE_INPUT) {
        const std::string_view line = m.entry.entry_line.text.view();
        const auto cursor = static_cast<std::size_t>(m.screen.display_cursor);
        return (m.run.run_state == STATE_INPUT ? "entry " : "line ") + escaped(line.substr(0, cursor)) + "|" +
               escaped(line.substr(cursor));
    }
    std::string state = moment(t).substr(0, moment(t).find(' '));
    if (m.eval.stmt_kind == KIND_RESULT)
        state = "result";
    const bool asks = m.run.run_state == STATE_RUN && m.eval.stmt_kind == KIND_PROMPT;
    if (asks)
        state = "asks";
    const std::string changed = asks || m.run.run_state == STATE_ENDED ? changes(m) : "";
    return state + (t.display().empty() ? "" : " ") + t.display() + changed;
}

/// Plays a file. Rows of `is_lines` without braces are lines that `says` enters and clears.
void expect_dialogues(const std::string& file, bool is_lines) {
    std::unique_ptr<CommandLine> t;
    std::string heading;
    expect_cases(file, [&](const FileCase& row) {
        if (t == nullptr || row.heading != heading)
            t = std::make_unique<CommandLine>();
        heading = row.heading;
        if (is_lines && row.input[0] != '{')
            return t->says(row.input);
        act(*t, row.input);
        return seen(*t);
    });
}

TEST(Dialogues, OfLinesAndTheirAnswers) { expect_dialogues("statements/command_lines.txt", true); }
TEST(Dialogues, OfKeys) { expect_dialogues("statements/dialogues.txt", false); }

} // namespace
} // namespace quillon::testing
