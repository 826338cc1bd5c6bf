#include "backends/writing/ahead_outputs.h"

#include "backends/encoders/encoder_factory.h"

#include <algorithm>

namespace kestrune {

namespace {

// Of formats whose bit rate is not known before they are encoded.
constexpr int unknownBitrateBps = 320000;
constexpr int bitsPerSample = 16;

} // namespace

AheadOutputs::AheadOutputs(EncodingPool& pool, qint64 mostBytes)
    : pool_(pool), mostBytes_(static_cast<double>(mostBytes)) {}

AheadOutputs::~AheadOutputs() {
    DropStarted();
}

void AheadOutputs::Expect(const QString& path, const OutputFormat& format) {
    expected_.push_back({path, format, nullptr});
}

void AheadOutputs::Forget() {
    expected_.clear();
    DropStarted();
}

void AheadOutputs::DropStarted() {
    for (const Output& output : started_) {
        pool_.Drop(output.job);
    }
    started_.clear();
    blocks_.reset();
}

void AheadOutputs::Start(const SampleShape& source) {
    DropStarted();
    source_ = source;
    blocks_ = std::make_shared<Blocks>();
    blockBytes_ = 0;
    for (Output& output : expected_) {
        std::unique_ptr<SampleEncoder> encoder = MakeEncoder(output.format);
        if (encoder) {
            auto pipeline = std::make_unique<EncodingPipeline>(std::move(encoder));
            pipeline->SetSource(source);
            output.job = pool_.AddInMemory(std::move(pipeline));
            started_.push_back(output);
        }
    }
    expected_.clear();
}

double AheadOutputs::Bytes() const {
    const double sourceBps = static_cast<double>(source_.rateHz) * source_.channels * bitsPerSample;
    double ratio = 1;
    for (const Output& output : started_) {
        const int bitrateBps = BitrateOf(output.format);
        const double bps = bitrateBps > 0 ? bitrateBps : unknownBitrateBps;
        // Without the shape of the source, an output is taken to be as long as its samples.
        ratio += sourceBps > 0 ? bps / sourceBps : 1.0;
    }
    return blockBytes_ * ratio;
}

void AheadOutputs::GiveUpWhatIsTooMuch() {
    while (!started_.empty() && Bytes() > mostBytes_) {
        const auto largest =
            std::max_element(started_.begin(), started_.end(), [](const Output& one, const Output& other) {
                return BitrateOf(one.format) < BitrateOf(other.format);
            });
        pool_.Drop(largest->job);
        started_.erase(largest);
    }
}

void AheadOutputs::Feed(const QByteArray& block) {
    if (!blocks_) {
        return;
    }
    blockBytes_ += static_cast<double>(block.size());
    GiveUpWhatIsTooMuch();
    if (started_.empty()) {
        blocks_.reset();
        return;
    }
    blocks_->push_back(block);
    for (const Output& output : started_) {
        pool_.Push(output.job, block);
    }
}

void AheadOutputs::EndFeed() {
    for (const Output& output : started_) {
        pool_.End(output.job);
    }
}

std::optional<AheadOutput> AheadOutputs::Take(const QString& path, const OutputFormat& format) {
    const auto isThis = [&path](const Output& output) { return output.path == path; };
    std::erase_if(expected_, isThis);
    const auto found = std::find_if(started_.begin(), started_.end(), isThis);
    if (found == started_.end()) {
        return {};
    }
    const Output output = *found;
    started_.erase(found);
    AheadOutput ahead{output.job, blocks_, source_};
    if (started_.empty()) {
        blocks_.reset();
    }
    if (!(output.format == format) || !pool_.IsUnderWay(output.job)) {
        pool_.Drop(output.job);
        return {};
    }
    return ahead;
}

} // namespace kestrune
