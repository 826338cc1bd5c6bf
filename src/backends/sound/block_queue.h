// The blocks that wait to be played, and the question whether more will come.
#pragma once

#include <QByteArray>
#include <QtGlobal>
#include <deque>

namespace kestrune {

// Not thread-safe; used by one thread at a time.
class BlockQueue {
public:
    // Back to empty. `isNewRun` false is a clear within a run: the next block then asks for nothing.
    void Reset(bool isNewRun);
    // Whole frames of `frameSize` bytes; what is left over is dropped.
    void Push(const QByteArray& block, qint64 frameSize);
    // Copies up to `maxBytes` to `out` and returns how many there were.
    qint64 Read(char* out, qint64 maxBytes);
    bool IsEmpty() const { return blocks_.empty(); }

    // Each call takes one request for a block that is due, until none is left.
    bool TakeFirstRequest();
    bool TakeEndedBlock();

    // A request was sent; exactly one NoteAnswer follows it, unless Reset comes first.
    void NoteRequest() { ++openRequests_; }
    // The handler of the oldest open request has returned; `wroteBlock` says whether it pushed anything.
    void NoteAnswer(bool wroteBlock);
    // No block is left and the last request was answered with none. A request that still waits for its answer
    // keeps this false, however long it takes.
    bool IsExhausted() const;

private:
    std::deque<QByteArray> blocks_;
    qint64 frontOffsetBytes_ = 0;
    int endedBlocks_ = 0;
    int openRequests_ = 0;
    bool firstRequestDue_ = false;
    bool hadBlock_ = false;
    bool lastAnswerWasNone_ = false;
};

} // namespace kestrune
