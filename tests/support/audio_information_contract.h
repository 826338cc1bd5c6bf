// What every KSTAudioInformation2 does alike. Include it in one source of a test executable and instantiate
// AudioInformationContract with the makers of the subjects.
#pragma once

#include "components/audio_information.h"

#include <gtest/gtest.h>

#include <QString>

#include <functional>
#include <memory>
#include <string>

namespace kestrune {

// An object with the files it is tried on.
class AudioInformationSubject {
public:
    virtual ~AudioInformationSubject() = default;
    virtual KSTAudioInformation2& Information() = 0;
    virtual QString GoodPath() const = 0;    // audio above half a second, with title "Song" and artist "Band"
    virtual QString MissingPath() const = 0; // no such file
    virtual QString BrokenPath() const = 0;  // a file of no audio kind
};

struct AudioInformationMaker {
    std::string name;
    std::function<std::unique_ptr<AudioInformationSubject>()> make;
};

class AudioInformationContract : public testing::TestWithParam<AudioInformationMaker> {
protected:
    std::unique_ptr<AudioInformationSubject> subject_ = GetParam().make();
    KSTAudioInformation2& info_ = subject_->Information();

    void ExpectAllReadsEmpty() {
        EXPECT_FALSE(info_.IsValid());
        EXPECT_EQ(info_.GetBitrate(), 0);
        EXPECT_EQ(info_.GetDurationMs(), 0);
        EXPECT_EQ(info_.GetFormatString(), QString());
        EXPECT_EQ(info_.GetTitle(), QString());
        EXPECT_EQ(info_.GetArtist(), QString());
        EXPECT_EQ(info_.Frequency(), 0);
        EXPECT_EQ(info_.Channels(), 0);
        EXPECT_EQ(info_.Samples(), 0);
        EXPECT_EQ(info_.FileSize(), 0);
        EXPECT_EQ(info_.BitsPerSample(), 0);
        EXPECT_EQ(info_.FormatTag(), 0);
    }

