// SPDX-License-Identifier: MIT
// The functions: each word with what it takes and what computes its result. The driver makes handlers of the rows,
// `tooling` checks arguments by them.
#pragma once

#include "core/signature.h"
#include "core/words.h"
#include "functions/formulas.h"
#include "functions/number_functions.h"
#include "functions/string_functions.h"

#include <array>
#include <cmath>

namespace quillon {

// --- Functions of one factor: SIN 30, SQR A. No parentheses belong to them. ---

/// What becomes of the argument before the formula sees it, and of the result.
enum class Angles : std::uint8_t {
    NONE,
    ARGUMENT, ///< the argument is an angle in the machine's unit
    RESULT,   ///< the result is one
};

/// A function of one factor. Text 0 of its section is for a missing operand, 1 for a string, 2 (by unit 2, 3, 4) for
/// an argument outside the domain.
struct PrefixFunction {
    TokenCode token;
    const char* section; ///< of the catalogue
    Conversion conversion;
    Domain domain;
    Angles angles;
    double (*formula)(double);
    TextNumber string_text = 1;
};

inline constexpr Domain ANY{};
inline constexpr Domain POSITIVE{std::numeric_limits<double>::denorm_min(), INFINITE, false};
inline constexpr Domain NOT_NEGATIVE{0, INFINITE, false};
inline constexpr Domain EXPONENT{-230.2585092, 230.2585092, false}; // the logarithm of 1E100, cut to seven decimals
inline constexpr Domain UNIT{-1, 1, false};
inline constexpr Domain AREA_SINE{-5e99, 5e99, false};
inline constexpr Domain AREA_COSINE{1, 5e99, false};
inline constexpr Domain BY_UNIT{0, 0, true};

inline constexpr Conversion ROUNDED = Conversion::SIX_DECIMALS;
inline constexpr Conversion AS_IS = Conversion::NONE;

// clang-format off
inline constexpr PrefixFunction PREFIX_FUNCTIONS[] = {
    // word         section   argument domain        angles            formula
    {TOKEN_SIN,    "SIN",    ROUNDED, BY_UNIT,      Angles::ARGUMENT, std::sin},
    {TOKEN_COS,    "COS",    ROUNDED, BY_UNIT,      Angles::ARGUMENT, std::cos},
    {TOKEN_TAN,    "TAN",    ROUNDED, BY_UNIT,      Angles::ARGUMENT, std::tan},
    {TOKEN_ASN,    "ASN",    ROUNDED, UNIT,         Angles::RESULT,   std::asin},
    {TOKEN_ACS,    "ACS",    ROUNDED, UNIT,         Angles::RESULT,   std::acos},
    {TOKEN_ATN,    "ATN",    ROUNDED, ANY,          Angles::RESULT,   std::atan},
    {TOKEN_HYPSIN, "HYPSIN", ROUNDED, EXPONENT,     Angles::ARGUMENT, std::sinh},
    {TOKEN_HYPCOS, "HYPCOS", ROUNDED, EXPONENT,     Angles::ARGUMENT, std::cosh},
    {TOKEN_HYPTAN, "HYPTAN", ROUNDED, ANY,          Angles::ARGUMENT, std::tanh},
    {TOKEN_HYPASN, "HYPASN", ROUNDED, AREA_SINE,    Angles::RESULT,   area_sine},
    {TOKEN_HYPACS, "HYPACS", ROUNDED, AREA_COSINE,  Angles::RESULT,   area_cosine},
    {TOKEN_HYPATN, "HYPATN", ROUNDED, UNIT,         Angles::RESULT,   area_tangent},
    {TOKEN_SQR,    "SQRT",   ROUNDED, NOT_NEGATIVE, Angles::NONE,     std::sqrt},
    {TOKEN_EXP,    "EXP",    ROUNDED, EXPONENT,     Angles::NONE,     std::exp},
    {TOKEN_LN,     "LN",     ROUNDED, POSITIVE,     Angles::NONE,     std::log},
    {TOKEN_LOG,    "LOG",    ROUNDED, POSITIVE,     Angles::NONE,     std::log10},
    {TOKEN_INT,    "INT",    ROUNDED, ANY,          Angles::NONE,     std::floor},
    {TOKEN_FRAC,   "FRAC",   ROUNDED, ANY,          Angles::NONE,     fraction},
    {TOKEN_ABS,    "ABS",    ROUNDED, ANY,          Angles::NONE,     std::fabs},
    {TOKEN_SGN,    "SGN",    AS_IS,   ANY,          Angles::NONE,     sign},
    {TOKEN_FACT,   "FACT",   ROUNDED, ANY,          Angles::NONE,     factorial},
    {TOKEN_CUR,    "CUR",    AS_IS,   ANY,          Angles::NONE,     cube_root, 0},
    {TOKEN_EOX,    "EOX",    AS_IS,   ANY,          Angles::NONE,     itself},
    {TOKEN_EOY,    "EOY",    AS_IS,   ANY,          Angles::NONE,     itself},
};
// clang-format on

/// The argument of a function of one factor.
constexpr Argument prefix_argument(const PrefixFunction& function) {
    constexpr ValueError OUTSIDE{ERROR_ARITHMETIC, 2, Detail::NUMBER};
    Argument argument{"x", numbers_and_cells(0, function.string_text), Extent::FACTOR, function.conversion};
    argument.domain = function.domain;
    argument.below = OUTSIDE;
    argument.above = OUTSIDE;
    return argument;
}

inline constexpr auto PREFIX_ARGUMENTS = [] {
    std::array<Argument, std::size(PREFIX_FUNCTIONS)> arguments{};
    for (std::size_t i = 0; i < arguments.size(); ++i)
        arguments[i] = prefix_argument(PREFIX_FUNCTIONS[i]);
    return arguments;
}();

inline constexpr auto PREFIX_SIGNATURES = [] {
    std::array<Signature, std::size(PREFIX_FUNCTIONS)> signatures{};
    for (std::size_t i = 0; i < signatures.size(); ++i) {
        const PrefixFunction& function = PREFIX_FUNCTIONS[i];
        signatures[i] = {function.token, function.section, std::span(&PREFIX_ARGUMENTS[i], 1)};
        signatures[i].result = Result::NUMBER;
    }
    return signatures;
}();

// --- Functions with an argument list, or with none, and CSR ---

inline constexpr RefusedForms STRINGS_1_2 = numbers_only(ACCEPTED, 1, 2);
inline constexpr Domain WHOLE_FROM_0{0, INFINITE, false};
inline constexpr Domain BELOW_60{-INFINITE, 59, false};
inline constexpr Domain COLUMNS{0, 11, false};
inline constexpr ValueError NEGATIVE_START{ERROR_RANGE, 4, Detail::START};
inline constexpr ValueError SIXTY{ERROR_VARIABLE, 4};
inline constexpr ValueError NO_DECIMAL{ERROR_SYNTAX, 3, Detail::TEXT};

inline constexpr Argument RND_ARGUMENTS[] = {{"x", STRINGS_1_2}, {"n", numbers_only(ACCEPTED, 4, 5)}};
inline constexpr Argument COUNTS[] = {{"n", STRINGS_1_2, Extent::EXPRESSION, Conversion::FLOOR},
                                      {"r", STRINGS_1_2, Extent::EXPRESSION, Conversion::FLOOR}};
inline constexpr Argument REC_ARGUMENTS[] = {{"r", STRINGS_1_2}, {"angle", STRINGS_1_2}};
inline constexpr Argument POL_ARGUMENTS[] = {{"x", STRINGS_1_2}, {"y", STRINGS_1_2}};

/// A part of DEG: the first one must be there, the others may be left out.
constexpr Argument sexagesimal(const char* name, TextNumber missing, bool optional) {
    Argument part{name, numbers_only(missing, 2, 3), Extent::EXPRESSION, Conversion::WHOLE, BELOW_60, SIXTY, SIXTY};
    part.optional = optional;
    return part;
}
inline constexpr Argument DEG_ARGUMENTS[] = {sexagesimal("degrees", 1, false), sexagesimal("minutes", ACCEPTED, true),
                                             sexagesimal("seconds", ACCEPTED, true)};

inline constexpr Argument LEN_ARGUMENTS[] = {
    {.name = "text", .refused = strings_only(ACCEPTED, 1, 2), .is_text = true}};
inline constexpr Argument VAL_ARGUMENTS[] = {{.name = "text",
                                              .refused = strings_only(ACCEPTED, 1, 2),
                                              .is_text = true,
                                              .text_form = is_plain_decimal,
                                              .bad_text = NO_DECIMAL,
                                              .text_rule = "digits, at most one point, and a sign in front"}};
inline constexpr Argument MID_ARGUMENTS[] = {
    {"start", numbers_only(1, 2, 3), Extent::EXPRESSION, Conversion::WHOLE, WHOLE_FROM_0, NEGATIVE_START,
     NEGATIVE_START},
    {.name = "length", .refused = numbers_only(ACCEPTED, 5, 6), .conversion = Conversion::WHOLE, .optional = true}};
inline constexpr Argument STR_ARGUMENTS[] = {{"x", STRINGS_1_2}};
inline constexpr Argument HEX_ARGUMENTS[] = {{"x", STRINGS_1_2, Extent::EXPRESSION, Conversion::LOW_32_BITS}};
inline constexpr Argument DMS_ARGUMENTS[] = {
    {"x", numbers_only(1, 2, 3), Extent::EXPRESSION, Conversion::SIX_DECIMALS}};
inline constexpr Argument CSR_ARGUMENTS[] = {{"column",
                                              numbers_and_cells(0, 1),
                                              Extent::EXPRESSION,
                                              Conversion::LOW_32_BITS,
                                              COLUMNS,
                                              {ERROR_RANGE, 2, Detail::WHOLE},
                                              {ERROR_SYNTAX, 3, Detail::WHOLE}}};

inline constexpr std::span<const Argument> NO_ARGUMENTS;
inline constexpr Agreement COUNTS_AGREE{are_counts, {ERROR_VARIABLE, 4}, "an n of 0 or more, and an r from 0 to n"};
inline constexpr ValueError COMMA_3{ERROR_SYNTAX, 3};
inline constexpr ValueError NO_COMMA{};
inline constexpr bool LIST = true; ///< "(" stands before the arguments
inline constexpr bool PLAIN = false;

/// A function by its signature. The formula leaves its result as the current operand.
struct ListFunction {
    Signature signature;
    double (*formula)(Machine&, const Arguments&);
    TokenCode token = signature.token;
};

// clang-format off
inline constexpr ListFunction LIST_FUNCTIONS[] = {
    // word        section arguments      "("    ","       ")"                not closed result                          formula
    {{TOKEN_RND,  "RND",  RND_ARGUMENTS, LIST,  COMMA_3,  Closing::REQUIRED, 6,        Result::NUMBER},               rnd_result},
    {{TOKEN_RAN,  "RAN",  NO_ARGUMENTS,  PLAIN, NO_COMMA, Closing::ANY,      ACCEPTED, Result::NUMBER},               ran_result},
    {{TOKEN_NPR,  "NPR",  COUNTS,        LIST,  COMMA_3,  Closing::OPTIONAL, ACCEPTED, Result::NUMBER, COUNTS_AGREE}, npr_result},
    {{TOKEN_NCR,  "NCR",  COUNTS,        LIST,  COMMA_3,  Closing::OPTIONAL, ACCEPTED, Result::NUMBER, COUNTS_AGREE}, ncr_result},
    {{TOKEN_REC,  "REC",  REC_ARGUMENTS, LIST,  COMMA_3,  Closing::OPTIONAL, ACCEPTED, Result::NONE},                 rec_result},
    {{TOKEN_POL,  "POL",  POL_ARGUMENTS, LIST,  COMMA_3,  Closing::OPTIONAL, ACCEPTED, Result::NONE},                 pol_result},
    {{TOKEN_DEG,  "DEG",  DEG_ARGUMENTS, LIST,  NO_COMMA, Closing::ANY,      ACCEPTED, Result::NUMBER},               deg_result},
    {{TOKEN_LEN,  "LEN",  LEN_ARGUMENTS, LIST,  NO_COMMA, Closing::REQUIRED, 3,        Result::NUMBER},               len_result},
    {{TOKEN_MID,  "MID",  MID_ARGUMENTS, LIST,  NO_COMMA, Closing::REQUIRED, 7,        Result::STRING},               mid_result},
    {{TOKEN_VAL,  "VAL",  VAL_ARGUMENTS, LIST,  NO_COMMA, Closing::REQUIRED, 4,        Result::NUMBER},               val_result},
    {{TOKEN_STR,  "STR",  STR_ARGUMENTS, LIST,  NO_COMMA, Closing::ANY,      ACCEPTED, Result::STRING},               str_result},
    {{TOKEN_HEX,  "HEX",  HEX_ARGUMENTS, LIST,  NO_COMMA, Closing::OPTIONAL, ACCEPTED, Result::STRING},               hex_result},
    {{TOKEN_DMS,  "DMS",  DMS_ARGUMENTS, LIST,  NO_COMMA, Closing::ANY,      ACCEPTED, Result::STRING},               dms_result},
    {{TOKEN_KEY,  "KEY",  NO_ARGUMENTS,  PLAIN, NO_COMMA, Closing::ANY,      ACCEPTED, Result::STRING},               key_result},
    {{TOKEN_CSR,  "CSR",  CSR_ARGUMENTS, PLAIN, NO_COMMA, Closing::NONE,     ACCEPTED, Result::CURSOR},               csr_result},
};
// clang-format on

static_assert(has_all_functions(PREFIX_FUNCTIONS, LIST_FUNCTIONS), "each function needs one row in these tables");

/// The signature of a function; null when the word is not one.
constexpr const Signature* find_function_signature(TokenCode token) {
    for (const Signature& signature : PREFIX_SIGNATURES) {
        if (signature.token == token)
            return &signature;
    }
    for (const ListFunction& function : LIST_FUNCTIONS) {
        if (function.token == token)
            return &function.signature;
    }
    return nullptr;
}

} // namespace quillon
