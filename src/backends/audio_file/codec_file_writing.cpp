// The calls of an audio file that write.
#include "backends/audio_file/codec_file.h"

#include "app/failure_log.h"
#include "backends/reading/sample_source.h"

#include <QThread>

#include <algorithm>

namespace kestrune {

namespace {

constexpr int mostThreads = 13; // more files than that are never under way
// Of the samples that a reader keeps.
constexpr qint64 mostKeptBytes = Q_INT64_C(256) << 20;
// Of the samples and the files encoded ahead.
constexpr qint64 mostAheadBytes = Q_INT64_C(256) << 20;

} // namespace

void CodecFile::SetFlag(qint32 value) {
    wholeFiles_ = value == wholeFiles || value == wholeFilesAgain;
    if (wholeFiles_) {
        input_.ReadAhead(value == wholeFilesAgain ? mostKeptBytes : 0);
    } else {
        input_.ReadAtOnce();
    }
}

// Only an object that writes gets threads.
EncodingPool* CodecFile::Pool() {
    if (wholeFiles_ && !pool_) {
        pool_ = std::make_unique<EncodingPool>(std::clamp(QThread::idealThreadCount(), 1, mostThreads));
        ahead_ = std::make_unique<AheadOutputs>(*pool_, mostAheadBytes);
    }
    return wholeFiles_ ? pool_.get() : nullptr;
}

Outcome CodecFile::CloseOutput() {
    if (!output_) {
        return Outcome::NotOpen;
    }
    if (startedAhead_) {
        ahead_->EndFeed();
    }
    feedsAhead_ = false;
    startedAhead_ = false;
    const Outcome outcome = output_->Close();
    output_.reset();
    sourceShape_ = {};
    if (outcome != Outcome::Ok) {
        qCWarning(logCodecs) << "a file could not be finished, outcome" << static_cast<int>(outcome);
    }
    return outcome;
}

Outcome CodecFile::Open(EncodingOutput& output, const QString& file, const OutputFormat& format) {
    if (Pool() != nullptr) {
        if (const std::optional<AheadOutput> ahead = ahead_->Take(file, format)) {
            return output.OpenAhead(file, format, *ahead);
        }
    }
    return output.Open(file, format);
}

Outcome CodecFile::Create(const QString& file, qint32 /*first*/) {
    input_.Close();
    CloseOutput();
    const std::optional<OutputFormat> format = FormatFor(file);
    auto output = std::make_unique<EncodingOutput>(Pool());
    const Outcome outcome = format ? Open(*output, file, *format) : Outcome::NotSupported;
    if (outcome != Outcome::Ok) {
        qCWarning(logCodecs) << "cannot write" << file << "outcome" << static_cast<int>(outcome);
        return outcome;
    }
    output_ = std::move(output);
    output_->SetSource(sourceShape_);
    feedsAhead_ = Pool() != nullptr && ahead_->AnyExpected();
    return Outcome::Ok;
}

void CodecFile::SetSourceFormat(qint32 waveFormat, qint32 channels) {
    sourceShape_ = {waveFormat, channels};
    if (output_) {
        output_->SetSource(sourceShape_);
    }
}

Outcome CodecFile::WriteBlock(const QByteArray& block) {
    if (!output_) {
        return Outcome::NotOpen;
    }
    if (feedsAhead_ && !startedAhead_) {
        ahead_->Start(sourceShape_);
        startedAhead_ = true;
    }
    if (startedAhead_) {
        ahead_->Feed(block);
    }
    return output_->Write(block);
}

void CodecFile::ExpectOutput(const QString& file) {
    const std::optional<OutputFormat> format = FormatFor(file);
    if (Pool() != nullptr && format) {
        ahead_->Expect(file, *format);
    }
}

void CodecFile::ForgetExpectedOutputs() {
    feedsAhead_ = false;
    startedAhead_ = false;
    if (ahead_) {
        ahead_->Forget();
    }
}

} // namespace kestrune
