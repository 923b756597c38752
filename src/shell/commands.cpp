// Host commands that change the machine.
#include "shell/commands.h"

#include "core/display_line.h"
#include "core/errors.h"
#include "core/listing.h"

#include <cstdio>

namespace quillon {
namespace {

void show_position(Machine& m) {
    char text[32];
    std::snprintf(text, sizeof text, "P%d-%d", m.cur_area, current_line_number(m));
    clear_display_line(m);
    put_display_text(m, 0, text);
    m.run_state = STATE_LINE_SHOWN;
}

void start_area(Machine& m) {
    m.error_detail.clear();
    reset_machine(m);
    const char* start = select_area(m, m.run_page);
    restore_area_data(m);
    m.prev_state = m.run_state;
    m.stmt_kind = KIND_NONE;
    if (start != nullptr) {
        m.scan_ptr = start;
        m.base_state = STATE_RUN;
        m.run_state = STATE_RUN;
        if (m.trace_mode != 0)
            m.host.refresh_trace();
        return;
    }
    clear_display_line(m);
    m.error_detail.clear();
    m.error_code = ERROR_NONE;
    m.base_state = STATE_COMMAND;
    m.run_state = STATE_COMMAND;
}

} // namespace

void host_run(Machine& m) {
    if (m.run_state == STATE_STOPPED) {
        enter_state(m, m.saved_run_state);
        clear_display(m);
        return;
    }
    if (m.listing_text.empty()) {
        m.host.show_message(lookup_message(m.catalogue, MESSAGE_NO_LISTING.section, MESSAGE_NO_LISTING.number),
                            MessageIcon::WARNING);
        return;
    }
    start_area(m);
}

void host_stop(Machine& m) {
    const int state = m.run_state;
    const bool nothing_runs =
        state == STATE_ENDED || state == STATE_SELECT || state == STATE_COMMAND || state == STATE_LINE_SHOWN;
    if (m.listing_text.empty() || nothing_runs)
        return;
    m.saved_token = m.token;
    m.saved_stmt_kind = m.stmt_kind;
    m.prev_state = state;
    if (state == STATE_STOPPED || state == STATE_PRINT_WAIT) {
        show_position(m);
    } else {
        m.saved_run_state = state;
        m.run_state = STATE_STOPPED;
    }
}

void select_page(Machine& m, int page) { m.run_page = page; }

} // namespace quillon
