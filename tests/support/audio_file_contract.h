// What every KSTAudioFile2 does alike. Include it in one source of a test executable and
// instantiate AudioFileContract with the makers of the subjects.
#pragma once

#include "components/audio_file.h"
#include "components/pcm.h"

#include <gtest/gtest.h>

#include <QByteArray>
#include <QString>

#include <functional>
#include <memory>
#include <string>

namespace kestrune {

// An object with the files it is tried on.
class AudioFileSubject {
public:
    virtual ~AudioFileSubject() = default;
    virtual KSTAudioFile2& File() = 0;
    virtual QString GoodPath() const = 0; // 8000 Hz stereo, at least 1000 frames
    virtual QByteArray GoodSamples() const = 0;
    virtual QString MissingPath() const = 0;    // no such file
    virtual QString UnreadablePath() const = 0; // a file of no audio kind
    virtual QString TargetPath() const = 0;     // a file that can be made, and is not there at first
    virtual QString RefusedPath() const = 0;    // one that cannot be made
    // What was written to a path, of a format that keeps samples as they are.
    virtual QByteArray WrittenSamples(const QString& path) = 0;
};

struct AudioFileMaker {
    std::string name;
    std::function<std::unique_ptr<AudioFileSubject>()> make;
};

class AudioFileContract : public testing::TestWithParam<AudioFileMaker> {
protected:
    std::unique_ptr<AudioFileSubject> subject_ = GetParam().make();
    KSTAudioFile2& file_ = subject_->File();

