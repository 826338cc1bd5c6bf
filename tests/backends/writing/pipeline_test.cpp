#include "backends/writing/encoding_pipeline.h"

#include "support/test_files.h"

#include <gtest/gtest.h>

#include <QBuffer>

#include <algorithm>
#include <cmath>
#include <memory>

namespace kestrune {

namespace {

// What an encoder was given.
struct Given {
    std::vector<qint16> integers;
    std::vector<float> floats;
    int finishes = 0;
    int writes = 0;
};

class ListeningEncoder : public SampleEncoder {
public:
    ListeningEncoder(EncoderInput input, Given& given, int failingWrite = -1)
        : input_(input), given_(given), failingWrite_(failingWrite) {}

    EncoderInput Input() const override { return input_; }
    Outcome Begin(QIODevice& /*out*/) override { return Outcome::Ok; }
    Outcome WriteIntegers(const qint16* samples, qint64 frames) override {
        given_.integers.insert(given_.integers.end(), samples, samples + frames * input_.channels);
        return Wrote();
    }
    Outcome WriteFloats(const float* samples, qint64 frames) override {
        given_.floats.insert(given_.floats.end(), samples, samples + frames * input_.channels);
        return Wrote();
    }
    Outcome Finish() override {
        ++given_.finishes;
        return Outcome::Ok;
    }

private:
    Outcome Wrote() { return given_.writes++ == failingWrite_ ? Outcome::WriteFailed : Outcome::Ok; }

    EncoderInput input_;
    Given& given_;
    int failingWrite_;
};

class Pipeline : public testing::Test {
protected:
    Given given_;
    QBuffer out_;

