#include "backends/codecs/encoding_output.h"

#include "backends/codecs/encoder_factory.h"

namespace kestrune {

EncodingOutput::EncodingOutput() = default;

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
    return Outcome::Ok;
}

void EncodingOutput::SetSource(const SampleShape& source) {
    if (pipeline_) {
        pipeline_->SetSource(source);
    }
}

Outcome EncodingOutput::Write(const QByteArray& block) {
    return pipeline_ ? pipeline_->Write(block) : Outcome::NotOpen;
}

Outcome EncodingOutput::Close() {
    if (!pipeline_) {
        return Outcome::NotOpen;
    }
    const Outcome outcome = pipeline_->Finish();
    pipeline_.reset();
    return outcome == Outcome::Ok ? file_.Commit() : outcome;
}

} // namespace kestrune
