// SPDX-License-Identifier: MIT
// Building the debugger and filling in what it shows.
#include "desktop/debugger_window.h"

#include "core/charset.h"
#include "core/variables.h"
#include "desktop/catalogue_text.h"
#include "desktop/time_slider.h"
#include "desktop/watch_list.h"
#include "session/cell_text.h"
#include "shell/window_texts.h"

#include <QAction>
#include <QFontDatabase>
#include <QHeaderView>
#include <QLabel>
#include <QListWidget>
#include <QMenu>
#include <QScreen>
#include <QSplitter>
#include <QStyle>
#include <QTableWidget>
#include <QToolBar>
#include <QVBoxLayout>

#include <algorithm>

namespace quillon {
namespace {

enum Column : int { MARGIN, LINE_NUMBER, LINE_TEXT, LISTING_COLUMNS };
enum CellColumn : int { CELL_NAME, CELL_VALUE, CELL_COLUMNS };

constexpr QChar BREAKPOINT_MARK(0x25CF);
constexpr int REFRESH_MILLISECONDS = 150; ///< while the machine runs

QString machine_text(std::string_view bytes) { return QString::fromStdString(to_unicode(bytes)); }

/// A table that is looked at row by row.
QTableWidget* make_table(int columns, const QString& name) {
    auto* table = new QTableWidget(0, columns);
    table->setAccessibleName(name);
    table->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
    table->setSelectionBehavior(QAbstractItemView::SelectRows);
    table->setSelectionMode(QAbstractItemView::SingleSelection);
    table->setShowGrid(false);
    table->setTabKeyNavigation(false);
    table->verticalHeader()->hide();
    table->horizontalHeader()->hide();
    table->horizontalHeader()->setStretchLastSection(true);
    return table;
}

QTableWidgetItem* fixed_item(const QString& text) {
    auto* item = new QTableWidgetItem(text);
    item->setFlags(Qt::ItemIsEnabled | Qt::ItemIsSelectable);
    return item;
}

/// The program text of a line, up to its end.
std::string_view text_of(const Listing& listing, const ProgramLine& line) { return listing.text.c_str() + line.text; }

/// Where the current statement begins in its line; nothing where the machine is in none of this line.
std::optional<std::size_t> statement_place(const Machine& m, const ProgramLine& line) {
    const TokenIndex next = m.program.stmt_start;
    if (next == NOWHERE || next >= TYPED)
        return std::nullopt;
    const SourceOffset begin = token_at(m, next).begin;
    const std::size_t size = text_of(*m.listing, line).size();
    if (begin < line.text || begin > line.text + static_cast<SourceOffset>(size))
        return std::nullopt;
    return static_cast<std::size_t>(begin - line.text);
}

/// How a line goes on from a place: the statement up to its colon, which a text in quotes may contain.
std::size_t statement_size(std::string_view text) {
    bool quoted = false;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] == '"')
            quoted = !quoted;
        else if (text[i] == ':' && !quoted)
            return i;
    }
    return text.size();
}

/// Wide enough for the buttons, and small enough for the main window to be seen as well.
QSize fitting_size(int width_of_buttons, const QWidget& main_window) {
    constexpr QSize SIZE(920, 560);
    constexpr QSize FRAME(40, 60); ///< and margins
    constexpr QSize SMALLEST(400, 240);
    const QSize screen = main_window.screen()->availableSize() - FRAME;
    const QSize left(screen.width(), screen.height() - main_window.frameGeometry().height());
    return SIZE.expandedTo({width_of_buttons + FRAME.width(), 0}).boundedTo(left).expandedTo(SMALLEST);
}

} // namespace