    QByteArray ReadAll(qint64 blockBytes) {
        QByteArray all;
        QByteArray block = file_.ReadBlock(blockBytes);
        while (!block.isEmpty()) {
            all += block;
            block = file_.ReadBlock(blockBytes);
        }
        return all;
    }
};

TEST_P(AudioFileContract, NothingIsOpenAtFirst) {
    EXPECT_LT(file_.GetFormatId(), 0);
    EXPECT_TRUE(file_.ReadBlock(4096).isEmpty());
    EXPECT_EQ(file_.SeekTo(0), -1);
    EXPECT_EQ(file_.GetLengthBytes(), 0);
    EXPECT_EQ(file_.GetLengthMs(), 0);
    EXPECT_EQ(file_.CloseFile(), Outcome::NotOpen);
}

TEST_P(AudioFileContract, OpenFileTellsItsShape) {
    ASSERT_EQ(file_.OpenRead(subject_->GoodPath(), 0, 1), Outcome::Ok);
    EXPECT_GE(file_.GetFormatId(), 0);
    EXPECT_EQ(file_.GetChannels(), 2);
    EXPECT_EQ(file_.GetWaveFormat(), 8000);
    EXPECT_EQ(file_.GetLengthBytes(), subject_->GoodSamples().size());
    EXPECT_EQ(file_.GetLengthMs(), pcmMsForBytes(subject_->GoodSamples().size(), 8000, 2));
    EXPECT_FALSE(file_.GetFormatText().isEmpty());
    EXPECT_EQ(file_.BlockDivisor(), 1);
}

TEST_P(AudioFileContract, BlocksAddUpToTheSamples) {
    for (const qint64 blockBytes : {4, 7, 100, 4096, 1 << 20}) {
        ASSERT_EQ(file_.OpenRead(subject_->GoodPath()), Outcome::Ok);
        EXPECT_EQ(ReadAll(blockBytes), subject_->GoodSamples()) << blockBytes;
    }
}

TEST_P(AudioFileContract, BlocksAreWholeFramesAndFullBeforeTheEnd) {
    ASSERT_EQ(file_.OpenRead(subject_->GoodPath()), Outcome::Ok);
    EXPECT_EQ(file_.ReadBlock(1003).size(), 1000);
    EXPECT_TRUE(file_.ReadBlock(3).isEmpty());
    EXPECT_TRUE(file_.ReadBlock(0).isEmpty());
    EXPECT_TRUE(file_.ReadBlock(-5).isEmpty());
}

TEST_P(AudioFileContract, EndGivesEmptyBlocks) {
    ASSERT_EQ(file_.OpenRead(subject_->GoodPath()), Outcome::Ok);
    ReadAll(4096);
    EXPECT_TRUE(file_.ReadBlock(4096).isEmpty());
    EXPECT_TRUE(file_.ReadBlock(4096).isEmpty());
    EXPECT_EQ(file_.SeekTo(0), 0);
    EXPECT_EQ(ReadAll(4096), subject_->GoodSamples());
}

TEST_P(AudioFileContract, SeekIsCutToAFrameAndBroughtIntoTheFile) {
    ASSERT_EQ(file_.OpenRead(subject_->GoodPath()), Outcome::Ok);
    const QByteArray samples = subject_->GoodSamples();
    EXPECT_EQ(file_.SeekTo(1002, 3), 1000);
    EXPECT_EQ(file_.ReadBlock(400), samples.mid(1000, 400));
    EXPECT_EQ(file_.SeekTo(-8), 0);
    EXPECT_EQ(file_.ReadBlock(400), samples.left(400));
    EXPECT_EQ(file_.SeekTo(samples.size() + 1000), samples.size());
    EXPECT_TRUE(file_.ReadBlock(400).isEmpty());
    EXPECT_EQ(file_.SeekTo(samples.size() - 4), samples.size() - 4);
    EXPECT_EQ(file_.ReadBlock(400), samples.right(4));
}

TEST_P(AudioFileContract, ClosedFileGivesNothing) {
    ASSERT_EQ(file_.OpenRead(subject_->GoodPath()), Outcome::Ok);
    EXPECT_EQ(file_.CloseFile(), Outcome::Ok);
    EXPECT_LT(file_.GetFormatId(), 0);
    EXPECT_TRUE(file_.ReadBlock(400).isEmpty());
    EXPECT_EQ(file_.CloseFile(), Outcome::NotOpen);
}

TEST_P(AudioFileContract, MissingFileIsNotFound) {
    EXPECT_EQ(file_.OpenRead(subject_->MissingPath()), Outcome::NotFound);
    EXPECT_LT(file_.GetFormatId(), 0);
    EXPECT_TRUE(file_.ReadBlock(400).isEmpty());
}

TEST_P(AudioFileContract, FailedOpenClosesTheFileBefore) {
    ASSERT_EQ(file_.OpenRead(subject_->GoodPath()), Outcome::Ok);
    EXPECT_EQ(file_.OpenRead(subject_->UnreadablePath()), Outcome::NotDecodable);
    EXPECT_LT(file_.GetFormatId(), 0);
    EXPECT_TRUE(file_.ReadBlock(400).isEmpty());
    EXPECT_EQ(file_.GetLengthBytes(), 0);
}

TEST_P(AudioFileContract, SecondOpenStartsAnew) {
    ASSERT_EQ(file_.OpenRead(subject_->GoodPath()), Outcome::Ok);
    file_.ReadBlock(400);
    ASSERT_EQ(file_.OpenRead(subject_->GoodPath()), Outcome::Ok);
    EXPECT_EQ(ReadAll(4096), subject_->GoodSamples());
}

TEST_P(AudioFileContract, SettingsWithoutEffectChangeNothing) {
    file_.SetBlockOption(1, 1);
    file_.SetBlockOption(2, 2);
    file_.SetFlag(KSTAudioFile2::wholeFiles);
    EXPECT_EQ(file_.SelectFormat(), Outcome::NotSupported);
    ASSERT_EQ(file_.OpenRead(subject_->GoodPath(), 7, 9), Outcome::Ok);
    EXPECT_EQ(ReadAll(4096), subject_->GoodSamples());
}

TEST_P(AudioFileContract, WrittenSamplesArrive) {
    ASSERT_EQ(file_.SetFormatPCMFreq(8000, 2, 16), Outcome::Ok);
    ASSERT_EQ(file_.Create(subject_->TargetPath(), 0), Outcome::Ok);
    EXPECT_GE(file_.GetFormatId(), 0);
    file_.SetSourceFormat(8000, 2);
    const QByteArray samples = subject_->GoodSamples();
    EXPECT_EQ(file_.WriteBlock(samples.left(4000)), Outcome::Ok);
    EXPECT_EQ(file_.WriteBlock({}), Outcome::Ok);
    EXPECT_EQ(file_.WriteBlock(samples.mid(4000)), Outcome::Ok);
    EXPECT_EQ(file_.CloseFile(), Outcome::Ok);
    EXPECT_LT(file_.GetFormatId(), 0);
    EXPECT_EQ(file_.CloseFile(), Outcome::NotOpen);
    EXPECT_EQ(subject_->WrittenSamples(subject_->TargetPath()), samples);
}

TEST_P(AudioFileContract, NothingIsWrittenWithoutCreate) {
    ASSERT_EQ(file_.SetFormatPCMFreq(8000, 2, 16), Outcome::Ok);
    EXPECT_EQ(file_.WriteBlock(subject_->GoodSamples()), Outcome::NotOpen);
    ASSERT_EQ(file_.OpenRead(subject_->GoodPath()), Outcome::Ok);
    EXPECT_EQ(file_.WriteBlock(subject_->GoodSamples()), Outcome::NotOpen);
}

TEST_P(AudioFileContract, RefusedTargetLeavesNothingOpen) {
    ASSERT_EQ(file_.SetFormatPCMFreq(8000, 2, 16), Outcome::Ok);
    EXPECT_NE(file_.Create(subject_->RefusedPath()), Outcome::Ok);
    EXPECT_LT(file_.GetFormatId(), 0);
    EXPECT_EQ(file_.WriteBlock(subject_->GoodSamples()), Outcome::NotOpen);
    EXPECT_EQ(file_.CloseFile(), Outcome::NotOpen);
}

TEST_P(AudioFileContract, OneFileAtATimeIsOpen) {
    ASSERT_EQ(file_.SetFormatPCMFreq(8000, 2, 16), Outcome::Ok);
    ASSERT_EQ(file_.OpenRead(subject_->GoodPath()), Outcome::Ok);
    ASSERT_EQ(file_.Create(subject_->TargetPath()), Outcome::Ok);
    EXPECT_TRUE(file_.ReadBlock(400).isEmpty());
    EXPECT_EQ(file_.GetLengthBytes(), 0);
    EXPECT_EQ(file_.WriteBlock(subject_->GoodSamples().left(400)), Outcome::Ok);
    ASSERT_EQ(file_.OpenRead(subject_->GoodPath()), Outcome::Ok);
    EXPECT_EQ(file_.WriteBlock(subject_->GoodSamples()), Outcome::NotOpen);
    EXPECT_EQ(ReadAll(4096), subject_->GoodSamples());
    EXPECT_EQ(file_.CloseFile(), Outcome::Ok);
    EXPECT_EQ(subject_->WrittenSamples(subject_->TargetPath()), subject_->GoodSamples().left(400));
}

TEST_P(AudioFileContract, WhatIsExpectedChangesNothing) {
    file_.SetFlag(KSTAudioFile2::wholeFiles);
    ASSERT_EQ(file_.SetFormatPCMFreq(8000, 2, 16), Outcome::Ok);
    file_.ExpectOutput(subject_->RefusedPath());
    file_.ExpectOutput(subject_->TargetPath());
    ASSERT_EQ(file_.Create(subject_->TargetPath()), Outcome::Ok);
    file_.SetSourceFormat(8000, 2);
    EXPECT_EQ(file_.WriteBlock(subject_->GoodSamples()), Outcome::Ok);
    EXPECT_EQ(file_.CloseFile(), Outcome::Ok);
    file_.ForgetExpectedOutputs();
    EXPECT_EQ(subject_->WrittenSamples(subject_->TargetPath()), subject_->GoodSamples());
}

TEST_P(AudioFileContract, SetFormatGivesAText) {
    EXPECT_EQ(file_.SetFormatMP3(44100, 128, 2), Outcome::Ok);
    EXPECT_FALSE(file_.GetFormatText().isEmpty());
    EXPECT_EQ(file_.SetFormatRaw(RawMuLaw, 8000, 1, 16), Outcome::Ok);
    EXPECT_EQ(file_.GetRawType(), RawMuLaw);
}

} // namespace kestrune
