#include "playlist/admission.h"

#include "playlist/playlist_order.h"
#include "playlist/playlist_totals.h"
#include "support/program_playlist.h"

#include <QDir>
#include <gtest/gtest.h>

namespace kestrune {
namespace {

using rules::Column;
using rules::Playlist;
using rules::Utf8;

using Texts = std::vector<std::string>;

class AdmissionTest : public testing::Test {
protected:
    // Admits a file of the music folder.
    void Admit(const QString& name) { list.admission.AddFiletoList(list.MusicFolder(), name); }
    // The text of the only row's field after one file with these facts was admitted.
    PlaylistRow Row(const QString& name, const FakeAudioInformation::Probe& facts) {
        list.probe.files.insert(list.music.Write(name), facts);
        Admit(name);
        return list.rows.Row(list.rows.Count());
    }
    Playlist list;
};

FakeAudioInformation::Probe Facts(qint32 bitrateBps, qint64 durationMs, const QString& title = {},
                                  const QString& artist = {}) {
    FakeAudioInformation::Probe facts;
    facts.bitrateBps = bitrateBps;
    facts.durationMs = durationMs;
    facts.formatString = QStringLiteral("MPEG Layer-3, 44,100 Hz, 128 KBPS, Stereo");
    facts.title = title;
    facts.artist = artist;
    return facts;
}

TEST_F(AdmissionTest, AFileBecomesARowOfSevenTexts) {
    const PlaylistRow row =
        Row(QStringLiteral("Song.MP3"), Facts(128 * 1024, 225000, QStringLiteral("T"), QStringLiteral("A")));
    EXPECT_EQ(Utf8(row.fields[RowText]), "1.A - T");
    EXPECT_EQ(Utf8(row.fields[SubTime]), "03:45");
    EXPECT_EQ(Utf8(row.fields[SubType]), "mp3");
    EXPECT_EQ(Utf8(row.fields[SubSize]), "3.5m");
    EXPECT_EQ(Utf8(row.fields[SubFolder]), Utf8(list.MusicFolder()));
    EXPECT_EQ(Utf8(row.fields[SubFileName]), "Song.MP3");
    EXPECT_EQ(Utf8(row.fields[SubFormats]), "MPEG Layer-3, 44,100 Hz, 128 KBPS, Stereo");
    EXPECT_FALSE(row.selected);
    EXPECT_FALSE(row.bold);
}

TEST_F(AdmissionTest, WithoutAnArtistTheTitleStandsAlone) {
    EXPECT_EQ(Utf8(Row(QStringLiteral("a.mp3"), Facts(1, 1, QStringLiteral("T"))).fields[RowText]), "1.T");
}

TEST_F(AdmissionTest, AnArtistWithoutATitleKeepsItsDash) {
    EXPECT_EQ(Utf8(Row(QStringLiteral("a.mp3"), Facts(1, 1, {}, QStringLiteral("A"))).fields[RowText]),
              "1.A - ");
}

TEST_F(AdmissionTest, AnEmptyTitleFallsBackToTheNameLessFourCharacters) {
    EXPECT_EQ(Utf8(Row(QStringLiteral("My Song.mp3"), Facts(1, 1)).fields[RowText]), "1.My Song");
}

TEST_F(AdmissionTest, ATitleOfOneBlankFallsBackToTheName) {
    EXPECT_EQ(Utf8(Row(QStringLiteral("My Song.mp3"), Facts(1, 1, QStringLiteral(" "))).fields[RowText]),
              "1.My Song");
    EXPECT_EQ(Utf8(Row(QStringLiteral("b.mp3"), Facts(1, 1, QStringLiteral("  "))).fields[RowText]), "2.  ")
        << "two blanks are a title";
}

TEST_F(AdmissionTest, AFiveCharacterEndingLeavesItsPoint) {
    const PlaylistRow row = Row(QStringLiteral("clip.mpeg"), Facts(1, 1, QStringLiteral(" ")));
    EXPECT_EQ(Utf8(row.fields[RowText]), "1.clip.");
    EXPECT_EQ(Utf8(row.fields[SubType]), "peg");
}

TEST_F(AdmissionTest, ANameOfLessThanFourCharactersLeavesNothing) {
    EXPECT_EQ(Utf8(Row(QStringLiteral("abc"), Facts(1, 1)).fields[RowText]), "1.");
}

TEST_F(AdmissionTest, HalfAMegabyteShowsZeroPointFive) {
    // 512 KB: 4096 kbit/s for one second.
    EXPECT_EQ(Utf8(Row(QStringLiteral("a.mp3"), Facts(4096 * 1024, 1000)).fields[SubSize]), "0.5m");
}

TEST_F(AdmissionTest, ThreeMegabytesShowThreePointZero) {
    EXPECT_EQ(Utf8(Row(QStringLiteral("a.mp3"), Facts(4096 * 1024, 6000)).fields[SubSize]), "3.0m");
}

TEST_F(AdmissionTest, AZeroBitRateGivesASizeOfZero) {
    EXPECT_EQ(Utf8(Row(QStringLiteral("a.mp3"), Facts(0, 60000)).fields[SubSize]), "0.0m");
}

TEST_F(AdmissionTest, TheSizeIsTheEstimateAndNotThatOfTheFile) {
    list.music.Write(QStringLiteral("big.mp3"), QByteArray(3000000, 'x'));
    list.probe.files.insert(list.music.Path(QStringLiteral("big.mp3")), Facts(4096 * 1024, 1000));
    Admit(QStringLiteral("big.mp3"));
    EXPECT_EQ(Utf8(list.rows.Field(1, SubSize)), "0.5m");
}

TEST_F(AdmissionTest, MusicInfoTakesIntegerParts) {
    list.probe.files.insert(QStringLiteral("/a"), Facts(1025, 119999));
    const MusicInfo info = list.admission.GetMusicInfo(QStringLiteral("/a"));
    EXPECT_EQ(info.SizeKB, 15); // 1.00098 * 119.999 / 8
    EXPECT_EQ(Utf8(info.Time), "01:59");
    EXPECT_EQ(Utf8(info.Formats), "MPEG Layer-3, 44,100 Hz, 128 KBPS, Stereo");
}

TEST_F(AdmissionTest, MusicInfoHasNoHours) {
    list.probe.files.insert(QStringLiteral("/a"), Facts(0, 6000000));
    EXPECT_EQ(Utf8(list.admission.GetMusicInfo(QStringLiteral("/a")).Time), "100:00");
    list.probe.files.insert(QStringLiteral("/b"), Facts(0, 0));
    EXPECT_EQ(Utf8(list.admission.GetMusicInfo(QStringLiteral("/b")).Time), "00:00");
}

TEST_F(AdmissionTest, AFileThatIsNotAudioGetsTheOneMessage) {
    int totals = 0;
    QObject::connect(&list.admission, &Admission::TotalsChanged, &list.admission, [&] { ++totals; });
    list.music.Write(QStringLiteral("notes.mp3"));
    Admit(QStringLiteral("notes.mp3"));
    ASSERT_EQ(list.prompts.messages.size(), 1);
    EXPECT_EQ(Utf8(list.prompts.messages[0].text), "Invalid audio file!");
    EXPECT_EQ(list.prompts.messages[0].icon, PromptIcon::Warning);
    EXPECT_EQ(list.rows.Count(), 0);
    EXPECT_EQ(totals, 0);
}

TEST_F(AdmissionTest, AnyEndingIsAdmittedIfTheProbeReadsIt) {
    EXPECT_EQ(Utf8(Row(QStringLiteral("song.flac"), Facts(1, 1000)).fields[SubType]), "lac");
    EXPECT_TRUE(list.prompts.messages.isEmpty());
}

TEST_F(AdmissionTest, AMissingFileIsPassedOverInSilence) {
    Admit(QStringLiteral("gone.mp3"));
    EXPECT_EQ(list.rows.Count(), 0);
    EXPECT_TRUE(list.prompts.messages.isEmpty());
    EXPECT_TRUE(list.probe.calls.isEmpty());
}

TEST_F(AdmissionTest, AFolderIsPassedOverInSilenceAndNotWalked) {
    ASSERT_TRUE(QDir().mkpath(list.music.Path(QStringLiteral("album"))));
    list.AddMusic(QStringLiteral("album/song.mp3"));
    Admit(QStringLiteral("album"));
    EXPECT_EQ(list.rows.Count(), 0);
    EXPECT_TRUE(list.prompts.messages.isEmpty());
}

TEST_F(AdmissionTest, AddingTheSameFileTwiceGivesTwoRowsWithDifferentNumbers) {
    list.AddMusic(QStringLiteral("a.mp3"), QStringLiteral("T"));
    Admit(QStringLiteral("a.mp3"));
    Admit(QStringLiteral("a.mp3"));
    EXPECT_EQ(Column(list.rows, RowText), (Texts{"1.T", "2.T"}));
}

TEST_F(AdmissionTest, TheListStandsInIndexOrderAndKeepsItsDirection) {
    for (const char* name : {"c.mp3", "a.mp3", "b.mp3"}) {
        list.AddMusic(QString::fromUtf8(name), QString::fromUtf8(name).left(1));
    }
    Admit(QStringLiteral("c.mp3"));
    Admit(QStringLiteral("a.mp3"));
    OrderList(list.rows, static_cast<int>(OrderIndex::Title));
    ASSERT_FALSE(list.rows.IsAscending());
    Admit(QStringLiteral("b.mp3"));
    EXPECT_FALSE(list.rows.IsAscending());
    EXPECT_EQ(Column(list.rows, RowText), (Texts{"3.b", "2.a", "1.c"}));
    list.rows.SetAscending(true);
    Admit(QStringLiteral("b.mp3"));
    EXPECT_TRUE(list.rows.IsAscending());
    EXPECT_EQ(Column(list.rows, RowText), (Texts{"1.c", "2.a", "3.b", "4.b"}));
}

TEST_F(AdmissionTest, TheLastRowIsShownAndTheWaitCursorIsCleared) {
    list.AddMusic(QStringLiteral("a.mp3"));
    list.music.Write(QStringLiteral("bad.mp3"));
    std::vector<int> shown;
    std::vector<bool> waits;
    QObject::connect(&list.admission, &Admission::RowShown, &list.admission,
                     [&](int row) { shown.push_back(row); });
    QObject::connect(&list.admission, &Admission::WaitCursor, &list.admission,
                     [&](bool on) { waits.push_back(on); });
    Admit(QStringLiteral("a.mp3"));
    Admit(QStringLiteral("bad.mp3"));
    EXPECT_EQ(shown, (std::vector<int>{1}));
    EXPECT_EQ(waits, (std::vector<bool>{true, false, true, false}));
}

TEST_F(AdmissionTest, TheTotalsAreRedrawnBeforeTheLastRowIsShown) {
    list.AddMusic(QStringLiteral("a.mp3"));
    QStringList steps;
    QObject::connect(&list.admission, &Admission::TotalsChanged, &list.admission,
                     [&] { steps << QStringLiteral("totals"); });
    QObject::connect(&list.admission, &Admission::RowShown, &list.admission,
                     [&] { steps << QStringLiteral("row"); });
    Admit(QStringLiteral("a.mp3"));
    EXPECT_EQ(steps, (QStringList{QStringLiteral("totals"), QStringLiteral("row")}));
    EXPECT_EQ(Utf8(TotalTextsOf(list.rows).LabelSeltal0), "01:00 (.9 MB)");
}

TEST_F(AdmissionTest, EachPlaylistEndingIsReadAndItsEntriesAppended) {
    list.AddMusic(QStringLiteral("a.mp3"), QStringLiteral("from the tag"));
    Admit(QStringLiteral("a.mp3"));
    list.music.Write(QStringLiteral("l.m3u"), "#EXTM3U\n#EXTINF:1,m3u\na.mp3\n");
    list.music.Write(QStringLiteral("l.PLS"), "[playlist]\nFile1=a.mp3\nTitle1=pls\nLength1=1\nend\n");
    const QByteArray asx = "<Asx Version>\n<Entry>\n<Ref href = \"a.mp3\"/>\n</Entry>\n";
    for (const char* name : {"l.asx", "l.wax", "l.Wvx"}) {
        list.music.Write(QString::fromUtf8(name), asx);
    }
    list.files.OpenSaveMyPlaylistKSL(list.music.Path(QStringLiteral("l.ksl")), QStringLiteral("SAVE"), false);
    for (const char* name : {"l.m3u", "l.PLS", "l.asx", "l.wax", "l.Wvx", "l.ksl"}) {
        Admit(QString::fromUtf8(name));
    }
    EXPECT_EQ(Column(list.rows, RowText), (Texts{"1.from the tag", "2.m3u", "3.pls", "4.from the tag",
                                                 "5.from the tag", "6.from the tag", "7.from the tag"}));
    EXPECT_TRUE(list.prompts.messages.isEmpty());
}

TEST_F(AdmissionTest, AnEndingOfFiveCharactersIsNoPlaylist) {
    list.music.Write(QStringLiteral("l.m3u8"), "#EXTM3U\n#EXTINF:1,t\na.mp3\n");
    EXPECT_FALSE(IsPlaylistFile(QStringLiteral("l.m3u8")));
    Admit(QStringLiteral("l.m3u8"));
    EXPECT_EQ(list.prompts.messages.size(), 1);
}

class ListEntryTest : public AdmissionTest {
protected:
    void AdmitEntry(const QString& name, const QString& title, qint16 seconds, qint32 bytes) {
        list.admission.AddFiletoListfromList(list.MusicFolder(), name, title, seconds, bytes);
    }
};

TEST_F(ListEntryTest, IsNotProbed) {
    list.music.Write(QStringLiteral("notes.txt"), "no audio");
    AdmitEntry(QStringLiteral("notes.txt"), QStringLiteral("Title"), 125, 3 * 1024 * 1024);
    EXPECT_TRUE(list.probe.calls.isEmpty());
    EXPECT_TRUE(list.prompts.messages.isEmpty());
    const PlaylistRow row = list.rows.Row(1);
    EXPECT_EQ(Utf8(row.fields[RowText]), "1.Title");
    EXPECT_EQ(Utf8(row.fields[SubTime]), "02:05");
    EXPECT_EQ(Utf8(row.fields[SubType]), "txt");
    EXPECT_EQ(Utf8(row.fields[SubSize]), "3.0m");
    EXPECT_EQ(Utf8(row.fields[SubFolder]), Utf8(list.MusicFolder()));
    EXPECT_EQ(Utf8(row.fields[SubFileName]), "notes.txt");
    EXPECT_EQ(Utf8(row.fields[SubFormats]), "");
}

TEST_F(ListEntryTest, WithoutASizeTheFilesOwnLengthCounts) {
    list.music.Write(QStringLiteral("a.mp3"), QByteArray(2 * 1024 * 1024, 'x'));
    AdmitEntry(QStringLiteral("a.mp3"), QStringLiteral("T"), 1, 0);
    EXPECT_EQ(Utf8(list.rows.Field(1, SubSize)), "2.0m");
}

TEST_F(ListEntryTest, AnEmptyTitleStaysEmpty) {
    list.AddMusic(QStringLiteral("a.mp3"));
    AdmitEntry(QStringLiteral("a.mp3"), QString(), 0, 1);
    EXPECT_EQ(Utf8(list.rows.Field(1, RowText)), "1.");
    EXPECT_EQ(Utf8(list.rows.Field(1, SubTime)), "00:00");
}

TEST_F(ListEntryTest, WhoseFileIsGoneIsNotListed) {
    AdmitEntry(QStringLiteral("gone.mp3"), QStringLiteral("T"), 1, 1);
    EXPECT_EQ(list.rows.Count(), 0);
}

TEST_F(ListEntryTest, DoesNotSortTheList) {
    for (const char* name : {"b.mp3", "a.mp3"}) {
        list.AddMusic(QString::fromUtf8(name), QString::fromUtf8(name));
        Admit(QString::fromUtf8(name));
    }
    OrderList(list.rows, static_cast<int>(OrderIndex::Index));
    ASSERT_FALSE(list.rows.IsAscending());
    AdmitEntry(QStringLiteral("a.mp3"), QStringLiteral("last"), 1, 1);
    EXPECT_EQ(Column(list.rows, RowText), (Texts{"2.a.mp3", "1.b.mp3", "3.last"}));
}

// Sorting the whole list for each file would make the work grow with the square of their number.
TEST(AdmissionCost, OfManyFilesIsOneProbeEachAndNoSortOfTheWholeList) {
    Playlist list;
    constexpr int fileCount = 10000; // one file again and again, which the list takes for so many
    list.AddMusic(QStringLiteral("a.mp3"));
    int sorts = 0;
    int changes = 0;
    QObject::connect(&list.rows, &PlaylistRows::layoutChanged, &list.rows, [&] { ++sorts; });
    QObject::connect(&list.rows, &PlaylistRows::dataChanged, &list.rows, [&] { ++changes; });
    for (int i = 0; i < fileCount; ++i) {
        list.admission.AddFiletoList(list.MusicFolder(), QStringLiteral("a.mp3"));
    }
    EXPECT_EQ(list.rows.Count(), fileCount);
    EXPECT_EQ(list.probe.calls.size(), fileCount);
    EXPECT_LE(sorts, 2);
    EXPECT_EQ(changes, 0);
    EXPECT_EQ(Utf8(list.rows.Field(101, RowText)), "1000.a") << "still in the order of the keys as text";
    EXPECT_EQ(list.rows.TotalSums().seconds, 60 * fileCount);
}

} // namespace
} // namespace kestrune
