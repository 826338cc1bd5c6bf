// Playing by mouse and keys.
#include "main_window/main_window_fixture.h"

namespace kestrune {
namespace {

using testing::Contains;
using testing::ElementsAre;

class PlayingWindowTest : public MainWindowTest {
protected:
    void StartWith(int tracks) {
        ASSERT_NO_FATAL_FAILURE(Start());
        ASSERT_NO_FATAL_FAILURE(AddTracks(tracks));
    }
    bool IsEnabled(int button) { return Button(QStringLiteral("ImagePlayButton"), button)->isEnabled(); }
    void Press(int button) { ClickButton(QStringLiteral("ImagePlayButton"), button); }
};

TEST_F(PlayingWindowTest, BeforeTheFirstFileNothingCanBePressed) {
    Start();
    EXPECT_EQ(LitLamp(), 0);
    for (const int button : {ButtonPrevious, ButtonPause, ButtonPlay, ButtonStop, ButtonNext}) {
        EXPECT_FALSE(IsEnabled(button)) << button;
    }
}

TEST_F(PlayingWindowTest, ADoubleClickPlaysTheRow) {
    StartWith(3);
    DoubleClickRow(2);
    EXPECT_EQ(Playing(), "b.wav");
    EXPECT_EQ(LitLamp(), 1);
    EXPECT_EQ(state.CurIndex, 2);
    EXPECT_TRUE(rows.IsBold(2));
    EXPECT_TRUE(Find<QLabel>(QStringLiteral("LabelName"))->text().startsWith(QLatin1String("b.wav - ")));
    EXPECT_TRUE(IsEnabled(ButtonPause));
    EXPECT_TRUE(IsEnabled(ButtonStop));
    EXPECT_TRUE(IsEnabled(ButtonNext));
    EXPECT_TRUE(IsEnabled(ButtonPrevious));
    EXPECT_FALSE(IsEnabled(ButtonPlay));
}

TEST_F(PlayingWindowTest, ADoubleClickOnTheRowThatPlaysChangesNothing) {
    StartWith(3);
    DoubleClickRow(2);
    player.calls.clear();
    DoubleClickRow(2);
    EXPECT_THAT(player.calls, testing::IsEmpty());
    EXPECT_EQ(Playing(), "b.wav");
}

TEST_F(PlayingWindowTest, ADoubleClickBelowTheRowsDoesNothing) {
    StartWith(2);
    DoubleClickRow(4);
    EXPECT_FALSE(transport.State().IsPlaying);
}

TEST_F(PlayingWindowTest, ADoubleClickInAnEmptyListDoesNothing) {
    Start();
    DoubleClickRow(1);
    EXPECT_FALSE(transport.State().IsPlaying);
}

TEST_F(PlayingWindowTest, EnterPlaysTheRowOfTheKeyboard) {
    StartWith(3);
    QTest::keyClick(List(), Qt::Key_Down);
    QTest::keyClick(List(), Qt::Key_Down);
    QTest::keyClick(List(), Qt::Key_Return);
    EXPECT_EQ(Playing(), "b.wav");
}

TEST_F(PlayingWindowTest, AClickMakesTheRowCurrentAndEnablesPlay) {
    StartWith(3);
    ClickRow(3);
    EXPECT_EQ(state.CurIndex, 3);
    EXPECT_EQ(state.ClickedIndex, 3);
    EXPECT_THAT(Selected(), ElementsAre(3));
    ASSERT_TRUE(IsEnabled(ButtonPlay));
    EXPECT_FALSE(transport.State().IsPlaying);
    Press(ButtonPlay);
    EXPECT_EQ(Playing(), "c.wav");
}

TEST_F(PlayingWindowTest, ThePauseButtonPausesAndGoesOn) {
    StartWith(2);
    DoubleClickRow(1);
    player.playedBytes = 3000;
    Press(ButtonPause);
    EXPECT_EQ(LitLamp(), 2);
    EXPECT_TRUE(transport.State().IsPaused);
    EXPECT_FALSE(player.isRunning);
    EXPECT_TRUE(IsEnabled(ButtonPlay));
    EXPECT_EQ(window.findChild<QAction*>(QStringLiteral("mnuPause"))->text(), "Continue");
    Press(ButtonPause);
    EXPECT_EQ(LitLamp(), 1);
    EXPECT_TRUE(player.isRunning);
    EXPECT_THAT(audioFile.calls, Contains(QStringLiteral("SeekTo 3000")));
    EXPECT_EQ(window.findChild<QAction*>(QStringLiteral("mnuPause"))->text(), "Pause");
}

TEST_F(PlayingWindowTest, ThePlayButtonGoesOnAfterAPause) {
    StartWith(2);
    DoubleClickRow(1);
    player.playedBytes = 3000;
    Press(ButtonPause);
    Press(ButtonPlay);
    EXPECT_EQ(LitLamp(), 1);
    EXPECT_THAT(audioFile.calls, Contains(QStringLiteral("SeekTo 3000")));
    EXPECT_FALSE(IsEnabled(ButtonPlay));
}

TEST_F(PlayingWindowTest, TheStopButtonStops) {
    StartWith(2);
    DoubleClickRow(1);
    Press(ButtonStop);
    EXPECT_FALSE(transport.State().IsPlaying);
    EXPECT_EQ(LitLamp(), 0);
    EXPECT_FALSE(IsEnabled(ButtonStop));
    EXPECT_FALSE(IsEnabled(ButtonNext));
    EXPECT_TRUE(IsEnabled(ButtonPlay));
    EXPECT_FALSE(Find(QStringLiteral("PictureStep"))->isVisible());
    EXPECT_FALSE(rows.IsBold(1));
}

TEST_F(PlayingWindowTest, TheRecordButtonAsksForItsWindow) {
    StartWith(2);
    Press(ButtonRecord);
    EXPECT_THAT(tools.shown, ElementsAre(ToolWindow::frmRecord));
    tools.exists = false;
    Press(ButtonRecord);
    EXPECT_EQ(prompts.messages.size(), 1);
    EXPECT_FALSE(transport.State().IsPlaying);
}

TEST_F(PlayingWindowTest, NextAndPreviousGoRoundTheList) {
    StartWith(3);
    DoubleClickRow(3);
    Press(ButtonNext);
    EXPECT_EQ(Playing(), "a.wav");
    EXPECT_THAT(Selected(), ElementsAre(1));
    Press(ButtonPrevious);
    EXPECT_EQ(Playing(), "c.wav");
    EXPECT_THAT(Selected(), ElementsAre(3));
}

TEST_F(PlayingWindowTest, NextWalksTheSelectionMadeWithCtrl) {
    StartWith(5);
    DoubleClickRow(2);
    ClickRow(2);
    ClickRow(5, Qt::ControlModifier);
    Press(ButtonNext);
    EXPECT_EQ(Playing(), "e.wav");
    Press(ButtonNext);
    EXPECT_EQ(Playing(), "b.wav");
    EXPECT_THAT(Selected(), ElementsAre(2, 5));
}

TEST_F(PlayingWindowTest, ShiftSelectsARange) {
    StartWith(5);
    ClickRow(2);
    ClickRow(4, Qt::ShiftModifier);
    EXPECT_THAT(Selected(), ElementsAre(2, 3, 4));
}

TEST_F(PlayingWindowTest, TheEndOfAFileGoesToTheNextRowAndShowsIt) {
    StartWith(20);
    List()->SetFirstVisible(1);
    DoubleClickRow(7);
    EXPECT_EQ(List()->FirstVisible(), 1);
    emit player.EndPlay();
    EXPECT_EQ(Playing(), "h.wav");
    EXPECT_GT(List()->FirstVisible(), 1);
    EXPECT_EQ(LitLamp(), 1);
}

TEST_F(PlayingWindowTest, AGoneFileIsAskedForAndRemoved) {
    StartWith(2);
    QFile::remove(music.filePath(QStringLiteral("b.wav")));
    prompts.answers = {true};
    DoubleClickRow(2);
    EXPECT_EQ(prompts.questions.size(), 1);
    EXPECT_EQ(rows.Count(), 1);
    EXPECT_FALSE(transport.State().IsPlaying);
    EXPECT_EQ(LitLamp(), 0);
}

// --- The Play menu ---

TEST_F(PlayingWindowTest, AltPShowsThePlayMenuAndSStarts) {
    StartWith(2);
    QTest::keyClick(List(), Qt::Key_P, Qt::AltModifier);
    auto* menu = Find<QMenu>(QStringLiteral("mnuPlay"));
    ASSERT_TRUE(menu->isVisible());
    QTest::keyClick(menu, Qt::Key_S);
    EXPECT_FALSE(menu->isVisible());
    EXPECT_EQ(Playing(), "a.wav");
}

TEST_F(PlayingWindowTest, TheMenuPausesAndStops) {
    StartWith(2);
    Trigger(QStringLiteral("mnuStart"));
    EXPECT_EQ(Playing(), "a.wav");
    Trigger(QStringLiteral("mnuPause"));
    EXPECT_EQ(LitLamp(), 2);
    Trigger(QStringLiteral("mnuPause"));
    EXPECT_EQ(LitLamp(), 1);
    Trigger(QStringLiteral("mnuStop"));
    EXPECT_EQ(LitLamp(), 0);
    EXPECT_FALSE(transport.State().IsPlaying);
}

TEST_F(PlayingWindowTest, AfterAStopByTheMenuDuringAPausePlayAndPauseWork) {
    StartWith(2);
    DoubleClickRow(1);
    Press(ButtonPause);
    Trigger(QStringLiteral("mnuStop"));
    EXPECT_EQ(LitLamp(), 0);
    EXPECT_FALSE(transport.State().IsPaused);
    Press(ButtonPlay);
    EXPECT_EQ(LitLamp(), 1);
    Press(ButtonPause);
    EXPECT_EQ(LitLamp(), 2);
}

TEST_F(PlayingWindowTest, AListThatIsOpenedDuringAPauseLeavesPlayEnabled) {
    StartWith(2);
    DoubleClickRow(1);
    player.playedBytes = 3000;
    Press(ButtonPause);
    files.OpenSavePlayList(QStringLiteral("SAVE"), true);
    files.OpenSavePlayList(QStringLiteral("OPEN"), true);
    ASSERT_TRUE(IsEnabled(ButtonPlay));
    Press(ButtonPlay);
    EXPECT_EQ(LitLamp(), 1);
    EXPECT_THAT(audioFile.calls, Contains(QStringLiteral("SeekTo 3000")));
    files.OpenSavePlayList(QStringLiteral("OPEN"), true);
    EXPECT_FALSE(IsEnabled(ButtonPlay)) << "it plays already";
}

TEST_F(PlayingWindowTest, AListThatIsOpenedWhileStoppedEnablesPlay) {
    StartWith(1);
    ASSERT_FALSE(IsEnabled(ButtonPlay));
    files.OpenSavePlayList(QStringLiteral("SAVE"), true);
    files.OpenSavePlayList(QStringLiteral("OPEN"), true);
    EXPECT_TRUE(IsEnabled(ButtonPlay));
}

TEST_F(PlayingWindowTest, AClickOnPlayShowsItsMenu) {
    Start();
    ClickButton(QStringLiteral("LabelMenu"), 1);
    EXPECT_TRUE(Find<QMenu>(QStringLiteral("mnuPlay"))->isVisible());
}

TEST_F(PlayingWindowTest, TheOtherMenusHaveTheirKeys) {
    Start();
    QTest::keyClick(List(), Qt::Key_F, Qt::AltModifier);
    auto* file = Find<QMenu>(QStringLiteral("mnuFile"));
    EXPECT_TRUE(file->isVisible());
    QTest::keyClick(file, Qt::Key_Escape);
    QTest::keyClick(List(), Qt::Key_O, Qt::AltModifier);
    EXPECT_TRUE(Find<QMenu>(QStringLiteral("mnuOptions"))->isVisible());
}

TEST_F(PlayingWindowTest, ALongNameIsCutBeforeTheWindowButtons) {
    Start();
    const QString name = QString(120, QChar(u'w')) + QStringLiteral(".wav");
    MakeFile(name);
    admission.AddFiletoList(music.path() + u'/', name);
    DoubleClickRow(1);
    const QRect label = Find(QStringLiteral("LabelName"))->geometry();
    const QRect caption = Find(QStringLiteral("LabelCaption"))->geometry();
    const int firstButton =
        std::min(Button(QStringLiteral("ImageWin"), 0)->x(), Button(QStringLiteral("ImageWin"), 1)->x());
    EXPECT_EQ(label.left(), caption.right() + 1);
    EXPECT_EQ(label.right() + 1, firstButton - 10);
}

TEST_F(PlayingWindowTest, ANameWithLineEndsStandsInOneLine) {
    Start();
    const QString name = QStringLiteral("a\nb\r\nc\u2028d.wav");
    MakeFile(name);
    admission.AddFiletoList(music.path() + u'/', name);
    DoubleClickRow(1);
    EXPECT_EQ(Find<QLabel>(QStringLiteral("LabelName"))->text().toStdString(), "a b  c d.wav - ");
}

// --- The display ---

TEST_F(PlayingWindowTest, ARightClickOnTheDisplayShowsTheOptions) {
    Start();
    auto* display = Find(QStringLiteral("KSTAudioDisplay1"));
    const QPoint place = display->rect().center();
    QContextMenuEvent event(QContextMenuEvent::Mouse, place, display->mapToGlobal(place));
    QCoreApplication::sendEvent(display, &event);
    EXPECT_TRUE(Find<QMenu>(QStringLiteral("mnuOptions"))->isVisible());
}

TEST_F(PlayingWindowTest, TheDisplayTypeSetsTheTimerAndTheResolutionMenu) {
    Start();
    const QList<int> intervalsMs = {30, 30, 80, 80, 80};
    for (int type = 0; type < 5; ++type) {
        Trigger(QStringLiteral("mOptions1(%1)").arg(type));
        EXPECT_EQ(player.timerIntervalMs, intervalsMs[type]) << type;
        for (int i = 0; i < 5; ++i) {
            EXPECT_EQ(IsChecked(QStringLiteral("mOptions1(%1)").arg(i)), i == type);
        }
        EXPECT_EQ(window.findChild<QAction*>(QStringLiteral("mOptions(1)"))->isEnabled(), type != 0);
    }
}

// --- Modes ---

class ModeButtonTest : public PlayingWindowTest, public testing::WithParamInterface<int> {
protected:
    void ExpectOnly(int mode) {
        for (int i = 0; i < 3; ++i) {
            EXPECT_EQ(Button(QStringLiteral("ImageRepeatModeBut"), i)->isChecked(), i == mode) << i;
            EXPECT_EQ(IsChecked(QStringLiteral("mOptions(%1)").arg(i + 3)), i == mode) << i;
            EXPECT_EQ(options.IsModeChecked(static_cast<PlayMode>(i)), i == mode) << i;
        }
    }
};

TEST_P(ModeButtonTest, IsExclusive) {
    Start();
    ClickButton(QStringLiteral("ImageRepeatModeBut"), (GetParam() + 1) % 3);
    ExpectOnly((GetParam() + 1) % 3);
    ClickButton(QStringLiteral("ImageRepeatModeBut"), GetParam());
    ExpectOnly(GetParam());
}

TEST_P(ModeButtonTest, ASecondClickLeavesItOn) {
    Start();
    ClickButton(QStringLiteral("ImageRepeatModeBut"), GetParam());
    ClickButton(QStringLiteral("ImageRepeatModeBut"), GetParam());
    ExpectOnly(GetParam());
}

TEST_P(ModeButtonTest, TheMenuEntryDoesTheSame) {
    Start();
    Trigger(QStringLiteral("mOptions(%1)").arg((GetParam() + 1) % 3 + 3));
    Trigger(QStringLiteral("mOptions(%1)").arg(GetParam() + 3));
    ExpectOnly(GetParam());
    Trigger(QStringLiteral("mOptions(%1)").arg(GetParam() + 3));
    ExpectOnly(GetParam());
}

// A first run has stored no mode yet, and a damaged file may hold any number.
TEST_P(ModeButtonTest, AStoredModeThatIsNoneLightsNothingAndChecksNothing) {
    Start();
    for (const char stored : {'\x00', '\x02', '\x06', '\xFF'}) {
        ClickButton(QStringLiteral("ImageRepeatModeBut"), GetParam());
        ExpectOnly(GetParam());
        QFile record(home.filePath(QStringLiteral("Options.dat")));
        ASSERT_TRUE(record.open(QIODevice::ReadWrite));
        record.seek(2);
        record.putChar(stored);
        record.close();
        Trigger(QStringLiteral("mOptions(9)"));
        ExpectOnly(-1);
    }
}

INSTANTIATE_TEST_SUITE_P(Modes, ModeButtonTest, testing::Values(0, 1, 2));

TEST_F(PlayingWindowTest, RepeatByItsButtonRepeats) {
    StartWith(3);
    ClickButton(QStringLiteral("ImageRepeatModeBut"), 2);
    DoubleClickRow(2);
    emit player.EndPlay();
    EXPECT_EQ(Playing(), "b.wav");
}

} // namespace
} // namespace kestrune