    static CuePoint CueAt(qint32 position) {
        CuePoint cue;
        cue.position = position;
        return cue;
    }
};

TEST_P(AudioInformationContract, NothingIsKnownAtFirst) {
    ExpectAllReadsEmpty();
    EXPECT_EQ(info_.CueCount(), 0);
    EXPECT_EQ(info_.CueIndex(), 0);
}

TEST_P(AudioInformationContract, GoodFileTellsItsFigures) {
    ASSERT_EQ(info_.OpenInfo(subject_->GoodPath()), Outcome::Ok);
    EXPECT_TRUE(info_.IsValid());
    EXPECT_GT(info_.GetDurationMs(), 500);
    EXPECT_GT(info_.GetBitrate(), 1000);
    EXPECT_GT(info_.Frequency(), 0);
    EXPECT_GT(info_.Channels(), 0);
    EXPECT_NEAR(static_cast<double>(info_.Samples()),
                static_cast<double>(info_.GetDurationMs()) * info_.Frequency() / 1000,
                info_.Frequency() / 1000.0);
    EXPECT_GT(info_.FileSize(), 0);
    EXPECT_GT(info_.BitsPerSample(), 0);
    EXPECT_GT(info_.FormatTag(), 0);
    EXPECT_FALSE(info_.GetFormatString().isEmpty());
    EXPECT_EQ(info_.GetTitle(), QStringLiteral("Song"));
    EXPECT_EQ(info_.GetArtist(), QStringLiteral("Band"));
}

TEST_P(AudioInformationContract, FailedProbeLeavesNothingOfTheOneBefore) {
    ASSERT_EQ(info_.OpenInfo(subject_->GoodPath()), Outcome::Ok);
    EXPECT_EQ(info_.OpenInfo(subject_->MissingPath()), Outcome::NotFound);
    ExpectAllReadsEmpty();
    ASSERT_EQ(info_.OpenInfo(subject_->GoodPath()), Outcome::Ok);
    EXPECT_EQ(info_.OpenInfo(subject_->BrokenPath()), Outcome::NotDecodable);
    ExpectAllReadsEmpty();
}

TEST_P(AudioInformationContract, ReadingGivesFieldsAndFigures) {
    ASSERT_EQ(info_.ReadTagFromFile(subject_->GoodPath()), Outcome::Ok);
    EXPECT_EQ(info_.Tag().title, QStringLiteral("Song"));
    EXPECT_EQ(info_.Tag().artist, QStringLiteral("Band"));
    EXPECT_GT(info_.GetDurationMs(), 500);
    EXPECT_GT(info_.Frequency(), 0);
}

TEST_P(AudioInformationContract, FailedReadKeepsWhatTheObjectHeld) {
    ASSERT_EQ(info_.ReadTagFromFile(subject_->GoodPath()), Outcome::Ok);
    const qint64 durationMs = info_.GetDurationMs();
    info_.Tag().album = QStringLiteral("edited");
    EXPECT_EQ(info_.ReadTagFromFile(subject_->MissingPath()), Outcome::NotFound);
    EXPECT_EQ(info_.ReadTagFromFile(subject_->BrokenPath()), Outcome::NotDecodable);
    EXPECT_EQ(info_.Tag().title, QStringLiteral("Song"));
    EXPECT_EQ(info_.Tag().album, QStringLiteral("edited"));
    EXPECT_EQ(info_.GetDurationMs(), durationMs);
}

TEST_P(AudioInformationContract, GenreNamesEndAt147) {
    EXPECT_FALSE(info_.GenreName(0).isEmpty());
    EXPECT_FALSE(info_.GenreName(147).isEmpty());
    EXPECT_TRUE(info_.GenreName(148).isEmpty());
    EXPECT_TRUE(info_.GenreName(255).isEmpty());
    EXPECT_TRUE(info_.GenreName(-1).isEmpty());
}

TEST_P(AudioInformationContract, CueIndexIsBroughtIntoTheList) {
    info_.SetCueIndex(3);
    EXPECT_EQ(info_.CueIndex(), 0);
    for (const qint32 position : {100, 200, 300}) {
        ASSERT_EQ(info_.AddCue(CueAt(position)), Outcome::Ok);
    }
    EXPECT_EQ(info_.CueCount(), 3);
    info_.SetCueIndex(0);
    EXPECT_EQ(info_.CueIndex(), 1);
    EXPECT_EQ(info_.Cue().position, 100);
    info_.SetCueIndex(9);
    EXPECT_EQ(info_.CueIndex(), 3);
    EXPECT_EQ(info_.Cue().position, 300);
}

TEST_P(AudioInformationContract, CueBehindADeletedOneBecomesCurrent) {
    for (const qint32 position : {100, 200, 300}) {
        ASSERT_EQ(info_.AddCue(CueAt(position)), Outcome::Ok);
    }
    info_.SetCueIndex(2);
    ASSERT_EQ(info_.DeleteCue(), Outcome::Ok);
    EXPECT_EQ(info_.CueIndex(), 2);
    EXPECT_EQ(info_.Cue().position, 300);
    ASSERT_EQ(info_.DeleteCue(), Outcome::Ok);
    EXPECT_EQ(info_.CueIndex(), 1);
    EXPECT_EQ(info_.Cue().position, 100);
    ASSERT_EQ(info_.DeleteCue(), Outcome::Ok);
    EXPECT_EQ(info_.CueIndex(), 0);
    EXPECT_EQ(info_.DeleteCue(), Outcome::NotOpen);
}

TEST_P(AudioInformationContract, CueOfAnEmptyListIsNotStored) {
    info_.Cue().position = 55;
    EXPECT_EQ(info_.Cue().position, 0);
    EXPECT_EQ(info_.CueCount(), 0);
}

TEST_P(AudioInformationContract, EditsOfTheCurrentCueStay) {
    ASSERT_EQ(info_.AddCue(CueAt(100)), Outcome::Ok);
    info_.Cue().label = QStringLiteral("here");
    ASSERT_EQ(info_.AddCue(CueAt(200)), Outcome::Ok);
    info_.SetCueIndex(1);
    EXPECT_EQ(info_.Cue().label, QStringLiteral("here"));
}

} // namespace kestrune
