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
    int least; ///< so many must be accepted; 0 where a statement may fail for reasons of its own
    Machine* m;
    int deepest = 0; ///< the most that was accepted
};

void evaluate(Machine& m, const std::string& text) {
    m.run_state = STATE_RUN;
    m.error_code = ERROR_NONE;
    m.stmt_kind = KIND_NONE;
    m.for_depth = m.gosub_depth = 0;
    m.scan_ptr = text.c_str();
    eval_statement(m);
}

void* evaluate_all_depths(void* argument) {
    Nest& nest = *static_cast<Nest*>(argument);
    for (int depth = 1; depth <= NESTING_DEPTH_MAX + 1; ++depth) {
        std::string text;
        for (int i = 0; i < depth; ++i)
            text += nest.open;
        text += "1";
        for (int i = 0; i < depth; ++i)
            text += nest.close;
        evaluate(*nest.m, text);
        if (nest.m->error_code == ERROR_NONE)
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

/// The nests of every word that has a handler: as it stands, with a parenthesis, and within a subscript.
void add_words(std::vector<Nest>& nests, Machine& m) {
    for (const Keyword& word : vocabulary()) {
        const bool handled =
            function_of(*m.language, word.code) != nullptr || statement_of(*m.language, word.code).handler != nullptr;
        if (!handled)
            continue;
        const std::string spelling(word.spelling);
        nests.push_back({spelling + " ", "", 0, &m});
        nests.push_back({spelling + "(", ")", 0, &m});
        nests.push_back({spelling + " A(", ")", 0, &m});
        nests.push_back({"A(" + spelling + "(", "))", 0, &m});
    }
}

TEST(Stack, TheDeepestNestingNeedsLessThan64KiB) {
    const auto machine = std::make_unique<Machine>();
    Machine* const m = machine.get();
    m->language = &basic_language();
    std::vector<Nest> nests = {
        {"(", ")", 32, m},         {"(", "", 32, m},        {"-", "", 32, m},
        {"ABS ", "", 32, m},       {"INT(", ")", 32, m},    {"A(", ")", 32, m},
        {"1+(", ")", 32, m},       {"2^(0*", ")", 32, m},   {"A(0*", ")", 32, m},
        {"A(-(", "))", 0, m},      {"\"A\"+(", ")", 0, m},  {"A$(", ")", 0, m},
        {"A(1<", ")", 0, m},       {"A(B=", ")", 0, m},     {"A(B$==C$+D$(", "))", 0, m},
        {"A(1 ", ")", 0, m},       {"A(LET B=", ")", 0, m}, {"A(B$=\"A\"+C$(", "))", 0, m},
        {"A(PRINT 1;", ")", 0, m}, {"A(FOR B=", ")", 0, m}, {"FOR A=1 TO ", "", 0, m},
    };
    add_words(nests, *m);
    std::size_t most = 0;
    for (Nest& nest : nests) {
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
