#include "playlist/playlist_files.h"

#include "playlist/playlist_files_fixture.h"

#include <QDir>
#include <gtest/gtest.h>

#include <csignal>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

namespace kestrune {
namespace {

using rules::Content;
using rules::MakeRow;
using rules::Playlist;
using rules::PlaylistFilesTest;
using rules::Texts;
using rules::Utf8;

// --- The list over a restart ---

TEST_F(PlaylistFilesTest, TheDefaultListComesBackAsItWas) {
    AddTwoRows();
    list.rows.SetSelected(2, true);
    SaveDefault();
    Playlist later;
    later.state.AppPath = list.home.Path();
    later.files.OpenSavePlayList(QStringLiteral("OPEN"), true);
    ASSERT_EQ(later.rows.Count(), 2);
    for (int row = 1; row <= 2; ++row) {
        for (const RowField field :
             {RowText, SubTime, SubType, SubSize, SubFolder, SubFileName, SubFormats}) {
            EXPECT_EQ(Utf8(later.rows.Field(row, field)), Utf8(list.rows.Field(row, field)));
        }
    }
    EXPECT_FALSE(later.rows.IsSelected(1));
    EXPECT_TRUE(later.rows.IsSelected(2));
}

TEST_F(PlaylistFilesTest, ASavedListHasNoMessageWhenItIsTheDefault) {
    SaveDefault();
    EXPECT_TRUE(list.prompts.messages.isEmpty());
    EXPECT_TRUE(list.prompts.choices.isEmpty());
    EXPECT_EQ(Content(list.DefaultFile()).size(), 59U);
}

TEST_F(PlaylistFilesTest, TheDefaultFileIsFoundInAnotherSpellingAndStoredUnderIt) {
    AddTwoRows();
    SaveDefault();
    ASSERT_TRUE(QFile::rename(list.DefaultFile(), list.home.Path(QStringLiteral("DEFAULT.KSL"))));
    list.rows.Clear();
    list.files.OpenSavePlayList(QStringLiteral("OPEN"), true);
    EXPECT_EQ(Titles(), (Texts{"1.A", "2.B"}));
    list.rows.Remove(2);
    SaveDefault();
    EXPECT_EQ(QDir(list.home.Path()).entryList(QDir::Files), QStringList{QStringLiteral("DEFAULT.KSL")});
}

TEST_F(PlaylistFilesTest, AMissingDefaultFileChangesNothingAndTellsNobody) {
    AddOldRow();
    int loads = 0;
    QObject::connect(&list.files, &PlaylistFiles::ListLoaded, &list.files, [&] { ++loads; });
    list.files.OpenSavePlayList(QStringLiteral("OPEN"), true);
    EXPECT_EQ(Titles(), (Texts{"1.old"}));
    EXPECT_EQ(loads, 0);
}

TEST_F(PlaylistFilesTest, AFolderInPlaceOfTheDefaultFileIsLeftAlone) {
    ASSERT_TRUE(QDir().mkpath(list.DefaultFile()));
    AddOldRow();
    SaveDefault();
    list.files.OpenSavePlayList(QStringLiteral("OPEN"), true);
    EXPECT_EQ(Titles(), (Texts{"1.old"}));
    EXPECT_TRUE(QDir(list.DefaultFile()).exists());
}

// In a child, so that the limit ends with it. True when the child ended as it should.
bool SaveUnderSizeLimit(PlaylistFiles& files, rlim_t largestBytes) {
    const pid_t child = fork();
    if (child == 0) {
        std::signal(SIGXFSZ, SIG_IGN);
        const rlimit limit{largestBytes, largestBytes};
        setrlimit(RLIMIT_FSIZE, &limit);
        files.OpenSavePlayList(QStringLiteral("SAVE"), true);
        _exit(0);
    }
    int status = -1;
    waitpid(child, &status, 0);
    return WIFEXITED(status) && WEXITSTATUS(status) == 0;
}

TEST_F(PlaylistFilesTest, AWriteThatBreaksOffLeavesTheOldListWhole) {
    AddTwoRows();
    SaveDefault();
    const std::string before = Content(list.DefaultFile());
    AddTwoRows();
    ASSERT_TRUE(SaveUnderSizeLimit(list.files, 2500));
    EXPECT_EQ(Content(list.DefaultFile()), before);
    EXPECT_EQ(QDir(list.home.Path()).entryList(QDir::Files | QDir::Hidden).size(), 1);
}

// --- The native format ---

TEST_F(PlaylistFilesTest, ANativeListReplacesTheRowsAndIsNumberedByItsPlaces) {
    AddTwoRows();
    list.files.OpenSaveMyPlaylistKSL(list.music.Path(QStringLiteral("l.ksl")), QStringLiteral("SAVE"), false);
    list.rows.Clear();
    AddOldRow();
    OpenByDialog(list.music.Path(QStringLiteral("l.ksl")));
    EXPECT_EQ(Titles(), (Texts{"1.A", "2.B"}));
    EXPECT_EQ(Content(list.DefaultFile()), "(no file)") << "no save of the default list follows";
}

TEST_F(PlaylistFilesTest, ANativeListIsAppendedWithoutClear) {
    AddTwoRows();
    const QString file = list.music.Path(QStringLiteral("l.ksl"));
    list.files.OpenSaveMyPlaylistKSL(file, QStringLiteral("SAVE"), false);
    list.files.OpenSaveMyPlaylistKSL(file, QStringLiteral("OPEN"), false);
    EXPECT_EQ(Titles(), (Texts{"1.A", "2.B", "3.A", "4.B"}));
}

TEST_F(PlaylistFilesTest, ANativeListOfNoRowsLeavesTheListAsItIs) {
    const QString file = list.music.Path(QStringLiteral("l.ksl"));
    list.files.OpenSaveMyPlaylistKSL(file, QStringLiteral("SAVE"), false);
    AddOldRow();
    OpenByDialog(file);
    EXPECT_EQ(Titles(), (Texts{"1.old"}));
}

TEST_F(PlaylistFilesTest, ANativeListNeitherProbesNorTestsItsFiles) {
    list.rows.Append(MakeRow(1, QStringLiteral("gone"), QStringLiteral("00:01"), QStringLiteral("0.0m"),
                             QStringLiteral("/nowhere/"), QStringLiteral("gone.mp3")));
    SaveDefault();
    list.rows.Clear();
    list.files.OpenSavePlayList(QStringLiteral("OPEN"), true);
    EXPECT_EQ(Titles(), (Texts{"1.gone"}));
    EXPECT_TRUE(list.probe.calls.isEmpty());
}

TEST_F(PlaylistFilesTest, AListOfThisBuildOrALaterOneIsNotConverted) {
    AddTwoRows();
    const QString file = list.music.Path(QStringLiteral("l.ksl"));
    list.files.OpenSaveMyPlaylistKSL(file, QStringLiteral("SAVE"), false);
    QByteArray bytes = QByteArray::fromStdString(Content(file));
    for (const char* build : {"50410", "50411", "99999"}) {
        bytes.replace(32, 5, build);
        list.music.Write(QStringLiteral("l.ksl"), bytes);
        OpenByDialog(file);
        EXPECT_EQ(Titles(), (Texts{"1.A", "2.B"}));
        EXPECT_EQ(Content(file), bytes.toStdString());
    }
}

// --- Dispatch ---

TEST_F(PlaylistFilesTest, AnEndingInUpperCaseCounts) {
    list.AddMusic(QStringLiteral("a.mp3"));
    OpenByDialog(list.music.Write(QStringLiteral("L.M3U"), "#EXTM3U\n#EXTINF:1,t\na.mp3\n"));
    EXPECT_EQ(Titles(), (Texts{"1.t"}));
}

TEST_F(PlaylistFilesTest, AnUnknownEndingReadsNothingButSetsTotalsAndButtons) {
    AddOldRow();
    int totals = 0;
    int loads = 0;
    QObject::connect(&list.files, &PlaylistFiles::TotalsChanged, &list.files, [&] { ++totals; });
    QObject::connect(&list.files, &PlaylistFiles::ListLoaded, &list.files, [&] { ++loads; });
    OpenByDialog(list.music.Write(QStringLiteral("l.m3u8"), "#EXTM3U\n#EXTINF:1,t\na.mp3\n"));
    EXPECT_EQ(Titles(), (Texts{"1.old"}));
    EXPECT_EQ(totals, 1);
    EXPECT_EQ(loads, 1);
}

TEST_F(PlaylistFilesTest, ACancelledDialogDoesNothing) {
    AddOldRow();
    list.files.OpenSavePlayList(QStringLiteral("OPEN"), false);
    list.files.OpenSavePlayList(QStringLiteral("SAVE"), false);
    EXPECT_EQ(Titles(), (Texts{"1.old"}));
    EXPECT_TRUE(list.prompts.messages.isEmpty());
    ASSERT_EQ(list.prompts.choices.size(), 2);
    EXPECT_EQ(Utf8(list.prompts.choices[0].title), "Open playlist");
    EXPECT_EQ(Utf8(list.prompts.choices[1].title), "Save playlist");
}

TEST_F(PlaylistFilesTest, SavingByTheDialogTellsOfItsSuccess) {
    AddTwoRows();
    for (const char* name : {"l.ksl", "l.m3u", "l.pls", "l.asx", "l.wax", "l.WVX"}) {
        list.prompts.messages.clear();
        const QString file = list.music.Path(QString::fromUtf8(name));
        SaveByDialog(file);
        EXPECT_TRUE(QFile::exists(file)) << name;
        ASSERT_EQ(list.prompts.messages.size(), 1);
        EXPECT_EQ(Utf8(list.prompts.messages[0].text), "Saved successfully!");
        EXPECT_EQ(list.prompts.messages[0].icon, PromptIcon::Warning);
    }
    const std::string asx = Content(list.music.Path(QStringLiteral("l.asx")));
    EXPECT_EQ(asx.substr(0, 13), "<Asx Version ");
    EXPECT_EQ(Content(list.music.Path(QStringLiteral("l.wax"))), asx);
    EXPECT_EQ(Content(list.music.Path(QStringLiteral("l.WVX"))), asx);
}

TEST_F(PlaylistFilesTest, SavingReplacesAnExistingFileWithoutAQuestion) {
    AddTwoRows();
    const QString file = list.music.Write(QStringLiteral("l.m3u"), QByteArray(5000, 'x'));
    SaveByDialog(file);
    EXPECT_EQ(Content(file).substr(0, 9), "#EXTM3U\r\n");
    EXPECT_EQ(Content(file).find("xxxx"), std::string::npos);
    EXPECT_TRUE(list.prompts.questions.isEmpty());
}

TEST_F(PlaylistFilesTest, SavingUnderAnUnknownEndingLosesTheOldFileAndReportsSuccess) {
    AddTwoRows();
    const QString file = list.music.Write(QStringLiteral("mylist"), "precious");
    SaveByDialog(file);
    EXPECT_FALSE(QFile::exists(file));
    ASSERT_EQ(list.prompts.messages.size(), 1);
    EXPECT_EQ(Utf8(list.prompts.messages[0].text), "Saved successfully!");
}

TEST_F(PlaylistFilesTest, TheFolderOfTheChosenListIsRemembered) {
    AddTwoRows();
    SaveByDialog(list.music.Path(QStringLiteral("l.m3u")));
    EXPECT_EQ(Utf8(list.state.CurPath), Utf8(list.MusicFolder()));
}

} // namespace
} // namespace kestrune
