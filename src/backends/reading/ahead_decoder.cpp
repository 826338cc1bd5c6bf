#include "backends/reading/ahead_decoder.h"

#include "components/pcm.h"

namespace kestrune {

namespace {

// Of a file that is not kept.
constexpr qint64 mostAheadBytes = Q_INT64_C(8) << 20;

} // namespace

AheadDecoder::AheadDecoder(std::unique_ptr<SampleSource> source, qint64 blockBytes, qint64 mostKeptBytes)
    : blockBytes_(blockBytes),
      mostKeptBytes_(mostKeptBytes),
      channels_(source->Info().channels),
      source_(std::move(source)),
      keepsAll_(source_->LengthFrames() * frameBytes(channels_) <= mostKeptBytes),
      thread_([this] { Decode(); }) {}

AheadDecoder::~AheadDecoder() {
    Stop();
}

void AheadDecoder::Stop() {
    {
        const std::lock_guard lock(mutex_);
        stopping_ = true;
    }
    moved_.notify_all();
    if (thread_.joinable()) {
        thread_.join();
    }
}

void AheadDecoder::Decode() {
    bool more = true;
    while (more) {
        QByteArray block(blockBytes_, Qt::Uninitialized);
        const qint64 frame = frameBytes(channels_);
        const qint64 frames = source_->Read(reinterpret_cast<qint16*>(block.data()), blockBytes_ / frame);
        block.resize(frames * frame);
        more = Add(block);
    }
}

// False when nothing more is wanted.
bool AheadDecoder::Add(const QByteArray& block) {
    std::unique_lock lock(mutex_);
    if (!block.isEmpty()) {
        blocks_.push_back(block);
        keptBytes_ += block.size();
        totalBytes_ += block.size();
    }
    ended_ = block.size() < blockBytes_;
    keepsAll_ = keepsAll_ && keptBytes_ <= mostKeptBytes_;
    moved_.notify_all();
    // A reader that keeps up is never waited for, however large its blocks are.
    moved_.wait(lock, [this] {
        return stopping_ || keepsAll_ || keptBytes_ < mostAheadBytes ||
               nextNumber_ >= firstNumber_ + static_cast<qint64>(blocks_.size());
    });
    return !ended_ && !stopping_;
}

bool AheadDecoder::Has(qint64 number) {
    const std::lock_guard lock(mutex_);
    const qint64 behindLast = firstNumber_ + static_cast<qint64>(blocks_.size());
    return number >= firstNumber_ && number <= behindLast;
}

QByteArray AheadDecoder::Block(qint64 number) {
    std::unique_lock lock(mutex_);
    nextNumber_ = number + 1;
    if (!keepsAll_) {
        while (!blocks_.empty() && firstNumber_ < number) {
            keptBytes_ -= blocks_.front().size();
            blocks_.pop_front();
            ++firstNumber_;
        }
    }
    moved_.notify_all();
    moved_.wait(lock, [&] { return ended_ || number < firstNumber_ + static_cast<qint64>(blocks_.size()); });
    const qint64 index = number - firstNumber_;
    return index < static_cast<qint64>(blocks_.size()) ? blocks_[static_cast<size_t>(index)] : QByteArray();
}

std::optional<qint64> AheadDecoder::TotalBytes() {
    const std::lock_guard lock(mutex_);
    return ended_ ? std::optional(totalBytes_) : std::nullopt;
}

bool AheadDecoder::IsWhole() {
    const std::lock_guard lock(mutex_);
    return ended_ && keepsAll_;
}

std::unique_ptr<SampleSource> AheadDecoder::TakeSource() {
    Stop();
    return std::move(source_);
}

} // namespace kestrune
