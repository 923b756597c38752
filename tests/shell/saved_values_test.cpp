// The saved variable memory: a file laid out by hand, every kind of damage, any bytes.
#include "shell/saved_values.h"

#include "core/machine.h"
#include "core/variables.h"
#include "tests/shell/failing_calls.h"
#include "tests/support/temporary_file.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <memory>
#include <random>
#include <vector>

#include <sys/stat.h>

namespace quillon {
namespace {

using testing::get_file;
using testing::put_file;
using testing::TempFolder;
using Bytes = std::vector<std::uint8_t>;

constexpr std::size_t RECORD = 52;

std::unique_ptr<Machine> make_machine() { return std::make_unique<Machine>(); }

Bytes image_of(const Machine& m) {
    const ValuesImage image = values_image(m);
    return {image.begin(), image.end()};
}

std::string text_of(const Bytes& bytes) { return {bytes.begin(), bytes.end()}; }

void put(Bytes& bytes, std::size_t offset, const Bytes& part) {
    std::copy(part.begin(), part.end(), bytes.begin() + static_cast<std::ptrdiff_t>(offset));
}

/// A = -2.5, B$ = "HI", Z = 1E99, the first extended cell 3, $ = 31 characters.
Bytes laid_out_by_hand() {
    Bytes bytes(11700, 0);
    for (std::size_t i = 0; i < 223; ++i) {
        const std::string name = i < 26 ? std::string(1, static_cast<char>('A' + i)) : std::to_string(i - 25);
        put(bytes, i * RECORD, Bytes(name.begin(), name.end()));
        put(bytes, i * RECORD + 4, {0xFF, 0xFF, 0xFF, 0xFF});
    }
    put(bytes, 0, {'A', 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0x04, 0xC0});
    put(bytes, 52, {'B', 0, 0, 0, 1, 0, 0, 0, 1, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 'H', 'I'});
    put(bytes, 1300, {'Z', 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0x2E, 0x9F, 0x87, 0xA2, 0xAE, 0x42, 0x7D, 0x54});
    put(bytes, 1352, {'1', 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0x08, 0x40});
    put(bytes, 11544, {'1', '9', '7', 0, 1, 0, 0, 0, 1, 0, 0, 0});
    put(bytes, 11564, Bytes(31, '$'));
    return bytes;
}

TEST(SavedValues, LieAsTheyShould) {
    const auto m = make_machine();
    EXPECT_TRUE(read_values_image(*m, laid_out_by_hand()));
    EXPECT_EQ(m->variables[0].number, -2.5);
    EXPECT_EQ(m->variables[1].text.view(), "HI");
    EXPECT_EQ(m->variables[1].string_flag, 1);
    EXPECT_EQ(m->variables[2].kind, -1);
    EXPECT_EQ(m->variables[25].number, 1e99);
    EXPECT_EQ(m->variables[26].number, 3);
    EXPECT_EQ(m->variables[222].text.view(), std::string(31, '$'));

    const auto other = make_machine();
    store_number(other->variables[0], -2.5);
    store_string(other->variables[1], "HI");
    store_number(other->variables[25], 1e99);
    store_number(other->variables[26], 3);
    store_string(other->variables[222], std::string(31, '$'));
    EXPECT_EQ(image_of(*other), laid_out_by_hand());
}

TEST(SavedValues, ComeBackAsTheyWere) {
    const auto m = make_machine();
    std::mt19937 random(1);
    for (Variable& cell : m->variables) {
        std::string text(random() % 32, '\0');
        for (char& byte : text)
            byte = static_cast<char>(1 + random() % 255);
        if (random() % 3 == 0)
            store_string(cell, text);
        else if (random() % 2 == 0)
            store_number(cell, std::ldexp(static_cast<double>(random()), static_cast<int>(random() % 2000) - 1070));
    }
    const Bytes image = image_of(*m);
    const auto back = make_machine();
    store_string(back->variables[5], "LEFTOVER");
    EXPECT_TRUE(read_values_image(*back, image));
    EXPECT_EQ(image_of(*back), image);
}

TEST(SavedValues, OdditiesAreSetRightAndDamagedRecordsWereNeverAssigned) {
    constexpr std::size_t B = RECORD; // its record holds "HI"
    enum Outcome { SET_RIGHT, UNASSIGNED, NOT_UNDERSTOOD };
    struct Row {
        const char* what;
        std::size_t offset;
        Bytes bytes;
        Outcome outcome;
    };
    const Row rows[] = {
        {"another cell's name", B, {'C'}, NOT_UNDERSTOOD},
        {"a longer name", B + 1, {'X'}, NOT_UNDERSTOOD},
        {"a name that does not end", B, {'B', 'B', 'B', 'B'}, NOT_UNDERSTOOD},
        {"type 2", B + 4, {2}, NOT_UNDERSTOOD},
        {"type -2", B + 4, {0xFE, 0xFF, 0xFF, 0xFF}, NOT_UNDERSTOOD},
        {"type 256", B + 4, {0, 1}, NOT_UNDERSTOOD},
        {"type 2^31", B + 4, {0, 0, 0, 0x80}, NOT_UNDERSTOOD},
        {"a text that does not end", B + 20, Bytes(32, 'x'), NOT_UNDERSTOOD},
        {"no number", B + 18, {0xF8, 0x7F}, UNASSIGNED},
        {"a signalling one", B + 12, {1, 0, 0, 0, 0, 0, 0xF0, 0xFF}, UNASSIGNED},
        {"infinity", B + 18, {0xF0, 0x7F}, UNASSIGNED},
        {"no type", B + 4, {0xFF, 0xFF, 0xFF, 0xFF}, UNASSIGNED},
        {"no name, as in a file that was short once", 0, {0}, SET_RIGHT},
        {"a string that is not flagged", B + 8, {0}, SET_RIGHT},
        {"a flag that is none", B + 8, {7, 7, 7, 7}, SET_RIGHT},
        {"a number flagged as string", 8, {1}, SET_RIGHT},
        {"a number beside a string", B + 12, {1, 2, 3}, SET_RIGHT},
        {"a text beside a number", 20, {'X'}, SET_RIGHT},
        {"bytes behind a text", B + 23, {'X'}, SET_RIGHT},
        {"bytes behind a name", 2, {'X'}, SET_RIGHT},
        {"a flag of no type", 2 * RECORD + 8, {1}, SET_RIGHT},
    };
    for (const Row& row : rows) {
        Bytes bytes = laid_out_by_hand();
        put(bytes, row.offset, row.bytes);
        const auto m = make_machine();
        EXPECT_EQ(read_values_image(*m, bytes), row.outcome != NOT_UNDERSTOOD) << row.what;
        Bytes expected = laid_out_by_hand();
        if (row.outcome != SET_RIGHT) {
            put(expected, B, Bytes(RECORD, 0));
            put(expected, B, {'B', 0, 0, 0, 0xFF, 0xFF, 0xFF, 0xFF});
        }
        EXPECT_EQ(image_of(*m), expected) << row.what;
    }
}

TEST(SavedValues, TakesWhatAShortFileCovers) {
    const Bytes whole = laid_out_by_hand();
    const auto m = make_machine();
    const auto size_is_near_an_end = [](std::size_t size) { return (size + 2) % RECORD < 4 || size > 11590; };
    for (std::size_t size = 0; size < whole.size(); ++size) {
        if (!size_is_near_an_end(size))
            continue;
        const Bytes bytes(whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(size));
        store_string(m->variables[3], "LEFTOVER");
        EXPECT_EQ(read_values_image(*m, bytes), size % RECORD == 0 || size >= 11596) << size;
        EXPECT_EQ(m->variables[0].kind, size >= 52 ? 0 : -1);
        EXPECT_EQ(m->variables[1].kind, size >= 104 ? 1 : -1) << size;
        EXPECT_EQ(m->variables[3].kind, -1);
        EXPECT_EQ(m->variables[26].kind, size >= 1404 ? 0 : -1) << size;
        EXPECT_EQ(m->variables[222].kind, size >= 11596 ? 1 : -1) << size;
        EXPECT_EQ(m->variables[222].name.view(), "197");
    }
}

TEST(SavedValues, NoBytesGiveAValueOutOfRange) {
    std::mt19937 random(3);
    const Bytes good = laid_out_by_hand();
    const auto m = make_machine();
    for (int round = 0; round < 10000; ++round) {
        Bytes bytes = good;
        bytes.resize(random() % 4 == 0 ? random() % 12000 : good.size());
        const bool all = random() % 4 == 0;
        for (std::size_t i = all ? 0 : random() % 300; i < bytes.size(); i += all ? 1 : random() % 300 + 1)
            bytes[i] = static_cast<std::uint8_t>(random() % 3 == 0 ? random() % 3 : random());
        read_values_image(*m, bytes);
        const auto wrong = std::find_if(m->variables.begin(), m->variables.end(), [](const Variable& cell) {
            const bool is_clean = cell.kind == 1 ? cell.number == 0 : cell.text.empty();
            return cell.kind < -1 || cell.kind > 1 || cell.string_flag != (cell.kind == 1 ? 1 : 0) || !is_clean ||
                   !std::isfinite(cell.number) || (cell.kind == -1 && cell.number != 0);
        });
        ASSERT_EQ(wrong, m->variables.end()) << round;
        ASSERT_EQ(m->variables[40].name.view(), "15");
    }
}

TEST(SavedValues, LiveInAFile) {
    const TempFolder folder;
    const std::string path = folder / "QZ740.val";
    const auto m = make_machine();
    store_number(m->variables[0], std::numeric_limits<double>::infinity());
    store_string(m->variables[1], "HI");
    EXPECT_TRUE(write_saved_values(path, *m));
    EXPECT_EQ(get_file(path).size(), 11700U);
    const auto back = make_machine();
    store_number(back->variables[7], 7);
    read_saved_values(path, *back);
    EXPECT_EQ(back->variables[0].kind, -1);
    EXPECT_EQ(back->variables[1].text.view(), "HI");
    EXPECT_EQ(back->variables[7].kind, -1);
    for (const std::size_t size : {std::size_t{0}, 2 * RECORD}) {
        EXPECT_TRUE(write_saved_values(path, *back));
        std::filesystem::resize_file(path, size);
        EXPECT_TRUE(write_saved_values(path, *back));
    }
    EXPECT_EQ(folder.names().size(), 1U) << "nothing was lost";
    read_saved_values(folder / "none", *back);
    EXPECT_EQ(back->variables[1].kind, -1);
}

TEST(SavedValues, KeepsAsideWhatItDoesNotUnderstand) {
    const TempFolder folder;
    const std::string path = folder / "QZ740.val";
    const auto m = make_machine();
    Bytes too_long = laid_out_by_hand();
    too_long.push_back(0);
    Bytes with_more = laid_out_by_hand();
    with_more.back() = 1;
    const std::string foreign[] = {text_of(too_long), text_of(with_more), "A shopping list\n"};
    std::string kept = path + ".bad";
    int number = 0;
    for (const std::string& bytes : foreign) {
        put_file(path, bytes);
        read_saved_values(path, *m);
        EXPECT_TRUE(write_saved_values(path, *m));
        EXPECT_EQ(get_file(path), text_of(image_of(*m)));
        EXPECT_EQ(get_file(kept), bytes);
        kept = path + ".bad" + std::to_string(++number);
    }
    EXPECT_TRUE(write_saved_values(path, *m));
    EXPECT_EQ(folder.names().size(), 4U);
}

TEST(SavedValues, KeepsAsideWhatItCannotRead) {
    const TempFolder folder;
    ::chmod(folder.path.c_str(), 0777);
    const std::string path = folder / "QZ740.val";
    const auto m = make_machine();
    EXPECT_TRUE(testing::run_as_a_user([&] {
        put_file(path, text_of(laid_out_by_hand()));
        ::chmod(path.c_str(), 0222);
        return write_saved_values(path, *m);
    }));
    ::chmod((path + ".bad").c_str(), 0600);
    EXPECT_EQ(get_file(path + ".bad"), text_of(laid_out_by_hand()));
}

} // namespace
} // namespace quillon
