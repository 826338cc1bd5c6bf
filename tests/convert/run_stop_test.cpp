// Stop and Start pressed while a run goes on.
#include "converter_fixture.h"

namespace kestrune::convert {
namespace {

class StopTest : public ConverterTest {
protected:
    StopTest() { Open(); }
    // Does something at the end of the given block, counted from 1 over the whole run.
    void AtBlock(int block, std::function<void()> action) {
        actions[block] = std::move(action);
        pending.onRun = [this] {
            const auto found = actions.find(pending.runs);
            if (found != actions.end()) {
                found->second();
            }
        };
    }
    int Written(const char* name) const {
        return static_cast<int>(output.written.value(out.Path(QString::fromLatin1(name))).size());
    }
    ConversionRun& run = converter.Run;
    std::map<int, std::function<void()>> actions;
};

TEST_F(StopTest, AsksWhetherToSkipTheFile) {
    AddJob(QStringLiteral("a.wav"), 1000);
    Tick(OutputBox::chMP3);
    AtBlock(1, [this] { Stop(); });
    Start();
    EXPECT_THAT(Questions(), ElementsAre("Do you want to skip current file?"));
    EXPECT_EQ(prompts.questions[0].icon, PromptIcon::Warning);
}

TEST_F(StopTest, AnsweredNoStillEndsTheOutput) {
    AddJob(QStringLiteral("a.wav"), 1000);
    AddJob(QStringLiteral("b.wav"), 1000);
    Tick(OutputBox::chMP3);
    Tick(OutputBox::chVOX);
    Tick(OutputBox::chOGG);
    prompts.answers << false;
    AtBlock(2, [this] { Stop(); });
    Start();
    EXPECT_THAT(Questions(), ElementsAre("Do you want to skip current file?"));
    // The rest of the file's stages write nothing, and count.
    EXPECT_THAT(Created(), ElementsAre("a.mp3", "b.mp3", "b.vox", "b.ogg"));
    EXPECT_EQ(Written("a.mp3"), 400);
    EXPECT_EQ(Written("b.mp3"), 1000);
    EXPECT_EQ(Status(), "6 Files Created/2 Files Converted(Total 2)");
    EXPECT_THAT(Messages(), ElementsAre("Done!"));
}

TEST_F(StopTest, TheRestOfTheStagesShowTheirArrowsAndLogNothing) {
    AddJob(QStringLiteral("a.wav"), 1000);
    Tick(OutputBox::chMP3);
    Tick(OutputBox::chVOX);
    Tick(OutputBox::chULAW);
    prompts.answers << false;
    AtBlock(1, [this] { Stop(); });
    Texts arrows;
    QObject::connect(&run, &ConversionRun::Label11Shown,
                     [&](const QString& text) { arrows.push_back(Utf8(text)); });
    Start();
    EXPECT_THAT(arrows, ElementsAre("--> MP3", "--> VOX", "--> A-LAW"));
    EXPECT_THAT(Log(), ElementsAre("Start ConvertToMP3", "Stop ConvertToMP3"));
    EXPECT_EQ(converter.State.FilesCreated, 3);
}

TEST_F(StopTest, ThePartialOutputIsClosedUnderItsName) {
    AddJob(QStringLiteral("a.wav"), 1000);
    Tick(OutputBox::chMP3);
    AtBlock(1, [this] { Stop(); });
    Start();
    EXPECT_EQ(Written("a.mp3"), 200);
    EXPECT_THAT(ToTexts(output.calls),
                ElementsAre("#Start ConvertToMP3", "Create " + Utf8(out.Path()) + "/a.mp3",
                            "SetSourceFormat 100 2", "WriteBlock 200", "CloseFile", "#Stop ConvertToMP3"));
    EXPECT_FLOAT_EQ(run.ProgressConvert(), 0.001F);
}

TEST_F(StopTest, WithOneCheckedRowThereIsNoSecondQuestion) {
    AddJob(QStringLiteral("a.wav"), 1000);
    AddJob(QStringLiteral("b.wav"), 1000);
    converter.Rows.SetChecked(2, false);
    Tick(OutputBox::chMP3);
    AtBlock(1, [this] { Stop(); });
    Start();
    EXPECT_THAT(Questions(), ElementsAre("Do you want to skip current file?"));
}

TEST_F(StopTest, TheCheckedRowsAreCountedWhenStopIsPressed) {
    AddJob(QStringLiteral("a.wav"), 1000);
    AddJob(QStringLiteral("b.wav"), 1000);
    Tick(OutputBox::chMP3);
    AtBlock(1, [this] {
        converter.Rows.SetChecked(2, false);
        Stop();
    });
    Start();
    EXPECT_THAT(Questions(), ElementsAre("Do you want to skip current file?"));
}

TEST_F(StopTest, YesAndYesGoOnWithTheNextFile) {
    AddJob(QStringLiteral("a.wav"), 1000);
    AddJob(QStringLiteral("b.wav"), 1000);
    Tick(OutputBox::chMP3);
    prompts.answers << true << true;
    AtBlock(1, [this] { Stop(); });
    Start();
    EXPECT_THAT(Questions(),
                ElementsAre("Do you want to skip current file?", "Do you want to convert the next file?"));
    EXPECT_EQ(prompts.questions[1].icon, PromptIcon::Warning);
    EXPECT_EQ(Written("a.mp3"), 200);
    EXPECT_EQ(Written("b.mp3"), 1000);
    EXPECT_EQ(Status(), "2 Files Created/2 Files Converted(Total 2)");
}

TEST_F(StopTest, YesAndNoEndTheRunBehindTheStage) {
    AddJob(QStringLiteral("a.wav"), 1000);
    AddJob(QStringLiteral("b.wav"), 1000);
    Tick(OutputBox::chMP3);
    Tick(OutputBox::chOGG);
    prompts.answers << true << false;
    bool wasStopHidden = false;
    AtBlock(1, [&] {
        Stop();
        EXPECT_TRUE(converter.State.StopBatch);
        wasStopHidden = run.IsImage1Visible() && !run.IsImage2Visible();
    });
    Start();
    EXPECT_TRUE(wasStopHidden);
    EXPECT_THAT(Created(), ElementsAre("a.mp3"));
    EXPECT_EQ(Status(), "1 File Created/1 File Converted(Total 2)");
    EXPECT_EQ(run.ProgressBar1(), 1);
    EXPECT_THAT(Messages(), ElementsAre("Done!"));
    EXPECT_FALSE(converter.State.StopBatch);
}

TEST_F(StopTest, NoToTheFirstQuestionAsksNoSecondAndStopsNoBatch) {
    AddJob(QStringLiteral("a.wav"), 1000);
    AddJob(QStringLiteral("b.wav"), 1000);
    Tick(OutputBox::chMP3);
    prompts.answers << false << false;
    AtBlock(1, [this] {
        Stop();
        EXPECT_FALSE(converter.State.StopBatch);
    });
    Start();
    EXPECT_THAT(Created(), ElementsAre("a.mp3", "b.mp3"));
    EXPECT_EQ(prompts.answers.size(), 1);
}

// The flags are not looked at between the last two stages.
TEST_F(StopTest, BehindG721TheLastStageStillCounts) {
    AddJob(QStringLiteral("a.wav"), 1000);
    AddJob(QStringLiteral("b.wav"), 1000);
    Tick(OutputBox::chG721);
    Tick(OutputBox::chULAW);
    prompts.answers << true << false;
    AtBlock(1, [this] { Stop(); });
    Start();
    EXPECT_THAT(Created(), ElementsAre("a.g721"));
    EXPECT_EQ(Utf8(run.Label11()), "--> A-LAW");
    EXPECT_EQ(Status(), "2 Files Created/1 File Converted(Total 2)");
}

TEST_F(StopTest, BehindG723TheLastStagesDoNotCount) {
    AddJob(QStringLiteral("a.wav"), 1000);
    AddJob(QStringLiteral("b.wav"), 1000);
    Tick(OutputBox::chG723);
    Tick(OutputBox::chULAW);
    prompts.answers << true << false;
    AtBlock(1, [this] { Stop(); });
    Start();
    EXPECT_EQ(Status(), "1 File Created/1 File Converted(Total 2)");
}

TEST_F(StopTest, TheControlsAreIdleForTheRestOfTheRun) {
    AddJob(QStringLiteral("a.wav"), 400);
    AddJob(QStringLiteral("b.wav"), 400);
    Tick(OutputBox::chMP3);
    AtBlock(1, [this] {
        Stop();
        EXPECT_FALSE(converter.State.Converting);
        EXPECT_FALSE(converter.State.SkipCurrent);
        EXPECT_FLOAT_EQ(run.ProgressConvert(), 0);
    });
    bool wasSeen = false;
    AtBlock(2, [&] {
        wasSeen = true;
        EXPECT_TRUE(converter.State.Converting);
        EXPECT_TRUE(run.IsImage1Visible());
        EXPECT_FALSE(run.IsImage2Visible());
        EXPECT_TRUE(run.IsImageQuitEnabled());
        EXPECT_TRUE(run.ArePathsEnabled());
        EXPECT_FALSE(run.IsLabel11Visible());
        EXPECT_TRUE(run.IsRunning());
    });
    Start();
    EXPECT_TRUE(wasSeen);
}

TEST_F(StopTest, ARowIsNotConvertedWhileAFlagStands) {
    AddJob(QStringLiteral("a.wav"), 400);
    Tick(OutputBox::chMP3);
    const auto convert = [this](bool skip, bool stop) {
        converter.State.SkipCurrent = skip;
        converter.State.StopBatch = stop;
        converter.State.Converting = true;
        run.Converter(QStringLiteral("a.wav"), 1);
        EXPECT_FALSE(converter.State.SkipCurrent);
        EXPECT_EQ(converter.State.StopBatch, stop);
        EXPECT_FALSE(converter.State.Converting);
    };
    convert(true, false);
    EXPECT_FLOAT_EQ(run.ProgressConvert(), 0);
    convert(false, true);
    EXPECT_THAT(Created(), IsEmpty());
    convert(false, false);
    EXPECT_THAT(Created(), ElementsAre("a.mp3"));
}

TEST_F(StopTest, AtTheLastBlockOfAFileTakesNoWayBack) {
    AddJob(QStringLiteral("a.wav"), 200);
    Tick(OutputBox::chMP3);
    AtBlock(1, [this] { Stop(); });
    Start();
    EXPECT_EQ(Written("a.mp3"), 200);
    EXPECT_THAT(Log(), ElementsAre("Start ConvertToMP3", "Stop ConvertToMP3"));
}

// --- Start during a run: it shows again after a Stop. ---

class StartDuringRunTest : public StopTest {
protected:
    StartDuringRunTest() {
        AddJob(QStringLiteral("a.wav"), 400);
        AddJob(QStringLiteral("b.wav"), 1000);
        AddJob(QStringLiteral("c.wav"), 400);
        Tick(OutputBox::chMP3);
        AtBlock(1, [this] { Stop(); }); // answered Yes and Yes
        prompts.answers << true << true;
    }
};

TEST_F(StartDuringRunTest, AsksTheSameQuestionsAndSaysDone) {
    prompts.answers << true << true;
    AtBlock(2, [this] {
        prompts.questions.clear();
        Start();
        EXPECT_THAT(Messages(), ElementsAre("Done!"));
        EXPECT_FALSE(converter.State.Converting);
        EXPECT_TRUE(run.IsRunning());
    });
    Start();
    EXPECT_THAT(Questions(),
                ElementsAre("Do you want to skip current file?", "Do you want to convert the next file?"));
    EXPECT_THAT(Messages(), ElementsAre("Done!", "Done!"));
    EXPECT_EQ(Written("b.mp3"), 200);
    EXPECT_EQ(Written("c.mp3"), 400);
    EXPECT_EQ(Status(), "3 Files Created/3 Files Converted(Total 3)");
}

TEST_F(StartDuringRunTest, NoToTheNextFileDoesNotEndTheRun) {
    prompts.answers << true << false;
    AtBlock(2, [this] {
        Start();
        EXPECT_FALSE(converter.State.StopBatch);
    });
    Start();
    EXPECT_EQ(Written("b.mp3"), 200);
    EXPECT_EQ(Written("c.mp3"), 400);
    EXPECT_THAT(Messages(), ElementsAre("Done!", "Done!"));
}

TEST_F(StartDuringRunTest, NoToTheFirstQuestionStillEndsTheOutput) {
    prompts.answers << false;
    AtBlock(2, [this] {
        prompts.questions.clear();
        Start();
    });
    Start();
    EXPECT_THAT(Questions(), ElementsAre("Do you want to skip current file?"));
    EXPECT_EQ(Written("b.mp3"), 200);
    EXPECT_EQ(Written("c.mp3"), 400);
    EXPECT_THAT(Messages(), ElementsAre("Done!", "Done!"));
}

TEST_F(StartDuringRunTest, AsksForTheNextFileWithoutCountingRows) {
    prompts.answers << true << true;
    AtBlock(2, [this] {
        converter.Rows.SetAllChecked(false);
        prompts.questions.clear();
        Start();
    });
    Start();
    EXPECT_EQ(prompts.questions.size(), 2);
}

// Stop and Start in the same events: nothing is converting between them, so that Start begins a run of its
// own.
TEST_F(StopTest, StartRightBehindStopIsARunWithinTheRun) {
    AddJob(QStringLiteral("a.wav"), 1000);
    AddJob(QStringLiteral("b.wav"), 400);
    Tick(OutputBox::chMP3);
    prompts.answers << true << true;
    AtBlock(1, [this] {
        Stop();
        Start();
        EXPECT_EQ(Written("a.mp3"), 1000);
        EXPECT_EQ(Written("b.mp3"), 400);
        EXPECT_TRUE(run.IsRunning());
    });
    int ends = 0;
    QObject::connect(&run, &ConversionRun::RunEnded, [&] { ++ends; });
    Start();
    EXPECT_EQ(ends, 1);
    EXPECT_THAT(Created(), ElementsAre("a.mp3", "a.mp3", "b.mp3", "b.mp3"));
    EXPECT_THAT(Messages(), ElementsAre("Done!", "Done!"));
    EXPECT_FALSE(converter.State.Converting);
}

TEST_F(StopTest, StartForgetsThatTheNextFileWasRefused) {
    AddJob(QStringLiteral("a.wav"), 1000);
    AddJob(QStringLiteral("b.wav"), 400);
    Tick(OutputBox::chMP3);
    prompts.answers << true << false;
    AtBlock(1, [this] {
        Stop();
        EXPECT_TRUE(converter.State.StopBatch);
        Start();
        EXPECT_EQ(Written("a.mp3"), 1000);
        EXPECT_EQ(Written("b.mp3"), 400);
    });
    Start();
    EXPECT_THAT(Created(), ElementsAre("a.mp3", "a.mp3", "b.mp3", "b.mp3"));
}

TEST_F(StopTest, AbandonEndsAllWithoutAWord) {
    AddJob(QStringLiteral("a.wav"), 1000);
    AddJob(QStringLiteral("b.wav"), 1000);
    Tick(OutputBox::chMP3);
    Tick(OutputBox::chOGG);
    AtBlock(2, [this] { run.Abandon(); });
    int ends = 0;
    QObject::connect(&run, &ConversionRun::RunEnded, [&] { ++ends; });
    Start();
    EXPECT_EQ(ends, 1);
    EXPECT_THAT(Created(), ElementsAre("a.mp3"));
    EXPECT_EQ(Written("a.mp3"), 400);
    EXPECT_THAT(Messages(), IsEmpty());
    EXPECT_THAT(Questions(), IsEmpty());
    Start();
    EXPECT_THAT(Created(), ElementsAre("a.mp3"));
}

} // namespace
} // namespace kestrune::convert
