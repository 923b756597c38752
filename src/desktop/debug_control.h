// SPDX-License-Identifier: MIT
// Standing still and going on: the machine's clock under a debugger. While nothing is watched a tick goes straight to
// the session.
#pragma once

#include "session/travel.h"

#include <QObject>

namespace quillon {

class DebugControl : public QObject {
    Q_OBJECT

public:
    DebugControl(Session& session, QObject* parent);

    /// The clock's tick: returns whether the LCD's picture has changed. One that meets a watch ends with `stand`.
    bool tick();

    [[nodiscard]] bool is_standing() const { return standing; }
    [[nodiscard]] const Stop& last_stop() const { return stop; }
    [[nodiscard]] const std::vector<Watch>& watches() const { return debugger.watches; }

    /// The clock stands still until `go_on`.
    void stand(const Stop& why);
    void go_on();

    /// The same backwards, to what is watched or an error.
    void go_back();
    void step(StepKind kind, bool backward);
    void go_to(TickCount tick);
    void go_to_line(int area, int line, bool backward);

    /// To before the last change of a cell; false, and nothing happens, when it has not changed.
    bool go_back_to_change(CellIndex cell);

    /// Drops what came after the present moment, and goes on.
    void go_on_from_here();

    /// Adds a breakpoint to a line, or takes that of this line away.
    void toggle_breakpoint(int area, int line);

    /// Adds a watch, or puts it in the place of another. One on a line that is not there moves to the next line; false
    /// when there is none, and nothing changes. `watch` becomes what was added.
    bool put_watch(Watch& watch, int replaced = 0);
    void take_watch_away(int id);

    /// Changes a cell; false for a text that stands for no value.
    bool change_cell(CellIndex cell, const std::string& text);

signals:
    /// The machine stands still, goes on, or has been taken to another moment.
    void moved();

    /// What is watched has changed.
    void watches_changed();

    /// A watch had something to say.
    void logged(const QString& text);

private:
    void arrive(const Journey& journey);

    Session& session;
    Debugger debugger;
    BeforeTick before;
    Stop stop;
    bool standing = false;
};

} // namespace quillon
