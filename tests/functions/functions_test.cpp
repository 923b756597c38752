// Functions: values in the three angle units, the ends of domains, argument lists, the random generator, strings, KEY$,
// and CSR in PRINT.
#include "functions/list_functions.h"
#include "shell/key_queue.h"
#include "tests/support/keyboard.h"
#include "tests/support/scripts.h"
#include "tests/support/table.h"

#include <gtest/gtest.h>

namespace quillon::testing {
namespace {

TEST(NumericFunctions, TakeTheNextFactor) {
    expect_printed("A=30:B$=\"X\":A(5)=60", R"(
        SIN 30 -> 0.5    SIN(30) -> 0.5               SIN 30+1 -> 1.5    SIN(30+60) -> 1  SIN -30 -> -0.5
        -SIN 30 -> -0.5  SIN SIN 90 -> 0.01745240644  2*COS A(5)*3 -> 3  SQR 16^2 -> 16   SIN B -> 0
        ABS A-31 -> -1   INT PI -> 3                  SQR(9 -> 3
    )");
}

TEST(NumericFunctions, InTheThreeUnits) {
    expect_printed("", R"(
        COS 60 -> 0.5            TAN 45 -> 1               TAN 90 -> 1.6331239\ex16   ASN 0.5 -> 30
        ASN -1 -> -90            ACS 0.5 -> 60             ACS -1 -> 180              ATN 1 -> 45
        ATN 2 -> 63.43494882     HYPSIN 90 -> 2.301298902  HYPCOS 90 -> 2.509178479   HYPTAN 45 -> 0.6557942026
        HYPASN 1 -> 50.49898671  HYPACS 2 -> 75.45612929   HYPATN 0.5 -> 31.47292373
    )");
    expect_printed("MODE 5", R"(
        SIN 8 -> 0.9893582466       COS PI -> -1             TAN 1 -> 1.557407725       ASN 1 -> 1.570796327
        ACS -1 -> 3.141592654       ATN 1 -> 0.7853981634    HYPSIN 1 -> 1.175201194    HYPCOS 1 -> 1.543080635
        HYPTAN 1 -> 0.761594156     HYPASN 1 -> 0.881373587  HYPASN -1 -> -0.881373587  HYPACS 2 -> 1.316957897
        HYPATN 0.5 -> 0.5493061443
    )");
    expect_printed("MODE 6", R"(
        SIN 100 -> 1  COS 200 -> -1              TAN 50 -> 1              ASN 1 -> 100  ACS 0.5 -> 66.66666667
        ATN 1 -> 50   HYPSIN 100 -> 2.301298902  HYPASN 1 -> 56.10998523
    )");
}

TEST(NumericFunctions, WithoutAngles) {
    expect_printed("", R"(
        SQR 2 -> 1.414213562      EXP 1 -> 2.718281828        EXP 0 -> 1       EXP 230.2585092 -> 9.999997006\ex99
        LN 10 -> 2.302585093      LOG 1000 -> 3               INT 2.5 -> 2     INT -2.5 -> -3    INT 2.9999999 -> 3
        FRAC 2.5 -> 0.5           FRAC -2.5 -> 0.5            FRAC -2.25 -> 0.75                 ABS -3.5 -> 3.5
        ABS -0.0000001 -> 0       SGN -7 -> -1                SGN 0 -> 0       SGN 0.0000001 -> 1
        EOX 0.0000001*1EX7 -> 1   EOY -0.0000001*1EX7 -> -1   CUR 27 -> 3      CUR -8 -> -2      CUR 2 -> 1.25992105
        CUR 0 -> 0                CUR 0.125 -> 0.5            CUR 0.001*1EX3 -> 100              FACT 0 -> 1
        FACT 10 -> 3628800        FACT 3.7 -> 6               FACT -3 -> 1     FACT 69 -> 1.711224524\ex98
        CUR(1EX9)*1EX8-1EX11 -> 7
    )");
}

TEST(NumericFunctions, AtTheEndsOfTheirDomains) {
    expect_printed("", R"(
        COS 1440+COS -1440 -> 2              ASN -1+ACS 1 -> -90  HYPSIN 230.2585092+HYPSIN -230.2585092 -> 0
        HYPCOS 230.2585092 -> 27.82528065    HYPTAN 99999 -> 1    HYPASN(5EX99)/180*PI -> 230.2585093
        HYPACS(5EX99)/180*PI -> 230.2585093  HYPACS 1 -> 0        SQR 0 -> 0       LN 0.000001 -> -13.81551056
        SIN 0.0000004*1EX9 -> 0              SQR -0.0000004 -> 0  ASN 1.0000004 -> 90    HYPACS 0.9999996 -> 0
        LN 0.0000001 -> ERR3 LN 2 [0]        LOG 0.0000004 -> ERR3 LOG 2 [0]       ABS SIN 1440.0000001 -> 0
    )");
    expect_printed("MODE 5", "COS -8 -> -0.1455000338");
    expect_printed("MODE 6", "COS -1600+COS 1600 -> 2");
    TestMachine t;
    for (const char* expression : {"FACT 70", "FACT(1EX99)", "EXP -230", "HYPATN 1", "HYPATN -1", "HYPASN -100000000",
                                   "NPR(171,1)", "NPR(200,0)", "NCR(200,0)"})
        EXPECT_EQ(printed(t, "", expression), "ERR3 SYSTEM 6:(1*10^-99 <= |N| < 1*10^100)") << expression;
}

TEST(ListFunctions, RoundAndCount) {
    expect_printed("B$=\"X\"", R"(
        RND(123.456,-2) -> 123.5  RND(123.456,1) -> 100   RND(153,1) -> 200      RND(-123.456,-2) -> -123.5
        RND(-0.25,-2) -> -0.2     RND(0.25,-2) -> 0.3     RND(5,0) -> 10         RND(4,0)+1 -> 1
        RND(1+1*3,-1)*2 -> 8      RND(0.4999999,-1) -> 1  RND(1/0,2) -> ERR3 SYSTEM 5
        NPR(5,2) -> 20            NCR(5,2) -> 10          NCR(5,0) -> 1          NPR(5,5) -> 120
        NPR(5.9,2.9999999) -> 60  NPR(5,2)*2+1 -> 41      NCR(5,2 -> 10          NCR(1/0,5) -> ERR3 SYSTEM 5
        DEG(12,30,36) -> 12.51    DEG(59) -> 59           DEG(10,30)+1 -> 11.5   DEG(10,30.5) -> 10.5
        DEG(-10,30) -> -9.5       DEG(-70) -> -70         DEG(1.9999999) -> 2
    )");
}

TEST(ListFunctions, CoordinatesGoToXAndY) {
    const char* const rows = R"(
        REC(2,30) -> 1.732050808 1              REC(1+1,10*3 -> 1.732050808 1     MODE 5:REC(2,PI/6) -> 1.732050808 1
        MODE 6:REC(2,100/3) -> 1.732050808 1    POL(1,1) -> 1.414213562 45        POL(0,2) -> 2 90
        POL(0,0) -> 0 0                         MODE 5:POL(3,3) -> 4.242640687 0.7853981634
        MODE 6:POL(3,3) -> 4.242640687 50       X$="OLD":REC(2,0) -> 2 0
        POL(-1,1) -> 1.414213562-45
    )"; // POL folds the left half-plane onto the right one
    TestMachine t;
    for (const Case& row : arrow_cases(rows))
        EXPECT_EQ(printed(t, row.text, "X;Y"), row.outcome) << row.text;
}

TEST(RandomNumbers, ComeInTheGeneratorsOrder) {
    std::uint32_t seed = 1;
    for (const int expected : {41, 18467, 6334, 26500, 19169})
        EXPECT_EQ(next_random(seed), expected);
    const std::pair<std::uint32_t, double> drawn_after[] = {{1, 41 / 32767.0}, {20057, 0}, {30091, 1}};
    for (const auto& [before, drawn] : drawn_after) {
        TestMachine t;
        t.start("A=RAN#");
        EXPECT_EQ(t.m.random_seed, 0U) << "a load seeds with the host's milliseconds";
        t.m.random_seed = before;
        t.run_through();
        EXPECT_EQ(cell(t, 'A').number, drawn) << before;
    }
}

TEST(StringFunctions, LenMidAndVal) {
    expect_printed("$=\"ABCDEF\":A=5:B$=\"XY\"", R"(
        LEN($) -> 6         LEN("") -> 0            LEN("a\pib") -> 3        LEN(B$+"1234567890"+B$)*2 -> 28
        LEN(Z$) -> 0        LEN(A$) -> 0            LEN(1/0) -> ERR3 SYSTEM 5
        MID(2,3) -> BCD     MID$(2,3) -> BCD        MID(3) -> CDEF           MID(6) -> F       MID(7)+"!" -> !
        MID(0)+"!" -> !     MID(5,3) -> EF          MID(2,0)+"!" -> !        MID(2,-1) -> BCDEF
        MID(2,-2)+"!" -> !  MID(2.9,1.9) -> B       MID(1.9999999,1)+MID(4,1) -> BD
        LEN(MID(2,3)) -> 3  MID(1/0) -> ERR3 SYSTEM 5
    )");
    expect_printed("A=5:B$=\"-3\":C$=\"\":D$=\"9999999\"", R"(
        VAL("-12.5") -> -12.5  VAL("+7")*2 -> 14  VAL(".5") -> 0.5  VAL("5.") -> 5  VAL(B$) -> -3  VAL("1"+"2") -> 12
        VAL(C$) -> 0           VAL(Z$) -> 0       VAL("+") -> 0     VAL("-") -> 0   VAL(".") -> 0
        VAL(D$+D$) -> 1.0000000\ex14
    )");
}

TEST(StringFunctions, StrHexAndDms) {
    expect_printed("A$=\"X\"", R"(
        STR$(1/3) -> 0.3333333333  STR$(-1.5) -> -1.5  STR$(12)+"!" -> 12!  STR$(1EX10) -> 1\ex10
        LEN(STR$(1EX10)) -> 4      STR$(0) -> 0        STR$(2 -> 2          STR$(1/0) -> ERR3 SYSTEM 5
        HEX$(255) -> FF  HEX$(-1) -> FFFFFFFF     HEX$(0) -> 0  HEX$(1EX10) -> 540BE400     HEX$(15.9999999) -> F
        HEX$(-0.5) -> 0  HEX$(&HabC)+"h" -> ABCh  HEX$(10 -> A  HEX$(1/0) -> ERR3 SYSTEM 5
        LEN(DMS$(12.51)) -> 12              DMS$(12.51) -> 12\dg 30' 36.0    DMS$(1.5) -> 1\dg 30' 0.0
        DMS$(0.001) -> 0\dg 0' 3.6          DMS$(-2.5) -> -2\dg -30' 0.0     DMS$(-2.5125) -> -2\dg -30' -45.0
        DMS$(0.999999) -> 0\dg 59' 60.0     DMS$(0.00000049) -> 0\dg 0' 0.0  DMS$(1234567.5) -> 1.23457e+06\dg 30' 0.0
        DMS$(-1000000) -> -1e+06\dg 0' 0.0  DMS$(1/0) -> ERR3 SYSTEM 5
    )");
    expect_printed("SET F 2", "STR$(2) -> 2.00  STR$(0.125) -> 0.13  STR$(-0.001) -> -0.00");
    expect_printed("SET E 3", "STR$(-0.000123) -> -1.23\\em04");
    expect_printed("SET F 99:B=LEN(STR$(-1EX99)):SET N:SET E 99:C=LEN(STR$(1/3)):SET N", "B -> 127  C -> 103");
}

TEST(StringFunctions, KeyReadsWhatIsPending) {
    const std::pair<const char*, const char*> rows[] = {
        {"A", "AA<"}, {"IF ", "IF IF <"}, {"\x87", "\\pi\\pi<"}, {" ", "  <"},
        {"", "<"},    {"\x06", "<"},      {"\x1F", "<"},         {"\x0B", "<"},
    };
    TestMachine t;
    for (const auto& [key, shown] : rows) {
        t.start("PRINT KEY$;KEY;\"<\"");
        t.m.key_string = key;
        t.wait();
        EXPECT_EQ(t.display(), shown);
    }
    t.start("A$=KEY$:B=LEN(A$)");
    t.m.key_string = "\x0A";
    t.run_through();
    EXPECT_EQ(cell(t, 'B').number, 1) << "the paste key's code is let through";
}

TEST(StringFunctions, KeyReadsAHeldKeyUntilItIsReleased) {
    TestMachine t;
    t.start("$=$+KEY$\nGOTO 10");
    t.tick(4);
    KeyEvent key;
    key.key = 'X';
    push_key_event(t.simulator->keys, key);
    t.tick(6);
    key.kind = KeyEvent::Kind::UP;
    push_key_event(t.simulator->keys, key);
    t.tick(10);
    EXPECT_EQ(t.m.variables[DOLLAR_CELL].text.view(), "XXXX") << "in three of six ticks, and as it comes up";
}

TEST(Csr, MovesTheColumn) {
    const std::pair<const char*, const char*> rows[] = {
        {"5;\"A\"", "     A"},           {"0;\"A\"", "A"},       {"11;\"A\"", "           A"},
        {"3.9;\"A\"", "   A"},           {"-0.9;\"A\"", "A"},    {"0;\"AB\";CSR 1+3;\"C\"", "AB  C"},
        {"0;\"ABC\";CSR 1;\"X\"", "AX"}, {"2;CSR 4;7", "     7"}};
    for (const auto& [list, shown] : rows)
        EXPECT_EQ(shown_by("PRINT CSR " + std::string(list)), shown) << list;
}

} // namespace
} // namespace quillon::testing