    std::unique_ptr<EncodingPipeline> Begun(const EncoderInput& input, const SampleShape& source,
                                            int failingWrite = -1) {
        auto pipeline = std::make_unique<EncodingPipeline>(
            std::make_unique<ListeningEncoder>(input, given_, failingWrite));
        EXPECT_EQ(pipeline->Begin(out_), Outcome::Ok);
        pipeline->SetSource(source);
        return pipeline;
    }
    void WriteAll(const EncoderInput& input, const SampleShape& source, const std::vector<qint16>& samples) {
        given_ = {};
        const auto pipeline = Begun(input, source);
        EXPECT_EQ(pipeline->Write(BytesOf(samples)), Outcome::Ok);
        EXPECT_EQ(pipeline->Finish(), Outcome::Ok);
        EXPECT_EQ(given_.finishes, 1);
    }
};

} // namespace

TEST_F(Pipeline, IntegersOfTheSameShapePassUntouched) {
    const std::vector<qint16> samples = NoiseAndTones(30000, 2, 44100, 1);
    WriteAll({44100, 2, false}, {44100, 2}, samples);
    EXPECT_EQ(given_.integers, samples);
}

TEST_F(Pipeline, WithoutASourceTheBlocksAreTheEncodersOwn) {
    const std::vector<qint16> samples = NoiseAndTones(3000, 2, 44100, 1);
    WriteAll({22050, 2, false}, {}, samples);
    EXPECT_EQ(given_.integers, samples);
}

TEST_F(Pipeline, StereoBecomesTheMeanOfBoth) {
    WriteAll({8000, 1, false}, {8000, 2}, {1, 2, -1, -2, 32767, 32767, -32768, -32768, 10, 20});
    EXPECT_EQ(given_.integers, (std::vector<qint16>{1, -1, 32767, -32768, 15}));
}

TEST_F(Pipeline, StereoBecomesTheExactMeanInFloats) {
    WriteAll({8000, 1, true}, {8000, 2}, {1, 2, -32768, -32768, 32767, 32767});
    EXPECT_EQ(given_.floats, (std::vector<float>{1.5F / 32768, -1.0F, 32767.0F / 32768}));
}

TEST_F(Pipeline, MonoIsDoubled) {
    WriteAll({8000, 2, false}, {8000, 1}, {5, -7});
    EXPECT_EQ(given_.integers, (std::vector<qint16>{5, 5, -7, -7}));
    WriteAll({8000, 2, true}, {8000, 1}, {16384});
    EXPECT_EQ(given_.floats, (std::vector<float>{0.5F, 0.5F}));
}

TEST_F(Pipeline, MonoOfAnotherRateIsDoubledWithTheSameNoise) {
    WriteAll({44100, 2, false}, {48000, 1}, NoiseAndTones(48000, 1, 48000, 2));
    ASSERT_EQ(given_.integers.size(), 2U * 44100);
    for (size_t frame = 0; frame < 44100; ++frame) {
        ASSERT_EQ(given_.integers[2 * frame], given_.integers[2 * frame + 1]) << frame;
    }
}

TEST_F(Pipeline, AnotherRateIsDithered) {
    // A tone of a quarter of a step: without noise it would be silence.
    std::vector<qint16> samples(96000);
    for (size_t at = 0; at < samples.size(); ++at) {
        samples[at] = static_cast<qint16>(at % 48 < 24 && at % 4 == 0 ? 1 : 0);
    }
    WriteAll({44100, 1, false}, {48000, 1}, samples);
    double inStep = 0;
    for (size_t at = 0; at < given_.integers.size(); ++at) {
        inStep +=
            given_.integers[at] * std::sin(6.283185307179586 * 1000.0 * static_cast<double>(at) / 44100);
    }
    const double amplitude = 2 * inStep / static_cast<double>(given_.integers.size());
    EXPECT_NEAR(amplitude, 0.25 * 2 / 3.14159265, 0.02);
}

TEST_F(Pipeline, PeaksBetweenSamplesClipAndDoNotWrap) {
    // Full scale at a quarter of the rate, an eighth of a turn off: between the samples it is 3 dB higher.
    std::vector<qint16> samples(48000);
    for (size_t at = 0; at < samples.size(); ++at) {
        samples[at] = at % 4 < 2 ? 32767 : -32767;
    }
    WriteAll({44100, 1, false}, {48000, 1}, samples);
    int highest = 0;
    for (size_t at = 1000; at + 1000 < given_.integers.size(); ++at) {
        const double angle = 6.283185307179586 * 12000.0 * static_cast<double>(at) / 44100 + 0.785398163;
        const double wanted = std::clamp(46340.0 * std::sin(angle), -32768.0, 32767.0);
        ASSERT_NEAR(given_.integers[at], wanted, 12) << at;
        highest = std::max<int>(highest, given_.integers[at]);
    }
    EXPECT_EQ(highest, 32767);
}

TEST_F(Pipeline, FloatsKeepPeaksAboveFullScale) {
    std::vector<qint16> samples(48000);
    for (size_t at = 0; at < samples.size(); ++at) {
        samples[at] = at % 4 < 2 ? 32767 : -32767;
    }
    WriteAll({44100, 1, true}, {48000, 1}, samples);
    EXPECT_GT(*std::max_element(given_.floats.begin() + 1000, given_.floats.end() - 1000), 1.4F);
}

TEST_F(Pipeline, CutsOfTheBlocksDoNotShow) {
    const QByteArray bytes = BytesOf(NoiseAndTones(20000, 2, 48000, 4));
    for (const EncoderInput& input : {EncoderInput{48000, 2, false}, EncoderInput{44100, 1, false}}) {
        given_ = {};
        const auto whole = Begun(input, {48000, 2});
        EXPECT_EQ(whole->Write(bytes), Outcome::Ok);
        EXPECT_EQ(whole->Finish(), Outcome::Ok);
        const std::vector<qint16> expected = given_.integers;
        given_ = {};
        const auto cut = Begun(input, {48000, 2});
        // Also through the middle of a frame, and of a sample.
        for (qsizetype at = 0, size = 1; at < bytes.size(); at += size, size = size % 4099 + 13) {
            EXPECT_EQ(cut->Write(bytes.mid(at, size)), Outcome::Ok);
        }
        EXPECT_EQ(cut->Finish(), Outcome::Ok);
        EXPECT_EQ(given_.integers, expected);
    }
}

TEST_F(Pipeline, SourceCountsUntilTheFirstBlock) {
    const auto pipeline = Begun({8000, 1, false}, {8000, 2});
    pipeline->SetSource({8000, 1});
    EXPECT_EQ(pipeline->Write(BytesOf({1, 2})), Outcome::Ok);
    pipeline->SetSource({8000, 2});
    EXPECT_EQ(pipeline->Write(BytesOf({3, 4})), Outcome::Ok);
    EXPECT_EQ(given_.integers, (std::vector<qint16>{1, 2, 3, 4}));
}

TEST_F(Pipeline, NothingFollowsAFailure) {
    const auto pipeline = Begun({8000, 1, false}, {8000, 1}, 1);
    EXPECT_EQ(pipeline->Write(BytesOf({1})), Outcome::Ok);
    EXPECT_EQ(pipeline->Write(BytesOf({2})), Outcome::WriteFailed);
    EXPECT_EQ(pipeline->Write(BytesOf({3})), Outcome::WriteFailed);
    EXPECT_EQ(pipeline->Finish(), Outcome::WriteFailed);
    EXPECT_EQ(given_.writes, 2);
    EXPECT_EQ(given_.finishes, 0);
}

TEST_F(Pipeline, NoSamplesComeToAnEnd) {
    WriteAll({44100, 2, false}, {48000, 1}, {});
    EXPECT_TRUE(given_.integers.empty());
}

} // namespace kestrune