DebuggerWindow::DebuggerWindow(Session& session_, DebugControl& control_,
                               const std::function<void(const QString&)>& note_, QWidget* main_window)
    : QDialog(main_window), session(session_), machine(session_.simulator.machine), control(control_), note(note_),
      shown_cells(machine.variables) {
    setWindowTitle(text(DEBUGGER_TITLE));
    auto* bar = new QToolBar;
    build_buttons(*bar);
    status = new QLabel;
    listing = make_table(LISTING_COLUMNS, text(DEBUGGER_LISTING));
    listing->setEditTriggers(QAbstractItemView::NoEditTriggers);
    stack = new QListWidget;
    stack->setAccessibleName(text(DEBUGGER_STACK));
    cells = make_table(CELL_COLUMNS, text(DEBUGGER_CELLS));
    watches = new WatchList(session, control, note);
    slider = new TimeSlider;
    slider->setAccessibleName(text(DEBUGGER_TIME));
    time = new QLabel;

    auto* right = new QSplitter(Qt::Vertical);
    right->addWidget(cells);
    right->addWidget(stack);
    right->addWidget(watches);
    auto* centre = new QSplitter;
    centre->addWidget(listing);
    centre->addWidget(right);
    centre->setStretchFactor(0, 3);
    centre->setStretchFactor(1, 2);
    auto* foot = new QHBoxLayout;
    foot->addWidget(slider);
    foot->addWidget(time);
    auto* column = new QVBoxLayout(this);
    column->addWidget(bar);
    column->addWidget(status);
    column->addWidget(centre, 1);
    column->addLayout(foot);
    resize(fitting_size(bar->sizeHint().width(), *main_window));

    connect(slider, &TimeSlider::chosen, this, [this](quint64 tick) { control.go_to(tick); });
    connect(listing, &QTableWidget::cellClicked, this, [this](int row, int clicked) {
        if (clicked == MARGIN)
            toggle_breakpoint(row);
    });
    listing->setContextMenuPolicy(Qt::CustomContextMenu);
    cells->setContextMenuPolicy(Qt::CustomContextMenu);
    connect(listing, &QTableWidget::customContextMenuRequested, this, &DebuggerWindow::open_line_menu);
    connect(cells, &QTableWidget::customContextMenuRequested, this, &DebuggerWindow::open_cell_menu);
    connect(&control, &DebugControl::watches_changed, this, &DebuggerWindow::show_breakpoints);
    connect(cells, &QTableWidget::itemChanged, this, [this](QTableWidgetItem* item) { change_cell(*item); });
    since_refresh.start();
    refresh();
}

QString DebuggerWindow::text(const WindowText& row) const {
    return catalogue_text(machine.around->catalogue, row.section, row.number, row.built_in);
}

QAction* DebuggerWindow::add_button(QToolBar& bar, const WindowText& label, const QKeySequence& key,
                                    const std::function<void()>& act) {
    QAction* action = bar.addAction(text(label));
    action->setShortcut(key);
    action->setToolTip(text(label) + QLatin1String(" (") + key.toString(QKeySequence::NativeText) + QLatin1Char(')'));
    connect(action, &QAction::triggered, this, act);
    addAction(action);
    return action;
}

void DebuggerWindow::build_buttons(QToolBar& bar) {
    bar.setToolButtonStyle(Qt::ToolButtonTextOnly);
    go_on = add_button(bar, DEBUGGER_GO_ON, Qt::Key_F5, [this] { control.go_on(); });
    pause = add_button(bar, DEBUGGER_PAUSE, Qt::Key_F6, [this] { control.stand({.reason = StopReason::STEP}); });
    add_button(bar, DEBUGGER_INTO, Qt::Key_F11, [this] { control.step(StepKind::INTO, false); });
    add_button(bar, DEBUGGER_OVER, Qt::Key_F10, [this] { control.step(StepKind::OVER, false); });
    add_button(bar, DEBUGGER_OUT, Qt::SHIFT | Qt::Key_F11, [this] { control.step(StepKind::OUT, false); });
    bar.addSeparator();
    add_button(bar, DEBUGGER_GO_BACK, Qt::ALT | Qt::Key_F5, [this] { control.go_back(); });
    add_button(bar, DEBUGGER_BACK_INTO, Qt::ALT | Qt::Key_F11, [this] { control.step(StepKind::INTO, true); });
    add_button(bar, DEBUGGER_BACK_OVER, Qt::ALT | Qt::Key_F10, [this] { control.step(StepKind::OVER, true); });
    add_button(bar, DEBUGGER_BACK_OUT, Qt::ALT | Qt::SHIFT | Qt::Key_F11,
               [this] { control.step(StepKind::OUT, true); });
    bar.addSeparator();
    add_button(bar, DEBUGGER_BREAKPOINT, Qt::Key_F9, [this] { toggle_breakpoint(listing->currentRow()); });
    for (const bool backward : {false, true}) {
        auto* to_line = new QAction(text(backward ? DEBUGGER_BACK_TO_LINE : DEBUGGER_TO_LINE), this);
        to_line->setShortcut(backward ? Qt::CTRL | Qt::ALT | Qt::Key_F10 : Qt::CTRL | Qt::Key_F10);
        connect(to_line, &QAction::triggered, this, [this, backward] { go_to_line(listing->currentRow(), backward); });
        addAction(to_line);
    }
    add_button(bar, DEBUGGER_FROM_HERE, Qt::CTRL | Qt::Key_F5, [this] { control.go_on_from_here(); });
}

void DebuggerWindow::follow_tick() {
    if (isVisible() && !control.is_standing() && since_refresh.elapsed() >= REFRESH_MILLISECONDS)
        refresh();
}

void DebuggerWindow::refresh() {
    since_refresh.restart();
    filling = true;
    fill_listing();
    show_position();
    show_stack();
    show_cells();
    filling = false;
    show_time();
    show_status();
}

