#include "main_window/shut_down.h"

#include "playlist/ksl_format.h"
#include "playlist/playlist_order.h"
#include "support/program_playlist.h"

#include <gtest/gtest.h>

namespace kestrune {
namespace {

using rules::Column;
using rules::Content;
using rules::MakeRow;
using rules::Playlist;

using Texts = std::vector<std::string>;

class ShutDownTest : public testing::Test {
protected:
    // Rows 1 to 3, in another order than that of their numbers.
    ShutDownTest() {
        for (const auto& [number, title] : {std::pair(1, "c"), std::pair(2, "a"), std::pair(3, "b")}) {
            list.rows.Append(MakeRow(number, QString::fromUtf8(title), QStringLiteral("00:01"),
                                     QStringLiteral("0.0m"), QStringLiteral("/m/"), QStringLiteral("x.mp3")));
        }
        Mix();
    }
    void Mix() {
        OrderList(list.rows, static_cast<int>(OrderIndex::Title));
        if (Column(list.rows, RowText)[0] != "2.a") {
            OrderList(list.rows, static_cast<int>(OrderIndex::Title));
        }
    }
    Texts Stored() const {
        Texts titles;
        for (const PlaylistRow& row : DecodeKsl(QByteArray::fromStdString(Content(list.DefaultFile())))) {
            titles.push_back(row.fields[RowText].toStdString());
        }
        return titles;
    }

    Playlist list;
    Texts ended; // what was stored each time that the process was to end
    ShutDown shutDown{list.rows, list.files,
                      [this] { ended.push_back("with " + std::to_string(Stored().size())); }};
};

TEST_F(ShutDownTest, EndStoresTheListInIndexOrderAndThenEndsTheProcess) {
    shutDown.End();
    EXPECT_EQ(Stored(), (Texts{"c", "a", "b"}));
    EXPECT_TRUE(list.rows.IsAscending());
    EXPECT_EQ(ended, (Texts{"with 3"}));
    EXPECT_TRUE(list.prompts.messages.isEmpty());
    EXPECT_TRUE(list.prompts.questions.isEmpty());
}

TEST_F(ShutDownTest, TheProcessEndsOnce) {
    shutDown.End();
    shutDown.End();
    shutDown.EventsEnded();
    EXPECT_EQ(ended.size(), 1U);
}

TEST_F(ShutDownTest, NothingIsStoredASecondTime) {
    shutDown.End();
    list.rows.Clear();
    shutDown.EventsEnded();
    EXPECT_EQ(Stored().size(), 3U);
}

TEST_F(ShutDownTest, AnEndOfTheEventsStoresTheListAndEndsNothing) {
    shutDown.EventsEnded();
    EXPECT_EQ(Stored(), (Texts{"c", "a", "b"}));
    EXPECT_TRUE(ended.empty());
}

TEST_F(ShutDownTest, AfterTheWindowWasClosedNothingIsStoredButTheProcessMayEnd) {
    shutDown.WindowClosed();
    shutDown.EventsEnded();
    EXPECT_EQ(Content(list.DefaultFile()), "(no file)");
    shutDown.End();
    EXPECT_EQ(ended.size(), 1U);
}

TEST_F(ShutDownTest, ASessionThatIsAboutToEndStoresTheListEachTimeAndGoesOn) {
    shutDown.StoreForSessionEnd();
    EXPECT_EQ(Stored(), (Texts{"c", "a", "b"}));
    EXPECT_TRUE(ended.empty());
    // The end was called off, and the user goes on.
    list.rows.Remove(1);
    Mix();
    shutDown.StoreForSessionEnd();
    EXPECT_EQ(Stored(), (Texts{"a", "b"}));
    list.rows.Remove(1);
    shutDown.End();
    EXPECT_EQ(Stored(), (Texts{"b"}));
    EXPECT_EQ(ended, (Texts{"with 1"}));
}

} // namespace
} // namespace kestrune
