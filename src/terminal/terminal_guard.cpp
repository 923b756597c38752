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

#include <array>
#include <iterator>

namespace quillon {
namespace {

constexpr int LEAVING_SIGNALS[] = {SIGHUP, SIGINT, SIGQUIT, SIGTERM};
constexpr int CRASH_SIGNALS[] = {SIGSEGV, SIGBUS, SIGFPE, SIGILL, SIGABRT, SIGSYS, SIGTRAP};

/// All that the handlers touch. There is one terminal, and handlers have no argument to find it by.
struct Guard {
    bool active = false;
    termios modes{};
    std::array<char, 512> sequences{};
    std::size_t sequences_size = 0;
    struct sigaction old_leaving[std::size(LEAVING_SIGNALS)];
    struct sigaction old_crash[std::size(CRASH_SIGNALS)];
};

Guard guard;                                      // NOLINT(cppcoreguidelines-avoid-non-const-global-variables)
volatile std::sig_atomic_t leaving_signal = 0;    // NOLINT(cppcoreguidelines-avoid-non-const-global-variables)
alignas(16) std::array<char, 65536> signal_stack; // NOLINT(cppcoreguidelines-avoid-non-const-global-variables)

void on_leaving_signal(int number) { leaving_signal = number; }

/// A handler may find the stack used up, so it has one of its own.
void on_crash_signal(int number) {
    if (guard.active) {
        guard.active = false;
        static_cast<void>(!::write(STDOUT_FILENO, guard.sequences.data(), guard.sequences_size));
        ::tcsetattr(STDIN_FILENO, TCSANOW, &guard.modes);
    }
    for (std::size_t i = 0; i < std::size(CRASH_SIGNALS); ++i) {
        if (CRASH_SIGNALS[i] == number)
            ::sigaction(number, &guard.old_crash[i], nullptr);
    }
    // Back at the fault it is raised again; one that was sent is not, and so by hand.
    ::raise(number);
}

template <std::size_t N>
void watch(const int (&signals)[N], void (*handler)(int), int flags, struct sigaction (&old)[N]) {
    struct sigaction action {};
    action.sa_handler = handler;
    action.sa_flags = flags;
    ::sigemptyset(&action.sa_mask);
    for (std::size_t i = 0; i < N; ++i) {
        ::sigaction(signals[i], nullptr, &old[i]);
        if (old[i].sa_handler != SIG_IGN) // nohup
            ::sigaction(signals[i], &action, nullptr);
    }
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
    watch(LEAVING_SIGNALS, on_leaving_signal, 0, guard.old_leaving);
    watch(CRASH_SIGNALS, on_crash_signal, SA_ONSTACK | SA_NODEFER, guard.old_crash);
    return true;
}

void note_screen_sequences() {
    // Colours and attributes off, cursor shown, keypad to its usual codes, back from the second screen.
    for (const char* name : {"sgr0", "op", "cnorm", "rmkx", "rmcup"})
        append_sequence(name);
}

int signal_to_leave() { return leaving_signal; }

void release_terminal() {
    if (!guard.active)
        return;
    guard.active = false;
    ::tcsetattr(STDIN_FILENO, TCSADRAIN, &guard.modes);
    for (std::size_t i = 0; i < std::size(LEAVING_SIGNALS); ++i)
        ::sigaction(LEAVING_SIGNALS[i], &guard.old_leaving[i], nullptr);
    for (std::size_t i = 0; i < std::size(CRASH_SIGNALS); ++i)
        ::sigaction(CRASH_SIGNALS[i], &guard.old_crash[i], nullptr);
}

} // namespace quillon
