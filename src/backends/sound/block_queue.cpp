#include "backends/sound/block_queue.h"

#include <algorithm>
#include <cstring>
#include <utility>

namespace kestrune {

void BlockQueue::Reset(bool isNewRun) {
    blocks.clear();
    frontOffsetBytes = 0;
    endedBlocks = 0;
    openRequests = 0;
    firstRequestDue = false;
    hadBlock = !isNewRun;
    lastAnswerWasNone = false;
}

void BlockQueue::Push(const QByteArray& block, qint64 frameSize) {
    const qint64 wholeBytes = block.size() / frameSize * frameSize;
    if (wholeBytes == 0) {
        return;
    }
    blocks.push_back(wholeBytes == block.size() ? block : block.left(wholeBytes));
    lastAnswerWasNone = false;
    if (!hadBlock) {
        hadBlock = true;
        firstRequestDue = true;
    }
}

qint64 BlockQueue::Read(char* out, qint64 maxBytes) {
    qint64 doneBytes = 0;
    while (doneBytes < maxBytes && !blocks.empty()) {
        const QByteArray& front = blocks.front();
        const qint64 stepBytes = std::min<qint64>(maxBytes - doneBytes, front.size() - frontOffsetBytes);
        std::memcpy(out + doneBytes, front.constData() + frontOffsetBytes, static_cast<size_t>(stepBytes));
        doneBytes += stepBytes;
        frontOffsetBytes += stepBytes;
        if (frontOffsetBytes == front.size()) {
            blocks.pop_front();
            frontOffsetBytes = 0;
            ++endedBlocks;
        }
    }
    return doneBytes;
}

bool BlockQueue::TakeFirstRequest() {
    return std::exchange(firstRequestDue, false);
}

bool BlockQueue::TakeEndedBlock() {
    if (endedBlocks == 0) {
        return false;
    }
    --endedBlocks;
    return true;
}

void BlockQueue::NoteAnswer(bool wroteBlock) {
    openRequests = std::max(0, openRequests - 1);
    lastAnswerWasNone = !wroteBlock;
}

bool BlockQueue::IsExhausted() const {
    return blocks.empty() && endedBlocks == 0 && openRequests == 0 && lastAnswerWasNone;
}

} // namespace kestrune
