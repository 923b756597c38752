// SPDX-License-Identifier: MIT
// The things that a person can do, and how they are chosen.
#include "fuzz/user.h"

#include "core/invariants.h"
#include "core/keywords.h"
#include "files/host_disk.h"
#include "keys/soft_keys.h"
#include "keys/virtual_keys.h"
#include "shell/clipboard.h"
#include "shell/skins.h"

#include <cstdio>
#include <cstdlib>
#include <string>

namespace quillon::fuzz {
namespace {

std::vector<Input> strike(KeyEvent event) {
    const Input down = key_input(event);
    event.kind = KeyEvent::Kind::UP;
    return {down, key_input(event)};
}

std::vector<Input> press_exe(Choices&) { return strike({.key = VK_ENTER}); }

std::vector<Input> press_key(Choices& choices) {
    const int modifiers = choices.below(16);
    KeyEvent event{.key = choices.below(256)};
    event.kind = modifiers == 15 ? KeyEvent::Kind::SYS_DOWN : KeyEvent::Kind::DOWN;
    event.modifiers = {.shift = modifiers % 4 == 1, .ctrl = modifiers % 8 == 2, .alt = modifiers == 15};
    return strike(event);
}

std::vector<Input> press_digit(Choices& choices) { return strike({.key = '0' + choices.below(10)}); }

std::vector<Input> press_clear(Choices&) { return strike({.key = VK_HOME}); }

std::vector<Input> press_editing_key(Choices& choices) {
    constexpr int KEYS[] = {VK_BACKSPACE, VK_END, VK_HOME, VK_LEFT, VK_UP, VK_RIGHT, VK_DOWN, VK_INSERT, VK_DELETE};
    return strike({.key = KEYS[choices.below(static_cast<int>(std::size(KEYS)))]});
}

std::vector<Input> type_character(Choices& choices) {
    const int character = choices.below(256);
    return strike({KeyEvent::Kind::CHARACTER, CHARACTER_KEY_BASE + character, static_cast<char>(character)});
}

std::vector<Input> type_word(Choices& choices) {
    const auto words = vocabulary();
    const auto word = words[static_cast<std::size_t>(choices.below(static_cast<int>(words.size())))].spelling;
    return {{.verb = InputVerb::KEY_STRING, .text = std::string(word)}};
}

std::vector<Input> let_go(Choices&) {
    return {{.verb = InputVerb::DROP_KEYS}, {.verb = InputVerb::KEY_STRING, .text = std::string(1, '\0')}};
}

std::vector<Input> press_soft_key(Choices& choices) {
    const int key = choices.below(SOFT_KEY_COUNT);
    return {{.verb = InputVerb::SOFT_DOWN, .numbers = {key / SOFT_KEY_COLUMNS, key % SOFT_KEY_COLUMNS}}};
}

std::vector<Input> release_soft_key(Choices&) { return {{.verb = InputVerb::SOFT_UP}}; }

std::vector<Input> click(Choices& choices) {
    constexpr InputVerb CLICKS[] = {InputVerb::CLICK_LEFT, InputVerb::CLICK_DOUBLE, InputVerb::CLICK_RIGHT};
    const InputVerb verb = CLICKS[choices.below(3)];
    const int x = choices.below(256) * 2 - 60;
    return {{.verb = verb, .numbers = {x, choices.below(128) - 20}}};
}

std::vector<Input> run_program(Choices&) { return {{.verb = InputVerb::HOST_COMMAND, .numbers = {COMMAND_RUN}}}; }

std::vector<Input> give_command(Choices& choices) {
    return {{.verb = InputVerb::HOST_COMMAND, .numbers = {HOST_COMMAND_FIRST + choices.below(HOST_COMMAND_COUNT)}}};
}

constexpr std::vector<Input> (*ACTIONS[])(Choices&) = {
    press_exe, press_exe, press_exe,      press_key,        press_key, press_digit, press_editing_key, type_character,
    type_word, let_go,    press_soft_key, release_soft_key, click,     run_program, give_command,      press_clear,
};

} // namespace

int Choices::below(int count) {
    unsigned byte = 0;
    if (!bytes_.empty()) {
        byte = static_cast<unsigned char>(bytes_.front());
        bytes_.remove_prefix(1);
    } else {
        state_ ^= state_ << 13;
        state_ ^= state_ >> 7;
        state_ ^= state_ << 17;
        byte = static_cast<unsigned>(state_ >> 24) & 0xFF;
    }
    return static_cast<int>(byte % static_cast<unsigned>(count));
}

std::unique_ptr<Simulator> make_simulator() {
    auto s = std::make_unique<Simulator>();
    s->disk = host_disk();
    auto clipboard = std::make_shared<std::string>();
    s->around.host.copy_text = [clipboard](std::string_view text) { *clipboard = clipboard_part(text); };
    s->around.host.paste_text = [clipboard] { return pasted_part(*clipboard); };
    s->around.host.milliseconds = [] { return 1U; };
    static const LcdPicture PICTURE = [] { // its skin takes longer to unpack than most inputs to run
        const auto first = std::make_unique<Simulator>();
        load_skin(*first, {});
        return first->lcd;
    }();
    s->lcd = PICTURE;
    return s;
}

std::vector<Input> choose_inputs(Choices& choices) {
    return ACTIONS[choices.below(static_cast<int>(std::size(ACTIONS)))](choices);
}

void act(Simulator& s, Choices& choices) {
    for (const Input& input : choose_inputs(choices))
        apply_input(s, input);
}

void tick(Simulator& s) {
    simulator_tick(s);
#ifndef QUILLON_CHECK_INVARIANTS // else the tick has done it
    require_invariants(s.machine);
#endif
}

void require(bool holds, const char* what) {
    if (holds)
        return;
    std::fprintf(stderr, "quillon: %s\n", what);
    std::abort();
}

std::string_view take_until(std::string_view& text, char mark) {
    const std::string_view part = text.substr(0, text.find(mark));
    text.remove_prefix(std::min(part.size() + 1, text.size()));
    return part;
}

} // namespace quillon::fuzz
