// A file decoded by a thread of its own, in blocks of one size.
#pragma once

#include "backends/reading/sample_source.h"

#include <QByteArray>

#include <condition_variable>
#include <deque>
#include <memory>
#include <mutex>
#include <optional>
#include <thread>

namespace kestrune {

// Decodes from the first sample on. Up to a bound all blocks are kept; of a longer file only a few ahead of
// the reader. One thread calls.
class AheadDecoder {
public:
    // `source` stands at its first frame. `blockBytes` is above 0 and whole frames.
    AheadDecoder(std::unique_ptr<SampleSource> source, qint64 blockBytes, qint64 mostKeptBytes);
    // Waits for the block that is being decoded.
    ~AheadDecoder();
    AheadDecoder(const AheadDecoder&) = delete;
    AheadDecoder& operator=(const AheadDecoder&) = delete;

    qint64 BlockBytes() const { return blockBytes_; }
    // True for a block that is there or is the next to be decoded.
    bool Has(qint64 number);
    // Waits until it is decoded. The memory is shared with all who ask. Shorter only at the end, empty behind
    // it. Only of blocks that Has tells.
    QByteArray Block(qint64 number);
    // Bytes of the whole file once its end was met.
    std::optional<qint64> TotalBytes();
    // All blocks are there.
    bool IsWhole();
    // Stops decoding and gives the source back, which stands anywhere; null the second time. What was decoded
    // stays.
    std::unique_ptr<SampleSource> TakeSource();

private:
    void Decode();
    bool Add(const QByteArray& block);
    void Stop();

    const qint64 blockBytes_;
    const qint64 mostKeptBytes_;
    const int channels_;
    std::unique_ptr<SampleSource> source_; // of the thread while it runs

    std::mutex mutex_; // of all that follows but the thread
    std::condition_variable moved_;
    std::deque<QByteArray> blocks_;
    qint64 firstNumber_ = 0; // of blocks_
    qint64 keptBytes_ = 0;   // of blocks_
    qint64 nextNumber_ = 0;  // behind the last that was asked for
    bool keepsAll_;
    bool ended_ = false;
    bool stopping_ = false;
    qint64 totalBytes_ = 0;
    std::thread thread_; // last: it uses all above
};

} // namespace kestrune
