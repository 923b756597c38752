// SPDX-License-Identifier: MIT
// The tables that tie words to their handlers.
#include "driver/language.h"

#include "core/states.h"
#include "functions/list_functions.h"
#include "functions/prefix_functions.h"
#include "functions/string_functions.h"
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

#include <algorithm>

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

/// Words of the statement range that have no statement of their own: wherever one stands in the place of a statement
/// it is an unknown token. THEN, TO and STEP are read by IF and FOR.
constexpr TokenCode WORDS_WITHOUT_STATEMENT[] = {
    TOKEN_THEN, TOKEN_TO, TOKEN_STEP, TOKEN_LIST_ALL, TOKEN_CLEAR_ALL, TOKEN_SAVE_ALL, TOKEN_LOAD_ALL, TOKEN_DIM,
};

struct FunctionRow {
    TokenCode token = TOKEN_UNKNOWN;
    FunctionHandler handler = nullptr;
    NumberFormula formula = nullptr;
};

/// The row of a function of one factor.
constexpr FunctionRow prefix(TokenCode token) { return {token, prefix_function, prefix_formula}; }

// clang-format off
constexpr FunctionRow FUNCTION_ROWS[] = {
    prefix(TOKEN_SIN),     prefix(TOKEN_COS),     prefix(TOKEN_TAN),     prefix(TOKEN_ASN),
    prefix(TOKEN_ACS),     prefix(TOKEN_ATN),     prefix(TOKEN_HYPSIN),  prefix(TOKEN_HYPCOS),
    prefix(TOKEN_HYPTAN),  prefix(TOKEN_HYPASN),  prefix(TOKEN_HYPACS),  prefix(TOKEN_HYPATN),
    prefix(TOKEN_SQR),     prefix(TOKEN_EXP),     prefix(TOKEN_LN),      prefix(TOKEN_LOG),
    prefix(TOKEN_INT),     prefix(TOKEN_FRAC),    prefix(TOKEN_ABS),     prefix(TOKEN_SGN),
    prefix(TOKEN_FACT),    prefix(TOKEN_CUR),     prefix(TOKEN_EOX),     prefix(TOKEN_EOY),
    {TOKEN_RND,  rnd_function},   {TOKEN_RAN,  ran_function},   {TOKEN_NPR,  npr_function},
    {TOKEN_NCR,  ncr_function},   {TOKEN_REC,  rec_function},   {TOKEN_POL,  pol_function},
    {TOKEN_DEG,  deg_function},   {TOKEN_LEN,  len_function},   {TOKEN_MID,  mid_function},
    {TOKEN_VAL,  val_function},   {TOKEN_STR,  str_function},   {TOKEN_HEX,  hex_function},
    {TOKEN_DMS,  dms_function},   {TOKEN_KEY,  key_function},   {TOKEN_CSR,  csr_function},
};
// clang-format on

/// Codes of the function range that are no functions: the relations, and the operators EX and EM, which the evaluator
/// takes between two operands.
constexpr TokenCode CODES_WITHOUT_FUNCTION[] = {TOKEN_EX, TOKEN_EM, TOKEN_NE, TOKEN_GE, TOKEN_LE, TOKEN_EQEQ};

constexpr Language build_language() {
    Language language{};
    for (const StatementRow& row : STATEMENT_ROWS)
        language.statements[token_distance(STATEMENT_FIRST, row.token)] = {row.handler, row.kind};
    for (const FunctionRow& row : FUNCTION_ROWS) {
        const auto place = token_distance(FUNCTION_FIRST, row.token);
        language.functions[place] = row.handler;
        language.formulas[place] = row.formula;
    }
    return language;
}

constexpr Language BASIC = build_language();

template <std::size_t N>
constexpr bool contains(const TokenCode (&codes)[N], TokenCode code) {
    return std::find(std::begin(codes), std::end(codes), code) != std::end(codes);
}

template <typename Row, std::size_t N>
constexpr bool has_row(const Row (&rows)[N], TokenCode code) {
    return std::any_of(std::begin(rows), std::end(rows), [code](const Row& row) { return row.token == code; });
}

/// Whether each word of the vocabulary has a handler, or is one of those that have none for a reason.
constexpr bool is_complete() {
    constexpr TokenCode CODES[] = {
#define WORD(spelling, code, name) TOKEN_##name,
#define ALSO(spelling, name)
#include "core/vocabulary.def"
    };
    for (const TokenCode code : CODES) {
        const bool statement = code >= STATEMENT_FIRST && code <= STATEMENT_LAST;
        const bool function = code >= FUNCTION_FIRST && code <= FUNCTION_LAST;
        if (statement && has_row(STATEMENT_ROWS, code) == contains(WORDS_WITHOUT_STATEMENT, code))
            return false;
        if (function && has_row(FUNCTION_ROWS, code) == contains(CODES_WITHOUT_FUNCTION, code))
            return false;
    }
    return true;
}

static_assert(is_complete(), "a word has lost its handler, or got one without leaving its list");

} // namespace

const Language& basic_language() { return BASIC; }

} // namespace quillon
