// Long lists and empty files, played to their end.
#include "playback/simulated_transport.h"

namespace kestrune {
namespace {

class LongListTest : public SimulatedTransport {
protected:
    // Plays from row 1 until a row is started for the given time. What was heard up to there is in `heard`.
    void PlayUntilStart(int starts, qint64 limitMs) {
        int started = 0;
        QObject::connect(&transport, &Transport::NameShown, &transport, [&](const QString& /*name*/) {
            if (++started == starts) {
                heard = player.heard;
            }
        });
        state.CurIndex = 1;
        transport.PlayCurrentItem();
        while (started < starts && player.clockMs < limitMs) {
            player.Advance(100);
        }
        transport.StopPlay();
        QObject::disconnect(&transport, &Transport::NameShown, &transport, nullptr);
        ASSERT_GE(started, starts);
    }
    QByteArray AllContents() const {
        QByteArray all;
        for (const QByteArray& content : contents) {
            all += content;
        }
        return all;
    }

    QByteArray heard;
};

TEST_F(LongListTest, AThousandFilesAreHeardWholeAndInOrder) {
    constexpr int files = 1000;
    std::mt19937 chance(7);
    for (int i = 0; i < files; ++i) {
        const int channels = 1 + static_cast<int>(chance() % 2);
        const int rateHz = chance() % 2 == 0 ? 8000 : 11025;
        ASSERT_NO_FATAL_FAILURE(AddNoise(1 + static_cast<qint64>(chance() % 30000), rateHz, channels));
    }
    ASSERT_NO_FATAL_FAILURE(PlayUntilStart(files + 1, 24LL * 3600 * 1000));
    EXPECT_EQ(state.LastIndex, 1);
    const QByteArray expected = AllContents();
    EXPECT_EQ(heard.size(), expected.size());
    EXPECT_TRUE(heard == expected);
}

TEST_F(LongListTest, BlocksOfTwoSecondsJoinWithoutAGap) {
    for (const qint64 frames : {15999, 16000, 16001, 31999, 32000, 32001, 64000}) {
        ASSERT_NO_FATAL_FAILURE(AddNoise(frames, 8000, 1));
    }
    ASSERT_NO_FATAL_FAILURE(PlayUntilStart(8, 60000));
    EXPECT_TRUE(heard == AllContents());
}

TEST_F(LongListTest, EmptyFilesAreSteppedOver) {
    for (const qint64 frames : {100, 0, 0, 300, 0}) {
        ASSERT_NO_FATAL_FAILURE(AddNoise(frames, 8000, 1));
    }
    ASSERT_NO_FATAL_FAILURE(PlayUntilStart(6, 60000));
    EXPECT_TRUE(heard == AllContents());
}

TEST_F(LongListTest, AListOfEmptyFilesGoesRoundInMeasuredTime) {
    for (int i = 0; i < 3; ++i) {
        ASSERT_NO_FATAL_FAILURE(AddNoise(0, 8000, 1));
    }
    ASSERT_NO_FATAL_FAILURE(PlayUntilStart(30, 60000));
    EXPECT_GE(player.clockMs, 29 * 40) << "a list without a sample must not keep the processor busy";
    EXPECT_TRUE(heard.isEmpty());
}

TEST_F(LongListTest, ASeekToTheEndGoesToTheNextFile) {
    ASSERT_NO_FATAL_FAILURE(AddNoise(80000, 8000, 1));
    ASSERT_NO_FATAL_FAILURE(AddNoise(80000, 8000, 1));
    state.CurIndex = 1;
    transport.PlayCurrentItem();
    player.Advance(1000);
    transport.SeekToLine(186, 12);
    player.Advance(1000);
    EXPECT_EQ(state.LastIndex, 2);
    EXPECT_TRUE(transport.State().IsPlaying);
}

TEST_F(LongListTest, AResumeAtTheEndGoesToTheNextFile) {
    ASSERT_NO_FATAL_FAILURE(AddNoise(80000, 8000, 1));
    ASSERT_NO_FATAL_FAILURE(AddNoise(80000, 8000, 1));
    state.CurIndex = 1;
    transport.PlayCurrentItem();
    player.Advance(1000);
    transport.PauseContinue();
    transport.SeekToLine(186, 12);
    player.Advance(1000);
    EXPECT_EQ(state.LastIndex, 1) << "nothing may go on during a pause";
    transport.PauseContinue();
    player.Advance(1000);
    EXPECT_EQ(state.LastIndex, 2);
}

TEST_F(LongListTest, APauseInAnEmptyFileIsResumed) {
    ASSERT_NO_FATAL_FAILURE(AddNoise(0, 8000, 1));
    ASSERT_NO_FATAL_FAILURE(AddNoise(80000, 8000, 1));
    state.CurIndex = 1;
    transport.PlayCurrentItem();
    transport.PauseContinue();
    player.Advance(1000);
    EXPECT_EQ(state.LastIndex, 1);
    transport.PauseContinue();
    player.Advance(1000);
    EXPECT_EQ(state.LastIndex, 2);
}

TEST_F(LongListTest, RepeatPlaysOneRowAgainAndAgain) {
    ASSERT_NO_FATAL_FAILURE(AddNoise(9000, 8000, 2));
    ASSERT_NO_FATAL_FAILURE(AddNoise(9000, 8000, 2));
    options.mOptions_Click(5);
    ASSERT_NO_FATAL_FAILURE(PlayUntilStart(5, 60000));
    EXPECT_TRUE(heard == Content(1) + Content(1) + Content(1) + Content(1));
}

TEST_F(LongListTest, AWindowThatIsBusyForOneAndAHalfSecondsLosesNothing) {
    ASSERT_NO_FATAL_FAILURE(AddNoise(80000, 8000, 1));
    state.CurIndex = 1;
    transport.PlayCurrentItem();
    while (player.clockMs < 9000) {
        player.deliversEvents = true;
        player.Advance(500);
        player.deliversEvents = false;
        player.Advance(1500);
    }
    EXPECT_EQ(player.silentMs, 0);
    EXPECT_TRUE(player.heard == Content(1).left(player.heard.size()));
}

TEST_F(LongListTest, ADeviceThatVanishesEndsPlayback) {
    ASSERT_NO_FATAL_FAILURE(AddNoise(80000, 8000, 1));
    ASSERT_NO_FATAL_FAILURE(AddNoise(80000, 8000, 1));
    state.CurIndex = 1;
    transport.PlayCurrentItem();
    player.Advance(1000);
    player.Vanish();
    player.Advance(100);
    EXPECT_FALSE(transport.State().IsPlaying);
    EXPECT_EQ(lamp, Lamp::Stopped);
    EXPECT_TRUE(transport.IsButtonEnabled(ButtonPlay));
}

TEST_F(LongListTest, ADeviceThatVanishesDuringAPauseEndsPlaybackAtTheResume) {
    ASSERT_NO_FATAL_FAILURE(AddNoise(80000, 8000, 1));
    ASSERT_NO_FATAL_FAILURE(AddNoise(80000, 8000, 1));
    state.CurIndex = 1;
    transport.PlayCurrentItem();
    player.Advance(1000);
    buttons.Pause();
    player.Vanish();
    const qsizetype heardBytes = player.heard.size();
    buttons.Pause();
    player.Advance(5000);
    EXPECT_FALSE(transport.State().IsPlaying);
    EXPECT_EQ(lamp, Lamp::Stopped);
    EXPECT_EQ(caption, QStringLiteral("Pause"));
    EXPECT_TRUE(transport.IsButtonEnabled(ButtonPlay));
    EXPECT_FALSE(transport.IsButtonEnabled(ButtonPause));
    EXPECT_EQ(player.heard.size(), heardBytes);
    player.Return();
    buttons.Play();
    player.Advance(1000);
    EXPECT_TRUE(transport.State().IsPlaying);
    EXPECT_GT(player.heard.size(), heardBytes);
}

} // namespace
} // namespace kestrune
