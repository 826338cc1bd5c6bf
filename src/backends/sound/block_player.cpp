#include "backends/sound/block_player.h"

#include "components/pcm.h"

#include <QPointer>

namespace kestrune {

namespace {

constexpr qint32 lowestRateHz = 1000;
constexpr qint32 highestRateHz = 192000;

} // namespace

void BlockPlayer::SetFormat(qint32 newWaveFormat, qint32 newChannels) {
    waveFormat_ = newWaveFormat;
    channels_ = newChannels;
}

qint64 BlockPlayer::BytesForMs(qint64 ms) const {
    return pcmBytesForMs(ms, waveFormat_, channels_);
}

qint64 BlockPlayer::MsForBytes(qint64 bytes) const {
    return pcmMsForBytes(bytes, waveFormat_, channels_);
}

qint64 BlockPlayer::SamplesToMilliseconds(qint64 samples) const {
    return waveFormat_ > 0 ? samples * 1000 / waveFormat_ : 0;
}

bool BlockPlayer::IsFormatPlayable() const {
    return waveFormat_ >= lowestRateHz && waveFormat_ <= highestRateHz && (channels_ == 1 || channels_ == 2);
}

quint64 BlockPlayer::BeginRun() {
    isRunning_ = true;
    status_ = 0;
    runChannels_ = channels_;
    return ContinueRun();
}

quint64 BlockPlayer::ContinueRun() {
    wroteSinceBegin_ = false;
    return ++runNumber_;
}

void BlockPlayer::EndRun(qint32 newStatus) {
    isRunning_ = false;
    status_ = newStatus;
    ++runNumber_;
}

// Less than a frame is nothing: no sound and no event comes of it.
void BlockPlayer::NoteBlockWritten(const QByteArray& block) {
    if (block.size() >= frameBytes(runChannels_)) {
        hasAnswered_ = true;
        wroteSinceBegin_ = true;
    }
}

void BlockPlayer::AskForBlock(PlayerEvent event) {
    const QPointer<BlockPlayer> alive(this);
    const quint64 askedRun = runNumber_;
    hasAnswered_ = false;
    if (event == PlayerEvent::RequestBlock) {
        emit RequestOnLoadArray();
    } else {
        emit EndArrayPlay();
    }
    if (!alive.isNull() && runNumber_ == askedRun) {
        HandleAnswer(hasAnswered_);
    }
}

void BlockPlayer::Deliver(quint64 eventRun, PlayerEvent event) {
    if (!isRunning_ || eventRun != runNumber_) {
        return;
    }
    switch (event) {
    case PlayerEvent::RequestBlock:
    case PlayerEvent::BlockEnded:
        AskForBlock(event);
        break;
    case PlayerEvent::PlayEnded:
    case PlayerEvent::DeviceVanished:
        HandleRunEnding();
        EndRun(event == PlayerEvent::PlayEnded ? 0 : -1);
        emit EndPlay();
        break;
    }
}

} // namespace kestrune
