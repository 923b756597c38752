// Ticks allocate nothing. This program counts every `new`; it stands alone because it replaces that operator.
#include "tests/support/test_machine.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <new>
#include <string>

namespace {

bool counting = false;
int allocations = 0;

} // namespace

// Not inlined: the compiler would take the pair for a mismatched one.
[[gnu::noinline]] void* operator new(std::size_t size) {
    allocations += counting ? 1 : 0;
    if (void* memory = std::malloc(size > 0 ? size : 1))
        return memory;
    throw std::bad_alloc();
}

[[gnu::noinline]] void operator delete(void* memory) noexcept { std::free(memory); }
[[gnu::noinline]] void operator delete(void* memory, std::size_t) noexcept { std::free(memory); }

namespace quillon::testing {
namespace {

/// Programs that use between them every statement and function there is, save GLOAD, for which the host reads a file.
constexpr const char* PROGRAMS[] = {
    "FOR I=1 TO 3:FOR J=9 TO 1 STEP -4:A(I+J)=I*J:NEXT J:NEXT I\nPRINT A(5);A(6),A(10)",
    "10 GOSUB 100:ON 2 GOTO 10,30\n20 END\n30 ON 1 GOSUB 100\n40 END\n100 A=A+1:IF A<3 THEN RETURN\n110 RETURN",
    "A$=\"ABCDEFG\":$=A$+A$+A$+A$:PRINT $\nPRINT $;:PRINT $,A$;1/3\nB$(5)=$+$:PRINT B$(5)",
    "LET A=-INT-2.5+ABS(-3)*SGN 4/PI^2 EX 3:PRINT A\nPRINT 2^0.5,&HFF,0.00001,12345678901234",
    "IF \"ABC\"<\"ABD\" THEN 30\nEND\n30 IF 1=1;PRINT \"YES\"\nREM\nDATA 1,\"TWO\":PASS:CLEAR:LIST:BREAKA A=1:BREAK B=2",
    "PRINT\nPRINT \"A\"\nSTOP\nPRINT \"B\":COMMAND",
    "10 GOTO #1\n[P1]\n5 PRINT \"ONE\":GOSUB #2\n6 END\n[P2]\n7 PRINT \"TWO\":RETURN",
    "READ A,B$:RESTORE:READ A,B$:PRINT A;B$;CSR 9;\"X\"\nDATA 1.5,\"X\\pi\"",
    "MODE 5:SET F2:PRINT SIN 1;COS 1;TAN 1,ASN 1;ACS 1,ATN 1:SET E3:PRINT SQR 2;EXP 1;LN 2,LOG 2;FRAC 1.5:SET N:VAC",
    "PRINT HYPSIN 1;HYPCOS 1,HYPTAN 1;HYPASN 1,HYPACS 1;HYPATN 0.5,FACT 5;NPR(5,2),NCR(5,2);CUR 8;RAN#",
    "$=\"ABCD\":PRINT DEG(1,30,0);DMS$(1.5),HEX$(255);STR$(12.5);VAL(\"1.5\"),LEN(\"AB\");MID$(1,2);KEY$:REC(1,2):POL(3,4)",
    "BEEP 1:BEEP:BEEPWAIT:BEEPS 1,2,3:BEEPWAIT:MODE 8",
    "INPUT \"A\",A,\"B\",B$:PRINT A;B$\nINPUT C:INPUT D:RUN 50\n50 END",
    "A=1/0",
    "FOO 1.2.3",
    "PRINT \"AB\";Z(222)",
    "A$=1",
    "GOTO 77",
    "PRINT ((((((((((((((((((((((((((((((((((((((((((((((((((((((((((((((((((((((((((((((((((((1",
};

TEST(Allocation, IsNotSeenDuringTicks) {
    for (const char* program : PROGRAMS) {
        for (const int digits : {-1, 9}) {
            TestMachine machine;
            machine.m.set_f_digits = digits;
            machine.start(program);
            machine.m.wait_print_sc = machine.m.wait_print_sc_ini = 1;
            machine.m.host.is_key_down = [](int) { return true; };
            bool ended = false;
            allocations = 0;
            counting = true;
            for (int i = 0; i < 300; ++i) { // EXE and the key "1" in turn, for every wait, entry and command line
                machine.m.enter_request = i % 8 == 0 ? 1 : 0;
                const bool down = i % 8 == 4 || i % 8 == 5;
                machine.m.key_string = down ? "1" : "";
                machine.m.held_key = down ? '1' : 0;
                machine.tick();
                ended = ended || machine.m.run_state == STATE_ENDED || machine.m.run_state == STATE_COMMAND;
            }
            counting = false;
            EXPECT_EQ(allocations, 0) << program;
            EXPECT_TRUE(ended) << program;
        }
    }
}

TEST(Allocation, IsCounted) {
    counting = true;
    allocations = 0;
    const std::string text(1000, 'x');
    counting = false;
    EXPECT_EQ(allocations, 1) << text.size();
}

} // namespace
} // namespace quillon::testing
