// SPDX-License-Identifier: MIT
// GLZ0, the compression of the built-in pictures: a decoder and an encoder that work in steps of 16 tokens,
// and the resource (a 16-byte header and a stream) that holds one image.
//
// A stream is a row of tokens, each beginning with a 16-bit control word w, least significant byte first:
//   w = 0          the end of the stream
//   bit 0 clear    a literal run: w >> 4 bytes follow and are copied
//   bit 0 set      a match: w >> 4 bytes are copied, one by one, from (next word >> 4) bytes back
// A stream may also end by its length, without the zero word.
#pragma once

#include "display/image.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <vector>

namespace quillon {

constexpr int GLZ_TOKENS_PER_STEP = 16;

enum class GlzState {
    WORKING,  ///< call the step again
    FINISHED, ///< complete
    REFUSED,  ///< the stream is damaged; what was written to the destination means nothing
};

/// A decoder between two steps. Only the steps change it.
struct GlzDecoder {
    std::span<const std::uint8_t> source;
    std::span<std::uint8_t> destination;
    std::size_t consumed = 0; ///< bytes read of the source
    std::size_t produced = 0; ///< bytes written to the destination
    GlzState state = GlzState::WORKING;
};

/// A decoder of the stream `source` (without a resource's header) into `destination`, which is exactly as
/// long as the data is known to be. Both must outlive the decoder.
GlzDecoder glz_decode_begin(std::span<const std::uint8_t> source, std::span<std::uint8_t> destination);

/// Decodes at most 16 tokens and returns `decoder.state`. REFUSED is a stream that would read or write past
/// its bounds, that copies from before the start or from what is not written yet, or that ends short of the
/// destination's length. A step after the end changes nothing.
GlzState glz_decode_step(GlzDecoder& decoder);

/// An encoder between two steps. Only the steps change it.
struct GlzEncoder {
    std::span<const std::uint8_t> source;
    std::size_t position = 0;           ///< bytes encoded so far
    std::vector<std::uint8_t> stream{}; ///< grows with every step; whole when the state is FINISHED
    GlzState state = GlzState::WORKING;
};

/// An encoder of `source`, which must outlive it. Its first bytes (up to four) are written at once.
GlzEncoder glz_encode_begin(std::span<const std::uint8_t> source);

/// Encodes at most 16 groups (a literal run, a match, or a run and the match behind it) and returns
/// `encoder.state`: WORKING, or FINISHED once the end mark of four zero bytes is written.
GlzState glz_encode_step(GlzEncoder& encoder);

/// The image in a resource; nothing when its header is not that of a GLZ0 resource of just this length, its
/// stream is damaged, or the data is no bitmap of the promised size.
std::optional<IndexedImage> decode_image_resource(std::span<const std::uint8_t> resource);

/// The resource that holds an image.
std::vector<std::uint8_t> encode_image_resource(const IndexedImage& image);

} // namespace quillon
