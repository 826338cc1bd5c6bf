// Cue points of WAVE files: those of other programs, changes of them, and what stays.
#include "backends/tag_writing/chunk_builder.h"
#include "backends/tag_writing/tag_judges.h"
#include "backends/tags/tag_information.h"

#include <gtest/gtest.h>

namespace kestrune {

namespace {

QByteArray Stretch(quint32 number, quint32 length, const QByteArray& text) {
    return Chunk("ltxt", Little(number) + Little(length) + "beat" + Little(49, 2) + Little(7, 2) +
                             Little(1, 2) + Little(1252, 2) + text);
}

// Three points as an editor of sound lays them out: numbers with gaps, texts in another order than the
// points, an item that is nobody's, one of a kind unknown here, and the chunks in front of the sound.
QByteArray ForeignTexts() {
    return "adtl" + Chunk("labl", Little(7) + QByteArray("Chorus\0", 7)) +
           Chunk("note", Little(3) + QByteArray("Caf\xE9\0", 5)) + Chunk("file", Little(3) + "\1\2\3") +
           Stretch(3, 400, "words") + Chunk("labl", Little(3) + QByteArray("Start\0", 6)) +
           Chunk("labl", Little(99) + QByteArray("Nobody\0", 7));
}

QByteArray ForeignCues() {
    return Little(3) + CueEntry(3, 1000) + CueEntry(7, 2500) + CueEntry(0x80000010, 4000);
}

QByteArray ForeignWave() {
    return Wave(Chunk("cue ", ForeignCues()) + FormatChunk() + Chunk("LIST", ForeignTexts()) + DataChunk() +
                Chunk("xtra", "abc"));
}

CuePoint Point(qint32 position, qint32 length = 0, const QString& label = {}, const QString& note = {},
               const QString& text = {}) {
    return {position, length, label, note, text};
}

class CuePoints : public testing::Test {
protected:
    void Open(const QByteArray& bytes) {
        path_ = made_.Write(QStringLiteral("a.wav"), bytes);
        Reopen();
    }
    void Reopen() {
        info_ = MakeAudioInformation();
        ASSERT_EQ(info_->ReadTagFromFile(path_), Outcome::Ok);
    }
    void Save() { ASSERT_EQ(info_->SaveTagToFile(path_), Outcome::Ok); }
    CuePoint& At(qint32 index) {
        info_->SetCueIndex(index);
        return info_->Cue();
    }
    void ExpectPoint(qint32 index, const CuePoint& wanted) {
        const CuePoint& told = At(index);
        EXPECT_EQ(told.position, wanted.position) << index;
        EXPECT_EQ(told.length, wanted.length) << index;
        EXPECT_EQ(told.label, wanted.label) << index;
        EXPECT_EQ(told.note, wanted.note) << index;
        EXPECT_EQ(told.text, wanted.text) << index;
    }

