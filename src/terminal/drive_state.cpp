// The machine's fields as the driving protocol shows them.
#include "terminal/drive_state.h"

#include <nlohmann/json.hpp>

#include <cmath>
#include <cstdio>

namespace quillon {
namespace {

using Json = nlohmann::ordered_json;

constexpr DriveField SETTABLE_FIELDS[] = {
    {"wait_print_sc", 0, 100000, &Machine::wait_print_sc},
    {"wait_print_sc_ini", 0, 100000, &Machine::wait_print_sc_ini},
    {"timer_interval", 1, 1000, &Machine::timer_interval},
    {"cursor_interval", 0, 1000, &Machine::cursor_interval},
    {"ascii_mode", 0, 1, &Machine::ascii_mode},
    {"pcm_beep", 0, 1, &Machine::pcm_beep},
    {"angle_unit", 0, 2, &Machine::angle_unit},
    {"set_e_digits", -1, 99, &Machine::set_e_digits},
    {"set_f_digits", -1, 99, &Machine::set_f_digits},
    {"set_g_digits", 0, 18, &Machine::set_g_digits},
    {"beep_volume", 0, 10, &Machine::beep_volume},
    {"run_page", 0, 9, &Machine::run_page},
    {"random_seed", 0, 4294967295, nullptr},
};

struct NumberField {
    const char* name;
    int Machine::*field;
};

constexpr NumberField NUMBER_FIELDS[] = {
    {"run_state", &Machine::run_state},
    {"prev_state", &Machine::prev_state},
    {"base_state", &Machine::base_state},
    {"program_ended", &Machine::program_ended},
    {"state_after_scroll", &Machine::state_after_scroll},
    {"kind_after_scroll", &Machine::kind_after_scroll},
    {"saved_run_state", &Machine::saved_run_state},
    {"stmt_kind", &Machine::stmt_kind},
    {"saved_stmt_kind", &Machine::saved_stmt_kind},
    {"token", &Machine::token},
    {"saved_token", &Machine::saved_token},
    {"cur_area", &Machine::cur_area},
    {"cur_line", &Machine::cur_line},
    {"run_page", &Machine::run_page},
    {"display_cursor", &Machine::display_cursor},
    {"display_offset", &Machine::display_offset},
    {"wait_counter", &Machine::wait_counter},
    {"error_code", &Machine::error_code},
    {"angle_unit", &Machine::angle_unit},
    {"print_mode", &Machine::print_mode},
    {"for_depth", &Machine::for_depth},
    {"gosub_depth", &Machine::gosub_depth},
    {"data_pos", &Machine::data_pos},
    {"history_index", &Machine::history_index},
    {"sound_ticks_left", &Machine::sound_ticks_left},
    {"sound_holds_run", &Machine::sound_holds_run},
    {"cursor_visible", &Machine::cursor_visible},
    {"blink_counter", &Machine::blink_counter},
    {"operand_done", &Machine::operand_done},
    {"enter_request", &Machine::enter_request},
    {"set_e_digits", &Machine::set_e_digits},
    {"set_f_digits", &Machine::set_f_digits},
    {"set_g_digits", &Machine::set_g_digits},
    {"trace_mode", &Machine::trace_mode},
    {"ascii_mode", &Machine::ascii_mode},
    {"timer_interval", &Machine::timer_interval},
    {"overdrive", &Machine::overdrive},
    {"zoom", &Machine::zoom},
    {"held_key", &Machine::held_key},
    {"soft_key_code", &Machine::soft_key_code},
    {"soft_shift_latch", &Machine::soft_shift_latch},
    {"soft_alt_latch", &Machine::soft_alt_latch},
    {"soft_ctrl_latch", &Machine::soft_ctrl_latch},
};

/// JSON has no infinities and no not-a-number.
Json number_json(double x) {
    if (std::isnan(x))
        return "nan";
    if (std::isinf(x))
        return x < 0 ? "-inf" : "inf";
    return x;
}

/// The checksum of zlib's crc32.
std::uint32_t crc32(std::uint32_t crc, std::uint8_t byte) {
    crc ^= byte;
    for (int bit = 0; bit < 8; ++bit)
        crc = (crc >> 1) ^ (0xEDB88320U & (0U - (crc & 1U)));
    return crc;
}

/// Of the canvas as bytes red, green, blue from the top row on.
std::string canvas_checksum(const Canvas& canvas) {
    std::uint32_t crc = 0xFFFFFFFF;
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
    const std::string_view line(m.display_line, DISPLAY_LINE_SIZE);
    answer["display"] = machine_text(without_trailing_blanks(line));
    answer["visible"] = machine_text(line.substr(static_cast<std::size_t>(m.display_offset), DISPLAY_WIDTH));
    answer["entry"] = machine_text(m.entry_line.text);
    answer["key_string"] = machine_text(m.key_string);
    answer["error_detail"] = m.error_detail.c_str();
    answer["system_message"] = m.system_message.c_str();
    answer["skin"] = machine_text(s.skin_name);
    Json history = Json::array();
    for (const auto& slot : m.history) {
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

const DriveField* find_settable_field(std::string_view name) {
    for (const DriveField& field : SETTABLE_FIELDS) {
        if (field.name == name)
            return &field;
    }
    return nullptr;
}

void set_field(Machine& m, const DriveField& field, long long number) {
    if (field.field == nullptr)
        m.random_seed = static_cast<std::uint32_t>(number);
    else
        m.*field.field = static_cast<int>(number);
}

void answer_state(const Simulator& s, Json& answer) {
    const Machine& m = s.machine;
    for (const NumberField& field : NUMBER_FIELDS)
        answer[field.name] = m.*field.field;
    answer["line_number"] = current_line_number(m);
    answer["random_seed"] = m.random_seed;
    answer["last_result"] = number_json(m.last_result);
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
        const std::string name = i == DOLLAR_CELL ? "$" : std::string(cell.name.view());
        if (cell.kind == 1)
            variables[name] = machine_text(cell.text);
        else if (cell.kind == 0)
            variables[name] = number_json(cell.number);
    }
    answer["vars"] = std::move(variables);
}

} // namespace quillon
