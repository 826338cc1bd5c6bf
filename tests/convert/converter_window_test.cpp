// The left side of the converter window by mouse and keys: paths, input types, the list, the two heights.
#include "convert/converter_window_fixture.h"

#include <QAccessible>
#include <QMimeData>
#include <QScreen>

namespace kestrune {
namespace {

TEST_F(ConverterWindowTest, StartsShortInTheMiddleOfTheScreenWithTheStartingTexts) {
    Open();
    EXPECT_EQ(window.size(), QSize(616, 350));
    EXPECT_LE((window.geometry().center() - window.screen()->geometry().center()).manhattanLength(), 2);
    EXPECT_EQ(Find<QLabel>("LabelIn")->text(), QStringLiteral("Enter Input Directory"));
    EXPECT_EQ(Find<QLabel>("LabelOut")->text(), QStringLiteral("Enter Output Directory"));
    EXPECT_FALSE(Find("txtInputFile")->isVisible());
    EXPECT_FALSE(Find("frmEvent")->isVisible());
    EXPECT_FALSE(Find("PictureSet")->isVisible());
    EXPECT_TRUE(Find("Image1")->isVisible());
    EXPECT_FALSE(Find("Image2")->isVisible());
    EXPECT_FALSE(Find("Label11")->isVisible());
    // A sliver of the bar.
    EXPECT_EQ(Find<QProgressBar>("ProgressConvert")->value(), 1);
}

TEST_F(ConverterWindowTest, BoxesStartAsTheirTablesSay) {
    Open();
    const QStringList captions = {"WMA", "WAV",  "AVI", "OGG", "MP3",  "MP2",
                                  "MP1", "MPEG", "MPC", "MP+", "G.721"};
    for (int i = 0; i < captions.size(); ++i) {
        const auto* box = window.findChild<QCheckBox*>(QStringLiteral("Checkin(%1)").arg(i));
        ASSERT_NE(box, nullptr) << i;
        EXPECT_EQ(box->text(), captions[i]);
        EXPECT_EQ(box->isChecked(), captions[i] != QStringLiteral("AVI")) << i;
    }
    const QList<std::pair<const char*, QString>> formats = {
        {"chWMA", "WMA"},    {"chMP3", "MP3"},    {"chOGG", "OGG"},    {"chADPCM", "ADPCM"},
        {"chDSP", "DSP"},    {"chMP2", "MP2"},    {"chVOX", "VOX"},    {"chGSM", "GSM"},
        {"chG721", "G.721"}, {"chG723", "G.723"}, {"chG726", "G.726"}, {"chULAW", "A-LAW"}};
    for (const auto& [name, caption] : formats) {
        EXPECT_EQ(Find<QCheckBox>(name)->text(), caption);
        EXPECT_FALSE(Find<QCheckBox>(name)->isChecked()) << name;
    }
}

TEST_F(ConverterWindowTest, AFolderTypedIntoTheInputIsListedAsItIsTyped) {
    MakeFile(QStringLiteral("b.wav"), 2048);
    MakeFile(QStringLiteral("a.MP3"), 100);
    MakeFile(QStringLiteral("c.avi"));
    Open();
    Click("LabelIn");
    auto* box = Find<QLineEdit>("txtInputFile");
    EXPECT_TRUE(box->isVisible());
    EXPECT_TRUE(box->hasFocus());
    EXPECT_FALSE(Find("LabelIn")->isVisible());
    QTest::keyClicks(box, music.path());
    ASSERT_EQ(List()->model()->rowCount(), 2);
    EXPECT_EQ(rules.Rows.Row(1).name, QStringLiteral("a.MP3"));
    EXPECT_EQ(rules.Rows.Row(2).name, QStringLiteral("b.wav"));
    EXPECT_EQ(rules.Rows.Row(2).sizeText, QStringLiteral("       2 KB"));
    EXPECT_EQ(Find<QLabel>("LabelOut")->text().left(1), music.path().left(1));
}

TEST_F(ConverterWindowTest, APathIsALabelAgainWhenTheMouseLeavesItsBand) {
    Open();
    Click("LabelOut");
    EXPECT_TRUE(Find("TextOutPath")->isVisible());
    for (const int inBand : {40, 66}) {
        MoveMouse(&window, {370, inBand});
        EXPECT_TRUE(Find("TextOutPath")->isVisible()) << inBand;
    }
    MoveMouse(&window, {370, 67});
    EXPECT_FALSE(Find("TextOutPath")->isVisible());
    EXPECT_TRUE(Find("LabelOut")->isVisible());
    // Straight from the band into the list, which keeps its moves for itself.
    Click("LabelIn");
    EXPECT_TRUE(Find("txtInputFile")->isVisible());
    MoveMouse(List()->viewport(), {50, 50});
    EXPECT_FALSE(Find("txtInputFile")->isVisible());
}

TEST_F(ConverterWindowTest, TheKeyboardOpensAndLeavesAPath) {
    Open();
    for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Escape}) {
        Find("LabelOut")->setFocus(Qt::TabFocusReason);
        QTest::keyClick(Find("LabelOut"), Qt::Key_Space);
        ASSERT_TRUE(Find("TextOutPath")->hasFocus());
        QTest::keyClick(Find("TextOutPath"), key);
        EXPECT_FALSE(Find("TextOutPath")->isVisible());
        EXPECT_TRUE(Find("LabelOut")->hasFocus());
        EXPECT_TRUE(window.isVisible());
    }
}

