// SPDX-License-Identifier: MIT
// The arguments of functions, a row for each shape.
#include "tooling/check_reader.h"

#include "core/machine.h"
#include "core/number_format.h"
#include "core/numbers.h"
#include "functions/signatures.h"

#include <cmath>

namespace quillon {
namespace {

void number_result(StatementReader& r) {
    const char* at = r.value.at;
    r.value = {};
    r.value.kind = VALUE_NUMBER;
    r.value.complete = true;
    r.value.at = at;
}

void string_result(StatementReader& r) {
    r.value = {};
    r.value.kind = VALUE_STRING;
    r.value.complete = true;
}

void open_arguments(StatementReader& r) {
    const Token word = r.scanned;
    next(r);
    if (!r.failed && r.token != TOKEN_OPEN)
        refuse(r, FindingKind::BAD_STATEMENT, r.scanned.begin, "\"(\" is missing behind " + describe(word));
}

void require(StatementReader& r, TokenCode token, const char* what) {
    if (!r.failed && r.token != token)
        refuse(r, FindingKind::BAD_STATEMENT, r.scanned.begin, std::string(what) + " is missing");
}

/// A number as an argument; one that is left out is accepted by some.
void read_number(StatementReader& r, bool may_be_missing) {
    if (r.failed)
        return;
    const char* at = skip_blanks(r.scan);
    r.may_lack = may_be_missing;
    read_argument(r);
    if (!r.failed && !may_be_missing && r.value.kind == VALUE_NONE)
        refuse(r, FindingKind::MISSING_OPERAND, r.scanned.begin, "a number is missing");
    else if (!r.failed && is_string(r.value))
        refuse(r, FindingKind::WRONG_TYPE, at, "a number must stand here, not a string");
}

void require_closing(StatementReader& r) {
    require(r, TOKEN_CLOSE, "\")\"");
    if (!r.failed)
        next_behind_operand(r);
}

void pass_closing(StatementReader& r) {
    if (r.failed)
        return;
    if (r.token == TOKEN_CLOSE)
        next_behind_operand(r);
    else
        warn(r, FindingKind::MISSING_PARENTHESIS, r.scanned.begin, "\")\" is missing");
}

/// Whatever stands behind the arguments is passed in the place of the ")".
void pass_any_token(StatementReader& r) {
    if (r.failed)
        return;
    if (r.token != TOKEN_CLOSE)
        warn(r, FindingKind::MISSING_PARENTHESIS, r.scanned.begin,
             "\")\" is missing; the machine passes over what stands in its place");
    next_behind_operand(r);
}

std::string shown_number(double x) {
    constexpr int DIGITS = 6;
    return std::string(format_general(x, DIGITS).view());
}

std::string domain_text(const Domain& domain) {
    if (domain.by_unit)
        return "angles of four turns at most";
    if (!std::isfinite(domain.highest))
        return domain.lowest > 0 ? "numbers above 0" : "numbers from " + shown_number(domain.lowest) + " on";
    return "numbers from " + shown_number(domain.lowest) + " to " + shown_number(domain.highest);
}

/// Whether a function takes a number, whatever the angle unit is at that time.
bool may_take(const PrefixSignature& signature, double x) {
    const double argument = prefix_argument(signature, x);
    return in_domain(signature.domain, ANGLE_DEG, argument) || in_domain(signature.domain, ANGLE_GRA, argument);
}

/// A number that the text tells must lie in the function's domain.
void check_domain(StatementReader& r, const Token& word) {
    const PrefixSignature* signature = find_prefix_signature(word.code);
    if (!r.failed && signature != nullptr && r.value.number && !may_take(*signature, *r.value.number))
        refuse(r, FindingKind::OUT_OF_RANGE, word.begin,
               describe(word) + " takes " + domain_text(signature->domain) + ", not " + shown_number(*r.value.number));
}

void read_prefix(StatementReader& r) {
    const Token word = r.scanned;
    r.value = {};
    read_factor(r);
    if (r.failed)
        return;
    if (r.value.kind == VALUE_NONE)
        refuse(r, FindingKind::MISSING_OPERAND, r.scanned.begin, "an operand is missing behind " + describe(word));
    else if (is_string(r.value))
        refuse(r, FindingKind::WRONG_TYPE, word.begin, describe(word) + " takes no string");
    check_domain(r, word);
    number_result(r);
}

/// Two numbers; the first one where the text tells it.
std::optional<double> read_pair(StatementReader& r) {
    open_arguments(r);
    read_number(r, true);
    const std::optional<double> first = r.value.number;
    require(r, TOKEN_COMMA, "\",\"");
    read_number(r, true);
    return first;
}

void read_rnd(StatementReader& r) {
    read_pair(r);
    require_closing(r);
    number_result(r);
}

void read_combination(StatementReader& r) {
    const Token word = r.scanned;
    const std::optional<double> n = read_pair(r);
    const std::optional<double> chosen = r.value.number;
    if (!r.failed && n && chosen && !are_counts(std::floor(round6(*n)), std::floor(round6(*chosen))))
        refuse(r, FindingKind::OUT_OF_RANGE, word.begin,
               describe(word) + "(n,r) takes an n of 0 or more, and an r from 0 to n");
    pass_closing(r);
    number_result(r);
}

/// REC and POL leave their results in X and Y, and no operand.
void read_coordinates(StatementReader& r) {
    read_pair(r);
    pass_closing(r);
    r.value = {};
}

void read_sexagesimal_part(StatementReader& r, bool may_be_missing) {
    const char* at = skip_blanks(r.scan);
    read_number(r, may_be_missing);
    if (!r.failed && r.value.number && !is_sexagesimal_part(*r.value.number))
        refuse(r, FindingKind::OUT_OF_RANGE, at, "degrees, minutes and seconds of DEG must be below 60");
}

void read_deg(StatementReader& r) {
    constexpr int PARTS = 3;
    open_arguments(r);
    read_sexagesimal_part(r, false);
    for (int part = 1; part < PARTS && !r.failed && r.token == TOKEN_COMMA; ++part)
        read_sexagesimal_part(r, true);
    pass_any_token(r);
    number_result(r);
}

/// LEN and VAL: a string, or an expression of strings; a variable without "$" never is one.
void read_string_argument(StatementReader& r) {
    const Token word = r.scanned;
    open_arguments(r);
    if (r.failed)
        return;
    const char* at = skip_blanks(r.scan);
    r.may_lack = true;
    read_argument(r);
    if (!r.failed && (r.value.kind == VALUE_NUMVAR || r.value.kind == VALUE_NUMBER))
        refuse(r, FindingKind::WRONG_TYPE, at, describe(word) + " takes a string");
    if (!r.failed && word.code == TOKEN_VAL && r.value.text && !is_plain_decimal(*r.value.text))
        refuse(r, FindingKind::OUT_OF_RANGE, at, "VAL reads digits with at most one point, and a sign in front");
    require_closing(r);
    number_result(r);
}

void read_mid(StatementReader& r) {
    open_arguments(r);
    read_number(r, false);
    if (!r.failed && r.value.number && *r.value.number <= -1)
        refuse(r, FindingKind::OUT_OF_RANGE, r.scanned.begin, "MID begins at a negative character");
    if (!r.failed && r.token == TOKEN_COMMA)
        read_number(r, true);
    require_closing(r);
    string_result(r);
}

void read_str(StatementReader& r) {
    open_arguments(r);
    read_number(r, true);
    pass_any_token(r);
    string_result(r);
}

void read_dms(StatementReader& r) {
    open_arguments(r);
    read_number(r, false);
    pass_any_token(r);
    string_result(r);
}

void read_hex(StatementReader& r) {
    open_arguments(r);
    read_number(r, true);
    pass_closing(r);
    string_result(r);
}

void read_key(StatementReader& r) {
    string_result(r);
    next_behind_operand(r);
}

void read_random(StatementReader& r) {
    number_result(r);
    next_behind_operand(r);
}

/// CSR n: a column; it leaves an operand that prints nothing.
void read_csr(StatementReader& r) {
    const Token word = r.scanned;
    read_argument(r);
    if (r.failed)
        return;
    if (r.value.kind == VALUE_NONE)
        refuse(r, FindingKind::MISSING_OPERAND, r.scanned.begin, "a column is missing behind CSR");
    else if (r.value.kind == VALUE_STRVAR || r.value.kind == VALUE_STRING)
        refuse(r, FindingKind::WRONG_TYPE, word.begin, "CSR takes no string");
    else if (r.value.number && (*r.value.number <= -1 || *r.value.number >= DISPLAY_WIDTH))
        refuse(r, FindingKind::OUT_OF_RANGE, word.begin, "the columns of CSR are 0 to 11");
    r.value = {};
    r.value.kind = VALUE_CURSOR;
}

struct FunctionShape {
    TokenCode first; ///< the lowest code
    TokenCode last;  ///< the highest
    void (*read)(StatementReader&);
};

// clang-format off
constexpr FunctionShape FUNCTION_SHAPES[] = {
    {TOKEN_SIN,    TOKEN_ABS,    read_prefix},
    {TOKEN_CSR,    TOKEN_CSR,    read_csr},
    {TOKEN_KEY,    TOKEN_KEY,    read_key},
    {TOKEN_LEN,    TOKEN_LEN,    read_string_argument},
    {TOKEN_MID,    TOKEN_MID,    read_mid},
    {TOKEN_VAL,    TOKEN_VAL,    read_string_argument},
    {TOKEN_RND,    TOKEN_RND,    read_rnd},
    {TOKEN_RAN,    TOKEN_RAN,    read_random},
    {TOKEN_SGN,    TOKEN_SGN,    read_prefix},
    {TOKEN_STR,    TOKEN_STR,    read_str},
    {TOKEN_DEG,    TOKEN_DEG,    read_deg},
    {TOKEN_DMS,    TOKEN_DMS,    read_dms},
    {TOKEN_HEX,    TOKEN_HEX,    read_hex},
    {TOKEN_HYPSIN, TOKEN_HYPATN, read_prefix},
    {TOKEN_REC,    TOKEN_POL,    read_coordinates},
    {TOKEN_FACT,   TOKEN_FACT,   read_prefix},
    {TOKEN_NPR,    TOKEN_NCR,    read_combination},
    {TOKEN_EOX,    TOKEN_CUR,    read_prefix},
};
// clang-format on

} // namespace

bool read_function(StatementReader& r) {
    for (const FunctionShape& shape : FUNCTION_SHAPES) {
        if (r.token >= shape.first && r.token <= shape.last) {
            const char* at = r.scanned.begin;
            shape.read(r);
            r.value.at = at;
            return true;
        }
    }
    return false;
}

} // namespace quillon
