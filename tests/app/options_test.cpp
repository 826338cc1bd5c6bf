#include "app/options.h"

#include "support/rule_support.h"

#include <QDir>
#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <limits>

namespace kestrune {
namespace {

using rules::Content;
using rules::Folder;
using rules::Raw;
using rules::Utf8;

constexpr PlaylistItems allItems = {true, true, true, true, true, true, true};

// The bytes of a whole record, written out by hand.
QByteArray KnownRecord() {
    QByteArray bytes;
    bytes += '\x03';                                  // 0: display type
    bytes += '\x01';                                  // 1: display resolution
    bytes += '\x05';                                  // 2: Repeat
    bytes += QByteArray::fromHex("0000803F");         // 3: 1.0
    bytes += QByteArray::fromHex("000000C0");         // 7: -2.0
    bytes += QByteArray::fromHex("0000003F");         // 11: 0.5
    bytes += QByteArray::fromHex("00007041");         // 15: 15.0
    bytes += QByteArray(8 * 4, '\0');                 // 19: eight flat bands
    bytes += QByteArray::fromHex("FFFF");             // 51: use default on start-up
    bytes += QByteArray::fromHex("FFFF");             // 53: title
    bytes += QByteArray::fromHex("0000");             // 55: duration
    bytes += QByteArray::fromHex("FFFF");             // 57: type
    bytes += QByteArray::fromHex("0000");             // 59: size
    bytes += QByteArray::fromHex("FFFF");             // 61: path
    bytes += QByteArray::fromHex("0000");             // 63: file name
    bytes += QByteArray::fromHex("FFFF");             // 65: format strings
    bytes += QByteArray::fromHex("0700") + "/music/"; // 67: length and text
    return bytes;
}

OptionsRecord KnownFields() {
    OptionsRecord record;
    record.FftType = 3;
    record.FftResolution = 1;
    record.PlayMode = 5;
    record.EqBand = {1, -2, 0.5F, 15};
    record.UseDefaultOnStartup = true;
    record.Items = {true, false, true, false, true, false, true};
    record.CurPath = QStringLiteral("/music/");
    return record;
}

void ExpectSame(const OptionsRecord& left, const OptionsRecord& right) {
    EXPECT_EQ(left.FftType, right.FftType);
    EXPECT_EQ(left.FftResolution, right.FftResolution);
    EXPECT_EQ(left.PlayMode, right.PlayMode);
    EXPECT_EQ(left.EqBand, right.EqBand);
    EXPECT_EQ(left.UseDefaultOnStartup, right.UseDefaultOnStartup);
    EXPECT_EQ(left.Items, right.Items);
    EXPECT_EQ(Utf8(left.CurPath), Utf8(right.CurPath));
}

TEST(OptionsRecord, EveryFieldStandsAtItsOffset) {
    ASSERT_EQ(KnownRecord().size(), 76);
    EXPECT_EQ(Raw(EncodeOptions(KnownFields(), {}).toHex()), Raw(KnownRecord().toHex()));
}

TEST(OptionsRecord, EveryFieldIsReadFromItsOffset) {
    ExpectSame(DecodeOptions(KnownRecord()), KnownFields());
}

TEST(OptionsRecord, AnEmptyFileReadsAsZeros) {
    ExpectSame(DecodeOptions({}), OptionsRecord());
}

TEST(OptionsRecord, WithoutAPathTheRecordHasSixtyNineBytes) {
    EXPECT_EQ(EncodeOptions(OptionsRecord(), {}).size(), 69);
}

TEST(OptionsRecord, AnyOtherNumberThanZeroIsTrue) {
    QByteArray bytes(69, '\0');
    bytes[51] = 1;
    bytes[66] = 1; // the upper byte alone
    const OptionsRecord record = DecodeOptions(bytes);
    EXPECT_TRUE(record.UseDefaultOnStartup);
    EXPECT_TRUE(record.Items[6]);
    EXPECT_FALSE(record.Items[5]);
}

TEST(OptionsRecord, ALongerPathIsWrittenOverTheTail) {
    OptionsRecord record = KnownFields();
    record.CurPath = QStringLiteral("/music/and/deeper/");
    const QByteArray longer = EncodeOptions(record, KnownRecord() + "tail");
    EXPECT_EQ(Raw(longer.mid(67)), std::string("\x12\x00/music/and/deeper/", 20));
}

TEST(OptionsRecord, AShorterPathLeavesTheOldBytesBehindTheRecord) {
    OptionsRecord record = KnownFields();
    record.CurPath = QStringLiteral("/x");
    const QByteArray shorter = EncodeOptions(record, KnownRecord());
    EXPECT_EQ(Raw(shorter.mid(67)), std::string("\x02\x00/xusic/", 9));
    EXPECT_EQ(Utf8(DecodeOptions(shorter).CurPath), "/x");
}

TEST(OptionsRecord, ThePathIsUtf8AndItsLengthCountsBytes) {
    OptionsRecord record;
    record.CurPath = QStringLiteral("/Björk/");
    const QByteArray bytes = EncodeOptions(record, {});
    EXPECT_EQ(Raw(bytes.mid(67)), std::string("\x08\x00/Bj\xC3\xB6rk/", 10));
    EXPECT_EQ(Utf8(DecodeOptions(bytes).CurPath), "/Björk/");
}

TEST(OptionsRecord, APathThatSaysToBeLongerThanTheFileEndsWithIt) {
    QByteArray bytes(69, '\0');
    bytes[67] = '\xFF';
    bytes[68] = '\xFF';
    EXPECT_EQ(Utf8(DecodeOptions(bytes + "/a/").CurPath), "/a/");
}

TEST(OptionsRecord, APathBeyondTheLengthFieldIsCutBetweenTwoCharacters) {
    OptionsRecord record;
    record.CurPath = QString(40000, QChar(0xF6)); // two bytes each
    const OptionsRecord back = DecodeOptions(EncodeOptions(record, {}));
    EXPECT_EQ(back.CurPath.size(), 32767);
    EXPECT_TRUE(record.CurPath.startsWith(back.CurPath));
}

TEST(OptionsRecord, ABandThatIsNoNumberReadsAsFlat) {
    QByteArray bytes(69, '\0');
    const float notANumber = std::numeric_limits<float>::quiet_NaN();
    std::memcpy(bytes.data() + 3, &notANumber, sizeof notANumber);
    EXPECT_EQ(DecodeOptions(bytes).EqBand[0], 0.0F);
}

TEST(OptionsRecord, AFileOfFiftyFourBytesOrLessHoldsNoColumns) {
    EXPECT_FALSE(HoldsColumns(QByteArray()));
    EXPECT_FALSE(HoldsColumns(QByteArray(53, '\0')));
    EXPECT_FALSE(HoldsColumns(QByteArray(54, '\0')));
    EXPECT_TRUE(HoldsColumns(QByteArray(55, '\0')));
}

class OptionsTest : public testing::Test {
protected:
    OptionsTest() { state.AppPath = home.Path(); }
    QString File() const { return home.Path(QStringLiteral("Options.dat")); }
    OptionsRecord Stored() const { return DecodeOptions(QByteArray::fromStdString(Content(File()))); }
    // What the main window runs at its start.
    static void StartUp(Options& started) {
        started.SetColumnsToStart();
        started.SetPlaylistItem(-1);
        started.SaveGetOptions(false, true);
        started.SaveGetCurPath(QStringLiteral("GET"));
    }
    static void ExpectInitial(const Options& shown) {
        EXPECT_EQ(shown.FftType(), 2) << "FFT Fire";
        EXPECT_EQ(shown.FftResolution(), 2) << "1024";
        EXPECT_TRUE(shown.IsModeChecked(PlayMode::Continuous));
        EXPECT_FALSE(shown.IsModeChecked(PlayMode::Shuffle));
        EXPECT_FALSE(shown.IsModeChecked(PlayMode::Repeat));
        EXPECT_FALSE(shown.UseDefaultOnStartup());
        EXPECT_EQ(shown.Bands(), EqualizerGains{});
    }
    Folder home;
    ProgramState state;
    Options options{state};
};

TEST_F(OptionsTest, UseDefaultBeforeAnySaveAppliesTheZeroRecord) {
    StartUp(options);
    options.SetBands({5, 5});
    options.mOptions_Click(9);
    EXPECT_EQ(options.FftType(), 0) << "Level Bars";
    EXPECT_EQ(options.FftResolution(), 0) << "64";
    EXPECT_EQ(options.Bands(), EqualizerGains{});
    EXPECT_FALSE(options.IsModeChecked(PlayMode::Continuous));
    EXPECT_FALSE(options.IsModeChecked(PlayMode::Shuffle));
    EXPECT_FALSE(options.IsModeChecked(PlayMode::Repeat));
}

TEST_F(OptionsTest, SavedDefaultsComeBackAtTheRestartAndTheDialogFolderIsEmptied) {
    StartUp(options);
    state.CurPath = QStringLiteral("/music/");
    options.SaveGetCurPath(QStringLiteral("SAVE"));
    options.SetBands({1, -2, 3});
    options.mOptions1_Click(4);
    options.mOptions2_Click(3);
    options.mOptions_Click(4);
    options.mOptions_Click(12);
    options.mOptions_Click(10);

    ProgramState later;
    later.AppPath = home.Path();
    Options restarted(later);
    StartUp(restarted);
    EXPECT_EQ(restarted.Bands(), (EqualizerGains{1, -2, 3}));
    EXPECT_EQ(restarted.FftType(), 4);
    EXPECT_EQ(restarted.FftResolution(), 3);
    EXPECT_TRUE(restarted.IsModeChecked(PlayMode::Shuffle));
    EXPECT_FALSE(restarted.IsModeChecked(PlayMode::Continuous));
    EXPECT_TRUE(restarted.UseDefaultOnStartup());
    EXPECT_EQ(Utf8(later.CurPath), "");
}

TEST_F(OptionsTest, WithoutUseOnStartupTheRestartIsInitialButForTheColumns) {
    StartUp(options);
    options.SetBands({1, -2, 3});
    options.mOptions1_Click(4);
    options.mOptions_Click(5);
    options.mOptions_Click(10);
    options.mnplaylistitem_Click(1);

    ProgramState later;
    later.AppPath = home.Path();
    Options restarted(later);
    StartUp(restarted);
    ExpectInitial(restarted);
    EXPECT_EQ(restarted.Items(), (PlaylistItems{true, false, true, true, true, false, false}));
}

TEST_F(OptionsTest, AnOlderFileOfFiftyThreeBytesKeepsItsOptionsAndGetsTheDefaultColumns) {
    home.Write(QStringLiteral("Options.dat"), KnownRecord().left(53));
    StartUp(options);
    EXPECT_EQ(options.FftType(), 3);
    EXPECT_EQ(options.FftResolution(), 1);
    EXPECT_TRUE(options.IsModeChecked(PlayMode::Repeat));
    EXPECT_EQ(options.Bands(), (EqualizerGains{1, -2, 0.5F, 15}));
    EXPECT_TRUE(options.UseDefaultOnStartup());
    EXPECT_EQ(options.Items(), defaultPlaylistItems);
    EXPECT_EQ(Content(File()).substr(0, 53), KnownRecord().left(53).toStdString());
}

TEST_F(OptionsTest, AFirstRunCreatesTheFileWithZeroOptionsAndTheDefaultColumns) {
    StartUp(options);
    ExpectInitial(options);
    QByteArray expected(69, '\0');
    std::memset(expected.data() + 53, 0xFF, 10);
    EXPECT_EQ(QByteArray::fromStdString(Content(File())).toHex(), expected.toHex());
}

TEST_F(OptionsTest, ReadingWithoutAFileMakesTheInitialChoice) {
    options.SaveGetOptions(false, false);
    ExpectInitial(options);
    EXPECT_EQ(Content(File()), "(no file)");
}

TEST_F(OptionsTest, ADamagedModeLeavesTheThreeEntriesUnchecked) {
    for (const char mode : {'\x00', '\x02', '\x06', '\xFF'}) {
        QByteArray bytes = KnownRecord();
        bytes[2] = mode;
        home.Write(QStringLiteral("Options.dat"), bytes);
        options.SaveGetOptions(false, false);
        for (const PlayMode entry : {PlayMode::Continuous, PlayMode::Shuffle, PlayMode::Repeat}) {
            EXPECT_FALSE(options.IsModeChecked(entry)) << int(mode);
        }
    }
}

TEST_F(OptionsTest, AButtonChoosesAModeWhereNoneIsChecked) {
    home.Write(QStringLiteral("Options.dat"), QByteArray(69, '\0'));
    for (int mode = 0; mode < playModeCount; ++mode) {
        options.SaveGetOptions(false, false);
        options.ImageRepeatModeBut_Click(mode);
        EXPECT_TRUE(options.IsModeChecked(static_cast<PlayMode>(mode))) << mode;
    }
    options.ImageRepeatModeBut_Click(-1);
    options.ImageRepeatModeBut_Click(playModeCount);
    EXPECT_TRUE(options.IsModeChecked(PlayMode::Repeat)) << "there are no such buttons";
}

TEST_F(OptionsTest, NoModeIsSavedAsNone) {
    home.Write(QStringLiteral("Options.dat"), QByteArray(69, '\0'));
    options.SaveGetOptions(false, false);
    options.mOptions_Click(10);
    EXPECT_EQ(Stored().PlayMode, 0);
}

TEST_F(OptionsTest, ADamagedDisplayChoiceKeepsThePresentOne) {
    options.mOptions1_Click(3);
    options.mOptions2_Click(4);
    QByteArray bytes = KnownRecord();
    bytes[0] = '\x05';
    bytes[1] = '\xFF';
    home.Write(QStringLiteral("Options.dat"), bytes);
    options.SaveGetOptions(false, false);
    EXPECT_EQ(options.FftType(), 3);
    EXPECT_EQ(options.FftResolution(), 4);
}

TEST_F(OptionsTest, ApplyingTheStoredOptionsLeavesTheColumnsAlone) {
    home.Write(QStringLiteral("Options.dat"), KnownRecord());
    options.SaveGetOptions(false, false);
    EXPECT_EQ(options.Items(), defaultPlaylistItems);
}

TEST_F(OptionsTest, TheOptionsAreWrittenOnlyBySaveAsDefault) {
    StartUp(options);
    const std::string before = Content(File());
    options.mOptions1_Click(1);
    options.mOptions2_Click(0);
    options.mOptions_Click(5);
    options.mOptions_Click(12);
    options.SetBands({9});
    EXPECT_EQ(Content(File()), before);
    options.mOptions_Click(10);
    const OptionsRecord stored = Stored();
    EXPECT_EQ(stored.FftType, 1);
    EXPECT_EQ(stored.FftResolution, 0);
    EXPECT_EQ(stored.PlayMode, 5);
    EXPECT_TRUE(stored.UseDefaultOnStartup);
    EXPECT_EQ(stored.EqBand, EqualizerGains{9});
}

TEST_F(OptionsTest, InitializeUnchecksUseOnStartupWithoutStoringIt) {
    StartUp(options);
    options.mOptions_Click(12);
    EXPECT_TRUE(options.UseDefaultOnStartup());
    options.mOptions_Click(10);
    options.mOptions_Click(8);
    ExpectInitial(options);
    EXPECT_TRUE(Stored().UseDefaultOnStartup);
}

TEST_F(OptionsTest, TheThreeModesExcludeEachOther) {
    for (const int entry : {3, 4, 5, 4, 4}) {
        options.mOptions_Click(entry);
        for (int other = 0; other < 3; ++other) {
            EXPECT_EQ(options.IsModeChecked(static_cast<PlayMode>(other)), other == entry - 3);
        }
    }
}

TEST_F(OptionsTest, SeparatorsAndUnknownEntriesDoNothing) {
    StartUp(options);
    const std::string before = Content(File());
    for (const int entry : {-1, 0, 1, 2, 6, 7, 11, 13, 14, 99}) {
        options.mOptions_Click(entry);
    }
    options.mnplaylistitem_Click(7);
    options.mOptions1_Click(5);
    options.mOptions2_Click(-1);
    ExpectInitial(options);
    EXPECT_EQ(options.Items(), defaultPlaylistItems);
    EXPECT_EQ(Content(File()), before);
}

TEST_F(OptionsTest, TheResolutionsAreThoseOfTheMenu) {
    std::vector<int> sizes;
    QObject::connect(&options, &Options::FftSizeChosen, &options,
                     [&](int samples) { sizes.push_back(samples); });
    for (int entry = 0; entry < 5; ++entry) {
        options.mOptions2_Click(entry);
    }
    EXPECT_EQ(sizes, (std::vector<int>{64, 256, 1024, 4096, 16384}));
}

TEST_F(OptionsTest, TheDialogFolderIsStoredAtOnceAndKeepsTheOtherFields) {
    home.Write(QStringLiteral("Options.dat"), KnownRecord());
    state.CurPath = QStringLiteral("/elsewhere/");
    options.SaveGetCurPath(QStringLiteral("SAVE"));
    OptionsRecord expected = KnownFields();
    expected.CurPath = QStringLiteral("/elsewhere/");
    ExpectSame(Stored(), expected);
    state.CurPath.clear();
    options.SaveGetCurPath(QStringLiteral("GET"));
    EXPECT_EQ(Utf8(state.CurPath), "/elsewhere/");
}

TEST_F(OptionsTest, AnyOperationButGetStoresTheDialogFolder) {
    state.CurPath = QStringLiteral("/a/");
    options.SaveGetCurPath(QStringLiteral("whatever"));
    EXPECT_EQ(Utf8(Stored().CurPath), "/a/");
}

TEST_F(OptionsTest, SaveAsDefaultStoresAnEmptyDialogFolder) {
    home.Write(QStringLiteral("Options.dat"), KnownRecord());
    state.CurPath = QStringLiteral("/music/");
    options.SaveGetOptions(true, false);
    EXPECT_EQ(Utf8(Stored().CurPath), "");
    EXPECT_EQ(Content(File()).size(), 76U) << "the file gets no shorter";
    EXPECT_EQ(Utf8(state.CurPath), "/music/");
}

TEST_F(OptionsTest, ChangingAColumnKeepsTheDialogFolder) {
    home.Write(QStringLiteral("Options.dat"), KnownRecord());
    options.SetPlaylistItem(-1);
    options.SetPlaylistItem(0);
    EXPECT_EQ(Utf8(Stored().CurPath), "/music/");
    EXPECT_FALSE(Stored().Items[0]);
}

TEST_F(OptionsTest, AColumnIsStoredAtOnceWhenItChanges) {
    StartUp(options);
    options.mnplaylistitem_Click(6);
    EXPECT_TRUE(Stored().Items[6]);
    options.mnplaylistitem_Click(6);
    EXPECT_FALSE(Stored().Items[6]);
}

TEST_F(OptionsTest, TheDefaultColumnsAreTheFirstFiveAndTheOthersKeepTheirState) {
    StartUp(options);
    options.mnplaylistitem_Click(5);
    for (const int item : {0, 2, 4}) {
        options.mnplaylistitem_Click(item);
    }
    options.mnplaylistitem_Click(8);
    EXPECT_EQ(options.Items(), (PlaylistItems{true, true, true, true, true, true, false}));
    EXPECT_EQ(Stored().Items, options.Items());
}

TEST_F(OptionsTest, TheFileIsFoundInAnotherSpellingAndStoredUnderIt) {
    const QString other = home.Write(QStringLiteral("options.DAT"), KnownRecord());
    StartUp(options);
    EXPECT_EQ(options.FftType(), 3);
    options.mnplaylistitem_Click(0);
    EXPECT_EQ(QDir(home.Path()).entryList(QDir::Files), QStringList{QStringLiteral("options.DAT")});
    EXPECT_FALSE(DecodeOptions(QByteArray::fromStdString(Content(other))).Items[0]);
}

TEST_F(OptionsTest, AFileThatCannotBeWrittenChangesNothingOnScreen) {
    ASSERT_TRUE(QDir().mkpath(File()));
    StartUp(options);
    ExpectInitial(options);
    options.mnplaylistitem_Click(0);
    EXPECT_FALSE(options.Items()[0]);
    EXPECT_TRUE(QDir(File()).exists());
}

ColumnWidths Widths(PlaylistItems items, const ColumnWidths& current = startColumnWidths) {
    return WidthsFor(items, current);
}

TEST(Columns, TheDefaultItemsHaveTheStartWidths) {
    EXPECT_EQ(Widths(defaultPlaylistItems), (ColumnWidths{165, 38, 40, 47, 70, 0, 0, 0}));
}

TEST(Columns, FileNameGetsTwoHundredAndFormatsFourHundred) {
    EXPECT_EQ(Widths(allItems), (ColumnWidths{165, 38, 40, 47, 70, 200, 400, 0}));
}

TEST(Columns, WhatAnItemFreesGoesToTheTitle) {
    EXPECT_EQ(Widths({true, false, true, true, true, false, false}),
              (ColumnWidths{203, 0, 40, 47, 70, 0, 0, 0}));
    EXPECT_EQ(Widths({true, true, true, true, false, false, false}),
              (ColumnWidths{235, 38, 40, 47, 0, 0, 0, 0}));
    EXPECT_EQ(Widths({true, false, false, false, false, false, false}),
              (ColumnWidths{360, 0, 0, 0, 0, 0, 0, 0}));
}

TEST(Columns, WithoutTheTitleItGoesToThePath) {
    EXPECT_EQ(Widths({false, true, true, true, true, false, false}),
              (ColumnWidths{0, 38, 40, 47, 235, 0, 0, 0}));
    EXPECT_EQ(Widths({false, false, false, false, true, false, false}),
              (ColumnWidths{0, 0, 0, 0, 360, 0, 0, 0}));
}

TEST(Columns, TitleAndPathAloneShareIt) {
    EXPECT_EQ(Widths({true, false, false, false, true, false, false}),
              (ColumnWidths{145, 0, 0, 0, 145, 0, 0, 0}));
}

TEST(Columns, WithoutTitleAndPathTheGapStays) {
    EXPECT_EQ(Widths({false, true, true, true, false, false, false}),
              (ColumnWidths{0, 38, 40, 47, 0, 0, 0, 0}));
    EXPECT_EQ(Widths({false, false, false, false, false, false, false}), ColumnWidths{});
}

TEST(Columns, AWiderListGivesNothingAway) {
    EXPECT_EQ(Widths({true, false, true, true, true, true, false}),
              (ColumnWidths{165, 0, 40, 47, 70, 200, 0, 0}));
}

TEST(Columns, TheOldTotalCountsTheColumnsThatShowed) {
    const ColumnWidths before = Widths({true, true, true, true, true, true, false});
    EXPECT_EQ(Widths(defaultPlaylistItems, before), (ColumnWidths{365, 38, 40, 47, 70, 0, 0, 0}));
}

} // namespace
} // namespace kestrune
