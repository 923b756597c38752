// SPDX-License-Identifier: MIT
// The saved variable memory: a file laid out by hand, every kind of damage (saved_values.txt), any bytes.
#include "shell/saved_values.h"

#include "core/machine.h"
#include "core/variables.h"
#include "tests/support/cases_file.h"

#include <gtest/gtest.h>

#include <memory>
#include <random>
#include <sstream>
#include <vector>

namespace quillon::testing {
namespace {

using Bytes = std::vector<std::uint8_t>;

constexpr std::size_t RECORD = 52;

Bytes image_of(const Machine& m) {
    const ValuesImage image = values_image(m);
    return {image.begin(), image.end()};
}

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
    const auto m = std::make_unique<Machine>();
    store_number(m->variables[0], -2.5);
    store_string(m->variables[1], "HI");
    store_number(m->variables[25], 1e99);
    store_number(m->variables[26], 3);
    store_string(m->variables[222], std::string(31, '$'));
    EXPECT_EQ(image_of(*m), laid_out_by_hand());
}

/// Reads the file laid out by hand with some bytes of it changed.
std::string outcome_of(const FileCase& row) {
    std::istringstream change(row.input);
    Bytes bytes = laid_out_by_hand(), unassigned = bytes;
    std::size_t offset = 0;
    change >> offset;
    change.ignore(1);
    for (unsigned byte = 0; change >> std::hex >> byte; ++offset)
        bytes[offset] = static_cast<std::uint8_t>(byte);
    put(unassigned, RECORD, Bytes(RECORD, 0));
    put(unassigned, RECORD, {'B', 0, 0, 0, 0xFF, 0xFF, 0xFF, 0xFF});
    const auto m = std::make_unique<Machine>();
    const bool understood = read_values_image(*m, bytes);
    const std::string read = image_of(*m) == laid_out_by_hand() ? "set right"
                             : image_of(*m) == unassigned       ? "B unassigned"
                                                                : "something else";
    return read + (understood ? "" : ", kept aside");
}

TEST(SavedValues, OdditiesAreSetRightAndDamagedRecordsWereNeverAssigned) {
    expect_cases("shell/saved_values.txt", outcome_of);
}

TEST(SavedValues, TakesWhatAShortFileCovers) {
    const Bytes whole = laid_out_by_hand();
    const auto m = std::make_unique<Machine>();
    const std::pair<std::size_t, std::size_t> ends[] = {{0, 52}, {1, 104}, {25, 1352}, {26, 1404}, {222, 11596}};
    for (std::size_t size = 0; size < whole.size(); ++size) {
        if ((size + 2) % RECORD >= 4 && size <= 11590) // not near an end
            continue;
        const Bytes bytes(whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(size));
        store_string(m->variables[3], "LEFTOVER");
        EXPECT_EQ(read_values_image(*m, bytes), size % RECORD == 0 || size >= 11596) << size;
        EXPECT_EQ(m->variables[3].kind, CELL_UNASSIGNED);
        for (const auto& [cell, end] : ends)
            EXPECT_EQ((m->variables[cell].kind != CELL_UNASSIGNED), size >= end) << size;
    }
}

TEST(SavedValues, AnyBytesGiveValuesThatCanBeKept) {
    std::mt19937 random(3);
    const Bytes good = laid_out_by_hand();
    const auto m = std::make_unique<Machine>();
    for (int round = 0; round < 10000; ++round) {
        Bytes bytes = good;
        bytes.resize(random() % 4 == 0 ? random() % 12000 : good.size());
        const bool all = random() % 4 == 0;
        for (std::size_t i = all ? 0 : random() % 300; i < bytes.size(); i += all ? 1 : random() % 300 + 1)
            bytes[i] = static_cast<std::uint8_t>(random() % 3 == 0 ? random() % 3 : random());
        read_values_image(*m, bytes);
        const Bytes image = image_of(*m);
        ASSERT_TRUE(read_values_image(*m, image) && image_of(*m) == image) << round << ": as they were written";
    }
}

} // namespace
} // namespace quillon::testing