TEST_F(ConverterWindowTest, FolderKeysAskForTheFolders) {
    MakeFile(QStringLiteral("a.wav"));
    Open();
    prompts.foldersToChoose = {music.path(), results.path()};
    Click("ImageinPath");
    EXPECT_EQ(Find<QLabel>("LabelIn")->text(), music.path());
    EXPECT_EQ(rules.Rows.Count(), 1);
    Click("ImageOutPath");
    EXPECT_EQ(Find<QLabel>("LabelOut")->text(), results.path());
    EXPECT_EQ(Find<QLineEdit>("TextOutPath")->text(), results.path());
    EXPECT_EQ(prompts.folderTitles,
              (QStringList{QStringLiteral("Get Intput Directory"), QStringLiteral("Get Output Directory")}));
}

TEST_F(ConverterWindowTest, RowsOfThePlaylistComeTickedAndTheInputIsGrey) {
    MakeFile(QStringLiteral("a.wav"));
    PlaylistRow row;
    row.fields[SubFolder] = music.path() + u'/';
    row.fields[SubFileName] = QStringLiteral("a.wav");
    playlist.Append(row);
    program.ConvertMode = 4;
    Open();
    ASSERT_EQ(rules.Rows.Count(), 1);
    EXPECT_TRUE(rules.Rows.IsChecked(1));
    auto* box = Find<QLineEdit>("txtInputFile");
    EXPECT_TRUE(box->isReadOnly());
    EXPECT_EQ(box->palette().color(QPalette::Base), QColor(240, 240, 240));
    Click("LabelIn");
    const QImage shown = box->grab().toImage();
    EXPECT_EQ(shown.pixelColor(shown.width() - 8, shown.height() / 2), QColor(240, 240, 240));
    prompts.foldersToChoose = {music.path()};
    Click("ImageinPath");
    EXPECT_FALSE(box->isReadOnly());
    EXPECT_EQ(program.ConvertMode, 0);
}

TEST_F(ConverterWindowTest, ATickOfAnInputTypeListsAnew) {
    MakeFile(QStringLiteral("a.wav"));
    MakeFile(QStringLiteral("b.avi"));
    Open();
    TypePath("LabelIn", "txtInputFile", music.path());
    EXPECT_EQ(rules.Rows.Count(), 1);
    Tick("Checkin(2)");
    EXPECT_EQ(rules.Rows.Count(), 2);
    Tick("Checkin(1)");
    ASSERT_EQ(rules.Rows.Count(), 1);
    EXPECT_EQ(rules.Rows.Row(1).name, QStringLiteral("b.avi"));
    EXPECT_EQ(rules.Jobs.CheckInTag(1), QStringLiteral("0"));
    Find("Checkin(2)")->setFocus();
    QTest::keyClick(Find("Checkin(2)"), Qt::Key_Space);
    EXPECT_EQ(rules.Rows.Count(), 0);
}

