// SPDX-License-Identifier: MIT
// Composing the configuration dialog. What its values mean, and which are accepted, is the shell's business.
#include "desktop/configuration_dialog.h"

#include "desktop/catalogue_text.h"
#include "desktop/plain_text.h"
#include "session/session.h"

#include <QCheckBox>
#include <QFileDialog>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QSpinBox>
#include <QVBoxLayout>

#include <algorithm>
#include <utility>

namespace quillon {
namespace {

constexpr const char* SECTION = "DLG_CONFIG";
constexpr int PATH_LENGTH_MAX = 259;

/// The numbers of the labels in the section.
enum Label : int {
    LABEL_TITLE = 0,
    LABEL_OK,
    LABEL_CANCEL,
    LABEL_EDITOR,
    LABEL_BROWSE,
    LABEL_RUN_PAGE,
    LABEL_SPEED,
    LABEL_START_MODE,
    LABEL_START_BASIC,
    LABEL_START_COMMAND,
    LABEL_ASCII_MODE,
    LABEL_DIGITS,
    LABEL_SOUND,
    LABEL_VOLUME,
    LABEL_PCM,
    LABEL_BEEP,
};

/// Its arrows stay between the ends of its row; what is typed may lie outside and is judged when the dialog is
/// accepted.
class TypedSpinBox : public QSpinBox {
public:
    explicit TypedSpinBox(const DialogField& field) : low(field.first), high(field.last) {
        constexpr int TYPED_MAX = 99999;
        setRange(-TYPED_MAX, TYPED_MAX);
    }

