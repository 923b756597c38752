// SPDX-License-Identifier: MIT
// Small help with the system's calls on files: descriptors that close themselves, and calls that a signal interrupts.
#pragma once

#include <cerrno>

#include <unistd.h>

namespace quillon {

/// An open file; closed at the end unless it has been already.
struct Descriptor {
    explicit Descriptor(int number_ = -1) : number(number_) {}
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;
    ~Descriptor() {
        if (number >= 0)
            ::close(number);
    }

    int number; ///< below 0: none
};

/// Repeats a call that returns below 0 for a fault as long as the fault is a signal's.
template <typename Call>
auto until_uninterrupted(const Call& call) {
    auto result = call();
    while (result < 0 && errno == EINTR)
        result = call();
    return result;
}

} // namespace quillon
