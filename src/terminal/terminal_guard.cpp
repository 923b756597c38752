// SPDX-License-Identifier: MIT
// Signals and modes of the terminal. The handlers call nothing but what POSIX allows in one: write, tcsetattr,
// sigaction and raise.
#include "terminal/terminal_guard.h"

#include <csignal>
#include <cstring>

#define NCURSES_NOMACROS
#include <curses.h>
#include <term.h>
#include <termios.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <iterator>

namespace quillon {
namespace {

constexpr int CRASH_SIGNALS[] = {SIGSEGV, SIGBUS, SIGFPE, SIGILL, SIGABRT, SIGSYS, SIGTRAP};

/// Signals that end no program, that cannot be watched, or that are curses' own business.
constexpr int OTHER_SIGNALS[] = {SIGKILL, SIGSTOP, SIGCHLD, SIGCONT, SIGURG, SIGWINCH, SIGTSTP, SIGTTIN, SIGTTOU};

/// All that the handlers touch. There is one terminal, and handlers have no argument to find it by.
struct Guard {
    bool active = false;
    termios modes{};
    std::array<char, 512> sequences{};
    std::size_t sequences_size = 0;
    struct sigaction old_actions[NSIG];
};

Guard guard;                                      // NOLINT(cppcoreguidelines-avoid-non-const-global-variables)
volatile std::sig_atomic_t leaving_signal = 0;    // NOLINT(cppcoreguidelines-avoid-non-const-global-variables)
volatile std::sig_atomic_t size_changes = 0;      // NOLINT(cppcoreguidelines-avoid-non-const-global-variables)
alignas(16) std::array<char, 65536> signal_stack; // NOLINT(cppcoreguidelines-avoid-non-const-global-variables)

void on_leaving_signal(int number) { leaving_signal = number; }

void on_size_change(int) { size_changes = 1; }

/// A handler may find the stack used up, so it has one of its own.
void on_crash_signal(int number) {
    if (guard.active) {
        guard.active = false;
        static_cast<void>(!::write(STDOUT_FILENO, guard.sequences.data(), guard.sequences_size));
        ::tcsetattr(STDIN_FILENO, TCSANOW, &guard.modes);
    }
    ::sigaction(number, &guard.old_actions[number], nullptr);
    // Back at the fault it is raised again; one that was sent is not, and so by hand.
    ::raise(number);
}

template <std::size_t N>
bool contains(const int (&signals)[N], int number) {
    return std::find(std::begin(signals), std::end(signals), number) != std::end(signals);
}

/// Whether a signal is one of those that end a program, other than by a crash: all that the system has, save for a few.
bool is_leaving_signal(int number) { return !contains(CRASH_SIGNALS, number) && !contains(OTHER_SIGNALS, number); }

void watch(int number, void (*handler)(int), int flags) {
    struct sigaction action {};
    action.sa_handler = handler;
    action.sa_flags = flags;
    ::sigemptyset(&action.sa_mask);
    struct sigaction& old = guard.old_actions[number];
    const bool known = ::sigaction(number, nullptr, &old) == 0; // the C library keeps some for itself
    if (known && old.sa_handler != SIG_IGN)                     // nohup
        ::sigaction(number, &action, nullptr);
}

/// Appends a sequence without the delays that terminfo may have in it ("$<5>").
void append_sequence(const char* name) {
    const char* p = ::tigetstr(name);
    if (p == nullptr || p == reinterpret_cast<const char*>(-1)) // NOLINT(performance-no-int-to-ptr)
        return;
    while (*p != '\0' && guard.sequences_size < guard.sequences.size()) {
        const char* end = p[0] == '$' && p[1] == '<' ? std::strchr(p, '>') : nullptr;
        if (end != nullptr)
            p = end + 1;
        else
            guard.sequences[guard.sequences_size++] = *p++;
    }
}

} // namespace

bool can_draw_on_terminal() {
    int known = 0;
    if (::setupterm(nullptr, STDOUT_FILENO, &known) != OK)
        return false;
    const char* place_cursor = ::tigetstr("cup");
    const bool can = place_cursor != nullptr &&
                     place_cursor != reinterpret_cast<const char*>(-1); // NOLINT(performance-no-int-to-ptr)
    ::del_curterm(::cur_term);
    return can;
}

bool guard_terminal() {
    if (::tcgetattr(STDIN_FILENO, &guard.modes) != 0)
        return false;
    stack_t stack{};
    stack.ss_sp = signal_stack.data();
    stack.ss_size = signal_stack.size();
    ::sigaltstack(&stack, nullptr);
    guard.active = true;
    for (int number = 1; number < NSIG; ++number) {
        if (is_leaving_signal(number))
            watch(number, on_leaving_signal, 0);
    }
    for (const int number : CRASH_SIGNALS)
        watch(number, on_crash_signal, SA_ONSTACK | SA_NODEFER);
    watch(SIGWINCH, on_size_change, 0);
    return true;
}

void note_screen_sequences() {
    // Colours and attributes off, cursor shown, keypad to its usual codes, back from the second screen.
    for (const char* name : {"sgr0", "op", "cnorm", "rmkx", "rmcup"})
        append_sequence(name);
}

int signal_to_leave() { return leaving_signal; }

bool take_size_change() {
    const bool changed = size_changes != 0;
    size_changes = 0;
    return changed;
}

void release_terminal() {
    if (!guard.active)
        return;
    guard.active = false;
    ::tcsetattr(STDIN_FILENO, TCSADRAIN, &guard.modes);
    for (int number = 1; number < NSIG; ++number) {
        if (is_leaving_signal(number))
            ::sigaction(number, &guard.old_actions[number], nullptr);
    }
    for (const int number : CRASH_SIGNALS)
        ::sigaction(number, &guard.old_actions[number], nullptr);
}

} // namespace quillon
