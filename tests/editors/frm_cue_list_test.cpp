// The cue list by mouse and keys.
#include "editors/frm_cue_list.h"

#include "editor_fixture.h"
#include "support/fake_audio_information.h"

#include <QSpinBox>

namespace kestrune {
namespace {

class FrmCueListTest : public testing::Test {
protected:
    void Open(int cues) {
        const QString path = QStringLiteral("/music/one.wav");
        information.files.insert(path, {});
        for (int cue = 1; cue <= cues; ++cue) {
            information.StoredCues(path).append(
                {cue * 1000, cue, QStringLiteral("label %1").arg(cue), QStringLiteral("note"), {}});
        }
        information.ReadTagFromFile(path);
        window.Load();
        hand.Show();
    }
    QSpinBox* Index() { return hand.Find<QSpinBox>(QStringLiteral("udCueIndex")); }
    void ExpectIndex(int minimum, int maximum, int value) {
        EXPECT_EQ(Index()->minimum(), minimum);
        EXPECT_EQ(Index()->maximum(), maximum);
        EXPECT_EQ(Index()->value(), value);
    }

    FakeAudioInformation information;
    FrmCueList window{information, nullptr};
    EditorHand hand{window};
};

TEST_F(FrmCueListTest, CaptionsNamesAndLook) {
    Open(3);
    EXPECT_EQ(window.objectName(), QStringLiteral("frmCueList"));
    EXPECT_EQ(window.windowTitle(), QStringLiteral("CueList"));
    QStringList captions;
    for (const QLabel* label : window.findChildren<QLabel*>()) {
        if (label->buddy() != nullptr) {
            captions << label->text();
        }
    }
    EXPECT_EQ(captions, QStringList({"Index:", "Position:", "Length:", "Label:", "Note:", "Text:"}));
    EXPECT_EQ(hand.Find<QLineEdit>(QStringLiteral("tCueIndex"))->accessibleName(), QStringLiteral("Index"));
    EXPECT_EQ(hand.ImageCMD(0)->accessibleName(), QStringLiteral("Add"));
    EXPECT_EQ(hand.ImageCMD(1)->accessibleName(), QStringLiteral("Update"));
    EXPECT_EQ(hand.ImageCMD(2)->accessibleName(), QStringLiteral("Delete"));
    hand.ExpectNames();
    hand.ExpectNothingCutOff();
    hand.Keep(QStringLiteral("frmCueList"));
}

TEST_F(FrmCueListTest, TheUpDownPagesAndLosesWhatWasNotWritten) {
    Open(3);
    ExpectIndex(1, 3, 1);
    EXPECT_EQ(hand.BoxText("tPosition"), QStringLiteral("1000"));
    hand.Type("tLabel", QStringLiteral("unsaved"));
    Index()->setFocus();
    QTest::keyClick(Index(), Qt::Key_Up);
    EXPECT_EQ(hand.BoxText("tLabel"), QStringLiteral("label 2"));
    EXPECT_EQ(information.CueIndex(), 2);
    QTest::keyClick(Index(), Qt::Key_Down);
    EXPECT_EQ(hand.BoxText("tLabel"), QStringLiteral("label 1"));
    EXPECT_FALSE(window.HasChanged());
}

TEST_F(FrmCueListTest, ATypedIndexIsGoneToByEnter) {
    Open(3);
    Index()->selectAll();
    QTest::keyClicks(Index(), QStringLiteral("3"));
    QTest::keyClick(Index(), Qt::Key_Return);
    EXPECT_EQ(hand.BoxText("tLabel"), QStringLiteral("label 3"));
    EXPECT_TRUE(window.isVisible());
    EXPECT_FALSE(window.HasChanged());
}

TEST_F(FrmCueListTest, AddByTheMouse) {
    Open(0);
    ExpectIndex(0, 0, 0);
    EXPECT_EQ(hand.BoxText("tPosition"), QStringLiteral("0"));
    hand.Type("tPosition", QStringLiteral("44100 frames"));
    hand.Type("tLength", QStringLiteral("none"));
    hand.Type("tNote", QStringLiteral("N"));
    hand.Click(0);
    ExpectIndex(1, 1, 1);
    EXPECT_EQ(hand.BoxText("tPosition"), QStringLiteral("44100"));
    EXPECT_EQ(hand.BoxText("tLength"), QStringLiteral("0"));
    EXPECT_EQ(information.Cue().note, QStringLiteral("N"));
    EXPECT_TRUE(window.HasChanged());
}

TEST_F(FrmCueListTest, EnterInABoxWritesTheCue) {
    Open(2);
    hand.Type("tText", QStringLiteral("Chorus"));
    QTest::keyClick(window.focusWidget(), Qt::Key_Return);
    EXPECT_EQ(information.Cue().text, QStringLiteral("Chorus"));
    EXPECT_EQ(information.Cue().label, QStringLiteral("label 1"));
    EXPECT_TRUE(window.isVisible());
    hand.Type("tLength", QStringLiteral("77"));
    hand.Click(1);
    EXPECT_EQ(information.Cue().length, 77);
}

TEST_F(FrmCueListTest, DeleteGoesToTheNewLastCue) {
    Open(2);
    QTest::keyClick(Index(), Qt::Key_Up);
    hand.Click(2);
    ExpectIndex(1, 1, 1);
    EXPECT_EQ(hand.BoxText("tLabel"), QStringLiteral("label 1"));
    QTest::keyClick(hand.ImageCMD(2), Qt::Key_Space);
    ExpectIndex(0, 0, 0);
    EXPECT_EQ(hand.BoxText("tLabel"), QString());
}

TEST_F(FrmCueListTest, TabAndEscape) {
    Open(1);
    EXPECT_EQ(hand.TabRound(), QStringList({"udCueIndex", "tPosition", "tLength", "tLabel", "tNote", "tText",
                                            "ImageCMD(0)", "ImageCMD(1)", "ImageCMD(2)", "ImageQuit"}));
    QTest::keyClick(&window, Qt::Key_Escape);
    EXPECT_FALSE(window.isVisible());
}

} // namespace
} // namespace kestrune
