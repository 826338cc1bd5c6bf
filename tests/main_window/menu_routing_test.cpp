#include "main_window/menu_routing.h"

#include "playback/transport_fixture.h"

namespace kestrune {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class MenuRoutingTest : public TransportFixture {
protected:
    MenuRoutingTest() {
        QObject::connect(&routing, &MenuRouting::PopUpAtLabel, &routing,
                         [this](MainMenu menu) { atLabel.append(static_cast<int>(menu)); });
        QObject::connect(&routing, &MenuRouting::PopUpAtCursor, &routing,
                         [this](MainMenu menu) { atCursor.append(static_cast<int>(menu)); });
    }
    void PlayOne() {
        AddTrack(QStringLiteral("a.wav"));
        transport.PlayCurrentItem();
        ASSERT_TRUE(transport.State().IsPlaying);
    }
    bool AltAnd(char letter) {
        routing.KeyDown(18);
        const bool used = routing.KeyDown(letter);
        routing.KeyUp();
        return used;
    }

    FakeToolWindows& windows = house.tools;
    MenuRouting& routing = house.program.routing;
    QList<int> atLabel;
    QList<int> atCursor;
};

TEST_F(MenuRoutingTest, LabelsPopUpTheirMenusAtTheCursor) {
    for (const int label : {0, 1, 3, 4, 6, 7}) {
        routing.LabelMenu_Click(label);
    }
    EXPECT_THAT(atCursor, ElementsAre(0, 1, 3, 4, 6, 7));
    EXPECT_THAT(atLabel, IsEmpty());
}

TEST_F(MenuRoutingTest, AltKeysPopUpTheirMenusAtTheLabel) {
    for (const char letter : {'F', 'P', 'B', 'C', 'H', 'O'}) {
        EXPECT_TRUE(AltAnd(letter));
    }
    EXPECT_THAT(atLabel, ElementsAre(0, 1, 3, 4, 6, 7));
    EXPECT_THAT(atCursor, IsEmpty());
}

TEST_F(MenuRoutingTest, RipStopsPlaybackFirst) {
    PlayOne();
    EXPECT_TRUE(AltAnd('R'));
    EXPECT_FALSE(transport.State().IsPlaying);
    EXPECT_THAT(windows.shown, ElementsAre(ToolWindow::RipfrmMain));
}

TEST_F(MenuRoutingTest, SitesLeavePlaybackAlone) {
    PlayOne();
    EXPECT_TRUE(AltAnd('S'));
    routing.LabelMenu_Click(5);
    routing.ImageToolBar_Click(4);
    EXPECT_TRUE(transport.State().IsPlaying);
    EXPECT_EQ(windows.shown.count(ToolWindow::frmMp3site), 3);
}

TEST_F(MenuRoutingTest, AltAloneAndALetterWithoutAMenuDoNothing) {
    for (const char letter : {'A', 'D', 'E', 'G', 'Q', 'T', 'Z'}) {
        EXPECT_FALSE(AltAnd(letter));
    }
    EXPECT_THAT(atLabel, IsEmpty());
    EXPECT_THAT(windows.shown, IsEmpty());
}

TEST_F(MenuRoutingTest, ALetterWithoutAltDoesNothing) {
    EXPECT_FALSE(routing.KeyDown('F'));
    routing.KeyDown(18);
    routing.KeyUp();
    EXPECT_FALSE(routing.KeyDown('F'));
    EXPECT_THAT(atLabel, IsEmpty());
}

TEST_F(MenuRoutingTest, BurnEntriesHandOverTheirIndex) {
    for (const int index : {0, 2, 3, 4}) {
        PlayOne();
        routing.mBurn_Click(index);
        EXPECT_EQ(state.BurnMode, index);
        EXPECT_FALSE(transport.State().IsPlaying);
    }
    EXPECT_EQ(windows.shown.count(ToolWindow::CDWriterMain), 4);
}

TEST_F(MenuRoutingTest, ASeparatorOfTheBurnMenuDoesNothing) {
    routing.mBurn_Click(1);
    routing.mBurn_Click(5);
    EXPECT_THAT(windows.shown, IsEmpty());
}

TEST_F(MenuRoutingTest, ConvertEntriesHandOverTheirIndex) {
    for (const int index : {0, 2, 3, 4}) {
        routing.mConvert_Click(index);
        EXPECT_EQ(state.ConvertMode, index);
    }
    EXPECT_EQ(windows.shown.count(ToolWindow::ConverterfrmDialog), 4);
}

TEST_F(MenuRoutingTest, PopupEntriesRunTheMenusOwn) {
    routing.mnpop_Click(11);
    EXPECT_EQ(state.BurnMode, 4);
    routing.mnpop_Click(9);
    EXPECT_EQ(state.BurnMode, 2);
    routing.mnpop_Click(13);
    EXPECT_EQ(state.ConvertMode, 2);
    routing.mnpop_Click(15);
    EXPECT_EQ(state.ConvertMode, 4);
    routing.mnpop_Click(12);
    EXPECT_EQ(windows.shown.size(), 4);
}

TEST_F(MenuRoutingTest, ToolBarButtons) {
    state.BurnMode = 3;
    state.ConvertMode = 3;
    for (const int item : {1, 2, 3}) {
        PlayOne();
        routing.ImageToolBar_Click(item);
        EXPECT_FALSE(transport.State().IsPlaying) << item;
    }
    routing.ImageToolBar_Click(0);
    EXPECT_EQ(state.BurnMode, 0);
    EXPECT_EQ(state.ConvertMode, 3);
    EXPECT_THAT(windows.shown, ElementsAre(ToolWindow::RipfrmMain, ToolWindow::CDWriterMain,
                                           ToolWindow::ConverterfrmDialog));
}

TEST_F(MenuRoutingTest, EditTagsDoesNothingWithAnEmptyList) {
    routing.EditTags();
    EXPECT_THAT(windows.shown, IsEmpty());
    EXPECT_EQ(state.CurIndex, 0);
}

TEST_F(MenuRoutingTest, EditTagsWithoutACurrentRowUsesRowOne) {
    AddTrack(QStringLiteral("a.wav"));
    AddTrack(QStringLiteral("b.wav"));
    state.CurIndex = 0;
    routing.mnpop_Click(7);
    EXPECT_EQ(state.CurIndex, 1);
    EXPECT_THAT(windows.shown, ElementsAre(ToolWindow::frmInfo));
}

TEST_F(MenuRoutingTest, HelpEntries) {
    EXPECT_FALSE(state.HelpOpened);
    routing.mHelp_Click(1);
    EXPECT_TRUE(state.HelpOpened);
    EXPECT_THAT(windows.topics, ElementsAre(QStringLiteral("overview.htm")));
    routing.mHelp_Click(3);
    routing.mHelp_Click(11);
    routing.mHelp_Click(13);
    routing.mHelp_Click(2);
    EXPECT_THAT(windows.shown,
                ElementsAre(ToolWindow::xFrmHomePage, ToolWindow::xDialog7, ToolWindow::frmSplash));
}

TEST_F(MenuRoutingTest, AToolThatIsNotThereYetIsToldInOneBox) {
    PlayOne();
    windows.exists = false;
    routing.mConvert_Click(0);
    EXPECT_FALSE(transport.State().IsPlaying);
    ASSERT_EQ(prompts.messages.size(), 1);
    EXPECT_EQ(prompts.messages.first().text, QStringLiteral("This tool is not part of Kestrune yet."));
}

} // namespace
} // namespace kestrune
