// SPDX-License-Identifier: MIT
// The key queue: key events in the order in which they came, fed to the machine at a pace at which it loses none. At
// most one key goes down in a tick, never comes up again in the same one, and between two equal keys there is a tick
// without a key, since the line editor takes a key that stays for one that is held. Keys that the machine does not take
// never block those after them: an error drops them, and a tone lets the keys through that act at once.
#pragma once

#include <deque>
#include <optional>
#include <vector>

namespace quillon {

struct Machine;

/// The PC's modifier keys at a moment.
struct Modifiers {
    bool shift = false;
    bool ctrl = false;
    bool alt = false;

    bool operator==(const Modifiers&) const = default;
};

/// A key event.
struct KeyEvent {
    enum class Kind {
        DOWN,      ///< a virtual key goes down
        SYS_DOWN,  ///< a virtual key goes down while Alt is held
        CHARACTER, ///< a key of the user's own layout goes down; `character` is what it types
        UP,        ///< the key comes up
    };
    Kind kind = Kind::DOWN;
    int key = 0; ///< virtual key, or for characters a code of CHARACTER_KEY_BASE and up
    char character = 0;
    bool auto_repeat = false;
    Modifiers modifiers{};

    bool operator==(const KeyEvent&) const = default;
};

/// Events that have not been fed yet, and the keys that are down as far as the machine knows.
struct KeyQueue {
    std::deque<KeyEvent> events;
    std::vector<int> down_keys;
    std::optional<KeyEvent> last_down; ///< the last key that was fed
    bool key_in_last_tick = false;     ///< a key was pending during the last tick

    bool operator==(const KeyQueue&) const = default;
};

/// Whether a key acts at once, or leads out of where the machine is: nothing may hold it up.
bool is_urgent(const KeyEvent& event);

/// Adds an event. A repeat is dropped while others wait, and so is everything but key-ups and urgent keys when 256
/// events wait.
void push_key_event(KeyQueue& queue, const KeyEvent& event);

/// All keys come up and what waits is dropped: the window has lost the keyboard.
void release_all_keys(KeyQueue& queue);

/// Feeds key-ups up to the next key that may go down now, and returns that one for `apply_key_down`, if any.
std::optional<KeyEvent> next_key_down(KeyQueue& queue, const Machine& m);

/// Hands a key-down to the machine; its modifiers have been sampled.
void apply_key_down(KeyQueue& queue, Machine& m, const KeyEvent& event);

/// Notes what the tick that has just been made saw. To be called once a tick, before the machine's.
void note_pending_key(KeyQueue& queue, const Machine& m);

/// Whether a key is down as far as the machine knows.
bool is_key_down(const KeyQueue& queue, int key);

} // namespace quillon
