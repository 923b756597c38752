// SPDX-License-Identifier: MIT
// Tone synthesis: a square wave of whole samples in a RIFF/WAVE image.
#include "statements/sound.h"

#include "core/arguments.h"
#include "core/interpreter.h"
#include "core/numbers.h"
#include "statements/signatures.h"

#include <algorithm>
#include <cstring>

namespace quillon {
namespace {

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
    Arguments arguments;
    if (!read_arguments(m, signature_of<TOKEN_BEEP>(), arguments))
        return;
    if (arguments.number[0] < 1)
        play_tone(m, 5, 10, DURATION_MS);
    else
        play_tone(m, 8, 2, DURATION_MS);
    m.sound.sound_holds_run = m.settings.pcm_beep ? 1 : 0;
}

void beeps_statement(Machine& m) {
    constexpr int DURATION_MIN_MS = 5;
    Arguments arguments;
    if (!read_arguments(m, signature_of<TOKEN_BEEPS>(), arguments))
        return;
    const auto whole = [&arguments](std::size_t i) { return truncate_to_int(round6(arguments.number[i])); };
    play_tone(m, whole(0), whole(1), std::max(whole(2), DURATION_MIN_MS));
}

void beepwait_statement(Machine& m) {
    if (m.sound.sound_ticks_left > 0)
        m.sound.sound_holds_run = true;
    next_token(m);
}

} // namespace quillon
