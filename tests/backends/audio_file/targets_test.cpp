// Every output of the converter, judged by programs that are not ours.
#include "backends/audio_file/codec_file.h"
#include "backends/audio_file/targets.h"
#include "support/chord.h"
#include "support/test_files.h"

#include <gtest/gtest.h>

#include <QFileInfo>

#include <cstdlib>

namespace kestrune {

namespace {

constexpr int seconds = 2;
constexpr quint32 seed = 41;

// The figures that the documentation tells are read off these tests.
bool ShowsFigures() {
    return std::getenv("KESTRUNE_SHOW_FIGURES") != nullptr;
}

// What a mono sound becomes in two channels.
std::vector<qint16> Doubled(const std::vector<qint16>& mono) {
    std::vector<qint16> both;
    both.reserve(mono.size() * 2);
    for (const qint16 sample : mono) {
        both.insert(both.end(), 2, sample);
    }
    return both;
}

class Targets : public testing::TestWithParam<SoundShape> {
protected:
    void SetUp() override {
        input_.SetFlag(KSTAudioFile2::wholeFilesAgain);
        output_.SetFlag(KSTAudioFile2::wholeFiles);
    }

    // A sound of so many frames as a WAVE file.
    QString Source(const SoundShape& shape, int frames) {
        const std::vector<qint16> sound = Chord(seed).Samples(frames, shape.channels, shape.rateHz);
        return folder_.Write(QStringLiteral("source.wav"), WaveFile({1, static_cast<quint16>(shape.channels),
                                                                     static_cast<quint32>(shape.rateHz), 16},
                                                                    BytesOf(sound)));
    }

    // What a perfect converter would write.
    static std::vector<qint16> Ideal(const SoundShape& source, const SoundShape& written, int frames) {
        if (source.channels < written.channels) {
            return Doubled(Chord(seed).Samples(frames, 1, written.rateHz));
        }
        return Chord(seed).Samples(frames, written.channels, written.rateHz);
    }

    void ExpectGoodFile(const Target& target, const SoundShape& source, const SoundShape& wanted) {
        SCOPED_TRACE(testing::Message()
                     << qPrintable(target.ending) << ": " << source.rateHz << " Hz, " << source.channels
                     << " to " << wanted.rateHz << " Hz, " << wanted.channels);
        const QString file = folder_.Path(QStringLiteral("out") + target.ending);
        ASSERT_EQ(target.set(output_, wanted), Outcome::Ok);
        ASSERT_EQ(ConvertFile(input_, output_, Source(source, source.rateHz * seconds), file), Outcome::Ok);
        const SoundShape written = target.written(wanted);
        if (!target.codec.isEmpty()) {
            EXPECT_EQ(ProbedBy(file),
                      QStringLiteral("%1,%2,%3").arg(target.codec).arg(written.rateHz).arg(written.channels));
        }
        const std::vector<qint16> decoded = target.decode(file, written);
        const int frames = written.rateHz * seconds;
        const int decodedFrames = static_cast<int>(decoded.size()) / written.channels;
        EXPECT_GE(decodedFrames, frames);
        EXPECT_LE(decodedFrames, frames + target.frameSamples + target.mostDelay);
        const Likeness likeness =
            Compared(Ideal(source, written, frames), decoded, written.channels, target.mostDelay);
        EXPECT_GE(likeness.signalToNoiseDb, target.leastDb);
        EXPECT_GE(likeness.gain, target.leastGain);
        EXPECT_LE(likeness.gain, 1.01);
        if (ShowsFigures()) {
            std::printf("%-11s %6d Hz %d to %6d Hz %d: %+5d frames, delay %5d, gain %.3f, %5.1f dB\n",
                        qPrintable(target.ending), source.rateHz, source.channels, written.rateHz,
                        written.channels, decodedFrames - frames, likeness.delayFrames, likeness.gain,
                        likeness.signalToNoiseDb);
        }
    }

