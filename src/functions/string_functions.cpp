// SPDX-License-Identifier: MIT
// Results of the text functions, and CSR.
#include "functions/string_functions.h"

#include "core/charset.h"
#include "core/errors.h"
#include "core/number_format.h"
#include "core/numbers.h"
#include "core/variables.h"
#include "functions/results.h"

#include <algorithm>
#include <cmath>
#include <cstdio>

namespace quillon {
namespace {

/// The part of `source` from the 1-based character `start` on; all of the rest when `length` is -1. What lies outside
/// it is not an error, but the detail reports it.
std::string_view take_part(Machine& m, std::string_view source, int start, int length) {
    const int size = static_cast<int>(source.size());
    if (start == 0 || start > size) {
        compose_detail(m, {"MID", 8}, "\r\nS=[%d],$length=[%d]", start, size);
        return {};
    }
    const std::string_view rest = source.substr(static_cast<std::size_t>(start) - 1);
    if (length == -1)
        return rest;
    const long long end = static_cast<long long>(start) + length;
    if (end > size + 1)
        compose_detail(m, {"MID", 9}, "\r\nS+E=[%d],$length=[%d]", truncate_to_int(static_cast<double>(end)), size);
    return rest.substr(0, static_cast<std::size_t>(std::max(length, 0)));
}

} // namespace

bool is_plain_decimal(std::string_view text) {
    if (!text.empty() && (text[0] == '-' || text[0] == '+'))
        text.remove_prefix(1);
    const auto points = std::count(text.begin(), text.end(), '.');
    const auto digits = std::count_if(text.begin(), text.end(), is_digit);
    return points <= 1 && static_cast<std::size_t>(points + digits) == text.size();
}

double len_result(Machine& m, const Arguments&) {
    return number_result(m, static_cast<double>(m.eval.value.text.size()));
}

/// The length is all of the rest when it was left out, or is -1.
double mid_result(Machine& m, const Arguments& arguments) {
    const int start = static_cast<int>(arguments.number[0]);
    const int length = arguments.count > 1 ? static_cast<int>(arguments.number[1]) : -1;
    return string_result(m, take_part(m, dollar_var(m).text, start, length));
}

double val_result(Machine& m, const Arguments&) {
    std::size_t used = 0;
    return number_result(m, parse_decimal(m.eval.value.text, used));
}

double str_result(Machine& m, const Arguments& arguments) {
    return string_result(m, number_text(m, arguments.number[0]));
}

double hex_result(Machine& m, const Arguments& arguments) {
    char text[16];
    const auto number = static_cast<std::int32_t>(arguments.number[0]);
    std::snprintf(text, sizeof text, "%X", static_cast<unsigned>(number));
    return string_result(m, text);
}

double dms_result(Machine& m, const Arguments& arguments) {
    constexpr int SHOWN_DIGITS = 6;
    double degrees = 0;
    double minutes = 0;
    const double rest = std::modf(arguments.number[0], &degrees) * 60;
    const double seconds = std::modf(rest, &minutes) * 60;
    BoundedText<127> text(format_general(degrees, SHOWN_DIGITS));
    text.push_back(static_cast<char>(CHAR_DEGREE));
    text.append(" ");
    text.append(format_general(minutes, SHOWN_DIGITS));
    text.append("' ");
    text.append(format_fixed(seconds, 1));
    return string_result(m, text);
}

double key_result(Machine& m, const Arguments&) {
    const unsigned char first = as_byte(m.keys.key_string[0]);
    const bool is_character = first >= ' ' || first == as_byte(number_of(KEY_PASTE));
    string_result(m, is_character ? m.keys.key_string.view() : std::string_view());
    m.around->host.key_read();
    return 0;
}

double csr_result(Machine& m, const Arguments& arguments) {
    m.screen.display_cursor = static_cast<int>(arguments.number[0]);
    m.eval.value.kind = VALUE_CURSOR;
    return 0;
}

} // namespace quillon
