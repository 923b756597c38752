// SPDX-License-Identifier: MIT
// What functions take, as execution and checking of listings share it: the domains of numbers and the form of texts.
// Nothing here knows a machine.
#pragma once

#include "core/states.h"
#include "core/token.h"

#include <string_view>

namespace quillon {

/// The numbers that a function takes, ends included.
struct Domain {
    double lowest;
    double highest;
    bool by_unit; ///< four turns in the angle unit instead, to either side
};

/// Whether a number lies in a domain.
bool in_domain(const Domain& domain, AngleUnit unit, double x);

/// A function of one factor: SIN 30, SQR A.
struct PrefixSignature {
    TokenCode token;
    const char* section; ///< of the catalogue
    bool rounded;        ///< the argument is rounded to six decimals before anything else
    Domain domain;
};

/// The signature of this word; null unless it is a function of one factor.
const PrefixSignature* find_prefix_signature(TokenCode token);

/// The argument as the function sees it.
double prefix_argument(const PrefixSignature& signature, double x);

/// Whether NPR and NCR take these two, made whole.
bool are_counts(double n, double r);

/// Whether DEG takes this as degrees, minutes or seconds.
bool is_sexagesimal_part(double x);

/// Whether VAL reads this text: an optional sign, digits, and at most one point. Nothing at all is 0.
bool is_plain_decimal(std::string_view text);

} // namespace quillon
