// GLZ0: exact streams, refusals, round trips, steps, and ten thousand damaged streams.
#include "display/glz.h"

#include "display/resources.h"
#include "tests/display/glz_streams.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <random>
#include <string>
#include <string_view>

namespace quillon {
namespace {

/// Hexadecimal digits; blanks between them are for the reader.
Bytes from_hex(std::string_view text) {
    Bytes bytes;
    std::string digits;
    for (const char c : text) {
        if (c == ' ')
            continue;
        digits += c;
        if (digits.size() == 2) {
            bytes.push_back(static_cast<std::uint8_t>(std::stoi(digits, nullptr, 16)));
            digits.clear();
        }
    }
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

Bytes resource_bytes(int id) {
    const auto resource = image_resource(id);
    return {resource.begin(), resource.end()};
}

void set_u32(Bytes& bytes, std::size_t offset, std::uint32_t number) {
    for (std::size_t i = 0; i < 4; ++i)
        bytes[offset + i] = static_cast<std::uint8_t>(number >> (8 * i));
}

TEST(GlzEncoder, ChoosesItsTokens) {
    struct Row {
        const char* what;
        std::string data;
        const char* stream;
    };
    const Row rows[] = {
        {"nothing", "", "00000000"},
        {"less than the first run", "ab", "2000 6162 00000000"},
        {"the first run alone", "aaaa", "4000 61616161 00000000"},
        {"a match that overlaps itself", std::string(100, 'a'), "4000 61616161 0106 1000 00000000"},
        {"a match to the end", "abcdabcdabcd", "4000 61626364 8100 4000 00000000"},
        {"three equal bytes are no match", "abcdXabc", "4000 61626364 4000 58616263 00000000"},
        {"the nearest of equals", "abcdXabcdYabcdZ",
         "4000 61626364 1000 58 4100 5000 1000 59 4100 5000 1000 5A 00000000"},
        {"a longer one farther away", "abcdeXabcdYabcdeZ",
         "4000 61626364 2000 6558 4100 6000 1000 59 5100 B000 1000 5A 00000000"},
    };
    for (const Row& row : rows)
        EXPECT_EQ(encode_all(from_text(row.data)), from_hex(row.stream)) << row.what;
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

TEST(GlzDecoder, DecodesByTheLetter) {
    struct Row {
        const char* what;
        const char* stream;
        std::string data;
    };
    const Row rows[] = {
        {"nothing", "0000", ""},
        {"distance 1, length 100", "1000 78 4106 1000 0000", std::string(101, 'x')},
        {"distance 3, length 7", "3000 616263 7100 3000 0000", "abcabcabca"},
        {"bits that mean nothing", "1E00 78 3F00 1F00 0000", "xxxx"},
        {"empty tokens", "0200 1000 78 0100 1000 0000", "x"},
        {"the end by the stream's length, after a run", "2000 6162", "ab"},
        {"the end by the stream's length, after a match", "1000 78 3100 1000", "xxxx"},
        {"bytes behind the end", "1000 78 0000 FFFF", "x"},
    };
    for (const Row& row : rows)
        EXPECT_EQ(decode_all(from_hex(row.stream), row.data.size()), from_text(row.data)) << row.what;
}

TEST(GlzDecoder, RefusesWhatLeavesItsBounds) {
    struct Row {
        const char* what;
        const char* stream;
        std::size_t size;
    };
    const Row rows[] = {
        {"no stream at all", "", 0},
        {"half a control word", "10", 1},
        {"a run longer than the stream", "3000 6162", 3},
        {"a match without its distance", "1000 78 3100 10", 4},
        {"a run longer than the destination", "3000 616263 0000", 2},
        {"a match longer than the destination", "1000 78 4100 1000 0000", 4},
        {"a distance before the start", "2000 6162 4100 3000 0000", 6},
        {"a match before any byte", "4100 1000 0000", 4},
        {"distance 0", "2000 6162 4100 0000 0000", 6},
        {"an end too early", "2000 6162 0000", 3},
        {"a stream too short", "2000 6162", 3},
    };
    for (const Row& row : rows)
        EXPECT_FALSE(decode_all(from_hex(row.stream), row.size)) << row.what;
}

TEST(GlzDecoder, TakesSixteenTokensPerStep) {
    Bytes stream;
    for (int i = 0; i < 40; ++i)
        stream.insert(stream.end(), {0x10, 0x00, static_cast<std::uint8_t>(i)});
    Bytes data(40);
    GlzDecoder decoder = glz_decode_begin(stream, data);
    EXPECT_EQ(glz_decode_step(decoder), GlzState::WORKING);
    EXPECT_EQ(decoder.produced, 16U);
    EXPECT_EQ(glz_decode_step(decoder), GlzState::WORKING);
    EXPECT_EQ(decoder.produced, 32U);
    EXPECT_EQ(glz_decode_step(decoder), GlzState::FINISHED);
    EXPECT_EQ(decoder.produced, 40U);
    EXPECT_EQ(glz_decode_step(decoder), GlzState::FINISHED) << "a step after the end";
}

TEST(GlzEncoder, EmitsSixteenGroupsPerStep) {
    // "0abcd1abcd2abcd...": each group is one byte and the match behind it.
    Bytes data = from_text("abcd");
    for (std::uint8_t i = 0; i < 40; ++i)
        data.insert(data.end(), {static_cast<std::uint8_t>(0x80 + i), 'a', 'b', 'c', 'd'});
    GlzEncoder encoder = glz_encode_begin(data);
    EXPECT_EQ(glz_encode_step(encoder), GlzState::WORKING);
    EXPECT_EQ(encoder.position, 4U + 16 * 5);
    EXPECT_EQ(glz_encode_step(encoder), GlzState::WORKING);
    EXPECT_EQ(glz_encode_step(encoder), GlzState::FINISHED);
    const std::size_t size = encoder.stream.size();
    EXPECT_EQ(glz_encode_step(encoder), GlzState::FINISHED);
    EXPECT_EQ(encoder.stream.size(), size) << "a step after the end adds nothing";
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
    struct Row {
        const char* what;
        std::size_t offset;
        std::uint32_t number;
    };
    const auto stream_size = static_cast<std::uint32_t>(good.size() - 16);
    const Row rows[] = {
        {"another magic", 0, 0x315A4C47},           {"one byte more than the data", 4, 4929},
        {"one byte less than the data", 4, 4927},   {"no data", 4, 0},
        {"far too much data", 4, 0xFFFFFFFF},       {"pixels in the file header", 8, 13},
        {"pixels in the information", 8, 53},       {"pixels one byte too late", 8, 1079},
        {"pixels far away", 8, 0xFFFFFFFF},         {"a stream cut short", 12, stream_size + 1},
        {"a stream too long", 12, stream_size - 1}, {"an endless stream", 12, 0xFFFFFFFF},
    };
    for (const Row& row : rows) {
        Bytes damaged = good;
        set_u32(damaged, row.offset, row.number);
        EXPECT_FALSE(decode_image_resource(damaged)) << row.what;
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

/// Decodes between two guards; true when the stream was taken. Fails the test when a guard was written to.
bool decode_guarded(const Bytes& stream, std::size_t size) {
    constexpr std::size_t guard = 64;
    Bytes memory(size + 2 * guard, 0xA5);
    GlzDecoder decoder = glz_decode_begin(stream, std::span(memory).subspan(guard, size));
    while (glz_decode_step(decoder) == GlzState::WORKING) {
    }
    EXPECT_LE(decoder.consumed, stream.size());
    EXPECT_LE(decoder.produced, size);
    const auto is_guard = [](std::uint8_t byte) { return byte == 0xA5; };
    EXPECT_TRUE(std::all_of(memory.begin(), memory.begin() + guard, is_guard));
    EXPECT_TRUE(std::all_of(memory.end() - guard, memory.end(), is_guard));
    return decoder.state == GlzState::FINISHED;
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
        refused += decode_guarded(damage(random, streams[which]), originals[which].size()) ? 0 : 1;
    }
    for (int i = 0; i < 900; ++i)
        refused += decode_guarded(random_bytes(random, random() % 200, 256), random() % 5000) ? 0 : 1;
    for (int i = 0; i < 100; ++i) {
        const auto image = decode_image_resource(damage(random, skin));
        if (image) {
            EXPECT_EQ(image->pixels.size(), std::size_t(image->width) * std::size_t(image->height));
        }
        refused += image ? 0 : 1;
    }
    EXPECT_GT(refused, 5000);
    EXPECT_LT(refused, 10'000) << "a changed literal byte leaves a stream whole";
}

} // namespace
} // namespace quillon
