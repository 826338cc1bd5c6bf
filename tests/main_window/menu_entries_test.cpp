// What each entry of the menus does, by its index.
#include "main_window/main_window_fixture.h"

namespace kestrune {
namespace {

struct MenuEntry {
    const char* name;
    int index;
    const char* caption;
    int result; // the mode that the tool gets, or which of the windows opens
};

class MenuEntryTest : public MainWindowTest, public testing::WithParamInterface<MenuEntry> {
protected:
    QAction* Entry() {
        return window.findChild<QAction*>(
            QStringLiteral("%1(%2)").arg(QLatin1String(GetParam().name)).arg(GetParam().index));
    }
    // An entry that opens a window does so a moment later.
    void Choose() {
        ASSERT_NE(Entry(), nullptr);
        EXPECT_EQ(Entry()->text(), QLatin1String(GetParam().caption));
        Entry()->trigger();
        QCoreApplication::processEvents();
    }
    void PlayOne() {
        Start();
        ASSERT_NO_FATAL_FAILURE(AddTracks(2));
        DoubleClickRow(1);
        ASSERT_TRUE(transport.State().IsPlaying);
    }
};

class BurnEntryTest : public MenuEntryTest {};

TEST_P(BurnEntryTest, StopsAndHandsItsModeOver) {
    ASSERT_NO_FATAL_FAILURE(PlayOne());
    state.BurnMode = 99;
    ASSERT_NO_FATAL_FAILURE(Choose());
    EXPECT_EQ(state.BurnMode, GetParam().result);
    EXPECT_THAT(tools.shown, testing::ElementsAre(ToolWindow::CDWriterMain));
    EXPECT_FALSE(transport.State().IsPlaying);
}

INSTANTIATE_TEST_SUITE_P(Entries, BurnEntryTest,
                         testing::Values(MenuEntry{"mBurn", 0, "Open Burning Window", 0},
                                         MenuEntry{"mBurn", 2, "Burn Selected Files", 2},
                                         MenuEntry{"mBurn", 3, "Burn Unselected Files", 3},
                                         MenuEntry{"mBurn", 4, "Burn All Files", 4},
                                         MenuEntry{"mnpop", 9, "Burn Selected Files", 2},
                                         MenuEntry{"mnpop", 10, "Burn UnSelected Files", 3},
                                         MenuEntry{"mnpop", 11, "Burn All Files", 4}));

class ConvertEntryTest : public MenuEntryTest {};

TEST_P(ConvertEntryTest, StopsAndHandsItsModeOver) {
    ASSERT_NO_FATAL_FAILURE(PlayOne());
    state.ConvertMode = 99;
    ASSERT_NO_FATAL_FAILURE(Choose());
    EXPECT_EQ(state.ConvertMode, GetParam().result);
    EXPECT_THAT(tools.shown, testing::ElementsAre(ToolWindow::ConverterfrmDialog));
    EXPECT_FALSE(transport.State().IsPlaying);
}

INSTANTIATE_TEST_SUITE_P(Entries, ConvertEntryTest,
                         testing::Values(MenuEntry{"mConvert", 0, "Open Converting Window", 0},
                                         MenuEntry{"mConvert", 2, "Convert Selected Files", 2},
                                         MenuEntry{"mConvert", 3, "Convert UnSelected Files", 3},
                                         MenuEntry{"mConvert", 4, "Convert All Files", 4},
                                         MenuEntry{"mnpop", 13, "Convert Selected Files", 2},
                                         MenuEntry{"mnpop", 14, "Convert UnSelected Files", 3},
                                         MenuEntry{"mnpop", 15, "Convert All Files", 4}));

class HelpEntryTest : public MenuEntryTest {};

TEST_P(HelpEntryTest, OpensItsOwnPageOrWindowAndPlaysOn) {
    ASSERT_NO_FATAL_FAILURE(PlayOne());
    ASSERT_NO_FATAL_FAILURE(Choose());
    const QList<ToolWindow> windows = {ToolWindow::xFrmHomePage, ToolWindow::xDialog7, ToolWindow::frmSplash};
    const int opened = GetParam().result;
    EXPECT_EQ(tools.shown, opened < 0 ? QList<ToolWindow>() : QList<ToolWindow>{windows[opened]});
    EXPECT_EQ(tools.topics, GetParam().index == 1 ? QStringList("overview.htm") : QStringList());
    EXPECT_EQ(tools.pages, GetParam().index == 9 ? QStringList("feedback.htm") : QStringList());
    EXPECT_EQ(state.HelpOpened, GetParam().index == 1);
    EXPECT_TRUE(transport.State().IsPlaying);
}

INSTANTIATE_TEST_SUITE_P(Entries, HelpEntryTest,
                         testing::Values(MenuEntry{"mHelp", 1, "&Help", -1},
                                         MenuEntry{"mHelp", 3, "Home&page", 0},
                                         MenuEntry{"mHelp", 9, "&Subscription Newsletters", -1},
                                         MenuEntry{"mHelp", 11, "&Live Update", 1},
                                         MenuEntry{"mHelp", 13, "&About", 2}));

class MenusTest : public MainWindowTest {
protected:
    QString Caption(const char* array, int index) {
        const auto* entry =
            window.findChild<QAction*>(QStringLiteral("%1(%2)").arg(QLatin1String(array)).arg(index));
        return entry != nullptr ? entry->text() : QString();
    }
};

TEST_F(MenusTest, APageThatCantBeOpenedIsTold) {
    Start();
    tools.exists = false;
    Trigger(QStringLiteral("mHelp(9)"));
    QCoreApplication::processEvents();
    ASSERT_EQ(prompts.messages.size(), 1);
    EXPECT_EQ(prompts.messages[0].text, QStringLiteral("This tool is not part of Kestrune yet."));
}

TEST_F(MenusTest, TheTagsAreEditedFromBothMenus) {
    Start();
    ASSERT_NO_FATAL_FAILURE(AddTracks(1));
    EXPECT_EQ(Caption("mnfile", 8), QStringLiteral("Ed&it Tags"));
    EXPECT_EQ(Caption("mnpop", 7), QStringLiteral("Edit Tags"));
    Trigger(QStringLiteral("mnfile(8)"));
    Trigger(QStringLiteral("mnpop(7)"));
    QCoreApplication::processEvents();
    EXPECT_THAT(tools.shown, testing::ElementsAre(ToolWindow::frmInfo, ToolWindow::frmInfo));
}

// --- Options ---

TEST_F(MenusTest, OptionsHaveTheirCaptions) {
    Start();
    const QMap<int, QString> captions = {{0, QStringLiteral("FFT Display Type")},
                                         {1, QStringLiteral("FFT Display Resolution")},
                                         {3, QStringLiteral("Continuous")},
                                         {4, QStringLiteral("Shuffle")},
                                         {5, QStringLiteral("Repeat")},
                                         {8, QStringLiteral("Initialize")},
                                         {9, QStringLiteral("Use Default")},
                                         {10, QStringLiteral("Save as Default")},
                                         {12, QStringLiteral("Use Default on Startup")}};
    for (int index = 0; index < 15; ++index) {
        EXPECT_EQ(Caption("mOptions", index), captions.value(index)) << index;
    }
    const QStringList types = {"Level Bars", "Analog", "FFT Fire", "FFT Glass", "FFT Kryptonite"};
    const QStringList sizes = {"64", "256", "1024", "4096", "16384"};
    for (int index = 0; index < 5; ++index) {
        EXPECT_EQ(Caption("mOptions1", index), types[index]);
        EXPECT_EQ(Caption("mOptions2", index), sizes[index]);
    }
}

TEST_F(MenusTest, EachModeEntryChoosesItsMode) {
    Start();
    for (const int index : {4, 5, 3}) {
        Trigger(QStringLiteral("mOptions(%1)").arg(index));
        EXPECT_TRUE(options.IsModeChecked(static_cast<PlayMode>(index - 3)));
        for (int other = 3; other <= 5; ++other) {
            EXPECT_EQ(IsChecked(QStringLiteral("mOptions(%1)").arg(other)), other == index);
        }
    }
}

TEST_F(MenusTest, EachSizeEntrySetsItsSize) {
    Start();
    Trigger(QStringLiteral("mOptions1(2)"));
    const QList<int> frames = {64, 256, 1024, 4096, 16384};
    for (const int index : {4, 0, 1, 2, 3}) {
        Trigger(QStringLiteral("mOptions2(%1)").arg(index));
        EXPECT_EQ(audioDisplay.Property(DisplayFftSize), frames[index]);
        for (int other = 0; other < 5; ++other) {
            EXPECT_EQ(IsChecked(QStringLiteral("mOptions2(%1)").arg(other)), other == index);
        }
    }
}

TEST_F(MenusTest, DefaultsAreSavedTakenAndReset) {
    Start();
    const int startType = options.FftType();
    Trigger(QStringLiteral("mOptions1(4)"));
    Trigger(QStringLiteral("mOptions(10)"));
    EXPECT_TRUE(QFile::exists(home.filePath(QStringLiteral("Options.dat"))));
    Trigger(QStringLiteral("mOptions(8)"));
    EXPECT_EQ(options.FftType(), startType);
    EXPECT_EQ(audioDisplay.Property(DisplayKind), startType);
    Trigger(QStringLiteral("mOptions(9)"));
    EXPECT_EQ(options.FftType(), 4);
    EXPECT_EQ(audioDisplay.Property(DisplayKind), 4);
}

TEST_F(MenusTest, TheDefaultOnStartupIsTurnedOnAndOff) {
    Start();
    const bool atStart = options.UseDefaultOnStartup();
    for (const bool on : {!atStart, atStart}) {
        Trigger(QStringLiteral("mOptions(12)"));
        EXPECT_EQ(options.UseDefaultOnStartup(), on);
        EXPECT_EQ(IsChecked(QStringLiteral("mOptions(12)")), on);
    }
}

} // namespace
} // namespace kestrune
