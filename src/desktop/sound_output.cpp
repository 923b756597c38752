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

constexpr int BUFFER_SIZE = 8192; ///< about 186 ms: none below 6 KB plays without a gap everywhere

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
    return done;
}

SoundOutput::SoundOutput(QObject* parent) : QObject(parent) { tone.open(QIODevice::ReadOnly); }

SoundOutput::~SoundOutput() { stop(); }

bool SoundOutput::open_device() {
    const QAudioDevice device = QMediaDevices::defaultAudioOutput();
    if (device.isNull() || !device.isFormatSupported(tone_format()))
        return false;
    sink = std::make_unique<QAudioSink>(device, tone_format());
    sink->setBufferSize(BUFFER_SIZE);
    return true;
}

void SoundOutput::play(std::span<const std::uint8_t> wave_image) {
    stop();
    if (wave_image.size() <= WAVE_HEADER_SIZE || (sink == nullptr && !open_device()))
        return;
    tone.set_samples(wave_image.subspan(WAVE_HEADER_SIZE));
    sink->start(&tone);
    if (sink->error() != QAudio::NoError)
        sink.reset(); // the device has gone: the next tone looks for one anew
}

void SoundOutput::stop() {
    if (sink != nullptr)
        sink->reset();
}

} // namespace quillon
