// SPDX-License-Identifier: MIT
// Watching widgets, and remembering which keys are down.
#include "desktop/machine_keyboard.h"

#include "desktop/key_events.h"

#include <QGuiApplication>

#include <algorithm>
#include <utility>

namespace quillon {

MachineKeyboard::MachineKeyboard(Session& session_, WindowKey window_key_, QObject* parent)
    : QObject(parent), session(session_), simulator(session_.simulator), window_key(std::move(window_key_)) {
    connect(qGuiApp, &QGuiApplication::focusWindowChanged, this, &MachineKeyboard::follow_focus);
}

void MachineKeyboard::watch(QWidget& widget) {
    std::erase(widgets, nullptr);
    widgets.emplace_back(&widget);
    widget.installEventFilter(this);
}

void MachineKeyboard::press(const QKeyEvent& event) {
    if (window_key(event))
        return;
    follow_modifiers(event);
    // Where other programs wait for a letter, a blank gives the dead key's own character, which is there already.
    const bool ends_dead_key = std::exchange(after_dead_key, is_dead_key(event)) && event.key() == Qt::Key_Space;
    const auto key = key_down_from(event, simulator.machine.settings.ascii_mode);
    if (!key || ends_dead_key)
        return;
    session_input(session, key_input(*key));
    const quint32 place = event.nativeScanCode();
    const bool is_known = std::any_of(
        held.begin(), held.end(), [&](const HeldKey& other) { return other.place == place && other.code == key->key; });
    if (!is_known)
        held.push_back({place, key->key});
}

void MachineKeyboard::follow_modifiers(const QKeyEvent& event) {
    Modifiers modifiers = simulator.modifiers;
    quillon::follow_modifiers(modifiers, event);
    pass_modifiers(modifiers);
}

/// Passes on those that have changed.
void MachineKeyboard::pass_modifiers(const Modifiers& now) {
    const Modifiers before = simulator.modifiers;
    const auto pass = [this](const char* name, bool was_down, bool down) {
        if (down != was_down)
            session_input(session, {.verb = down ? InputVerb::HOLD : InputVerb::UNHOLD, .word = name});
    };
    pass("shift", before.shift, now.shift);
    pass("ctrl", before.ctrl, now.ctrl);
    pass("alt", before.alt, now.alt);
}

/// What a key types depends on mode, modifiers and locks, and any of them may have changed since it went down.
void MachineKeyboard::release(const QKeyEvent& event) {
    follow_modifiers(event);
    if (event.isAutoRepeat())
        return;
    const quint32 place = event.nativeScanCode();
    for (const HeldKey& key : held) {
        if (key.place == place)
            session_input(session, key_input({.kind = KeyEvent::Kind::UP, .key = key.code}));
    }
    std::erase_if(held, [place](const HeldKey& key) { return key.place == place; });
}

bool MachineKeyboard::eventFilter(QObject* watched, QEvent* event) {
    switch (event->type()) {
    case QEvent::ShortcutOverride: event->accept(); return true; // Alt is the machine's, too
    case QEvent::KeyPress: press(*static_cast<QKeyEvent*>(event)); return true;
    case QEvent::KeyRelease: release(*static_cast<QKeyEvent*>(event)); return true;
    case QEvent::FocusOut:
        if (static_cast<QFocusEvent*>(event)->reason() != Qt::ActiveWindowFocusReason)
            let_go();
        break;
    default: break;
    }
    return QObject::eventFilter(watched, event);
}

/// Nobody tells of keys that come up while something else has the keyboard.
void MachineKeyboard::let_go() {
    held.clear();
    pass_modifiers({});
    if (!simulator.keys.events.empty() || !simulator.keys.down_keys.empty())
        session_input(session, {.verb = InputVerb::DROP_KEYS});
    after_dead_key = false;
}

/// From one watched window to another the keys stay where they are.
void MachineKeyboard::follow_focus(const QWindow* window) {
    const bool is_watched = std::any_of(widgets.begin(), widgets.end(), [window](const QPointer<QWidget>& widget) {
        return window != nullptr && widget != nullptr && widget->window()->windowHandle() == window;
    });
    if (!is_watched)
        let_go();
}

} // namespace quillon
