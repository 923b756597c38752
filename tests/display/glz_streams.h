// Whole streams in one call, for the tests of the GLZ0 codec.
#pragma once

#include "display/glz.h"

#include <optional>
#include <vector>

namespace quillon {

using Bytes = std::vector<std::uint8_t>;

inline Bytes encode_all(const Bytes& data) {
    GlzEncoder encoder = glz_encode_begin(data);
    while (glz_encode_step(encoder) == GlzState::WORKING) {
    }
    return encoder.stream;
}

/// The data of a stream that is known to hold `size` bytes; nothing when it is refused.
inline std::optional<Bytes> decode_all(const Bytes& stream, std::size_t size) {
    Bytes data(size);
    GlzDecoder decoder = glz_decode_begin(stream, data);
    while (glz_decode_step(decoder) == GlzState::WORKING) {
    }
    if (decoder.state != GlzState::FINISHED)
        return std::nullopt;
    return data;
}

} // namespace quillon
