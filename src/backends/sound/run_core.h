// The state of a run that does not depend on what plays it: queue, sound chain, positions, history.
#pragma once

#include "backends/sound/block_queue.h"
#include "backends/sound/played_history.h"
#include "backends/sound/sound_chain.h"

namespace kestrune {

// What the device is asked to hold ahead of the ear.
inline constexpr int deviceBufferMs = 200;

struct Levels {
    int leftDb = 0; // see KSTAudioPlayer2::LevelTimer
    int rightDb = 0;
};

// Not thread-safe; used by one thread at a time. Positions count frames since the last Start or Clear.
class RunCore {
public:
    // A new run; rate in Hz, 1 or 2 channels.
    void Start(int sampleRateHz, int channels);
    // Drops everything; the run goes on.
    void Clear();
    void Push(const QByteArray& block) { queue.Push(block, FrameSize()); }
    // Takes up to `maxFrames` finished frames out of the queue, ready for the device.
    qint64 Pull(qint16* out, qint64 maxFrames);

    // Of the frames pulled so far, `unheardFrames` have not been heard yet. The position never goes back.
    void SetUnheard(qint64 unheardFrames);
    // Of the frames pulled so far, these will never be heard. Other than the position of a running sound,
    // which the clock may have carried too far, this is what the device has counted.
    void SetNeverHeard(qint64 neverHeardFrames);
    qint64 PulledFrames() const { return pulledFrames_; }
    qint64 HeardFrames() const { return heardFrames_; }
    qint64 HeardBytes() const { return heardFrames_ * FrameSize(); }
    QList<qint16> PlayedBlock(qint64 count) const { return history_.Before(heardFrames_, count); }
    // Of what was heard since the last call.
    Levels TakeLevels();

    int Channels() const { return channels_; }
    int SampleRateHz() const { return sampleRateHz_; }
    qint64 FrameSize() const { return static_cast<qint64>(sizeof(qint16)) * channels_; }

    BlockQueue queue;
    SoundChain chain;

private:
    PlayedHistory history_;
    qint64 pulledFrames_ = 0;
    qint64 heardFrames_ = 0;
    qint64 levelsTakenFrames_ = 0;
    int sampleRateHz_ = 44100;
    int channels_ = 2;
};

} // namespace kestrune