void DebuggerWindow::show_status() {
    const Stop& stop = control.last_stop();
    QString words = text(DEBUGGER_RUNS);
    if (control.is_standing()) {
        const WindowText* reason = &DEBUGGER_STANDS;
        if (stop.reason == StopReason::BREAKPOINT)
            reason = &DEBUGGER_AT_BREAKPOINT;
        else if (stop.reason == StopReason::WATCHPOINT)
            reason = &DEBUGGER_AT_WATCH;
        else if (stop.reason == StopReason::ERROR)
            reason = &DEBUGGER_AT_ERROR;
        else if (stop.reason == StopReason::START)
            reason = &DEBUGGER_AT_START;
        words = text(*reason);
    }
    if (control.is_standing() && !stop.problem.empty())
        words += QLatin1Char(' ') + QString::fromStdString(stop.problem);
    status->setText(words);
    go_on->setEnabled(control.is_standing());
    pause->setEnabled(!control.is_standing());
}

/// A row for each line of the area that the program is in.
void DebuggerWindow::fill_listing() {
    const int area = machine.program.cur_area;
    if (shown_listing != machine.listing.pointer || shown_area != area) {
        shown_listing = machine.listing.pointer;
        shown_area = area;
        marked_row = -1;
        const auto& lines = current_area(machine).lines;
        listing->clearContents();
        listing->setRowCount(static_cast<int>(lines.size()));
        for (int row = 0; row < listing->rowCount(); ++row) {
            const ProgramLine& line = lines[static_cast<std::size_t>(row)];
            listing->setItem(row, MARGIN, fixed_item({}));
            listing->setItem(row, LINE_NUMBER, fixed_item(QString::number(line.number)));
            listing->setItem(row, LINE_TEXT, fixed_item(machine_text(text_of(*machine.listing, line))));
        }
        listing->resizeColumnsToContents();
        listing->setColumnWidth(MARGIN, listing->fontMetrics().height());
    }
    show_breakpoints();
}

void DebuggerWindow::show_breakpoints() {
    for (int row = 0; row < listing->rowCount(); ++row) {
        const int line = current_area(machine).lines[static_cast<std::size_t>(row)].number;
        const bool has_breakpoint =
            std::any_of(control.watches().begin(), control.watches().end(), [&](const Watch& watch) {
                return watch.kind == Watch::Kind::LINE && watch.area == shown_area && watch.line == line;
            });
        listing->item(row, MARGIN)->setText(has_breakpoint ? QString(BREAKPOINT_MARK) : QString());
    }
}

/// The current line is selected, its statement marked.
void DebuggerWindow::show_position() {
    if (marked_row >= 0)
        listing->removeCellWidget(marked_row, LINE_TEXT);
    marked_row = -1;
    const int row = machine.program.cur_line;
    if (row >= listing->rowCount() || machine.run.run_state == STATE_SELECT)
        return;
    const ProgramLine& line = current_area(machine).lines[static_cast<std::size_t>(row)];
    const auto place = statement_place(machine, line);
    if (!place)
        return;
    const std::string_view whole = text_of(*machine.listing, line);
    const std::string_view statement = whole.substr(*place, statement_size(whole.substr(*place)));
    auto* marked = new QLabel;
    marked->setTextFormat(Qt::RichText);
    marked->setFont(listing->font());
    marked->setIndent(style()->pixelMetric(QStyle::PM_FocusFrameHMargin, nullptr, listing) + 1); // as items have it
    marked->setAutoFillBackground(true);
    marked->setText(QLatin1String("<span style='white-space:pre'>") +
                    machine_text(whole.substr(0, *place)).toHtmlEscaped() + QLatin1String("<b><u>") +
                    machine_text(statement).toHtmlEscaped() + QLatin1String("</u></b>") +
                    machine_text(whole.substr(*place + statement.size())).toHtmlEscaped() + QLatin1String("</span>"));
    listing->setCellWidget(row, LINE_TEXT, marked);
    listing->scrollToItem(listing->item(row, LINE_NUMBER));
    if (control.is_standing())
        listing->setCurrentCell(row, LINE_NUMBER);
    marked_row = row;
}

/// Subroutines and loops, the innermost first.
void DebuggerWindow::show_stack() {
    stack->clear();
    const ProgramPosition& p = machine.program;
    const auto line_at = [this](int area, int line) {
        const auto& lines = machine.listing->areas[static_cast<std::size_t>(area)].lines;
        const bool is_there = line >= 0 && static_cast<std::size_t>(line) < lines.size();
        return QStringLiteral("P%1-%2").arg(area).arg(is_there ? lines[static_cast<std::size_t>(line)].number : 0);
    };
    for (int i = p.gosub_depth; i-- > 0;) {
        const GosubFrame& frame = p.gosub_frames[static_cast<std::size_t>(i)];
        stack->addItem(QLatin1String("GOSUB ") + line_at(frame.area, frame.line));
    }
    for (int i = p.for_depth; i-- > 0;) {
        const ForFrame& frame = p.for_frames[static_cast<std::size_t>(i)];
        stack->addItem(QLatin1String("FOR ") + machine_text(cell_name(frame.cell)) + QLatin1Char(' ') +
                       line_at(frame.area, frame.line));
    }
}

