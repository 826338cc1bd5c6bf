// Playlists of other programs, and the ways in which files reach the list.
#include "playlist/playlist_files_fixture.h"

#include <QDir>
#include <gtest/gtest.h>

namespace kestrune {
namespace {

using rules::Content;
using rules::PlaylistFilesTest;
using rules::Texts;
using rules::Utf8;

// --- Lists of other programs ---

TEST_F(PlaylistFilesTest, ATextListReplacesTheRowsAndTheDefaultFile) {
    AddOldRow();
    list.AddMusic(QStringLiteral("a.mp3"));
    const QByteArray content = "#EXTM3U\n#EXTINF:65,One\na.mp3\n";
    const QString file = list.music.Write(QStringLiteral("l.m3u"), content);
    OpenByDialog(file);
    EXPECT_EQ(Titles(), (Texts{"1.One"}));
    EXPECT_EQ(Utf8(list.rows.Field(1, SubTime)), "01:05");
    EXPECT_EQ(Utf8(list.rows.Field(1, SubFolder)), Utf8(list.MusicFolder()));
    EXPECT_EQ(RowsInDefaultFile(), 1);
    EXPECT_EQ(Content(file), content.toStdString()) << "the foreign file stays";
    EXPECT_TRUE(list.probe.calls.isEmpty());
}

TEST_F(PlaylistFilesTest, EntriesWhoseFileIsGoneAreNotListedButTheOldListGoes) {
    AddOldRow();
    list.AddMusic(QStringLiteral("a.mp3"));
    OpenByDialog(list.music.Write(QStringLiteral("l.m3u"),
                                  "#EXTM3U\n#EXTINF:1,gone\ngone.mp3\n#EXTINF:1,here\na.mp3\n"));
    EXPECT_EQ(Titles(), (Texts{"1.here"}));
    OpenByDialog(list.music.Write(QStringLiteral("l.m3u"), "#EXTM3U\n#EXTINF:1,gone\ngone.mp3\n"));
    EXPECT_EQ(Titles(), Texts());
}

TEST_F(PlaylistFilesTest, ATextListWithoutEntriesLeavesTheListAndStillSavesTheDefault) {
    AddOldRow();
    for (const char* content : {"#EXTM3U", "#EXTM3U\r\n", "#EXTM3U\na.mp3\nb.mp3\n"}) {
        QFile::remove(list.DefaultFile());
        OpenByDialog(list.music.Write(QStringLiteral("l.m3u"), content));
        EXPECT_EQ(Titles(), (Texts{"1.old"}));
        EXPECT_EQ(RowsInDefaultFile(), 1);
    }
    for (const char* content : {"[playlist]", "[playlist]\nNumberOfEntries=0\nVersion=2\n"}) {
        QFile::remove(list.DefaultFile());
        OpenByDialog(list.music.Write(QStringLiteral("l.pls"), content));
        EXPECT_EQ(Titles(), (Texts{"1.old"}));
        EXPECT_EQ(RowsInDefaultFile(), 1);
    }
}

TEST_F(PlaylistFilesTest, AnAsxListWithoutEntriesLeavesTheListAndTheDefaultFile) {
    AddOldRow();
    for (const char* content : {"<Asx Version = \"3.0\" >", "<Asx Version = \"3.0\" >\n\n</Asx>\n"}) {
        OpenByDialog(list.music.Write(QStringLiteral("l.asx"), content));
        EXPECT_EQ(Titles(), (Texts{"1.old"}));
        EXPECT_EQ(Content(list.DefaultFile()), "(no file)");
    }
}

TEST_F(PlaylistFilesTest, AListOfAnotherFormatGetsItsMessageAndChangesNothing) {
    AddOldRow();
    const std::vector<std::pair<const char*, const char*>> cases = {
        {"l.m3u", "Invalid Winamp M3U Playlist!"},   {"l.pls", "Invalid Winamp PLS Playlist!"},
        {"l.asx", "Invalid Media Player Playlist!"}, {"l.wax", "Invalid Media Player Playlist!"},
        {"l.wvx", "Invalid Media Player Playlist!"},
    };
    for (const auto& [name, message] : cases) {
        list.prompts.messages.clear();
        OpenByDialog(list.music.Write(QString::fromUtf8(name), "first line\nsecond line\n"));
        ASSERT_EQ(list.prompts.messages.size(), 1) << name;
        EXPECT_EQ(Utf8(list.prompts.messages[0].text), message);
        EXPECT_EQ(list.prompts.messages[0].icon, PromptIcon::Warning);
        EXPECT_EQ(Titles(), (Texts{"1.old"}));
        EXPECT_EQ(Content(list.DefaultFile()), "(no file)");
    }
}

TEST_F(PlaylistFilesTest, APathOfAnotherSystemIsFoundBelowTheFolderOfTheList) {
    ASSERT_TRUE(QDir().mkpath(list.music.Path(QStringLiteral("album"))));
    list.AddMusic(QStringLiteral("album/a.mp3"));
    OpenByDialog(list.music.Write(QStringLiteral("l.m3u"), "#EXTM3U\r\n#EXTINF:1,t\r\nalbum\\a.mp3\r\n"));
    EXPECT_EQ(Titles(), (Texts{"1.t"}));
    EXPECT_EQ(Utf8(list.rows.FullPath(1)), Utf8(list.music.Path(QStringLiteral("album/a.mp3"))));
}

TEST_F(PlaylistFilesTest, APlsListIsReadThroughTheSameRules) {
    list.AddMusic(QStringLiteral("a.mp3"));
    OpenByDialog(list.music.Write(
        QStringLiteral("l.pls"),
        "[playlist]\r\nFile1=a.mp3\r\nTitle1=One\r\nLength1=60\r\nNumberOfEntries=1\r\nVersion=2\r\n"));
    EXPECT_EQ(Titles(), (Texts{"1.One"}));
    EXPECT_EQ(RowsInDefaultFile(), 1);
}

TEST_F(PlaylistFilesTest, EachFormatOfOurOwnComesBack) {
    AddTwoRows();
    for (const char* name : {"l.m3u", "l.pls", "l.asx", "l.wax", "l.wvx", "l.ksl"}) {
        const QString file = list.music.Path(QString::fromUtf8(name));
        SaveByDialog(file);
        list.rows.Clear();
        OpenByDialog(file);
        EXPECT_EQ(Titles(), (Texts{"1.A", "2.B"})) << name;
        EXPECT_EQ(Utf8(list.rows.FullPath(2)), Utf8(list.music.Path(QStringLiteral("b.mp3")))) << name;
        EXPECT_EQ(Utf8(list.rows.Field(2, SubTime)), "01:00") << name;
    }
}

TEST_F(PlaylistFilesTest, TheWindowIsRepaintedAfterEachEntry) {
    AddTwoRows();
    int repaints = 0;
    QObject::connect(&list.files, &PlaylistFiles::WindowRepaint, &list.files, [&] { ++repaints; });
    for (const char* name : {"l.m3u", "l.pls", "l.asx"}) {
        const QString file = list.music.Path(QString::fromUtf8(name));
        SaveByDialog(file);
        repaints = 0;
        OpenByDialog(file);
        EXPECT_EQ(repaints, 2) << name;
    }
}

TEST_F(PlaylistFilesTest, AnAsxListSavesTheDefaultFileAfterEachEntry) {
    AddTwoRows();
    SaveByDialog(list.music.Path(QStringLiteral("l.asx")));
    list.rows.Clear();
    std::vector<int> stored;
    QObject::connect(&list.files, &PlaylistFiles::WindowRepaint, &list.files,
                     [&] { stored.push_back(RowsInDefaultFile()); });
    OpenByDialog(list.music.Path(QStringLiteral("l.asx")));
    EXPECT_EQ(stored, (std::vector<int>{1, 2}));
}

TEST_F(PlaylistFilesTest, ALongAsxListIsStoredWholeAtItsEndWithFewSaves) {
    list.AddMusic(QStringLiteral("a.mp3"));
    QByteArray content = "<Asx Version>\n";
    for (int i = 0; i < 3000; ++i) {
        content += "<Entry>\n<Title > t</Title>\n<Ref href = \"a.mp3\"/>\n</Entry>\n";
    }
    int lastStored = 0;
    int saves = 0;
    QObject::connect(&list.files, &PlaylistFiles::WindowRepaint, &list.files, [&] {
        saves += static_cast<int>(RowsInDefaultFile() != lastStored);
        lastStored = RowsInDefaultFile();
    });
    OpenByDialog(list.music.Write(QStringLiteral("l.asx"), content));
    EXPECT_EQ(list.rows.Count(), 3000);
    EXPECT_EQ(RowsInDefaultFile(), 3000);
    EXPECT_LE(saves, 64 + 40) << "each save writes all rows";
}

TEST_F(PlaylistFilesTest, AWholeAsxEntryIsNotProbedAndAnyOtherIs) {
    list.AddMusic(QStringLiteral("a.mp3"), QStringLiteral("from the tag"));
    OpenByDialog(
        list.music.Write(QStringLiteral("l.asx"),
                         "<Asx Version>\n"
                         "<Entry>\n<Duration value = \"00:02:05.0\" />\n<Title > whole</Title>\n"
                         "<Param Name = \"FileSize\" Value = \"3145728\" />\n<Ref href = \"a.mp3\"/>\n"
                         "</Entry>\n"
                         "<Entry>\n<Title > no size</Title>\n<Duration value = \"00:02:05.0\" />\n"
                         "<Ref href = \"a.mp3\"/>\n</Entry>\n"));
    EXPECT_EQ(Titles(), (Texts{"1.whole", "2.from the tag"}));
    EXPECT_EQ(Utf8(list.rows.Field(1, SubTime)), "02:05");
    EXPECT_EQ(Utf8(list.rows.Field(1, SubSize)), "3.0m");
    EXPECT_EQ(list.probe.calls.size(), 1);
}

TEST_F(PlaylistFilesTest, AnAsxSourceIsNotSoughtBelowTheFolderOfTheList) {
    list.AddMusic(QStringLiteral("a.mp3"));
    QString native = list.music.Path(QStringLiteral("a.mp3"));
    native.replace(u'/', u'\\');
    OpenByDialog(list.music.Write(QStringLiteral("l.asx"),
                                  "<Asx Version>\n<Entry>\n<Param Name = \"SourceURL\" Value = \"a.mp3\" />\n"
                                  "</Entry>\n<Entry>\n<Param Name = \"SourceURL\" Value = \"" +
                                      native.toUtf8() + "\" />\n</Entry>\n"));
    EXPECT_EQ(list.rows.Count(), 1);
}

TEST_F(PlaylistFilesTest, AnAsxListThatNamesItselfEnds) {
    list.AddMusic(QStringLiteral("a.mp3"), QStringLiteral("A"));
    OpenByDialog(list.music.Write(QStringLiteral("l.asx"),
                                  "<Asx Version>\n<Entry>\n<Ref href = \"l.asx\"/>\n</Entry>\n"
                                  "<Entry>\n<Ref href = \"a.mp3\"/>\n</Entry>\n"));
    EXPECT_EQ(Titles(), (Texts{"1.A"}));
}

TEST_F(PlaylistFilesTest, AsxListsThatNameEachOtherEnd) {
    list.AddMusic(QStringLiteral("a.mp3"), QStringLiteral("A"));
    const QByteArray song = "<Entry>\n<Ref href = \"a.mp3\"/>\n</Entry>\n";
    list.music.Write(QStringLiteral("one.asx"),
                     "<Asx Version>\n<Entry>\n<Ref href = \"two.asx\"/>\n</Entry>\n" + song);
    list.music.Write(QStringLiteral("two.asx"),
                     "<Asx Version>\n<Entry>\n<Ref href = \".\\one.asx\"/>\n</Entry>\n" + song);
    list.files.AddDroppedFiles({list.music.Path(QStringLiteral("one.asx"))});
    EXPECT_EQ(Titles(), (Texts{"1.A", "2.A"}));
    list.files.AddDroppedFiles({list.music.Path(QStringLiteral("one.asx"))});
    EXPECT_EQ(list.rows.Count(), 4) << "a list may be read again";
}

// --- The ways in which files reach the list ---

TEST_F(PlaylistFilesTest, DroppedFilesAreAddedInTurnAndTheDefaultFileSaved) {
    list.AddMusic(QStringLiteral("a.mp3"), QStringLiteral("A"));
    list.AddMusic(QStringLiteral("b.mp3"), QStringLiteral("B"));
    int repaints = 0;
    QObject::connect(&list.files, &PlaylistFiles::WindowRepaint, &list.files, [&] { ++repaints; });
    list.files.AddDroppedFiles({list.music.Path(QStringLiteral("b.mp3")), QString(),
                                list.music.Path(QStringLiteral("a.mp3")), list.music.Path()});
    EXPECT_EQ(Titles(), (Texts{"1.B", "2.A"}));
    EXPECT_EQ(RowsInDefaultFile(), 2);
    EXPECT_EQ(repaints, 3) << "the empty name is passed over, the folder is not a file";
    EXPECT_TRUE(list.prompts.messages.isEmpty());
}

TEST_F(PlaylistFilesTest, DroppingAPlaylistAppendsItsEntries) {
    AddOldRow();
    list.AddMusic(QStringLiteral("a.mp3"));
    const QString file = list.music.Write(QStringLiteral("l.m3u"), "#EXTM3U\n#EXTINF:1,t\na.mp3\n");
    list.files.AddDroppedFiles({file});
    EXPECT_EQ(Titles(), (Texts{"1.old", "2.t"}));
}

TEST_F(PlaylistFilesTest, AddingOneFileByTheDialogEnablesPlayAndSavesTheDefaultFile) {
    list.AddMusic(QStringLiteral("a.mp3"), QStringLiteral("A"));
    QStringList steps;
    QObject::connect(&list.files, &PlaylistFiles::FilesAdded, &list.files, [&] {
        steps << (QFile::exists(list.DefaultFile()) ? QStringLiteral("play late")
                                                    : QStringLiteral("play enabled"));
    });
    QObject::connect(&list.files, &PlaylistFiles::NeighboursChanged, &list.files,
                     [&] { steps << QStringLiteral("neighbours after %1 stored").arg(RowsInDefaultFile()); });
    list.prompts.filesToChoose = {QStringList{list.music.Path(QStringLiteral("a.mp3"))}};
    list.files.AddFilesByDialog();
    EXPECT_EQ(Titles(), (Texts{"1.A"}));
    EXPECT_EQ(steps,
              (QStringList{QStringLiteral("play enabled"), QStringLiteral("neighbours after 1 stored")}));
    EXPECT_EQ(Utf8(list.state.CurPath), Utf8(list.MusicFolder()));
}

TEST_F(PlaylistFilesTest, AddingSeveralFilesByTheDialogKeepsTheirOrder) {
    QStringList chosen;
    for (const char* name : {"c.mp3", "a.mp3", "b.mp3"}) {
        chosen << list.AddMusic(QString::fromUtf8(name), QString::fromUtf8(name).left(1));
    }
    int repaints = 0;
    QObject::connect(&list.files, &PlaylistFiles::WindowRepaint, &list.files, [&] { ++repaints; });
    list.prompts.filesToChoose = {chosen};
    list.files.AddFilesByDialog();
    EXPECT_EQ(Titles(), (Texts{"1.c", "2.a", "3.b"}));
    EXPECT_EQ(repaints, 3);
    EXPECT_EQ(Utf8(list.state.CurPath), Utf8(list.MusicFolder()));
    EXPECT_EQ(RowsInDefaultFile(), 3);
}

} // namespace
} // namespace kestrune
