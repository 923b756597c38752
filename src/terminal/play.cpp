// SPDX-License-Identifier: MIT
// Playing: the loop of ticks and keys.
#include "terminal/play.h"

#include "core/charset.h"
#include "files/file_services.h"
#include "files/host_disk.h"
#include "files/state_files.h"
#include "keys/virtual_keys.h"
#include "shell/clipboard.h"
#include "shell/commands.h"
#include "shell/simulator.h"
#include "shell/startup.h"
#include "terminal/catalogue_choice.h"
#include "terminal/play_keys.h"
#include "terminal/play_screen.h"
#include "terminal/printing.h"
#include "terminal/terminal_guard.h"
#include "terminal/terminal_input.h"

#define NCURSES_NOMACROS
#include <curses.h>
#include <langinfo.h>
#include <poll.h>
#include <unistd.h>

#include <chrono>
#include <clocale>
#include <csignal>
#include <cstring>
#include <deque>
#include <memory>
#include <vector>

namespace quillon {
namespace {

using Clock = std::chrono::steady_clock;

/// Everything of one play.
struct Play {
    Simulator simulator;
    StateFiles files;
    Typist typist;
    KeyLevel level = LEVEL_NONE;
    std::deque<std::string> messages; ///< the first one is shown until a key is pressed
    std::string clipboard;            ///< UTF-8
    bool utf8 = false;
    bool dots = false;
    bool leaving = false;
    bool changed = true;      ///< the screen is to be drawn
    std::string status_shown; ///< the status line as drawn last
};

/// The machine's texts are UTF-8. Where the user's locale is missing, another one will do for reading and drawing it.
bool choose_encoding() {
    if (std::setlocale(LC_CTYPE, "") == nullptr) {
        const Environment environment = read_environment();
        const std::string names = environment.lc_all + environment.lang;
        if (names.find("UTF-8") != std::string::npos || names.find("utf8") != std::string::npos)
            std::setlocale(LC_CTYPE, "C.UTF-8");
    }
    return std::strcmp(::nl_langinfo(CODESET), "UTF-8") == 0;
}

void show_message(Play& play, const std::string& text) {
    constexpr std::size_t MESSAGES_MAX = 20;
    if (play.messages.size() < MESSAGES_MAX)
        play.messages.push_back(text);
    play.changed = true;
}

void connect_host(Play& play, const PlayOptions& options) {
    Host& host = play.simulator.around.host;
    host.show_message = [&play](const std::string& text, MessageIcon) { show_message(play, text); };
    host.copy_text = [&play](std::string_view text) { play.clipboard = to_unicode(clipboard_part(text)); };
    host.paste_text = [&play] { return pasted_part(play.clipboard); };
    host.milliseconds = [start = Clock::now()] {
        const auto passed = std::chrono::duration_cast<std::chrono::milliseconds>(Clock::now() - start);
        return static_cast<std::uint32_t>(passed.count());
    };
    if (options.bell)
        host.play_tone = [](std::span<const std::uint8_t>) { ::beep(); };
    play.simulator.window.perform = [&play](HostCommand command) {
        play.leaving = play.leaving || command == COMMAND_EXIT;
    };
    play.simulator.window.refresh = [&play] { play.changed = true; };
    use_file_services(play.simulator);
}

/// Begins as the window does, with what the last one left behind. False, with a message on standard error, when what
/// was named cannot be read.
bool start(Play& play, const PlayOptions& options) {
    Simulator& s = play.simulator;
    if (!use_catalogue(s.around.catalogue, options.catalogue))
        return false;
    play.files.paths = find_data_files(read_environment(), program_folder());
    s.disk = host_disk();
    s.reads_pipes = true;
    connect_host(play, options);
    read_state(s, play.files);
    play.leaving = !start_simulator(s, options.listing);
    if (options.no_save)
        play.files.paths = {};
    const bool was_read = options.listing.empty() || s.listing_was_read;
    if (!was_read)
        print_load_fault(options.listing, s.machine.error.system_message);
    return was_read;
}

/// What the message line shows: a message that waits for a key, or what is wrong with the program.
std::string message_of(const Play& play) {
    if (!play.messages.empty())
        return play.messages.front();
    const Machine& m = play.simulator.machine;
    const std::string_view detail = m.error.error_detail.view();
    if (failed(m))
        return std::string(detail.substr(0, detail.find_first_of("\r\n")));
    const std::size_t dropped = play.typist.dropped;
    return dropped != 0 ? "Too many keys at once: " + std::to_string(dropped) + " were dropped" : "";
}

void draw(Play& play) {
    const std::string status = status_text(play.simulator, play.level) + message_of(play);
    if (!play.changed && status == play.status_shown)
        return;
    draw_screen(play.simulator, {message_of(play), play.level, play.utf8, play.dots});
    play.status_shown = status;
    play.changed = false;
}

void stop_program(Play& play) {
    drop_typed_keys(play.typist, play.simulator);
    run_host_command(play.simulator, COMMAND_STOP);
}

void take_key(Play& play, const TerminalInput& input) {
    play.changed = true;
    if (input.kind == TerminalInput::RESIZE)
        return;
    if (!play.messages.empty())
        play.messages.pop_front();
    switch (input.kind) {
    case TerminalInput::LEAVE: play.leaving = true; return;
    case TerminalInput::STOP: return stop_program(play);
    case TerminalInput::PREFIX: play.level = next_level(play.level); return;
    case TerminalInput::REDRAW: ::clearok(::curscr, true); return;
    case TerminalInput::RESIZE:
    case TerminalInput::NOTHING: return;
    case TerminalInput::KEY: break;
    }
    if (input.key.virtual_key == VK_ESCAPE)
        drop_typed_keys(play.typist, play.simulator);
    const auto event = key_event_for(input.key, play.level, play.simulator.machine.settings.ascii_mode);
    play.level = LEVEL_NONE;
    if (event)
        type_key(play.typist, *event);
}

/// Reads the keys that are there, but no more than a few hundred, so that keys that pour in hold up nothing else. A
/// terminal that says it has some, and never has, is gone.
void take_keys(Play& play, bool announced) {
    constexpr int AT_ONCE_MAX = 500;
    int taken = 0;
    while (taken < AT_ONCE_MAX && !play.leaving) {
        const auto input = read_terminal();
        if (!input)
            break;
        take_key(play, *input);
        ++taken;
    }
    play.leaving = play.leaving || (announced && taken == 0 && ::isatty(STDIN_FILENO) == 0);
}

/// Sleeps until a key comes or the time has passed; true when the terminal has something to read.
bool wait_for_key(Play& play, Clock::time_point until) {
    const auto left = std::chrono::ceil<std::chrono::milliseconds>(until - Clock::now()).count();
    pollfd terminal{STDIN_FILENO, POLLIN, 0};
    if (::poll(&terminal, 1, static_cast<int>(std::max<decltype(left)>(left, 0))) <= 0)
        return false;
    play.leaving = play.leaving || (terminal.revents & (POLLHUP | POLLERR | POLLNVAL)) != 0;
    return (terminal.revents & POLLIN) != 0;
}

Clock::time_point next_tick(const Play& play) {
    return Clock::now() + std::chrono::milliseconds(play.simulator.machine.settings.timer_interval);
}

void play_on(Play& play) {
    Clock::time_point tick_due = next_tick(play);
    while (!play.leaving && signal_to_leave() == 0) {
        if (take_size_change()) {
            fit_screen();
            play.changed = true;
        }
        draw(play);
        const bool announced = wait_for_key(play, tick_due);
        take_keys(play, announced);
        if (Clock::now() < tick_due)
            continue;
        play.changed = tick_with_keys(play.typist, play.simulator) || play.changed;
        save_when_due(play.simulator, play.files, steady_milliseconds());
        tick_due = next_tick(play);
    }
}

struct DeleteScreen {
    void operator()(SCREEN* screen) const {
        ::endwin();
        ::delscreen(screen);
    }
};

/// Draws and listens until the end; false when the terminal cannot be drawn on.
bool play_on_screen(Play& play) {
    ::use_env(false); // the screen's size is ours to choose
    const std::unique_ptr<SCREEN, DeleteScreen> screen(::newterm(nullptr, stdout, stdin));
    if (screen == nullptr)
        return false;
    note_screen_sequences();
    fit_screen();
    prepare_terminal_input();
    set_lcd_colours(play.simulator);
    play_on(play);
    return true;
}

/// Saves what is kept; returns whether all of it was.
bool save(Play& play) {
    shut_down_simulator(play.simulator);
    const std::vector<std::string> unsaved = save_state(play.simulator, play.files);
    for (const std::string& path : unsaved)
        print_error("cannot save " + path);
    return unsaved.empty();
}

/// Lets the signal that asked for the end take its usual course now.
void end_by_signal(int number) {
    if (number != 0)
        ::raise(number);
}

} // namespace

int play(const PlayOptions& options) {
    if (::isatty(STDIN_FILENO) == 0 || ::isatty(STDOUT_FILENO) == 0) {
        print_error("play needs a terminal for its input and its output; run works without one");
        return PLAY_BAD_CALL;
    }
    if (!can_draw_on_terminal()) {
        print_error("play cannot draw on this terminal: TERM names none that it can place the cursor on");
        return PLAY_BAD_CALL;
    }
    const auto state = std::make_unique<Play>();
    state->utf8 = choose_encoding();
    state->dots = !options.text;
    if (!start(*state, options))
        return PLAY_BAD_CALL;
    const bool drawn = guard_terminal() && play_on_screen(*state);
    release_terminal();
    if (!drawn) {
        print_error("play cannot set up its screen on this terminal");
        return PLAY_BAD_CALL;
    }
    const bool saved = save(*state);
    end_by_signal(signal_to_leave());
    return saved ? PLAY_LEFT : PLAY_UNSAVED;
}

} // namespace quillon
