// Filling, sorting, showing and storing the list, and the end of the window.
#include "main_window/main_window_fixture.h"

#include <QDropEvent>
#include <QMimeData>
#include <QTimer>

namespace kestrune {
namespace {

using testing::ElementsAre;

class ListWindowTest : public MainWindowTest {
protected:
    void Drop(const QStringList& paths) {
        QMimeData data;
        QList<QUrl> urls;
        for (const QString& path : paths) {
            urls.append(QUrl::fromLocalFile(path));
        }
        data.setUrls(urls);
        QWidget* target = List()->viewport();
        QDragEnterEvent enter(QPoint(20, 20), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(target, &enter);
        accepted = enter.isAccepted();
        QDropEvent drop(QPointF(20, 20), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(target, &drop);
        QCoreApplication::processEvents();
    }
    QStringList Names() const {
        QStringList names;
        for (int row = 1; row <= rows.Count(); ++row) {
            names.append(rows.Field(row, SubFileName));
        }
        return names;
    }
    QImage ListPicture() { return List()->viewport()->grab().toImage(); }

    bool accepted = false;
};

TEST_F(ListWindowTest, DroppedFilesBecomeRowsAndAreStored) {
    Start();
    Drop({MakeFile(QStringLiteral("x.wav")), MakeFile(QStringLiteral("y.wav"))});
    EXPECT_TRUE(accepted);
    EXPECT_THAT(Names(), ElementsAre("x.wav", "y.wav"));
    EXPECT_TRUE(QFile::exists(DefaultList()));
    EXPECT_TRUE(prompts.messages.isEmpty());
}

TEST_F(ListWindowTest, ADropWithoutLocalFilesIsRefused) {
    Start();
    QMimeData data;
    data.setText(QStringLiteral("only text"));
    QDragEnterEvent enter(QPoint(20, 20), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    enter.ignore();
    QCoreApplication::sendEvent(List()->viewport(), &enter);
    EXPECT_FALSE(enter.isAccepted());
}

TEST_F(ListWindowTest, InsertAddsTheFilesOfTheDialog) {
    Start();
    prompts.filesToChoose = {{MakeFile(QStringLiteral("x.wav")), MakeFile(QStringLiteral("y.wav"))}};
    QTest::keyClick(List(), Qt::Key_Insert);
    ASSERT_EQ(prompts.choices.size(), 1);
    EXPECT_EQ(prompts.choices.first().title, "Add audio files");
    EXPECT_TRUE(prompts.choices.first().multiple);
    EXPECT_THAT(Names(), ElementsAre("x.wav", "y.wav"));
    EXPECT_TRUE(Button(QStringLiteral("ImagePlayButton"), ButtonPlay)->isEnabled());
    EXPECT_TRUE(QFile::exists(DefaultList()));
}

TEST_F(ListWindowTest, ThePlusButtonAddsTheFilesOfTheDialog) {
    Start();
    prompts.filesToChoose = {{MakeFile(QStringLiteral("x.wav"))}};
    ClickButton(QStringLiteral("ImageListCmd"), 0);
    EXPECT_THAT(Names(), ElementsAre("x.wav"));
}

TEST_F(ListWindowTest, ACancelledDialogAddsNothing) {
    Start();
    QTest::keyClick(List(), Qt::Key_Insert);
    EXPECT_EQ(prompts.choices.size(), 1);
    EXPECT_EQ(rows.Count(), 0);
}

TEST_F(ListWindowTest, TheOpenAndSaveButtonsAskForAPlaylist) {
    Start();
    ASSERT_NO_FATAL_FAILURE(AddTracks(2));
    const QString list = music.filePath(QStringLiteral("mine.m3u"));
    prompts.filesToChoose = {{list}, {list}};
    ClickButton(QStringLiteral("ImageListCmd"), 3);
    ASSERT_TRUE(QFile::exists(list));
    rows.Clear();
    ClickButton(QStringLiteral("ImageListCmd"), 2);
    ASSERT_EQ(prompts.choices.size(), 2);
    EXPECT_EQ(prompts.choices[0].title, "Save playlist");
    EXPECT_EQ(prompts.choices[1].title, "Open playlist");
    EXPECT_THAT(Names(), ElementsAre("a.wav", "b.wav"));
}

TEST_F(ListWindowTest, TheTotalsFollowTheRowsAndTheSelection) {
    Start();
    ASSERT_NO_FATAL_FAILURE(AddTracks(3));
    const QString total = Find<QLabel>(QStringLiteral("LabelSeltal(0)"))->text();
    EXPECT_TRUE(total.contains(QLatin1String("0:30"))) << total.toStdString();
    ClickRow(2);
    const QString selected = Find<QLabel>(QStringLiteral("LabelSeltal(1)"))->text();
    EXPECT_TRUE(selected.contains(QLatin1String("0:10"))) << selected.toStdString();
}

TEST_F(ListWindowTest, TheSortEntriesSortAndTurn) {
    Start();
    for (const char* name : {"b.wav", "c.wav", "a.wav"}) {
        MakeFile(QString::fromLatin1(name));
        admission.AddFiletoList(music.path() + u'/', QString::fromLatin1(name));
    }
    Trigger(QStringLiteral("mnSort(1)"));
    const QStringList once = Names();
    Trigger(QStringLiteral("mnpopsort(1)"));
    const QStringList twice = Names();
    EXPECT_THAT(QStringList(once), testing::AnyOf(ElementsAre("a.wav", "b.wav", "c.wav"),
                                                  ElementsAre("c.wav", "b.wav", "a.wav")));
    EXPECT_EQ(QStringList(twice.rbegin(), twice.rend()), once);
}

TEST_F(ListWindowTest, AnItemThatIsTurnedOffLosesItsColumn) {
    Start();
    ASSERT_NO_FATAL_FAILURE(AddTracks(3));
    const QImage before = ListPicture();
    ASSERT_EQ(options.Columns()[1], 38);
    Trigger(QStringLiteral("mnplaylistitem(1)"));
    EXPECT_EQ(options.Columns()[1], 0);
    EXPECT_EQ(options.Columns()[0], 203);
    EXPECT_FALSE(IsChecked(QStringLiteral("mnplaylistitem(1)")));
    EXPECT_FALSE(IsChecked(QStringLiteral("popplaylistitem(1)")));
    EXPECT_NE(ListPicture(), before);
    Trigger(QStringLiteral("popplaylistitem(1)"));
    EXPECT_EQ(options.Columns()[1], 38);
    EXPECT_TRUE(IsChecked(QStringLiteral("mnplaylistitem(1)")));
    EXPECT_EQ(ListPicture(), before);
}

TEST_F(ListWindowTest, ARightClickShowsTheMenuOfTheList) {
    Start();
    ASSERT_NO_FATAL_FAILURE(AddTracks(3));
    ClickRow(1);
    QTest::mousePress(List()->viewport(), Qt::RightButton, {}, RowPoint(2));
    QContextMenuEvent event(QContextMenuEvent::Mouse, RowPoint(2),
                            List()->viewport()->mapToGlobal(RowPoint(2)));
    QCoreApplication::sendEvent(List()->viewport(), &event);
    EXPECT_TRUE(Find<QMenu>(QStringLiteral("popmn"))->isVisible());
    EXPECT_THAT(Selected(), ElementsAre(2));
}

TEST_F(ListWindowTest, CtrlASelectsAllRows) {
    Start();
    ASSERT_NO_FATAL_FAILURE(AddTracks(3));
    QTest::keyClick(List(), Qt::Key_A, Qt::ControlModifier);
    EXPECT_THAT(Selected(), ElementsAre(1, 2, 3));
}

TEST_F(ListWindowTest, TheKeysWalkTheListAndKeepTheRowInSight) {
    Start();
    ASSERT_NO_FATAL_FAILURE(AddTracks(20));
    List()->SetFirstVisible(1);
    QTest::keyClick(List(), Qt::Key_Home);
    EXPECT_THAT(Selected(), ElementsAre(1));
    QTest::keyClick(List(), Qt::Key_Down);
    EXPECT_THAT(Selected(), ElementsAre(2));
    EXPECT_EQ(state.CurIndex, 2);
    QTest::keyClick(List(), Qt::Key_Down, Qt::ShiftModifier);
    EXPECT_THAT(Selected(), ElementsAre(2, 3));
    QTest::keyClick(List(), Qt::Key_End);
    EXPECT_THAT(Selected(), ElementsAre(20));
    EXPECT_EQ(List()->FirstVisible(), 20 - List()->VisibleRows() + 1);
    QTest::keyClick(List(), Qt::Key_PageUp);
    EXPECT_THAT(Selected(), ElementsAre(20 - List()->VisibleRows()));
    QTest::keyClick(List(), Qt::Key_Down, Qt::ShiftModifier);
    QTest::keyClick(List(), Qt::Key_Home);
    EXPECT_THAT(Selected(), ElementsAre(1));
    EXPECT_EQ(List()->FirstVisible(), 1);
}

TEST_F(ListWindowTest, TheWheelScrolls) {
    Start();
    ASSERT_NO_FATAL_FAILURE(AddTracks(20));
    List()->SetFirstVisible(1);
    const QPointF place(40, 40);
    QWheelEvent down(place, List()->viewport()->mapToGlobal(place), {}, {0, -120}, Qt::NoButton,
                     Qt::NoModifier, Qt::NoScrollPhase, false);
    QCoreApplication::sendEvent(List()->viewport(), &down);
    EXPECT_GT(List()->FirstVisible(), 1);
    EXPECT_TRUE(Selected().isEmpty());
}

TEST_F(ListWindowTest, SevenRowsAreVisibleAtOnce) {
    Start();
    EXPECT_EQ(List()->VisibleRows(), 7);
}

TEST_F(ListWindowTest, TheEqualizerTakesThePlaceOfTheList) {
    Start();
    auto* equalizer = Find(QStringLiteral("KSTEqualizer21"));
    EXPECT_TRUE(List()->isVisible());
    EXPECT_FALSE(equalizer->isVisible());
    QTest::mouseClick(Find<QAbstractButton>(QStringLiteral("ImageChgLstBnd")), Qt::LeftButton);
    EXPECT_FALSE(List()->isVisible());
    EXPECT_TRUE(equalizer->isVisible());
    QTest::mouseClick(Find<QAbstractButton>(QStringLiteral("ImageChgLstBnd")), Qt::LeftButton);
    EXPECT_TRUE(List()->isVisible());
    EXPECT_FALSE(equalizer->isVisible());
}

TEST_F(ListWindowTest, ABandOfTheEqualizerReachesThePlayer) {
    Start();
    player.calls.clear();
    Find<QSlider>(QStringLiteral("Band(3)"))->setValue(6);
    EXPECT_TRUE(player.equalizerEnabled);
    EXPECT_FLOAT_EQ(player.gainsDb[3], 6);
    EXPECT_FLOAT_EQ(player.gainsDb[2], 0);
    EXPECT_THAT(player.calls, ElementsAre("EnableEqualizer 1", "SetEqualizer"));
}

// --- Start and end ---

TEST_F(ListWindowTest, TheStartShowsTheColoursAndTheSize) {
    Start();
    EXPECT_TRUE(window.isVisible());
    EXPECT_EQ(window.size(), QSize(393, 385));
    auto* colours = Find<QListWidget>(QStringLiteral("ListView1"));
    QStringList names;
    for (int i = 0; i < colours->count(); ++i) {
        names.append(colours->item(i)->text());
    }
    EXPECT_THAT(names, ElementsAre("BackColor", "BorderColor", "InscriptionsColor", "LevelsColor",
                                   "MaxLevelColor", "ScaleColor"));
}

TEST_F(ListWindowTest, WithoutASoundDeviceYesStartsTheProgramAndPlaybackFailsInSilence) {
    player.deviceCount = 0;
    prompts.answers = {true};
    Start();
    ASSERT_EQ(prompts.questions.size(), 1);
    EXPECT_EQ(prompts.questions.first().icon, PromptIcon::Warning);
    EXPECT_TRUE(window.isVisible());
    ASSERT_NO_FATAL_FAILURE(AddTracks(1));
    DoubleClickRow(1);
    EXPECT_FALSE(transport.State().IsPlaying);
    EXPECT_EQ(LitLamp(), 0);
    EXPECT_TRUE(prompts.messages.isEmpty());
    EXPECT_EQ(prompts.questions.size(), 1);
}

TEST_F(ListWindowTest, WithoutASoundDeviceNoShowsNoWindow) {
    player.deviceCount = 0;
    prompts.answers = {false};
    EXPECT_FALSE(
        LoadMainWindow({state, options, rows, files, transport, knob, audioFile, player, prompts, window}));
    EXPECT_FALSE(window.isVisible());
}

TEST_F(ListWindowTest, DeleteDeletesWhenTheKeyIsReleased) {
    Start();
    ASSERT_NO_FATAL_FAILURE(AddTracks(3));
    ClickRow(2);
    QTest::keyPress(List(), Qt::Key_Delete);
    QKeyEvent repeated(QEvent::KeyRelease, Qt::Key_Delete, Qt::NoModifier, QString(), true);
    QCoreApplication::sendEvent(List(), &repeated);
    EXPECT_TRUE(prompts.questions.isEmpty()) << "a key that is held down repeats its release, too";
    QTest::keyRelease(List(), Qt::Key_Delete);
    EXPECT_EQ(prompts.questions.size(), 1);
    EXPECT_THAT(Names(), ElementsAre("a.wav", "c.wav"));
}

TEST_F(ListWindowTest, CloseStoresTheListInIndexOrderAndDoesNotStopPlayback) {
    Start();
    ASSERT_NO_FATAL_FAILURE(AddTracks(3));
    Trigger(QStringLiteral("mnSort(1)"));
    Trigger(QStringLiteral("mnSort(1)"));
    DoubleClickRow(1);
    ASSERT_TRUE(transport.State().IsPlaying);
    player.calls.clear();
    QFile::remove(DefaultList());
    ClickButton(QStringLiteral("ImageWin"), 0);
    EXPECT_FALSE(window.isVisible());
    ASSERT_TRUE(QFile::exists(DefaultList()));
    EXPECT_THAT(player.calls, testing::Not(testing::Contains(QStringLiteral("StopOutput"))));
    EXPECT_TRUE(prompts.questions.isEmpty());
    rows.Clear();
    files.OpenSavePlayList(QStringLiteral("OPEN"), true);
    EXPECT_THAT(Names(), ElementsAre("a.wav", "b.wav", "c.wav"));
}

TEST_F(ListWindowTest, ExitOfTheMenuStoresTheList) {
    Start();
    ASSERT_NO_FATAL_FAILURE(AddTracks(1));
    QFile::remove(DefaultList());
    Trigger(QStringLiteral("mnfile(10)"));
    EXPECT_FALSE(window.isVisible());
    EXPECT_TRUE(QFile::exists(DefaultList()));
}

TEST_F(ListWindowTest, TheStoredListComesBack) {
    ASSERT_NO_FATAL_FAILURE(AddTracks(3));
    files.OpenSavePlayList(QStringLiteral("SAVE"), true);
    rows.Clear();
    Start();
    EXPECT_THAT(Names(), ElementsAre("a.wav", "b.wav", "c.wav"));
    DoubleClickRow(2);
    EXPECT_EQ(Playing(), "b.wav");
}

TEST_F(ListWindowTest, MinimiseTakesTheCaption) {
    Start();
    ClickButton(QStringLiteral("ImageWin"), 1);
    EXPECT_TRUE(window.isMinimized());
    EXPECT_EQ(window.windowTitle(), Find<QLabel>(QStringLiteral("LabelCaption"))->text());
}

} // namespace
} // namespace kestrune
