#include "backends/writing/encoding_output.h"

#include "backends/encoders/encoded_cut.h"
#include "backends/encoders/encoder_factory.h"
#include "components/pcm.h"

#include <QIODevice>

#include <algorithm>

namespace kestrune {

namespace {

// Blocks that may wait for their encoder. More would make Close wait longer, fewer would make the encoder
// wait whenever the writer is late.
constexpr qint64 blocksBehind = 4;
// Of more, which are there once all is encoded anew, each call waits for so many.
constexpr qint64 blocksAtOnce = 3;

bool AreEqual(const QByteArray& one, const QByteArray& other) {
    return one.size() == other.size() && (one.constData() == other.constData() || one == other);
}

} // namespace

EncodingOutput::EncodingOutput(EncodingPool* pool) : pool_(pool), mayBeBehind_(blocksBehind) {}

EncodingOutput::~EncodingOutput() {
    Close();
}

Outcome EncodingOutput::Open(const QString& path, const OutputFormat& format) {
    std::unique_ptr<SampleEncoder> encoder = MakeEncoder(format);
    if (!encoder) {
        return Outcome::NotSupported;
    }
    Outcome outcome = file_.Open(path);
    if (outcome != Outcome::Ok) {
        return outcome;
    }
    auto pipeline = std::make_unique<EncodingPipeline>(std::move(encoder));
    outcome = pipeline->Begin(file_.Device());
    if (outcome != Outcome::Ok) {
        pipeline.reset();
        file_.Discard();
        return outcome;
    }
    pipeline_ = std::move(pipeline);
    format_ = format;
    open_ = true;
    return Outcome::Ok;
}

Outcome EncodingOutput::OpenAhead(const QString& path, const OutputFormat& format, const AheadOutput& ahead) {
    const Outcome outcome = file_.Open(path);
    if (outcome != Outcome::Ok) {
        pool_->Drop(ahead.job);
        return outcome;
    }
    ahead_ = ahead;
    format_ = format;
    open_ = true;
    pool_->Prefer(ahead.job);
    pool_->MoveTo(ahead.job, file_.Device());
    return Outcome::Ok;
}

void EncodingOutput::SetSource(const SampleShape& source) {
    if (!written_) {
        source_ = source;
    }
}

bool EncodingOutput::IsNextAhead(const QByteArray& block) const {
    const Blocks& blocks = *ahead_->blocks;
    const auto next = static_cast<size_t>(blocks_);
    return source_ == ahead_->source && next < blocks.size() && AreEqual(blocks[next], block);
}

Outcome EncodingOutput::Write(const QByteArray& block) {
    if (!open_) {
        return Outcome::NotOpen;
    }
    written_ = true;
    return ahead_ ? WriteAhead(block) : WriteInPool(block);
}

Outcome EncodingOutput::WriteAhead(const QByteArray& block) {
    if (!IsNextAhead(block)) {
        const Outcome outcome = EncodeAnew();
        return outcome == Outcome::Ok ? WriteInPool(block) : outcome;
    }
    ++blocks_;
    // The file comes as the writer goes on: its end would else be waited for all at once.
    const qint64 wanted = blocks_ - blocksBehind;
    const double part = static_cast<double>(wanted) / static_cast<double>(ahead_->blocks->size());
    Outcome outcome = pool_->WaitForMove(ahead_->job, part);
    if (outcome == Outcome::Ok) {
        outcome = pool_->WaitForBlocks(ahead_->job, wanted);
    }
    // What failed would fail again: the place is full, or the encoder does not take these samples.
    return outcome;
}

Outcome EncodingOutput::WriteInPool(const QByteArray& block) {
    if (outcome_ != Outcome::Ok) {
        return outcome_;
    }
    if (pipeline_) {
        pipeline_->SetSource(source_);
        if (!pool_) {
            return pipeline_->Write(block);
        }
        job_ = pool_->Add(std::move(pipeline_));
        pool_->Prefer(job_);
    }
    pool_->Push(job_, block);
    ++blocks_;
    mayBeBehind_ = std::max(mayBeBehind_ + 1 - blocksAtOnce, blocksBehind);
    return pool_->WaitForBlocks(job_, blocks_ - mayBeBehind_);
}

Outcome EncodingOutput::EncodeAnew() {
    const std::shared_ptr<const Blocks> given = ahead_->blocks;
    const qint64 givenBlocks = blocks_;
    pool_->Drop(ahead_->job);
    ahead_.reset();
    blocks_ = 0;
    pipeline_ = std::make_unique<EncodingPipeline>(MakeEncoder(format_));
    outcome_ = file_.Clear() ? pipeline_->Begin(file_.Device()) : Outcome::WriteFailed;
    mayBeBehind_ = blocksBehind + givenBlocks * blocksAtOnce;
    for (qint64 block = 0; block < givenBlocks && outcome_ == Outcome::Ok; ++block) {
        outcome_ = WriteInPool((*given)[static_cast<size_t>(block)]);
    }
    return outcome_;
}

Outcome EncodingOutput::CloseAhead() {
    if (blocks_ == 0 || source_ != ahead_->source) {
        return CloseAnew();
    }
    // A file that was stopped ends where its writer stands. If its encoder is further already, encoding anew
    // up to there would take as long as it took to come there.
    const bool isWhole = blocks_ == static_cast<qint64>(ahead_->blocks->size());
    const bool endsThere = isWhole || pool_->EndAfter(ahead_->job, blocks_);
    if (!endsThere) {
        pool_->EndHere(ahead_->job, PartWritten());
    }
    const Outcome outcome = pool_->WaitForEnd(ahead_->job);
    return outcome == Outcome::Ok && !endsThere ? Cut() : outcome;
}

Outcome EncodingOutput::CloseAnew() {
    const Outcome outcome = EncodeAnew();
    return outcome == Outcome::Ok ? CloseInPool() : outcome;
}

Outcome EncodingOutput::Cut() {
    const std::optional<qint64> bytes = CutEncoded(file_.Device(), format_, FramesWritten());
    return bytes && file_.Shorten(*bytes) ? Outcome::Ok : CloseAnew();
}

// Of what was in memory when the file was opened, at most; with what the encoder holds back, and room for
// headers. Where the bytes of a second are not always the same, all of it.
double EncodingOutput::PartWritten() const {
    const bool varies =
        format_.kind == FormatKind::Vorbis || (format_.kind == FormatKind::Mp3 && format_.mp3.vbrMethod >= 0);
    const double all = static_cast<double>(ahead_->blocks->size());
    return varies ? 1 : static_cast<double>(blocks_ + blocksBehind) / all;
}

// As the file counts them.
qint64 EncodingOutput::FramesWritten() const {
    qint64 bytes = 0;
    for (qint64 block = 0; block < blocks_; ++block) {
        bytes += (*ahead_->blocks)[static_cast<size_t>(block)].size();
    }
    const bool isShapeTold = source_.channels == 1 || source_.channels == 2;
    const int rateHz = source_.rateHz > 0 ? source_.rateHz : format_.rateHz;
    const qint64 frames = bytes / frameBytes(isShapeTold ? source_.channels : format_.channels);
    return (frames * format_.rateHz + rateHz / 2) / rateHz;
}

Outcome EncodingOutput::CloseInPool() {
    if (outcome_ != Outcome::Ok) {
        return outcome_;
    }
    if (pipeline_) {
        pipeline_->SetSource(source_);
        return pipeline_->Finish();
    }
    pool_->End(job_);
    return pool_->WaitForEnd(job_);
}

Outcome EncodingOutput::Close() {
    if (!open_) {
        return Outcome::NotOpen;
    }
    open_ = false;
    const Outcome outcome = ahead_ ? CloseAhead() : CloseInPool();
    if (pool_) {
        pool_->Prefer(nullptr);
    }
    ahead_.reset();
    job_.reset();
    pipeline_.reset();
    return outcome == Outcome::Ok ? file_.Commit() : outcome;
}

} // namespace kestrune
