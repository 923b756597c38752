// SPDX-License-Identifier: MIT
// Text functions and CSR.
#include "functions/string_functions.h"

#include "core/charset.h"
#include "core/interpreter.h"
#include "core/number_format.h"
#include "core/variables.h"
#include "functions/arguments.h"
#include "functions/signatures.h"

#include <algorithm>
#include <cmath>
#include <cstdio>

namespace quillon {
namespace {

constexpr int ACCEPTED = ArgumentErrors::ACCEPTED;

/// Reads "(" and a string, for LEN and VAL; false after an error.
bool read_string(Machine& m, const char* section) {
    if (!open_arguments(m, {section, 0}))
        return false;
    m.eval.value.text.clear();
    eval_argument(m);
    if (m.eval.value.kind == VALUE_NUMVAR)
        raise_error(m, ERROR_SYNTAX, {section, 1});
    else if (value_type(m) == TYPE_NUMBER)
        raise_error(m, ERROR_SYNTAX, {section, 2});
    return !failed(m);
}

/// A part of $: from the 1-based character `start` on; all of the rest when `length` is -1.
struct Part {
    int start = 0;
    int length = -1;
};

/// Reads the arguments of MID up to its ")"; false after an error.
bool read_part(Machine& m, Part& part) {
    double x = 0;
    if (!open_arguments(m, {"MID", 0}) || !read_number(m, {"MID", 1, 2, 3}, x))
        return false;
    part.start = truncate_to_int(round6(x));
    if (part.start < 0) {
        raise_error(m, ERROR_RANGE, {"MID", 4}, " S=[%d]", part.start);
        return false;
    }
    if (m.eval.token == TOKEN_COMMA) {
        if (!read_number(m, {"MID", ACCEPTED, 5, 6}, x))
            return false;
        part.length = truncate_to_int(round6(x));
    }
    return close_arguments(m, {"MID", 7});
}

/// The part of `source`. What lies outside it is no error, but the detail tells of it.
std::string_view take_part(Machine& m, std::string_view source, const Part& part) {
    const int size = static_cast<int>(source.size());
    if (part.start == 0 || part.start > size) {
        compose_detail(m, {"MID", 8}, "\r\nS=[%d],$length=[%d]", part.start, size);
        return {};
    }
    const std::string_view rest = source.substr(static_cast<std::size_t>(part.start) - 1);
    if (part.length == -1)
        return rest;
    const long long end = static_cast<long long>(part.start) + part.length;
    if (end > size + 1)
        compose_detail(m, {"MID", 9}, "\r\nS+E=[%d],$length=[%d]", truncate_to_int(static_cast<double>(end)), size);
    return rest.substr(0, static_cast<std::size_t>(std::max(part.length, 0)));
}

} // namespace

bool is_plain_decimal(std::string_view text) {
    if (!text.empty() && (text[0] == '-' || text[0] == '+'))
        text.remove_prefix(1);
    const auto points = std::count(text.begin(), text.end(), '.');
    const auto digits = std::count_if(text.begin(), text.end(), is_digit);
    return points <= 1 && static_cast<std::size_t>(points + digits) == text.size();
}

double len_function(Machine& m) {
    if (!read_string(m, "LEN"))
        return 0;
    const double result = number_result(m, static_cast<double>(m.eval.value.text.size()));
    return close_arguments(m, {"LEN", 3}) ? result : 0;
}

double mid_function(Machine& m) {
    Part part;
    if (!read_part(m, part))
        return 0;
    return string_result(m, take_part(m, dollar_var(m).text, part));
}

/// Not inlined: the buffer must not lie in the frames of nested calls.
[[gnu::noinline]] void raise_no_decimal(Machine& m) {
    char shown[400];
    raise_error(m, ERROR_SYNTAX, {"VAL", 3}, "\"%s\"", escape_text(m.eval.value.text, shown, sizeof shown));
}

double val_function(Machine& m) {
    if (!read_string(m, "VAL"))
        return 0;
    if (!is_plain_decimal(m.eval.value.text)) {
        raise_no_decimal(m);
        return 0;
    }
    std::size_t used = 0;
    const double result = number_result(m, parse_decimal(m.eval.value.text, used));
    return close_arguments(m, {"VAL", 4}) ? result : 0;
}

double str_function(Machine& m) {
    double x = 0;
    if (!open_arguments(m, {"STR", 0}) || !read_number(m, {"STR", ACCEPTED, 1, 2}, x))
        return 0;
    string_result(m, number_text(m, x));
    next_token_after_operand(m);
    return 0;
}

double hex_function(Machine& m) {
    double x = 0;
    if (!open_arguments(m, {"HEX", 0}) || !read_number(m, {"HEX", ACCEPTED, 1, 2}, x))
        return 0;
    char text[16];
    std::snprintf(text, sizeof text, "%X", static_cast<unsigned>(low_32_bits(x)));
    string_result(m, text);
    pass_closing(m);
    return 0;
}

/// Makes a text of degrees, minutes and seconds of the value. Not inlined: the texts must not lie in the frames of
/// nested calls.
[[gnu::noinline]] void dms_result(Machine& m, double x) {
    constexpr int SHOWN_DIGITS = 6;
    double degrees = 0;
    double minutes = 0;
    const double rest = std::modf(round6(x), &degrees) * 60;
    const double seconds = std::modf(rest, &minutes) * 60;
    BoundedText<127> text(format_general(degrees, SHOWN_DIGITS));
    text.push_back(static_cast<char>(CHAR_DEGREE));
    text.append(" ");
    text.append(format_general(minutes, SHOWN_DIGITS));
    text.append("' ");
    text.append(format_fixed(seconds, 1));
    string_result(m, text);
}

double dms_function(Machine& m) {
    double x = 0;
    if (!open_arguments(m, {"DMS", 0}) || !read_number(m, {"DMS", 1, 2, 3}, x))
        return 0;
    dms_result(m, x);
    next_token_after_operand(m);
    return 0;
}

double key_function(Machine& m) {
    const unsigned char first = as_byte(m.keys.key_string[0]);
    const bool is_character = first >= ' ' || first == as_byte(number_of(KEY_PASTE));
    string_result(m, is_character ? m.keys.key_string.view() : std::string_view());
    m.around->host.key_read();
    next_token_after_operand(m);
    return 0;
}

double csr_function(Machine& m) {
    const int column = low_32_bits(eval_argument(m));
    if (failed(m))
        return 0;
    if (m.eval.value.kind == VALUE_NONE)
        raise_error(m, ERROR_SYNTAX, {"CSR", 0});
    else if (m.eval.value.kind == VALUE_STRVAR || m.eval.value.kind == VALUE_STRING)
        raise_error(m, ERROR_SYNTAX, {"CSR", 1});
    else if (column < 0)
        raise_error(m, ERROR_RANGE, {"CSR", 2}, " [%d]", column);
    else if (column >= DISPLAY_WIDTH)
        raise_error(m, ERROR_SYNTAX, {"CSR", 3}, " [%d]", column);
    else
        m.screen.display_cursor = column;
    m.eval.value.kind = VALUE_CURSOR;
    return 0;
}

} // namespace quillon
