// SPDX-License-Identifier: MIT
// The dialog for a breakpoint or a watch: what to stop at, on which condition, from which time on, or what to log.
#pragma once

#include "desktop/debug_control.h"

#include <QDialog>

#include <functional>

class QComboBox;
class QFormLayout;
class QLineEdit;
class QSpinBox;

namespace quillon {

struct WindowText;

class WatchDialog : public QDialog {
    Q_OBJECT

public:
    /// Asks for a watch that begins as this one; it is put in the place of that with its `id`, 0 for a new one. `note`
    /// shows what the user should know. Deletes itself.
    WatchDialog(DebugControl& control, const MessageCatalogue& catalogue, const Watch& watch,
                std::function<void(const QString&)> note, QWidget* parent);

protected:
    void accept() override;

private:
    void add_fields(QFormLayout& form, const Watch& watch);
    void show_fields();
    [[nodiscard]] const WindowText* read(Watch& watch) const;
    [[nodiscard]] QString text(const WindowText& row) const;

    DebugControl& control;
    const MessageCatalogue& catalogue;
    std::function<void(const QString&)> note;
    int replaced; ///< number of the watch that is edited
    QFormLayout* form = nullptr;
    QComboBox* kind = nullptr;
    QSpinBox* area = nullptr;
    QSpinBox* line = nullptr;
    QLineEdit* cell = nullptr;
    QLineEdit* shown = nullptr;
    QLineEdit* condition = nullptr;
    QSpinBox* hits = nullptr;
    QLineEdit* message = nullptr;
};

/// A watch in a few words: `P0-30 if A>3`.
QString watch_text(const Watch& watch);

} // namespace quillon
