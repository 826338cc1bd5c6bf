// Files written through CodecFile, and what becomes of their names.
#include "backends/audio_file/codec_file.h"
#include "components/pcm.h"
#include "support/small_disk.h"
#include "support/test_files.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QFileInfo>

namespace kestrune {

namespace {

class Writing : public testing::Test {
protected:
    TestFolder folder_;
    CodecFile file_;
    QByteArray samples_ = BytesOf(NoiseAndTones(20000, 2, 44100, 5));

    QString Path(const char* name) const { return folder_.Path(QLatin1String(name)); }
    Outcome Write(const char* name, const QByteArray& samples) {
        const Outcome created = file_.Create(Path(name));
        if (created != Outcome::Ok) {
            return created;
        }
        file_.SetSourceFormat(44100, 2);
        const Outcome written = file_.WriteBlock(samples);
        const Outcome closed = file_.CloseFile();
        return written == Outcome::Ok ? closed : written;
    }
    QByteArray Read(const char* name) {
        CodecFile reader;
        EXPECT_EQ(reader.OpenRead(Path(name)), Outcome::Ok) << name;
        return ReadToEnd(reader);
    }
    QString TextOf(const char* name) {
        CodecFile reader;
        EXPECT_EQ(reader.OpenRead(Path(name)), Outcome::Ok) << name;
        return reader.GetFormatText();
    }
    bool Exists(const char* name) const { return QFileInfo::exists(Path(name)); }
};

} // namespace

TEST_F(Writing, SamplesOfThePlainFormatComeBack) {
    ASSERT_EQ(file_.SetFormatPCMFreq(44100, 2, 16), Outcome::Ok);
    EXPECT_EQ(Write("a.wav", samples_), Outcome::Ok);
    EXPECT_EQ(Read("a.wav"), samples_);
    EXPECT_LT(file_.GetFormatId(), 0);
}

TEST_F(Writing, FileThatIsWrittenIsOpen) {
    ASSERT_EQ(file_.SetFormatPCMFreq(44100, 2, 16), Outcome::Ok);
    ASSERT_EQ(file_.Create(Path("a.wav")), Outcome::Ok);
    EXPECT_GE(file_.GetFormatId(), 0);
    EXPECT_TRUE(Exists("a.wav"));
    EXPECT_TRUE(file_.ReadBlock(4096).isEmpty());
    EXPECT_EQ(file_.SeekTo(0), -1);
    EXPECT_EQ(file_.CloseFile(), Outcome::Ok);
    EXPECT_EQ(file_.CloseFile(), Outcome::NotOpen);
    EXPECT_EQ(file_.WriteBlock(samples_), Outcome::NotOpen);
}

TEST_F(Writing, WithoutAFormatNothingIsMade) {
    EXPECT_EQ(file_.Create(Path("a.wav")), Outcome::NotSupported);
    EXPECT_LT(file_.GetFormatId(), 0);
    EXPECT_FALSE(Exists("a.wav"));
    EXPECT_EQ(file_.WriteBlock(samples_), Outcome::NotOpen);
}

TEST_F(Writing, RefusedFormatLeavesNone) {
    ASSERT_EQ(file_.SetFormatPCMFreq(44100, 2, 16), Outcome::Ok);
    EXPECT_EQ(file_.SetFormatPCMFreq(44100, 2, 17), Outcome::NotSupported);
    EXPECT_EQ(file_.Create(Path("a.wav")), Outcome::NotSupported);
    EXPECT_FALSE(Exists("a.wav"));
}

TEST_F(Writing, RatesBeyondAllSenseAreRefused) {
    for (const qint32 rateHz : {-1, 0, 1000001, 2147483647}) {
        EXPECT_EQ(file_.SetFormatPCMFreq(rateHz, 2, 16), Outcome::NotSupported);
        EXPECT_EQ(file_.SetFormatRaw(RawALaw, rateHz, 2, 16), Outcome::NotSupported);
        EXPECT_EQ(file_.SetFormatADPCM(rateHz, 2), Outcome::NotSupported);
        EXPECT_EQ(file_.SetFormatGSM(rateHz), Outcome::NotSupported);
        EXPECT_EQ(file_.SetFormatVOX(rateHz), Outcome::NotSupported);
        EXPECT_EQ(file_.SetFormatG721(rateHz), Outcome::NotSupported);
        EXPECT_EQ(file_.SetFormatG723(rateHz, 3), Outcome::NotSupported);
        EXPECT_EQ(file_.SetFormatG726(rateHz, 2), Outcome::NotSupported);
        EXPECT_EQ(file_.SetFormatMP3(rateHz, 128, 2), Outcome::NotSupported);
        EXPECT_EQ(file_.SetFormatMP2(rateHz, 192, 2), Outcome::NotSupported);
        EXPECT_EQ(file_.SetFormatOggVorbis(rateHz, 2, 128, 0, 0, -1), Outcome::NotSupported);
        EXPECT_TRUE(file_.GetFormatText().isEmpty());
    }
}

TEST_F(Writing, SourceRateBeyondAllSenseDoesNoHarm) {
    ASSERT_EQ(file_.SetFormatPCMFreq(8000, 2, 16), Outcome::Ok);
    for (const qint32 rateHz : {2147483647, 1999999999}) {
        ASSERT_EQ(file_.Create(Path("a.wav")), Outcome::Ok);
        file_.SetSourceFormat(rateHz, 2);
        file_.WriteBlock(samples_);
        file_.CloseFile();
        EXPECT_LT(file_.GetFormatId(), 0);
        EXPECT_LT(Read("a.wav").size(), 1000);
    }
}

TEST_F(Writing, TargetThatCannotBeWrittenIsRefused) {
    ASSERT_EQ(file_.SetFormatPCMFreq(44100, 2, 16), Outcome::Ok);
    EXPECT_EQ(file_.Create(Path("none/a.wav")), Outcome::WriteFailed);
    EXPECT_LT(file_.GetFormatId(), 0);
    EXPECT_EQ(file_.Create(Path("")), Outcome::WriteFailed);
    EXPECT_EQ(file_.CloseFile(), Outcome::NotOpen);
}

TEST_F(Writing, ExtensionsHaveTheirUsualFormats) {
    EXPECT_EQ(Write("a.mp3", samples_), Outcome::Ok);
    EXPECT_EQ(Write("a.MP2", samples_), Outcome::Ok);
    EXPECT_EQ(Write("a.oGg", samples_), Outcome::Ok);
    EXPECT_EQ(TextOf("a.mp3"), QStringLiteral("MPEG Layer-3, 44,100 Hz, 128 kbps, Stereo"));
    EXPECT_EQ(TextOf("a.MP2"), QStringLiteral("MPEG Layer-2, 44,100 Hz, 192 kbps, Stereo"));
    EXPECT_EQ(TextOf("a.oGg"), QStringLiteral("Ogg Vorbis, 44,100 Hz, 128 kbps, Stereo"));
}

TEST_F(Writing, ExtensionsKeepTheirLastFormat) {
    ASSERT_EQ(file_.SetFormatMP3(22050, 56, 1), Outcome::Ok);
    ASSERT_EQ(file_.SetFormatMP2(48000, 256, 2), Outcome::Ok);
    ASSERT_EQ(file_.SetFormatOggVorbis(22050, 1, 64, 0, 0, -1), Outcome::Ok);
    ASSERT_EQ(file_.SetFormatPCMFreq(8000, 1, 16), Outcome::Ok);
    EXPECT_EQ(Write("a.mp3", samples_), Outcome::Ok);
    EXPECT_EQ(Write("a.mp2", samples_), Outcome::Ok);
    EXPECT_EQ(Write("a.ogg", samples_), Outcome::Ok);
    EXPECT_EQ(Write("a.wav", samples_), Outcome::Ok);
    EXPECT_EQ(TextOf("a.mp3"), QStringLiteral("MPEG Layer-3, 22,050 Hz, 56 kbps, Mono"));
    EXPECT_EQ(TextOf("a.mp2"), QStringLiteral("MPEG Layer-2, 48,000 Hz, 256 kbps, Stereo"));
    EXPECT_EQ(TextOf("a.ogg"), QStringLiteral("Ogg Vorbis, 22,050 Hz, 64 kbps, Mono"));
    EXPECT_EQ(TextOf("a.wav"), QStringLiteral("PCM, 8,000 Hz, 128 kbps, Mono"));
    EXPECT_EQ(file_.GetFormatText(), QStringLiteral("PCM, 8,000 Hz, 128 kbps, Mono"));
}

TEST_F(Writing, RefusedFormatLeavesThatOfTheExtension) {
    ASSERT_EQ(file_.SetFormatMP3(22050, 56, 1), Outcome::Ok);
    ASSERT_EQ(file_.SetFormatMP2(48000, 256, 2), Outcome::Ok);
    EXPECT_EQ(file_.SetFormatMP3(12345, 56, 1), Outcome::NotSupported);
    EXPECT_EQ(file_.SetFormatMP2(8000, 192, 2), Outcome::NotSupported);
    EXPECT_TRUE(file_.GetFormatText().isEmpty());
    EXPECT_EQ(file_.Create(Path("a.wav")), Outcome::NotSupported);
    EXPECT_EQ(Write("a.mp3", samples_), Outcome::Ok);
    EXPECT_EQ(TextOf("a.mp3"), QStringLiteral("MPEG Layer-3, 22,050 Hz, 56 kbps, Mono"));
    EXPECT_EQ(Write("a.mp2", samples_), Outcome::Ok);
    EXPECT_EQ(TextOf("a.mp2"), QStringLiteral("MPEG Layer-2, 48,000 Hz, 256 kbps, Stereo"));
}

TEST_F(Writing, FormatSetMeanwhileCountsFromTheNextFile) {
    ASSERT_EQ(file_.SetFormatPCMFreq(44100, 2, 16), Outcome::Ok);
    ASSERT_EQ(file_.Create(Path("a.wav")), Outcome::Ok);
    file_.SetSourceFormat(44100, 2);
    EXPECT_EQ(file_.WriteBlock(samples_), Outcome::Ok);
    ASSERT_EQ(file_.SetFormatPCMFreq(8000, 1, 8), Outcome::Ok);
    EXPECT_EQ(file_.GetFormatText(), QStringLiteral("PCM, 8,000 Hz, 64 kbps, Mono"));
    EXPECT_EQ(file_.WriteBlock(samples_), Outcome::Ok);
    EXPECT_EQ(file_.CloseFile(), Outcome::Ok);
    EXPECT_EQ(Read("a.wav"), samples_ + samples_);
}

TEST_F(Writing, SourceFormatCountsForOneFile) {
    ASSERT_EQ(file_.SetFormatPCMFreq(44100, 2, 16), Outcome::Ok);
    file_.SetSourceFormat(44100, 1);
    ASSERT_EQ(file_.Create(Path("a.wav")), Outcome::Ok);
    EXPECT_EQ(file_.WriteBlock(samples_), Outcome::Ok);
    EXPECT_EQ(file_.CloseFile(), Outcome::Ok);
    EXPECT_EQ(Read("a.wav").size(), 2 * samples_.size());
    ASSERT_EQ(file_.Create(Path("b.wav")), Outcome::Ok);
    EXPECT_EQ(file_.WriteBlock(samples_), Outcome::Ok);
    EXPECT_EQ(file_.CloseFile(), Outcome::Ok);
    EXPECT_EQ(Read("b.wav"), samples_);
}

TEST_F(Writing, InputMayBeTheOutput) {
    ASSERT_EQ(file_.SetFormatPCMFreq(44100, 2, 16), Outcome::Ok);
    ASSERT_EQ(Write("a.wav", samples_), Outcome::Ok);
    CodecFile input;
    ASSERT_EQ(input.OpenRead(Path("a.wav")), Outcome::Ok);
    ASSERT_EQ(file_.SetFormatPCMFreq(44100, 1, 16), Outcome::Ok);
    ASSERT_EQ(file_.Create(Path("a.wav")), Outcome::Ok);
    file_.SetSourceFormat(input.GetWaveFormat(), input.GetChannels());
    qint64 bytes = 0;
    for (QByteArray block = input.ReadBlock(5000); !block.isEmpty(); block = input.ReadBlock(5000)) {
        ASSERT_EQ(file_.WriteBlock(block), Outcome::Ok);
        bytes += block.size();
    }
    EXPECT_EQ(file_.CloseFile(), Outcome::Ok);
    EXPECT_EQ(bytes, samples_.size());
    EXPECT_EQ(Read("a.wav").size(), samples_.size() / 2);
}

TEST_F(Writing, ClosedEarlyIsAWholeFileOfWhatCame) {
    ASSERT_EQ(file_.SetFormatPCMFreq(44100, 2, 16), Outcome::Ok);
    ASSERT_EQ(file_.Create(Path("a.wav")), Outcome::Ok);
    EXPECT_EQ(file_.CloseFile(), Outcome::Ok);
    EXPECT_TRUE(Read("a.wav").isEmpty());
    EXPECT_EQ(Write("a.mp3", samples_.left(400)), Outcome::Ok);
    EXPECT_EQ(Read("a.mp3").size(), 400);
}

TEST_F(Writing, DestructionFinishesTheFile) {
    {
        CodecFile file;
        ASSERT_EQ(file.SetFormatPCMFreq(44100, 2, 16), Outcome::Ok);
        ASSERT_EQ(file.Create(Path("a.wav")), Outcome::Ok);
        ASSERT_EQ(file.WriteBlock(samples_), Outcome::Ok);
    }
    EXPECT_EQ(Read("a.wav"), samples_);
}

TEST_F(Writing, NextFileFinishesTheOneBefore) {
    ASSERT_EQ(file_.SetFormatPCMFreq(44100, 2, 16), Outcome::Ok);
    ASSERT_EQ(file_.Create(Path("a.wav")), Outcome::Ok);
    ASSERT_EQ(file_.WriteBlock(samples_), Outcome::Ok);
    ASSERT_EQ(file_.Create(Path("b.wav")), Outcome::Ok);
    EXPECT_EQ(Read("a.wav"), samples_);
    ASSERT_EQ(file_.WriteBlock(samples_), Outcome::Ok);
    ASSERT_EQ(file_.OpenRead(Path("a.wav")), Outcome::Ok);
    EXPECT_EQ(Read("b.wav"), samples_);
}

TEST_F(Writing, FullDiskFailsAndKeepsAnExistingFile) {
    ASSERT_EQ(file_.SetFormatPCMFreq(44100, 2, 16), Outcome::Ok);
    ASSERT_EQ(Write("a.wav", samples_.left(4000)), Outcome::Ok);
    {
        const SmallDisk disk;
        ASSERT_EQ(file_.Create(Path("a.wav")), Outcome::Ok);
        Outcome outcome = Outcome::Ok;
        for (int block = 0; block < 10 && outcome == Outcome::Ok; ++block) {
            outcome = file_.WriteBlock(samples_);
        }
        EXPECT_EQ(outcome, Outcome::WriteFailed);
        EXPECT_EQ(file_.WriteBlock(samples_), Outcome::WriteFailed);
        EXPECT_EQ(file_.CloseFile(), Outcome::WriteFailed);
    }
    EXPECT_EQ(Read("a.wav"), samples_.left(4000));
    EXPECT_EQ(QDir(QFileInfo(Path("a.wav")).path()).entryList(QDir::Files | QDir::Hidden).size(), 1);
}

TEST_F(Writing, FullDiskLeavesPartOfANewFile) {
    ASSERT_EQ(file_.SetFormatPCMFreq(44100, 2, 16), Outcome::Ok);
    {
        const SmallDisk disk;
        EXPECT_EQ(Write("a.wav", samples_), Outcome::WriteFailed);
    }
    EXPECT_TRUE(Exists("a.wav"));
}

TEST_F(Writing, HeaderlessFormatsAreReadBackByTheirLastCall) {
    const QByteArray mono = BytesOf(NoiseAndTones(16000, 1, 8000, 6));
    ASSERT_EQ(file_.SetFormatG723(8000, 3), Outcome::Ok);
    ASSERT_EQ(file_.Create(Path("a.g723")), Outcome::Ok);
    ASSERT_EQ(file_.WriteBlock(mono), Outcome::Ok);
    ASSERT_EQ(file_.CloseFile(), Outcome::Ok);
    ASSERT_EQ(file_.OpenRead(Path("a.g723")), Outcome::Ok);
    EXPECT_EQ(file_.GetLengthBytes(), mono.size());
    EXPECT_EQ(file_.GetFormatText(), QStringLiteral("G.723, 8,000 Hz, 24 kbps, Mono"));
}

TEST_F(Writing, OfferOfOggIsThatOfItsEncoder) {
    EXPECT_TRUE(file_.IsAvailableFormatOggVorbis(44100, 2, 128, 0, 0));
    EXPECT_FALSE(file_.IsAvailableFormatOggVorbis(8000, 1, 320, 0, 0));
    EXPECT_EQ(file_.SetFormatOggVorbis(8000, 1, 320, 0, 0, -1), Outcome::NotSupported);
    EXPECT_TRUE(file_.GetFormatText().isEmpty());
}

} // namespace kestrune
