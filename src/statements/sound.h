// SPDX-License-Identifier: MIT
// BEEP, BEEPS and BEEPWAIT: square-wave tones.
#pragma once

namespace quillon {

struct Machine;

void beep_statement(Machine& m);
void beeps_statement(Machine& m);
void beepwait_statement(Machine& m);

/// Builds the image of a tone, hands it to the host to be looped, and sets the ticks until it stops. `octave` 1-8,
/// `note` 0 (C) to 11 (B). Nothing when tones are switched off.
void play_tone(Machine& m, int octave, int note, int duration_ms);

} // namespace quillon
