// SPDX-License-Identifier: MIT
// The GLZ0 codec and the resource header around a stream.
#include "display/glz.h"

#include "display/little_endian.h"

#include <algorithm>
#include <cstring>

namespace quillon {
namespace {

constexpr std::size_t LONGEST_TOKEN = 4095; // bytes a match or a literal run stands for
constexpr std::size_t FARTHEST_SEARCH = 1024;
constexpr std::size_t SHORTEST_MATCH = 4;
constexpr std::size_t GOOD_MATCH = 127; // a longer one ends the search
constexpr std::size_t FIRST_LITERAL = 4;
constexpr std::uint32_t MATCH_BIT = 1;

constexpr std::uint32_t MAGIC = 0x305A4C47; // "GLZ0"
constexpr std::size_t RESOURCE_HEADER_SIZE = 16;

std::size_t source_left(const GlzDecoder& decoder) { return decoder.source.size() - decoder.consumed; }

std::size_t room_left(const GlzDecoder& decoder) { return decoder.destination.size() - decoder.produced; }

GlzState state_at_end(const GlzDecoder& decoder) {
    return room_left(decoder) == 0 ? GlzState::FINISHED : GlzState::REFUSED;
}

/// Copies forwards, so that a source which overlaps the destination repeats the bytes just written.
void copy_match(std::uint8_t* to, std::size_t distance, std::size_t length) {
    const std::uint8_t* from = to - distance;
    if (length == 0)
        return;
    if (distance >= length)
        std::memcpy(to, from, length);
    else if (distance == 1)
        std::memset(to, *from, length);
    else
        for (std::size_t i = 0; i < length; ++i)
            to[i] = from[i];
}

bool decode_match(GlzDecoder& decoder, std::size_t length) {
    if (source_left(decoder) < 4)
        return false;
    const std::size_t distance = read_u16(decoder.source, decoder.consumed + 2) >> 4;
    if (distance == 0 || distance > decoder.produced || length > room_left(decoder))
        return false;
    copy_match(decoder.destination.data() + decoder.produced, distance, length);
    decoder.consumed += 4;
    decoder.produced += length;
    return true;
}

bool decode_literal(GlzDecoder& decoder, std::size_t count) {
    if (source_left(decoder) < 2 + count || count > room_left(decoder))
        return false;
    std::copy_n(decoder.source.begin() + static_cast<std::ptrdiff_t>(decoder.consumed + 2), count,
                decoder.destination.begin() + static_cast<std::ptrdiff_t>(decoder.produced));
    decoder.consumed += 2 + count;
    decoder.produced += count;
    return true;
}

GlzState decode_token(GlzDecoder& decoder) {
    if (source_left(decoder) < 2)
        return GlzState::REFUSED;
    const std::uint32_t control = read_u16(decoder.source, decoder.consumed);
    if (control == 0)
        return state_at_end(decoder);
    const std::size_t length = control >> 4;
    const bool taken = (control & MATCH_BIT) != 0 ? decode_match(decoder, length) : decode_literal(decoder, length);
    if (!taken)
        return GlzState::REFUSED;
    return source_left(decoder) == 0 ? state_at_end(decoder) : GlzState::WORKING;
}

struct Match {
    std::size_t length = 0; // 0: none
    std::size_t distance = 0;
};

std::size_t equal_bytes(std::span<const std::uint8_t> source, std::size_t from, std::size_t at) {
    const std::size_t most = std::min(LONGEST_TOKEN, source.size() - at);
    std::size_t length = 0;
    while (length < most && source[from + length] == source[at + length])
        ++length;
    return length;
}

/// The longest earlier occurrence of what stands at `at`, the nearest of several; none below four bytes.
Match find_match(std::span<const std::uint8_t> source, std::size_t at) {
    Match best;
    if (source.size() - at < SHORTEST_MATCH)
        return best;
    const std::size_t reach = std::min(FARTHEST_SEARCH, at);
    for (std::size_t distance = 1; distance <= reach && best.length <= GOOD_MATCH; ++distance) {
        const std::size_t length = equal_bytes(source, at - distance, at);
        if (length >= SHORTEST_MATCH && length > best.length)
            best = {length, distance};
    }
    return best;
}

void append_literal(GlzEncoder& encoder, std::size_t count) {
    append_u16(encoder.stream, static_cast<std::uint32_t>(count << 4));
    const auto run = encoder.source.subspan(encoder.position, count);
    encoder.stream.insert(encoder.stream.end(), run.begin(), run.end());
    encoder.position += count;
}

void append_match(GlzEncoder& encoder, const Match& match) {
    append_u16(encoder.stream, static_cast<std::uint32_t>(match.length << 4) | MATCH_BIT);
    append_u16(encoder.stream, static_cast<std::uint32_t>(match.distance << 4));
    encoder.position += match.length;
}

/// The bytes up to the next match, and the match; or the longest run when there is none within its reach.
void encode_group(GlzEncoder& encoder) {
    const std::size_t most = std::min(LONGEST_TOKEN, encoder.source.size() - encoder.position);
    std::size_t passed = 0;
    Match match;
    while (passed < most) {
        match = find_match(encoder.source, encoder.position + passed);
        if (match.length != 0)
            break;
        ++passed;
    }
    if (passed != 0)
        append_literal(encoder, passed);
    if (match.length != 0)
        append_match(encoder, match);
}

std::optional<std::vector<std::uint8_t>> decode_whole(std::span<const std::uint8_t> stream, std::size_t size) {
    // No stream yields more than a longest match per four bytes: a greater size is a lie and gets no memory.
    if (size / LONGEST_TOKEN > stream.size() / 4)
        return std::nullopt;
    std::vector<std::uint8_t> data(size);
    GlzDecoder decoder = glz_decode_begin(stream, data);
    while (glz_decode_step(decoder) == GlzState::WORKING) {
    }
    if (decoder.state != GlzState::FINISHED)
        return std::nullopt;
    return data;
}

} // namespace

GlzDecoder glz_decode_begin(std::span<const std::uint8_t> source, std::span<std::uint8_t> destination) {
    return {source, destination};
}

GlzState glz_decode_step(GlzDecoder& decoder) {
    for (int token = 0; token < GLZ_TOKENS_PER_STEP && decoder.state == GlzState::WORKING; ++token)
        decoder.state = decode_token(decoder);
    return decoder.state;
}

GlzEncoder glz_encode_begin(std::span<const std::uint8_t> source) {
    GlzEncoder encoder{source};
    if (!source.empty())
        append_literal(encoder, std::min(FIRST_LITERAL, source.size()));
    return encoder;
}

GlzState glz_encode_step(GlzEncoder& encoder) {
    if (encoder.state != GlzState::WORKING)
        return encoder.state;
    for (int group = 0; group < GLZ_TOKENS_PER_STEP && encoder.position < encoder.source.size(); ++group)
        encode_group(encoder);
    if (encoder.position == encoder.source.size()) {
        append_u32(encoder.stream, 0);
        encoder.state = GlzState::FINISHED;
    }
    return encoder.state;
}

std::optional<IndexedImage> decode_image_resource(std::span<const std::uint8_t> resource) {
    if (resource.size() < RESOURCE_HEADER_SIZE || read_u32(resource, 0) != MAGIC)
        return std::nullopt;
    const std::size_t size = read_u32(resource, 4);
    const std::size_t file_offset = read_u32(resource, 8); // counted as in a file, with the file header
    const auto stream = resource.subspan(RESOURCE_HEADER_SIZE);
    if (read_u32(resource, 12) != stream.size() || file_offset < BITMAP_FILE_HEADER_SIZE)
        return std::nullopt;
    const auto data = decode_whole(stream, size);
    if (!data)
        return std::nullopt;
    return read_bitmap(*data, file_offset - BITMAP_FILE_HEADER_SIZE);
}

std::vector<std::uint8_t> encode_image_resource(const IndexedImage& image) {
    const std::vector<std::uint8_t> data = write_bitmap(image);
    GlzEncoder encoder = glz_encode_begin(data);
    while (glz_encode_step(encoder) == GlzState::WORKING) {
    }
    std::vector<std::uint8_t> resource;
    append_u32(resource, MAGIC);
    append_u32(resource, static_cast<std::uint32_t>(data.size()));
    append_u32(resource, BITMAP_FILE_HEADER_SIZE + BITMAP_PIXEL_OFFSET);
    append_u32(resource, static_cast<std::uint32_t>(encoder.stream.size()));
    resource.insert(resource.end(), encoder.stream.begin(), encoder.stream.end());
    return resource;
}

} // namespace quillon
