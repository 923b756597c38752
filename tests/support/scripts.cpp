// SPDX-License-Identifier: MIT
// Scripts for a machine under test.
#include "tests/support/scripts.h"

#include "core/charset.h"
#include "keys/virtual_keys.h"
#include "shell/commands.h"
#include "tests/support/evaluation.h"

#include <charconv>
#include <sstream>
#include <stdexcept>

namespace quillon::testing {
namespace {

constexpr const char* STATE_NAMES[] = {"run",    "wait",    "input",         "stopped",    "ended",
                                       "select", "command", "command-error", "line-shown", "to-command"};

/// A tick with a key of the PC's keyboard or of the soft keyboard; it is up again at the end of the tick.
void tick_with_key(TestMachine& t, int virtual_key, std::string_view key, int soft_key = 0) {
    t.m.keys.held_key = virtual_key;
    t.m.keys.key_string = key;
    t.m.soft.soft_key_code = soft_key;
    t.tick();
    t.m.keys.held_key = t.m.soft.soft_key_code = 0;
    t.m.keys.key_string.clear();
}

void play_word(TestMachine& t, std::string_view word) {
    int count = 0;
    if (std::from_chars(word.data(), word.data() + word.size(), count).ec == std::errc())
        t.tick(count);
    else if (word == "exe")
        t.exe();
    else if (word == "home")
        tick_with_key(t, VK_HOME, "\x06");
    else if (word == "up")
        tick_with_key(t, VK_UP, "\x08");
    else if (word == "soft")
        tick_with_key(t, 0, "", number_of(KEY_CLEAR));
    else if (word == "run")
        run_host_command(*t.simulator, COMMAND_RUN);
    else if (word == "stop")
        run_host_command(*t.simulator, COMMAND_STOP);
    else if (word.size() == 1)
        tick_with_key(t, as_byte(word[0]), word);
    else
        throw std::invalid_argument("no such word in a script: " + std::string(word));
}

} // namespace

void play(TestMachine& t, std::string_view script) {
    std::istringstream words{std::string(script)};
    for (std::string word; std::getline(words, word, ' ');) // a key may be a line feed
        play_word(t, word);
}

std::string moment(const TestMachine& t) {
    std::string visible = t.visible();
    visible.erase(visible.find_last_not_of(' ') + 1);
    return std::string(STATE_NAMES[number_of(t.m.run.run_state)]) + " " +
           std::to_string(number_of(t.m.eval.stmt_kind)) + " " + std::to_string(t.m.screen.display_cursor) + " [" +
           visible + "]";
}

std::string failure_of(const TestMachine& t) {
    if (!failed(t.m) && t.detail_id().empty())
        return "ok";
    return (!failed(t.m) ? "ended" : t.display()) + " " + t.detail_id() + t.detail();
}

std::string printed(TestMachine& t, std::string_view setup, std::string_view expression) {
    t.start("VAC:MODE 4:SET N\n" + std::string(setup) + (setup.empty() ? "" : "\n") + "PRINT " +
            std::string(expression));
    for (int i = 0; i < 2000 && t.m.run.run_state == STATE_RUN && t.m.eval.stmt_kind != KIND_SCROLL; ++i)
        t.tick();
    if (failed(t.m))
        return failure_of(t.m);
    std::string shown(t.m.screen.display_line.data(), static_cast<std::size_t>(t.m.screen.display_cursor));
    shown += t.m.run.scroll.pending_print_text.view(); // what has yet to scroll in
    return escaped(std::string_view(shown).substr(shown.starts_with(' ') ? 1 : 0));
}

} // namespace quillon::testing