/// Those that have a value. What the last step changed is bold, and has a mark.
void DebuggerWindow::show_cells() {
    int row = 0;
    for (int i = 0; i < CELL_COUNT; ++i) {
        const Variable& cell = machine.variables[static_cast<std::size_t>(i)];
        if (cell.kind == CELL_UNASSIGNED)
            continue;
        if (row == cells->rowCount()) {
            cells->insertRow(row);
            cells->setItem(row, CELL_NAME, fixed_item({}));
            cells->setItem(row, CELL_VALUE, new QTableWidgetItem);
        }
        const bool changed = !(cell == shown_cells[static_cast<std::size_t>(i)]);
        QTableWidgetItem* name = cells->item(row, CELL_NAME);
        QTableWidgetItem* value = cells->item(row, CELL_VALUE);
        QFont font = cells->font();
        font.setBold(changed);
        name->setFont(font);
        value->setFont(font);
        name->setText(machine_text(cell_path(static_cast<CellIndex>(i))) +
                      (changed ? QStringLiteral(" *") : QString()));
        name->setData(Qt::UserRole, i);
        const auto shown = cell_text(cell);
        value->setText(machine_text(shown ? *shown : std::string(format_general(cell.number, 12))));
        value->setFlags(Qt::ItemIsEnabled | Qt::ItemIsSelectable |
                        (control.is_standing() ? Qt::ItemIsEditable : Qt::NoItemFlags));
        ++row;
    }
    cells->setRowCount(row);
    cells->resizeColumnToContents(CELL_NAME);
    shown_cells = machine.variables;
}

void DebuggerWindow::show_time() {
    slider->show_time(session.log, session.tick);
    time->setText(QStringLiteral("%1 / %2").arg(session.tick).arg(session.log.end));
}

void DebuggerWindow::toggle_breakpoint(int row) {
    if (row < 0 || row >= listing->rowCount())
        return;
    const int line = current_area(machine).lines[static_cast<std::size_t>(row)].number;
    control.toggle_breakpoint(shown_area, line);
    listing->setCurrentCell(row, LINE_NUMBER);
}

void DebuggerWindow::go_to_line(int row, bool backward) {
    if (row >= 0 && row < listing->rowCount())
        control.go_to_line(shown_area, current_area(machine).lines[static_cast<std::size_t>(row)].number, backward);
}

void DebuggerWindow::open_line_menu(const QPoint& place) {
    const int row = listing->rowAt(place.y());
    if (row < 0)
        return;
    QMenu menu(this);
    menu.addAction(text(DEBUGGER_TO_LINE), this, [=, this] { go_to_line(row, false); });
    menu.addAction(text(DEBUGGER_BACK_TO_LINE), this, [=, this] { go_to_line(row, true); });
    menu.addSeparator();
    menu.addAction(text(DEBUGGER_BREAKPOINT), this, [=, this] { toggle_breakpoint(row); });
    const int line = current_area(machine).lines[static_cast<std::size_t>(row)].number;
    menu.addAction(text(DEBUGGER_BREAK_EDIT), this, [=, this] { watches->edit({.area = shown_area, .line = line}); });
    menu.exec(listing->viewport()->mapToGlobal(place));
}

void DebuggerWindow::open_cell_menu(const QPoint& place) {
    const int row = cells->rowAt(place.y());
    if (row < 0)
        return;
    const auto cell = static_cast<CellIndex>(cells->item(row, CELL_NAME)->data(Qt::UserRole).toInt());
    QMenu menu(this);
    menu.addAction(text(DEBUGGER_BACK_TO_CHANGE), this, [=, this] { go_back_to_change(cell); });
    menu.addAction(text(DEBUGGER_WATCH_CELL), this, [=, this] {
        Watch watch{.kind = Watch::Kind::CELL, .cell = cell};
        control.put_watch(watch);
    });
    menu.exec(cells->viewport()->mapToGlobal(place));
}

void DebuggerWindow::go_back_to_change(CellIndex cell) {
    if (!control.go_back_to_change(cell))
        note(text(DEBUGGER_NOT_CHANGED));
}

/// A value that cannot be one is taken back.
void DebuggerWindow::change_cell(const QTableWidgetItem& item) {
    if (filling || item.column() != CELL_VALUE)
        return;
    const int cell = cells->item(item.row(), CELL_NAME)->data(Qt::UserRole).toInt();
    if (!control.change_cell(static_cast<CellIndex>(cell), from_unicode(item.text().toStdString())))
        refresh();
}

} // namespace quillon
