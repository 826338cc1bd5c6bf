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
    // A file with title "Song" of a kind that holds all properties and cue points, for one test alone.
    virtual QString ChangeablePath() = 0;
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

TEST_P(AudioInformationContract, SavedFieldsAreReadAgain) {
    const QString path = subject_->ChangeablePath();
    ASSERT_EQ(info_.ReadTagFromFile(path), Outcome::Ok);
    TagFields& tag = info_.Tag();
    tag.album = QStringLiteral("Record");
    tag.artist = QStringLiteral("Band");
    tag.comment = QStringLiteral("Remark");
    tag.copyright = QStringLiteral("Label");
    tag.genre = 17;
    tag.title = QString();
    tag.year = 1998;
    tag.url = QStringLiteral("http://example.org/");
    tag.track = 7;
    tag.encodedBy = QStringLiteral("Coder");
    tag.composer = QStringLiteral("Writer");
    tag.genreText = QStringLiteral("Rock");
    tag.originalArtist = QStringLiteral("First");
    ASSERT_EQ(info_.SaveTagToFile(path), Outcome::Ok);
    EXPECT_EQ(info_.Tag().artist, QStringLiteral("Band"));
    info_.Tag() = TagFields();
    ASSERT_EQ(info_.ReadTagFromFile(path), Outcome::Ok);
    EXPECT_EQ(info_.Tag().album, QStringLiteral("Record"));
    EXPECT_EQ(info_.Tag().artist, QStringLiteral("Band"));
    EXPECT_EQ(info_.Tag().comment, QStringLiteral("Remark"));
    EXPECT_EQ(info_.Tag().copyright, QStringLiteral("Label"));
    EXPECT_EQ(info_.Tag().genre, 17);
    EXPECT_EQ(info_.Tag().title, QString());
    EXPECT_EQ(info_.Tag().year, 1998);
    EXPECT_EQ(info_.Tag().url, QStringLiteral("http://example.org/"));
    EXPECT_EQ(info_.Tag().track, 7);
    EXPECT_EQ(info_.Tag().encodedBy, QStringLiteral("Coder"));
    EXPECT_EQ(info_.Tag().composer, QStringLiteral("Writer"));
    EXPECT_EQ(info_.Tag().genreText, QStringLiteral("Rock"));
    EXPECT_EQ(info_.Tag().originalArtist, QStringLiteral("First"));
}

TEST_P(AudioInformationContract, FieldsThatAreNotSavedAreReadAsTheyWere) {
    const QString path = subject_->ChangeablePath();
    ASSERT_EQ(info_.ReadTagFromFile(path), Outcome::Ok);
    info_.Tag().title = QStringLiteral("edited");
    ASSERT_EQ(info_.ReadTagFromFile(path), Outcome::Ok);
    EXPECT_EQ(info_.Tag().title, QStringLiteral("Song"));
}

TEST_P(AudioInformationContract, SavingTellsWhatIsNoAudioFile) {
    EXPECT_EQ(info_.SaveTagToFile(subject_->MissingPath()), Outcome::NotFound);
    EXPECT_EQ(info_.SaveTagToFile(subject_->BrokenPath()), Outcome::NotDecodable);
}

TEST_P(AudioInformationContract, SavedCuesAreReadAgainWithTheFirstAsCurrent) {
    const QString path = subject_->ChangeablePath();
    ASSERT_EQ(info_.ReadTagFromFile(path), Outcome::Ok);
    EXPECT_EQ(info_.CueCount(), 0);
    for (const qint32 position : {300, 100, 200}) {
        ASSERT_EQ(info_.AddCue(CueAt(position)), Outcome::Ok);
        EXPECT_EQ(info_.Cue().position, position);
    }
    info_.SetCueIndex(2);
    info_.Cue() = {150, 25, QStringLiteral("label"), QStringLiteral("note"), QStringLiteral("text")};
    ASSERT_EQ(info_.SaveTagToFile(path), Outcome::Ok);
    EXPECT_EQ(info_.CueIndex(), 2);
    ASSERT_EQ(info_.ReadTagFromFile(path), Outcome::Ok);
    EXPECT_EQ(info_.CueCount(), 3);
    EXPECT_EQ(info_.CueIndex(), 1);
    EXPECT_EQ(info_.Cue().position, 300);
    info_.SetCueIndex(2);
    EXPECT_EQ(info_.Cue().position, 150);
    EXPECT_EQ(info_.Cue().length, 25);
    EXPECT_EQ(info_.Cue().label, QStringLiteral("label"));
    EXPECT_EQ(info_.Cue().note, QStringLiteral("note"));
    EXPECT_EQ(info_.Cue().text, QStringLiteral("text"));
    info_.SetCueIndex(3);
    EXPECT_EQ(info_.Cue().position, 200);
}

TEST_P(AudioInformationContract, CuesThatAreNotSavedAreForgottenByReading) {
    const QString path = subject_->ChangeablePath();
    ASSERT_EQ(info_.ReadTagFromFile(path), Outcome::Ok);
    ASSERT_EQ(info_.AddCue(CueAt(100)), Outcome::Ok);
    ASSERT_EQ(info_.ReadTagFromFile(path), Outcome::Ok);
    EXPECT_EQ(info_.CueCount(), 0);
    EXPECT_EQ(info_.CueIndex(), 0);
}

TEST_P(AudioInformationContract, DeletedCuesAreGoneFromTheFile) {
    const QString path = subject_->ChangeablePath();
    ASSERT_EQ(info_.ReadTagFromFile(path), Outcome::Ok);
    for (const qint32 position : {100, 200}) {
        ASSERT_EQ(info_.AddCue(CueAt(position)), Outcome::Ok);
    }
    ASSERT_EQ(info_.SaveTagToFile(path), Outcome::Ok);
    info_.SetCueIndex(1);
    ASSERT_EQ(info_.DeleteCue(), Outcome::Ok);
    ASSERT_EQ(info_.SaveTagToFile(path), Outcome::Ok);
    ASSERT_EQ(info_.ReadTagFromFile(path), Outcome::Ok);
    EXPECT_EQ(info_.CueCount(), 1);
    EXPECT_EQ(info_.Cue().position, 200);
}

} // namespace kestrune
