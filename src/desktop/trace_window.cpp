// SPDX-License-Identifier: MIT
// Composing and filling the trace windows.
#include "desktop/trace_window.h"

#include "core/controls.h"
#include "desktop/catalogue_text.h"
#include "desktop/plain_text.h"
#include "desktop/window_places.h"
#include "files/shift_jis.h"

#include <QFontDatabase>
#include <QGridLayout>
#include <QGroupBox>
#include <QLineEdit>
#include <QMouseEvent>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QScreen>
#include <QScrollArea>
#include <QScrollBar>
#include <QVBoxLayout>

#include <algorithm>

namespace quillon {
namespace {

constexpr int CELL_ROWS = 24;
constexpr int COLUMNS_PER_CELL = 2; ///< label and field

/// The numbers of the labels in section DLG_TRACE.
enum Label : int {
    LABEL_TITLE = 0,
    LABEL_EXTENDED,
    LABEL_POSITION,
    LABEL_LAST,
    LABEL_NEXT,
    LABEL_VARIABLES,
    LABEL_STATEMENT_KIND, ///< only said
};

QFont fixed_font() {
    constexpr int FONT_PIXELS = 12;
    QFont font = QFontDatabase::systemFont(QFontDatabase::FixedFont);
    font.setPixelSize(FONT_PIXELS);
    return font;
}

/// A text that can be read and copied only.
QPlainTextEdit* read_only_field() {
    auto* field = new QPlainTextEdit;
    field->setReadOnly(true);
    field->setTextInteractionFlags(Qt::TextSelectableByMouse);
    field->setFont(fixed_font());
    return field;
}

QPlainTextEdit* text_field(int lines) {
    QPlainTextEdit* field = read_only_field();
    field->setContextMenuPolicy(Qt::NoContextMenu);
    const int frame = 2 * (field->frameWidth() + static_cast<int>(field->document()->documentMargin()));
    field->setFixedHeight(lines * QFontMetrics(field->font()).lineSpacing() + frame);
    return field;
}

/// The label without its colon, as a screen reader says it.
QString spoken(QString label) {
    label.remove(QLatin1Char(':')).remove(QChar(0xFF1A)).remove(QLatin1Char('_'));
    return label.trimmed();
}

void set_text(QLineEdit& field, const std::string& text) {
    const QString shown = QString::fromUtf8(text);
    if (field.text() == shown)
        return;
    field.setText(shown);
    field.setCursorPosition(0);
}

void set_text(QPlainTextEdit& field, const std::string& text) {
    const QString shown = QString::fromUtf8(text);
    if (field.toPlainText() != shown)
        field.setPlainText(shown);
}

/// No field takes the focus, and with it keys.
void leave_keys_to(MachineKeyboard& keyboard, QWidget& window) {
    for (QWidget* field : window.findChildren<QWidget*>())
        field->setFocusPolicy(Qt::NoFocus);
    keyboard.watch(window);
}

/// A frame in which the content is scrolled where it has not its whole height.
QScrollArea* scrolled(QWidget* content) {
    auto* area = new QScrollArea;
    area->setWidget(content);
    area->setWidgetResizable(true);
    area->setFrameShape(QFrame::NoFrame);
    area->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    area->setFixedSize(content->sizeHint());
    return area;
}

} // namespace

ExtendedVariablesWindow::ExtendedVariablesWindow(const Machine& machine_, MachineKeyboard& keyboard,
                                                 QWidget* main_window)
    : QDialog(main_window), machine(machine_), field(read_only_field()) {
    constexpr QSize SIZE(560, 400);
    setAttribute(Qt::WA_DeleteOnClose);
    setWindowTitle(catalogue_text(machine.around->catalogue, "DLG_TRACE2", 0));
    field->setLineWrapMode(QPlainTextEdit::NoWrap);
    field->setAccessibleName(catalogue_text(machine.around->catalogue, "DLG_TRACE2", 0, "Extended variables"));
    (new QVBoxLayout(this))->addWidget(field);
    resize(SIZE);
    const QRect frame = main_window->frameGeometry();
    move(frame.left(), frame.bottom() + 2);
    leave_keys_to(keyboard, *this);
}

void ExtendedVariablesWindow::refresh() { set_text(*field, extended_variables_text(machine)); }

void ExtendedVariablesWindow::reset() { field->clear(); }

TraceWindow::TraceWindow(Session& session_, MachineKeyboard& keyboard_, QWidget* main_window_)
    : QDialog(main_window_), session(session_), machine(session_.simulator.machine), keyboard(keyboard_),
      main_window(main_window_) {
    setAttribute(Qt::WA_DeleteOnClose);
    setWindowTitle(text(LABEL_TITLE));
    auto* column = new QVBoxLayout(this);
    column->setSizeConstraint(QLayout::SetFixedSize);
    QScrollArea* scroll = scrolled(variables_group());
    column->addWidget(position_group());
    column->addWidget(scroll);
    column->addWidget(bottom_row());
    for (QWidget* field : findChildren<QWidget*>()) {
        if (qobject_cast<QPushButton*>(field) == nullptr && qobject_cast<QScrollBar*>(field) == nullptr)
            field->installEventFilter(this);
    }
    leave_keys_to(keyboard, *this);
    reset();
    take_place(*scroll);
}

void TraceWindow::take_place(QScrollArea& scroll) {
    const QRect frame = main_window->frameGeometry();
    const QSize extent = frame_extent(*main_window); // this window's own is not known yet
    const int missing = sizeHint().height() + extent.height() - screen()->availableGeometry().height();
    if (missing > 0) {
        const int bar = scroll.verticalScrollBar()->sizeHint().width();
        scroll.setFixedSize(scroll.width() + bar, std::max(scroll.height() - missing, 1));
    }
    resize(sizeHint());
    move(place_on_screen(*this, {frame.right() + 3, frame.top()}, size() + extent));
}

QString TraceWindow::text(int number, const char* otherwise) const {
    return catalogue_text(machine.around->catalogue, "DLG_TRACE", number, otherwise);
}

QWidget* TraceWindow::position_group() {
    constexpr int LAST_LINES = 2;
    constexpr int NEXT_LINES = 3;
    auto* group = new QGroupBox(text(LABEL_POSITION));
    auto* grid = new QGridLayout(group);
    last = text_field(LAST_LINES);
    next = text_field(NEXT_LINES);
    last->setAccessibleName(spoken(text(LABEL_LAST, "Last")));
    next->setAccessibleName(spoken(text(LABEL_NEXT, "Next")));
    grid->addWidget(plain_label(text(LABEL_LAST)), 0, 0);
    grid->addWidget(last, 0, 1);
    grid->addWidget(plain_label(text(LABEL_NEXT)), 1, 0);
    grid->addWidget(next, 1, 1);
    return group;
}

QLineEdit* TraceWindow::add_field(QGridLayout& grid, int row, int column, const QString& label) {
    constexpr int FIELD_WIDTH = 96;
    auto* field = new QLineEdit;
    field->setReadOnly(true);
    field->setContextMenuPolicy(Qt::NoContextMenu);
    field->setFont(fixed_font());
    field->setFixedWidth(FIELD_WIDTH);
    field->setAccessibleName(spoken(label));
    grid.addWidget(plain_label(label), row, column, Qt::AlignRight);
    grid.addWidget(field, row, column + 1);
    return field;
}

QWidget* TraceWindow::variables_group() {
    constexpr int CELL_COLUMNS = 4;
    auto* group = new QGroupBox(text(LABEL_VARIABLES));
    auto* grid = new QGridLayout(group);
    grid->setVerticalSpacing(1);
    dollar = add_field(*grid, 0, 0, QStringLiteral("$:"));
    grid->removeWidget(dollar);
    dollar->setMaximumWidth(QWIDGETSIZE_MAX);
    grid->addWidget(dollar, 0, 1, 1, CELL_COLUMNS * COLUMNS_PER_CELL - 1);
    for (int cell = 0; cell < TRACED_CELLS; ++cell) {
        const int row = 1 + cell % CELL_ROWS;
        const QString label = QString::fromUtf8(traced_cell_label(cell));
        variables[static_cast<std::size_t>(cell)] = add_field(*grid, row, cell / CELL_ROWS * COLUMNS_PER_CELL, label);
    }
    return group;
}

QWidget* TraceWindow::bottom_row() {
    auto* row = new QWidget;
    auto* grid = new QGridLayout(row);
    grid->setContentsMargins(0, 0, 0, 0);
    statement_kind = add_field(*grid, 0, 0, QStringLiteral("[ ]"));
    statement_kind->setAccessibleName(text(LABEL_STATEMENT_KIND, "Statement kind"));
    auto* button = new QPushButton(text(LABEL_EXTENDED));
    button->setAccessibleName(text(LABEL_EXTENDED, "Extended variables"));
    button->setAutoDefault(false);
    connect(button, &QPushButton::clicked, this, &TraceWindow::toggle_extended);
    grid->setColumnStretch(2, 1);
    grid->addWidget(button, 0, 3);
    return row;
}

void TraceWindow::refresh() {
    refresh_trace_texts(texts, machine, shift_jis_to_utf8);
    show_texts();
    if (extended != nullptr)
        extended->refresh();
    if (isActiveWindow() || (extended != nullptr && extended->isActiveWindow()))
        main_window->activateWindow();
}

void TraceWindow::reset() {
    reset_trace_texts(texts);
    show_texts();
    if (extended != nullptr)
        extended->reset();
}

void TraceWindow::show_texts() {
    set_text(*last, texts.last);
    set_text(*next, texts.next);
    set_text(*dollar, texts.dollar);
    set_text(*statement_kind, texts.statement_kind);
    for (std::size_t i = 0; i < variables.size(); ++i)
        set_text(*variables[i], texts.variables[i]);
}

void TraceWindow::toggle_extended() {
    if (extended != nullptr) {
        extended->close();
    } else {
        extended = new ExtendedVariablesWindow(machine, keyboard, main_window);
        extended->show();
        extended->refresh();
    }
    main_window->activateWindow();
}

void TraceWindow::done(int result) {
    if (extended != nullptr)
        extended->close();
    QDialog::done(result);
}

bool TraceWindow::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::MouseButtonRelease)
        session_input(session, {.verb = InputVerb::STEP});
    return QDialog::eventFilter(watched, event);
}

void TraceWindow::mouseReleaseEvent(QMouseEvent*) { session_input(session, {.verb = InputVerb::STEP}); }

} // namespace quillon
