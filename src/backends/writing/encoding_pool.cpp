#include "backends/writing/encoding_pool.h"

#include <algorithm>
#include <utility>

namespace kestrune {

namespace {

using Clock = std::chrono::steady_clock;

} // namespace

EncodingJob::EncodingJob() = default;
EncodingJob::~EncodingJob() = default;

EncodingPool::EncodingPool(int threads) {
    for (int thread = 0; thread < threads; ++thread) {
        threads_.emplace_back([this] { Work(); });
    }
}

EncodingPool::~EncodingPool() {
    {
        const std::lock_guard lock(mutex_);
        stopping_ = true;
    }
    wanted_.notify_all();
    for (std::thread& thread : threads_) {
        thread.join();
    }
}

EncodingJobPtr EncodingPool::Added(std::unique_ptr<EncodingPipeline> pipeline, bool begun) {
    auto job = std::make_shared<EncodingJob>();
    job->pipeline_ = std::move(pipeline);
    job->begun_ = begun;
    if (!begun) {
        job->device_ = std::make_unique<MovingDevice>();
    }
    {
        const std::lock_guard lock(mutex_);
        jobs_.push_back(job);
    }
    wanted_.notify_one();
    return job;
}

EncodingJobPtr EncodingPool::Add(std::unique_ptr<EncodingPipeline> pipeline) {
    return Added(std::move(pipeline), true);
}

EncodingJobPtr EncodingPool::AddInMemory(std::unique_ptr<EncodingPipeline> pipeline) {
    return Added(std::move(pipeline), false);
}

void EncodingPool::Push(const EncodingJobPtr& job, const QByteArray& block) {
    {
        const std::lock_guard lock(mutex_);
        if (job->over_) {
            return;
        }
        job->waiting_.push_back(block);
        job->waitingBytes_ += block.size();
    }
    wanted_.notify_one();
}

void EncodingPool::End(const EncodingJobPtr& job) {
    {
        const std::lock_guard lock(mutex_);
        job->ended_ = true;
    }
    wanted_.notify_one();
}

bool EncodingPool::EndAfter(const EncodingJobPtr& job, qint64 blocks) {
    {
        const std::lock_guard lock(mutex_);
        // The thread that holds a job may be at a block, but also at its move.
        if (job->over_ || job->takenBlocks_ > blocks) {
            return false;
        }
        while (job->takenBlocks_ + static_cast<qint64>(job->waiting_.size()) > blocks) {
            job->waitingBytes_ -= job->waiting_.back().size();
            job->waiting_.pop_back();
        }
        job->ended_ = true;
    }
    wanted_.notify_one();
    return true;
}

void EncodingPool::EndHere(const EncodingJobPtr& job, double neededPart) {
    // Freed outside the lock, which the threads wait for.
    std::deque<QByteArray> waiting;
    {
        const std::lock_guard lock(mutex_);
        waiting.swap(job->waiting_);
        job->waitingBytes_ = 0;
        job->ended_ = true;
        job->neededPart_ = neededPart;
    }
    wanted_.notify_one();
}

void EncodingPool::Prefer(const EncodingJobPtr& job) {
    const std::lock_guard lock(mutex_);
    preferred_ = job;
}

void EncodingPool::MoveTo(const EncodingJobPtr& job, QIODevice& target) {
    {
        const std::lock_guard lock(mutex_);
        job->target_ = &target;
        job->hasMoved_ = true;
        // A finished job was let go.
        if (std::find(jobs_.begin(), jobs_.end(), job) == jobs_.end()) {
            jobs_.push_back(job);
        }
    }
    wanted_.notify_one();
}

void EncodingPool::Drop(const EncodingJobPtr& job) {
    // Freed outside the lock, which the threads wait for.
    std::deque<QByteArray> waiting;
    std::unique_lock lock(mutex_);
    job->over_ = true;
    job->outcome_ = Outcome::NotOpen;
    job->target_ = nullptr;
    waiting.swap(job->waiting_);
    std::erase(jobs_, job);
    if (preferred_ == job) {
        preferred_.reset();
    }
    if (job->hasMoved_) {
        moved_.wait(lock, [&] { return !job->held_; });
        job->pipeline_.reset();
    }
}

bool EncodingPool::IsUnderWay(const EncodingJobPtr& job) {
    const std::lock_guard lock(mutex_);
    return job->begun_ && job->outcome_ == Outcome::Ok;
}

Outcome EncodingPool::WaitForBlocks(const EncodingJobPtr& job, qint64 blocks) {
    std::unique_lock lock(mutex_);
    moved_.wait(lock, [&] { return job->over_ || job->encodedBlocks_ >= blocks; });
    return job->outcome_;
}

Outcome EncodingPool::WaitForMove(const EncodingJobPtr& job, double part) {
    std::unique_lock lock(mutex_);
    moved_.wait(lock, [&] { return job->outcome_ != Outcome::Ok || job->movedPart_ >= part; });
    return job->outcome_;
}

Outcome EncodingPool::WaitForEnd(const EncodingJobPtr& job) {
    std::unique_lock lock(mutex_);
    moved_.wait(lock, [&] { return job->over_ && !job->held_ && job->target_ == nullptr; });
    return job->outcome_;
}

EncodingJobPtr EncodingPool::Pick() const {
    const auto canRun = [](const EncodingJobPtr& job) {
        if (!job || job->held_) {
            return false;
        }
        const bool hasBlocks = !job->begun_ || !job->waiting_.empty() || job->ended_;
        return job->target_ != nullptr || (!job->over_ && hasBlocks);
    };
    if (canRun(preferred_)) {
        return preferred_;
    }
    // Seconds, up to a factor, that what waits will take. A job that was not tried yet goes first.
    const auto remaining = [](const EncodingJob& job) {
        if (job.encodedBytes_ == 0) {
            return 1e30;
        }
        return static_cast<double>(job.spent_.count()) / static_cast<double>(job.encodedBytes_) *
               static_cast<double>(job.waitingBytes_);
    };
    EncodingJobPtr longest;
    for (const EncodingJobPtr& job : jobs_) {
        if (canRun(job) && (!longest || remaining(*job) > remaining(*longest))) {
            longest = job;
        }
    }
    return longest;
}

void EncodingPool::Work() {
    std::unique_lock lock(mutex_);
    while (!stopping_) {
        const EncodingJobPtr job = Pick();
        if (!job) {
            wanted_.wait(lock);
            continue;
        }
        RunOnce(lock, *job);
        if (job->over_ && job->target_ == nullptr) {
            std::erase(jobs_, job);
        }
    }
}

// What a step came to.
void EncodingPool::Settle(EncodingJob& job, Outcome outcome, bool isOver) {
    job.held_ = false;
    job.begun_ = true;
    job.over_ = job.over_ || isOver || outcome != Outcome::Ok;
    if (outcome != Outcome::Ok) {
        job.outcome_ = outcome;
        job.target_ = nullptr;
        job.waiting_.clear();
    }
    moved_.notify_all();
    // A block that came meanwhile woke a thread that could not take this job.
    wanted_.notify_one();
}

// On a thread that holds the job, without the lock.
bool EncodingPool::Move(EncodingJob& job, QIODevice& target) {
    const auto all = static_cast<double>(std::max<qint64>(job.device_->size(), 1));
    const bool moved = job.device_->MoveTo(target, [&](qint64 copiedBytes) {
        const std::lock_guard lock(mutex_);
        job.movedPart_ = static_cast<double>(copiedBytes) / all;
        moved_.notify_all();
        return job.movedPart_ < job.neededPart_;
    });
    const std::lock_guard lock(mutex_);
    // There may have been nothing to copy. What failed is told by the outcome, and not taken for moved until
    // then.
    job.movedPart_ = moved ? 1 : job.movedPart_;
    return moved;
}

// One step of a job: its begin, its move, a block, or its end. The lock is given up meanwhile.
void EncodingPool::RunOnce(std::unique_lock<std::mutex>& lock, EncodingJob& job) {
    job.held_ = true;
    QIODevice* const target = job.begun_ ? std::exchange(job.target_, nullptr) : nullptr;
    const bool begins = !job.begun_;
    const bool encodes = target == nullptr && !begins && !job.waiting_.empty();
    const bool finishes = target == nullptr && !begins && !encodes;
    QByteArray block;
    if (encodes) {
        block = std::move(job.waiting_.front());
        job.waiting_.pop_front();
        job.waitingBytes_ -= block.size();
        ++job.takenBlocks_;
    }
    const qint64 bytes = block.size();
    lock.unlock();
    const auto start = Clock::now();
    Outcome outcome = Outcome::Ok;
    if (target != nullptr) {
        outcome = Move(job, *target) ? Outcome::Ok : Outcome::WriteFailed;
    } else if (begins) {
        outcome = job.pipeline_->Begin(*job.device_);
    } else if (encodes) {
        outcome = job.pipeline_->Write(block);
    } else {
        outcome = job.pipeline_->Finish();
    }
    block.clear();
    if (outcome != Outcome::Ok || finishes) {
        job.pipeline_.reset();
    }
    const auto spent = Clock::now() - start;
    lock.lock();
    if (encodes) {
        ++job.encodedBlocks_;
        job.encodedBytes_ += bytes;
        job.spent_ += spent;
    }
    Settle(job, outcome, finishes);
}

} // namespace kestrune
