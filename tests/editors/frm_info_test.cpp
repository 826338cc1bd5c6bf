// The tag editor's window by mouse and keys.
#include "editors/frm_info.h"

#include "editor_fixture.h"
#include "editors/frm_cue_list.h"
#include "tag_editor_fixture.h"

#include <QApplication>

namespace kestrune {
namespace {

class FrmInfoTest : public TagEditorFixture {
protected:
    void Open() {
        window.Load();
        hand.Show();
    }
    QComboBox* Genre() { return hand.Find<QComboBox>(QStringLiteral("infoGenre")); }
    QRadioButton* Option(int index) {
        return hand.Find<QRadioButton>(QStringLiteral("Option1(%1)").arg(index));
    }
    std::string Label(const char* name) {
        return hand.Find<QLabel>(QLatin1String(name))->text().toStdString();
    }
    bool IsUpdateEnabled() { return hand.ImageCMD(0)->isEnabled(); }

    FrmInfo window{{state, rows, information, prompts}, nullptr};
    EditorHand hand{window};
};

TEST_F(FrmInfoTest, ShowsTheTagAndTheSound) {
    Open();
    EXPECT_EQ(window.objectName(), QStringLiteral("frmInfo"));
    EXPECT_EQ(hand.BoxText("aFile"), QStringLiteral("/music/two.mp3"));
    EXPECT_EQ(hand.BoxText("infoTitle"), QStringLiteral("Harbour steps"));
    EXPECT_EQ(hand.BoxText("infoArtist"), QStringLiteral("Tern"));
    EXPECT_EQ(hand.BoxText("infoAlbum"), QStringLiteral("Coast"));
    EXPECT_EQ(Genre()->currentIndex(), 17);
    EXPECT_EQ(Genre()->count(), 148);
    EXPECT_EQ(Genre()->itemText(147), QStringLiteral("Genre 147"));
    EXPECT_EQ(hand.BoxText("infoGenreS"), QStringLiteral("Shanty"));
    EXPECT_EQ(hand.BoxText("infoCopyright"), QStringLiteral("2004 Tern"));
    EXPECT_EQ(hand.BoxText("infoComment"), QStringLiteral("By night"));
    EXPECT_EQ(hand.BoxText("infoYear"), QStringLiteral("2004"));
    EXPECT_EQ(hand.BoxText("infoTrack"), QStringLiteral("7"));
    EXPECT_EQ(hand.BoxText("infoComposer"), QStringLiteral("A. Gull"));
    EXPECT_EQ(hand.BoxText("infoURL"), QStringLiteral("http://tern.example/"));
    EXPECT_EQ(hand.BoxText("infoEncodedBy"), QStringLiteral("Me"));
    EXPECT_EQ(hand.BoxText("infoOriginalArtist"), QStringLiteral("Auk"));
    EXPECT_EQ(Label("infoFormatString"), "MPEG Layer-3, 44,100 Hz, 128 KBPS, Stereo");
    EXPECT_EQ(Label("infoFrequency"), "44100 Hz");
    EXPECT_EQ(Label("infoBitrate"), "128000 bps");
    EXPECT_EQ(Label("infoDuration"), "2000 ms");
    EXPECT_EQ(Label("infoChannels"), "2");
    EXPECT_EQ(Label("infoSamples"), "88200");
    EXPECT_EQ(Label("infoSize"), "32000");
    EXPECT_EQ(Label("infoBitsPerSample"), "16");
    EXPECT_EQ(Label("infoFormatTag"), "85");
    EXPECT_TRUE(Option(0)->isChecked());
    hand.Keep(QStringLiteral("frmInfo"));
}

// As large as the numbers and texts of a long recording get.
TEST_F(FrmInfoTest, LongTextsFit) {
    FakeAudioInformation::Probe& probe = information.files[QStringLiteral("/music/two.mp3")];
    probe.formatString = QStringLiteral("Windows Media Audio V2, 44,100 Hz, 192 KBPS, Stereo");
    probe.bitrateBps = 1536000;
    probe.durationMs = 35999999;
    probe.sampleRateHz = 192000;
    probe.fileSizeBytes = 4294967295;
    probe.formatTag = 65534;
    Stored("/music/two.mp3").comment =
        QStringLiteral("Taken down on the outer pier, with the wind from the north");
    Open();
    hand.ExpectNothingCutOff();
    const auto* format = hand.Find<QLabel>(QStringLiteral("infoFormatString"));
    EXPECT_LE(format->heightForWidth(format->width()), format->height());
    EXPECT_EQ(hand.Find<QLineEdit>(QStringLiteral("infoComment"))->cursorPosition(), 0);
    hand.Keep(QStringLiteral("frmInfo-long"));
}

TEST_F(FrmInfoTest, NamesAndRoomForWords) {
    Open();
    hand.ExpectNames();
    hand.ExpectNothingCutOff();
    EXPECT_EQ(hand.Find<QLabel>(QStringLiteral("infoBitrate"))->accessibleName(),
              QStringLiteral("Bitrate 128000 bps"));
    EXPECT_GE(window.width(), 520);
    EXPECT_LE(window.width(), 600);
    const QStringList words = {"Update", "Close", "Previous", "Next", "Cues"};
    for (int index = 0; index < words.size(); ++index) {
        EXPECT_EQ(hand.ImageCMD(index)->accessibleName(), words[index]);
    }
}

TEST_F(FrmInfoTest, TheFirstKeyPressEnablesUpdate) {
    Open();
    EXPECT_FALSE(IsUpdateEnabled());
    QTest::keyClick(window.focusWidget(), Qt::Key_X);
    EXPECT_TRUE(IsUpdateEnabled());
    hand.Keep(QStringLiteral("frmInfo-edited"));
    hand.Click(3);
    EXPECT_FALSE(IsUpdateEnabled());
    EXPECT_EQ(hand.BoxText("infoTitle"), QStringLiteral("Slow tide"));
}

TEST_F(FrmInfoTest, AChangeOfAnyControlIsAnEdit) {
    Open();
    for (const char* name :
         {"infoTitle", "infoArtist", "infoAlbum", "infoGenreS", "infoCopyright", "infoComment", "infoYear",
          "infoTrack", "infoComposer", "infoURL", "infoEncodedBy", "infoOriginalArtist"}) {
        hand.Click(3);
        EXPECT_FALSE(IsUpdateEnabled()) << name;
        hand.Type(name, QStringLiteral("1"));
        EXPECT_TRUE(IsUpdateEnabled()) << name;
    }
    hand.Click(3);
    Genre()->setFocus();
    QTest::keyClick(Genre(), Qt::Key_Down);
    EXPECT_TRUE(IsUpdateEnabled());
}

TEST_F(FrmInfoTest, EachBoxIsWrittenToItsOwnProperty) {
    Open();
    const QStringList names = {"infoTitle",     "infoArtist",        "infoAlbum",    "infoGenreS",
                               "infoCopyright", "infoComment",       "infoComposer", "infoURL",
                               "infoEncodedBy", "infoOriginalArtist"};
    for (const QString& name : names) {
        hand.Type(name.toLatin1().constData(), name);
    }
    hand.Type("infoYear", QStringLiteral("1999"));
    hand.Type("infoTrack", QStringLiteral("12"));
    Genre()->setFocus();
    QTest::keyClick(Genre(), Qt::Key_Home);
    hand.Click(0);
    const TagFields& stored = Stored("/music/two.mp3");
    EXPECT_EQ(
        QStringList({stored.title, stored.artist, stored.album, stored.genreText, stored.copyright,
                     stored.comment, stored.composer, stored.url, stored.encodedBy, stored.originalArtist}),
        names);
    EXPECT_EQ(stored.year, 1999);
    EXPECT_EQ(stored.track, 12);
    EXPECT_EQ(stored.genre, 0);
    EXPECT_EQ(RowTextOf(2), QStringLiteral("2.infoArtist - infoTitle"));
    EXPECT_EQ(prompts.messages.last().text, QStringLiteral("Updated Successfully!"));
    EXPECT_TRUE(IsUpdateEnabled());
}

TEST_F(FrmInfoTest, EnterUpdatesOnlyWhatWasEdited) {
    Open();
    QTest::keyClick(window.focusWidget(), Qt::Key_Return);
    EXPECT_TRUE(prompts.messages.isEmpty());
    hand.Type("infoTitle", QStringLiteral("New"));
    QTest::keyClick(window.focusWidget(), Qt::Key_Return);
    EXPECT_EQ(Stored("/music/two.mp3").title, QStringLiteral("New"));
    EXPECT_TRUE(window.isVisible());
}

TEST_F(FrmInfoTest, TextsOfAnyLengthStayWhole) {
    TagFields& stored = Stored("/music/two.mp3");
    stored.comment = QStringLiteral("0123456789").repeated(10000);
    stored.composer = QStringLiteral("two\nlines\r\nand\ttab");
    const TagFields before = stored;
    Open();
    EXPECT_EQ(hand.Find<QLineEdit>(QStringLiteral("infoComment"))->text(), before.comment);
    hand.Type("infoTitle", QStringLiteral("New"));
    hand.Click(0);
    EXPECT_EQ(stored.title, QStringLiteral("New"));
    EXPECT_EQ(stored.comment, before.comment);
    EXPECT_EQ(stored.composer, before.composer);
    auto* comment = hand.Find<QLineEdit>(QStringLiteral("infoComment"));
    comment->setFocus();
    comment->end(false);
    QTest::keyClicks(comment, QStringLiteral("!"));
    hand.Click(0);
    EXPECT_EQ(stored.comment, before.comment + u'!');
}

TEST_F(FrmInfoTest, PagingByKeysAndMouse) {
    Open();
    hand.Click(2);
    EXPECT_EQ(hand.BoxText("aFile"), QStringLiteral("/music/one.mp3"));
    QTest::keyClick(window.focusWidget(), Qt::Key_PageUp);
    EXPECT_EQ(hand.BoxText("aFile"), QStringLiteral("/other/three.ogg"));
    QTest::keyClick(window.focusWidget(), Qt::Key_PageDown);
    EXPECT_EQ(hand.BoxText("aFile"), QStringLiteral("/music/one.mp3"));
    QTest::keyClick(hand.ImageCMD(3), Qt::Key_Space);
    EXPECT_EQ(hand.BoxText("aFile"), QStringLiteral("/music/two.mp3"));
}

TEST_F(FrmInfoTest, TheOptionsShowTheOtherTag) {
    Open();
    hand.Type("infoTitle", QStringLiteral("Unsaved"));
    QTest::mouseClick(Option(1), Qt::LeftButton, {}, {7, Option(1)->height() / 2});
    EXPECT_EQ(hand.BoxText("infoTitle"), QStringLiteral("Harbour steps (long)"));
    EXPECT_EQ(Genre()->currentIndex(), -1);
    EXPECT_FALSE(Option(0)->isChecked());
    Option(1)->setFocus();
    QTest::keyClick(Option(1), Qt::Key_Left);
    EXPECT_TRUE(Option(0)->isChecked());
    EXPECT_EQ(hand.BoxText("infoTitle"), QStringLiteral("Harbour steps"));
    EXPECT_EQ(information.calls.filter(QStringLiteral("SetTagVersion")),
              QStringList({"SetTagVersion 2", "SetTagVersion 1"}));
}

TEST_F(FrmInfoTest, FillingWithTheOtherTagIsNoEdit) {
    Open();
    Option(1)->click();
    EXPECT_EQ(hand.BoxText("infoTitle"), QStringLiteral("Harbour steps (long)"));
    EXPECT_FALSE(IsUpdateEnabled());
}

TEST_F(FrmInfoTest, TheFolderKeyAsksForAnotherFile) {
    Open();
    prompts.filesToChoose = {{QStringLiteral("/music/one.mp3")}};
    QTest::mouseClick(hand.Find<BodyKey>(QStringLiteral("ImageinPath")), Qt::LeftButton);
    EXPECT_EQ(hand.BoxText("aFile"), QStringLiteral("/music/one.mp3"));
    EXPECT_EQ(hand.BoxText("infoTitle"), QStringLiteral("First light"));
    EXPECT_FALSE(IsUpdateEnabled());
}

TEST_F(FrmInfoTest, TheCueListOpensFromItAndItsChangesWaitForAnUpdate) {
    Open();
    bool seen = false;
    QTimer::singleShot(0, &window, [&] {
        auto* cues = qobject_cast<FrmCueList*>(QApplication::activeModalWidget());
        ASSERT_NE(cues, nullptr);
        seen = true;
        EditorHand(*cues).Click(0);
        cues->close();
    });
    hand.Click(4);
    EXPECT_TRUE(seen);
    EXPECT_EQ(information.CueCount(), 1);
    EXPECT_TRUE(IsUpdateEnabled());
    hand.Click(0);
    EXPECT_EQ(information.StoredCues(QStringLiteral("/music/two.mp3")).size(), 1);
}

TEST_F(FrmInfoTest, ACueListThatChangedNothingIsNoEdit) {
    Open();
    QTimer::singleShot(0, &window, [] { QApplication::activeModalWidget()->close(); });
    hand.Click(4);
    EXPECT_FALSE(IsUpdateEnabled());
}

TEST_F(FrmInfoTest, TabGoesFromTopToBottom) {
    Open();
    QTest::keyClick(window.focusWidget(), Qt::Key_X);
    EXPECT_EQ(
        hand.TabRound(),
        QStringList({"infoTitle",     "infoArtist",  "infoAlbum",     "infoGenre",    "infoGenreS",
                     "infoYear",      "infoTrack",   "infoComment",   "infoComposer", "infoOriginalArtist",
                     "infoCopyright", "infoURL",     "infoEncodedBy", "Option1(0)",   "ImageCMD(2)",
                     "ImageCMD(3)",   "ImageCMD(4)", "ImageCMD(0)",   "ImageCMD(1)",  "ImageQuit",
                     "aFile",         "ImageinPath"}));
}

TEST_F(FrmInfoTest, CloseAndEscape) {
    Open();
    hand.Click(1);
    EXPECT_FALSE(window.isVisible());
    hand.Show();
    QTest::keyClick(window.focusWidget(), Qt::Key_Escape);
    EXPECT_FALSE(window.isVisible());
    EXPECT_TRUE(prompts.messages.isEmpty());
}

} // namespace
} // namespace kestrune
