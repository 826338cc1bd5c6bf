#include "support/fake_clock.h"
#include "support/rule_support.h"
#include "tool_window/event_log.h"

#include <gtest/gtest.h>

namespace kestrune::convert {
namespace {

using rules::Utf8;

TEST(TimeOfDay, HasTwoDigitsEach) {
    EXPECT_EQ(Utf8(TimeOfDay(0)), "00:00:00");
    EXPECT_EQ(Utf8(TimeOfDay(999)), "00:00:00");
    EXPECT_EQ(Utf8(TimeOfDay((9 * 3600 + 5 * 60 + 7) * 1000)), "09:05:07");
    EXPECT_EQ(Utf8(TimeOfDay(86399999)), "23:59:59");
}

class EventLogTest : public testing::Test {
protected:
    std::string Cell(int row, int column) const {
        return Utf8(log.data(log.index(row, column), Qt::DisplayRole).toString());
    }
    FakeClock clock;
    EventLog log{clock};
};

TEST_F(EventLogTest, ALineIsAnIconATimeAndAText) {
    clock.msSinceMidnight = 3661000;
    log.AddEvent(QStringLiteral("Start ConvertToMP3"), EventIcon::RunStep);
    clock.msSinceMidnight = 3662000;
    log.AddEvent(QStringLiteral("Set Mono"), EventIcon::SettingsChange);
    ASSERT_EQ(log.rowCount(), 2);
    EXPECT_EQ(Cell(0, EventItem), "");
    EXPECT_EQ(Cell(0, EventTime), "01:01:01");
    EXPECT_EQ(Cell(0, EventOperation), "Start ConvertToMP3");
    EXPECT_EQ(Cell(1, EventTime), "01:01:02");
    EXPECT_EQ(log.data(log.index(0, EventItem), EventLog::IconRole).toInt(), 1);
    EXPECT_EQ(log.data(log.index(1, EventItem), EventLog::IconRole).toInt(), 2);
}

TEST_F(EventLogTest, ColumnsAreTimeAndOperationBehindTheIcon) {
    const auto caption = [this](int column) {
        return Utf8(log.headerData(column, Qt::Horizontal).toString());
    };
    EXPECT_EQ(caption(EventItem), "");
    EXPECT_EQ(caption(EventTime), "Time");
    EXPECT_EQ(caption(EventOperation), "Operation");
}

TEST_F(EventLogTest, IsScrolledBeforeAndAfterTheTextsAreSet) {
    QStringList seen;
    QObject::connect(&log, &EventLog::RowShown,
                     [&](int line) { seen << QString::number(line) + u':' + log.Text(line); });
    log.AddEvent(QStringLiteral("one"), EventIcon::RunStep);
    log.AddEvent(QStringLiteral("two"), EventIcon::RunStep);
    EXPECT_EQ(seen, (QStringList{QStringLiteral("1:"), QStringLiteral("1:one"), QStringLiteral("2:"),
                                 QStringLiteral("2:two")}));
}

} // namespace
} // namespace kestrune::convert
