// SPDX-License-Identifier: MIT
// The configuration dialog: editor, start, speed, keys, number forms and sound.
#pragma once

#include "shell/configuration.h"

#include <QDialog>

#include <functional>

class QAbstractButton;
class QLineEdit;
class QSpinBox;

namespace quillon {

struct Session;
struct Simulator;

class ConfigurationDialog : public QDialog {
    Q_OBJECT

public:
    /// `show_message` gets the texts about values that were not accepted.
    ConfigurationDialog(Session& session, std::function<void(const QString&)> show_message, QWidget* parent);

    /// Takes the fields over when the dialog was accepted.
    void done(int result) override;

private:
    /// A number field of the dialog, and two buttons of which one is chosen, with the settings that they show.
    struct NumberControl {
        const NumberSetting* setting;
        QSpinBox* box;
    };
    struct SwitchControl {
        const NumberSetting* setting;
        QAbstractButton* on;
        QAbstractButton* off; ///< null where `on` is a check box
    };

    [[nodiscard]] QString text(int number, const char* otherwise = "") const;
    QSpinBox* add_number(const char* key, const QString& label, const char* name);
    void add_switch(const char* key, QAbstractButton* on, QAbstractButton* off = nullptr);
    QWidget* editor_row();
    QWidget* start_group();
    QWidget* digits_rows();
    QWidget* sound_group();
    QWidget* button_row();
    void fill_in();
    [[nodiscard]] StoredSettings typed() const;
    void browse();

    Session& session;
    Simulator& simulator; ///< of the session: to look at
    std::function<void(const QString&)> show_message;
    StoredSettings settings; ///< as the dialog opened
    QLineEdit* editor = nullptr;
    std::vector<NumberControl> numbers;
    std::vector<SwitchControl> switches;
};

} // namespace quillon
