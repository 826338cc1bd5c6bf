// Which buttons can be pressed, and the modes.
#include "playback/transport_fixture.h"

namespace kestrune {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class EnabledTest : public TransportFixture {};

TEST_F(EnabledTest, BeforeAnythingPlayedOnlyRecordIsOn) {
    EXPECT_THAT(Buttons(), ElementsAre(false, false, false, false, true, false));
}

TEST_F(EnabledTest, WhilePlayingAllButPlayAndRecordAreOn) {
    AddTracks(2);
    Play(1);
    EXPECT_THAT(Buttons(), ElementsAre(true, true, false, true, false, true));
}

TEST_F(EnabledTest, WithOneRowPreviousAndNextStayOff) {
    AddTracks(1);
    Play(1);
    EXPECT_THAT(Buttons(), ElementsAre(false, true, false, true, false, false));
}

TEST_F(EnabledTest, PreviousAndNextFollowTheListWhilePlaying) {
    AddTracks(1);
    Play(1);
    AddTrack(QStringLiteral("b.wav"));
    transport.SetPreNextButton();
    EXPECT_TRUE(transport.IsButtonEnabled(ButtonPrevious));
    EXPECT_TRUE(transport.IsButtonEnabled(ButtonNext));
    rows.Remove(2);
    transport.SetPreNextButton();
    EXPECT_FALSE(transport.IsButtonEnabled(ButtonPrevious));
    EXPECT_FALSE(transport.IsButtonEnabled(ButtonNext));
}

TEST_F(EnabledTest, PreviousAndNextStayOffWhileStopped) {
    AddTracks(3);
    transport.SetPreNextButton();
    EXPECT_FALSE(transport.IsButtonEnabled(ButtonPrevious));
    EXPECT_FALSE(transport.IsButtonEnabled(ButtonNext));
}

TEST_F(EnabledTest, SetButtonOnWhileStoppedLeavesPreviousAndNextOff) {
    AddTracks(3);
    transport.SetButton(true);
    EXPECT_THAT(Buttons(), ElementsAre(false, true, true, true, false, false));
}

TEST_F(EnabledTest, SetButtonOffLeavesRecordOn) {
    AddTracks(3);
    Play(1);
    transport.SetButton(false);
    EXPECT_THAT(Buttons(), ElementsAre(true, false, false, false, true, true));
}

TEST_F(EnabledTest, OneButtonAlone) {
    transport.SetPlayButtonTrueFalse(ButtonStop, true);
    EXPECT_THAT(Buttons(), ElementsAre(false, false, false, true, true, false));
    EXPECT_THAT(log, ElementsAre("Button 3 1"));
}

TEST_F(EnabledTest, AButtonThatDoesNotExist) {
    transport.SetPlayButtonTrueFalse(-1, true);
    transport.SetPlayButtonTrueFalse(transportButtonCount, true);
    EXPECT_THAT(log, IsEmpty());
}

TEST_F(EnabledTest, AClickWithoutACurrentRowTurnsPlayOff) {
    AddTracks(2);
    transport.SetPlayButtonTrueFalse(ButtonPlay, true);
    buttons.ListViewPlaylist_Click(0);
    EXPECT_FALSE(transport.IsButtonEnabled(ButtonPlay));
}

TEST_F(EnabledTest, AClickOnARowWithATextTurnsPlayOn) {
    AddTracks(2);
    buttons.ListViewPlaylist_Click(2);
    EXPECT_TRUE(transport.IsButtonEnabled(ButtonPlay));
}

TEST_F(EnabledTest, AClickOnARowWithoutATextLeavesPlayAsItIs) {
    rows.Append(PlaylistRow{});
    buttons.ListViewPlaylist_Click(1);
    EXPECT_FALSE(transport.IsButtonEnabled(ButtonPlay));
    transport.SetPlayButtonTrueFalse(ButtonPlay, true);
    buttons.ListViewPlaylist_Click(1);
    EXPECT_TRUE(transport.IsButtonEnabled(ButtonPlay));
}

TEST_F(EnabledTest, AClickIntoAnEmptyListLeavesPlayAsItIs) {
    transport.SetPlayButtonTrueFalse(ButtonPlay, true);
    buttons.ListViewPlaylist_Click(0);
    EXPECT_TRUE(transport.IsButtonEnabled(ButtonPlay));
}

TEST_F(EnabledTest, AClickSetsPreviousAndNext) {
    AddTracks(1);
    Play(1);
    AddTrack(QStringLiteral("b.wav"));
    buttons.ListViewPlaylist_Click(0);
    EXPECT_TRUE(transport.IsButtonEnabled(ButtonNext));
    EXPECT_TRUE(transport.IsButtonEnabled(ButtonPrevious));
}

class ModeTest : public TransportFixture, public testing::WithParamInterface<int> {
protected:
    QList<bool> Checked() const {
        return {options.IsModeChecked(PlayMode::Continuous), options.IsModeChecked(PlayMode::Shuffle),
                options.IsModeChecked(PlayMode::Repeat)};
    }
    static QList<bool> Only(int mode) {
        QList<bool> only = {false, false, false};
        only[mode] = true;
        return only;
    }
};

TEST_P(ModeTest, TheButtonChecksItsEntryAlone) {
    const int mode = GetParam();
    options.ImageRepeatModeBut_Click((mode + 1) % 3);
    options.ImageRepeatModeBut_Click(mode);
    EXPECT_EQ(Checked(), Only(mode));
}

TEST_P(ModeTest, TheMenuEntryChecksItselfAlone) {
    const int mode = GetParam();
    options.mOptions_Click(3 + (mode + 1) % 3);
    options.mOptions_Click(3 + mode);
    EXPECT_EQ(Checked(), Only(mode));
}

TEST_P(ModeTest, TheButtonOfTheCheckedModeChangesNothing) {
    const int mode = GetParam();
    options.mOptions_Click(3 + mode);
    int changes = 0;
    QObject::connect(&options, &Options::Changed, &transport, [&changes] { ++changes; });
    options.ImageRepeatModeBut_Click(mode);
    EXPECT_EQ(changes, 0);
    EXPECT_EQ(Checked(), Only(mode));
}

INSTANTIATE_TEST_SUITE_P(Modes, ModeTest, testing::Values(0, 1, 2));

} // namespace
} // namespace kestrune
