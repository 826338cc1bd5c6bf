#include "backends/sound/block_player.h"

#include "components/pcm.h"

#include <QPointer>

namespace kestrune {

namespace {

constexpr qint32 lowestRateHz = 1000;
constexpr qint32 highestRateHz = 192000;

} // namespace

void BlockPlayer::SetFormat(qint32 newWaveFormat, qint32 newChannels) {
    waveFormat = newWaveFormat;
    channels = newChannels;
}

qint64 BlockPlayer::BytesForMs(qint64 ms) const {
    return pcmBytesForMs(ms, waveFormat, channels);
}

qint64 BlockPlayer::MsForBytes(qint64 bytes) const {
    return pcmMsForBytes(bytes, waveFormat, channels);
}

qint64 BlockPlayer::SamplesToMilliseconds(qint64 samples) const {
    return waveFormat > 0 ? samples * 1000 / waveFormat : 0;
}

bool BlockPlayer::IsFormatPlayable() const {
    return waveFormat >= lowestRateHz && waveFormat <= highestRateHz && (channels == 1 || channels == 2);
}

quint64 BlockPlayer::BeginRun() {
    isRunning = true;
    status = 0;
    runChannels = channels;
    return ContinueRun();
}

quint64 BlockPlayer::ContinueRun() {
    wroteSinceBegin = false;
    return ++runNumber;
}

void BlockPlayer::EndRun(qint32 newStatus) {
    isRunning = false;
    status = newStatus;
    ++runNumber;
}

// Less than a frame is nothing: no sound and no event comes of it.
void BlockPlayer::NoteBlockWritten(const QByteArray& block) {
    if (block.size() >= frameBytes(runChannels)) {
        hasAnswered = true;
        wroteSinceBegin = true;
    }
}

void BlockPlayer::AskForBlock(PlayerEvent event) {
    const QPointer<BlockPlayer> alive(this);
    const quint64 askedRun = runNumber;
    hasAnswered = false;
    if (event == PlayerEvent::RequestBlock) {
        emit RequestOnLoadArray();
    } else {
        emit EndArrayPlay();
    }
    if (!alive.isNull() && runNumber == askedRun) {
        HandleAnswer(hasAnswered);
    }
}

void BlockPlayer::Deliver(quint64 eventRun, PlayerEvent event) {
    if (!isRunning || eventRun != runNumber) {
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
