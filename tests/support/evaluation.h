// SPDX-License-Identifier: MIT
// Single statements and expressions from texts, without a program around them.
#pragma once

#include "core/machine.h"

#include <memory>
#include <string>
#include <string_view>

namespace quillon::testing {

/// A text in a heap buffer of exactly its size and a NUL, so that the address sanitizer sees any reading beyond it.
class ExactText {
public:
    explicit ExactText(std::string_view text) : bytes_(std::make_unique<char[]>(text.size() + 1)), size_(text.size()) {
        text.copy(bytes_.get(), size_);
    }
    [[nodiscard]] const char* begin() const { return bytes_.get(); }
    [[nodiscard]] const char* end() const { return bytes_.get() + size_; }

private:
    std::unique_ptr<char[]> bytes_;
    std::size_t size_;
};

/// Makes a text of one line ready to run: as the typed line, or where it is too long for that as the machine's listing.
/// Returns the place of its first token.
TokenIndex place_text(Machine& m, std::string_view text);

/// What a statement gave: its number to ten digits ("14"), its string in quotes ("'AB'"), or how it failed: ERRn,
/// the catalogue text as section and number, and the detail ("ERR2 SYSTEM 4:0x000e (TOKEN_ID)").
/// The machine runs a program meanwhile (or stays in command mode), in the statement context `kind`.
std::string outcome_of(Machine& m, std::string_view text, StmtKind kind = KIND_NONE);

/// The error of a machine as `outcome_of` writes it; empty when there is none.
std::string failure_of(const Machine& m);

/// The same of `system_message`, with the naming catalogue's mark taken out.
std::string system_message_of(const Machine& m);

} // namespace quillon::testing
