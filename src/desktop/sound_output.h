// SPDX-License-Identifier: MIT
// Tones from the loudspeaker: loops a tone's samples until told otherwise. Without a sound device, or when it goes
// away, there is silence and nothing else happens.
#pragma once

#include <QElapsedTimer>
#include <QIODevice>
#include <QObject>
#include <QTimer>

#include <cstdint>
#include <memory>
#include <span>
#include <vector>

class QAudioSink;

namespace quillon {

/// A source without an end: the same samples over and over.
class ToneLoop : public QIODevice {
public:
    /// Takes over the samples, to be played from the first one on.
    void set_samples(std::span<const std::uint8_t> samples);

    /// Bytes handed on since then.
    [[nodiscard]] qint64 supplied() const { return supplied_bytes; }

    [[nodiscard]] bool isSequential() const override { return true; }
    [[nodiscard]] qint64 bytesAvailable() const override;

protected:
    qint64 readData(char* data, qint64 size) override;
    qint64 writeData(const char*, qint64) override { return -1; }

private:
    std::vector<std::uint8_t> loop;
    std::size_t next = 0;
    qint64 supplied_bytes = 0;
};

class SoundOutput : public QObject {
    Q_OBJECT

public:
    explicit SoundOutput(QObject* parent = nullptr);
    ~SoundOutput() override;

    /// Plays a RIFF/WAVE image of 8-bit mono samples in a loop, in place of what plays. The device is opened when the
    /// first tone asks for it.
    void play(std::span<const std::uint8_t> wave_image);

    /// Ends the tone when it has been heard for as long as it was meant to: a tone begins late by as much as the
    /// device needs. One that follows meanwhile takes its place at once.
    void stop();

private:
    bool open_device();
    void silence();
    [[nodiscard]] int milliseconds_to_play() const;

    ToneLoop tone;
    std::unique_ptr<QAudioSink> sink;
    QElapsedTimer since_play;
    QTimer end_of_tone;
};

} // namespace quillon
