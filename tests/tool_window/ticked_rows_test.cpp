#include "tool_window/ticked_tracks.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace kestrune {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class TickedRowsTest : public testing::Test {
protected:
    TickedRowsTest() {
        rows.tracks = {{QStringLiteral("One"), QStringLiteral("3:00"), true},
                       {QStringLiteral("Two"), QStringLiteral("4:00"), false},
                       {QStringLiteral("Three"), QStringLiteral("5:00"), false}};
        QObject::connect(&rows, &TickedRows::RowCheckChanged, [this](int row) { byUser.push_back(row); });
        QObject::connect(&rows, &QAbstractItemModel::dataChanged,
                         [this](const QModelIndex& first, const QModelIndex& last, const QList<int>& roles) {
                             changes.push_back({first.row(), last.row(), roles.value(0)});
                         });
    }
    bool Set(int row, int column, const QVariant& value, int role) {
        return rows.setData(rows.index(row, column), value, role);
    }
    std::vector<bool> Ticks() const {
        std::vector<bool> ticks;
        for (int row = 1; row <= rows.Count(); ++row) {
            ticks.push_back(rows.IsChecked(row));
        }
        return ticks;
    }

    TickedTracks rows;
    std::vector<int> byUser;
    std::vector<std::vector<int>> changes; // first and last row, the first role
};

TEST_F(TickedRowsTest, ShowTheTickInTheFirstColumnAndTextsInAll) {
    EXPECT_EQ(rows.rowCount(), 3);
    EXPECT_EQ(rows.rowCount(rows.index(0, 0)), 0);
    EXPECT_EQ(rows.index(0, 0).data(Qt::CheckStateRole).toInt(), Qt::Checked);
    EXPECT_EQ(rows.index(1, 0).data(Qt::CheckStateRole).toInt(), Qt::Unchecked);
    EXPECT_FALSE(rows.index(0, 1).data(Qt::CheckStateRole).isValid());
    EXPECT_EQ(rows.index(1, 0).data().toString(), "Two");
    EXPECT_EQ(rows.index(1, 1).data().toString(), "4:00");
    EXPECT_TRUE(rows.flags(rows.index(0, 0)).testFlag(Qt::ItemIsUserCheckable));
    EXPECT_FALSE(rows.flags(rows.index(0, 1)).testFlag(Qt::ItemIsUserCheckable));
    EXPECT_EQ(rows.flags({}), Qt::NoItemFlags);
}

TEST_F(TickedRowsTest, TellOfATickThatTheUserSets) {
    EXPECT_TRUE(Set(1, 0, Qt::Checked, Qt::CheckStateRole));
    EXPECT_THAT(Ticks(), ElementsAre(true, true, false));
    EXPECT_THAT(byUser, ElementsAre(2));
    EXPECT_THAT(changes, ElementsAre(ElementsAre(1, 1, Qt::CheckStateRole)));
    EXPECT_FALSE(Set(1, 1, Qt::Unchecked, Qt::CheckStateRole)) << "no box there";
    EXPECT_THAT(Ticks(), ElementsAre(true, true, false));
}

TEST_F(TickedRowsTest, TellNothingOfTicksThatTheProgramSets) {
    rows.SetChecked(3, true);
    EXPECT_THAT(Ticks(), ElementsAre(true, false, true));
    EXPECT_EQ(rows.CountChecked(), 2);
    EXPECT_THAT(changes, ElementsAre(ElementsAre(2, 2, Qt::CheckStateRole)));
    rows.SetChecked(3, true);
    EXPECT_EQ(changes.size(), 1U) << "it was ticked already";
    rows.SetAllChecked(true);
    EXPECT_EQ(rows.CountChecked(), 3);
    rows.SetAllChecked(false);
    EXPECT_EQ(rows.CountChecked(), 0);
    EXPECT_THAT(changes.back(), ElementsAre(0, 2, Qt::CheckStateRole));
    EXPECT_THAT(byUser, IsEmpty());
}

TEST_F(TickedRowsTest, PassOverRowsThatThereAreNot) {
    rows.SetChecked(0, true);
    rows.SetChecked(4, true);
    EXPECT_FALSE(rows.IsChecked(0));
    EXPECT_FALSE(rows.IsChecked(4));
    rows.tracks.clear();
    rows.SetAllChecked(true);
    EXPECT_THAT(changes, IsEmpty());
}

TEST_F(TickedRowsTest, TakeTextsWhereTheListLetsThemBeEdited) {
    EXPECT_TRUE(rows.flags(rows.index(0, 0)).testFlag(Qt::ItemIsEditable));
    EXPECT_FALSE(rows.flags(rows.index(0, 1)).testFlag(Qt::ItemIsEditable));
    EXPECT_EQ(rows.index(0, 0).data(Qt::EditRole).toString(), "One");
    EXPECT_FALSE(rows.index(0, 1).data(Qt::EditRole).isValid());
    EXPECT_TRUE(Set(0, 0, QStringLiteral("New"), Qt::EditRole));
    EXPECT_EQ(rows.tracks[0].name, "New");
    EXPECT_THAT(changes, ElementsAre(ElementsAre(0, 0, Qt::DisplayRole)));
    EXPECT_FALSE(Set(0, 0, QString(), Qt::EditRole)) << "the list refuses it";
    EXPECT_FALSE(Set(0, 1, QStringLiteral("1:00"), Qt::EditRole));
    EXPECT_EQ(rows.tracks[0].name, "New");
    EXPECT_EQ(rows.tracks[0].length, "3:00");
    EXPECT_EQ(changes.size(), 1U);
    EXPECT_THAT(byUser, IsEmpty());
}

} // namespace
} // namespace kestrune
