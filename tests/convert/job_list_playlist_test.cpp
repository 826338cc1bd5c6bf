// The job list that is handed over from the playlist.
#include "convert/con_path.h"
#include "converter_fixture.h"

namespace kestrune::convert {
namespace {

class PlaylistModeTest : public ConverterTest {
protected:
    PlaylistModeTest() {
        AddPlaylistRow(QStringLiteral("one.mp3"), true);
        AddPlaylistRow(QStringLiteral("two.MP3"), false);
        AddPlaylistRow(QStringLiteral("three.ogg"), true);
    }
    void AddPlaylistRow(const QString& name, bool isSelected, bool isOnDisk = true) {
        if (isOnDisk) {
            music.Write(name, QByteArray(2048, 'x'));
        }
        const int row = playlist.Append(rules::MakeRow(playlist.Count() + 1, name, QStringLiteral("01:00"),
                                                       QStringLiteral("1.0m"), music.Path() + u'/', name));
        playlist.SetSelected(row, isSelected);
    }
    void Open(quint8 mode) {
        program.ConvertMode = mode;
        converter.Load();
    }
    std::string GoneText(const char* name) const {
        return Utf8(u'[' + music.Path(QString::fromLatin1(name)) + QStringLiteral("] no longer exists!"));
    }
    JobList& jobs = converter.Jobs;
};

TEST_F(PlaylistModeTest, TwoTakesTheSelectedRows) {
    Open(2);
    EXPECT_THAT(Names(), ElementsAre("one.mp3", "three.ogg"));
}

TEST_F(PlaylistModeTest, ThreeTakesTheOthers) {
    Open(3);
    EXPECT_THAT(Names(), ElementsAre("two.MP3"));
}

TEST_F(PlaylistModeTest, FourTakesAll) {
    Open(4);
    EXPECT_THAT(Names(), ElementsAre("one.mp3", "two.MP3", "three.ogg"));
}

TEST_F(PlaylistModeTest, NoneAndTheSeparatorTakeNothing) {
    Open(0);
    EXPECT_EQ(converter.Rows.Count(), 0);
    EXPECT_FALSE(jobs.IsInputReadOnly());
    Open(1);
    EXPECT_EQ(converter.Rows.Count(), 0);
}

TEST_F(PlaylistModeTest, RowsAreTickedWithSizeAndFolder) {
    Open(4);
    EXPECT_EQ(converter.Rows.CheckedCount(), 3);
    EXPECT_EQ(Utf8(converter.Rows.Row(1).sizeText), "       2 KB");
    EXPECT_EQ(Utf8(converter.Rows.Row(1).folder), Utf8(music.Path() + u'/'));
    EXPECT_EQ(Utf8(converter.Rows.FullPath(1)), Utf8(music.Path(QStringLiteral("one.mp3"))));
}

TEST_F(PlaylistModeTest, KindsThatAreNotTickedAreDroppedWithoutAWord) {
    AddPlaylistRow(QStringLiteral("film.avi"), true);
    AddPlaylistRow(QStringLiteral("voice.vox"), true);
    Open(4);
    EXPECT_THAT(Names(), ElementsAre("one.mp3", "two.MP3", "three.ogg"));
    EXPECT_THAT(Messages(), IsEmpty());
}

TEST_F(PlaylistModeTest, AFileThatIsGoneIsToldOfAndTheRestGoesOn) {
    QFile::remove(music.Path(QStringLiteral("one.mp3")));
    AddPlaylistRow(QStringLiteral("gone.avi"), true, false);
    Open(4);
    EXPECT_THAT(Names(), ElementsAre("two.MP3", "three.ogg"));
    EXPECT_THAT(Messages(), ElementsAre(GoneText("one.mp3"), GoneText("gone.avi")));
    EXPECT_EQ(prompts.messages[0].icon, PromptIcon::None);
}

TEST_F(PlaylistModeTest, GoneRowsThatAreNotWantedAreNotToldOf) {
    QFile::remove(music.Path(QStringLiteral("two.MP3")));
    Open(2);
    EXPECT_THAT(Messages(), IsEmpty());
}

TEST_F(PlaylistModeTest, TheInputBoxIsGreyAndSaysWhereTheRowsAreFrom) {
    home.Write(QStringLiteral("ConPath.dat"), EncodeConPath({"/in", "/out", "/rip"}, {}));
    Open(2);
    EXPECT_EQ(Utf8(jobs.txtInputFile()), "From Playlist");
    EXPECT_EQ(Utf8(jobs.LabelIn()), "From Playlist");
    EXPECT_EQ(Utf8(jobs.TextOutPath()), "/out");
    EXPECT_TRUE(jobs.IsInputReadOnly());
    EXPECT_TRUE(jobs.IsInputGrey());
}

TEST_F(PlaylistModeTest, WithoutARecordTheInputBoxKeepsItsStartingText) {
    Open(2);
    EXPECT_EQ(Utf8(jobs.txtInputFile()), "Enter Input Directory");
    EXPECT_EQ(Utf8(jobs.TextOutPath()), "Enter Output Directory");
    EXPECT_TRUE(jobs.IsInputReadOnly());
}

TEST_F(PlaylistModeTest, StoringKeepsTheInputFolderOfTheRecord) {
    home.Write(QStringLiteral("ConPath.dat"), EncodeConPath({"/in", "/out", "/rip"}, {}));
    Open(2);
    jobs.TextOutPath_Change(QStringLiteral("/new"));
    jobs.SaveGetConPath(ConPathAction::Save);
    EXPECT_EQ(rules::Content(ConPath()), EncodeConPath({"/in", "/new", "/rip"}, {}).toStdString());
}

TEST_F(PlaylistModeTest, ATextInTheInputBoxListsNothing) {
    Open(2);
    jobs.txtInputFile_Change(music.Path());
    EXPECT_THAT(Names(), ElementsAre("one.mp3", "three.ogg"));
    EXPECT_EQ(Utf8(jobs.TextOutPath()), "Enter Output Directory");
}

TEST_F(PlaylistModeTest, AFolderThatIsChosenLeavesTheModeForGood) {
    home.Write(QStringLiteral("ConPath.dat"), EncodeConPath({"/in", "/out", "/rip"}, {}));
    Open(2);
    prompts.foldersToChoose << music.Path();
    jobs.ImageinPath_Click();
    EXPECT_EQ(program.ConvertMode, 0);
    EXPECT_FALSE(jobs.IsInputReadOnly());
    EXPECT_TRUE(jobs.IsInputGrey());
    EXPECT_EQ(Utf8(jobs.txtInputFile()), Utf8(music.Path()));
    EXPECT_THAT(Names(), ElementsAre("one.mp3", "three.ogg", "two.MP3"));
    EXPECT_EQ(converter.Rows.CheckedCount(), 0);
    EXPECT_EQ(rules::Content(ConPath()).substr(2, size_t(music.Path().size())), Utf8(music.Path()));
}

TEST_F(PlaylistModeTest, ACancelledChoiceLeavesAllAsItIs) {
    Open(2);
    jobs.ImageinPath_Click();
    EXPECT_EQ(program.ConvertMode, 2);
    EXPECT_TRUE(jobs.IsInputReadOnly());
    EXPECT_THAT(Names(), ElementsAre("one.mp3", "three.ogg"));
}

TEST_F(PlaylistModeTest, AnInputTickClearsRowsThatNoFolderStandsBehind) {
    Open(2);
    jobs.Checkin_Click(2, true);
    EXPECT_EQ(converter.Rows.Count(), 0);
}

} // namespace
} // namespace kestrune::convert
