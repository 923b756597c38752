// SPDX-License-Identifier: MIT
// Reading catalogue files and telling their encoding.
#include "files/catalogue_file.h"

#include "files/file_reading.h"
#include "files/shift_jis.h"
#include "shell/catalogue.h"
#include "shell/utf8.h"

namespace quillon {
namespace {

/// The limit is one of bytes in the file: it comes before the conversion, which makes most texts longer.
std::string shift_jis_message(std::string_view value) {
    return shift_jis_to_utf8(cut_shift_jis(value, MESSAGE_VALUE_MAX));
}

} // namespace

MessageCatalogue decode_catalogue(std::string_view bytes) {
    return is_valid_utf8(bytes) ? parse_catalogue(bytes) : parse_catalogue(bytes, shift_jis_message);
}

std::optional<MessageCatalogue> read_catalogue(const std::string& path) {
    constexpr std::size_t FILE_MAX = std::size_t{1} << 20;
    const std::optional<std::string> bytes = read_whole_file(path, FILE_MAX);
    if (!bytes)
        return std::nullopt;
    return decode_catalogue(*bytes);
}

} // namespace quillon
