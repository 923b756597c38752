// SPDX-License-Identifier: MIT
// The dot patterns of the machine's characters: 128 glyphs of 5 x 7 dots for the codes 0x20 to 0x9F.
#pragma once

namespace quillon {

constexpr int FIRST_GLYPH_CODE = 0x20;
constexpr int LAST_GLYPH_CODE = 0x9F;
constexpr int GLYPH_COLUMNS = 5;
constexpr int GLYPH_ROWS = 7;

/// Code of the block, all dots lit: drawn for every code that has no glyph.
constexpr int block_code = 0x94;

/// Is the dot at `column` (0 left to 4) and `row` (0 top to 6) of the glyph of `code` lit? False for a code
/// without a glyph and for a position outside the matrix.
bool glyph_dot(int code, int column, int row);

} // namespace quillon
