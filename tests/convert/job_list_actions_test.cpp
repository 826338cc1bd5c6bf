// What the user does with the list, the paths and what is dropped on them.
#include "converter_fixture.h"

namespace kestrune::convert {
namespace {

class JobListActionsTest : public ConverterTest {
protected:
    JobListActionsTest() {
        QObject::connect(&jobs, &JobList::PathDisplayChanged, [this](int boxes) { focused.append(boxes); });
        QObject::connect(&jobs, &JobList::LabelColoursReset, [this] { ++colourResets; });
    }
    JobList& jobs = converter.Jobs;
    QList<int> focused;
    int colourResets = 0;
};

TEST_F(JobListActionsTest, ClickShowsThePathInTheToolTipAndNotesTheRow) {
    converter.Rows.Append({{QStringLiteral("a.mp3"), {}, QStringLiteral("/m"), false},
                           {QStringLiteral("b.mp3"), {}, QStringLiteral("/m/"), false}});
    EXPECT_EQ(converter.State.ClickedRow, 0);
    jobs.ListViewInput_Click(1);
    EXPECT_EQ(Utf8(jobs.ToolTip()), "/m/a.mp3");
    EXPECT_EQ(converter.State.ClickedRow, 1);
    jobs.ListViewInput_Click(2);
    EXPECT_EQ(Utf8(jobs.ToolTip()), "/m/b.mp3");
    EXPECT_EQ(converter.State.ClickedRow, 2);
    jobs.ListViewInput_Click(3);
    EXPECT_EQ(converter.State.ClickedRow, 2);
}

TEST_F(JobListActionsTest, DoubleClickInvertsTheClickedRow) {
    AddJob(QStringLiteral("a.mp3"));
    AddJob(QStringLiteral("b.mp3"));
    jobs.ListViewInput_Click(2);
    jobs.ListViewInput_DblClick();
    EXPECT_TRUE(converter.Rows.IsChecked(1));
    EXPECT_FALSE(converter.Rows.IsChecked(2));
    EXPECT_EQ(Status(), "0 File Created/0 File Converted(Total 1)");
    jobs.ListViewInput_DblClick();
    EXPECT_TRUE(converter.Rows.IsChecked(2));
}

TEST_F(JobListActionsTest, DoubleClickLeavesAnEmptyListAlone) {
    jobs.ListViewInput_DblClick();
    AddJob(QStringLiteral("a.mp3"));
    jobs.ListViewInput_Click(1);
    converter.Rows.Clear();
    jobs.ListViewInput_DblClick();
    EXPECT_EQ(converter.Rows.Count(), 0);
    EXPECT_EQ(Status(), "");
}

TEST_F(JobListActionsTest, ABoxOfARowSetsTheStatusLineAnew) {
    AddJob(QStringLiteral("a.mp3"));
    AddJob(QStringLiteral("b.mp3"));
    converter.State.FilesCreated = 7;
    converter.Rows.setData(converter.Rows.index(0, 0), Qt::Unchecked, Qt::CheckStateRole);
    EXPECT_EQ(Status(), "0 File Created/0 File Converted(Total 1)");
    EXPECT_EQ(converter.State.FilesCreated, 7);
}

TEST_F(JobListActionsTest, AllAndNoneLeaveTheStatusLine) {
    AddJob(QStringLiteral("a.mp3"));
    AddJob(QStringLiteral("b.mp3"));
    jobs.ImageAllClear_Click(1);
    EXPECT_EQ(converter.Rows.CheckedCount(), 0);
    jobs.ImageAllClear_Click(0);
    EXPECT_EQ(converter.Rows.CheckedCount(), 2);
    jobs.ImageAllClear_Click(2);
    EXPECT_EQ(converter.Rows.CheckedCount(), 2);
    EXPECT_EQ(Status(), "");
}

TEST_F(JobListActionsTest, DroppedFilesJoinTheListUnticked) {
    AddJob(QStringLiteral("a.mp3"));
    const QString dropped = music.Write(QStringLiteral("b.MP3"), QByteArray(4096, 'x'));
    const QString film = music.Write(QStringLiteral("film.avi"), "x");
    jobs.ListViewInput_Drop({dropped, QString(), film, dropped});
    EXPECT_THAT(Names(), ElementsAre("a.mp3", "b.MP3", "b.MP3"));
    EXPECT_FALSE(converter.Rows.IsChecked(2));
    EXPECT_EQ(Utf8(converter.Rows.Row(2).folder), Utf8(music.Path() + u'/'));
    EXPECT_EQ(Utf8(converter.Rows.Row(2).sizeText), "       4 KB");
    EXPECT_EQ(Status(), "");
}

TEST_F(JobListActionsTest, ADroppedFileThatIsGoneHasNoSize) {
    jobs.ListViewInput_Drop({music.Path(QStringLiteral("gone.wav"))});
    ASSERT_EQ(converter.Rows.Count(), 1);
    EXPECT_EQ(Utf8(converter.Rows.Row(1).sizeText), "       0 KB");
}

TEST_F(JobListActionsTest, LabelsStandOverTheBoxesUntilTheyAreClicked) {
    EXPECT_TRUE(jobs.IsLabelShown(InputPathBox));
    EXPECT_TRUE(jobs.IsLabelShown(OutputPathBox));
    jobs.LabelIn_Click();
    EXPECT_FALSE(jobs.IsLabelShown(InputPathBox));
    EXPECT_TRUE(jobs.IsLabelShown(OutputPathBox));
    jobs.LabelOut_Click();
    EXPECT_FALSE(jobs.IsLabelShown(OutputPathBox));
    EXPECT_EQ(focused, (QList<int>{InputPathBox, OutputPathBox}));
    EXPECT_EQ(colourResets, 2);
}

TEST_F(JobListActionsTest, ThePointerOutsideTheBandBringsTheLabelsBack) {
    jobs.LabelIn_Click();
    jobs.LabelOut_Click();
    jobs.Form_MouseMove(40);
    jobs.Form_MouseMove(66);
    EXPECT_FALSE(jobs.IsLabelShown(InputPathBox));
    EXPECT_EQ(colourResets, 2);
    jobs.Form_MouseMove(67);
    EXPECT_TRUE(jobs.IsLabelShown(InputPathBox));
    EXPECT_TRUE(jobs.IsLabelShown(OutputPathBox));
    EXPECT_EQ(colourResets, 3);
    EXPECT_EQ(focused.last(), 0);
    jobs.LabelOut_Click();
    jobs.Form_MouseMove(39);
    EXPECT_TRUE(jobs.IsLabelShown(OutputPathBox));
}

TEST_F(JobListActionsTest, ControlStatTakesBothAtOnce) {
    jobs.InputControlStat(false, BothPathBoxes);
    EXPECT_FALSE(jobs.IsLabelShown(InputPathBox));
    EXPECT_FALSE(jobs.IsLabelShown(OutputPathBox));
    jobs.InputControlStat(true, InputPathBox);
    EXPECT_TRUE(jobs.IsLabelShown(InputPathBox));
    EXPECT_FALSE(jobs.IsLabelShown(OutputPathBox));
}

TEST_F(JobListActionsTest, TheFolderButtonsAskUnderTheirTitles) {
    AddMusic(QStringLiteral("a.mp3"));
    jobs.LabelIn_Click();
    prompts.foldersToChoose << music.Path() << out.Path();
    jobs.ImageinPath_Click();
    EXPECT_TRUE(jobs.IsLabelShown(InputPathBox));
    jobs.LabelOut_Click();
    jobs.ImageOutPath_Click();
    EXPECT_TRUE(jobs.IsLabelShown(OutputPathBox));
    EXPECT_THAT(ToTexts(prompts.folderTitles), ElementsAre("Get Intput Directory", "Get Output Directory"));
    EXPECT_EQ(Utf8(jobs.txtInputFile()), Utf8(music.Path()));
    EXPECT_EQ(Utf8(jobs.TextOutPath()), Utf8(out.Path()));
    EXPECT_THAT(Names(), ElementsAre("a.mp3"));
}

TEST_F(JobListActionsTest, ChoosingTheSameFolderAgainListsItAnew) {
    AddMusic(QStringLiteral("a.mp3"));
    jobs.txtInputFile_Change(music.Path());
    AddMusic(QStringLiteral("b.mp3"));
    prompts.foldersToChoose << music.Path();
    jobs.ImageinPath_Click();
    EXPECT_THAT(Names(), ElementsAre("a.mp3", "b.mp3"));
}

TEST_F(JobListActionsTest, ACancelledOutputFolderLeavesTheText) {
    jobs.TextOutPath_Change(QStringLiteral("/o"));
    jobs.ImageOutPath_Click();
    EXPECT_EQ(Utf8(jobs.TextOutPath()), "/o");
}

TEST_F(JobListActionsTest, ABareDriveGetsASeparator) {
    prompts.foldersToChoose << QStringLiteral("D:") << QStringLiteral("D:/x");
    jobs.ImageOutPath_Click();
    EXPECT_EQ(Utf8(jobs.TextOutPath()), "D:/");
    jobs.ImageOutPath_Click();
    EXPECT_EQ(Utf8(jobs.TextOutPath()), "D:/x");
}

TEST_F(JobListActionsTest, ATextThatTheWindowGivesBackRaisesNothing) {
    AddMusic(QStringLiteral("a.mp3"));
    QStringList texts;
    QObject::connect(&jobs, &JobList::InputTextShown, [&](const QString& text) {
        texts << text;
        jobs.txtInputFile_Change(text);
    });
    prompts.foldersToChoose << music.Path();
    jobs.ImageinPath_Click();
    EXPECT_THAT(ToTexts(texts), ElementsAre(Utf8(music.Path())));
    EXPECT_EQ(converter.Rows.Count(), 1);
}

} // namespace
} // namespace kestrune::convert
