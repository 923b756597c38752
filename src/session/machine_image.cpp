// SPDX-License-Identifier: MIT
// The image of a moment: one list of what it holds, gone through by a writer and by a reader.
#include "session/machine_image.h"

#include "core/invariants.h"
#include "core/numbers.h"
#include "core/program.h"
#include "session/checksum.h"

#include <algorithm>
#include <type_traits>

namespace quillon {
namespace {

constexpr std::size_t HEAD_SIZE = IMAGE_MAGIC.size() + 8; ///< with version and checksum
constexpr std::size_t QUEUE_MAX = 4096;                   ///< key events and keys that are down

std::uint32_t checksum(std::string_view bytes) {
    std::uint32_t crc = CRC32_START;
    for (const char byte : bytes)
        crc = crc32(crc, static_cast<std::uint8_t>(byte));
    return ~crc;
}

/// Appends what it is shown.
struct Writer {
    std::string bytes;

    void number(std::uint64_t value, std::size_t size) {
        for (std::size_t i = 0; i < size; ++i)
            bytes += static_cast<char>(value >> (8 * i));
    }
    template <typename Number>
    void whole(const Number& value) {
        number(static_cast<std::uint64_t>(static_cast<std::int64_t>(value)), 8);
    }
    void real(const double& value) { number(bits_of(value), 8); }
    void raw(const char* data, std::size_t size) { bytes.append(data, size); }
    template <typename Text>
    void text(const Text& value, std::size_t) {
        number(value.size(), 4);
        bytes.append(std::string_view(value));
    }
    template <typename Items>
    std::size_t count(const Items& items, std::size_t) {
        number(items.size(), 4);
        return items.size();
    }
};

/// Fills what it is shown; `damaged` once something is not there or too large.
struct Reader {
    std::string_view bytes;
    bool damaged = false;

