// SPDX-License-Identifier: MIT
// Presses, releases and repeats of the soft keyboard.
#include "keys/soft_keyboard.h"

#include "core/controls.h"
#include "core/host_commands.h"
#include "core/machine.h"
#include "keys/key_map.h"
#include "keys/soft_keys.h"

namespace quillon {
namespace {

constexpr int NO_KEY = -1;
constexpr int FIRST_REPEAT = 10; ///< ticks from the press to the first repeat
constexpr int NEXT_REPEAT = 2;   ///< ticks between repeats

void highlight(Machine& m, int key) { m.soft.soft_highlight = key >= SOFT_EXE_KEY ? SOFT_EXE_KEY : key; }

void clear_one_shot_latches(Machine& m) {
    m.soft.soft_shift_latch = false;
    m.soft.soft_alt_latch = false;
}

void clear_typed_key(Machine& m) {
    clear_key(m);
    m.soft.soft_key_code = 0;
}

void type_key(Machine& m, const SoftKey& key) {
    set_pending_key(m, key.text.data());
    forget_last_key(m);
    m.soft.soft_key_code = static_cast<unsigned char>(key.text[0]);
    m.soft.soft_repeat_count = 0;
    highlight(m, m.soft.soft_pressed_key);
}

void toggle_shift(Machine& m) {
    m.soft.soft_shift_latch = !m.soft.soft_shift_latch;
    m.soft.soft_alt_latch = false;
}

void toggle_function(Machine& m) {
    m.soft.soft_alt_latch = !m.soft.soft_alt_latch;
    m.soft.soft_shift_latch = false;
}

/// S and F act at once and hold nothing.
void press_latch(Machine& m, void (*toggle)(Machine&)) {
    toggle(m);
    clear_typed_key(m);
    m.soft.soft_pressed_key = NO_KEY;
    m.soft.soft_held_kind = 0;
}

/// Keys that do something other than typing.
void press_action(Machine& m, const SoftKey& key) {
    const int pressed = m.soft.soft_pressed_key;
    clear_typed_key(m);
    if (key.kind != SoftKeyKind::CLOSE)
        clear_one_shot_latches(m);
    highlight(m, pressed);
    switch (key.kind) {
    case SoftKeyKind::EXTENSION_LATCH: m.soft.soft_ctrl_latch = !m.soft.soft_ctrl_latch; break;
    case SoftKeyKind::EXE: press_exe(m); break;
    case SoftKeyKind::BREAK:
        if (m.run.run_state != STATE_COMMAND)
            m.around->host.run_command(COMMAND_STOP);
        break;
    case SoftKeyKind::AREA:
        m.settings.run_page = static_cast<unsigned char>(key.text[0]);
        m.around->host.run_command(COMMAND_LINE);
        break;
    default: break;
    }
}

void press(Machine& m) {
    const SoftKey& key = soft_key(current_soft_layer(m), m.soft.soft_pressed_key);
    m.soft.soft_held_kind = static_cast<int>(key.kind);
    switch (key.kind) {
    case SoftKeyKind::NONE: break;
    case SoftKeyKind::CHARACTER:
    case SoftKeyKind::ONCE: type_key(m, key); break;
    case SoftKeyKind::SHIFT_LATCH: press_latch(m, toggle_shift); break;
    case SoftKeyKind::FUNCTION_LATCH: press_latch(m, toggle_function); break;
    default: press_action(m, key);
    }
}

void release(Machine& m) {
    const auto kind = static_cast<SoftKeyKind>(m.soft.soft_held_kind);
    m.soft.soft_pressed_key = NO_KEY;
    m.soft.soft_held_kind = 0;
    highlight(m, NO_KEY);
    if (kind == SoftKeyKind::CHARACTER || kind == SoftKeyKind::ONCE) {
        clear_typed_key(m);
        clear_one_shot_latches(m);
    } else if (kind == SoftKeyKind::CLOSE) {
        m.around->host.run_command(COMMAND_SOFT_KEYBOARD);
    }
}

/// Types the held key again; for the line editor it is a new press.
void repeat(Machine& m) {
    if (++m.soft.soft_repeat_count < FIRST_REPEAT)
        return;
    m.soft.soft_repeat_count = FIRST_REPEAT - NEXT_REPEAT;
    set_pending_key(m, soft_key(current_soft_layer(m), m.soft.soft_pressed_key).text.data());
    m.soft.soft_key_code = 0;
    forget_last_key(m);
}

} // namespace

void open_soft_keyboard(Machine& m) {
    if (m.soft.soft_open)
        return;
    close_soft_keyboard(m);
    m.soft.soft_open = true;
}

void close_soft_keyboard(Machine& m) {
    if (m.soft.soft_held_kind == static_cast<int>(SoftKeyKind::CHARACTER) ||
        m.soft.soft_held_kind == static_cast<int>(SoftKeyKind::ONCE))
        m.keys.key_string.clear();
    m.soft.soft_open = false;
    m.soft.soft_key_code = 0;
    m.soft.soft_shift_latch = false;
    m.soft.soft_alt_latch = false;
    m.soft.soft_ctrl_latch = false;
    m.soft.soft_pressed_key = NO_KEY;
    m.soft.soft_held_kind = 0;
    m.soft.soft_mouse_down = false;
    m.soft.soft_mouse_up = false;
    m.soft.soft_repeat_count = 0;
    highlight(m, NO_KEY);
}

void soft_mouse_down(Machine& m, int row, int column) {
    const bool on_grid = row >= 0 && row < SOFT_KEY_ROWS && column >= 0 && column < SOFT_KEY_COLUMNS;
    if (!m.soft.soft_open || !on_grid || m.soft.soft_held_kind != 0)
        return;
    m.soft.soft_pressed_key = row * SOFT_KEY_COLUMNS + column;
    m.soft.soft_mouse_down = true;
    m.soft.soft_mouse_up = false;
}

void soft_mouse_up(Machine& m) { m.soft.soft_mouse_up = m.soft.soft_open; }

void soft_keyboard_tick(Machine& m) {
    if (!m.soft.soft_open)
        return;
    if (m.soft.soft_held_kind == 0 && m.soft.soft_mouse_down) {
        m.soft.soft_mouse_down = false;
        press(m);
    } else if (m.soft.soft_mouse_up && !is_key_unread(m)) {
        m.soft.soft_mouse_up = false;
        if (m.soft.soft_held_kind != 0)
            release(m);
    } else if (m.soft.soft_held_kind == static_cast<int>(SoftKeyKind::CHARACTER)) {
        repeat(m);
    }
}

int current_soft_layer(const Machine& m) {
    return soft_layer(m.soft.soft_shift_latch ? 1 : 0, m.soft.soft_alt_latch ? 1 : 0, m.soft.soft_ctrl_latch ? 1 : 0);
}

} // namespace quillon
