// SPDX-License-Identifier: MIT
// Showing the watches, and their log.
#include "desktop/watch_list.h"

#include "desktop/catalogue_text.h"
#include "desktop/watch_dialog.h"
#include "shell/window_texts.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QVBoxLayout>

#include <algorithm>
#include <utility>

namespace quillon {

WatchList::WatchList(Session& session_, DebugControl& control_, std::function<void(const QString&)> note_)
    : session(session_), control(control_), note(std::move(note_)) {
    constexpr int LOG_LINES_MAX = 10'000;
    list = new QListWidget;
    list->setAccessibleName(text(DEBUGGER_WATCHES));
    log = new QPlainTextEdit;
    log->setAccessibleName(text(DEBUGGER_LOG));
    log->setReadOnly(true);
    log->setMaximumBlockCount(LOG_LINES_MAX);
    log->hide();
    edit_button = make_button(DEBUGGER_EDIT, [this] { edit(*chosen()); });
    remove_button = make_button(DEBUGGER_REMOVE, [this] { control.take_watch_away(chosen()->id); });
    auto* buttons = new QHBoxLayout;
    buttons->addWidget(new QLabel(text(DEBUGGER_WATCHES)), 1);
    buttons->addWidget(
        make_button(DEBUGGER_ADD, [this] { edit({.area = session.simulator.machine.program.cur_area}); }));
    buttons->addWidget(edit_button);
    buttons->addWidget(remove_button);
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->addLayout(buttons);
    column->addWidget(list);
    column->addWidget(log);
    connect(list, &QListWidget::currentRowChanged, this, [this] {
        edit_button->setEnabled(chosen() != nullptr);
        remove_button->setEnabled(chosen() != nullptr);
    });
    connect(list, &QListWidget::itemDoubleClicked, this, [this] { edit(*chosen()); });
    connect(&control, &DebugControl::watches_changed, this, &WatchList::refresh);
    connect(&control, &DebugControl::moved, this, &WatchList::refresh);
    connect(&control, &DebugControl::logged, this, [this](const QString& line) {
        log->show();
        log->appendPlainText(line);
    });
    refresh();
}

QString WatchList::text(const WindowText& row) const {
    return catalogue_text(session.simulator.machine.around->catalogue, row.section, row.number, row.built_in);
}

QPushButton* WatchList::make_button(const WindowText& label, const std::function<void()>& act) {
    auto* button = new QPushButton(text(label));
    button->setAutoDefault(false);
    connect(button, &QPushButton::clicked, this, act);
    return button;
}

const Watch* WatchList::chosen() const {
    const int row = list->currentRow();
    const auto& watches = control.watches();
    return row < 0 || static_cast<std::size_t>(row) >= watches.size() ? nullptr
                                                                      : &watches[static_cast<std::size_t>(row)];
}

void WatchList::edit(const Watch& watch) {
    (new WatchDialog(control, session.simulator.machine.around->catalogue, watch, note, window()))->open();
}

void WatchList::refresh() {
    const int row = list->currentRow();
    list->clear();
    for (const Watch& watch : control.watches())
        list->addItem(watch_text(watch));
    list->setCurrentRow(std::min(row, list->count() - 1));
    edit_button->setEnabled(chosen() != nullptr);
    remove_button->setEnabled(chosen() != nullptr);
}

} // namespace quillon
