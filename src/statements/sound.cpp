// SPDX-License-Identifier: MIT
// Tone synthesis: a square wave of whole samples in a RIFF/WAVE image.
#include "statements/sound.h"

#include "core/errors.h"
#include "core/interpreter.h"
#include "core/numbers.h"

#include <algorithm>
#include <cstring>

namespace quillon {
namespace {

constexpr MessageId MESSAGE_BEEP_NOT_A_NUMBER{"BEEP", 0};
constexpr MessageId MESSAGE_BEEP_RANGE{"BEEP", 1};
constexpr MessageId MESSAGE_BEEPS_NOT_A_NUMBER{"BEEPS", 0};
constexpr MessageId MESSAGE_BEEPS_OCTAVE{"BEEPS", 1};
constexpr MessageId MESSAGE_BEEPS_COMMA{"BEEPS", 2};
constexpr MessageId MESSAGE_BEEPS_NOTE{"BEEPS", 3};

constexpr std::uint8_t SILENCE = 128;

/// Proportional to the periods of the semitones from D up to the next C sharp, each 2^(1/12) times the next.
constexpr std::uint32_t SEMITONE_PERIODS[] = {
    525326924, 495842589, 468013083, 441745527, 416952256, 393550524,
    371462230, 350613657, 330935225, 312361258, 294829768, 278282244,
};

/// Half a period in samples, by the machine's integer arithmetic.
int half_period(int octave, int note) {
    constexpr std::uint32_t SCALE = 3538944;
    const int semitone = (octave + 1) * 12 + note - 2;
    return static_cast<int>((SEMITONE_PERIODS[semitone % 12] >> (semitone / 12)) * 16 / SCALE);
}

void put_16(std::uint8_t*& p, unsigned value) {
    *p++ = static_cast<std::uint8_t>(value);
    *p++ = static_cast<std::uint8_t>(value >> 8);
}

void put_32(std::uint8_t*& p, unsigned value) {
    put_16(p, value & 0xFFFF);
    put_16(p, value >> 16);
}

void put_tag(std::uint8_t*& p, const char* tag) {
    std::memcpy(p, tag, 4);
    p += 4;
}

/// The 44 bytes in front of the samples: 8-bit mono PCM.
void write_wave_header(std::uint8_t* p, unsigned samples) {
    constexpr unsigned BYTES_BEHIND_SIZE = 36;
    put_tag(p, "RIFF");
    put_32(p, samples + BYTES_BEHIND_SIZE);
    put_tag(p, "WAVE");
    put_tag(p, "fmt ");
    put_32(p, 16);
    put_16(p, 1); // PCM
    put_16(p, 1); // channel
    put_32(p, SAMPLE_RATE);
    put_32(p, SAMPLE_RATE); // bytes per second
    put_16(p, 1);           // bytes per frame
    put_16(p, 8);           // bits per sample
    put_tag(p, "data");
    put_32(p, samples);
}

/// About 50 ms of the wave, in whole periods.
void build_tone(Tone& tone, int half, int volume) {
    constexpr int SAMPLES_MIN = 2205;
    const int periods = SAMPLES_MIN / (2 * half) + 1;
    tone.half_period = half;
    tone.samples = periods * 2 * half;
    write_wave_header(tone.image.data(), static_cast<unsigned>(tone.samples));
    std::uint8_t* sample = tone.image.data() + WAVE_HEADER_SIZE;
    const auto high = static_cast<std::uint8_t>(SILENCE + volume * 64 / 10);
    for (int i = 0; i < periods; ++i) {
        sample = std::fill_n(sample, half, high);
        sample = std::fill_n(sample, half, SILENCE);
    }
}

/// Whether the current operand can be an argument of a tone.
bool is_numeric_operand(const Machine& m) {
    return m.eval.value.kind == VALUE_NUMBER || m.eval.value.kind == VALUE_NUMVAR;
}

/// Checks the argument just evaluated; false after an error.
bool check_beeps_argument(Machine& m) {
    if (!failed(m) && !is_numeric_operand(m))
        raise_error(m, ERROR_SYNTAX, MESSAGE_BEEPS_NOT_A_NUMBER, ":0x%04x (TOKEN_ID)", token_id(m.eval.token));
    return !failed(m);
}

/// Checks that an argument lies in its range and makes it whole; -1 after an error.
int whole_in_range(Machine& m, double x, int lowest, int highest, MessageId message) {
    if (x >= lowest && x <= highest)
        return truncate_to_int(round6(x));
    raise_error(m, ERROR_RANGE, message);
    return -1;
}

/// Evaluates the octave, note or duration behind a ","; false after an error.
bool eval_beeps_argument(Machine& m, double& x) {
    if (m.eval.token != TOKEN_COMMA) {
        raise_error(m, ERROR_RANGE, MESSAGE_BEEPS_COMMA);
        return false;
    }
    x = eval_argument(m);
    return check_beeps_argument(m);
}

} // namespace

void play_tone(Machine& m, int octave, int note, int duration_ms) {
    if (m.settings.pcm_beep != 1)
        return;
    if (m.sound.tone.samples > 0)
        m.around->host.stop_tone(); // the image must not change while it plays
    build_tone(m.sound.tone, half_period(octave, note), m.settings.beep_volume);
    m.around->host.play_tone(
        std::span(m.sound.tone.image).first(WAVE_HEADER_SIZE + static_cast<std::size_t>(m.sound.tone.samples)));
    m.sound.sound_ticks_left = duration_ms > m.settings.timer_interval ? duration_ms / m.settings.timer_interval : 1;
}

void beep_statement(Machine& m) {
    constexpr int DURATION_MS = 100;
    m.eval.value.kind = VALUE_NONE;
    const double pitch = eval_statement(m);
    if (failed(m))
        return;
    if (!is_statement_end(m.eval.token) && !is_numeric_operand(m))
        return raise_error(m, ERROR_SYNTAX, MESSAGE_BEEP_NOT_A_NUMBER, ":0x%04x (TOKEN_ID)", token_id(m.eval.token));
    if (!(pitch >= 0 && pitch <= 1))
        return raise_error(m, ERROR_RANGE, MESSAGE_BEEP_RANGE);
    if (pitch < 1)
        play_tone(m, 5, 10, DURATION_MS);
    else
        play_tone(m, 8, 2, DURATION_MS);
    m.sound.sound_holds_run = m.settings.pcm_beep ? 1 : 0;
}

void beeps_statement(Machine& m) {
    constexpr int DURATION_MIN_MS = 5;
    m.eval.value.kind = VALUE_NONE;
    double x = eval_statement(m);
    if (!check_beeps_argument(m))
        return;
    const int octave = whole_in_range(m, x, 1, 8, MESSAGE_BEEPS_OCTAVE);
    if (octave < 0 || !eval_beeps_argument(m, x))
        return;
    const int note = whole_in_range(m, x, 0, 11, MESSAGE_BEEPS_NOTE);
    if (note < 0 || !eval_beeps_argument(m, x))
        return;
    play_tone(m, octave, note, std::max(truncate_to_int(round6(x)), DURATION_MIN_MS));
}

void beepwait_statement(Machine& m) {
    if (m.sound.sound_ticks_left > 0)
        m.sound.sound_holds_run = true;
    next_token(m);
}

} // namespace quillon
