// SPDX-License-Identifier: MIT
// The machine's fields as the driving protocol shows them.
#include "protocols/drive_state.h"

#include "core/fields.h"
#include "core/variables.h"
#include "session/checksum.h"

#include <nlohmann/json.hpp>

#include <cmath>
#include <cstdio>

namespace quillon {
namespace {

using Json = nlohmann::ordered_json;

/// JSON has no infinities and no not-a-number.
Json number_json(double x) {
    if (std::isnan(x))
        return "nan";
    if (std::isinf(x))
        return x < 0 ? "-inf" : "inf";
    return x;
}

/// Of the canvas as bytes red, green, blue from the top row on.
std::string canvas_checksum(const Canvas& canvas) {
    std::uint32_t crc = CRC32_START;
    for (const std::uint32_t pixel : canvas.pixels) {
        for (int shift = 16; shift >= 0; shift -= 8)
            crc = crc32(crc, static_cast<std::uint8_t>(pixel >> shift));
    }
    char text[16];
    std::snprintf(text, sizeof text, "%08x", ~crc);
    return text;
}

void answer_texts(const Simulator& s, Json& answer) {
    const Machine& m = s.machine;
    const std::string_view line(m.screen.display_line.data(), DISPLAY_LINE_SIZE);
    answer["display"] = machine_text(without_trailing_blanks(line));
    answer["visible"] = machine_text(line.substr(static_cast<std::size_t>(m.screen.display_offset), DISPLAY_WIDTH));
    answer["entry"] = machine_text(m.entry.entry_line.text);
    answer["key_string"] = machine_text(m.keys.key_string);
    answer["error_detail"] = m.error.error_detail.c_str();
    answer["system_message"] = m.error.system_message.c_str();
    answer["skin"] = machine_text(s.skin_name);
    Json history = Json::array();
    for (const auto& slot : m.entry.history) {
        if (!slot.empty())
            history.push_back(machine_text(slot));
    }
    answer["history"] = std::move(history);
}

} // namespace

std::string_view without_trailing_blanks(std::string_view text) {
    return text.substr(0, text.find_last_not_of(' ') + 1);
}

std::string machine_text(std::string_view bytes) {
    std::string text;
    for (const char c : bytes) {
        const auto byte = static_cast<unsigned char>(c);
        if (byte < 0x80) {
            text += c;
        } else {
            text += static_cast<char>(0xC0U | (byte >> 6));
            text += static_cast<char>(0x80U | (byte & 0x3FU));
        }
    }
    return text;
}

void answer_state(const Simulator& s, Json& answer) {
    const Machine& m = s.machine;
    for (const Field& field : fields()) {
        if ((field.uses & FIELD_SHOWN) != 0)
            answer[std::string(field.name)] = field.get(m);
    }
    answer["line_number"] = current_line_number(m);
    answer["random_seed"] = m.random_seed;
    answer["last_result"] = number_json(m.entry.last_result);
    answer_texts(s, answer);
}

void answer_lcd(const LcdPicture& picture, Json& answer) {
    std::string text;
    for (const std::uint8_t code : picture.codes)
        text += static_cast<char>(code);
    answer["text"] = machine_text(text);
    answer["indicators"] = lit_indicators(picture);
    answer["crc32"] = canvas_checksum(picture.canvas);
}

void answer_variables(const Machine& m, Json& answer) {
    Json variables = Json::object();
    for (int i = 0; i < CELL_COUNT; ++i) {
        const Variable& cell = m.variables[static_cast<std::size_t>(i)];
        const std::string name = i == DOLLAR_CELL ? "$" : std::string(cell_name(i).view());
        if (cell.kind == CELL_STRING)
            variables[name] = machine_text(cell.text);
        else if (cell.kind == CELL_NUMBER)
            variables[name] = number_json(cell.number);
    }
    answer["vars"] = std::move(variables);
}

} // namespace quillon
