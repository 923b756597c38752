// SPDX-License-Identifier: MIT
// Signatures: what a word takes and gives, as data. core/arguments executes by them, `tooling` checks listings by them
// and shows them to people. The rows stand with the words' families: functions/function_table.h and
// statements/signatures.h. Nothing here knows a machine.
#pragma once

#include "core/states.h"
#include "core/token.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <span>
#include <string_view>

namespace quillon {

/// The number of a catalogue text within a word's section, and what stands where there is none: nothing is wrong then.
using TextNumber = std::int8_t;
constexpr TextNumber ACCEPTED = -1;

/// What an operand turns out to be when it has been read.
enum class OperandForm : std::uint8_t {
    NONE,
    NUMBER,
    NUMBER_VARIABLE,      ///< a cell read without "$" that holds a number, or nothing yet
    VARIABLE_WITH_STRING, ///< a cell read without "$" that holds a string
    STRING_VARIABLE,      ///< a cell read with "$"
    STRING,
    CURSOR, ///< a CSR
};
constexpr std::size_t OPERAND_FORMS = 7;

/// The text for each form of operand that an argument refuses (ERR2), by OperandForm.
using RefusedForms = std::array<TextNumber, OPERAND_FORMS>;

/// A number: refuses strings, and what is missing unless that is ACCEPTED.
constexpr RefusedForms numbers_only(TextNumber missing, TextNumber string_variable, TextNumber string) {
    return {missing, ACCEPTED, ACCEPTED, string, string_variable, string, ACCEPTED};
}

/// The same, but a cell read without "$" is a number whatever it holds.
constexpr RefusedForms numbers_and_cells(TextNumber missing, TextNumber string) {
    return {missing, ACCEPTED, ACCEPTED, ACCEPTED, string, string, ACCEPTED};
}

/// A string: refuses cells read without "$", whatever they hold, and numbers.
constexpr RefusedForms strings_only(TextNumber missing, TextNumber variable, TextNumber number) {
    return {missing, number, variable, variable, ACCEPTED, ACCEPTED, missing};
}

/// How much of the program an argument takes.
enum class Extent : std::uint8_t {
    FACTOR,     ///< one operand: SIN A+1 is (SIN A)+1
    EXPRESSION, ///< a whole expression
    STATEMENT,  ///< an expression with at most one relation
};

/// What becomes of a number before anything looks at it.
enum class Conversion : std::uint8_t {
    NONE,
    SIX_DECIMALS, ///< rounded to six decimals
    FLOOR,        ///< so rounded, then down to a whole number
    WHOLE,        ///< so rounded, then the fraction dropped
    LOW_32_BITS,  ///< the fraction dropped, then the low 32 of 64 bits; 0 beyond those
};
double converted(Conversion conversion, double x);

constexpr double INFINITE = std::numeric_limits<double>::infinity();

/// The numbers that an argument takes, ends included.
struct Domain {
    double lowest = -INFINITE;
    double highest = INFINITE;
    bool by_unit = false; ///< four turns in the angle unit instead, to either side
};

/// Four turns by unit: DEG, RAD (about), GRA.
constexpr double FOUR_TURNS[] = {1440, 8, 1600};

/// Whether a number lies in a domain.
constexpr bool in_domain(const Domain& domain, AngleUnit unit, double x) {
    const double highest = domain.by_unit ? FOUR_TURNS[number_of(unit)] : domain.highest;
    const double lowest = domain.by_unit ? -highest : domain.lowest;
    return x >= lowest && x <= highest;
}

/// What the detail of an error adds to the catalogue text.
enum class Detail : std::uint8_t {
    NONE,
    NUMBER, ///< " [1.5]"
    WHOLE,  ///< " [1]"
    START,  ///< " S=[1]"
    TEXT,   ///< "\"text\""
    TOKEN,  ///< the code of the token behind the operand
};

/// The error for an argument that is refused for its value. By unit, `text` is the first of three.
struct ValueError {
    ErrorCode code = ERROR_NONE;
    TextNumber text = ACCEPTED;
    Detail detail = Detail::NONE;
};

struct Argument {
    const char* name = ""; ///< what people call it: "start"
    RefusedForms refused{};
    Extent extent = Extent::EXPRESSION;
    Conversion conversion = Conversion::NONE;
    Domain domain{};    ///< of the converted number
    ValueError below{}; ///< for a number below the domain
    ValueError above{}; ///< for any other outside it; nothing is outside where there is no such error
    bool is_text = false;
    bool (*text_form)(std::string_view) = nullptr; ///< whether the word can use a text; any when null
    ValueError bad_text{};                         ///< for one that it cannot use
    const char* text_rule = "";                    ///< what it can use, for people
    bool optional = false;                         ///< it may be left out together with the "," before it
    bool unchecked_at_end = false;                 ///< its form does not matter where the statement ends after it
    Detail form_detail = Detail::NONE;             ///< of the errors about forms
};

/// Whether an argument refuses some numbers.
constexpr bool has_domain(const Argument& argument) { return argument.above.code != ERROR_NONE; }

/// The ")" behind the arguments.
enum class Closing : std::uint8_t {
    NONE,     ///< there is none
    REQUIRED, ///< an error without it
    OPTIONAL, ///< passed over when it is there
    ANY,      ///< one token is passed over, whatever it is
};

/// What a word leaves as its operand.
enum class Result : std::uint8_t { NONE, NUMBER, STRING, CURSOR };

/// Two arguments that must go together.
struct Agreement {
    bool (*holds)(double first, double second) = nullptr; ///< any two do when null
    ValueError error{};
    const char* rule = ""; ///< what the word takes, for people
};

/// A word with regular arguments. Text 0 of the section is for a missing "(".
struct Signature {
    TokenCode token = TOKEN_UNKNOWN;
    const char* section = ""; ///< of the catalogue
    std::span<const Argument> arguments;
    bool opened = false;              ///< "(" stands before the arguments
    ValueError no_comma{};            ///< for a missing "," where an argument must follow
    Closing closing = Closing::NONE;  ///< without arguments, ANY passes over the word itself
    TextNumber not_closed = ACCEPTED; ///< for a missing ")" that is required
    Result result = Result::NONE;
    Agreement agreement{};
};

} // namespace quillon
