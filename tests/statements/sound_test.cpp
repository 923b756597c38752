// SPDX-License-Identifier: MIT
// A tone's image byte by byte, its periods and its volume. What BEEP, BEEPS and BEEPWAIT do: transcripts/sound.drv.
#include "statements/sound.h"
#include "tests/support/test_machine.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <vector>

namespace quillon::testing {
namespace {

/// A machine that notes its tones.
struct SoundMachine : TestMachine {
    SoundMachine() {
        simulator->around.host.play_tone = [this](std::span<const std::uint8_t> image) {
            log += " play";
            played.assign(image.begin(), image.end());
        };
        simulator->around.host.stop_tone = [this] { log += " stop"; };
    }

    std::vector<std::uint8_t> played; ///< the last image
    std::string log;
};

TEST(Tone, IsAWaveImage) {
    SoundMachine t;
    play_tone(t.m, 8, 2, 100); // half a period is 4 samples: 276 periods of 8
    std::vector<std::uint8_t> image = {
        'R', 'I',  'F',  'F', 0xC4, 0x08, 0,    0, 'W', 'A', 'V', 'E', 'f', 'm', 't', ' ', 16,  0,    0,    0, 1, 0, 1,
        0,   0x44, 0xAC, 0,   0,    0x44, 0xAC, 0, 0,   1,   0,   8,   0,   'd', 'a', 't', 'a', 0xA0, 0x08, 0, 0,
    };
    for (int i = 0; i < 2208; ++i)
        image.push_back(i % 8 < 4 ? 192 : 128);
    EXPECT_EQ(t.played, image);
}

TEST(Tone, HasItsPeriodInEveryOctave) {
    const std::uint32_t periods[] = {525326924, 495842589, 468013083, 441745527, 416952256, 393550524,
                                     371462230, 350613657, 330935225, 312361258, 294829768, 278282244};
    SoundMachine t;
    for (int octave = 1; octave <= 8; ++octave) {
        for (int note = 0; note <= 11; ++note) {
            SCOPED_TRACE(octave * 100 + note);
            const int semitone = (octave + 1) * 12 + note - 2;
            const std::uint32_t half = (periods[semitone % 12] >> (semitone / 12)) * 16 / 3538944;
            const std::uint32_t samples = (2205 / (2 * half) + 1) * 2 * half;
            play_tone(t.m, octave, note, 100);
            EXPECT_EQ(t.m.sound.tone.half_period, static_cast<int>(half));
            ASSERT_EQ(t.played.size(), 44 + samples);
            EXPECT_EQ(t.played[4] | t.played[5] << 8, static_cast<int>(samples + 36));
            EXPECT_EQ(t.played[40] | t.played[41] << 8, static_cast<int>(samples));
            for (std::size_t i = 0; i < samples; ++i)
                ASSERT_EQ(t.played[44 + i], i % (2 * half) < half ? 192 : 128) << i;
        }
    }
}

TEST(Tone, IsAsLoudAsTheVolume) {
    SoundMachine t;
    for (const auto& [volume, sample] : {std::pair(0, 128), {1, 134}, {5, 160}, {9, 185}, {10, 192}}) {
        t.m.settings.beep_volume = volume;
        play_tone(t.m, 4, 9, 100);
        EXPECT_EQ(t.played[44], sample) << volume;
        EXPECT_EQ(t.played.back(), 128) << volume;
    }
}

} // namespace
} // namespace quillon::testing
