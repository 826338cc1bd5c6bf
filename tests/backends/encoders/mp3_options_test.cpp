// Each setting is tested by what it does to the stream.
#include "backends/encoders/mp3_encoder.h"

#include "backends/encoders/lossy_files.h"
#include "backends/encoders/mp3_frames.h"
#include "encoder_options/mp3_presets.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <numeric>

namespace kestrune {

namespace {

QByteArray CodedAs(const Mp3Options& options, const Sound& sound) {
    const std::optional<OutputFormat> format = Mp3Format(options);
    EXPECT_TRUE(format.has_value());
    return format ? Coded(*MakeMp3Encoder(*format), sound) : QByteArray();
}

std::vector<Mp3Frame> FramesAs(const Mp3Options& options, const Sound& sound) {
    std::vector<Mp3Frame> frames = SoundFrames(CodedAs(options, sound));
    EXPECT_GT(frames.size(), 10U);
    return frames;
}

double MeanKbps(const std::vector<Mp3Frame>& frames) {
    const double sum =
        std::accumulate(frames.begin(), frames.end(), 0.0,
                        [](double total, const Mp3Frame& frame) { return total + frame.kbps; });
    return sum / static_cast<double>(frames.size());
}

int LeastKbps(const std::vector<Mp3Frame>& frames) {
    return std::min_element(frames.begin(), frames.end(),
                            [](const Mp3Frame& a, const Mp3Frame& b) { return a.kbps < b.kbps; })
        ->kbps;
}

int LargestKbps(const std::vector<Mp3Frame>& frames) {
    return std::max_element(frames.begin(), frames.end(),
                            [](const Mp3Frame& a, const Mp3Frame& b) { return a.kbps < b.kbps; })
        ->kbps;
}

bool AnyBlock(const std::vector<Mp3Frame>& frames, int type) {
    return std::any_of(frames.begin(), frames.end(), [type](const Mp3Frame& frame) {
        return std::any_of(frame.blockTypes.begin(), frame.blockTypes.end(), [type](const auto& channels) {
            return std::find(channels.begin(), channels.end(), type) != channels.end();
        });
    });
}

bool AnyBlocksDiffer(const std::vector<Mp3Frame>& frames) {
    return std::any_of(frames.begin(), frames.end(), [](const Mp3Frame& frame) {
        return std::any_of(frame.blockTypes.begin(), frame.blockTypes.end(),
                           [](const auto& channels) { return channels[0] != channels[1]; });
    });
}

Mp3Options Variable(qint32 method, int quality) {
    Mp3Options options;
    options.vbrMethod = method;
    options.vbrQuality = static_cast<qint16>(quality);
    options.bitrate = 32;
    return options;
}

// Loud sound, then silence, then loud sound again.
Sound WithSilence() {
    Sound sound = Music(3.0, 44100, 2);
    std::fill(sound.samples.begin() + 88200, sound.samples.begin() + 176400, 0.0F);
    return sound;
}

double DecodedBandDb(const Mp3Options& options, const Sound& sound, double lowHz, double highHz) {
    const TestFolder folder;
    const QString path = folder.Write(QStringLiteral("a.mp3"), CodedAs(options, sound));
    return BandDb(DecodedByFfmpeg(path, options.frequency, 2), lowHz, highHz);
}

} // namespace

TEST(Mp3OptionsTest, ChannelModes) {
    // By channel mode: the mode of the header.
    const std::vector<int> modes{3, 0, 1, 1, 2};
    for (qint32 mode = 0; mode <= 4; ++mode) {
        Mp3Options options;
        options.channelMode = mode;
        options.channels = mode == 0 ? 1 : 2;
        const std::vector<Mp3Frame> frames = FramesAs(options, Music(1.0, 44100, options.channels));
        for (const Mp3Frame& frame : frames) {
            ASSERT_EQ(frame.mode, modes[static_cast<size_t>(mode)]) << mode;
        }
        const auto middle = std::count_if(frames.begin(), frames.end(),
                                          [](const Mp3Frame& frame) { return frame.middleAndSide; });
        if (mode == 3) {
            EXPECT_EQ(middle, static_cast<std::ptrdiff_t>(frames.size())) << "forced on all frames";
        } else if (mode == 2) {
            EXPECT_LT(middle, static_cast<std::ptrdiff_t>(frames.size())) << "where it is better";
        }
    }
}

TEST(Mp3OptionsTest, JointStereoTakesTheMiddleOfChannelsThatAreAlike) {
    Sound alike = Music(1.0, 44100, 2);
    for (size_t at = 0; at < alike.samples.size(); at += 2) {
        alike.samples[at + 1] = alike.samples[at];
    }
    Mp3Options options;
    options.channelMode = 2;
    const std::vector<Mp3Frame> frames = FramesAs(options, alike);
    EXPECT_TRUE(std::any_of(frames.begin(), frames.end(), [](const Mp3Frame& f) { return f.middleAndSide; }));
}

TEST(Mp3OptionsTest, VbrMethods) {
    const Sound sound = WithSilence();
    EXPECT_EQ(LeastKbps(FramesAs(Mp3Options(), sound)), 128);
    EXPECT_EQ(LargestKbps(FramesAs(Mp3Options(), sound)), 128);
    for (qint32 method = 0; method <= 3; ++method) {
        const std::vector<Mp3Frame> frames = FramesAs(Variable(method, 4), sound);
        EXPECT_EQ(LeastKbps(frames), 32) << method;
        EXPECT_GT(LargestKbps(frames), 128) << method;
    }
    EXPECT_FALSE(CodedAs(Variable(1, 4), sound) == CodedAs(Variable(2, 4), sound))
        << "the old method and the new one";
    EXPECT_TRUE(CodedAs(Variable(2, 4), sound) == CodedAs(Variable(0, 4), sound))
        << "the new one is the usual";
}

TEST(Mp3OptionsTest, VbrQualityDecidesTheRate) {
    const Sound sound = Music(2.0, 44100, 2);
    double kbps = 1000;
    for (const int quality : {0, 3, 6, 9}) {
        const double lower = MeanKbps(FramesAs(Variable(0, quality), sound));
        EXPECT_LT(lower, kbps * 0.95) << quality;
        kbps = lower;
    }
}

TEST(Mp3OptionsTest, AverageRateIsMet) {
    const Sound sound = Music(6.0, 44100, 2);
    for (const int average : {80, 133, 190, 250}) {
        Mp3Options options = Variable(4, 4);
        options.abrBitrate = static_cast<qint16>(average);
        options.bitrate = 128;
        EXPECT_NEAR(MeanKbps(FramesAs(options, sound)), average, average * 0.08) << average;
    }
}

TEST(Mp3OptionsTest, AveragesBeyondTheTableAreTaken) {
    for (const int average : {4, 320}) {
        Mp3Options options = Variable(4, 4);
        options.abrBitrate = static_cast<qint16>(average);
        const double kbps = MeanKbps(FramesAs(options, Music(2.0, 44100, 2)));
        EXPECT_GE(kbps, 32.0);
        EXPECT_LE(kbps, 320.0);
    }
}

TEST(Mp3OptionsTest, LargestRateOfVbrIsHeld) {
    for (const qint32 method : {1, 2, 4}) {
        Mp3Options options = Variable(method, 0);
        options.maxVbrBitrate = 160;
        options.abrBitrate = 150;
        EXPECT_EQ(LargestKbps(FramesAs(options, Music(2.0, 44100, 2))), 160) << method;
        options.maxVbrBitrate = 96;
        options.bitrate = 128;
        EXPECT_EQ(LargestKbps(FramesAs(options, Music(2.0, 44100, 2))), 96) << "it goes before the least one";
    }
}

TEST(Mp3OptionsTest, LeastRateOfVbr) {
    for (const qint32 method : {1, 2}) {
        Mp3Options options = Variable(method, 6);
        options.bitrate = 96;
        EXPECT_EQ(LeastKbps(FramesAs(options, Music(2.0, 44100, 2))), 96) << method;
        EXPECT_LT(LeastKbps(FramesAs(options, WithSilence())), 96) << method << ", silence goes below";
        options.enforceMinBitrate = true;
        EXPECT_EQ(LeastKbps(FramesAs(options, WithSilence())), 96) << method << ", unless it must not";
    }
}

TEST(Mp3OptionsTest, LeastRateOfAnAverage) {
    Mp3Options options = Variable(4, 4);
    options.abrBitrate = 160;
    EXPECT_LT(LeastKbps(FramesAs(options, WithSilence())), 96);
    options.bitrate = 96;
    EXPECT_EQ(LeastKbps(FramesAs(options, WithSilence())), 96);
    options.abrBitrate = 80;
    EXPECT_LT(LeastKbps(FramesAs(options, WithSilence())), 80) << "one above the average does not count";
}

TEST(Mp3OptionsTest, QualityChangesTheCoding) {
    const Sound sound = Music(1.0, 44100, 2);
    std::vector<QByteArray> files;
    for (const int quality : {0, 2, 5, 7, 9}) {
        Mp3Options options;
        options.quality = static_cast<qint16>(quality);
        files.push_back(CodedAs(options, sound));
    }
    for (size_t at = 1; at < files.size(); ++at) {
        EXPECT_FALSE(files[at] == files[at - 1]) << at;
    }
}

TEST(Mp3OptionsTest, Header) {
    const Sound sound = Music(1.0, 44100, 2);
    Mp3Options options;
    EXPECT_TRUE(Mp3Frames(CodedAs(options, sound)).front().isHeader);
    EXPECT_TRUE(CodedAs(options, sound).left(200).contains("Info"));
    EXPECT_TRUE(CodedAs(Variable(0, 4), sound).left(200).contains("Xing"));
    options.writeVbrHeader = false;
    EXPECT_FALSE(Mp3Frames(CodedAs(options, sound)).front().isHeader);
}

TEST(Mp3OptionsTest, Reservoir) {
    const Sound sound = Music(2.0, 44100, 2);
    const auto reachBack = [&](const Mp3Options& options) {
        const std::vector<Mp3Frame> frames = FramesAs(options, sound);
        return std::any_of(frames.begin(), frames.end(),
                           [](const Mp3Frame& f) { return f.mainDataBegins > 0; });
    };
    Mp3Options options;
    EXPECT_TRUE(reachBack(options));
    options.bitReservoir = false;
    EXPECT_FALSE(reachBack(options));
}

TEST(Mp3OptionsTest, ShortBlocks) {
    const Sound sound = Music(2.0, 44100, 2);
    Mp3Options options;
    EXPECT_TRUE(AnyBlock(FramesAs(options, sound), 2));
    options.shortBlocks = false;
    EXPECT_FALSE(AnyBlock(FramesAs(options, sound), 2));
}

TEST(Mp3OptionsTest, BlockTypesDifferBetweenDualChannelsAlone) {
    // An attack in one channel only.
    Sound sound = Music(2.0, 44100, 2);
    for (size_t at = 0; at < sound.samples.size(); at += 2) {
        sound.samples[at + 1] = 0.3F * std::sin(static_cast<float>(at) * 0.02F);
    }
    Mp3Options options;
    options.channelMode = 4;
    EXPECT_TRUE(AnyBlocksDiffer(FramesAs(options, sound)));
    options.blockTypesDiffer = false;
    EXPECT_FALSE(AnyBlocksDiffer(FramesAs(options, sound)));
    options.blockTypesDiffer = true;
    options.channelMode = 1;
    EXPECT_FALSE(AnyBlocksDiffer(FramesAs(options, sound))) << "the library couples the two of stereo";
}

TEST(Mp3OptionsTest, Emphasis) {
    const std::vector<int> marks{0, 1, 3};
    for (qint32 kind = 0; kind <= 2; ++kind) {
        Mp3Options options;
        options.deEmphasis = kind;
        for (const Mp3Frame& frame : FramesAs(options, Music(0.5, 44100, 2))) {
            ASSERT_EQ(frame.emphasis, marks[static_cast<size_t>(kind)]);
        }
    }
}

TEST(Mp3OptionsTest, Checksums) {
    Mp3Options options;
    for (const Mp3Frame& frame : FramesAs(options, Music(0.5, 44100, 2))) {
        ASSERT_FALSE(frame.hasChecksum);
    }
    options.crcProtection = true;
    for (const Mp3Frame& frame : FramesAs(options, Music(0.5, 44100, 2))) {
        ASSERT_TRUE(frame.hasChecksum);
        ASSERT_TRUE(frame.checksumIsRight);
    }
}

TEST(Mp3OptionsTest, Compliance) {
    // ISO/IEC 11172-3 lets a decoder's buffer end at 7,680 bits: at 320 kbit/s no frame reaches back then.
    const Sound sound = Music(2.0, 32000, 2);
    const auto farthest = [&](const Mp3Options& options) {
        const std::vector<Mp3Frame> frames = FramesAs(options, sound);
        return std::max_element(
                   frames.begin(), frames.end(),
                   [](const Mp3Frame& a, const Mp3Frame& b) { return a.mainDataBegins < b.mainDataBegins; })
            ->mainDataBegins;
    };
    Mp3Options options;
    options.frequency = 32000;
    options.bitrate = 320;
    EXPECT_GT(farthest(options), 0);
    options.isoCompliance = true;
    EXPECT_EQ(farthest(options), 0);
}

TEST(Mp3OptionsTest, ThresholdOfHearing) {
    const Sound sound = Noise(2.0, 44100, 2, 0.0002F);
    const auto codedAs = [&](qint32 control) {
        Mp3Options options = Variable(1, 4);
        options.athControl = control;
        return CodedAs(options, sound);
    };
    const QByteArray usual = codedAs(0);
    EXPECT_FALSE(codedAs(1) == usual) << "only the threshold";
    EXPECT_GT(codedAs(2).size(), usual.size()) << "without it nothing is too soft to be coded";
}

TEST(Mp3OptionsTest, Lowpass) {
    const Sound noise = Noise(2.0, 44100, 2);
    Mp3Options options;
    options.bitrate = 320;
    const double passed = DecodedBandDb(options, noise, 9000, 14000);
    options.lowpassFrequency = 8000;
    const double cut = DecodedBandDb(options, noise, 9000, 14000);
    EXPECT_LT(cut, passed - 40);
    EXPECT_NEAR(DecodedBandDb(options, noise, 1000, 6000), passed, 1.5);
    options.lowpassWidth = 6000;
    EXPECT_LT(DecodedBandDb(options, noise, 5000, 7000), passed - 3) << "a wide slope begins earlier";
    options.lowpassFrequency = 48000;
    options.lowpassWidth = 0;
    EXPECT_GT(DecodedBandDb(options, noise, 20500, 21500), passed - 6) << "nothing is cut";
}

TEST(Mp3OptionsTest, Highpass) {
    const Sound noise = Noise(2.0, 44100, 2);
    Mp3Options options;
    options.bitrate = 320;
    const double passed = DecodedBandDb(options, noise, 1500, 4000);
    options.highpassFrequency = 5000;
    EXPECT_LT(DecodedBandDb(options, noise, 1500, 4000), passed - 40);
    EXPECT_NEAR(DecodedBandDb(options, noise, 7000, 14000), passed, 1.5);
    options.highpassWidth = 6000;
    EXPECT_LT(DecodedBandDb(options, noise, 7000, 9000), passed - 3) << "a wide slope ends later";
}

TEST(Mp3OptionsTest, PresetsAreCoded) {
    const auto sound = [](const Mp3Options& options) {
        return Music(3.0, options.frequency, options.channels);
    };
    for (int preset = 1; preset <= mp3PresetCount; ++preset) {
        Mp3Options options;
        ApplyPreset(options, preset);
        const std::vector<Mp3Frame> frames = FramesAs(options, sound(options));
        EXPECT_EQ(frames.front().rateHz, options.frequency);
        EXPECT_EQ(frames.front().Channels(), options.channels);
        if (preset < mp3PresetCount) {
            EXPECT_NEAR(MeanKbps(frames), options.abrBitrate, options.abrBitrate * 0.17) << preset;
        }
    }
    for (int preset = 1; preset <= mp3AltPresetCount; ++preset) {
        Mp3Options options;
        ApplyAltPreset(options, preset);
        const std::vector<Mp3Frame> frames = FramesAs(options, sound(options));
        EXPECT_EQ(frames.front().mode, 1);
        if (preset == mp3AltPresetCount) {
            EXPECT_EQ(LeastKbps(frames), 320);
        }
    }
}

} // namespace kestrune
