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
    : BlockPlayer(parent), output_(std::move(source), [this](quint64 run, PlayerEvent event) {
          QMetaObject::invokeMethod(
              this, [this, run, event] { Deliver(run, event); }, Qt::QueuedConnection);
      }) {
    tickTimer_.setInterval(firstTimerInterval);
    tickTimer_.setTimerType(Qt::PreciseTimer);
    connect(&tickTimer_, &QTimer::timeout, this, [this] { Tick(); });
    unfedTimer_.setInterval(unfedPatience);
    unfedTimer_.setSingleShot(true);
    connect(&unfedTimer_, &QTimer::timeout, this, [this] { AskIfUnfed(); });
}

AlsaPlayer::~AlsaPlayer() = default;

int AlsaPlayer::DeviceCount() {
    return output_.DeviceCount();
}

QString AlsaPlayer::DeviceName(int index) {
    return output_.DeviceName(index);
}

bool AlsaPlayer::IsDeviceUsable() {
    return IsFormatPlayable() && output_.IsDeviceUsable(DeviceIndex(), WaveFormat(), Channels());
}

Outcome AlsaPlayer::Prepare() {
    StopOutput();
    if (!IsFormatPlayable()) {
        EndRun(-1);
        return Outcome::NotSupported;
    }
    const Outcome outcome = output_.Begin(DeviceIndex(), WaveFormat(), Channels(), BeginRun());
    if (outcome != Outcome::Ok) {
        EndRun(-1);
        return outcome;
    }
    tickTimer_.start();
    unfedTimer_.start();
    return Outcome::Ok;
}

Outcome AlsaPlayer::WriteBlock(const QByteArray& block) {
    if (!IsRunning()) {
        return Outcome::NotOpen;
    }
    NoteBlockWritten(block);
    output_.Push(block, Run());
    return Outcome::Ok;
}

void AlsaPlayer::ClearBlocks() {
    if (IsRunning()) {
        output_.Clear(ContinueRun());
        unfedTimer_.start();
    }
}

void AlsaPlayer::StopOutput() {
    if (IsRunning()) {
        HandleRunEnding();
        output_.End();
        EndRun(0);
    }
}

qint64 AlsaPlayer::GetPlayedBytes() {
    return output_.HeardBytes();
}

QList<qint16> AlsaPlayer::GetPlayedBlock(int count) {
    return output_.PlayedBlock(count);
}

void AlsaPlayer::SetVolume(qint32 volume) {
    output_.SetVolume(volume);
}

void AlsaPlayer::EnableEqualizer(bool enabled) {
    output_.EnableEqualizer(enabled);
}

void AlsaPlayer::SetEqualizer(const EqualizerGains& gainsDb) {
    output_.SetEqualizer(gainsDb);
}

void AlsaPlayer::SetTimerInterval(int ms) {
    tickTimer_.setInterval(std::max(1, ms));
}

void AlsaPlayer::HandleAnswer(bool wroteBlock) {
    output_.NoteAnswer(wroteBlock, Run());
}

void AlsaPlayer::HandleRunEnding() {
    tickTimer_.stop();
    unfedTimer_.stop();
}

void AlsaPlayer::Tick() {
    const QPointer<AlsaPlayer> alive(this);
    const OutputThread::Position position = output_.QueryPosition();
    const quint64 tickRun = Run();
    emit Timer(position.heardBytes);
    if (!alive.isNull() && Run() == tickRun) {
        emit LevelTimer(position.heardFrames, position.levels.leftDb, position.levels.rightDb);
    }
}

void AlsaPlayer::AskIfUnfed() {
    if (IsUnfed()) {
        output_.NoteRequest(Run());
        Deliver(Run(), PlayerEvent::RequestBlock);
    }
}

std::unique_ptr<KSTAudioPlayer2> MakeAudioPlayer() {
    return std::make_unique<AlsaPlayer>(MakeMachineOutputs());
}

} // namespace kestrune