    TestFolder folder_;
    CodecFile input_;
    CodecFile output_;
};

} // namespace

TEST_P(Targets, OfTheSourcesOwnRate) {
    for (const Target& target : ConverterTargets()) {
        ExpectGoodFile(target, GetParam(), GetParam());
    }
}

TEST_P(Targets, OfTheConvertersFirstSettings) {
    for (const Target& target : ConverterTargets()) {
        ExpectGoodFile(target, GetParam(), {44100, 2});
    }
}

TEST_P(Targets, OfAnotherRateAndChannelCount) {
    const SoundShape other = GetParam().channels == 2 ? SoundShape{22050, 1} : SoundShape{24000, 2};
    for (const Target& target : ConverterTargets()) {
        ExpectGoodFile(target, GetParam(), other);
    }
}

TEST_P(Targets, OfATemplate) {
    const QString made = folder_.Path(QStringLiteral("template.wav"));
    ASSERT_TRUE(
        RunTool(QStringLiteral("ffmpeg"),
                {QStringLiteral("-v"), QStringLiteral("error"), QStringLiteral("-f"), QStringLiteral("lavfi"),
                 QStringLiteral("-i"), QStringLiteral("sine=duration=0.2:sample_rate=22050"),
                 QStringLiteral("-c:a"), QStringLiteral("adpcm_ms"), made}));
    const Target target = {QStringLiteral("_ACM.wav"),
                           [&](auto& file, const SoundShape&) { return file.SetFormatFromFile(made); },
                           [](const SoundShape&) {
                               return SoundShape{22050, 1};
                           },
                           QStringLiteral("adpcm_ms"),
                           [](const QString& file, const SoundShape&) { return DecodedBySox(file); },
                           2036,
                           8,
                           20.0};
    ExpectGoodFile(target, GetParam(), GetParam());
}

// A sound of no length gives a file that other programs take; what they decode of it is at most what the
// coding puts around a sound.
TEST_P(Targets, OfNoSound) {
    const QString source = Source(GetParam(), 0);
    for (const Target& target : ConverterTargets()) {
        SCOPED_TRACE(qPrintable(target.ending));
        const QString file = folder_.Path(QStringLiteral("empty") + target.ending);
        ASSERT_EQ(target.set(output_, GetParam()), Outcome::Ok);
        ASSERT_EQ(ConvertFile(input_, output_, source, file), Outcome::Ok);
        ASSERT_TRUE(QFileInfo::exists(file));
        if (target.codec.isEmpty()) {
            EXPECT_EQ(QFileInfo(file).size(), 0);
            continue;
        }
        const SoundShape written = target.written(GetParam());
        EXPECT_EQ(ProbedBy(file),
                  QStringLiteral("%1,%2,%3").arg(target.codec).arg(written.rateHz).arg(written.channels));
    }
}

INSTANTIATE_TEST_SUITE_P(Sources, Targets,
                         testing::Values(SoundShape{8000, 1}, SoundShape{44100, 2}, SoundShape{48000, 2}),
                         [](const testing::TestParamInfo<SoundShape>& source) {
                             return std::to_string(source.param.rateHz) + "Hz" +
                                    std::to_string(source.param.channels);
                         });

TEST(Refusals, LeaveNoFile) {
    TestFolder folder;
    CodecFile output;
    const std::vector<std::pair<const char*, std::function<Outcome()>>> refused = {
        {"a.mp2", [&] { return output.SetFormatMP2(8000, 192, 2); }},
        {"a.ogg", [&] { return output.SetFormatOggVorbis(8000, 2, 320, 0, 0, -1); }},
        {"a.wma", [&] { return output.SetFormatWMA(-1); }},
        {"a.wav", [&] { return output.SetFormatPCMFreq(44100, 2, 12); }},
        {"b.wav", [&] { return output.SetFormatADPCM(44100, 3); }},
        {"c.wav", [&] { return output.SetFormatGSM(0); }},
        {"a.vox", [&] { return output.SetFormatVOX(-1); }},
        {"a.g721", [&] { return output.SetFormatG721(0); }},
        {"a.g723", [&] { return output.SetFormatG723(8000, 4); }},
        {"a.g726", [&] { return output.SetFormatG726(8000, 6); }},
        {"a.raw", [&] { return output.SetFormatRaw(RawPcm, 44100, 2, 12); }},
    };
    for (const auto& [name, set] : refused) {
        SCOPED_TRACE(name);
        EXPECT_EQ(set(), Outcome::NotSupported);
        EXPECT_TRUE(output.GetFormatText().isEmpty());
        const QString file = folder.Path(QLatin1String(name));
        const bool kept = file.endsWith(QLatin1String(".mp2")) || file.endsWith(QLatin1String(".ogg"));
        if (kept) {
            // These two take what was last set and offered, which is the usual format here.
            continue;
        }
        EXPECT_NE(output.Create(file), Outcome::Ok);
        EXPECT_LT(output.GetFormatId(), 0);
        EXPECT_FALSE(QFileInfo::exists(file));
    }
}

TEST(Channels, OfPlainSamplesAreMixedAndDoubledExactly) {
    TestFolder folder;
    CodecFile input;
    CodecFile output;
    const std::vector<qint16> sound = NoiseAndTones(30000, 2, 44100, 9);
    std::vector<qint16> mean;
    for (size_t at = 0; at < sound.size(); at += 2) {
        mean.push_back(static_cast<qint16>((sound[at] + sound[at + 1]) / 2));
    }
    const QString stereo = folder.Write(QStringLiteral("s.wav"), WaveFile({1, 2, 44100, 16}, BytesOf(sound)));
    const QString mono = folder.Path(QStringLiteral("m.wav"));
    ASSERT_EQ(output.SetFormatPCMFreq(44100, 1, 16), Outcome::Ok);
    ASSERT_EQ(ConvertFile(input, output, stereo, mono), Outcome::Ok);
    EXPECT_EQ(DecodedBySox(mono), mean);
    const QString doubled = folder.Path(QStringLiteral("d.wav"));
    ASSERT_EQ(output.SetFormatPCMFreq(44100, 2, 16), Outcome::Ok);
    ASSERT_EQ(ConvertFile(input, output, mono, doubled), Outcome::Ok);
    EXPECT_EQ(DecodedBySox(doubled), Doubled(mean));
}

// Held against a sound that is known at every rate, so that no other converter's faults count.
TEST(Rates, OfPlainSamplesAreConvertedToTheLastBits) {
    TestFolder folder;
    CodecFile input;
    CodecFile output;
    for (const int fromHz : {8000, 11025, 44100, 48000}) {
        for (const int toHz : {8000, 22050, 44100, 48000}) {
            SCOPED_TRACE(testing::Message() << fromHz << " to " << toHz);
            const std::vector<qint16> sound = Chord(seed).Samples(fromHz, 2, fromHz);
            const QString source = folder.Write(
                QStringLiteral("s.wav"), WaveFile({1, 2, static_cast<quint32>(fromHz), 16}, BytesOf(sound)));
            const QString file = folder.Path(QStringLiteral("o.wav"));
            ASSERT_EQ(output.SetFormatPCMFreq(toHz, 2, 16), Outcome::Ok);
            ASSERT_EQ(ConvertFile(input, output, source, file), Outcome::Ok);
            const std::vector<qint16> decoded = DecodedByFfmpeg(file);
            ASSERT_EQ(static_cast<int>(decoded.size()), 2 * toHz);
            // The ends, where the filter has only half of the sound, are left out.
            const int edge = toHz / 20 * 2;
            const std::vector<qint16> ideal = Chord(seed).Samples(toHz, 2, toHz);
            const Likeness likeness = Compared({ideal.begin() + edge, ideal.end() - edge},
                                               {decoded.begin() + edge, decoded.end() - edge}, 2, 8);
            EXPECT_EQ(likeness.delayFrames, 0);
            EXPECT_GT(likeness.signalToNoiseDb, fromHz == toHz ? 140.0 : 70.0);
            if (ShowsFigures()) {
                std::printf("%6d Hz to %6d Hz: %5.1f dB\n", fromHz, toHz, likeness.signalToNoiseDb);
            }
        }
    }
}

} // namespace kestrune
