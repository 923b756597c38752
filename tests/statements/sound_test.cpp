// SPDX-License-Identifier: MIT
// BEEP, BEEPS and BEEPWAIT: the tone's image byte by byte, its periods, volume, and how it holds the program.
#include "shell/commands.h"
#include "statements/sound.h"
#include "tests/support/cases_file.h"
#include "tests/support/keyboard.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <sstream>
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

std::string sounded(const FileCase& row) {
    const std::size_t at = row.input.rfind(" @ ");
    SoundMachine t;
    t.m.settings.timer_interval = std::stoi(row.heading);
    t.start(row.input.substr(0, at));
    t.tick(std::stoi(row.input.substr(at + 3)));
    std::ostringstream shown;
    shown << cell(t, 'A').number << ' ' << t.m.sound.sound_ticks_left << ' ' << t.m.sound.sound_holds_run << ' '
          << t.m.sound.tone.half_period << t.log;
    run_host_command(*t.simulator, COMMAND_RUN);
    EXPECT_EQ(t.m.sound.sound_ticks_left, 0) << "a start stops it";
    return shown.str();
}

TEST(Tone, HoldsTheProgramOrDoesNot) { expect_cases("statements/sound.txt", sounded); }

TEST(Beep, IsSilentWhenSwitchedOff) {
    SoundMachine t;
    t.m.settings.pcm_beep = false;
    t.start("BEEP:A=1:BEEPS 4,9,1000:BEEPWAIT:A=2:BEEP 5");
    t.tick(5);
    EXPECT_EQ(cell(t, 'A').number, 2);
    EXPECT_EQ(t.m.sound.sound_holds_run, 0);
    t.tick();
    EXPECT_EQ(t.log + t.detail_id(), "BEEP 1");
}

} // namespace
} // namespace quillon::testing