    std::string_view take(std::size_t size) {
        damaged = damaged || bytes.size() < size;
        if (damaged)
            return {};
        const std::string_view taken = bytes.substr(0, size);
        bytes.remove_prefix(size);
        return taken;
    }
    std::uint64_t number(std::size_t size) {
        std::uint64_t value = 0;
        const std::string_view taken = take(size);
        for (std::size_t i = taken.size(); i-- > 0;)
            value = value << 8 | static_cast<unsigned char>(taken[i]);
        return value;
    }
    template <typename Number>
    void whole(Number& value) {
        const auto read = static_cast<std::int64_t>(number(8));
        if constexpr (std::is_same_v<Number, bool>) {
            damaged = damaged || read < 0 || read > 1;
            value = read == 1;
        } else {
            value = static_cast<Number>(read);
            damaged = damaged || static_cast<std::int64_t>(value) != read;
        }
    }
    void real(double& value) { value = number_of_bits(number(8)); }
    void raw(char* data, std::size_t size) {
        const std::string_view taken = take(size);
        std::copy(taken.begin(), taken.end(), data);
    }
    template <typename Text>
    void text(Text& value, std::size_t longest) {
        const std::uint64_t size = number(4);
        damaged = damaged || size > longest;
        value = Text(take(damaged ? 0 : static_cast<std::size_t>(size)));
    }
    template <typename Items>
    std::size_t count(Items& items, std::size_t most) {
        const std::uint64_t size = number(4);
        damaged = damaged || size > most;
        items.resize(damaged ? 0 : static_cast<std::size_t>(size));
        return items.size();
    }
};

template <typename Io, typename... Numbers>
void wholes(Io& io, Numbers&... numbers) {
    (io.whole(numbers), ...);
}

template <typename Io, typename Text>
void bounded(Io& io, Text& text) {
    io.text(text, std::remove_cvref_t<Text>::capacity());
}

template <typename Io, typename Operand>
void pass_value(Io& io, Operand& value) {
    bounded(io, value.text);
    io.real(value.number);
    wholes(io, value.cell, value.kind, value.complete);
}

template <typename Io, typename Record>
void pass_variables(Io& io, Record& m) {
    for (auto& cell : m.variables) {
        io.real(cell.number);
        bounded(io, cell.text);
        wholes(io, cell.kind, cell.string_flag);
    }
    io.whole(m.random_seed);
}

template <typename Io, typename Record>
void pass_program(Io& io, Record& m) {
    auto& p = m.program;
    wholes(io, p.cur_area, p.cur_line, p.stmt_start, p.for_depth, p.gosub_depth, p.data_pos);
    for (auto& frame : p.for_frames) {
        io.real(frame.step);
        io.real(frame.limit);
        wholes(io, frame.cell, frame.area, frame.line, frame.next);
    }
    for (auto& frame : p.gosub_frames)
        wholes(io, frame.area, frame.line, frame.next);
}

template <typename Io, typename Record>
void pass_run(Io& io, Record& m) {
    auto& run = m.run;
    wholes(io, run.run_state, run.prev_state, run.base_state, run.saved_run_state, run.program_ended, run.typed_wait,
           run.item_printed);
    for (auto* resume : {&run.resume, &run.stopped.resume}) {
        wholes(io, resume->saved_token, resume->saved_stmt_kind);
        pass_value(io, resume->value);
    }
    bounded(io, run.scroll.pending_print_text);
    wholes(io, run.scroll.state_after_scroll, run.scroll.kind_after_scroll, run.scroll.wait_counter);
    pass_value(io, run.stopped.entry);
}

template <typename Io, typename Record>
void pass_evaluation(Io& io, Record& m) {
    auto& eval = m.eval;
    wholes(io, eval.next, eval.token_start, eval.token, eval.prev_token, eval.stmt_kind, eval.operand_done,
           eval.nesting_depth);
    pass_value(io, eval.value);
    io.whole(m.error.error_code);
    bounded(io, m.error.error_detail);
    bounded(io, m.error.system_message);
}

template <typename Io, typename Record>
void pass_screen_and_keys(Io& io, Record& m) {
    auto& screen = m.screen;
    io.raw(screen.display_line.data(), screen.display_line.size());
    wholes(io, screen.display_cursor, screen.display_offset, screen.print_clear_pending, screen.cursor_visible,
           screen.blink_counter, screen.print_mode);
    bounded(io, m.keys.key_string);
    wholes(io, m.keys.held_key, m.keys.enter_request, m.keys.ctrl_flag, m.keys.shift_flag, m.keys.alt_flag);
}

/// The tokens of the typed line are made of its text again.
template <typename Io, typename Record>
void pass_entry(Io& io, Record& m) {
    auto& entry = m.entry;
    pass_value(io, entry.entry_line);
    bounded(io, entry.typed.text);
    for (auto& line : entry.history)
        bounded(io, line);
    wholes(io, entry.saved_next, entry.history_index);
    io.real(entry.last_result);
    bounded(io, entry.prev_key_string);
}

template <typename Io, typename Record>
void pass_rest(Io& io, Record& m) {
    auto& soft = m.soft;
    wholes(io, soft.soft_key_code, soft.soft_shift_latch, soft.soft_alt_latch, soft.soft_ctrl_latch, soft.soft_open,
           soft.soft_pressed_key, soft.soft_held_kind, soft.soft_mouse_down, soft.soft_mouse_up, soft.soft_repeat_count,
           soft.soft_highlight);
    wholes(io, m.trace.trace_mode, m.trace.trace_step_flag, m.trace.trace_step_request);
    for (auto& sample : m.sound.tone.image)
        io.whole(sample);
    wholes(io, m.sound.tone.samples, m.sound.tone.half_period, m.sound.sound_ticks_left, m.sound.sound_holds_run);
    auto& s = m.settings;
    wholes(io, s.angle_unit, s.run_page, s.set_e_digits, s.set_f_digits, s.set_g_digits, s.wait_print_sc,
           s.wait_print_sc_ini, s.timer_interval, s.cursor_interval, s.ascii_mode, s.pcm_beep, s.beep_volume, s.zoom);
    wholes(io, m.speed.overdrive, m.speed.saved_timer_interval);
}

template <typename Io, typename KeyEventType>
void pass_key_event(Io& io, KeyEventType& event) {
    wholes(io, event.kind, event.key, event.character, event.auto_repeat, event.modifiers.shift, event.modifiers.ctrl,
           event.modifiers.alt);
}

template <typename Io, typename MomentType>
void pass_host_side(Io& io, MomentType& moment) {
    auto& queue = moment.keys;
    io.count(queue.events, QUEUE_MAX);
    for (auto& event : queue.events)
        pass_key_event(io, event);
    io.count(queue.down_keys, QUEUE_MAX);
    for (auto& key : queue.down_keys)
        io.whole(key);
    wholes(io, queue.key_in_last_tick, moment.modifiers.shift, moment.modifiers.ctrl, moment.modifiers.alt,
           moment.exe_held, moment.tone_plays);
}

template <typename Io, typename MomentType>
void pass_moment(Io& io, MomentType& moment) {
    auto& m = moment.machine;
    pass_variables(io, m);
    pass_program(io, m);
    pass_run(io, m);
    pass_evaluation(io, m);
    pass_screen_and_keys(io, m);
    pass_entry(io, m);
    pass_rest(io, m);
    pass_host_side(io, moment);
}

/// What the list above cannot pass through: an optional, and what is made of something else.
void write_rest(Writer& io, const Moment& moment) {
    io.whole(moment.keys.last_down.has_value());
    if (moment.keys.last_down)
        pass_key_event(io, *moment.keys.last_down);
    io.text(moment.skin->name, 0);
    std::string listing = moment.machine.listing->text;
    std::replace(listing.begin(), listing.end(), '\0', '\n'); // how a load marked the ends of its lines
    io.text(listing, 0);
}

bool read_rest(Reader& io, Moment& moment) {
    constexpr std::size_t NAME_MAX_BYTES = 4096;
    bool has_last = false;
    io.whole(has_last);
    if (has_last)
        pass_key_event(io, moment.keys.last_down.emplace());
    auto skin = std::make_shared<SkinInPlace>();
    io.text(skin->name, NAME_MAX_BYTES);
    moment.skin = std::move(skin);
    std::string listing;
    io.text(listing, LISTING_SIZE_MAX);
    set_typed_line(moment.machine.entry.typed, std::string(moment.machine.entry.typed.text));
    if (io.damaged || listing.empty())
        return !io.damaged;
    ListingFault fault;
    moment.machine.listing.pointer = make_listing(std::move(listing), fault);
    return moment.machine.listing.pointer != nullptr;
}

bool key_events_are_right(const KeyQueue& queue) {
    const auto is_right = [](const KeyEvent& event) {
        return event.kind >= KeyEvent::Kind::DOWN && event.kind <= KeyEvent::Kind::UP && event.key >= 0;
    };
    return std::all_of(queue.events.begin(), queue.events.end(), is_right) &&
           (!queue.last_down || is_right(*queue.last_down));
}

} // namespace

std::string moment_image(const Moment& moment) {
    Writer body;
    pass_moment(body, moment);
    write_rest(body, moment);
    Writer image;
    image.bytes = IMAGE_MAGIC;
    image.number(IMAGE_VERSION, 4);
    image.number(checksum(body.bytes), 4);
    return image.bytes + body.bytes;
}

std::optional<Moment> read_moment_image(std::string_view bytes, ImageFault& fault) {
    fault = ImageFault::NOT_AN_IMAGE;
    if (bytes.size() < HEAD_SIZE || !bytes.starts_with(IMAGE_MAGIC))
        return std::nullopt;
    Reader io{bytes.substr(IMAGE_MAGIC.size())};
    const std::uint64_t version = io.number(4);
    const std::uint64_t expected = io.number(4);
    fault = ImageFault::OTHER_VERSION;
    if (version != IMAGE_VERSION)
        return std::nullopt;
    fault = ImageFault::DAMAGED;
    if (checksum(io.bytes) != expected)
        return std::nullopt;
    std::optional<Moment> moment(std::in_place);
    pass_moment(io, *moment);
    const bool whole = read_rest(io, *moment) && io.bytes.empty();
    if (!whole || check_invariants(moment->machine) != nullptr || !key_events_are_right(moment->keys))
        return std::nullopt;
    fault = ImageFault::NONE;
    return moment;
}

std::string_view fault_text(ImageFault fault) {
    switch (fault) {
    case ImageFault::NONE: return "";
    case ImageFault::NOT_AN_IMAGE: return "This is not a saved state.";
    case ImageFault::OTHER_VERSION: return "This state was saved by another version of the program.";
    case ImageFault::DAMAGED: return "This saved state is damaged.";
    }
    return "";
}

} // namespace quillon
