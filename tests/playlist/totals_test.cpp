#include "playlist/playlist_totals.h"

#include "support/rule_support.h"

#include <gtest/gtest.h>

namespace kestrune {
namespace {

using rules::MakeRow;
using rules::Utf8;

void Add(PlaylistRows& rows, const char* time, const char* size) {
    rows.Append(MakeRow(rows.Count() + 1, QStringLiteral("t"), QString::fromUtf8(time),
                        QString::fromUtf8(size), QStringLiteral("/"), QStringLiteral("f.mp3")));
}

TEST(Totals, OfAnEmptyListAreZeroWithALonePoint) {
    const TotalTexts texts = TotalTextsOf(PlaylistRows());
    EXPECT_EQ(Utf8(texts.LabelSeltal0), "00:00 (. MB)");
    EXPECT_EQ(Utf8(texts.LabelSeltal1), "00:00 (. MB)");
    EXPECT_EQ(Utf8(texts.PictureSelToalTip), ".0 MB/.0 MB");
    EXPECT_EQ(Utf8(texts.LabelTemp), "00:00/00:00");
}

TEST(Totals, AddTimeAndMegabytesOfAllAndOfTheSelectedRows) {
    PlaylistRows rows;
    Add(rows, "03:20", "3.0m");
    Add(rows, "04:45", "4.5m");
    Add(rows, "00:10", "0.5m");
    rows.SetSelected(1, true);
    rows.SetSelected(3, true);
    const TotalTexts texts = TotalTextsOf(rows);
    EXPECT_EQ(Utf8(texts.LabelSeltal0), "08:15 (8. MB)");
    EXPECT_EQ(Utf8(texts.LabelSeltal1), "03:30 (3.5 MB)");
    EXPECT_EQ(Utf8(texts.PictureSelToalTip), "8.0 MB/3.5 MB");
    EXPECT_EQ(Utf8(texts.LabelTemp), "08:15/03:30");
}

TEST(Totals, MinutesHaveNoLimit) {
    PlaylistRows rows;
    for (int i = 0; i < 3; ++i) {
        Add(rows, "500:59", "0.0m");
    }
    EXPECT_EQ(Utf8(TotalTextsOf(rows).LabelTemp), "1502:57/00:00");
}

TEST(Totals, TheSecondsOfARowAreItsLastTwoCharacters) {
    PlaylistRows rows;
    Add(rows, "2:5", "0.0m"); // the last two are ":5", which is no number
    EXPECT_EQ(Utf8(TotalTextsOf(rows).LabelTemp), "02:00/00:00");
}

TEST(Totals, SmallSizesAddUpBeforeTheyAreRounded) {
    PlaylistRows rows;
    for (int i = 0; i < 12; ++i) {
        Add(rows, "00:01", "0.1m");
    }
    EXPECT_EQ(Utf8(TotalTextsOf(rows).LabelSeltal0), "00:12 (1.2 MB)");
}

} // namespace
} // namespace kestrune
