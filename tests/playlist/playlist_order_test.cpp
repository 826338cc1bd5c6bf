#include "playlist/playlist_order.h"

#include "support/rule_support.h"

#include <gtest/gtest.h>

namespace kestrune {
namespace {

using rules::Column;
using rules::MakeRow;

using Texts = std::vector<std::string>;

PlaylistRow Row(int number, const char* title, const char* time, const char* size, const char* folder,
                const char* file) {
    return MakeRow(number, QString::fromUtf8(title), QString::fromUtf8(time), QString::fromUtf8(size),
                   QString::fromUtf8(folder), QString::fromUtf8(file));
}

class OrderListTest : public testing::Test {
protected:
    OrderListTest() {
        rows.Append(Row(1, "beta", "9:00", "9.0m", "/b/", "x.wav"));
        rows.Append(Row(2, "Alpha", "10:00", "10.0m", "/C/", "y.mp3"));
        rows.Append(Row(3, "gamma", "02:00", "0.5m", "/a/", "z.ogg"));
    }
    void Order(OrderIndex index) { OrderList(rows, static_cast<int>(index)); }
    Texts InDirection(OrderIndex index) {
        rows.SetAscending(true);
        rows.SortBy(index == OrderIndex::Duration ? SubTime : SubSize);
        return Column(rows, RowText);
    }
    PlaylistRows rows;
};

TEST_F(OrderListTest, TheDirectionFlipsOnEveryCall) {
    EXPECT_TRUE(rows.IsAscending());
    Order(OrderIndex::Title);
    EXPECT_FALSE(rows.IsAscending());
    Order(OrderIndex::Type);
    EXPECT_TRUE(rows.IsAscending());
}

// The flip behind the sort turns the list, so the first call from an ascending list leaves it descending.
TEST_F(OrderListTest, TitleSortsByTheTextBehindTheNumberWithoutRegardToCase) {
    Order(OrderIndex::Title);
    EXPECT_EQ(Column(rows, RowText), (Texts{"3.gamma", "1.beta", "2.Alpha"}));
    EXPECT_EQ(Column(rows, SubSortKey), (Texts{"gamma", "beta", "Alpha"}));
    Order(OrderIndex::Title);
    EXPECT_EQ(Column(rows, RowText), (Texts{"2.Alpha", "1.beta", "3.gamma"}));
}

TEST_F(OrderListTest, TwoClicksOnDurationGiveOppositeOrders) {
    Order(OrderIndex::Duration);
    const Texts once = Column(rows, RowText);
    Order(OrderIndex::Duration);
    const Texts twice = Column(rows, RowText);
    EXPECT_EQ(once, Texts(twice.rbegin(), twice.rend()));
    EXPECT_NE(once, twice);
}

TEST_F(OrderListTest, DurationSortsAsTextSoTenMinutesComeBeforeNine) {
    EXPECT_EQ(InDirection(OrderIndex::Duration), (Texts{"3.gamma", "2.Alpha", "1.beta"}));
}

TEST_F(OrderListTest, SizeSortsAsTextSoTenMegabytesComeBeforeNine) {
    EXPECT_EQ(InDirection(OrderIndex::Size), (Texts{"3.gamma", "2.Alpha", "1.beta"}));
}

TEST_F(OrderListTest, EachEntrySortsByItsColumn) {
    rows.SetAscending(false);
    Order(OrderIndex::Type);
    EXPECT_EQ(Column(rows, SubType), (Texts{"mp3", "ogg", "wav"}));
    rows.SetAscending(false);
    Order(OrderIndex::Path);
    EXPECT_EQ(Column(rows, SubFolder), (Texts{"/a/", "/b/", "/C/"}));
    rows.SetAscending(false);
    Order(OrderIndex::Size);
    EXPECT_EQ(Column(rows, SubSize), (Texts{"0.5m", "10.0m", "9.0m"}));
    rows.SetAscending(false);
    Order(OrderIndex::Duration);
    EXPECT_EQ(Column(rows, SubTime), (Texts{"02:00", "10:00", "9:00"}));
}

TEST_F(OrderListTest, IndexBringsBackTheOrderOfTheNumbers) {
    Order(OrderIndex::Path);
    Order(OrderIndex::Index);
    EXPECT_EQ(Column(rows, RowText), (Texts{"1.beta", "2.Alpha", "3.gamma"}));
    EXPECT_EQ(Column(rows, SubSortKey), (Texts{"001", "002", "003"}));
}

TEST_F(OrderListTest, TheNumbersInTheTextsDoNotChange) {
    Order(OrderIndex::Title);
    Texts texts = Column(rows, RowText);
    std::sort(texts.begin(), texts.end());
    EXPECT_EQ(texts, (Texts{"1.beta", "2.Alpha", "3.gamma"}));
}

TEST_F(OrderListTest, AnEntryOutsideTheMenuOnlyFlips) {
    OrderList(rows, 6);
    EXPECT_FALSE(rows.IsAscending());
    EXPECT_EQ(Column(rows, RowText), (Texts{"1.beta", "2.Alpha", "3.gamma"}));
    OrderList(rows, -1);
    EXPECT_TRUE(rows.IsAscending());
}

TEST_F(OrderListTest, RestoringTheIndexOrderEqualsTwoCallsOfTheIndexEntry) {
    for (const bool ascending : {true, false}) {
        PlaylistRows twice;
        for (int row = 1; row <= 3; ++row) {
            twice.Append(rows.Row(row));
        }
        for (PlaylistRows* list : {&rows, &twice}) {
            OrderList(*list, static_cast<int>(OrderIndex::Title));
            list->SetAscending(ascending);
        }
        RestoreIndexOrder(rows);
        OrderList(twice, 0);
        OrderList(twice, 0);
        EXPECT_EQ(Column(rows, RowText), Column(twice, RowText));
        EXPECT_EQ(rows.IsAscending(), ascending);
        EXPECT_EQ(twice.IsAscending(), ascending);
    }
}

TEST_F(OrderListTest, AnEmptyListSortsAndFlipsToo) {
    PlaylistRows empty;
    for (int index = 0; index <= 5; ++index) {
        OrderList(empty, index);
    }
    EXPECT_EQ(empty.Count(), 0);
    EXPECT_TRUE(empty.IsAscending());
}

// What the view is told: one row changed for each row, and a bounded number of sorts.
TEST(OrderListCost, GrowsWithTheRowsAndNotFaster) {
    for (const int count : {2000, 8000}) {
        PlaylistRows rows;
        for (int number = 1; number <= count; ++number) {
            rows.Append(Row(number, "t", "01:00", "1.0m", "/", "f.mp3"));
        }
        int sorts = 0;
        int changes = 0;
        QObject::connect(&rows, &PlaylistRows::layoutChanged, &rows, [&] { ++sorts; });
        QObject::connect(&rows, &PlaylistRows::dataChanged, &rows, [&] { ++changes; });
        OrderList(rows, static_cast<int>(OrderIndex::Title));
        EXPECT_EQ(sorts, 2) << "the sort and its turn";
        EXPECT_LE(changes, count);
    }
}

} // namespace
} // namespace kestrune
