// A player that plays nothing: it writes down what it is told and lets the test raise the events.
#pragma once

#include "components/audio_player.h"
#include "components/pcm.h"

#include <QSet>
#include <QStringList>

namespace kestrune {

// Knobs and records are public; a test sets the first and reads the second. Events are the inherited signals:
// `emit player.EndPlay();`
class FakeAudioPlayer : public KSTAudioPlayer2 {
public:
    // Each call that changes something, with its arguments: "SetFormat 44100 2", "WriteBlock 352800". Reading
    // calls are not in it.
    QStringList calls;
    QList<QByteArray> blocks; // what WriteBlock was given since the last Prepare or ClearBlocks
    EqualizerGains gainsDb{};
    QList<qint16> playedBlock; // what GetPlayedBlock cuts its answer from, the latest frame last

    int deviceCount = 1;
    QSet<int> unusable; // device indexes that cannot be opened
    Outcome prepareResult = Outcome::Ok;
    qint64 playedBytes = 0; // what GetPlayedBytes answers; Prepare and ClearBlocks set it to 0

    qint32 waveFormat = 44100;
    qint32 channels = 2;
    qint32 volume = fullVolume;
    bool equalizerEnabled = false;
    int timerIntervalMs = 30;
    bool isRunning = false; // between Prepare and StopOutput

    using KSTAudioPlayer2::KSTAudioPlayer2;

    int DeviceCount() override { return deviceCount; }
    QString DeviceName(int index) override {
        return index >= 0 && index < deviceCount ? QStringLiteral("Device %1").arg(index) : QString();
    }
    void SetDeviceIndex(int index) override {
        Note(QStringLiteral("SetDeviceIndex %1").arg(index));
        deviceIndex = index;
    }
    int DeviceIndex() const override { return deviceIndex; }
    bool IsDeviceUsable() override { return HasUsableDevice(); }

    void SetFormat(qint32 newWaveFormat, qint32 newChannels) override {
        Note(QStringLiteral("SetFormat %1 %2").arg(newWaveFormat).arg(newChannels));
        waveFormat = newWaveFormat;
        channels = newChannels;
    }
    Outcome Prepare() override {
        Note(QStringLiteral("Prepare"));
        blocks.clear();
        playedBytes = 0;
        const Outcome result = HasUsableDevice() ? prepareResult : Outcome::DeviceFailed;
        isRunning = result == Outcome::Ok;
        status = isRunning ? 0 : -1;
        return result;
    }
    qint32 GetStatus() const override { return status; }
    qint64 BytesForMs(qint64 ms) const override { return pcmBytesForMs(ms, waveFormat, channels); }
    qint64 MsForBytes(qint64 bytes) const override { return pcmMsForBytes(bytes, waveFormat, channels); }
    qint64 SamplesToMilliseconds(qint64 samples) const override {
        return waveFormat > 0 ? samples * 1000 / waveFormat : 0;
    }
    Outcome WriteBlock(const QByteArray& block) override {
        Note(QStringLiteral("WriteBlock %1").arg(block.size()));
        if (!isRunning) {
            return Outcome::NotOpen;
        }
        blocks.append(block);
        return Outcome::Ok;
    }
    void ClearBlocks() override {
        Note(QStringLiteral("ClearBlocks"));
        blocks.clear();
        playedBytes = 0;
    }
    void StopOutput() override {
        Note(QStringLiteral("StopOutput"));
        isRunning = false;
    }
    qint64 GetPlayedBytes() override { return playedBytes; }
    QList<qint16> GetPlayedBlock(int count) override {
        const qsizetype samples =
            qMin<qsizetype>(static_cast<qsizetype>(qMax(count, 0)) * channels, playedBlock.size());
        return playedBlock.last(samples);
    }

    void SetVolume(qint32 newVolume) override {
        Note(QStringLiteral("SetVolume %1").arg(newVolume));
        volume = newVolume;
    }
    void EnableEqualizer(bool enabled) override {
        Note(QStringLiteral("EnableEqualizer %1").arg(enabled ? 1 : 0));
        equalizerEnabled = enabled;
    }
    void SetEqualizer(const EqualizerGains& newGainsDb) override {
        Note(QStringLiteral("SetEqualizer"));
        gainsDb = newGainsDb;
    }
    void SetTimerInterval(int ms) override {
        Note(QStringLiteral("SetTimerInterval %1").arg(ms));
        timerIntervalMs = ms;
    }

    // Marks a device that went away in the middle of a run; the test raises EndPlay itself.
    void Vanish() {
        isRunning = false;
        status = -1;
    }

private:
    void Note(const QString& call) { calls.append(call); }
    bool HasUsableDevice() const {
        return deviceIndex >= 0 && deviceIndex < deviceCount && !unusable.contains(deviceIndex);
    }

    int deviceIndex = 0;
    qint32 status = 0;
};

} // namespace kestrune
