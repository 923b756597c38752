// SPDX-License-Identifier: MIT
// The things that a person can do, and how they are chosen.
#include "fuzz/user.h"

#include "core/controls.h"
#include "core/invariants.h"
#include "core/keywords.h"
#include "keys/soft_keys.h"
#include "keys/virtual_keys.h"
#include "shell/clipboard.h"
#include "shell/commands.h"
#include "shell/skins.h"

#include <cstdio>
#include <cstdlib>
#include <string>

namespace quillon::fuzz {
namespace {

void strike(Simulator& s, KeyEvent event) {
    push_key_event(s.keys, event);
    event.kind = KeyEvent::Kind::UP;
    push_key_event(s.keys, event);
}

void press_exe(Simulator& s, Choices&) { strike(s, {.key = VK_ENTER}); }

void press_key(Simulator& s, Choices& choices) {
    const int modifiers = choices.below(16);
    KeyEvent event{.key = choices.below(256)};
    event.kind = modifiers == 15 ? KeyEvent::Kind::SYS_DOWN : KeyEvent::Kind::DOWN;
    event.modifiers = {.shift = modifiers % 4 == 1, .ctrl = modifiers % 8 == 2, .alt = modifiers == 15};
    strike(s, event);
}

void press_digit(Simulator& s, Choices& choices) { strike(s, {.key = '0' + choices.below(10)}); }

void press_clear(Simulator& s, Choices&) { strike(s, {.key = VK_HOME}); }

void press_editing_key(Simulator& s, Choices& choices) {
    constexpr int KEYS[] = {VK_BACKSPACE, VK_END, VK_HOME, VK_LEFT, VK_UP, VK_RIGHT, VK_DOWN, VK_INSERT, VK_DELETE};
    strike(s, {.key = KEYS[choices.below(static_cast<int>(std::size(KEYS)))]});
}

void type_character(Simulator& s, Choices& choices) {
    const int character = choices.below(256);
    strike(s, {KeyEvent::Kind::CHARACTER, CHARACTER_KEY_BASE + character, static_cast<char>(character)});
}

void type_word(Simulator& s, Choices& choices) {
    const auto words = vocabulary();
    set_pending_key(s.machine, words[static_cast<std::size_t>(choices.below(static_cast<int>(words.size())))].spelling);
}

void let_go(Simulator& s, Choices&) {
    release_all_keys(s.keys);
    clear_key(s.machine);
}

void press_soft_key(Simulator& s, Choices& choices) {
    open_soft_keyboard(s.machine);
    const int key = choices.below(SOFT_KEY_COUNT);
    soft_mouse_down(s.machine, key / SOFT_KEY_COLUMNS, key % SOFT_KEY_COLUMNS);
}

void release_soft_key(Simulator& s, Choices&) { soft_mouse_up(s.machine); }

void click(Simulator& s, Choices& choices) {
    const auto kind = static_cast<LcdClick>(choices.below(3));
    const int x = choices.below(256) * 2 - 60;
    on_lcd_click(s.machine, kind, x, choices.below(128) - 20);
}

void run_program(Simulator& s, Choices&) { run_host_command(s, COMMAND_RUN); }

void give_command(Simulator& s, Choices& choices) {
    run_host_command(s, HOST_COMMAND_FIRST + choices.below(HOST_COMMAND_COUNT));
}

constexpr void (*ACTIONS[])(Simulator&, Choices&) = {
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

void act(Simulator& s, Choices& choices) { ACTIONS[choices.below(static_cast<int>(std::size(ACTIONS)))](s, choices); }

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
