// Every error of the statements and functions: its code, its text in the catalogue and its detail; and the catalogues
// themselves, which have every text that is asked for and no other. (Jumps, loops, conditions and PRINT: in their own
// tests. Listings and expressions: in core.)
#include "core/charset.h"
#include "shell/catalogue.h"
#include "shell/settings.h"
#include "tests/support/evaluation.h"
#include "tests/support/keyboard.h"
#include "tests/support/table.h"
#include "tests/support/temporary_file.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <map>
#include <set>
#include <sstream>

namespace quillon::testing {
namespace {

using Numbers = std::map<std::string, std::set<int>>;

/// A program and its failure. Where the outcome is "ok" the program goes on, but its detail tells of the fault.
constexpr const char* STATEMENT_ERRORS = R"(
    INPUT 5 -> ERR2 INPUT 0 : 0x0001 (TOKEN_ID)  INPUT VAC -> ERR2 INPUT 0 : 0x0213 (TOKEN_ID)
    INPUT FOO -> ERR2 INPUT 0 : 0xfffffff5 (TOKEN_ID)  INPUT A;B -> ERR2 INPUT 0 : 0x003b (TOKEN_ID)
    INPUT "N",A+1 -> ERR2 INPUT 0 : 0x002b (TOKEN_ID)  INPUT A(500) -> ERR2 INPUT 0 : 0xfffffff1 (TOKEN_ID)
    INPUT "N";A -> ERR2 INPUT 1  INPUT "N",5 -> ERR2 INPUT 1  INPUT "N" A -> ERR2 INPUT 1  INPUT "N" -> ERR2 INPUT 1
    MODE -> ERR2 MODE 0  MODE "A" -> ERR2 MODE 1  MODE 3 -> ERR2 MODE 2  MODE 9 -> ERR2 MODE 2  MODE 8.1 -> ERR2 MODE 2
    SET E -> ERR2 SET 0  SET F A -> ERR2 SET 0  SET G-1 -> ERR2 SET 0  SET E 3 4 -> ERR2 SET 1:0x0001 (TOKEN_ID)
    SET F123 -> ERR2 SET 1:0x0001 (TOKEN_ID)  SET X -> ERR2 SET 1:0x0212 (TOKEN_ID)  SET G19 -> ERR2 SET 2
    BEEP "A",1 -> ERR2 BEEP 0:0x002c (TOKEN_ID)  BEEP 2 -> ERR5 BEEP 1  BEEP -0.1 -> ERR5 BEEP 1
    BEEPS -> ERR2 BEEPS 0:0xffffffff (TOKEN_ID)  BEEPS "A",1,1 -> ERR2 BEEPS 0:0x002c (TOKEN_ID)
    BEEPS 4,A$,1 -> ERR2 BEEPS 0:0x002c (TOKEN_ID)  BEEPS 4,9,"A" -> ERR2 BEEPS 0:0xffffffff (TOKEN_ID)
    BEEPS 0,0,100 -> ERR5 BEEPS 1  BEEPS 9,0,100 -> ERR5 BEEPS 1  BEEPS 4 -> ERR5 BEEPS 2  BEEPS 4,9;100 -> ERR5 BEEPS 2
    BEEPS 4,12,100 -> ERR5 BEEPS 3  BEEPS 4,-1,100 -> ERR5 BEEPS 3
    READ -> ERR2 READ 0  READ ,A -> ERR2 READ 0  READ 5 -> ERR2 READ 1  READ "A" -> ERR2 READ 1
    READ FOO -> ERR2 SYSTEM 4:"foo"  READ A(500) -> ERR6 SYSTEM 40 =A(500)(MAX:222)
    READ A -> ERR4 READ 2  DATA X1 || READ A -> ERR2 READ 3 DATA:"X1"
    RESTORE -> ok RESTORE 0  RESTORE A$ -> ERR2 RESTORE 1  RESTORE "A" -> ERR2 RESTORE 2
    S$="X":RESTORE S -> ERR2 RESTORE 2  RESTORE 10 -> ERR4 RESTORE 3
    RUN A -> ERR2 RUN 0  RUN "A" -> ERR2 RUN 0  RUN 150 -> ERR2 RUN 1[150]
    GLOAD A -> ERR2 GLOAD 0  GLOAD 5 -> ERR2 GLOAD 1  GLOAD -> ERR2 GLOAD 1
)";

constexpr const char* FUNCTION_ERRORS = R"(
    A=SIN 1441 -> ERR3 SIN 2 [1441]  A=COS -1440.000001 -> ERR3 COS 2 [-1440]  A=TAN 12345678 -> ERR3 TAN 2 [1.23457e+07]
    MODE 5:A=SIN 8.1 -> ERR3 SIN 3 [8.1]  MODE 5:A=COS -8.000001 -> ERR3 COS 3 [-8]  MODE 5:A=TAN 9 -> ERR3 TAN 3 [9]
    MODE 6:A=SIN 1601 -> ERR3 SIN 4 [1601]  MODE 6:A=COS -1601 -> ERR3 COS 4 [-1601]
    MODE 6:A=TAN 1600.1 -> ERR3 TAN 4 [1600.1]  A=ASN 1.000001 -> ERR3 ASN 2 [1]  A=ASN -2 -> ERR3 ASN 2 [-2]
    A=ACS 1.5 -> ERR3 ACS 2 [1.5]  A=HYPSIN 231 -> ERR3 HYPSIN 2 [231]  A=HYPSIN -230.26 -> ERR3 HYPSIN 2 [-230.26]
    A=HYPCOS -231 -> ERR3 HYPCOS 2 [-231]  A=HYPASN(6EX99) -> ERR3 HYPASN 2 [6e+99]
    A=HYPASN(-6EX99) -> ERR3 HYPASN 2 [-6e+99]  A=HYPACS 0.999 -> ERR3 HYPACS 2 [0.999]
    A=HYPACS(6EX99) -> ERR3 HYPACS 2 [6e+99]  A=HYPATN 1.1 -> ERR3 HYPATN 2 [1.1]  A=HYPATN -2 -> ERR3 HYPATN 2 [-2]
    A=SQR -1 -> ERR3 SQRT 2 [-1]  A=EXP 230.25851 -> ERR3 EXP 2 [230.259]  A=EXP -231 -> ERR3 EXP 2 [-231]
    A=LN 0 -> ERR3 LN 2 [0]  A=LOG -5 -> ERR3 LOG 2 [-5]
    A=RND 5 -> ERR2 RND 0  A=RND(A$,1) -> ERR2 RND 1  A=RND("A",1) -> ERR2 RND 2  A=RND(1) -> ERR2 RND 3
    A=RND(1,A$) -> ERR2 RND 4  A=RND(1,"A") -> ERR2 RND 5  A=RND(1,2 -> ERR2 RND 6  A=RND(1,2,3) -> ERR2 RND 6
    A=NPR 5 -> ERR2 NPR 0  A=NPR(A$,1) -> ERR2 NPR 1  A=NPR(1,A$) -> ERR2 NPR 1  A=NPR("A",1) -> ERR2 NPR 2
    S$="X":A=NPR(5,S) -> ERR2 NPR 2  A=NPR(5) -> ERR2 NPR 3  A=NPR(2,5) -> ERR6 NPR 4  A=NPR(-1,0) -> ERR6 NPR 4
    A=NPR(5,-0.1) -> ERR6 NPR 4
    A=NCR 5 -> ERR2 NCR 0  A=NCR(A$,1) -> ERR2 NCR 1  A=NCR(5,"A") -> ERR2 NCR 2  A=NCR(5;2) -> ERR2 NCR 3
    A=NCR(2,5) -> ERR6 NCR 4
    REC 1 -> ERR2 REC 0  REC(A$,1) -> ERR2 REC 1  REC(1,A$) -> ERR2 REC 1  REC(1,"A") -> ERR2 REC 2  REC(1) -> ERR2 REC 3
    POL 1 -> ERR2 POL 0  POL(A$,1) -> ERR2 POL 1  POL("A",1) -> ERR2 POL 2  POL(1) -> ERR2 POL 3
    A=DEG 5 -> ERR2 DEG 0  A=DEG( -> ERR2 DEG 1  A=DEG(A$) -> ERR2 DEG 2  A=DEG(1,A$) -> ERR2 DEG 2
    A=DEG("A") -> ERR2 DEG 3  S$="X":A=DEG(1,2,S) -> ERR2 DEG 3  A=DEG(60) -> ERR6 DEG 4  A=DEG(12,60) -> ERR6 DEG 4
    A=DEG(12,0,60) -> ERR6 DEG 4
    A=LEN A$ -> ERR2 LEN 0  A=LEN(A) -> ERR2 LEN 1  S$="X":A=LEN(S) -> ERR2 LEN 1  A=LEN(A*2) -> ERR2 LEN 1
    A=LEN(1) -> ERR2 LEN 2  A=LEN(A$ -> ERR2 LEN 3
    A$=MID 2 -> ERR2 MID 0  A$=MID( -> ERR2 MID 1  A$=MID$(A$) -> ERR2 MID 2  A$=MID("A") -> ERR2 MID 3
    A$=MID(-1) -> ERR5 MID 4 S=[-1]  A$=MID(1,A$) -> ERR2 MID 5  A$=MID(1,"A") -> ERR2 MID 6  A$=MID(1,2 -> ERR2 MID 7
    A$=MID(1,2,3) -> ERR2 MID 7  $="AB":A$=MID(0) -> ok MID 8|S=[0],$length=[2]
    $="AB":A$=MID(3) -> ok MID 8|S=[3],$length=[2]  $="AB":A$=MID(2,2) -> ok MID 9|S+E=[4],$length=[2]
    A=VAL 5 -> ERR2 VAL 0  A=VAL(A) -> ERR2 VAL 1  A=VAL(5) -> ERR2 VAL 2  A=VAL("1E5") -> ERR2 VAL 3"1E5"
    A=VAL("1.2.3") -> ERR2 VAL 3"1.2.3"  A=VAL(" 1") -> ERR2 VAL 3" 1"  A=VAL("--1") -> ERR2 VAL 3"--1"
    A=VAL("1\pi") -> ERR2 VAL 3"1\pi"  A=VAL(A$ -> ERR2 VAL 4
    A$=STR$ 5 -> ERR2 STR 0  A$=STR$(A$) -> ERR2 STR 1  A$=STR$("A") -> ERR2 STR 2
    A$=HEX$ 5 -> ERR2 HEX 0  A$=HEX$(A$) -> ERR2 HEX 1  A$=HEX$("A") -> ERR2 HEX 2
    A$=DMS$ 5 -> ERR2 DMS 0  A$=DMS$( -> ERR2 DMS 1  A$=DMS$(A$) -> ERR2 DMS 2  A$=DMS$("A") -> ERR2 DMS 3
    PRINT CSR -> ERR2 CSR 0  PRINT CSR A$;1 -> ERR2 CSR 1  PRINT CSR "A";1 -> ERR2 CSR 1
    PRINT CSR -1;1 -> ERR5 CSR 2 [-1]  PRINT CSR 12;1 -> ERR2 CSR 3 [12]  PRINT CSR 99.5;1 -> ERR2 CSR 3 [99]
)";

/// Functions of one factor: text 0 for no operand, 1 for a string, also where the cell holds none.
std::vector<Case> factor_errors() {
    std::vector<Case> rows;
    std::istringstream words(
        "SIN COS TAN ASN ACS ATN HYPSIN HYPCOS HYPTAN HYPASN HYPACS HYPATN SQR EXP LN LOG INT FRAC "
        "ABS SGN FACT EOX EOY CUR");
    for (std::string word; words >> word;) {
        const std::string error = "ERR2 " + (word == "SQR" ? "SQRT" : word);
        rows.push_back({"A=" + word, error + " 0"});
        for (const char* operand : {"\"A\"", " A$", "(A$+\"B\")"})
            rows.push_back({"A=" + word + operand, error + (word == "CUR" ? " 0" : " 1")});
    }
    return rows;
}

std::vector<Case> all_errors() {
    std::vector<Case> rows = factor_errors();
    for (const char* table : {STATEMENT_ERRORS, FUNCTION_ERRORS})
        for (const Case& row : arrow_cases(table))
            rows.push_back(row);
    return rows;
}

/// A detail without an error tells of a fault that the program has passed over.
std::string outcome_of_run(TestMachine& t) {
    if (t.m.error_code != ERROR_NONE)
        return failure_of(t.m);
    EXPECT_EQ(t.m.run_state, STATE_ENDED);
    std::string text = "ok " + t.detail_id() + t.detail();
    std::erase(text, '\r');
    std::replace(text.begin(), text.end(), '\n', '|');
    return text;
}

TEST(ErrorTables, AreReported) {
    TestMachine t;
    for (const Case& row : all_errors()) {
        t.start("MODE 4:VAC\n" + row.text);
        t.run_through();
        EXPECT_EQ(outcome_of_run(t), row.outcome) << row.text;
    }
    t.start("INPUT A");
    t.wait();
    enter(t, "3*");
    EXPECT_EQ(t.display() + " " + t.detail_id() + t.detail(), "ERR2 INPUT 2 \"\"");
    EXPECT_EQ(t.m.error_code, ERROR_INPUT);
}

/// Notes the numbers that stand in a text right behind `mark`.
void note_numbers(std::set<int>& numbers, const std::string& text, const std::string& mark) {
    for (std::size_t at = text.find(mark); at != std::string::npos; at = text.find(mark, at + 1)) {
        const std::size_t digit = text.find_first_not_of(' ', at + mark.size());
        if (digit != std::string::npos && is_digit(text[digit]))
            numbers.insert(std::stoi(text.substr(digit)));
    }
}

/// The texts of these sections that the sources name: {"GOTO", 5}, and the headings of the location block.
Numbers named_in_sources(const Numbers& sections) {
    Numbers numbers;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(QUILLON_SOURCES)) {
        const bool is_code = entry.path().extension() == ".cpp" || entry.path().extension() == ".h";
        const std::string text = is_code ? bytes_of(entry.path().string()) : "";
        note_numbers(numbers["DLG_ERRINFO"], text, "heading(m,");
        for (const auto& [section, texts] : sections)
            note_numbers(numbers[section], text, "\"" + section + "\",");
    }
    std::erase_if(numbers, [](const auto& section) { return section.second.empty(); });
    return numbers;
}

/// What is asked for: what the sources name, what the rows above have provoked, and what settings complain of.
Numbers asked(const Numbers& sections) {
    Numbers numbers = named_in_sources(sections);
    for (const Case& row : all_errors()) {
        std::istringstream words(row.outcome);
        std::string code;
        std::string section;
        int number = -1;
        words >> code >> section >> number;
        numbers[section].insert(number);
    }
    const LoadedSettings settings =
        parse_settings("[QZS]\nRUNPAGE=99\nTIMER=0\nZOOM=99\nINTEGER=99\nDECIMAL=99\nFIXED=99\nMODE=99\n");
    numbers["INI"].insert(settings.messages.begin(), settings.messages.end());
    return numbers;
}

Numbers numbers_of(const MessageCatalogue& catalogue) {
    Numbers numbers;
    for (const auto& [section, texts] : catalogue.sections)
        for (const auto& [number, text] : texts)
            numbers[section].insert(number);
    return numbers;
}

TEST(Catalogues, HaveWhatIsAskedForAndNothingElse) {
    const auto english = read_catalogue(QUILLON_RESOURCES "/message.en.ini");
    const auto japanese = read_catalogue(QUILLON_RESOURCES "/message.ja.ini");
    ASSERT_TRUE(english && japanese);
    Numbers texts = numbers_of(*english);
    EXPECT_EQ(texts, numbers_of(*japanese));
    for (const char* section : {"MENU", "TOOLTIP", "DLG_CONFIG", "DLG_TRACE", "DLG_TRACE2"})
        EXPECT_EQ(texts.erase(section), 1U) << section; // numbered by the windows' own tables
    texts["SYSTEM"].erase(9);                           // of the window's timer
    EXPECT_EQ(asked(texts), texts);
    for (const auto& [section, entries] : english->sections) {
        for (const auto& [number, text] : entries) {
            const std::string other = lookup_message(*japanese, section, number);
            const auto is_ascii = [](char c) { return static_cast<unsigned char>(c) < 0x80; };
            const bool may_be_equal = section == "DLG_CONFIG" || section == "DLG_TRACE";
            EXPECT_TRUE(std::all_of(text.begin(), text.end(), is_ascii)) << section << number;
            EXPECT_TRUE(may_be_equal || !std::all_of(other.begin(), other.end(), is_ascii)) << section << number;
            EXPECT_EQ(other.find("\xEF\xBF\xBD"), std::string::npos) << section << number << ": a broken character";
            EXPECT_LT(text.size(), 259U) << section << number;
        }
    }
}

} // namespace
} // namespace quillon::testing
