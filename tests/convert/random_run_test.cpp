// A run in which anything may be pressed at any block: it always comes to an end, with everything at rest.
#include "convert_folders.h"
#include "converter_fixture.h"

#include <random>

namespace kestrune::convert {
namespace {

class RandomRunTest : public ConverterTest {
protected:
    RandomRunTest() {
        Open();
        QObject::connect(&converter.Run, &ConversionRun::ProgressConvertShown, [](float value) {
            EXPECT_GE(value, 0.0F);
            EXPECT_LE(value, 100.0F);
        });
        QObject::connect(&converter.Run, &ConversionRun::ProgressBar1Shown, [](int value, int maximum) {
            EXPECT_GE(value, 0);
            EXPECT_LE(value, maximum);
        });
        pending.onRun = [this] {
            for (int i = Number(3); i > 0; --i) {
                DoAnything();
            }
        };
    }
    int Number(int below) { return static_cast<int>(generator() % static_cast<unsigned>(below)); }
    void DoAnything() {
        const int row = 1 + Number(5);
        switch (Number(24)) {
        case 0:
        case 1:
            prompts.answers = {Number(2) == 0, Number(2) == 0};
            return Stop();
        case 2:
            return Press();
        case 3:
            return converter.Rows.SetChecked(row, Number(2) == 0);
        case 4:
            return converter.Jobs.ListViewInput_Click(row);
        case 5:
            return converter.Jobs.ListViewInput_DblClick();
        case 6:
            return converter.Settings.opFreq_Click(Number(8));
        case 7:
            return converter.Settings.OutputBox_Click(Number(12), Number(2) == 0);
        case 8:
            return converter.Jobs.ImageAllClear_Click(Number(2));
        case 9:
            return converter.Jobs.ListViewInput_Drop({music.Path(QStringLiteral("a.wav"))});
        case 10:
            return converter.Rows.Clear();
        case 11:
            return converter.Jobs.txtInputFile_Change(Number(2) == 0 ? music.Path() : out.Path());
        case 12:
            QFile::remove(music.Path(QStringLiteral("c.ogg")));
            return;
        default:
            return;
        }
    }
    // Runs within runs are few, or there would be no end of them.
    void Press() {
        if (presses < 5) {
            ++presses;
            prompts.answers = {Number(2) == 0, Number(2) == 0};
            Start();
        }
    }
    void RunAll(unsigned seed) {
        generator.seed(seed);
        presses = 0;
        converter.Jobs.TextOutPath_Change(out.Path());
        converter.Rows.Clear();
        for (const char* name : {"a.wav", "b.mp3", "c.ogg", "nopoint"}) {
            AddJob(QString::fromLatin1(name), 200 * Number(6));
        }
        for (int i = 0; i < outputBoxCount; ++i) {
            converter.Settings.OutputBox_Click(i, Number(3) == 0);
        }
        Start();
    }
    std::mt19937 generator;
    int presses = 0;
};

TEST_F(RandomRunTest, EndsWithEverythingAtRest) {
    for (unsigned seed = 1; seed <= 100; ++seed) {
        SCOPED_TRACE(seed);
        RunAll(seed);
        EXPECT_FALSE(converter.Run.IsRunning());
        EXPECT_FALSE(converter.Run.IsPointerBusy());
        EXPECT_TRUE(converter.Run.IsImage1Visible());
        EXPECT_FALSE(converter.Run.IsImage2Visible());
        EXPECT_TRUE(converter.Run.IsImageQuitEnabled());
        EXPECT_FALSE(converter.State.Converting);
        EXPECT_FALSE(converter.State.StopBatch);
        EXPECT_FALSE(converter.State.SkipCurrent);
        EXPECT_LT(output.GetFormatId(), 0);
        EXPECT_TRUE(AllEntries(out.Path()).isEmpty());
        ASSERT_FALSE(HasFailure());
        Forget();
    }
    EXPECT_GT(prompts.questions.size(), 100);
    EXPECT_GT(prompts.messages.size(), 100);
}

} // namespace
} // namespace kestrune::convert
