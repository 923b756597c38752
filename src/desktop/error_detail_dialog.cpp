// SPDX-License-Identifier: MIT
// Composing the error-detail window.
#include "desktop/error_detail_dialog.h"

#include "core/machine.h"
#include "desktop/catalogue_text.h"
#include "shell/window_texts.h"

#include <QDialog>
#include <QFontDatabase>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QVBoxLayout>

#include <algorithm>

namespace quillon {
namespace {

constexpr int TYPED_MAX = 1024; ///< characters that the field takes

/// Notes may be typed into the text, as long as they find room; they go with the window.
void limit_typing(QPlainTextEdit& field) {
    const auto limit = std::max<qsizetype>(TYPED_MAX, field.toPlainText().size());
    const auto take_back = [&field, limit] {
        if (field.toPlainText().size() > limit)
            field.undo();
    };
    QObject::connect(&field, &QPlainTextEdit::textChanged, &field, take_back, Qt::QueuedConnection);
}

/// What the machine says of its last error. Where nothing is left of the line, words say so.
QString detail_text(const Machine& m) {
    constexpr const char* SOURCE_MARK = "::::"; // before the program text from the fault on
    const QString detail = QString::fromUtf8(m.error.error_detail.c_str());
    if (detail.isEmpty())
        return catalogue_text(m.around->catalogue, "DLG_ERRINFO", 7);
    const QString nothing = QLatin1String(SOURCE_MARK) + QLatin1String("\r\n");
    return QString(detail).replace(nothing, QLatin1String(SOURCE_MARK) +
                                                catalogue_text(m.around->catalogue, "DLG_ERRINFO", 8) + "\r\n");
}

/// A button that closes the dialog and leads elsewhere.
void add_button(QDialog& dialog, const Machine& m, const WindowText& text, const std::function<void()>& act) {
    if (!act)
        return;
    auto* button = new QPushButton(catalogue_text(m.around->catalogue, text.section, text.number, text.built_in));
    button->setAutoDefault(false);
    QObject::connect(button, &QPushButton::clicked, &dialog, [&dialog, act] {
        dialog.close();
        act();
    });
    dialog.layout()->addWidget(button);
}

} // namespace

void show_error_detail(const Machine& m, const ErrorPlaces& places, QWidget* parent) {
    constexpr int MARGIN = 8;
    constexpr int FONT_PIXELS = 12;
    constexpr QSize SIZE(540, 300);
    auto* dialog = new QDialog(parent);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->setWindowTitle(catalogue_text(m.around->catalogue, "DLG_ERRINFO", 0));

    QFont font = QFontDatabase::systemFont(QFontDatabase::FixedFont);
    font.setPixelSize(FONT_PIXELS);
    auto* field = new QPlainTextEdit;
    field->setFont(font);
    field->setLineWrapMode(QPlainTextEdit::NoWrap);
    field->setPlainText(detail_text(m));
    field->setTabChangesFocus(true);
    field->setAccessibleName(dialog->windowTitle());
    limit_typing(*field);

    auto* column = new QVBoxLayout(dialog);
    column->setContentsMargins(MARGIN, MARGIN, MARGIN, MARGIN);
    column->addWidget(field);
    add_button(*dialog, m, ERROR_IN_LISTING, places.show_in_listing);
    add_button(*dialog, m, ERROR_IN_EDITOR, places.open_editor);
    dialog->resize(SIZE);
    dialog->open();
}

} // namespace quillon
