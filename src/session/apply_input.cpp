// SPDX-License-Identifier: MIT
// What each input does to a simulator.
#include "core/controls.h"
#include "core/run_control.h"
#include "keys/virtual_keys.h"
#include "session/cell_text.h"
#include "session/input.h"
#include "session/machine_image.h"
#include "shell/commands.h"
#include "shell/simulator.h"
#include "shell/skins.h"

namespace quillon {
namespace {

/// What `character` holds down: no virtual key's code.
constexpr int CHARACTER_CODE = CHARACTER_KEY_BASE;

void set_modifier(Modifiers& modifiers, std::string_view name, bool down) {
    bool& modifier = name == "shift" ? modifiers.shift : name == "ctrl" ? modifiers.ctrl : modifiers.alt;
    modifier = down;
}

void set_key_down(Simulator& s, int key, bool down) {
    std::erase(s.keys.down_keys, key);
    if (down)
        s.keys.down_keys.push_back(key);
}

void press(Simulator& s, const Input& input) {
    const int key = static_cast<int>(input.numbers[0]);
    set_key_down(s, key, true);
    if (input.verb == InputVerb::ALT_PRESS)
        on_sys_key_down(s.machine, key);
    else
        on_key_down(s.machine, key, input.verb == InputVerb::REPEAT);
}

/// A byte 00 ends a pending key.
std::string_view up_to_nul(const std::string& bytes) { return bytes.c_str(); }

void type_character(Simulator& s, const Input& input) {
    set_key_down(s, CHARACTER_CODE, !input.text.empty());
    if (input.text.empty())
        return;
    set_pending_key(s.machine, up_to_nul(input.text), CHARACTER_CODE);
}

void click(Simulator& s, const Input& input, LcdClick kind) {
    on_lcd_click(s.machine, kind, static_cast<int>(input.numbers[0]), static_cast<int>(input.numbers[1]));
}

void soft(Simulator& s, const Input& input) {
    open_soft_keyboard(s.machine);
    if (input.verb == InputVerb::SOFT_UP)
        return soft_mouse_up(s.machine);
    soft_mouse_down(s.machine, static_cast<int>(input.numbers[0]), static_cast<int>(input.numbers[1]));
}

/// Puts the moment of an image in place, with its skin where that can be had. Bytes that are no image do nothing.
void restore(Simulator& s, const Input& input) {
    ImageFault fault{};
    auto moment = read_moment_image(input.content ? *input.content : "", fault);
    if (!moment)
        return;
    if (moment->tone_plays || s.machine.sound.tone.samples > 0)
        s.machine.around->host.stop_tone();
    moment->listing_path = s.preferences.last_file;
    moment->listing_was_read = s.listing_was_read;
    restore_moment(s, *moment);
    load_skin(s, moment->skin->name);
}

KeyEvent key_event(const Input& input) {
    KeyEvent event{.key = static_cast<int>(input.numbers[0])};
    const auto bit = [&input](int place) { return (input.numbers[1] >> place & 1) != 0; };
    event.modifiers = {.shift = bit(0), .ctrl = bit(1), .alt = bit(2)};
    event.auto_repeat = bit(3);
    if (input.verb == InputVerb::KEY_UP) {
        event.kind = KeyEvent::Kind::UP;
    } else if (input.verb == InputVerb::ALT_KEY_DOWN) {
        event.kind = KeyEvent::Kind::SYS_DOWN;
    } else if (!input.text.empty()) {
        event.kind = KeyEvent::Kind::CHARACTER;
        event.character = input.text[0];
    }
    return event;
}

} // namespace

bool apply_input(Simulator& s, const Input& input) {
    Machine& m = s.machine;
    switch (input.verb) {
    case InputVerb::SET:
    case InputVerb::ADJUST: find_field(input.word)->set(m, input.numbers[0]); break;
    case InputVerb::CELL: cell_at(m, *find_cell(input.word)) = *parse_cell(input.text); break;
    case InputVerb::HOST_COMMAND: run_host_command(s, static_cast<int>(input.numbers[0])); break;
    case InputVerb::LOAD: return open_listing(s, input.text);
    case InputVerb::HOLD: set_modifier(s.modifiers, input.word, true); break;
    case InputVerb::UNHOLD: set_modifier(s.modifiers, input.word, false); break;
    case InputVerb::PRESS:
    case InputVerb::REPEAT:
    case InputVerb::ALT_PRESS: press(s, input); break;
    case InputVerb::RELEASE: set_key_down(s, static_cast<int>(input.numbers[0]), false); break;
    case InputVerb::KEY_STRING: set_pending_key(m, up_to_nul(input.text)); break;
    case InputVerb::TEXT: set_pending_key(m, input.text, m.keys.held_key); break;
    case InputVerb::CHARACTER: type_character(s, input); break;
    case InputVerb::ENTRY: m.entry.entry_line.text = input.text; break;
    case InputVerb::EXE: press_exe(m); break;
    case InputVerb::EXE_HELD: s.exe_held = input.numbers[0] != 0; break;
    case InputVerb::BEGIN_ENTRY:
        if (m.run.run_state == STATE_RUN && m.eval.stmt_kind == KIND_PROMPT)
            begin_entry(m);
        break;
    case InputVerb::ASK_AGAIN:
        if (m.run.run_state == STATE_RUN && m.eval.stmt_kind == KIND_INPUT_ERROR)
            prompt_again(m);
        break;
    case InputVerb::SOFT_DOWN:
    case InputVerb::SOFT_UP: soft(s, input); break;
    case InputVerb::CLICK_LEFT: click(s, input, LcdClick::LEFT); break;
    case InputVerb::CLICK_DOUBLE: click(s, input, LcdClick::LEFT_DOUBLE); break;
    case InputVerb::CLICK_RIGHT: click(s, input, LcdClick::RIGHT); break;
    case InputVerb::RESTORE: restore(s, input); break;
    case InputVerb::STEP: take_step(m); break;
    case InputVerb::KEY_DOWN:
    case InputVerb::ALT_KEY_DOWN:
    case InputVerb::KEY_UP: push_key_event(s.keys, key_event(input)); break;
    case InputVerb::DROP_KEYS: release_all_keys(s.keys); break;
    case InputVerb::ANSWER_FILE:
    case InputVerb::ANSWER_NO_FILE:
    case InputVerb::ANSWER_PASTE:
    case InputVerb::ANSWER_TIME: break;
    }
    return true;
}

} // namespace quillon
