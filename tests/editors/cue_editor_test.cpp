// The cue list over a fake file.
#include "editors/cue_editor.h"

#include "support/fake_audio_information.h"

#include <gtest/gtest.h>

namespace kestrune {
namespace {

class CueEditorTest : public testing::Test {
protected:
    void Open(int cues) {
        const QString path = QStringLiteral("/music/one.wav");
        information.files.insert(path, {});
        for (int cue = 1; cue <= cues; ++cue) {
            information.StoredCues(path).append({cue * 1000, cue, QStringLiteral("label %1").arg(cue),
                                                 QStringLiteral("note %1").arg(cue),
                                                 QStringLiteral("text %1").arg(cue)});
        }
        information.ReadTagFromFile(path);
        information.calls.clear();
        editor.Load();
    }
    void ExpectRange(int minimum, int maximum, int value) {
        EXPECT_EQ(editor.Minimum(), minimum);
        EXPECT_EQ(editor.Maximum(), maximum);
        EXPECT_EQ(editor.Value(), value);
    }
    void ExpectShown(const CueTexts& texts) {
        EXPECT_EQ(editor.Texts().tPosition, texts.tPosition);
        EXPECT_EQ(editor.Texts().tLength, texts.tLength);
        EXPECT_EQ(editor.Texts().tLabel, texts.tLabel);
        EXPECT_EQ(editor.Texts().tNote, texts.tNote);
        EXPECT_EQ(editor.Texts().tText, texts.tText);
    }
    static CueTexts TextsOf(int cue) {
        return {QString::number(cue * 1000), QString::number(cue), QStringLiteral("label %1").arg(cue),
                QStringLiteral("note %1").arg(cue), QStringLiteral("text %1").arg(cue)};
    }

    FakeAudioInformation information;
    CueEditor editor{information};
};

TEST_F(CueEditorTest, LoadShowsTheFirstCue) {
    Open(3);
    ExpectRange(1, 3, 1);
    ExpectShown(TextsOf(1));
    EXPECT_FALSE(editor.HasChanged());
}

TEST_F(CueEditorTest, TheFirstCueIsShownWhateverWasCurrent) {
    Open(3);
    information.SetCueIndex(3);
    editor.Load();
    ExpectRange(1, 3, 1);
    EXPECT_EQ(information.CueIndex(), 1);
}

TEST_F(CueEditorTest, WithoutCuesTheRangeIsNothing) {
    Open(0);
    ExpectRange(0, 0, 0);
    ExpectShown({QStringLiteral("0"), QStringLiteral("0"), {}, {}, {}});
    editor.Update({QStringLiteral("5"), QStringLiteral("6"), QStringLiteral("x"), {}, {}});
    editor.Delete();
    ExpectRange(0, 0, 0);
    ExpectShown({QStringLiteral("0"), QStringLiteral("0"), {}, {}, {}});
    EXPECT_EQ(information.CueCount(), 0);
    EXPECT_FALSE(editor.HasChanged());
}

TEST_F(CueEditorTest, PagingShowsEachCue) {
    Open(3);
    int shown = 0;
    QObject::connect(&editor, &CueEditor::Shown, [&shown] { ++shown; });
    editor.ShowCue(2);
    ExpectShown(TextsOf(2));
    EXPECT_EQ(information.CueIndex(), 2);
    editor.ShowCue(1);
    ExpectShown(TextsOf(1));
    EXPECT_EQ(shown, 2);
    EXPECT_FALSE(editor.HasChanged());
}

TEST_F(CueEditorTest, ANewCueStandsBehindTheLastOneAndIsShown) {
    Open(2);
    const CueTexts texts = {QStringLiteral("-70 frames"), QStringLiteral("x"), QStringLiteral("L"),
                            QStringLiteral("N"), QStringLiteral("T")};
    editor.Add(texts);
    ExpectRange(1, 3, 3);
    ExpectShown({QStringLiteral("-70"), QStringLiteral("0"), texts.tLabel, texts.tNote, texts.tText});
    EXPECT_EQ(information.CueIndex(), 3);
    EXPECT_TRUE(editor.HasChanged());
}

TEST_F(CueEditorTest, TheFirstCueOfAll) {
    Open(0);
    editor.Add({QStringLiteral("44100"), QStringLiteral("10"), {}, {}, {}});
    ExpectRange(1, 1, 1);
    ExpectShown({QStringLiteral("44100"), QStringLiteral("10"), {}, {}, {}});
}

TEST_F(CueEditorTest, UpdateWritesTheCurrentCue) {
    Open(2);
    editor.ShowCue(2);
    editor.Update({QStringLiteral("9.5 s"), QStringLiteral("8"), QStringLiteral("L"), QStringLiteral("N"),
                   QStringLiteral("T")});
    ExpectRange(1, 2, 2);
    ExpectShown({QStringLiteral("10"), QStringLiteral("8"), QStringLiteral("L"), QStringLiteral("N"),
                 QStringLiteral("T")});
    EXPECT_EQ(information.Cue().position, 10);
    EXPECT_TRUE(editor.HasChanged());
    editor.ShowCue(1);
    ExpectShown(TextsOf(1));
}

TEST_F(CueEditorTest, TheCueBehindTheDeletedOneIsShown) {
    Open(3);
    editor.Delete();
    ExpectRange(1, 2, 1);
    ExpectShown(TextsOf(2));
    EXPECT_TRUE(editor.HasChanged());
}

TEST_F(CueEditorTest, DeletingTheLastCueGoesToTheNewLastOne) {
    Open(3);
    editor.ShowCue(3);
    editor.Delete();
    ExpectRange(1, 2, 2);
    ExpectShown(TextsOf(2));
    editor.Delete();
    editor.Delete();
    ExpectRange(0, 0, 0);
    ExpectShown({QStringLiteral("0"), QStringLiteral("0"), {}, {}, {}});
}

} // namespace
} // namespace kestrune
