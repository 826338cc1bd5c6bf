#include "playlist/text_playlists.h"

#include "support/rule_support.h"

#include <gtest/gtest.h>

namespace kestrune {
namespace {

using rules::MakeRow;
using rules::Raw;
using rules::Utf8;

// "path|title|seconds|bytes" of each entry; "invalid" for a file that is not of the format.
std::vector<std::string> Entries(const ParsedList& list) {
    if (!list.isValid) {
        return {"invalid"};
    }
    std::vector<std::string> texts;
    for (const ListEntry& entry : list.entries) {
        texts.push_back(Utf8(entry.path) + '|' + Utf8(entry.title) + '|' + std::to_string(entry.seconds) +
                        '|' + std::to_string(entry.bytes));
    }
    return texts;
}

using Texts = std::vector<std::string>;

Texts M3u(const QByteArray& bytes) {
    return Entries(ParseM3u(bytes));
}
Texts Pls(const QByteArray& bytes) {
    return Entries(ParsePls(bytes));
}
Texts Asx(const QByteArray& bytes) {
    return Entries(ParseAsx(bytes));
}
// An ASX file of one entry with the given lines in it.
Texts AsxEntry(const QByteArray& lines) {
    return Asx("<Asx Version = \"3.0\" >\r\n\r\n<Entry> \r\n" + lines + "\r\n</Entry>\r\n</Asx>\r\n");
}

void AddTwoRows(PlaylistRows& rows) {
    rows.Append(MakeRow(1, QStringLiteral("Björk - Jóga, live"), QStringLiteral("05:05"),
                        QStringLiteral("4.7m"), QStringLiteral("/music/b/"), QStringLiteral("joga.mp3")));
    rows.Append(MakeRow(2, QStringLiteral("Vol. 2"), QStringLiteral("100:00"), QStringLiteral("0.0m"),
                        QStringLiteral("/"), QStringLiteral("two.wav")));
}

// --- M3U ---

TEST(M3uWriter, AnEmptyListIsTheOneLine) {
    EXPECT_EQ(Raw(EncodeM3u(PlaylistRows())), "#EXTM3U\r\n");
}

TEST(M3uWriter, EachRowIsTwoLinesWithSecondsTitleAndPath) {
    PlaylistRows rows;
    AddTwoRows(rows);
    EXPECT_EQ(Raw(EncodeM3u(rows)), "#EXTM3U\r\n"
                                    "#EXTINF:305,Bj\xC3\xB6rk - J\xC3\xB3ga, live\r\n"
                                    "/music/b/joga.mp3\r\n"
                                    "#EXTINF:6000,Vol. 2\r\n"
                                    "/two.wav\r\n");
}

TEST(M3uReader, ATitleKeepsItsCommas) {
    EXPECT_EQ(M3u("#EXTM3U\n#EXTINF:12,a, b, c\nx.mp3\n"), (Texts{"x.mp3|a, b, c|12|0"}));
}

TEST(M3uReader, WithoutACommaTheTitleIsEmpty) {
    EXPECT_EQ(M3u("#EXTM3U\n#EXTINF:12\nx.mp3\n"), (Texts{"x.mp3||12|0"}));
}

TEST(M3uReader, AOneLineFileHasNoEntriesAndIsValidWhateverItSays) {
    EXPECT_EQ(M3u("#EXTM3U"), Texts());
    EXPECT_EQ(M3u("#EXTM3U\r\n"), Texts());
    EXPECT_EQ(M3u("something else\r\n"), Texts());
    EXPECT_EQ(M3u(""), Texts());
}

TEST(M3uReader, TheFirstLineMayHaveAnyCaseAndNothingElse) {
    EXPECT_EQ(M3u("#extm3u\n#EXTINF:1,t\nx\n"), (Texts{"x|t|1|0"}));
    EXPECT_EQ(M3u("#EXTM3U \n#EXTINF:1,t\nx\n"), (Texts{"invalid"}));
    EXPECT_EQ(M3u("x.mp3\ny.mp3\n"), (Texts{"invalid"}));
}

TEST(M3uReader, AFileWithoutInfoLinesHasNoEntries) {
    EXPECT_EQ(M3u("#EXTM3U\nx.mp3\ny.mp3\n"), Texts());
}

TEST(M3uReader, OtherLinesAreSkipped) {
    EXPECT_EQ(M3u("#EXTM3U\n\n# remark\nplain.mp3\n#EXTINF:1,t\nx.mp3\nleft over\n#EXTINF:2,u\ny.mp3\n"),
              (Texts{"x.mp3|t|1|0", "y.mp3|u|2|0"}));
}

TEST(M3uReader, TheInfoMarkStandsInTheFirstColumnInItsCase) {
    EXPECT_EQ(M3u("#EXTM3U\n #EXTINF:1,t\nx\n#extinf:1,t\ny\n"), Texts());
}

TEST(M3uReader, TheLastLineIsNeverAnInfoLine) {
    EXPECT_EQ(M3u("#EXTM3U\n#EXTINF:1,t\nx\n#EXTINF:2,u\n"), (Texts{"x|t|1|0"}));
}

TEST(M3uReader, TheLastPathMayEndWithTheFile) {
    EXPECT_EQ(M3u("#EXTM3U\n#EXTINF:1,t\nx.mp3"), (Texts{"x.mp3|t|1|0"}));
}

TEST(M3uReader, SecondsAreRoundedAndAnythingElseIsZero) {
    EXPECT_EQ(M3u("#EXTM3U\n#EXTINF:2.5,a\na\n#EXTINF:3.5,b\nb\n#EXTINF:-1,c\nc\n#EXTINF:,d\nd\n"
                  "#EXTINF:99999,e\ne\n#EXTINF:99999999999999999999,f\nf\n"),
              (Texts{"a|a|2|0", "b|b|4|0", "c|c|0|0", "d|d|0|0", "e|e|0|0", "f|f|0|0"}));
}

TEST(M3uReader, AMarkAtTheStartOfTheFileIsPassedOver) {
    EXPECT_EQ(M3u("\xEF\xBB\xBF#EXTM3U\n#EXTINF:1,t\nx\n"), (Texts{"x|t|1|0"}));
}

TEST(M3uReader, ReadsBackWhatTheWriterWrote) {
    PlaylistRows rows;
    AddTwoRows(rows);
    EXPECT_EQ(M3u(EncodeM3u(rows)),
              (Texts{"/music/b/joga.mp3|Björk - Jóga, live|305|0", "/two.wav|Vol. 2|6000|0"}));
}

// --- PLS ---

TEST(PlsWriter, AnEmptyListIsItsFirstLineAndTheTwoClosingOnes) {
    EXPECT_EQ(Raw(EncodePls(PlaylistRows())), "[playlist]\r\nNumberOfEntries=0\r\nVersion=2\r\n");
}

TEST(PlsWriter, EachRowIsThreeNumberedLines) {
    PlaylistRows rows;
    AddTwoRows(rows);
    EXPECT_EQ(Raw(EncodePls(rows)), "[playlist]\r\n"
                                    "File1=/music/b/joga.mp3\r\n"
                                    "Title1=Bj\xC3\xB6rk - J\xC3\xB3ga, live\r\n"
                                    "Length1=305\r\n"
                                    "File2=/two.wav\r\n"
                                    "Title2=Vol. 2\r\n"
                                    "Length2=6000\r\n"
                                    "NumberOfEntries=2\r\n"
                                    "Version=2\r\n");
}

TEST(PlsReader, ReadsBackWhatTheWriterWrote) {
    PlaylistRows rows;
    AddTwoRows(rows);
    EXPECT_EQ(Pls(EncodePls(rows)),
              (Texts{"/music/b/joga.mp3|Björk - Jóga, live|305|0", "/two.wav|Vol. 2|6000|0"}));
}

TEST(PlsReader, TheCountOnTheSecondLineBringsItOutOfStep) {
    EXPECT_EQ(Pls("[playlist]\nNumberOfEntries=2\nFile1=a\nTitle1=b\nLength1=1\nFile2=c\nTitle2=d\n"
                  "Length2=2\nVersion=2\n"),
              Texts());
}

TEST(PlsReader, AGroupThatEndsWithTheFileIsLost) {
    EXPECT_EQ(Pls("[playlist]\nFile1=a\nTitle1=b\nLength1=1\nFile2=c\nTitle2=d\nLength2=2\n"),
              (Texts{"a|b|1|0"}));
}

TEST(PlsReader, AGroupThatDiffersIsDroppedWholeAndTheNextOneCounts) {
    EXPECT_EQ(Pls("[playlist]\nFile1=a\nLength1=1\nTitle1=b\nFile2=c\nTitle2=d\nLength2=2\nend\n"),
              (Texts{"c|d|2|0"}));
}

TEST(PlsReader, TheKeysHaveTheirCaseAndStandInTheFirstColumn) {
    EXPECT_EQ(Pls("[playlist]\nfile1=a\nTitle1=b\nLength1=1\n File2=c\nTitle2=d\nLength2=2\nend\n"), Texts());
}

TEST(PlsReader, TheNumbersInTheKeysAreNotRead) {
    EXPECT_EQ(Pls("[playlist]\nFile9=a\nTitle=b\nLengthy=3\nend\n"), (Texts{"a|b|3|0"}));
}

TEST(PlsReader, AValueIsWhatStandsBehindTheFirstEqualSign) {
    EXPECT_EQ(Pls("[playlist]\nFile1=a=b\nTitle1=1+1=2\nLength1=1\nend\n"), (Texts{"a=b|1+1=2|1|0"}));
    EXPECT_EQ(Pls("[playlist]\nFile1\nTitle1\nLength1\nend\n"), (Texts{"||0|0"}));
}

TEST(PlsReader, TheFirstLineMayHaveAnyCaseAndNothingElse) {
    EXPECT_EQ(Pls("[PlayList]\nFile1=a\nTitle1=b\nLength1=1\nend\n"), (Texts{"a|b|1|0"}));
    EXPECT_EQ(Pls("[playlists]\nFile1=a\nTitle1=b\nLength1=1\nend\n"), (Texts{"invalid"}));
}

TEST(PlsReader, AOneLineFileHasNoEntriesAndIsValid) {
    EXPECT_EQ(Pls("[playlist]\r\n"), Texts());
    EXPECT_EQ(Pls("anything"), Texts());
}

TEST(PlsReader, ALengthBelowZeroIsZero) {
    EXPECT_EQ(Pls("[playlist]\nFile1=a\nTitle1=b\nLength1=-1\nend\n"), (Texts{"a|b|0|0"}));
}

// --- ASX ---

TEST(AsxWriter, AnEmptyListIsTheFirstLineAnEmptyOneAndTheEnd) {
    EXPECT_EQ(Raw(EncodeAsx(PlaylistRows())), "<Asx Version = \"3.0\" >\r\n\r\n</Asx>\r\n");
}

TEST(AsxWriter, EachRowIsAnEntryWithItsPathInBackslashes) {
    PlaylistRows rows;
    AddTwoRows(rows);
    EXPECT_EQ(Raw(EncodeAsx(rows)), "<Asx Version = \"3.0\" >\r\n"
                                    "\r\n"
                                    "<Entry> \r\n"
                                    "<Title > Bj\xC3\xB6rk - J\xC3\xB3ga, live</Title>\r\n"
                                    "\r\n"
                                    "<Ref href = \"\\music\\b\\joga.mp3\"/>\r\n"
                                    "</Entry>\r\n"
                                    "\r\n"
                                    "<Entry> \r\n"
                                    "<Title > Vol. 2</Title>\r\n"
                                    "\r\n"
                                    "<Ref href = \"\\two.wav\"/>\r\n"
                                    "</Entry>\r\n"
                                    "\r\n"
                                    "</Asx>\r\n");
}

TEST(AsxReader, ReadsBackWhatTheWriterWrote) {
    PlaylistRows rows;
    AddTwoRows(rows);
    EXPECT_EQ(Asx(EncodeAsx(rows)),
              (Texts{"\\music\\b\\joga.mp3|Björk - Jóga, live|0|0", "\\two.wav|Vol. 2|0|0"}));
}

TEST(AsxReader, TheFirstLineBeginsWithTheVersionInItsCase) {
    EXPECT_EQ(Asx("<Asx Version=3>\n<Entry>\n</Entry>\n"), (Texts{"||0|0"}));
    EXPECT_EQ(Asx("<asx version = \"3.0\">\n<Entry>\n</Entry>\n"), (Texts{"invalid"}));
    EXPECT_EQ(Asx(" <Asx Version = \"3.0\" >\n<Entry>\n</Entry>\n"), (Texts{"invalid"}));
}

TEST(AsxReader, AOneLineFileHasNoEntriesAndIsValid) {
    EXPECT_EQ(Asx("<Asx Version = \"3.0\" >\r\n"), Texts());
    EXPECT_EQ(Asx("anything"), Texts());
    EXPECT_EQ(Asx(""), Texts());
}

TEST(AsxReader, TagsStandInTheFirstColumnAndHaveTheirCase) {
    EXPECT_EQ(Asx("<Asx Version>\n <Entry>\n</Entry>\n<ENTRY>\n</ENTRY>\n"), Texts());
    EXPECT_EQ(AsxEntry(" <Title > t</Title>\r\n<TITLE > u</TITLE>\r\n<Title> v</Title>"), (Texts{"||0|0"}));
}

TEST(AsxReader, AnEntryThatTheFileEndsCounts) {
    EXPECT_EQ(Asx("<Asx Version>\n<Entry>\n<Title > t</Title>\n"), (Texts{"|t|0|0"}));
}

TEST(AsxReader, LinesBetweenEntriesAreSkipped) {
    EXPECT_EQ(Asx("<Asx Version>\n<Title > no</Title>\n<Entry>\n<Title > t</Title>\n</Entry>\n"
                  "<Title > no</Title>\n<Entry>x\n</Entry>y\n"),
              (Texts{"|t|0|0", "||0|0"}));
}

TEST(AsxReader, ADurationGivesMinutesAndSeconds) {
    EXPECT_EQ(AsxEntry("<Duration value = \"00:03:45.000\" />"), (Texts{"||225|0"}));
    EXPECT_EQ(AsxEntry("<Duration value = \"03:45\" />"), (Texts{"||45|0"}))
        << "behind the first colon there is the seconds part only";
    EXPECT_EQ(AsxEntry("<Duration value = \"12\" />"), (Texts{"||0|0"}));
}

TEST(AsxReader, ASizeIsReadThreePlacesBeforeTheSlash) {
    EXPECT_EQ(AsxEntry("<Param Name = \"FileSize\" Value = \"3456789\" />"), (Texts{"||0|3456789"}));
    EXPECT_EQ(AsxEntry("<Param Name = \"FileSize\" Value = \"3456789\"/>"), (Texts{"||0|345678"}))
        << "without the blank a digit is cut";
    EXPECT_EQ(AsxEntry("<Param Name = \"FileSize\" Value = \"99999999999\" />"), (Texts{"||0|0"}));
    EXPECT_EQ(AsxEntry("<Param Name = \"FileSize\" />"), (Texts{"||0|0"}));
}

TEST(AsxReader, TheSourceIsThePathAndComesBeforeTheReference) {
    EXPECT_EQ(AsxEntry("<Ref href = \"a.mp3\"/>\r\n<Param Name = \"SourceURL\" Value = \"C:\\b.mp3\" />"),
              (Texts{"C:\\b.mp3||0|0"}));
    EXPECT_EQ(AsxEntry("<Param Name = \"SourceURL\" Value = \"C:\\b.mp3\" />\r\n<Ref href = \"a.mp3\"/>"),
              (Texts{"C:\\b.mp3||0|0"}));
}

TEST(AsxReader, ASourceWithoutASlashOrWithOneInItsFirstTwoPlacesStaysUncut) {
    EXPECT_EQ(AsxEntry("<Param Name = \"SourceURL\" Value = \"b.mp3"), (Texts{"b.mp3||0|0"}));
    EXPECT_EQ(AsxEntry("<Param Name = \"SourceURL\" Value = \"/m/b.mp3"), (Texts{"/m/b.mp3||0|0"}));
    EXPECT_EQ(AsxEntry("<Param Name = \"SourceURL\" Value = \"./b.mp3"), (Texts{"./b.mp3||0|0"}));
}

TEST(AsxReader, TheSourceIsNoPathBelowThePlaylist) {
    const ParsedList list = ParseAsx("<Asx Version>\n<Entry>\n<Param Name = \"SourceURL\" Value = \"a\" />\n"
                                     "</Entry>\n<Entry>\n<Ref href = \"a\"/>\n</Entry>\n");
    ASSERT_EQ(list.entries.size(), 2U);
    EXPECT_TRUE(list.entries[0].isFullPath);
    EXPECT_FALSE(list.entries[1].isFullPath);
}

TEST(AsxReader, TheFirstReferenceCounts) {
    EXPECT_EQ(AsxEntry("<Ref href = \"a.mp3\"/>\r\n<Ref href = \"b.mp3\"/>"), (Texts{"a.mp3||0|0"}));
}

TEST(AsxReader, AReferenceIsCutBeforeItsFirstSlash) {
    EXPECT_EQ(AsxEntry("<Ref href = \"music/a.mp3\"/>"), (Texts{"musi||0|0"}));
}

TEST(AsxReader, ATitleEndsAtItsFirstBracket) {
    EXPECT_EQ(AsxEntry("<Title > a > b</Title>"), (Texts{"|a > b|0|0"}));
    EXPECT_EQ(AsxEntry("<Title > a <b> c</Title>"), (Texts{"|a |0|0"}));
    EXPECT_EQ(AsxEntry("<Title > not closed"), (Texts{"||0|0"}));
    EXPECT_EQ(AsxEntry("<Title ></Title>"), (Texts{"|/Title>|0|0"}))
        << "two places behind the bracket lies inside the end tag";
}

TEST(AsxReader, WholeEntriesOfAnotherProgramAreRead) {
    EXPECT_EQ(AsxEntry("<Duration value = \"00:04:05.123\" />\r\n<Title > Song</Title>\r\n"
                       "<Param Name = \"FileSize\" Value = \"4000000\" />\r\n"
                       "<Param Name = \"SourceURL\" Value = \"\\music\\song.mp3\" />\r\n"
                       "<Ref href = \"song.mp3\"/>"),
              (Texts{"\\music\\song.mp3|Song|245|4000000"}));
}

// --- What all three share ---

TEST(ListTitles, ALineEndInATitleDoesNotBreakTheEntry) {
    PlaylistRows rows;
    rows.Append(MakeRow(1, QStringLiteral("one\r\ntwo"), QStringLiteral("00:01"), QStringLiteral("0.0m"),
                        QStringLiteral("/"), QStringLiteral("a.mp3")));
    EXPECT_EQ(M3u(EncodeM3u(rows)), (Texts{"/a.mp3|one  two|1|0"}));
    EXPECT_EQ(Pls(EncodePls(rows)), (Texts{"/a.mp3|one  two|1|0"}));
    EXPECT_EQ(Asx(EncodeAsx(rows)), (Texts{"\\a.mp3|one  two|0|0"}));
}

std::string Resolved(const char* path) {
    return Utf8(ResolveListPath(QString::fromUtf8(path), QStringLiteral("/lists/")));
}

TEST(RelativePath, ADriveStaysAsItIs) {
    EXPECT_EQ(Resolved("C:/music/a.mp3"), "C:/music/a.mp3");
    EXPECT_EQ(Resolved("c:a.mp3"), "c:a.mp3");
}

TEST(RelativePath, ABareNameGetsTheFolderOfThePlaylist) {
    EXPECT_EQ(Resolved("a.mp3"), "/lists/a.mp3");
    EXPECT_EQ(Resolved("deeper/a.mp3"), "/lists/deeper/a.mp3");
    EXPECT_EQ(Resolved("../a.mp3"), "/lists/../a.mp3");
    EXPECT_EQ(Resolved(""), "/lists/");
}

TEST(RelativePath, ALeadingSeparatorIsAbsolute) {
    EXPECT_EQ(Resolved("/music/a.mp3"), "/music/a.mp3");
    EXPECT_EQ(Resolved("\\music\\a.mp3"), "/music/a.mp3");
}

TEST(RelativePath, BackslashesOfAnotherSystemBecomeSeparators) {
    EXPECT_EQ(Resolved("deeper\\a.mp3"), "/lists/deeper/a.mp3");
    EXPECT_EQ(Resolved("C:\\music\\a.mp3"), "C:/music/a.mp3");
}

TEST(RelativePath, ABackslashInANativeNameStays) {
    EXPECT_EQ(Resolved("/music/a\\b.mp3"), "/music/a\\b.mp3");
    EXPECT_EQ(Resolved("deeper/a\\b.mp3"), "/lists/deeper/a\\b.mp3");
}

} // namespace
} // namespace kestrune