class ConverterListTest : public ConverterWindowTest {
protected:
    // Three files, listed, not ticked.
    void Open() {
        for (const char* name : {"a.wav", "b.mp3", "c.ogg"}) {
            MakeFile(QLatin1String(name));
        }
        ConverterWindowTest::Open();
        Find<QLineEdit>("txtInputFile")->setText(music.path());
        Find<QLineEdit>("TextOutPath")->setText(results.path());
        ASSERT_EQ(rules.Rows.Count(), 3);
    }
};

TEST_F(ConverterListTest, HasItsThreeColumns) {
    Open();
    const QAbstractItemModel* model = List()->model();
    const QStringList captions = {"Name", "Long", "PlaylistIndex"};
    ASSERT_EQ(model->columnCount(), captions.size());
    for (int column = 0; column < captions.size(); ++column) {
        EXPECT_EQ(model->headerData(column, Qt::Horizontal).toString(), captions[column]);
        EXPECT_GT(List()->columnWidth(column), 60);
    }
    // Nothing is to be scrolled sideways.
    EXPECT_FALSE(List()->horizontalScrollBar()->isVisible());
}

TEST_F(ConverterListTest, BoxesOfRowsAreTickedByMouseAndKeyAndTheStatusLineFollows) {
    Open();
    TickRow(2);
    EXPECT_TRUE(rules.Rows.IsChecked(2));
    EXPECT_EQ(Find<QLabel>("Label10(1)")->text(), QStringLiteral("0 File Created/0 File Converted(Total 1)"));
    QTest::mouseClick(List()->viewport(), Qt::LeftButton, {}, CellPoint(3));
    QTest::keyClick(List(), Qt::Key_Space);
    EXPECT_TRUE(rules.Rows.IsChecked(3));
    EXPECT_EQ(Find<QLabel>("Label10(1)")->text(), QStringLiteral("0 File Created/0 File Converted(Total 2)"));
    TickRow(2);
    EXPECT_FALSE(rules.Rows.IsChecked(2));
}

TEST_F(ConverterListTest, AScreenReaderTicksARowAndTheStatusLineFollows) {
    Open();
    QAccessibleInterface* list = QAccessible::queryAccessibleInterface(List());
    EXPECT_EQ(list->text(QAccessible::Name), QStringLiteral("Files to convert"));
    QAccessibleInterface* box = list->tableInterface()->cellAt(1, ColumnName);
    EXPECT_EQ(box->text(QAccessible::Name), QStringLiteral("b.mp3"));
    box->actionInterface()->doAction(QAccessibleActionInterface::toggleAction());
    EXPECT_TRUE(rules.Rows.IsChecked(2));
    EXPECT_TRUE(box->state().checked);
    EXPECT_EQ(Find<QLabel>("Label10(1)")->text(), QStringLiteral("0 File Created/0 File Converted(Total 1)"));
}

TEST_F(ConverterListTest, AClickShowsThePathAndADoubleClickTurnsTheTick) {
    Open();
    QTest::mouseClick(List()->viewport(), Qt::LeftButton, {}, CellPoint(2));
    EXPECT_EQ(List()->toolTip(), music.filePath(QStringLiteral("b.mp3")));
    EXPECT_FALSE(rules.Rows.IsChecked(2));
    QTest::mouseDClick(List()->viewport(), Qt::LeftButton, {}, CellPoint(2));
    EXPECT_TRUE(rules.Rows.IsChecked(2));
    QTest::mouseDClick(List()->viewport(), Qt::LeftButton, {}, CellPoint(2));
    EXPECT_FALSE(rules.Rows.IsChecked(2));
}

TEST_F(ConverterListTest, TwoKeysTickAllAndNone) {
    Open();
    Click("ImageAllClear(0)");
    EXPECT_EQ(rules.Rows.CheckedCount(), 3);
    EXPECT_EQ(Find<QLabel>("Label10(1)")->text(), QString());
    Click("ImageAllClear(1)");
    EXPECT_EQ(rules.Rows.CheckedCount(), 0);
}

