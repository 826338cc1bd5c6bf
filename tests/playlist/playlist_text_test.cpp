#include "playlist/playlist_text.h"

#include "support/rule_support.h"

#include <gtest/gtest.h>

namespace kestrune {
namespace {

using rules::Utf8;

std::string Title(const char* text) {
    return Utf8(KillTitleHead(QString::fromUtf8(text)));
}
std::string Gang(const char* text) {
    return Utf8(KillGang0(QString::fromUtf8(text)));
}
std::string GangFolder(const QString& text) {
    return Utf8(KillGang0Folder(text));
}
double ValOf(const char* text) {
    return Val(QString::fromUtf8(text));
}
int Seconds(const char* text) {
    return GetMusicSec(QString::fromUtf8(text));
}
std::pair<std::string, std::string> Split(const char* full) {
    QString folder;
    QString name = QStringLiteral("stale");
    SplitPath(QString::fromUtf8(full), folder, name);
    return {Utf8(folder), Utf8(name)};
}

TEST(KillTitleHead, TakesWhatStandsBehindTheFirstPoint) {
    EXPECT_EQ(Title("12.Some title"), "Some title");
    EXPECT_EQ(Title("1.a.b.c"), "a.b.c");
    EXPECT_EQ(Title("7."), "");
}

TEST(KillTitleHead, ATextWithoutAPointComesBackWhole) {
    EXPECT_EQ(Title("hand made"), "hand made");
    EXPECT_EQ(Title(""), "");
}

TEST(TitleHead, IsTheNumberWithItsPoint) {
    EXPECT_EQ(Utf8(TitleHead(QStringLiteral("12.a.b"))), "12.");
    EXPECT_EQ(Utf8(TitleHead(QStringLiteral("none"))), "");
}

TEST(KillGang0, TakesWhatStandsBeforeTheFirstEndMark) {
    EXPECT_EQ(Gang("title//      "), "title");
    EXPECT_EQ(Gang("a//b//"), "a");
    EXPECT_EQ(Gang("//"), "");
    EXPECT_EQ(Gang("AC/DC//"), "AC/DC");
}

TEST(KillGang0, ATextWithoutTheEndMarkComesBackEmpty) {
    EXPECT_EQ(Gang("no mark"), "");
    EXPECT_EQ(Gang("half a mark/"), "");
}

TEST(KillGang0Folder, TheFoldersOwnSeparatorBeforeTheMarkStays) {
    EXPECT_EQ(GangFolder(QStringLiteral("/music///     ")), "/music/");
    EXPECT_EQ(GangFolder(QStringLiteral("///")), "/");
    EXPECT_EQ(GangFolder(QStringLiteral("///   ")), "/");
}

TEST(KillGang0Folder, AFolderOfAnotherSystemEndsAtTheMark) {
    EXPECT_EQ(GangFolder(QStringLiteral("C:\\music\\//    ")), "C:\\music\\");
    EXPECT_EQ(GangFolder(QStringLiteral("C:\\music\\//")), "C:\\music\\");
}

TEST(KillGang0Folder, AFolderWithoutTheEndMarkComesBackEmpty) {
    EXPECT_EQ(GangFolder(QStringLiteral("/music/")), "");
}

TEST(KillGang0Folder, AMarkOfWhichOnlyHalfIsLeftIsNone) {
    // The folder's own separator and one half of the mark look like a whole one.
    EXPECT_EQ(GangFolder(QStringLiteral("/music//")), "");
}

TEST(Val, ReadsLeadingDigits) {
    EXPECT_EQ(ValOf("128 KBPS"), 128);
    EXPECT_EQ(ValOf("0.5m"), 0.5);
    EXPECT_EQ(ValOf("3.0m"), 3.0);
    EXPECT_EQ(ValOf(".5m"), 0.5);
    EXPECT_EQ(ValOf("007"), 7);
    EXPECT_EQ(ValOf("  12"), 12);
    EXPECT_EQ(ValOf("5."), 5);
}

TEST(Val, GivesZeroForAnythingElse) {
    EXPECT_EQ(ValOf(""), 0);
    EXPECT_EQ(ValOf("."), 0);
    EXPECT_EQ(ValOf("abc"), 0);
    EXPECT_EQ(ValOf("x12"), 0);
    EXPECT_EQ(ValOf("nan"), 0);
    EXPECT_EQ(ValOf("inf"), 0);
}

TEST(GetMusicSec, AddsMinutesAndSeconds) {
    EXPECT_EQ(Seconds("00:00"), 0);
    EXPECT_EQ(Seconds("03:45"), 225);
    EXPECT_EQ(Seconds("100:01"), 6001);
    EXPECT_EQ(Seconds(":30"), 30);
    EXPECT_EQ(Seconds("2:"), 120);
}

TEST(GetMusicSec, TakesTheFirstColonOnly) {
    EXPECT_EQ(Seconds("1:2:3"), 62);
}

TEST(GetMusicSec, WithoutAColonTheNumberCounts) {
    EXPECT_EQ(Seconds("90"), 90);
    EXPECT_EQ(Seconds("abc"), 0);
    EXPECT_EQ(Seconds(""), 0);
}

TEST(GetMusicSec, HalvesGoToTheEvenSecond) {
    EXPECT_EQ(Seconds("2.5"), 2);
    EXPECT_EQ(Seconds("3.5"), 4);
    EXPECT_EQ(Seconds("0:2.5"), 2);
    EXPECT_EQ(Seconds("0:3.5"), 4);
    EXPECT_EQ(Seconds("2.51"), 3);
}

TEST(GetMusicSec, WhatDoesNotFitSixteenBitsIsZero) {
    EXPECT_EQ(Seconds("32767"), 32767);
    EXPECT_EQ(Seconds("32768"), 0);
    EXPECT_EQ(Seconds("99999999999999999999999999999999:00"), 0);
}

TEST(RoundHalfEven, RoundsToTheNearestAndHalvesToEven) {
    EXPECT_EQ(RoundHalfEven(0.5), 0);
    EXPECT_EQ(RoundHalfEven(1.5), 2);
    EXPECT_EQ(RoundHalfEven(2.5), 2);
    EXPECT_EQ(RoundHalfEven(2.4999), 2);
    EXPECT_EQ(RoundHalfEven(2.5001), 3);
}

TEST(RoundHalfEven, ANumberTooLongToCountIsZero) {
    EXPECT_EQ(RoundHalfEven(1e30), 0);
    EXPECT_EQ(RoundHalfEven(8e15), 8000000000000000LL);
}

TEST(GetFileType, IsWhatStandsBehindTheLastPointInLowerCase) {
    EXPECT_EQ(Utf8(GetFileType(QStringLiteral("a.b.MP3"))), "mp3");
    EXPECT_EQ(Utf8(GetFileType(QStringLiteral("a.MPEG"))), "mpeg");
    EXPECT_EQ(Utf8(GetFileType(QStringLiteral("a."))), "");
}

TEST(GetFileType, IsEmptyWithoutAPoint) {
    EXPECT_EQ(Utf8(GetFileType(QStringLiteral("README"))), "");
}

TEST(RowType, IsThreeCharactersOfTheFourCharacterEndingInLowerCase) {
    EXPECT_EQ(Utf8(RowType(QStringLiteral("song.MP3"))), "mp3");
    EXPECT_EQ(Utf8(RowType(QStringLiteral("song.mpeg"))), "peg");
    EXPECT_EQ(Utf8(RowType(QStringLiteral("abc"))), "bc");
    EXPECT_EQ(Utf8(RowType(QString())), "");
}

TEST(FormatMinutes, GivesTwoDigitsEachAndNoHours) {
    EXPECT_EQ(Utf8(FormatMinutes(0)), "00:00");
    EXPECT_EQ(Utf8(FormatMinutes(65)), "01:05");
    EXPECT_EQ(Utf8(FormatMinutes(3600)), "60:00");
    EXPECT_EQ(Utf8(FormatMinutes(360000)), "6000:00");
}

TEST(FormatTenths, LeavesOutADigitThatIsZero) {
    EXPECT_EQ(Utf8(FormatTenths(0)), ".");
    EXPECT_EQ(Utf8(FormatTenths(0.5)), ".5");
    EXPECT_EQ(Utf8(FormatTenths(3)), "3.");
    EXPECT_EQ(Utf8(FormatTenths(12.34)), "12.3");
    EXPECT_EQ(Utf8(FormatTenths(0.96)), "1.");
    EXPECT_EQ(Utf8(FormatTenths(0.04)), ".");
    EXPECT_EQ(Utf8(FormatTenths(0.25)), ".3");
}

TEST(FormatSize, AFileOfHalfAMegabyteShowsZeroPointFive) {
    EXPECT_EQ(Utf8(FormatSize(512)), "0.5m");
}

TEST(FormatSize, AFileOfThreeMegabytesShowsThreePointZero) {
    EXPECT_EQ(Utf8(FormatSize(3072)), "3.0m");
}

TEST(FormatSize, ALonePointIsMendedOnBothSides) {
    EXPECT_EQ(Utf8(FormatSize(0)), "0.0m");
}

TEST(FormatSize, OtherSizesStandAsTheyAre) {
    EXPECT_EQ(Utf8(FormatSize(4301)), "4.2m");
    EXPECT_EQ(Utf8(FormatSize(1024 * 1024)), "1024.0m");
}

TEST(SplitPath, SplitsAtTheLastSeparatorWhichStaysWithTheFolder) {
    EXPECT_EQ(Split("/music/a/song.mp3"), (std::pair<std::string, std::string>{"/music/a/", "song.mp3"}));
    EXPECT_EQ(Split("/song.mp3"), (std::pair<std::string, std::string>{"/", "song.mp3"}));
    EXPECT_EQ(Split("/music/"), (std::pair<std::string, std::string>{"/music/", ""}));
    EXPECT_EQ(Split("/"), (std::pair<std::string, std::string>{"/", ""}));
}

TEST(SplitPath, ATextWithoutASeparatorIsAFolder) {
    EXPECT_EQ(Split("song.mp3"), (std::pair<std::string, std::string>{"song.mp3/", ""}));
}

TEST(SplitPath, JoinsDoubledSeparatorsSinceTheyWouldEndAStoredFolder) {
    EXPECT_EQ(Split("//music///a//song.mp3"), (std::pair<std::string, std::string>{"/music/a/", "song.mp3"}));
}

TEST(WithSeparator, AddsOneOnlyWhereItIsMissing) {
    EXPECT_EQ(Utf8(WithSeparator(QStringLiteral("/a"))), "/a/");
    EXPECT_EQ(Utf8(WithSeparator(QStringLiteral("/a/"))), "/a/");
    EXPECT_EQ(Utf8(WithSeparator(QStringLiteral("/"))), "/");
}

} // namespace
} // namespace kestrune
