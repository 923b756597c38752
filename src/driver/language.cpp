// The tables that tie words to their handlers.
#include "driver/language.h"

#include "core/states.h"
#include "functions/numeric.h"
#include "statements/conditions.h"
#include "statements/jumps.h"
#include "statements/loops.h"
#include "statements/print.h"
#include "statements/program.h"

#include <algorithm>

namespace quillon {
namespace {

constexpr int NO_KIND = -1;

struct StatementRow {
    int token;
    int kind; ///< the statement context that the word sets
    StatementHandler handler;
};

//                                          word                kind            handler
constexpr StatementRow STATEMENT_ROWS[] = {{TOKEN_PRINT,        KIND_PRINT,     print_statement},
                                           {TOKEN_GOTO,         KIND_JUMP,      goto_statement},
                                           {TOKEN_FOR,          KIND_FOR,       for_statement},
                                           {TOKEN_NEXT,         NO_KIND,        next_statement},
                                           {TOKEN_IF,           KIND_CONDITION, if_statement},
                                           {TOKEN_GOSUB,        KIND_JUMP,      gosub_statement},
                                           {TOKEN_RETURN,       NO_KIND,        return_statement},
                                           {TOKEN_ON,           KIND_JUMP,      on_statement},
                                           {TOKEN_STOP,         NO_KIND,        stop_statement},
                                           {TOKEN_END_WORD,     NO_KIND,        end_statement},
                                           {TOKEN_COMMAND,      NO_KIND,        command_statement},
                                           {TOKEN_REM,          NO_KIND,        rem_statement},
                                           {TOKEN_LET,          NO_KIND,        let_statement},
                                           {TOKEN_DATA,         NO_KIND,        skip_statement},
                                           {TOKEN_LIST,         NO_KIND,        skip_statement},
                                           {TOKEN_CLEAR,        NO_KIND,        skip_statement},
                                           {TOKEN_DEFM,         NO_KIND,        skip_statement},
                                           {TOKEN_SAVE,         NO_KIND,        skip_statement},
                                           {TOKEN_LOAD,         NO_KIND,        skip_statement},
                                           {TOKEN_PUT,          NO_KIND,        skip_statement},
                                           {TOKEN_GET,          NO_KIND,        skip_statement},
                                           {TOKEN_VERIFY,       NO_KIND,        skip_statement},
                                           {TOKEN_PASS,         NO_KIND,        skip_statement},
                                           {TOKEN_READ_FILE,    NO_KIND,        unsupported_statement},
                                           {TOKEN_RESTORE_FILE, NO_KIND,        unsupported_statement},
                                           {TOKEN_WRITE_FILE,   NO_KIND,        unsupported_statement}};

struct FunctionRow {
    int token;
    FunctionHandler handler;
};

constexpr FunctionRow FUNCTION_ROWS[] = {
    {TOKEN_INT, int_function},
    {TOKEN_ABS, abs_function},
    {TOKEN_SGN, sgn_function},
};

constexpr Language build_language() {
    Language language{};
    for (const StatementRow& row : STATEMENT_ROWS)
        language.statements[static_cast<std::size_t>(row.token - STATEMENT_FIRST)] = {row.handler, row.kind};
    for (const FunctionRow& row : FUNCTION_ROWS)
        language.functions[static_cast<std::size_t>(row.token - FUNCTION_FIRST)] = row.handler;
    return language;
}

constexpr Language BASIC = build_language();

} // namespace

const Language& basic_language() { return BASIC; }

} // namespace quillon