    void stepBy(int steps) override { setValue(std::clamp(value() + steps, low, high)); }

protected:
    [[nodiscard]] StepEnabled stepEnabled() const override {
        return (value() < high ? StepUpEnabled : StepNone) | (value() > low ? StepDownEnabled : StepNone);
    }

private:
    int low;
    int high;
};

/// A screen reader's name for a control: its label, or a word of its own where the catalogue has none.
void name_control(QWidget& control, const QString& label, const char* fallback) {
    control.setAccessibleName(label.isEmpty() ? QString::fromUtf8(fallback) : label.simplified());
}

/// A number field between its label and its unit.
QWidget* number_row(const QString& label_text, QSpinBox* field, const QString& unit) {
    auto* row = new QWidget;
    auto* layout = new QHBoxLayout(row);
    layout->setContentsMargins(0, 0, 0, 0);
    QLabel* label = plain_label(label_text);
    label->setBuddy(field);
    layout->addWidget(label);
    layout->addWidget(field);
    layout->addWidget(plain_label(unit));
    layout->addStretch();
    return row;
}

/// The settings that the dialog opens with.
StoredSettings begin(Session& session) {
    StoredSettings settings;
    adjust_settings(session, [&settings](Simulator& s) { settings = begin_configuration(s); });
    return settings;
}

} // namespace

ConfigurationDialog::ConfigurationDialog(Session& session_, std::function<void(const QString&)> show_message_,
                                         QWidget* parent)
    : QDialog(parent), session(session_), simulator(session_.simulator), show_message(std::move(show_message_)),
      settings(begin(session_)) {
    setAttribute(Qt::WA_DeleteOnClose);
    setWindowTitle(text(LABEL_TITLE));
    auto* ascii_mode = new QCheckBox(text(LABEL_ASCII_MODE));
    name_control(*ascii_mode, text(LABEL_ASCII_MODE), "ASCII input");
    add_switch("INPUTMODE", ascii_mode);
    QSpinBox* run_page = add_number("RUNPAGE", text(LABEL_RUN_PAGE), "Start page");
    QSpinBox* interval = add_number("TIMER", text(LABEL_SPEED), "Timer interval");

    auto* column = new QVBoxLayout(this);
    column->setSizeConstraint(QLayout::SetFixedSize);
    column->addWidget(editor_row());
    column->addWidget(number_row(text(LABEL_RUN_PAGE), run_page, {}));
    column->addWidget(number_row(text(LABEL_SPEED), interval, QStringLiteral("[ms]")));
    column->addWidget(start_group());
    column->addWidget(ascii_mode);
    column->addWidget(digits_rows());
    column->addWidget(sound_group());
    column->addWidget(button_row());
    fill_in();
    editor->setFocus();
}

/// A field for the number of a row; `name` is what a screen reader calls it where the label is empty.
QSpinBox* ConfigurationDialog::add_number(const char* key, const QString& label, const char* name) {
    const SettingRow& row = *find_setting(key);
    auto* box = new TypedSpinBox(*row.dialog);
    name_control(*box, label, name);
    numbers.push_back({&std::get<NumberSetting>(row.field), box});
    return box;
}

void ConfigurationDialog::add_switch(const char* key, QAbstractButton* on, QAbstractButton* off) {
    switches.push_back({&std::get<NumberSetting>(find_setting(key)->field), on, off});
}

QString ConfigurationDialog::text(int number, const char* otherwise) const {
    return catalogue_text(simulator.machine.around->catalogue, SECTION, number, otherwise);
}

QWidget* ConfigurationDialog::editor_row() {
    auto* row = new QWidget;
    auto* layout = new QGridLayout(row);
    layout->setContentsMargins(0, 0, 0, 0);
    editor = new QLineEdit;
    name_control(*editor, text(LABEL_EDITOR), "Text editor");
    QLabel* label = plain_label(text(LABEL_EDITOR));
    label->setBuddy(editor);
    auto* browse_button = new QPushButton(text(LABEL_BROWSE));
    browse_button->setAutoDefault(false);
    name_control(*browse_button, text(LABEL_BROWSE), "Browse");
    connect(browse_button, &QPushButton::clicked, this, &ConfigurationDialog::browse);
    layout->addWidget(label, 0, 0, 1, 2);
    layout->addWidget(editor, 1, 0);
    layout->addWidget(browse_button, 1, 1);
    return row;
}

QWidget* ConfigurationDialog::start_group() {
    auto* group = new QGroupBox(text(LABEL_START_MODE));
    auto* layout = new QHBoxLayout(group);
    auto* start_basic = new QRadioButton(text(LABEL_START_BASIC));
    auto* start_command = new QRadioButton(text(LABEL_START_COMMAND));
    name_control(*start_basic, text(LABEL_START_BASIC), "BASIC");
    name_control(*start_command, text(LABEL_START_COMMAND), "Command");
    add_switch("STARTMODE", start_command, start_basic);
    layout->addWidget(start_basic);
    layout->addWidget(start_command);
    return group;
}

QWidget* ConfigurationDialog::digits_rows() {
    auto* rows = new QWidget;
    auto* layout = new QVBoxLayout(rows);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(plain_label(text(LABEL_DIGITS)));
    auto* fields = new QHBoxLayout;
    for (const auto& [key, name] : {std::pair("INTEGER", "SET E"), {"DECIMAL", "SET F"}, {"FIXED", "SET G"}})
        fields->addWidget(number_row(QLatin1String(name), add_number(key, {}, name), {}));
    layout->addLayout(fields);
    return rows;
}

QWidget* ConfigurationDialog::sound_group() {
    auto* group = new QGroupBox(text(LABEL_SOUND));
    auto* layout = new QVBoxLayout(group);
    auto* kinds = new QHBoxLayout;
    auto* sound_pcm = new QRadioButton(text(LABEL_PCM, "use PCM"));
    auto* sound_beep = new QRadioButton(text(LABEL_BEEP, "use BEEP"));
    add_switch("PCMBEEP", sound_pcm, sound_beep);
    kinds->addWidget(sound_pcm);
    kinds->addWidget(sound_beep);
    layout->addLayout(kinds);
    QSpinBox* volume = add_number("BEEPVOLUME", text(LABEL_VOLUME), "BEEP volume");
    layout->addWidget(number_row(text(LABEL_VOLUME), volume, {}));
    return group;
}

QWidget* ConfigurationDialog::button_row() {
    auto* row = new QWidget;
    auto* layout = new QHBoxLayout(row);
    layout->setContentsMargins(0, 0, 0, 0);
    auto* ok = new QPushButton(text(LABEL_OK));
    auto* cancel = new QPushButton(text(LABEL_CANCEL));
    ok->setDefault(true);
    cancel->setAutoDefault(false);
    name_control(*ok, text(LABEL_OK), "OK");
    name_control(*cancel, text(LABEL_CANCEL), "Cancel");
    connect(ok, &QPushButton::clicked, this, &QDialog::accept);
    connect(cancel, &QPushButton::clicked, this, &QDialog::reject);
    layout->addStretch();
    layout->addWidget(ok);
    layout->addWidget(cancel);
    return row;
}

void ConfigurationDialog::fill_in() {
    const QString path = QString::fromLocal8Bit(settings.preferences.editor);
    editor->setMaxLength(std::max<int>(PATH_LENGTH_MAX, static_cast<int>(path.size())));
    editor->setText(path);
    for (const NumberControl& number : numbers)
        number.box->setValue(number.setting->get(settings));
    for (const SwitchControl& choice : switches) {
        const bool on = choice.setting->get(settings) == 1;
        (on || choice.off == nullptr ? choice.on : choice.off)->setChecked(on || choice.off != nullptr);
    }
}

/// What the fields hold, in range or not.
StoredSettings ConfigurationDialog::typed() const {
    StoredSettings result = settings;
    result.preferences.editor = editor->text().toLocal8Bit().toStdString();
    for (const NumberControl& number : numbers)
        number.setting->set(result, number.box->value());
    for (const SwitchControl& choice : switches)
        choice.setting->set(result, choice.on->isChecked() ? 1 : 0);
    return result;
}

void ConfigurationDialog::browse() {
    const MessageCatalogue& catalogue = simulator.machine.around->catalogue;
    const QString programs = catalogue_text(catalogue, "DLG_FILE", 3, "Programs") + QLatin1String("(*.exe) (*.exe)");
    QString every = catalogue_text(catalogue, "DLG_FILE", 2, "All") + QLatin1String("(*.*) (*)"); // no suffix here
    const QString path =
        QFileDialog::getOpenFileName(this, catalogue_text(catalogue, "DLG_FILE", 1, "Select text editor"),
                                     editor->text(), programs + QLatin1String(";;") + every, &every);
    if (!path.isEmpty())
        editor->setText(path);
}

void ConfigurationDialog::done(int result) {
    if (result == Accepted) {
        std::vector<int> refused;
        adjust_settings(session, [&](Simulator& s) { refused = accept_configuration(s, typed()); });
        for (const int message : refused)
            show_message(text(message));
    } else {
        adjust_settings(session, cancel_configuration);
    }
    QDialog::done(result);
}

} // namespace quillon