    MadeFiles made_;
    QString path_;
    std::unique_ptr<KSTAudioInformation2> info_;
};

TEST_F(CuePoints, ThoseOfAnotherProgramAreRead) {
    Open(ForeignWave());
    EXPECT_EQ(info_->CueCount(), 3);
    EXPECT_EQ(info_->CueIndex(), 1);
    ExpectPoint(
        1, Point(1000, 400, QStringLiteral("Start"), QString::fromUtf8("Café"), QStringLiteral("words")));
    ExpectPoint(2, Point(2500, 0, QStringLiteral("Chorus")));
    ExpectPoint(3, Point(4000));
}

TEST_F(CuePoints, SavingThemUnchangedLeavesTheFile) {
    Open(ForeignWave());
    Save();
    EXPECT_EQ(ContentOf(path_), ForeignWave());
}

TEST_F(CuePoints, AChangeTouchesNothingElse) {
    Open(ForeignWave());
    At(2).label = QStringLiteral("Bridge");
    At(3).position = 4001;
    At(1).length = 500;
    Save();
    QByteArray wanted = ForeignWave();
    wanted.replace("Chorus", "Bridge");
    wanted.replace(CueEntry(0x80000010, 4000), CueEntry(0x80000010, 4001));
    wanted.replace(Little(3) + Little(400), Little(3) + Little(500));
    EXPECT_EQ(ContentOf(path_), wanted);
}

TEST_F(CuePoints, ADeletedOneTakesItsTextsAlong) {
    Open(ForeignWave());
    info_->SetCueIndex(2);
    ASSERT_EQ(info_->DeleteCue(), Outcome::Ok);
    Save();
    const QByteArray content = ContentOf(path_);
    EXPECT_FALSE(content.contains("Chorus"));
    EXPECT_TRUE(content.contains("Nobody"));
    EXPECT_TRUE(content.contains(Chunk("cue ", Little(2) + CueEntry(3, 1000) + CueEntry(0x80000010, 4000))));
    Reopen();
    EXPECT_EQ(info_->CueCount(), 2);
    ExpectPoint(2, Point(4000));
}

TEST_F(CuePoints, WithTheLastOneTheChunksGo) {
    const QByteArray bare = Wave(FormatChunk() + DataChunk());
    Open(bare);
    ASSERT_EQ(info_->AddCue(Point(5, 6, QStringLiteral("a"), QStringLiteral("b"), QStringLiteral("c"))),
              Outcome::Ok);
    Save();
    EXPECT_TRUE(ContentOf(path_).contains("adtl"));
    ASSERT_EQ(info_->DeleteCue(), Outcome::Ok);
    Save();
    EXPECT_EQ(ContentOf(path_), bare);
}

TEST_F(CuePoints, BehindSoundWithoutItsPaddingTheyAreFoundAgain) {
    // Two points make a chunk whose size begins with a letter: without the padding "ue 4" would pass for a
    // name.
    const QByteArray sound = "data" + Little(8001) + DataChunk(8001).mid(8, 8001);
    const QByteArray one = Chunk("cue ", Little(1) + CueEntry(1, 5));
    Open(Wave(FormatChunk() + sound + one));
    ASSERT_EQ(info_->CueCount(), 1);
    ASSERT_EQ(info_->AddCue(Point(9)), Outcome::Ok);
    Save();
    EXPECT_TRUE(ContentOf(path_).contains(sound + QByteArray(1, '\0') + "cue "));
    Reopen();
    EXPECT_EQ(info_->CueCount(), 2);
    ExpectPoint(1, Point(5));
    ExpectPoint(2, Point(9));
}

TEST_F(CuePoints, WhatMovesUpToSoundWithoutItsPaddingIsFoundAgain) {
    // The size of the list begins with a letter.
    const QByteArray sound = "data" + Little(8001) + DataChunk(8001).mid(8, 8001);
    const QByteArray list =
        Chunk("LIST", "INFO" + Chunk("INAM", QByteArray("A title of forty letters, counted by me\0", 40)));
    ASSERT_EQ(list.at(4), '4');
    Open(Wave(FormatChunk() + sound + Chunk("cue ", Little(1) + CueEntry(1, 5)) + list));
    ASSERT_EQ(info_->CueCount(), 1);
    ASSERT_EQ(info_->DeleteCue(), Outcome::Ok);
    Save();
    EXPECT_EQ(ContentOf(path_), Wave(FormatChunk() + sound + QByteArray(1, '\0') + list));
    Reopen();
    EXPECT_EQ(info_->Tag().title, QStringLiteral("A title of forty letters, counted by me"));
}

TEST_F(CuePoints, NewOnesComeBackInEveryScript) {
    Open(ForeignWave());
    const CuePoint unicode =
        Point(7999, 12, QString::fromUtf8("Ωδή"), QString::fromUtf8("日本語 €"), QString::fromUtf8("Кино 𝄞"));
    ASSERT_EQ(info_->AddCue(unicode), Outcome::Ok);
    ASSERT_EQ(info_->AddCue(Point(1, 0, {}, QStringLiteral("only a note"))), Outcome::Ok);
    info_->Tag().title = QStringLiteral("Song");
    Save();
    Reopen();
    EXPECT_EQ(info_->CueCount(), 5);
    ExpectPoint(
        1, Point(1000, 400, QStringLiteral("Start"), QString::fromUtf8("Café"), QStringLiteral("words")));
    ExpectPoint(4, unicode);
    ExpectPoint(5, Point(1, 0, {}, QStringLiteral("only a note")));
    EXPECT_EQ(info_->Tag().title, QStringLiteral("Song"));
    const QByteArray saved = ContentOf(path_);
    Save();
    EXPECT_EQ(ContentOf(path_), saved);
}

TEST_F(CuePoints, ANewOneDoesNotTakeTheNumberOfADeletedOne) {
    Open(Wave(FormatChunk() + DataChunk() + Chunk("cue ", Little(2) + CueEntry(1, 10) + CueEntry(2, 20)) +
              Chunk("LIST", "adtl" + Chunk("file", Little(2) + "old"))));
    info_->SetCueIndex(2);
    ASSERT_EQ(info_->DeleteCue(), Outcome::Ok);
    ASSERT_EQ(info_->AddCue(Point(30)), Outcome::Ok);
    Save();
    EXPECT_TRUE(ContentOf(path_).contains(Chunk("cue ", Little(2) + CueEntry(1, 10) + CueEntry(3, 30))));
}

TEST_F(CuePoints, AnotherProgramsOrderOfPlayingStays) {
    const QByteArray entry = Little(1) + Little(77) + "data" + Little(0) + Little(0) + Little(1000);
    Open(Wave(FormatChunk() + DataChunk() + Chunk("cue ", Little(1) + entry)));
    At(1).position = 2000;
    Save();
    const QByteArray wanted = Little(1) + Little(77) + "data" + Little(0) + Little(0) + Little(2000);
    EXPECT_TRUE(ContentOf(path_).contains(wanted));
}

TEST_F(CuePoints, SavingATagAloneLeavesThem) {
    Open(ForeignWave());
    ASSERT_EQ(SaveBlindly(path_), Outcome::Ok);
    Reopen();
    EXPECT_EQ(info_->CueCount(), 3);
    EXPECT_EQ(info_->Tag().title, QStringLiteral("Song"));
}

TEST_F(CuePoints, AnotherProgramReadsThem) {
    Open(Wave(FormatChunk() + DataChunk()));
    ASSERT_EQ(info_->AddCue(Point(2000, 800, QStringLiteral("First"), QStringLiteral("Noted"))), Outcome::Ok);
    ASSERT_EQ(info_->AddCue(Point(6000, 0, QStringLiteral("Second"))), Outcome::Ok);
    Save();
    const auto listed = OutputOf(QStringLiteral("ffprobe"),
                                 QStringLiteral("-v error -of csv -show_chapters").split(QLatin1Char(' ')) +
                                     QStringList(path_));
    ASSERT_TRUE(listed);
    EXPECT_TRUE(listed->contains("0.250000")) << listed->constData(); // 2000 / 8000
    EXPECT_TRUE(listed->contains("First")) << listed->constData();
    EXPECT_TRUE(listed->contains("0.750000")) << listed->constData();
    EXPECT_TRUE(listed->contains("Second")) << listed->constData();
}

TEST_F(CuePoints, BrokenChunksAreSafe) {
    const QByteArray good = ForeignWave();
    for (qsizetype at = 12; at < 320; ++at) {
        for (const char byte : {'\0', '\1', '\x7F', '\xFF'}) {
            QByteArray broken = good;
            broken[at] = byte;
            const QString path = made_.Write(QStringLiteral("broken.wav"), broken);
            const auto info = MakeAudioInformation();
            if (info->ReadTagFromFile(path) != Outcome::Ok) {
                continue;
            }
            const qint32 count = info->CueCount();
            info->AddCue(Point(123, 4, QStringLiteral("new")));
            if (info->SaveTagToFile(path) == Outcome::Ok) {
                ASSERT_EQ(info->ReadTagFromFile(path), Outcome::Ok) << at;
                EXPECT_EQ(info->CueCount(), count + 1) << at << ' ' << static_cast<int>(byte);
            } else {
                EXPECT_EQ(ContentOf(path), broken) << at;
            }
        }
    }
}

TEST_F(CuePoints, OtherKindsTakeNone) {
    const QString mp3 = made_.Encode(QStringLiteral("a.mp3"), {});
    const auto info = MakeAudioInformation();
    ASSERT_EQ(info->ReadTagFromFile(mp3), Outcome::Ok);
    EXPECT_EQ(info->AddCue(Point(1)), Outcome::NotSupported);
    EXPECT_EQ(info->CueCount(), 0);
}

} // namespace

} // namespace kestrune
