// SPDX-License-Identifier: MIT
// GLZ0: streams and resources of any bytes are decoded within their bounds or refused, and what was encoded is decoded
// to the same bytes. The first byte of the input tells how long the decoded data is said to be.
#include "fuzz/user.h"

#include "display/glz.h"

#include <algorithm>

using namespace quillon;

namespace {

std::vector<std::uint8_t> decode(std::span<const std::uint8_t> stream, std::size_t size, GlzState& state) {
    std::vector<std::uint8_t> bytes(size);
    GlzDecoder decoder = glz_decode_begin(stream, bytes);
    std::size_t consumed = 0;
    while (glz_decode_step(decoder) == GlzState::WORKING) {
        fuzz::require(decoder.consumed > consumed, "a step of the decoder does nothing");
        consumed = decoder.consumed;
    }
    state = decoder.state;
    return bytes;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size == 0)
        return 0;
    const std::span input(data + 1, size - 1);
    GlzState state{};
    decode(input, data[0] * std::size_t{16}, state);
    decode_image_resource(input);
    GlzEncoder encoder = glz_encode_begin(input);
    while (glz_encode_step(encoder) == GlzState::WORKING) {
    }
    const auto decoded = decode(encoder.stream, input.size(), state);
    fuzz::require(state == GlzState::FINISHED && std::ranges::equal(decoded, input), "encoding loses bytes");
    return 0;
}
