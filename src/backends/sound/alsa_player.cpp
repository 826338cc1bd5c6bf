#include "backends/sound/alsa_player.h"

#include "backends/sound/machine_outputs.h"

#include <QPointer>
#include <algorithm>
#include <chrono>
#include <utility>

namespace kestrune {

using namespace std::chrono_literals;

namespace {

constexpr auto firstTimerInterval = 30ms;
// A caller that has written nothing so long after Prepare or ClearBlocks is at the end of its data.
constexpr auto unfedPatience = 50ms;

} // namespace

AlsaPlayer::AlsaPlayer(std::unique_ptr<OutputSource> source, QObject* parent)
    : BlockPlayer(parent), output(std::move(source), [this](quint64 run, PlayerEvent event) {
          QMetaObject::invokeMethod(
              this, [this, run, event] { Deliver(run, event); }, Qt::QueuedConnection);
      }) {
    tickTimer.setInterval(firstTimerInterval);
    tickTimer.setTimerType(Qt::PreciseTimer);
    connect(&tickTimer, &QTimer::timeout, this, [this] { Tick(); });
    unfedTimer.setInterval(unfedPatience);
    unfedTimer.setSingleShot(true);
    connect(&unfedTimer, &QTimer::timeout, this, [this] { AskIfUnfed(); });
}

AlsaPlayer::~AlsaPlayer() = default;

int AlsaPlayer::DeviceCount() {
    return output.DeviceCount();
}

QString AlsaPlayer::DeviceName(int index) {
    return output.DeviceName(index);
}

bool AlsaPlayer::IsDeviceUsable() {
    return IsFormatPlayable() && output.IsDeviceUsable(DeviceIndex(), WaveFormat(), Channels());
}

Outcome AlsaPlayer::Prepare() {
    StopOutput();
    if (!IsFormatPlayable()) {
        EndRun(-1);
        return Outcome::NotSupported;
    }
    const Outcome outcome = output.Begin(DeviceIndex(), WaveFormat(), Channels(), BeginRun());
    if (outcome != Outcome::Ok) {
        EndRun(-1);
        return outcome;
    }
    tickTimer.start();
    unfedTimer.start();
    return Outcome::Ok;
}

Outcome AlsaPlayer::WriteBlock(const QByteArray& block) {
    if (!IsRunning()) {
        return Outcome::NotOpen;
    }
    NoteBlockWritten(block);
    output.Push(block, Run());
    return Outcome::Ok;
}

void AlsaPlayer::ClearBlocks() {
    if (IsRunning()) {
        output.Clear(ContinueRun());
        unfedTimer.start();
    }
}

void AlsaPlayer::StopOutput() {
    if (IsRunning()) {
        HandleRunEnding();
        output.End();
        EndRun(0);
    }
}

qint64 AlsaPlayer::GetPlayedBytes() {
    return output.HeardBytes();
}

QList<qint16> AlsaPlayer::GetPlayedBlock(int count) {
    return output.PlayedBlock(count);
}

void AlsaPlayer::SetVolume(qint32 volume) {
    output.SetVolume(volume);
}

void AlsaPlayer::EnableEqualizer(bool enabled) {
    output.EnableEqualizer(enabled);
}

void AlsaPlayer::SetEqualizer(const EqualizerGains& gainsDb) {
    output.SetEqualizer(gainsDb);
}

void AlsaPlayer::SetTimerInterval(int ms) {
    tickTimer.setInterval(std::max(1, ms));
}

void AlsaPlayer::HandleAnswer(bool wroteBlock) {
    output.NoteAnswer(wroteBlock, Run());
}

void AlsaPlayer::HandleRunEnding() {
    tickTimer.stop();
    unfedTimer.stop();
}

void AlsaPlayer::Tick() {
    const QPointer<AlsaPlayer> alive(this);
    const OutputThread::Position position = output.QueryPosition();
    const quint64 tickRun = Run();
    emit Timer(position.heardBytes);
    if (!alive.isNull() && Run() == tickRun) {
        emit LevelTimer(position.heardFrames, position.levels.leftDb, position.levels.rightDb);
    }
}

void AlsaPlayer::AskIfUnfed() {
    if (IsUnfed()) {
        output.NoteRequest(Run());
        Deliver(Run(), PlayerEvent::RequestBlock);
    }
}

std::unique_ptr<KSTAudioPlayer2> MakeAudioPlayer() {
    return std::make_unique<AlsaPlayer>(MakeMachineOutputs());
}

} // namespace kestrune
