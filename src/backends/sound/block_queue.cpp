#include "backends/sound/block_queue.h"

#include <algorithm>
#include <cstring>
#include <utility>

namespace kestrune {

void BlockQueue::Reset(bool isNewRun) {
    blocks_.clear();
    frontOffsetBytes_ = 0;
    endedBlocks_ = 0;
    openRequests_ = 0;
    firstRequestDue_ = false;
    hadBlock_ = !isNewRun;
    lastAnswerWasNone_ = false;
}

void BlockQueue::Push(const QByteArray& block, qint64 frameSize) {
    const qint64 wholeBytes = block.size() / frameSize * frameSize;
    if (wholeBytes == 0) {
        return;
    }
    blocks_.push_back(wholeBytes == block.size() ? block : block.left(wholeBytes));
    lastAnswerWasNone_ = false;
    if (!hadBlock_) {
        hadBlock_ = true;
        firstRequestDue_ = true;
    }
}

qint64 BlockQueue::Read(char* out, qint64 maxBytes) {
    qint64 doneBytes = 0;
    while (doneBytes < maxBytes && !blocks_.empty()) {
        const QByteArray& front = blocks_.front();
        const qint64 stepBytes = std::min<qint64>(maxBytes - doneBytes, front.size() - frontOffsetBytes_);
        std::memcpy(out + doneBytes, front.constData() + frontOffsetBytes_, static_cast<size_t>(stepBytes));
        doneBytes += stepBytes;
        frontOffsetBytes_ += stepBytes;
        if (frontOffsetBytes_ == front.size()) {
            blocks_.pop_front();
            frontOffsetBytes_ = 0;
            ++endedBlocks_;
        }
    }
    return doneBytes;
}

bool BlockQueue::TakeFirstRequest() {
    return std::exchange(firstRequestDue_, false);
}

bool BlockQueue::TakeEndedBlock() {
    if (endedBlocks_ == 0) {
        return false;
    }
    --endedBlocks_;
    return true;
}

void BlockQueue::NoteAnswer(bool wroteBlock) {
    openRequests_ = std::max(0, openRequests_ - 1);
    lastAnswerWasNone_ = !wroteBlock;
}

bool BlockQueue::IsExhausted() const {
    return blocks_.empty() && endedBlocks_ == 0 && openRequests_ == 0 && lastAnswerWasNone_;
}

} // namespace kestrune
