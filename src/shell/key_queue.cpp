// SPDX-License-Identifier: MIT
// Pacing key events.
#include "shell/key_queue.h"

#include "core/controls.h"
#include "core/machine.h"
#include "keys/key_map.h"
#include "keys/virtual_keys.h"

#include <algorithm>

namespace quillon {
namespace {

constexpr std::size_t EVENTS_MAX = 256;

bool is_down(const KeyEvent& event) { return event.kind != KeyEvent::Kind::UP; }

bool same_key(const KeyEvent& a, const KeyEvent& b) {
    return a.kind == b.kind && a.key == b.key && a.character == b.character && a.modifiers.shift == b.modifiers.shift &&
           a.modifiers.ctrl == b.modifiers.ctrl && a.modifiers.alt == b.modifiers.alt;
}

/// An INPUT list is on its way to its next prompt, which the next tick shows: a key that came now would be nobody's.
bool is_between_prompts(const Machine& m) { return m.run.run_state == STATE_RUN && m.eval.stmt_kind == KIND_INPUT; }

void key_up(KeyQueue& queue, int key) { std::erase(queue.down_keys, key); }

/// An error that is shown takes no keys but those that clear it, a tone that the program waits for none at all.
bool error_holds(const Machine& m) { return failed(m) && m.error.error_code != ERROR_INPUT; }
bool tone_holds(const Machine& m) { return m.sound.sound_holds_run; }

bool equals_last(const KeyQueue& queue, const KeyEvent& event) {
    return !event.auto_repeat && queue.last_down && same_key(*queue.last_down, event);
}

/// Whether a key may go down in this tick. While a tone holds the machine only an urgent one does; one that an error
/// would not take goes down and is lost. An equal one waits
/// for a tick without a key, and sees to it that there is one: its first press may never come up.
bool may_go_down(KeyQueue& queue, const Machine& m, const KeyEvent& event) {
    if (tone_holds(m))
        return is_urgent(event);
    if (error_holds(m))
        return true;
    if (is_key_unread(m) || is_between_prompts(m))
        return false;
    if (!equals_last(queue, event) || !queue.key_in_last_tick)
        return true;
    key_up(queue, event.key);
    return false;
}

/// While a tone holds the machine, an urgent key overtakes those that wait for its end; they are dropped.
void let_urgent_key_through(KeyQueue& queue) {
    const auto urgent = std::find_if(queue.events.begin(), queue.events.end(), is_urgent);
    if (urgent == queue.events.end())
        return;
    for (auto event = queue.events.begin(); event != urgent; ++event) {
        if (!is_down(*event))
            key_up(queue, event->key);
    }
    queue.events.erase(queue.events.begin(), urgent);
}

/// Whether a key-up means something: the key is down, or will be when the waiting events have been fed.
bool is_or_will_be_down(const KeyQueue& queue, int key) {
    const auto last = std::find_if(queue.events.rbegin(), queue.events.rend(),
                                   [key](const KeyEvent& event) { return event.key == key; });
    return last == queue.events.rend() ? is_key_down(queue, key) : is_down(*last);
}

} // namespace

bool is_urgent(const KeyEvent& event) {
    return event.kind == KeyEvent::Kind::DOWN && (acts_at_once(event.key) || event.key == VK_HOME);
}

void push_key_event(KeyQueue& queue, const KeyEvent& event) {
    const bool has_room = queue.events.size() < (is_urgent(event) ? 2 * EVENTS_MAX : EVENTS_MAX);
    const bool wanted = is_down(event) ? has_room && (!event.auto_repeat || queue.events.empty())
                                       : is_or_will_be_down(queue, event.key);
    if (wanted)
        queue.events.push_back(event);
}

void release_all_keys(KeyQueue& queue) {
    queue.events.clear();
    queue.down_keys.clear();
}

std::optional<KeyEvent> next_key_down(KeyQueue& queue, const Machine& m) {
    if (tone_holds(m))
        let_urgent_key_through(queue);
    while (!queue.events.empty()) {
        const KeyEvent event = queue.events.front();
        if (is_down(event)) {
            if (!may_go_down(queue, m, event))
                return std::nullopt;
            queue.events.pop_front();
            return event;
        }
        queue.events.pop_front();
        key_up(queue, event.key);
    }
    return std::nullopt;
}

void apply_key_down(KeyQueue& queue, Machine& m, const KeyEvent& event) {
    queue.last_down = event;
    if (!event.auto_repeat)
        forget_last_key(m);
    key_up(queue, event.key);
    queue.down_keys.push_back(event.key);
    switch (event.kind) {
    case KeyEvent::Kind::SYS_DOWN: on_sys_key_down(m, event.key); break;
    case KeyEvent::Kind::CHARACTER: on_character(m, event.character, event.key); break;
    default: on_key_down(m, event.key, event.auto_repeat);
    }
    if (m.keys.key_string.empty())
        clear_key(m); // EXE while a letter is still down: that one is no key for what comes next
}

void note_pending_key(KeyQueue& queue, const Machine& m) { queue.key_in_last_tick = !m.keys.key_string.empty(); }

bool is_key_down(const KeyQueue& queue, int key) {
    return std::find(queue.down_keys.begin(), queue.down_keys.end(), key) != queue.down_keys.end();
}

} // namespace quillon
