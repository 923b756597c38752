// SPDX-License-Identifier: MIT
// GLZ0: exact streams, refusals, round trips, steps, and ten thousand damaged streams.
#include "display/glz.h"

#include "display/resources.h"
#include "tests/support/cases_file.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <optional>
#include <random>
#include <string>
#include <string_view>
#include <utility>

namespace quillon {
namespace {

using Bytes = std::vector<std::uint8_t>;

Bytes encode_all(const Bytes& data) {
    GlzEncoder encoder = glz_encode_begin(data);
    while (glz_encode_step(encoder) == GlzState::WORKING) {
    }
    return encoder.stream;
}

/// The data of a stream that is known to hold `size` bytes; nothing when it is refused. The sanitizer watches its ends.
std::optional<Bytes> decode_all(const Bytes& stream, std::size_t size) {
    Bytes data(size);
    GlzDecoder decoder = glz_decode_begin(stream, data);
    while (glz_decode_step(decoder) == GlzState::WORKING) {
    }
    EXPECT_LE(decoder.consumed, stream.size());
    EXPECT_LE(decoder.produced, size);
    if (decoder.state != GlzState::FINISHED)
        return std::nullopt;
    return data;
}

/// Hexadecimal digits; blanks between them are for the reader.
Bytes from_hex(std::string text) {
    std::erase(text, ' ');
    Bytes bytes;
    for (std::size_t at = 0; at < text.size(); at += 2)
        bytes.push_back(static_cast<std::uint8_t>(std::stoi(text.substr(at, 2), nullptr, 16)));
    return bytes;
}

Bytes from_text(std::string_view text) { return {text.begin(), text.end()}; }

Bytes random_bytes(std::mt19937& random, std::size_t size, int alphabet) {
    std::uniform_int_distribution<int> letter(0, alphabet - 1);
    Bytes bytes(size);
    for (std::uint8_t& byte : bytes)
        byte = static_cast<std::uint8_t>(letter(random));
    return bytes;
}

/// Runs of random lengths and earlier stretches repeated: what the matches are made for.
Bytes repetitive_bytes(std::mt19937& random, std::size_t size) {
    Bytes bytes = random_bytes(random, 16, 256);
    while (bytes.size() < size) {
        const std::size_t length = random() % 6000;
        const std::size_t distance = 1 + random() % std::min<std::size_t>(bytes.size(), 1500);
        for (std::size_t i = 0; i < length; ++i)
            bytes.push_back(bytes[bytes.size() - distance]);
        bytes.push_back(static_cast<std::uint8_t>(random()));
    }
    bytes.resize(size);
    return bytes;
}

Bytes resource_bytes(int id) { return {image_resource(id).begin(), image_resource(id).end()}; }

void set_u32(Bytes& bytes, std::size_t offset, std::uint32_t number) {
    for (std::size_t i = 0; i < 4; ++i)
        bytes[offset + i] = static_cast<std::uint8_t>(number >> (8 * i));
}

std::string encoded(const testing::FileCase& row) {
    const Bytes stream = encode_all(from_text(row.input.substr(1, row.input.size() - 2)));
    return stream == from_hex(row.expected) ? row.expected : ::testing::PrintToString(stream);
}

std::string decoded(const testing::FileCase& row) {
    const std::size_t colon = row.input.find(':');
    const auto data = decode_all(from_hex(row.input.substr(colon + 1)), std::stoul(row.input));
    return data ? '"' + std::string(data->begin(), data->end()) + '"' : "refused";
}

TEST(Glz, WritesAndReadsByTheLetter) {
    testing::expect_cases("display/glz.txt", {{"encodes", encoded}, {"decodes", decoded}});
}

TEST(GlzEncoder, SearchesBack1024Bytes) {
    // Sixteen-bit numbers counted upwards: no four bytes of them occur twice.
    Bytes filler;
    for (int i = 0; i < 600; ++i) {
        filler.push_back(static_cast<std::uint8_t>(0x80 + i / 256));
        filler.push_back(static_cast<std::uint8_t>(i % 256));
    }
    for (const std::size_t distance : {std::size_t{1024}, std::size_t{1025}}) {
        Bytes data = from_text("wxyz");
        data.insert(data.end(), filler.begin(), filler.begin() + static_cast<std::ptrdiff_t>(distance - 4));
        for (const char c : std::string_view("wxyz"))
            data.push_back(static_cast<std::uint8_t>(c));
        const Bytes stream = encode_all(data);
        const Bytes tail(stream.end() - 8, stream.end());
        EXPECT_EQ(tail, from_hex(distance == 1024 ? "4100 0040 00000000" : "7778797A 00000000")) << distance;
    }
}

TEST(GlzDecoder, TakesSixteenTokensPerStep) {
    Bytes stream;
    for (int i = 0; i < 40; ++i)
        stream.insert(stream.end(), {0x10, 0x00, static_cast<std::uint8_t>(i)});
    Bytes data(40);
    GlzDecoder decoder = glz_decode_begin(stream, data);
    for (const std::size_t produced : {16U, 32U, 40U, 40U}) { // the last is a step after the end
        EXPECT_EQ(glz_decode_step(decoder), produced < 40 ? GlzState::WORKING : GlzState::FINISHED);
        EXPECT_EQ(decoder.produced, produced);
    }
}

TEST(GlzEncoder, EmitsSixteenGroupsPerStep) {
    // "0abcd1abcd2abcd...": each group is one byte and the match behind it.
    Bytes data = from_text("abcd");
    for (std::uint8_t i = 0; i < 40; ++i)
        data.insert(data.end(), {static_cast<std::uint8_t>(0x80 + i), 'a', 'b', 'c', 'd'});
    const std::size_t size = encode_all(data).size();
    GlzEncoder encoder = glz_encode_begin(data);
    for (const std::size_t groups : {16U, 32U, 40U, 40U}) { // the last is a step after the end
        EXPECT_EQ(glz_encode_step(encoder), groups < 40 ? GlzState::WORKING : GlzState::FINISHED);
        EXPECT_EQ(encoder.position, 4U + groups * 5);
    }
    EXPECT_EQ(encoder.stream.size(), size);
}

TEST(Glz, GivesBackWhatItEncoded) {
    std::mt19937 random(740);
    std::vector<Bytes> inputs;
    for (std::size_t size = 0; size < 40; ++size)
        inputs.push_back(random_bytes(random, size, 2));
    for (const int alphabet : {2, 4, 40, 256})
        for (const std::size_t size : {1000U, 4095U, 4099U, 4100U, 20'000U})
            inputs.push_back(random_bytes(random, size, alphabet));
    for (const std::size_t size : {5000U, 50'000U, 300'000U})
        inputs.push_back(repetitive_bytes(random, size));
    inputs.push_back(Bytes(10'000, 0));
    for (const int id : {ABOUT_IMAGE, SKIN_IMAGE, SOFT_KEYBOARD_IMAGE})
        inputs.push_back(write_bitmap(decode_image_resource(image_resource(id)).value()));
    for (const Bytes& data : inputs) {
        const Bytes stream = encode_all(data);
        EXPECT_TRUE(decode_all(stream, data.size()) == data) << data.size() << " bytes";
        if (data.empty())
            continue;
        const Bytes without_end(stream.begin(), stream.end() - 4);
        EXPECT_TRUE(decode_all(without_end, data.size()) == data) << data.size() << " bytes, no end mark";
    }
}

TEST(GlzImageResource, RefusesAWrongHeader) {
    const Bytes good = resource_bytes(ABOUT_IMAGE);
    ASSERT_TRUE(decode_image_resource(good));
    const auto stream_size = static_cast<std::uint32_t>(good.size() - 16);
    // another magic; the data's size; where the pixels lie; the stream's size
    const std::pair<std::size_t, std::vector<std::uint32_t>> wrong[] = {
        {0, {0x315A4C47}},
        {4, {4929, 4927, 0, 0xFFFFFFFF}},
        {8, {13, 53, 1079, 0xFFFFFFFF}},
        {12, {stream_size + 1, stream_size - 1, 0xFFFFFFFF}},
    };
    for (const auto& [offset, numbers] : wrong) {
        for (const std::uint32_t number : numbers) {
            Bytes damaged = good;
            set_u32(damaged, offset, number);
            EXPECT_FALSE(decode_image_resource(damaged)) << number << " at " << offset;
        }
    }
    for (std::size_t size = 0; size <= 16; ++size)
        EXPECT_FALSE(decode_image_resource(Bytes(good.begin(), good.begin() + static_cast<std::ptrdiff_t>(size))));
}

/// Some bytes changed, and now and then the end cut off.
Bytes damage(std::mt19937& random, Bytes bytes) {
    const std::size_t changes = random() % 8;
    for (std::size_t i = 0; i < changes; ++i)
        bytes[random() % bytes.size()] = static_cast<std::uint8_t>(random());
    if (changes == 0 || random() % 4 == 0)
        bytes.resize(random() % bytes.size());
    return bytes;
}

TEST(GlzDecoder, SurvivesTenThousandDamagedStreams) {
    std::mt19937 random(129);
    const Bytes skin = resource_bytes(SKIN_IMAGE);
    const Bytes computer = write_bitmap(decode_image_resource(image_resource(ABOUT_IMAGE)).value());
    const Bytes originals[] = {computer, repetitive_bytes(random, 3000), random_bytes(random, 300, 4)};
    Bytes streams[3];
    std::transform(std::begin(originals), std::end(originals), std::begin(streams), encode_all);
    int refused = 0;
    for (int i = 0; i < 9000; ++i) {
        const std::size_t which = random() % 3;
        refused += decode_all(damage(random, streams[which]), originals[which].size()) ? 0 : 1;
    }
    for (int i = 0; i < 900; ++i)
        refused += decode_all(random_bytes(random, random() % 200, 256), random() % 5000) ? 0 : 1;
    for (int i = 0; i < 100; ++i) {
        const auto image = decode_image_resource(damage(random, skin));
        EXPECT_TRUE(!image || image->pixels.size() == std::size_t(image->width) * std::size_t(image->height));
        refused += image ? 0 : 1;
    }
    EXPECT_GT(refused, 5000);
    EXPECT_LT(refused, 10'000) << "a changed literal byte leaves a stream whole";
}

} // namespace
} // namespace quillon
