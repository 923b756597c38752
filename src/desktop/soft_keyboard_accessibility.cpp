// SPDX-License-Identifier: MIT
// The toolkit's accessibility interfaces for the soft keyboard, which draws its keys and has no widgets for them.
#include "desktop/soft_keyboard_accessibility.h"

#include "desktop/soft_keyboard_window.h"
#include "keys/soft_keys.h"

#include <QAccessible>
#include <QAccessibleWidget>
#include <QPointer>

#include <array>

namespace quillon {
namespace {

/// The EXE key is two keys of the table, and one for people.
constexpr int KEY_COUNT = SOFT_EXE_KEY + 1;

class KeyAccessible : public QAccessibleInterface, public QAccessibleActionInterface {
public:
    KeyAccessible(SoftKeyboardWindow* keyboard_, int key_) : keyboard(keyboard_), key(key_) {}

    void* interface_cast(QAccessible::InterfaceType type) override {
        return type == QAccessible::ActionInterface ? static_cast<QAccessibleActionInterface*>(this) : nullptr;
    }

    [[nodiscard]] bool isValid() const override { return keyboard != nullptr; }
    [[nodiscard]] QObject* object() const override { return nullptr; }
    [[nodiscard]] QWindow* window() const override { return keyboard->window()->windowHandle(); }
    [[nodiscard]] QAccessibleInterface* parent() const override {
        return QAccessible::queryAccessibleInterface(keyboard);
    }
    [[nodiscard]] QAccessibleInterface* child(int) const override { return nullptr; }
    [[nodiscard]] QAccessibleInterface* childAt(int, int) const override { return nullptr; }
    [[nodiscard]] int childCount() const override { return 0; }
    [[nodiscard]] int indexOfChild(const QAccessibleInterface*) const override { return -1; }

    [[nodiscard]] QAccessible::Role role() const override { return QAccessible::PushButton; }
    [[nodiscard]] QString text(QAccessible::Text kind) const override {
        return kind == QAccessible::Name ? keyboard->key_name(key) : QString();
    }
    void setText(QAccessible::Text, const QString&) override {}
    [[nodiscard]] QRect rect() const override {
        const QRect area = keyboard->key_area(key);
        return {keyboard->mapToGlobal(area.topLeft()), area.size()};
    }
    [[nodiscard]] QAccessible::State state() const override {
        QAccessible::State state;
        state.invisible = !keyboard->isVisible();
        return state;
    }

    [[nodiscard]] QStringList actionNames() const override { return {pressAction()}; }
    void doAction(const QString& action) override {
        if (action == pressAction())
            keyboard->click_key(key);
    }
    [[nodiscard]] QStringList keyBindingsForAction(const QString&) const override { return {}; }

private:
    QPointer<SoftKeyboardWindow> keyboard;
    int key;
};

class KeyboardAccessible : public QAccessibleWidget {
public:
    explicit KeyboardAccessible(SoftKeyboardWindow* keyboard_) : QAccessibleWidget(keyboard_, QAccessible::Grouping) {
        for (int key = 0; key < KEY_COUNT; ++key)
            keys[static_cast<std::size_t>(key)] =
                QAccessible::registerAccessibleInterface(new KeyAccessible(keyboard_, key));
    }

    ~KeyboardAccessible() override {
        for (const QAccessible::Id id : keys)
            QAccessible::deleteAccessibleInterface(id);
    }

    KeyboardAccessible(const KeyboardAccessible&) = delete;
    KeyboardAccessible& operator=(const KeyboardAccessible&) = delete;

    [[nodiscard]] int childCount() const override { return KEY_COUNT; }
    [[nodiscard]] QAccessibleInterface* child(int index) const override {
        const bool exists = index >= 0 && index < KEY_COUNT;
        return exists ? QAccessible::accessibleInterface(keys[static_cast<std::size_t>(index)]) : nullptr;
    }
    [[nodiscard]] QAccessibleInterface* childAt(int x, int y) const override {
        for (int index = 0; index < KEY_COUNT; ++index) {
            if (child(index)->rect().contains(x, y))
                return child(index);
        }
        return nullptr;
    }
    [[nodiscard]] int indexOfChild(const QAccessibleInterface* wanted) const override {
        for (int index = 0; index < KEY_COUNT; ++index) {
            if (child(index) == wanted)
                return index;
        }
        return -1;
    }

private:
    std::array<QAccessible::Id, KEY_COUNT> keys{};
};

QAccessibleInterface* make_interface(const QString&, QObject* object) {
    auto* keyboard = qobject_cast<SoftKeyboardWindow*>(object);
    return keyboard == nullptr ? nullptr : new KeyboardAccessible(keyboard);
}

} // namespace

void install_soft_keyboard_accessibility() { QAccessible::installFactory(make_interface); }

void announce_soft_keys(QWidget* keyboard) {
    QAccessibleInterface* group = QAccessible::isActive() ? QAccessible::queryAccessibleInterface(keyboard) : nullptr;
    for (int index = 0; group != nullptr && index < group->childCount(); ++index) {
        QAccessibleEvent event(group->child(index), QAccessible::NameChanged);
        QAccessible::updateAccessibility(&event);
    }
}

} // namespace quillon
