// The player of this machine's sound devices.
#pragma once

#include "backends/sound/block_player.h"
#include "backends/sound/output_thread.h"

#include <QTimer>
#include <memory>

namespace kestrune {

// All calls on the window thread; a thread of its own keeps the device filled.
class AlsaPlayer : public BlockPlayer {
public:
    // Over any devices; MakeAudioPlayer gives those of the machine.
    explicit AlsaPlayer(std::unique_ptr<OutputSource> source, QObject* parent = nullptr);
    ~AlsaPlayer() override;

    int DeviceCount() override;
    QString DeviceName(int index) override;
    bool IsDeviceUsable() override;

    Outcome Prepare() override;
    Outcome WriteBlock(const QByteArray& block) override;
    void ClearBlocks() override;
    void StopOutput() override;
    qint64 GetPlayedBytes() override;
    QList<qint16> GetPlayedBlock(int count) override;

    void SetVolume(qint32 volume) override;
    void EnableEqualizer(bool enabled) override;
    void SetEqualizer(const EqualizerGains& gainsDb) override;
    void SetTimerInterval(int ms) override;

protected:
    void HandleAnswer(bool wroteBlock) override;
    void HandleRunEnding() override;

private:
    void Tick();
    void AskIfUnfed();

    QTimer tickTimer_;
    QTimer unfedTimer_;
    OutputThread output_; // last: its thread ends before the rest goes
};

// The player over the sound server and the sound cards of this machine; never null.
std::unique_ptr<KSTAudioPlayer2> MakeAudioPlayer();

} // namespace kestrune
