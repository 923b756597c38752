// SPDX-License-Identifier: MIT
// Texts made of signatures.
#include "tooling/signature_text.h"

#include "core/keywords.h"
#include "core/numbers.h"
#include "functions/function_table.h"
#include "statements/signatures.h"

#include <cmath>

namespace quillon {
namespace {

/// The spelling to show: of a function that gives a string, the one with "$".
std::string_view spelling_of(const Signature& signature) {
    std::string_view first;
    for (const Keyword& keyword : vocabulary()) {
        if (keyword.code != signature.token)
            continue;
        if (signature.result == Result::STRING && keyword.spelling.back() == '$')
            return keyword.spelling;
        first = first.empty() ? keyword.spelling : first;
    }
    return first;
}

std::string arguments_text(const Signature& signature) {
    std::string text;
    for (const Argument& argument : signature.arguments) {
        std::string piece = text.empty() ? "" : ", ";
        piece += argument.name;
        if (argument.optional)
            piece = (text.empty() ? "[" : " [") + piece + "]";
        text += piece;
    }
    return text;
}

} // namespace

const Signature* find_word_signature(TokenCode token) {
    const Signature* function = find_function_signature(token);
    return function != nullptr ? function : find_statement_signature(token);
}

std::string signature_text(const Signature& signature) {
    const std::string word(spelling_of(signature));
    const std::string arguments = arguments_text(signature);
    if (signature.opened)
        return word + "(" + arguments + ")";
    return arguments.empty() ? word : word + " " + arguments;
}

std::string shown_number(double x) {
    constexpr int DIGITS = 6;
    return std::string(format_general(x, DIGITS).view());
}

std::string domain_text(const Argument& argument) {
    const Domain& domain = argument.domain;
    if (domain.by_unit)
        return "angles of four turns at most";
    if (!std::isfinite(domain.lowest)) // only whole numbers have such a domain, and their fraction does not count
        return std::isfinite(domain.highest) ? "numbers below " + shown_number(domain.highest + 1) : "";
    if (!std::isfinite(domain.highest))
        return domain.lowest > 0 ? "numbers above 0" : "numbers from " + shown_number(domain.lowest) + " on";
    return "numbers from " + shown_number(domain.lowest) + " to " + shown_number(domain.highest);
}

} // namespace quillon
