# SPDX-License-Identifier: MIT
"""A tone of the desktop program as the sound server plays it, recorded from a null sink's monitor.

usage: sound_test.py QUILLON QUILLON_CLI DRAG_SOURCE [unittest's arguments]
"""

import os
import statistics
import subprocess
import sys
import tempfile
import threading
import unittest

from screen import Screen, run, wait_until
from simulator import Glyphs, Simulator

RATE = 44100
TICK_SECONDS = 0.030
HALF_PERIOD = 49  # samples, of 450 Hz
SILENCE = 200  # amplitudes below this, of 32767
LISTING = "[P0]\n10 BEEPS 4,9,1000:BEEPWAIT\n20 PRINT \"DONE\"\n"


class Recorder:
    """Collects what a source plays as 16-bit mono samples."""

    def __init__(self, env):
        self.process = subprocess.Popen(["parec", "--device=tones.monitor", "--format=s16le", "--channels=1",
                                         f"--rate={RATE}", "--latency-msec=20"], env=env, stdout=subprocess.PIPE)
        self.data = bytearray()
        threading.Thread(target=self.collect, daemon=True).start()

    def collect(self):
        while block := self.process.stdout.read1(65536):
            self.data += block

    def samples(self) -> memoryview:
        whole = len(self.data) // 2 * 2
        return memoryview(bytes(self.data[:whole])).cast("h")

    def is_silent_for(self, count: int) -> bool:
        return not sounding(self.samples()[-count:])

    def stop(self):
        self.process.terminate()
        self.process.wait()
        self.process.stdout.close()


def sounding(samples) -> list:
    return [i for i, sample in enumerate(samples) if abs(sample) > SILENCE]


class SoundTest(unittest.TestCase):
    def setUp(self):
        scratch = tempfile.TemporaryDirectory()
        self.addCleanup(scratch.cleanup)
        self.screen = Screen(scratch.name)
        self.addCleanup(self.screen.close)
        self.home = tempfile.mkdtemp(dir=scratch.name)
        self.listing = os.path.join(self.home, "tone.bas")
        with open(self.listing, "w", encoding="ascii") as file:
            file.write(LISTING)
        self.glyphs = Glyphs(PROGRAMS["cli"], scratch.name)

    def start_simulator(self) -> Simulator:
        simulator = Simulator(PROGRAMS["quillon"], self.screen, self.glyphs, self.home, self.listing)
        self.addCleanup(simulator.kill)
        return simulator

    def start_sound_server(self):
        server = self.screen.start(["pulseaudio", "-n", "--daemonize=no", "--exit-idle-time=-1", "--use-pid-file=no",
                                    "--load=module-native-protocol-unix",
                                    "--load=module-null-sink sink_name=tones rate=44100"])
        wait_until(lambda: subprocess.run(["pactl", "info"], env=self.screen.env, capture_output=True,
                                          check=False).returncode == 0, "the sound server")
        return server

    def test_tone_has_its_pitch_and_length_and_no_gap(self):
        self.start_sound_server()
        recorder = Recorder(self.screen.env)
        self.addCleanup(recorder.stop)
        wait_until(lambda: len(recorder.data) > 0, "the recording to begin")
        simulator = self.start_simulator()
        simulator.key("F5")
        simulator.wait_for_text("DONE")
        wait_until(lambda: recorder.is_silent_for(RATE // 2), "the end of the tone")
        simulator.close()

        samples = recorder.samples()
        places = sounding(samples)
        self.assertTrue(places, "nothing was heard")
        # Half of each period is silent. A busy machine may interrupt the tone; a loop that does not close does it 20 times.
        starts = [b for a, b in zip(places, places[1:]) if b - a > HALF_PERIOD // 2]
        periods = [b - a for a, b in zip(starts, starts[1:])]
        self.assertEqual(statistics.median(periods), 2 * HALF_PERIOD)
        self.assertLess(sum(period > 3 * HALF_PERIOD for period in periods), 4, "the tone is interrupted")
        # Ticks come late on a busy machine, and never early.
        ticks = (places[-1] - places[0] + HALF_PERIOD) / RATE / TICK_SECONDS
        self.assertTrue(30 < ticks < 130, ticks)

    def test_silence_without_a_sound_server_and_when_it_goes_away(self):
        simulator = self.start_simulator()
        simulator.key("F5")
        simulator.wait_for_text("DONE")
        simulator.close()
        server = self.start_sound_server()
        simulator = self.start_simulator()
        simulator.key("F5")
        wait_until(lambda: run("pactl", "list", "short", "sink-inputs", env=self.screen.env), "the tone to play")
        server.kill()
        simulator.wait_for_text("DONE")
        simulator.close()


if __name__ == "__main__":
    PROGRAMS = dict(zip(("quillon", "cli", "drag_source"), sys.argv[1:4]))
    unittest.main(verbosity=2, argv=sys.argv[:1] + sys.argv[4:])
