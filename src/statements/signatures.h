// SPDX-License-Identifier: MIT
// The statements whose operands are regular: what each takes, for its handler and for `tooling`.
#pragma once

#include "core/signature.h"
#include "core/words.h"

namespace quillon {

inline constexpr ValueError MODE_RANGE{ERROR_SYNTAX, 2};
inline constexpr ValueError BEEPS_COMMA{ERROR_RANGE, 2};

/// A cell read with "$" is the number 0 to MODE, which its domain refuses.
inline constexpr RefusedForms MODE_FORMS{0, ACCEPTED, ACCEPTED, ACCEPTED, ACCEPTED, 1, ACCEPTED};
/// BEEP and BEEPS take any cell read without "$".
inline constexpr RefusedForms TONE_FORMS{0, ACCEPTED, ACCEPTED, ACCEPTED, 0, 0, 0};

inline constexpr Argument MODE_ARGUMENTS[] = {
    {"mode", MODE_FORMS, Extent::STATEMENT, Conversion::NONE, {4, 8}, MODE_RANGE, MODE_RANGE}};

/// A number of BEEP or BEEPS; `outside` has no code where any number will do.
constexpr Argument tone_argument(const char* name, Extent extent, Domain domain, ValueError outside) {
    return {.name = name,
            .refused = TONE_FORMS,
            .extent = extent,
            .domain = domain,
            .below = outside,
            .above = outside,
            .form_detail = Detail::TOKEN};
}

/// BEEP alone is BEEP 0.
constexpr Argument pitch_argument() {
    Argument pitch = tone_argument("tone", Extent::STATEMENT, {0, 1}, {ERROR_RANGE, 1});
    pitch.optional = true;
    pitch.unchecked_at_end = true;
    return pitch;
}

inline constexpr Argument BEEP_ARGUMENTS[] = {pitch_argument()};
inline constexpr Argument BEEPS_ARGUMENTS[] = {
    tone_argument("octave", Extent::STATEMENT, {1, 8}, {ERROR_RANGE, 1}),
    tone_argument("note", Extent::EXPRESSION, {0, 11}, {ERROR_RANGE, 3}),
    tone_argument("milliseconds", Extent::EXPRESSION, {}, {}),
};
inline constexpr Argument RESTORE_ARGUMENTS[] = {
    {.name = "line", .refused = numbers_only(ACCEPTED, 1, 2), .conversion = Conversion::WHOLE, .optional = true}};
inline constexpr Argument GLOAD_ARGUMENTS[] = {{.name = "file", .refused = strings_only(1, 0, 1), .is_text = true}};

inline constexpr Signature STATEMENT_SIGNATURES[] = {
    {TOKEN_MODE, "MODE", MODE_ARGUMENTS},
    {TOKEN_BEEP, "BEEP", BEEP_ARGUMENTS},
    {TOKEN_BEEPS, "BEEPS", BEEPS_ARGUMENTS, false, BEEPS_COMMA},
    {TOKEN_RESTORE, "RESTORE", RESTORE_ARGUMENTS},
    {TOKEN_GLOAD, "GLOAD", GLOAD_ARGUMENTS},
};

/// The signature of a statement; null when its operands are not regular.
constexpr const Signature* find_statement_signature(TokenCode token) {
    for (const Signature& signature : STATEMENT_SIGNATURES) {
        if (signature.token == token)
            return &signature;
    }
    return nullptr;
}

/// The signature of a statement that has one, for its handler.
template <TokenCode token>
constexpr const Signature& signature_of() {
    static_assert(rows_for(STATEMENT_SIGNATURES, token) == 1);
    return *find_statement_signature(token);
}

} // namespace quillon
