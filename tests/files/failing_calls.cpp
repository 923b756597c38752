// SPDX-License-Identifier: MIT
// The functions in the way of the C library's: each counts, and fails when its turn has come.
#include "tests/files/failing_calls.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <csignal>
#include <cstdarg>

#include <fcntl.h>
#include <iconv.h>
#include <sys/ptrace.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

// The two functions that --wrap=NAME makes of each one.
#define CALL(type, name, ...)                                                                                          \
    type real_##name(__VA_ARGS__) __asm__("__real_" #name);                                                            \
    type wrapped_##name(__VA_ARGS__) __asm__("__wrap_" #name)

extern "C" {
CALL(int, open, const char* path, int flags, ...);
CALL(ssize_t, write, int descriptor, const void* bytes, size_t size);
CALL(ssize_t, read, int descriptor, void* bytes, size_t size);
CALL(int, fsync, int descriptor);
CALL(int, close, int descriptor);
CALL(int, fstat, int descriptor, struct stat* out);
}

namespace quillon::testing {
namespace {

struct Plan {
    bool active = false;
    Fault fault;
    int calls = 0;
    std::string failed_call;
};

Plan& plan() {
    static Plan instance;
    return instance;
}

enum class Needs { ROOM, NO_ROOM }; ///< on the disk: a full one has no effect on the others

/// Counts a call; true when it is to fail, or for a write to be short.
bool is_due(const char* name, Needs needs) {
    Plan& p = plan();
    if (!p.active || (p.fault.error == ENOSPC && needs == Needs::NO_ROOM))
        return false;
    ++p.calls;
    if (p.calls != p.fault.at && !(p.fault.lasts && p.calls > p.fault.at))
        return false;
    if (p.failed_call.empty())
        p.failed_call = name;
    return true;
}

bool fails(const char* name, Needs needs = Needs::NO_ROOM) {
    if (!is_due(name, needs) || plan().fault.error == 0)
        return false;
    errno = plan().fault.error;
    return true;
}

bool is_folder(int descriptor) {
    struct stat entry {};
    return real_fstat(descriptor, &entry) == 0 && S_ISDIR(entry.st_mode);
}

} // namespace

std::string run_with_fault(const Fault& fault, const std::function<void()>& action) {
    plan() = {true, fault, 0, ""};
    action();
    plan().active = false;
    return plan().failed_call;
}

bool run_and_kill(const std::function<void()>& action, int stop) {
    const pid_t child = ::fork();
    if (child == 0) {
        if (::ptrace(PTRACE_TRACEME, 0, nullptr, nullptr) != 0)
            ::_exit(2);
        ::raise(SIGSTOP);
        action();
        ::_exit(0);
    }
    int status = 0;
    ::waitpid(child, &status, 0);
    for (int i = 0; i < stop && !WIFEXITED(status); ++i) {
        ::ptrace(PTRACE_SYSCALL, child, nullptr, nullptr);
        ::waitpid(child, &status, 0);
    }
    if (WIFEXITED(status)) {
        EXPECT_EQ(WEXITSTATUS(status), 0) << "2: this system lets no process follow its child";
        return false;
    }
    ::kill(child, SIGKILL);
    ::waitpid(child, &status, 0);
    return true;
}

bool run_as_a_user(const std::function<bool()>& action) {
    constexpr uid_t NOBODY = 65534;
    const pid_t child = ::fork();
    if (child == 0) {
        if (::getuid() == 0 && ::setuid(NOBODY) != 0)
            ::_exit(2);
        ::_exit(action() ? 0 : 1);
    }
    int status = 0;
    ::waitpid(child, &status, 0);
    EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) <= 1) << status;
    return WIFEXITED(status) && WEXITSTATUS(status) == 0;
}

} // namespace quillon::testing

using namespace quillon::testing;

int wrapped_open(const char* path, int flags, ...) {
    mode_t mode = 0;
    if ((flags & O_CREAT) != 0) {
        va_list arguments;
        va_start(arguments, flags);
        mode = va_arg(arguments, mode_t);
        va_end(arguments);
    }
    const bool failed = (flags & O_CREAT) != 0 ? fails("open", Needs::ROOM)
                                               : fails((flags & O_DIRECTORY) != 0 ? "open folder" : "open to read");
    return failed ? -1 : real_open(path, flags, mode);
}

ssize_t wrapped_write(int descriptor, const void* bytes, size_t size) {
    if (!is_due("write", Needs::ROOM))
        return real_write(descriptor, bytes, size);
    const int error = plan().fault.error;
    const ssize_t half = error == EINTR ? -1 : real_write(descriptor, bytes, (size + 1) / 2);
    errno = error;
    return errno == 0 ? half : -1;
}

ssize_t wrapped_read(int descriptor, void* bytes, size_t size) {
    return fails("read") ? -1 : real_read(descriptor, bytes, size);
}

int wrapped_fsync(int descriptor) {
    return fails(is_folder(descriptor) ? "fsync folder" : "fsync", Needs::ROOM) ? -1 : real_fsync(descriptor);
}

int wrapped_close(int descriptor) {
    const bool failed = fails(is_folder(descriptor) ? "close folder" : "close", Needs::ROOM);
    const int outcome = real_close(descriptor); // a failed close closes too
    if (failed)
        errno = plan().fault.error;
    return failed ? -1 : outcome;
}

// Calls that fail and do nothing.
#define FAILING_CALL(name, needs, parameters, arguments)                                                               \
    extern "C" int real_##name parameters __asm__("__real_" #name);                                                    \
    extern "C" int wrapped_##name parameters __asm__("__wrap_" #name);                                                 \
    int wrapped_##name parameters { return fails(#name, Needs::needs) ? -1 : real_##name arguments; }

FAILING_CALL(rename, ROOM, (const char* from, const char* to), (from, to))
FAILING_CALL(link, ROOM, (const char* from, const char* to), (from, to))
FAILING_CALL(unlink, NO_ROOM, (const char* path), (path))
FAILING_CALL(fchmod, NO_ROOM, (int descriptor, mode_t mode), (descriptor, mode))
FAILING_CALL(stat, NO_ROOM, (const char* path, struct stat* out), (path, out))
FAILING_CALL(lstat, NO_ROOM, (const char* path, struct stat* out), (path, out))
FAILING_CALL(access, NO_ROOM, (const char* path, int mode), (path, mode))

extern "C" iconv_t real_iconv_open(const char* to, const char* from) __asm__("__real_iconv_open");
extern "C" iconv_t wrapped_iconv_open(const char* to, const char* from) __asm__("__wrap_iconv_open");

iconv_t wrapped_iconv_open(const char* to, const char* from) {
    return fails("iconv_open") ? reinterpret_cast<iconv_t>(-1) : real_iconv_open(to, from);
}

int wrapped_fstat(int descriptor, struct stat* out) { return fails("fstat") ? -1 : real_fstat(descriptor, out); }
