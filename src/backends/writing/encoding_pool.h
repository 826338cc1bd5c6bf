// Threads that encode what is written, while the writer goes on.
#pragma once

#include "backends/writing/encoding_pipeline.h"
#include "backends/writing/moving_device.h"

#include <QByteArray>

#include <chrono>
#include <condition_variable>
#include <deque>
#include <memory>
#include <mutex>
#include <thread>
#include <vector>

class QIODevice;

namespace kestrune {

// One output of a pool. Only the pool looks into it.
class EncodingJob {
public:
    EncodingJob();
    ~EncodingJob();
    EncodingJob(const EncodingJob&) = delete;
    EncodingJob& operator=(const EncodingJob&) = delete;

private:
    friend class EncodingPool;

    // Of the thread that holds the job, and of the caller once it is over.
    std::unique_ptr<MovingDevice> device_; // what a job in memory writes to
    std::unique_ptr<EncodingPipeline> pipeline_;

    // Under the pool's lock.
    std::deque<QByteArray> waiting_;
    bool begun_ = false;
    bool ended_ = false;          // no block follows those that wait
    bool held_ = false;           // by a thread
    bool over_ = false;           // finished, failed or dropped
    QIODevice* target_ = nullptr; // where it is to move
    bool hasMoved_ = false;       // or is to
    double movedPart_ = 0;        // of what was in memory when it began to move, 0 to 1
    double neededPart_ = 1;       // of the same
    Outcome outcome_ = Outcome::Ok;
    qint64 takenBlocks_ = 0; // by a thread that encodes
    qint64 encodedBlocks_ = 0;
    qint64 waitingBytes_ = 0;
    qint64 encodedBytes_ = 0;
    std::chrono::nanoseconds spent_{0}; // on encodedBytes_
};

using EncodingJobPtr = std::shared_ptr<EncodingJob>;

// Encodes the blocks of each job in their order, one thread at a job at a time. The preferred job goes first,
// then the one that will take longest by what its blocks took so far. All calls from one thread.
class EncodingPool {
public:
    // `threads` is at least 1.
    explicit EncodingPool(int threads);
    // Blocks that are being encoded are waited for; nothing else is.
    ~EncodingPool();
    EncodingPool(const EncodingPool&) = delete;
    EncodingPool& operator=(const EncodingPool&) = delete;

    // A new job. The pipeline has begun and has its source; its device lives until WaitForEnd has returned or
    // the pool is gone.
    EncodingJobPtr Add(std::unique_ptr<EncodingPipeline> pipeline);
    // A new job whose file is made in memory. The pipeline has not begun.
    EncodingJobPtr AddInMemory(std::unique_ptr<EncodingPipeline> pipeline);

    void Push(const EncodingJobPtr& job, const QByteArray& block);
    // No block follows.
    void End(const EncodingJobPtr& job);
    void Prefer(const EncodingJobPtr& job);
    // For a job in memory, once: what it wrote and will write goes to `target`, which is empty and lives
    // until WaitForEnd or Drop has returned. Returns at once.
    void MoveTo(const EncodingJobPtr& job, QIODevice& target);
    // For a job in memory: gives up all that is not encoded yet. It waits for the block in work, but only if
    // the job was to move.
    void Drop(const EncodingJobPtr& job);

    // Ends a job behind so many blocks. False, and nothing is done, if it went further already.
    bool EndAfter(const EncodingJobPtr& job, qint64 blocks);
    // Ends a job that was told to move, however far it is. Of what it had in memory the first part (0 to 1)
    // still comes to its place; the rest may be missing there.
    void EndHere(const EncodingJobPtr& job, double neededPart);

    // True when the encoder took its format and nothing failed since.
    bool IsUnderWay(const EncodingJobPtr& job);
    // Waits until this part (0 to 1) of what a job had in memory has moved. A failure is told at once.
    Outcome WaitForMove(const EncodingJobPtr& job, double part);
    // Waits until this many blocks are encoded. A failure is told at once.
    Outcome WaitForBlocks(const EncodingJobPtr& job, qint64 blocks);
    // After End: waits until the file is finished.
    Outcome WaitForEnd(const EncodingJobPtr& job);

private:
    EncodingJobPtr Added(std::unique_ptr<EncodingPipeline> pipeline, bool begun);
    void Work();
    EncodingJobPtr Pick() const;
    void RunOnce(std::unique_lock<std::mutex>& lock, EncodingJob& job);
    bool Move(EncodingJob& job, QIODevice& target);
    void Settle(EncodingJob& job, Outcome outcome, bool isOver);

    std::mutex mutex_;
    std::condition_variable wanted_; // there is work, or the end
    std::condition_variable moved_;  // a job came forward
    std::vector<EncodingJobPtr> jobs_;
    EncodingJobPtr preferred_;
    bool stopping_ = false;
    std::vector<std::thread> threads_; // last: they use all above
};

} // namespace kestrune