TEST_F(ConverterListTest, FilesDroppedOnTheListAreAddedWithoutATick) {
    Open();
    QTemporaryDir elsewhere;
    QFile file(elsewhere.filePath(QStringLiteral("d.wma")));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    QMimeData data;
    data.setUrls({QUrl::fromLocalFile(file.fileName()), QUrl(QStringLiteral("https://example.org/e.wma")),
                  QUrl::fromLocalFile(elsewhere.filePath(QStringLiteral("note.txt")))});
    const QPoint place = CellPoint(1);
    QDragEnterEvent enter(place, Qt::CopyAction | Qt::MoveAction, &data, Qt::LeftButton, {});
    QCoreApplication::sendEvent(List()->viewport(), &enter);
    EXPECT_TRUE(enter.isAccepted());
    QDropEvent drop(place, Qt::CopyAction | Qt::MoveAction, &data, Qt::LeftButton, {});
    QCoreApplication::sendEvent(List()->viewport(), &drop);
    ASSERT_EQ(rules.Rows.Count(), 4);
    EXPECT_EQ(rules.Rows.Row(4).name, QStringLiteral("d.wma"));
    EXPECT_FALSE(rules.Rows.IsChecked(4));
    // The files stay where they are.
    EXPECT_EQ(drop.dropAction(), Qt::CopyAction);
}

TEST_F(ConverterListTest, WordsAndLinksCannotBeDropped) {
    Open();
    for (const bool links : {false, true}) {
        QMimeData data;
        data.setText(QStringLiteral("/tmp/a.wav"));
        if (links) {
            data.setUrls({QUrl(QStringLiteral("https://example.org/e.wma"))});
        }
        QDragEnterEvent enter(CellPoint(1), Qt::CopyAction, &data, Qt::LeftButton, {});
        enter.ignore();
        QCoreApplication::sendEvent(List()->viewport(), &enter);
        EXPECT_FALSE(enter.isAccepted()) << links;
    }
}

TEST_F(ConverterWindowTest, TheArrowShowsAndHidesTheEventsAndCentresAgain) {
    Open();
    window.move(3, 4);
    Click("ImageUpdown");
    EXPECT_EQ(window.size(), QSize(616, 653));
    EXPECT_TRUE(Find("viewEvent")->isVisible());
    EXPECT_LE((window.geometry().center() - window.screen()->geometry().center()).manhattanLength(), 2);
    const QString lower = Find("ImageUpdown")->accessibleName();
    window.move(3, 4);
    Click("ImageUpdown");
    EXPECT_EQ(window.size(), QSize(616, 350));
    EXPECT_FALSE(Find("viewEvent")->isVisible());
    EXPECT_NE(window.pos(), QPoint(3, 4));
    EXPECT_NE(Find("ImageUpdown")->accessibleName(), lower);
}

TEST_F(ConverterWindowTest, EscapeAndTheCrossCloseIt) {
    Open();
    QTest::keyClick(&window, Qt::Key_Escape);
    EXPECT_FALSE(window.isVisible());
    window.open();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
    Click("ImageQuit");
    EXPECT_FALSE(window.isVisible());
}

TEST_F(ConverterWindowTest, TheTitleDragsIt) {
    Open();
    const QPoint before = window.pos();
    QWidget* title = Find("LabelTitle");
    QTest::mousePress(title, Qt::LeftButton, {}, {200, 10});
    QTest::mouseMove(title, {215, 22});
    QTest::mouseRelease(title, Qt::LeftButton, {}, {200, 10});
    EXPECT_EQ(window.pos() - before, QPoint(15, 12));
}

TEST_F(ConverterWindowTest, AKeyLightsUnderTheMouseUntilItMovesOverTheList) {
    Open();
    auto* key = Find<ImageButton>("ImageAllClear(0)");
    MoveMouse(key, {5, 5});
    EXPECT_TRUE(key->IsLit());
    MoveMouse(List()->viewport(), {20, 30});
    EXPECT_FALSE(key->IsLit());
}

} // namespace
} // namespace kestrune
