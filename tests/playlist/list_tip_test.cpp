// The tool tip of the list.
#include "playlist/list_tip.h"

#include "support/fake_clock.h"

#include <gtest/gtest.h>

namespace kestrune {
namespace {

class ListTipTest : public testing::Test {
protected:
    std::string MoveAt(qint64 ms) {
        clock.monotonicMs = ms;
        tip.MouseMoved();
        return tip.Text().toStdString();
    }

    static constexpr const char* hint = "Hold CTRL to select more than 1";
    FakeClock clock;
    ListTip tip{clock};
};

TEST_F(ListTipTest, NothingAtFirst) {
    EXPECT_EQ(tip.Text(), QString());
    EXPECT_FALSE(tip.IsHint());
}

TEST_F(ListTipTest, TheFirstMoveShowsTheHintForTenSeconds) {
    EXPECT_EQ(MoveAt(5000), hint);
    EXPECT_TRUE(tip.IsHint());
    EXPECT_EQ(MoveAt(9000), hint);
    EXPECT_EQ(MoveAt(14999), hint);
    EXPECT_EQ(MoveAt(15000), "");
    EXPECT_FALSE(tip.IsHint());
}

TEST_F(ListTipTest, AMoveAtTimeZeroCountsAsTheFirst) {
    EXPECT_EQ(MoveAt(0), hint);
    EXPECT_EQ(MoveAt(9999), hint);
    EXPECT_EQ(MoveAt(10000), "");
}

TEST_F(ListTipTest, WithoutAMoveTheHintStays) {
    MoveAt(0);
    clock.monotonicMs = 60000;
    EXPECT_EQ(tip.Text().toStdString(), hint);
}

TEST_F(ListTipTest, TheHintComesOnlyOnce) {
    MoveAt(0);
    MoveAt(10000);
    EXPECT_EQ(MoveAt(20000), "");
}

TEST_F(ListTipTest, AClickShowsTheFormatOfItsRow) {
    tip.RowClicked(QStringLiteral("MPEG Layer-3, 44,100 Hz"));
    EXPECT_EQ(tip.Text().toStdString(), "MPEG Layer-3, 44,100 Hz");
    EXPECT_FALSE(tip.IsHint());
}

TEST_F(ListTipTest, TheFormatOfAClickedRowOutlivesTheTenSeconds) {
    MoveAt(0);
    tip.RowClicked(QStringLiteral("GSM"));
    EXPECT_EQ(MoveAt(9000), "GSM");
    EXPECT_EQ(MoveAt(20000), "GSM");
}

} // namespace
} // namespace kestrune
