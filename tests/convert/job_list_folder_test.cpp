// The job list that mirrors a folder, and the paths that are remembered.
#include "convert/con_path.h"
#include "converter_fixture.h"

#include <QDir>

namespace kestrune::convert {
namespace {

class FolderModeTest : public ConverterTest {
protected:
    JobList& jobs = converter.Jobs;
    QString StoredText(int index) const {
        const ConPathRecord record = DecodeConPath(ReadFile(ConPath()));
        const std::array<QByteArray, 3> texts = {record.inputFolder, record.outputFolder, record.ripFolder};
        return QString::fromUtf8(texts.at(static_cast<size_t>(index)));
    }
    static QByteArray ReadFile(const QString& path) {
        QFile file(path);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }
    void Store(const QString& inputFolder, const QString& outputFolder, const QString& ripFolder) {
        home.Write(QStringLiteral("ConPath.dat"),
                   EncodeConPath({inputFolder.toUtf8(), outputFolder.toUtf8(), ripFolder.toUtf8()}, {}));
    }
};

TEST_F(FolderModeTest, WithoutARecordTheBoxesShowTheirStartingTexts) {
    converter.Load();
    EXPECT_EQ(Utf8(jobs.txtInputFile()), "Enter Input Directory");
    EXPECT_EQ(Utf8(jobs.TextOutPath()), "Enter Output Directory");
    EXPECT_FALSE(jobs.IsInputReadOnly());
    EXPECT_FALSE(jobs.IsInputGrey());
    EXPECT_EQ(converter.Rows.Count(), 0);
    EXPECT_EQ(rules::Content(ConPath()), "(no file)");
}

TEST_F(FolderModeTest, RowsAreTheTickedKindsOfTheFolderUnticked) {
    for (const char* name : {"b.mp3", "A.MP3", "film.avi", "notes.txt", "x.wav.mp3", "voice.g721"}) {
        music.Write(QString::fromLatin1(name), QByteArray(3000, 'x'));
    }
    converter.Load();
    jobs.txtInputFile_Change(music.Path());
    EXPECT_THAT(Names(), ElementsAre("A.MP3", "b.mp3", "voice.g721", "x.wav.mp3"));
    for (int row = 1; row <= converter.Rows.Count(); ++row) {
        EXPECT_FALSE(converter.Rows.IsChecked(row));
        EXPECT_EQ(Utf8(converter.Rows.Row(row).sizeText), "       2 KB");
        EXPECT_EQ(Utf8(converter.Rows.Row(row).folder), Utf8(music.Path()));
    }
    EXPECT_EQ(Utf8(jobs.LabelIn()), Utf8(music.Path()));
}

TEST_F(FolderModeTest, AFolderWithASeparatorAtItsEndIsTheSame) {
    AddMusic(QStringLiteral("a.mp3"));
    converter.Load();
    jobs.txtInputFile_Change(music.Path() + u'/');
    ASSERT_EQ(converter.Rows.Count(), 1);
    EXPECT_EQ(Utf8(converter.Rows.Row(1).folder), Utf8(music.Path()));
    EXPECT_EQ(Utf8(jobs.LabelIn()), Utf8(music.Path() + u'/'));
}

TEST_F(FolderModeTest, OutputDefaultsToTheInputUntilItHasAText) {
    AddMusic(QStringLiteral("a.mp3"));
    converter.Load();
    jobs.txtInputFile_Change(music.Path());
    EXPECT_EQ(Utf8(jobs.TextOutPath()), Utf8(music.Path()));
    EXPECT_EQ(Utf8(jobs.LabelOut()), Utf8(music.Path()));
    jobs.txtInputFile_Change(out.Path());
    EXPECT_EQ(Utf8(jobs.TextOutPath()), Utf8(music.Path()));
}

TEST_F(FolderModeTest, AFolderWithoutFilesEmptiesTheListAndNothingElse) {
    AddMusic(QStringLiteral("a.mp3"));
    converter.Load();
    jobs.txtInputFile_Change(music.Path());
    ASSERT_EQ(converter.Rows.Count(), 1);
    jobs.txtInputFile_Change(out.Path());
    EXPECT_EQ(converter.Rows.Count(), 0);
    EXPECT_EQ(Utf8(jobs.LabelIn()), Utf8(music.Path()));
    EXPECT_EQ(Utf8(jobs.FileListPath()), Utf8(music.Path()));
    EXPECT_EQ(Utf8(StoredText(0)), Utf8(music.Path()));
    EXPECT_THAT(Messages(), IsEmpty());
}

TEST_F(FolderModeTest, AFolderThatHasVanishedEmptiesTheListWithoutAWord) {
    AddMusic(QStringLiteral("a.mp3"));
    Store(music.Path(), out.Path(), {});
    converter.Load();
    ASSERT_EQ(converter.Rows.Count(), 1);
    jobs.txtInputFile_Change(music.Path(QStringLiteral("gone")));
    EXPECT_EQ(converter.Rows.Count(), 0);
    EXPECT_THAT(Messages(), IsEmpty());
}

TEST_F(FolderModeTest, AVanishedFolderOfTheRecordIsPassedOver) {
    Store(music.Path(QStringLiteral("gone")), out.Path(), QStringLiteral("/rip"));
    converter.Load();
    EXPECT_EQ(Utf8(jobs.txtInputFile()), Utf8(music.Path(QStringLiteral("gone"))));
    EXPECT_EQ(converter.Rows.Count(), 0);
    EXPECT_THAT(Messages(), IsEmpty());
}

TEST_F(FolderModeTest, ListingStoresThePathsAndKeepsThatOfTheRipper) {
    AddMusic(QStringLiteral("a.mp3"));
    Store(QStringLiteral("/old/in"), QStringLiteral("/old/out"), QStringLiteral("/rip"));
    converter.Load();
    jobs.txtInputFile_Change(music.Path());
    EXPECT_EQ(Utf8(StoredText(0)), Utf8(music.Path()));
    EXPECT_EQ(Utf8(StoredText(1)), "/old/out");
    EXPECT_EQ(Utf8(StoredText(2)), "/rip");
}

TEST_F(FolderModeTest, LoadShowsTheRecordAndListsItsFolder) {
    AddMusic(QStringLiteral("a.mp3"));
    Store(music.Path(), out.Path(), QStringLiteral("/rip"));
    converter.Load();
    EXPECT_EQ(Utf8(jobs.txtInputFile()), Utf8(music.Path()));
    EXPECT_EQ(Utf8(jobs.TextOutPath()), Utf8(out.Path()));
    EXPECT_EQ(Utf8(jobs.LabelOut()), Utf8(out.Path()));
    EXPECT_THAT(Names(), ElementsAre("a.mp3"));
}

// The folder is listed, and the paths are stored, before the output text of the record is shown.
TEST_F(FolderModeTest, LoadDoesNotLoseTheOutputFolderOfTheRecord) {
    AddMusic(QStringLiteral("a.mp3"));
    Store(music.Path(), out.Path(), QStringLiteral("/rip"));
    const QByteArray before = ReadFile(ConPath());
    converter.Load();
    EXPECT_EQ(ReadFile(ConPath()), before);
}

TEST_F(FolderModeTest, ClicksThatTheLoadRaisesHaveNoSideEffects) {
    AddMusic(QStringLiteral("a.mp3"));
    Store(music.Path(), out.Path(), {});
    int looks = 0;
    QObject::connect(&jobs, &JobList::InputLookChanged, [&] {
        ++looks;
        converter.Rows.setData(converter.Rows.index(0, 0), Qt::Checked, Qt::CheckStateRole);
        jobs.Checkin_Click(2, true);
    });
    converter.Load();
    EXPECT_EQ(looks, 1);
    EXPECT_TRUE(converter.Rows.IsChecked(1));
    EXPECT_EQ(Status(), "");
    EXPECT_EQ(Utf8(jobs.CheckInTag(2)), "1");
    jobs.Checkin_Click(2, false);
    EXPECT_FALSE(converter.Rows.IsChecked(1));
}

TEST_F(FolderModeTest, RecordOfTheOtherSpellingIsReadAndWritten) {
    AddMusic(QStringLiteral("a.mp3"));
    home.Write(QStringLiteral("Conpath.dat"), EncodeConPath({"/gone", "/old/out", "/rip"}, {}));
    converter.Load();
    EXPECT_EQ(Utf8(jobs.TextOutPath()), "/old/out");
    jobs.txtInputFile_Change(music.Path());
    EXPECT_EQ(rules::Content(ConPath()), "(no file)");
    const ConPathRecord record = DecodeConPath(ReadFile(home.Path(QStringLiteral("Conpath.dat"))));
    EXPECT_EQ(record.inputFolder, music.Path().toUtf8());
    EXPECT_EQ(record.ripFolder, "/rip");
}

TEST_F(FolderModeTest, AShorterRecordLeavesTheOldTailInTheFile) {
    AddMusic(QStringLiteral("a.mp3"));
    Store(QString(200, u'i'), QString(200, u'o'), QStringLiteral("/rip"));
    const qsizetype size = ReadFile(ConPath()).size();
    converter.Load();
    jobs.txtInputFile_Change(music.Path());
    jobs.TextOutPath_Change(QStringLiteral("/o"));
    jobs.SaveGetConPath(ConPathAction::Save);
    EXPECT_EQ(ReadFile(ConPath()).size(), size);
    EXPECT_EQ(Utf8(StoredText(1)), "/o");
    EXPECT_EQ(Utf8(StoredText(2)), "/rip");
}

TEST_F(FolderModeTest, TheRecordIsNoRecordOfBytesThatMakeNoSense) {
    home.Write(QStringLiteral("ConPath.dat"), QByteArray("\xFF\xFF"
                                                         "xyz",
                                                         5));
    converter.Load();
    EXPECT_EQ(Utf8(jobs.txtInputFile()), "xyz");
    EXPECT_EQ(Utf8(jobs.TextOutPath()), "");
}

TEST_F(FolderModeTest, PathsThatCannotBeStoredAreNoMatter) {
    AddMusic(QStringLiteral("a.mp3"));
    program.AppPath = home.Path(QStringLiteral("gone"));
    converter.Load();
    jobs.txtInputFile_Change(music.Path());
    EXPECT_THAT(Names(), ElementsAre("a.mp3"));
    EXPECT_THAT(Messages(), IsEmpty());
}

TEST_F(FolderModeTest, AFileThatCannotBeOpenedCountsAsEmpty) {
    QStringList names = {QStringLiteral("nowhere.mp3")};
    JobList injected({program, converter.State, playlist, converter.Rows, prompts,
                      [&](const QString& /*folder*/) { return names; }});
    injected.txtInputFile_Change(music.Path());
    ASSERT_THAT(Names(), ElementsAre("nowhere.mp3"));
    EXPECT_EQ(Utf8(converter.Rows.Row(1).sizeText), "       0 KB");
}

TEST_F(FolderModeTest, ATickListsTheFolderAnewAndRowsLoseTheirTicks) {
    music.Write(QStringLiteral("film.avi"), "x");
    AddMusic(QStringLiteral("a.mp3"));
    converter.Load();
    jobs.txtInputFile_Change(music.Path());
    jobs.ImageAllClear_Click(0);
    EXPECT_EQ(converter.Rows.CheckedCount(), 1);
    jobs.Checkin_Click(2, true);
    EXPECT_THAT(Names(), ElementsAre("a.mp3", "film.avi"));
    EXPECT_EQ(converter.Rows.CheckedCount(), 0);
    jobs.Checkin_Click(4, false);
    EXPECT_THAT(Names(), ElementsAre("film.avi"));
}

TEST_F(FolderModeTest, PictureBoxesKeepTheirTagsInStep) {
    AddMusic(QStringLiteral("a.mp3"));
    converter.Load();
    jobs.txtInputFile_Change(music.Path());
    QStringList shown;
    QObject::connect(&jobs, &JobList::CheckInShown, [&](int index, bool ticked) {
        shown << QStringLiteral("%1 %2").arg(index).arg(static_cast<int>(ticked));
    });
    EXPECT_EQ(Utf8(jobs.CheckInTag(4)), "1");
    jobs.SetCheckIn(4, CheckAction::Click);
    EXPECT_EQ(Utf8(jobs.CheckInTag(4)), "0");
    EXPECT_EQ(converter.Rows.Count(), 0);
    jobs.SetCheckIn(4, CheckAction::Show);
    EXPECT_EQ(Utf8(jobs.CheckInTag(4)), "0");
    jobs.SetCheckIn(4, CheckAction::Click);
    EXPECT_THAT(Names(), ElementsAre("a.mp3"));
    EXPECT_THAT(ToTexts(shown), ElementsAre("4 0", "4 0", "4 1"));
    jobs.SetCheckIn(11, CheckAction::Click);
    EXPECT_EQ(shown.size(), 3);
}

TEST_F(FolderModeTest, AnOutputTextIsShownByItsLabelAndStoredLater) {
    Store(QStringLiteral("/i"), QStringLiteral("/o"), {});
    converter.Load();
    jobs.TextOutPath_Change(QStringLiteral("/new"));
    EXPECT_EQ(Utf8(jobs.LabelOut()), "/new");
    EXPECT_EQ(Utf8(StoredText(1)), "/o");
    EXPECT_EQ(converter.Rows.Count(), 0);
}

TEST_F(FolderModeTest, TextsOfAnyLettersComeBack) {
    const QString folder = music.Path(QStringLiteral("Mährchen 音楽"));
    ASSERT_TRUE(QDir().mkpath(folder));
    QFile file(folder + QStringLiteral("/é.ogg"));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    converter.Load();
    jobs.txtInputFile_Change(folder);
    EXPECT_THAT(Names(), ElementsAre("é.ogg"));
    ConverterTool again(components, program, playlist);
    again.rules.Load();
    EXPECT_EQ(Utf8(again.rules.Jobs.txtInputFile()), Utf8(folder));
    EXPECT_EQ(again.rules.Rows.Count(), 1);
}

} // namespace
} // namespace kestrune::convert
