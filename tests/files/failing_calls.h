// SPDX-License-Identifier: MIT
// System calls that fail when a test wants them to, and children that die at any of theirs. The linker puts the
// functions of failing_calls.cpp in the way of the C library's (see its list of --wrap options).
#pragma once

#include <functional>
#include <set>
#include <string>

namespace quillon::testing {

struct Fault {
    int at = 0;    ///< which call fails, from 1 on
    int error = 0; ///< its error number; 0: a write takes half of its bytes, which is no fault, other calls are as ever
    bool lasts = false; ///< all later calls that may have this error fail too; else the one alone
};

/// Runs `action`, of whose calls one or more fail; a write that fails, save for a signal, has written half of its bytes
/// before. Returns the call that failed first, empty when there were not so many. What is done to a folder has names of
/// its own: "open folder", "fsync folder", "close folder".
std::string run_with_fault(const Fault& fault, const std::function<void()>& action);

/// Runs `action` in a child process and kills that at its n-th stop: before its first system call, after it, before its
/// second, and so on. False when the child came to its end before.
bool run_and_kill(const std::function<void()>& action, int stop);

/// Runs `action` in a child process, which is not an administrator's: what may not be read or written is not. What the
/// action returned; false too when it did not come to its end.
bool run_as_a_user(const std::function<bool()>& action);

} // namespace quillon::testing
