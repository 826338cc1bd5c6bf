// A user who presses anything at any time: no sample is lost or heard twice, and the buttons fit the state.
#include "playback/simulated_transport.h"

namespace kestrune {
namespace {

constexpr int thumb = 12;
constexpr int barWidth = 186; // less the thumb

class RandomUseTest : public SimulatedTransport, public testing::WithParamInterface<unsigned> {
protected:
    // --- The place that the next sample must come from ---
    int row = 0;
    qint64 positionBytes = 0;
    qint64 checkedBytes = 0; // of what was heard

    int After(int someRow) const { return someRow % rows.Count() + 1; }

    // Compares what was heard since the last call with what has to follow, over the ends of files.
    void Check() {
        while (checkedBytes < player.heard.size()) {
            while (positionBytes == Content(row).size()) {
                row = After(row);
                positionBytes = 0;
            }
            const qint64 bytes =
                std::min(player.heard.size() - checkedBytes, Content(row).size() - positionBytes);
            ASSERT_TRUE(QByteArrayView(player.heard).sliced(checkedBytes, bytes) ==
                        QByteArrayView(Content(row)).sliced(positionBytes, bytes))
                << "row " << row << " from byte " << positionBytes;
            checkedBytes += bytes;
            positionBytes += bytes;
        }
        // The next files may have started without a sample of theirs being heard.
        for (int i = 0; transport.State().IsPlaying && row != state.LastIndex; ++i) {
            ASSERT_EQ(positionBytes, Content(row).size()) << "row " << row << " was left before its end";
            ASSERT_LE(i, rows.Count());
            row = After(row);
            positionBytes = 0;
        }
    }

    void CheckButtons() const {
        const bool playing = transport.State().IsPlaying;
        const bool paused = lamp == Lamp::Paused;
        EXPECT_EQ(transport.IsButtonEnabled(ButtonPause), playing);
        EXPECT_EQ(transport.IsButtonEnabled(ButtonStop), playing);
        EXPECT_EQ(transport.IsButtonEnabled(ButtonPrevious), playing);
        EXPECT_EQ(transport.IsButtonEnabled(ButtonNext), playing);
        EXPECT_EQ(transport.IsButtonEnabled(ButtonRecord), !playing);
        EXPECT_EQ(transport.IsButtonEnabled(ButtonPlay), !playing || paused);
        EXPECT_EQ(lamp == Lamp::Stopped, !playing);
        EXPECT_EQ(caption, paused ? QStringLiteral("Continue") : QStringLiteral("Pause"));
        EXPECT_EQ(transport.State().IsStopping, !playing);
        if (paused) {
            EXPECT_TRUE(transport.State().IsPaused);
        }
        for (int i = 1; i <= rows.Count(); ++i) {
            ASSERT_EQ(rows.IsBold(i), playing && i == state.LastIndex) << i;
        }
    }

    void LetTimePass(qint64 ms) {
        const qint64 before = player.heard.size();
        player.Advance(ms);
        if (lamp != Lamp::Playing) {
            EXPECT_EQ(player.heard.size(), before) << "sound while nothing plays";
        }
    }
    void Pause() {
        const bool goesOn = lamp == Lamp::Playing && transport.State().IsPaused;
        const bool isPausing = lamp == Lamp::Playing && !transport.State().IsPaused;
        buttons.ImagePlayButton_Click(ButtonPause);
        if (isPausing) {
            EXPECT_EQ(transport.State().PlayPos, positionBytes);
        }
        if (goesOn) {
            // A file that was started during a pause begins anew at the first click.
            positionBytes = transport.State().PlayPos;
        }
    }
    void Seek(int lineWidth) {
        transport.SeekToLine(lineWidth, thumb);
        const qint64 lengthMs = file.GetLengthMs();
        const qint64 targetMs = qRound64(static_cast<double>(lineWidth) * lengthMs / barWidth);
        EXPECT_EQ(transport.State().PlayPos,
                  std::min<qint64>(player.BytesForMs(targetMs), Content(row).size()));
        positionBytes = transport.State().PlayPos;
    }
    void Restarted() {
        row = state.LastIndex;
        positionBytes = 0;
    }
    void Use(std::mt19937& chance) {
        if (!transport.State().IsPlaying) {
            buttons.ImagePlayButton_Click(ButtonPlay);
            Restarted();
            return;
        }
        const int expectedNext = After(state.LastIndex);
        switch (chance() % 6) {
        case 0:
        case 1:
            Pause();
            break;
        case 2:
        case 3:
            Seek(static_cast<int>(chance() % (barWidth + 1)));
            break;
        case 4:
            buttons.ImagePlayButton_Click(ButtonNext);
            EXPECT_EQ(state.LastIndex, expectedNext);
            Restarted();
            break;
        default:
            buttons.ImagePlayButton_Click(ButtonStop);
            break;
        }
    }
};

TEST_P(RandomUseTest, NoSampleIsLostOrHeardTwice) {
    std::mt19937 chance(GetParam());
    for (int i = 0; i < 12; ++i) {
        const qint64 frames = i == 5 ? 0 : 1 + static_cast<qint64>(chance() % 60000);
        ASSERT_NO_FATAL_FAILURE(AddNoise(frames, i % 3 == 0 ? 11025 : 8000, 1 + i % 2));
    }
    state.CurIndex = 1;
    transport.PlayCurrentItem();
    row = 1;
    for (int step = 0; step < 2000; ++step) {
        LetTimePass(static_cast<qint64>(chance() % 1500));
        ASSERT_NO_FATAL_FAILURE(Check()) << "step " << step;
        Use(chance);
        CheckButtons();
        ASSERT_FALSE(HasFailure()) << "step " << step;
    }
    EXPECT_GT(player.heard.size(), 1000000);
}

INSTANTIATE_TEST_SUITE_P(Seeds, RandomUseTest, testing::Values(1U, 2U, 3U, 4U));

} // namespace
} // namespace kestrune
