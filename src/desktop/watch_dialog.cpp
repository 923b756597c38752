// SPDX-License-Identifier: MIT
// Fields of a watch, and reading them.
#include "desktop/watch_dialog.h"

#include "core/charset.h"
#include "desktop/catalogue_text.h"
#include "session/cell_text.h"
#include "shell/window_texts.h"

#include <QComboBox>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QLabel>
#include <QLineEdit>
#include <QSpinBox>

#include <climits>
#include <utility>

namespace quillon {
namespace {

constexpr const WindowText* KINDS[] = {&WATCH_LINE, &WATCH_CELL, &WATCH_DISPLAY, &WATCH_ERROR};

QString unicode_of(std::string_view bytes) { return QString::fromStdString(to_unicode(bytes)); }
std::string bytes_of(const QLineEdit& field) { return from_unicode(field.text().trimmed().toStdString()); }

QSpinBox* make_number(int lowest, int highest, int value) {
    auto* box = new QSpinBox;
    box->setRange(lowest, highest);
    box->setValue(value);
    return box;
}

} // namespace

WatchDialog::WatchDialog(DebugControl& control_, const MessageCatalogue& catalogue_, const Watch& watch,
                         std::function<void(const QString&)> note_, QWidget* parent)
    : QDialog(parent), control(control_), catalogue(catalogue_), note(std::move(note_)), replaced(watch.id) {
    setAttribute(Qt::WA_DeleteOnClose);
    setWindowTitle(text(DEBUGGER_WATCHES));
    form = new QFormLayout(this);
    add_fields(*form, watch);
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel);
    connect(buttons, &QDialogButtonBox::accepted, this, &WatchDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &WatchDialog::reject);
    form->addRow(buttons);
    connect(kind, &QComboBox::currentIndexChanged, this, [this] { show_fields(); });
    show_fields();
}

QString WatchDialog::text(const WindowText& row) const {
    return catalogue_text(catalogue, row.section, row.number, row.built_in);
}

void WatchDialog::add_fields(QFormLayout& rows, const Watch& watch) {
    const auto add = [&](const WindowText& label, QWidget* field) {
        field->setAccessibleName(text(label));
        rows.addRow(text(label), field);
    };
    kind = new QComboBox;
    for (const WindowText* row : KINDS)
        kind->addItem(text(*row));
    kind->setCurrentIndex(static_cast<int>(watch.kind));
    area = make_number(0, AREA_COUNT - 1, watch.area);
    line = make_number(0, INT_MAX, watch.line);
    cell = new QLineEdit(unicode_of(cell_path(watch.cell)));
    shown = new QLineEdit(unicode_of(watch.text));
    condition = new QLineEdit(unicode_of(watch.condition));
    hits = make_number(1, INT_MAX, watch.hits_wanted);
    message = new QLineEdit(unicode_of(watch.message));
    message->setPlaceholderText(QStringLiteral("A={A}"));
    add(WATCH_KIND, kind);
    add(WATCH_AREA, area);
    add(WATCH_LINE, line);
    add(WATCH_VARIABLE, cell);
    add(WATCH_TEXT, shown);
    add(WATCH_CONDITION, condition);
    add(WATCH_HITS, hits);
    add(WATCH_MESSAGE, message);
}

/// Only those that the kind has.
void WatchDialog::show_fields() {
    const auto chosen = static_cast<Watch::Kind>(kind->currentIndex());
    const std::pair<QWidget*, Watch::Kind> fields[] = {
        {area, Watch::Kind::LINE}, {line, Watch::Kind::LINE}, {cell, Watch::Kind::CELL}, {shown, Watch::Kind::DISPLAY}};
    for (const auto& [field, wanted] : fields) {
        field->setVisible(wanted == chosen);
        form->labelForField(field)->setVisible(wanted == chosen);
    }
    adjustSize();
}

/// Returns what is wrong with the fields; null when nothing is.
const WindowText* WatchDialog::read(Watch& watch) const {
    watch.kind = static_cast<Watch::Kind>(kind->currentIndex());
    watch.area = area->value();
    watch.line = line->value();
    watch.text = bytes_of(*shown);
    watch.condition = bytes_of(*condition);
    watch.hits_wanted = hits->value();
    watch.message = bytes_of(*message);
    const auto found = find_cell(bytes_of(*cell));
    watch.cell = found.value_or(0);
    if (watch.kind == Watch::Kind::CELL && !found)
        return &WATCH_NO_VARIABLE;
    if (watch.kind == Watch::Kind::DISPLAY && watch.text.empty())
        return &WATCH_NO_TEXT;
    return nullptr;
}

void WatchDialog::accept() {
    Watch watch;
    if (const WindowText* fault = read(watch))
        return note(text(*fault));
    const int wanted = watch.line;
    if (!control.put_watch(watch, replaced))
        return note(text(WATCH_NO_LINE));
    if (watch.kind == Watch::Kind::LINE && watch.line != wanted)
        note(text(WATCH_MOVED).arg(wanted).arg(watch.line));
    QDialog::accept();
}

QString watch_text(const Watch& watch) {
    QString words;
    switch (watch.kind) {
    case Watch::Kind::LINE: words = QStringLiteral("P%1-%2").arg(watch.area).arg(watch.line); break;
    case Watch::Kind::CELL: words = unicode_of(cell_path(watch.cell)); break;
    case Watch::Kind::DISPLAY: words = QLatin1Char('"') + unicode_of(watch.text) + QLatin1Char('"'); break;
    case Watch::Kind::ERROR: words = QStringLiteral("ERR"); break;
    }
    if (!watch.condition.empty())
        words += QLatin1String(" if ") + unicode_of(watch.condition);
    if (watch.hits_wanted > 1)
        words += QStringLiteral(" (%1/%2)").arg(watch.hits).arg(watch.hits_wanted);
    if (!watch.message.empty())
        words += QStringLiteral(" \u2192 ") + unicode_of(watch.message);
    return words;
}

} // namespace quillon
