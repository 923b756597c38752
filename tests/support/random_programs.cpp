// Composing programs from a small grammar.
#include "tests/support/random_programs.h"

#include <iterator>

namespace quillon::testing {
namespace {

constexpr int DEEPEST = 3;

constexpr const char* OPERATORS[] = {"+", "-", "*", "/", "^", " EX ", "EM ", "+", "-", "*"};
constexpr const char* RELATIONS[] = {"=", "<", ">", "<=", ">=", "<>", "!=", "=="};
constexpr const char* FUNCTIONS[] = {"SIN ", "COS ",  "TAN ", "ASN ", "ATN ", "SQR ",  "EXP ",    "LN ", "LOG ",
                                     "INT ", "FRAC ", "ABS ", "SGN ", "CUR ", "FACT ", "HYPSIN ", "EOX "};
constexpr const char* NUMBERS[] = {"0",           "1",    "2",         "3.5",         "10",     "100",
                                   "0.001",       "&H1F", "7.5",       "1234567",     ".12345", "1E5",
                                   "99999999999", "PI",   "0.9999999", "12345678.125"};
constexpr const char* LITERALS[] = {"\"\"",   "\"A\"",      "\"ABCDEFGHIJ\"",
                                    "\"12\"", "\"\\pi x\"", "\"LONG TEXT THAT SCROLLS\""};
constexpr const char* FAULTS[] = {"(",     ")", ",",  ";",  "#",    "\"", "=", "FOO",   "RETURN",
                                  "1.2.3", "$", "A$", "TO", "THEN", "&",  "5", "Z(300)"};
constexpr const char* KEYS[] = {"1", "7", "A", ".", "-", "\x03", "\x06", "\x08"};

} // namespace

#define PICK(table) pick(table, static_cast<int>(std::size(table)))

std::string RandomProgram::variable() {
    std::string name(1, static_cast<char>('A' + below(6)));
    switch (below(8)) {
    case 0: return name + "(" + expression(DEEPEST) + ")";
    case 1: return name + "(" + std::to_string(below(30)) + ")";
    default: return name;
    }
}

std::string RandomProgram::number() { return PICK(NUMBERS); }

std::string RandomProgram::factor(int depth) {
    const int choice = depth >= DEEPEST ? below(2) : below(10);
    switch (choice) {
    case 0: return number();
    case 1:
    case 2:
    case 3: return depth >= DEEPEST ? std::string(1, static_cast<char>('A' + below(6))) : variable();
    case 4: return "(" + expression(depth + 1) + (below(30) == 0 ? "" : ")");
    case 5: return "-" + factor(depth + 1);
    case 6:
    case 7: return PICK(FUNCTIONS) + factor(depth + 1);
    case 8:
        if (below(30) == 0) // as deep as nesting goes, and deeper
            return std::string(static_cast<std::size_t>(60 + below(15)), '-') + "B";
        return below(3) == 0 ? "LEN(" + text(depth) + ")" : "RAN#";
    default: return "NPR(5," + factor(depth + 1) + ")";
    }
}

std::string RandomProgram::expression(int depth) {
    std::string made = factor(depth);
    for (int more = below(3); more > 0; --more)
        made += PICK(OPERATORS) + factor(depth);
    return made;
}

std::string RandomProgram::text(int depth) {
    switch (below(6)) {
    case 0: return "$";
    case 1: return "STR$(" + expression(depth + 1) + ")";
    case 2: return variable() + "$";
    case 3: return std::string(1, static_cast<char>('A' + below(6))) + "$+" + PICK(LITERALS);
    default: return PICK(LITERALS);
    }
}

std::string RandomProgram::condition() {
    return below(4) == 0 ? text(1) + PICK(RELATIONS) + text(1) : expression(1) + PICK(RELATIONS) + expression(1);
}

std::string RandomProgram::target() {
    return below(6) == 0 ? "#" + std::to_string(below(3)) : std::to_string(10 * (1 + below(LINES + 1)));
}

std::string RandomProgram::simple_statement() {
    const std::string loop(1, static_cast<char>('A' + below(3)));
    switch (below(22)) {
    case 0: return "FOR " + loop + "=" + std::to_string(below(3)) + " TO " + expression(2);
    case 1: return "FOR " + loop + "=" + factor(2) + " TO 3 STEP " + (below(2) == 0 ? ".5" : factor(2));
    case 2:
    case 3: return below(4) == 0 ? "NEXT" : "NEXT " + loop;
    case 4: return "GOTO " + target();
    case 5:
    case 6: return "GOSUB " + target();
    case 7: return "RETURN";
    case 8:
        return "PRINT " + std::string(below(9) == 0 ? "GOSUB " : "") + expression(1) + ";" + text(1) +
               (below(2) == 0 ? ";" : "");
    case 9: return "PRINT " + text(1) + "," + expression(1);
    case 10: return "PRINT CSR " + std::to_string(below(12)) + ";" + expression(2) + ";";
    case 11: return below(2) == 0 ? "$=" + text(1) : loop + "$=" + text(1);
    case 12: return "READ " + variable() + "," + loop + "$";
    case 13: return "RESTORE";
    case 14: return "DATA 1,2.5,ABC,\"X Y\"";
    case 15: return "ON " + expression(2) + (below(2) == 0 ? " GOTO " : " GOSUB ") + target() + "," + target();
    case 16:
        return below(2) == 0 ? "MODE " + std::to_string(4 + below(3))
                             : "SET " + std::string(below(2) == 0 ? "F3" : "E4");
    case 17: return below(3) == 0 ? "VAC" : "LET " + variable() + "=" + expression(1);
    case 18: return below(2) == 0 ? "INPUT " + variable() : "PASS";
    default: return variable() + "=" + expression(0);
    }
}

std::string RandomProgram::statement() {
    std::string made = simple_statement();
    if (below(5) == 0)
        made = "IF " + condition() + (below(3) == 0 ? ";" + made : " THEN " + (below(2) == 0 ? target() : made));
    if (below(40) == 0)
        made.insert(static_cast<std::size_t>(below(static_cast<int>(made.size()))), PICK(FAULTS));
    return made;
}

std::string RandomProgram::statements() {
    std::string line = statement();
    while (below(3) == 0)
        line += (below(4) == 0 ? " : " : ":") + statement();
    return line;
}

std::string RandomProgram::listing() {
    std::string made;
    for (int area = 0; area < 2; ++area) {
        made += "[P" + std::to_string(area) + "]\n";
        for (int line = 1; line <= LINES; ++line)
            made += std::to_string(10 * line) + " " + statements() + (below(5) == 0 ? "  " : "") + "\n";
    }
    return made;
}

std::string RandomProgram::key() { return PICK(KEYS); }

} // namespace quillon::testing
