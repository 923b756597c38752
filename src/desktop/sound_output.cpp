// SPDX-License-Identifier: MIT
// Looping tones on the audio device.
#include "desktop/sound_output.h"

#include "core/machine.h"

#include <QAudioDevice>
#include <QAudioFormat>
#include <QAudioSink>
#include <QMediaDevices>

#include <algorithm>
#include <cstring>

namespace quillon {
namespace {

/// Bytes to ask for. Sound servers keep up to half of it for themselves, and with less than 6 KB left there are gaps.
constexpr int BUFFER_SIZE = 16384;

QAudioFormat tone_format() {
    QAudioFormat format;
    format.setSampleRate(SAMPLE_RATE);
    format.setChannelCount(1);
    format.setSampleFormat(QAudioFormat::UInt8);
    return format;
}

} // namespace

void ToneLoop::set_samples(std::span<const std::uint8_t> samples) {
    loop.assign(samples.begin(), samples.end());
    next = 0;
    supplied_bytes = 0;
}

qint64 ToneLoop::bytesAvailable() const { return loop.empty() ? 0 : BUFFER_SIZE; }

qint64 ToneLoop::readData(char* data, qint64 size) {
    if (loop.empty())
        return 0;
    qint64 done = 0;
    while (done < size) {
        const std::size_t count = std::min(loop.size() - next, static_cast<std::size_t>(size - done));
        std::memcpy(data + done, loop.data() + next, count);
        next = (next + count) % loop.size();
        done += static_cast<qint64>(count);
    }
    supplied_bytes += done;
    return done;
}

SoundOutput::SoundOutput(QObject* parent) : QObject(parent) {
    tone.open(QIODevice::ReadOnly);
    end_of_tone.setSingleShot(true);
    end_of_tone.setTimerType(Qt::PreciseTimer);
    connect(&end_of_tone, &QTimer::timeout, this, &SoundOutput::silence);
}

SoundOutput::~SoundOutput() { silence(); }

bool SoundOutput::open_device() {
    const QAudioDevice device = QMediaDevices::defaultAudioOutput();
    if (device.isNull() || !device.isFormatSupported(tone_format()))
        return false;
    sink = std::make_unique<QAudioSink>(device, tone_format());
    sink->setBufferSize(BUFFER_SIZE);
    return true;
}

void SoundOutput::play(std::span<const std::uint8_t> wave_image) {
    silence();
    if (wave_image.size() <= WAVE_HEADER_SIZE || (sink == nullptr && !open_device()))
        return;
    tone.set_samples(wave_image.subspan(WAVE_HEADER_SIZE));
    since_play.start();
    sink->start(&tone);
    if (sink->error() != QAudio::NoError)
        sink.reset(); // the device has gone: the next tone looks for one anew
}

/// From what the device has taken, less what waits in its buffer.
int SoundOutput::milliseconds_to_play() const {
    constexpr qint64 LATENESS_MAX = 1000;
    const qint64 heard = tone.supplied() - (sink->bufferSize() - sink->bytesFree());
    return static_cast<int>(std::clamp<qint64>(since_play.elapsed() - heard * 1000 / SAMPLE_RATE, 0, LATENESS_MAX));
}

void SoundOutput::stop() {
    if (sink != nullptr && sink->state() == QAudio::ActiveState)
        end_of_tone.start(milliseconds_to_play());
    else
        silence();
}

void SoundOutput::silence() {
    end_of_tone.stop();
    if (sink != nullptr)
        sink->reset();
}

} // namespace quillon
