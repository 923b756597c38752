// SPDX-License-Identifier: MIT
// How much stack the deepest expressions need. This stands in the program without sanitizers, whose frames are as large
// as those that people run: expressions are evaluated on a painted stack, and the paint that is left is counted.
#include "core/interpreter.h"
#include "core/keywords.h"
#include "driver/language.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <memory>
#include <pthread.h>
#include <string>
#include <vector>

namespace quillon::testing {
namespace {

constexpr std::size_t PAINTED_SIZE = std::size_t{256} << 10;
constexpr std::size_t STACK_MAX = std::size_t{64} << 10;
constexpr unsigned char PAINT = 0xA5;

/// Expressions of one kind of nesting: `open` so and so many times, 1, `close` as many times.
struct Nest {
    std::string open;
    std::string close;
    int least = 0;        ///< so many must be accepted; 0 where a statement may fail for reasons of its own
    Machine* m = nullptr; ///< evaluates them
    int deepest = 0;      ///< the most that was accepted
};

/// Makes a text the machine's listing; the place of its first token.
TokenIndex place_listing(Machine& m, const std::string& text) {
    ListingFault fault;
    m.listing.pointer = make_listing("[P0]\n0 " + text, fault);
    return m.listing->areas[0].lines[0].tokens;
}

void* evaluate_all_depths(void* argument) {
    Nest& nest = *static_cast<Nest*>(argument);
    Machine& m = *nest.m;
    std::string text = "1";
    for (int depth = 1; depth <= NESTING_DEPTH_MAX + 1; ++depth) {
        text = nest.open + text + nest.close;
        m.run.run_state = STATE_RUN;
        m.error.error_code = ERROR_NONE;
        m.eval.stmt_kind = KIND_NONE;
        m.program.for_depth = m.program.gosub_depth = 0;
        m.eval.next = place_listing(m, text);
        eval_statement(m);
        if (!failed(m))
            nest.deepest = depth;
    }
    return nullptr;
}

/// The bytes of stack that all depths of a nest need at most, those of the thread itself included.
std::size_t stack_of(Nest& nest) {
    const auto stack = std::make_unique<unsigned char[]>(PAINTED_SIZE + 4096);
    void* aligned = stack.get();
    std::size_t space = PAINTED_SIZE + 4096;
    std::align(4096, PAINTED_SIZE, aligned, space);
    auto* const bottom = static_cast<unsigned char*>(aligned);
    std::fill_n(bottom, PAINTED_SIZE, PAINT);
    pthread_attr_t attributes;
    pthread_attr_init(&attributes);
    pthread_attr_setstack(&attributes, bottom, PAINTED_SIZE);
    pthread_t thread{};
    EXPECT_EQ(pthread_create(&thread, &attributes, evaluate_all_depths, &nest), 0);
    pthread_join(thread, nullptr);
    pthread_attr_destroy(&attributes);
    const auto* const end = bottom + PAINTED_SIZE;
    return static_cast<std::size_t>(
        end - std::find_if(bottom, bottom + PAINTED_SIZE, [](unsigned char byte) { return byte != PAINT; }));
}

/// Kinds of nesting; among them every word that has a handler: as it stands, with a parenthesis, and within a
/// subscript.
std::vector<Nest> all_nests(const Language& language) {
    std::vector<Nest> nests = {
        {"(", ")", 32},      {"(", "", 32},      {"-", "", 32},
        {"ABS ", "", 32},    {"INT(", ")", 32},  {"A(", ")", 32},
        {"1+(", ")", 32},    {"2^(0*", ")", 32}, {"A(0*", ")", 32},
        {"A(-(", "))"},      {"\"A\"+(", ")"},   {"A$(", ")"},
        {"A(1<", ")"},       {"A(B=", ")"},      {"A(B$==C$+D$(", "))"},
        {"A(1 ", ")"},       {"A(LET B=", ")"},  {"A(B$=\"A\"+C$(", "))"},
        {"A(PRINT 1;", ")"}, {"A(FOR B=", ")"},  {"FOR A=1 TO ", ""},
    };
    for (const Keyword& word : vocabulary()) {
        if (function_of(language, word.code) == nullptr && statement_of(language, word.code).handler == nullptr)
            continue;
        const std::string spelling(word.spelling);
        nests.insert(
            nests.end(),
            {{spelling + " ", ""}, {spelling + "(", ")"}, {spelling + " A(", ")"}, {"A(" + spelling + "(", "))"}});
    }
    return nests;
}

TEST(Stack, TheDeepestNestingNeedsLessThan64KiB) {
    const auto machine = std::make_unique<Machine>();
    Surroundings around;
    around.language = &basic_language();
    machine->around.pointer = &around;
    std::size_t most = 0;
    for (Nest& nest : all_nests(basic_language())) {
        nest.m = machine.get();
        const std::size_t used = stack_of(nest);
        EXPECT_LT(used, STACK_MAX) << nest.open;
        EXPECT_GE(nest.deepest, nest.least) << nest.open;
        most = std::max(most, used);
    }
    EXPECT_GT(most, STACK_MAX / 16) << "something was measured";
    RecordProperty("bytes", static_cast<int>(most));
}

} // namespace
} // namespace quillon::testing
