// SPDX-License-Identifier: MIT
// The tables that tie words to their handlers.
#include "driver/language.h"

#include "core/states.h"
#include "core/words.h"
#include "functions/function_table.h"
#include "functions/list_functions.h"
#include "functions/prefix_functions.h"
#include "statements/conditions.h"
#include "statements/data.h"
#include "statements/input.h"
#include "statements/jumps.h"
#include "statements/loops.h"
#include "statements/modes.h"
#include "statements/print.h"
#include "statements/program.h"
#include "statements/skin.h"
#include "statements/sound.h"

namespace quillon {
namespace {

constexpr std::optional<StmtKind> NO_KIND;

struct StatementRow {
    TokenCode token = TOKEN_UNKNOWN;
    std::optional<StmtKind> kind; ///< the statement context that the word sets
    StatementHandler handler = nullptr;
};

// clang-format off
constexpr StatementRow STATEMENT_ROWS[] = {
    //  word               kind            handler
    {TOKEN_INPUT,        KIND_INPUT,     input_statement},
    {TOKEN_PRINT,        KIND_PRINT,     print_statement},
    {TOKEN_GOTO,         KIND_JUMP,      goto_statement},
    {TOKEN_FOR,          KIND_FOR,       for_statement},
    {TOKEN_NEXT,         NO_KIND,        next_statement},
    {TOKEN_IF,           KIND_CONDITION, if_statement},
    {TOKEN_GOSUB,        KIND_JUMP,      gosub_statement},
    {TOKEN_RETURN,       NO_KIND,        return_statement},
    {TOKEN_ON,           KIND_JUMP,      on_statement},
    {TOKEN_STOP,         NO_KIND,        stop_statement},
    {TOKEN_END_WORD,     NO_KIND,        end_statement},
    {TOKEN_RUN,          NO_KIND,        run_statement},
    {TOKEN_COMMAND,      NO_KIND,        command_statement},
    {TOKEN_MODE,         NO_KIND,        mode_statement},
    {TOKEN_SET,          NO_KIND,        set_statement},
    {TOKEN_VAC,          NO_KIND,        vac_statement},
    {TOKEN_BEEP,         NO_KIND,        beep_statement},
    {TOKEN_BEEPS,        NO_KIND,        beeps_statement},
    {TOKEN_BEEPWAIT,     NO_KIND,        beepwait_statement},
    {TOKEN_READ,         NO_KIND,        read_statement},
    {TOKEN_RESTORE,      NO_KIND,        restore_statement},
    {TOKEN_GLOAD,        NO_KIND,        gload_statement},
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
    {TOKEN_WRITE_FILE,   NO_KIND,        unsupported_statement},
};
// clang-format on

constexpr Language build_language() {
    Language language{};
    for (const StatementRow& row : STATEMENT_ROWS)
        language.statements[token_distance(STATEMENT_FIRST, row.token)] = {row.handler, row.kind};
    for (const PrefixFunction& row : PREFIX_FUNCTIONS) {
        const auto place = token_distance(FUNCTION_FIRST, row.token);
        language.functions[place] = prefix_function;
        language.formulas[place] = prefix_formula;
    }
    for (const ListFunction& row : LIST_FUNCTIONS)
        language.functions[token_distance(FUNCTION_FIRST, row.token)] = list_function;
    return language;
}

constexpr Language BASIC = build_language();

static_assert(has_all_statements(STATEMENT_ROWS), "each statement needs one row; core/words.h says which there are");

} // namespace

const Language& basic_language() { return BASIC; }

} // namespace quillon
