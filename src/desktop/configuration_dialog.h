// SPDX-License-Identifier: MIT
// The configuration dialog: editor, start, speed, keys, number forms and sound.
#pragma once

#include "shell/configuration.h"

#include <QDialog>

#include <functional>

class QCheckBox;
class QLineEdit;
class QRadioButton;
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
    [[nodiscard]] QString text(int number, const char* otherwise = "") const;
    QWidget* editor_row();
    QWidget* start_group();
    QWidget* digits_rows();
    QWidget* sound_group();
    QWidget* button_row();
    void fill_in(const Configuration& fields);
    [[nodiscard]] Configuration fields() const;
    void browse();

    Session& session;
    Simulator& simulator; ///< of the session: to look at
    std::function<void(const QString&)> show_message;
    QLineEdit* editor = nullptr;
    QSpinBox* run_page = nullptr;
    QSpinBox* timer_interval = nullptr;
    QRadioButton* start_basic = nullptr;
    QRadioButton* start_command = nullptr;
    QCheckBox* ascii_mode = nullptr;
    QSpinBox* set_e = nullptr;
    QSpinBox* set_f = nullptr;
    QSpinBox* set_g = nullptr;
    QRadioButton* sound_pcm = nullptr;
    QRadioButton* sound_beep = nullptr;
    QSpinBox* beep_volume = nullptr;
};

} // namespace quillon
