// The list as a screen reader finds it.
#include "playlist/playlist_view_fixture.h"

#include <QAccessible>

namespace kestrune {
namespace {

using testing::ElementsAre;

class PlaylistAccessibleTest : public PlaylistViewTest {
protected:
    QAccessibleInterface* Root() { return QAccessible::queryAccessibleInterface(&list); }
    QAccessibleInterface* Item(int row) { return Root()->child(row - 1); }
    std::string NameOf(int row) { return Item(row)->text(QAccessible::Name).toStdString(); }
};

TEST_F(PlaylistAccessibleTest, ItIsAListOfItsRows) {
    Fill(3);
    Show();
    ASSERT_NE(Root(), nullptr);
    EXPECT_EQ(Root()->role(), QAccessible::List);
    EXPECT_EQ(Root()->text(QAccessible::Name).toStdString(), "Playlist");
    EXPECT_TRUE(Root()->state().multiSelectable);
    ASSERT_EQ(Root()->childCount(), 3);
    EXPECT_EQ(Item(2)->role(), QAccessible::ListItem);
    EXPECT_EQ(NameOf(2), "2.title 2 02:00");
    EXPECT_EQ(Item(2)->text(QAccessible::Description).toStdString(), "format 2");
    EXPECT_EQ(Item(2)->parent(), Root());
    EXPECT_EQ(Root()->indexOfChild(Item(2)), 1);
    EXPECT_EQ(Item(2)->childCount(), 0);
}

TEST_F(PlaylistAccessibleTest, RowsOutsideTheListHaveNoItem) {
    Fill(3);
    Show();
    EXPECT_EQ(Root()->child(-1), nullptr);
    EXPECT_EQ(Root()->child(3), nullptr);
}

TEST_F(PlaylistAccessibleTest, SelectionAndFocusAreStates) {
    Fill(3);
    Show();
    list.setFocus();
    Click(2);
    EXPECT_TRUE(Item(2)->state().selected);
    EXPECT_TRUE(Item(2)->state().focused);
    EXPECT_TRUE(Item(2)->state().selectable);
    EXPECT_FALSE(Item(1)->state().selected);
    EXPECT_FALSE(Item(1)->state().focused);
    EXPECT_EQ(Root()->focusChild(), Item(2));
    other.setFocus();
    EXPECT_FALSE(Item(2)->state().focused);
    EXPECT_EQ(Root()->focusChild(), nullptr);
}

TEST_F(PlaylistAccessibleTest, ItemsKnowTheirPlace) {
    Fill(20);
    Show();
    const QRect place = Item(3)->rect();
    EXPECT_EQ(place.topLeft(), list.viewport()->mapToGlobal(QPoint(0, 2 * PlaylistView::rowHeight)));
    EXPECT_EQ(place.height(), PlaylistView::rowHeight);
    EXPECT_FALSE(Item(3)->state().offscreen);
    EXPECT_TRUE(Item(15)->state().offscreen);
    EXPECT_EQ(Root()->childAt(place.center().x(), place.center().y()), Item(3));
    EXPECT_EQ(Root()->childAt(place.left() - 100, place.top()), nullptr);
    list.SetFirstVisible(10);
    EXPECT_FALSE(Item(15)->state().offscreen);
    EXPECT_TRUE(Item(3)->state().offscreen);
}

TEST_F(PlaylistAccessibleTest, AnItemThatWasAskedForFollowsItsRow) {
    Fill(3);
    Show();
    QAccessibleInterface* third = Item(3);
    EXPECT_EQ(third, Item(3));
    rows.SetField(3, RowText, QStringLiteral("3.other"));
    EXPECT_EQ(NameOf(3), "3.other 03:00");
    rows.Remove(2);
    EXPECT_FALSE(third->isValid());
    EXPECT_TRUE(third->state().invalid);
    EXPECT_EQ(third->text(QAccessible::Name), QString());
    EXPECT_EQ(Root()->childCount(), 2);
    Fill(1);
    EXPECT_TRUE(Item(3)->isValid());
}

TEST_F(PlaylistAccessibleTest, ItemsCanBeChosenAndPlayed) {
    Fill(20);
    Show();
    QList<int> clicked;
    QList<int> played;
    QObject::connect(&list, &PlaylistView::RowClicked, &list, [&](int row) { clicked.append(row); });
    QObject::connect(&list, &PlaylistView::RowActivated, &list, [&](int row) { played.append(row); });
    QAccessibleActionInterface* actions = Item(12)->actionInterface();
    ASSERT_NE(actions, nullptr);
    actions->doAction(QAccessibleActionInterface::setFocusAction());
    EXPECT_THAT(Selected(), ElementsAre(12));
    EXPECT_THAT(clicked, ElementsAre(12));
    EXPECT_TRUE(list.hasFocus());
    EXPECT_FALSE(Item(12)->state().offscreen);
    actions->doAction(QAccessibleActionInterface::pressAction());
    EXPECT_THAT(played, ElementsAre(12));
}

TEST_F(PlaylistAccessibleTest, ALongListMakesItsItemsOnDemand) {
    for (int number = 1; number <= 32000; ++number) {
        PlaylistRow row;
        row.fields[RowText] = QStringLiteral("%1.x").arg(number);
        row.fields[SubTime] = QStringLiteral("01:00");
        rows.Append(row);
    }
    Show();
    EXPECT_EQ(Root()->childCount(), 32000);
    EXPECT_EQ(NameOf(32000), "32000.x 01:00");
    EXPECT_EQ(NameOf(1), "1.x 01:00");
}

TEST_F(PlaylistAccessibleTest, ItemsEndWithTheList) {
    auto* second = new PlaylistView(rows);
    Fill(2);
    QAccessibleInterface* root = QAccessible::queryAccessibleInterface(second);
    ASSERT_NE(root, nullptr);
    const QAccessible::Id item = QAccessible::uniqueId(root->child(1));
    ASSERT_NE(QAccessible::accessibleInterface(item), nullptr);
    delete second;
    EXPECT_EQ(QAccessible::accessibleInterface(item), nullptr);
}

} // namespace
} // namespace kestrune
