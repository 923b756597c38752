// SPDX-License-Identifier: MIT
// Mapping and holding keys.
#include "terminal/play_keys.h"

#include "core/charset.h"
#include "core/controls.h"
#include "core/machine.h"
#include "keys/virtual_keys.h"
#include "shell/simulator.h"

#include <algorithm>

namespace quillon {
namespace {

constexpr std::size_t WAITING_MAX = 65536; ///< hours of typing; more is no text that anybody pasted

bool is_letter(char c) { return to_lower(c) >= 'a' && to_lower(c) <= 'z'; }

/// Signs that have a key of their own, whose level can be chosen.
struct SignKey {
    char sign;
    int virtual_key;
};

// clang-format off
constexpr SignKey SIGN_KEYS[] = {
    {'*', VK_PAD_MULTIPLY}, {'+', VK_PAD_ADD},    {'-', VK_PAD_SUBTRACT},
    {'.', VK_PAD_DECIMAL},  {'/', VK_PAD_DIVIDE}, {'=', VK_PERIOD},
};
// clang-format on

int virtual_key_of(char c) {
    for (const SignKey& key : SIGN_KEYS) {
        if (key.sign == c)
            return key.virtual_key;
    }
    return is_letter(c) || is_digit(c) || c == ' ' ? as_byte(to_upper(c)) : 0;
}

/// The machine's character; NUL where it has none.
char machine_character(const std::string& typed) {
    const std::string text = from_unicode(typed);
    const bool one = text.size() == 1 && as_byte(text[0]) >= ' ' && as_byte(text[0]) != 127;
    return one && (text[0] != '?' || typed == "?") ? text[0] : '\0';
}

Modifiers modifiers_of(KeyLevel level) {
    const bool shift = level == LEVEL_SHIFT || level == LEVEL_SHIFT_CTRL;
    const bool ctrl = level == LEVEL_CTRL || level == LEVEL_SHIFT_CTRL;
    return {shift, ctrl, level == LEVEL_ALT};
}

KeyEvent::Kind down_kind(KeyLevel level) {
    return level == LEVEL_ALT ? KeyEvent::Kind::SYS_DOWN : KeyEvent::Kind::DOWN;
}

/// Whether the tick that comes asks for the key that is down, so that the key has been used after it.
bool tick_uses_key(const Machine& m) {
    if (m.sound.sound_ticks_left > 1 && m.sound.sound_holds_run)
        return false;
    return failed(m) || m.run.run_state != STATE_RUN || m.eval.stmt_kind == KIND_INPUT_ERROR;
}

/// The key comes up; the machine has seen enough of it.
void release_key(Typist& typist, Simulator& s) {
    KeyEvent up;
    up.kind = KeyEvent::Kind::UP;
    up.key = typist.down->key;
    push_key_event(s.keys, up);
    typist.down.reset();
    clear_key(s.machine);
}

/// While a tone holds the machine, a key that acts at once overtakes those that wait for its end.
void let_urgent_key_through(Typist& typist, Simulator& s) {
    const auto urgent = std::find_if(typist.waiting.begin(), typist.waiting.end(), is_urgent);
    if (!s.machine.sound.sound_holds_run || urgent == typist.waiting.end())
        return;
    typist.waiting.erase(typist.waiting.begin(), urgent);
    if (typist.down)
        release_key(typist, s);
}

void press_next(Typist& typist, Simulator& s) {
    let_urgent_key_through(typist, s);
    if (typist.down || typist.waiting.empty())
        return;
    typist.down = typist.waiting.front();
    typist.waiting.pop_front();
    if (typist.waiting.empty())
        typist.dropped = 0; // the message about them has been up for long
    typist.ticks_down = 0;
    typist.read = false;
    push_key_event(s.keys, *typist.down);
}

} // namespace

std::optional<KeyEvent> key_event_for(const TypedKey& typed, KeyLevel level, bool ascii_mode) {
    const KeyLevel chosen = typed.alt ? LEVEL_ALT : level;
    KeyEvent event;
    event.modifiers = modifiers_of(chosen);
    event.kind = down_kind(chosen);
    event.key = typed.virtual_key;
    if (event.key != 0)
        return event;
    const char c = machine_character(typed.character);
    if (c == '\0')
        return std::nullopt;
    const bool capital = c >= 'A' && c <= 'Z';
    if (chosen != LEVEL_NONE)
        event.key = virtual_key_of(c);
    else if (!ascii_mode && is_letter(c))
        event.key = as_byte(to_upper(c));
    if (chosen == LEVEL_NONE)
        event.modifiers.shift = capital;
    if (event.key == 0) {
        event.kind = KeyEvent::Kind::CHARACTER;
        event.key = CHARACTER_KEY_BASE + as_byte(c);
        event.character = c;
    }
    return event;
}

KeyLevel next_level(KeyLevel level) {
    return level == LEVEL_ALT ? LEVEL_NONE : static_cast<KeyLevel>(static_cast<int>(level) + 1);
}

std::string_view level_name(KeyLevel level) {
    switch (level) {
    case LEVEL_SHIFT: return "SHIFT";
    case LEVEL_CTRL: return "CTRL";
    case LEVEL_SHIFT_CTRL: return "SHIFT+CTRL";
    case LEVEL_ALT: return "ALT";
    default: return "none";
    }
}

void type_key(Typist& typist, const KeyEvent& event) {
    if (typist.waiting.size() < WAITING_MAX)
        typist.waiting.push_back(event);
    else
        ++typist.dropped;
}

void drop_typed_keys(Typist& typist, Simulator& s) {
    typist.waiting.clear();
    typist.dropped = 0;
    if (typist.down)
        release_key(typist, s);
}

bool tick_with_keys(Typist& typist, Simulator& s) {
    constexpr int HELD_MAX_MS = 1000;
    press_next(typist, s);
    const bool uses_key = tick_uses_key(s.machine);
    s.around.host.key_read = [&typist] { typist.read = true; };
    const bool changed = simulator_tick(s);
    if (!typist.down)
        return changed;
    ++typist.ticks_down;
    const bool waits = !s.keys.events.empty(); // the queue has kept it back for this tick
    const bool too_long = typist.ticks_down * s.machine.settings.timer_interval >= HELD_MAX_MS;
    const bool types_nothing = s.machine.keys.key_string.empty();
    if (!waits && (uses_key || typist.read || types_nothing || too_long))
        release_key(typist, s);
    return changed;
}

} // namespace quillon
