// A run from Start to its end, without a Stop.
#include "convert_folders.h"
#include "converter_fixture.h"

#include <cmath>

namespace kestrune::convert {
namespace {

class RunTest : public ConverterTest {
protected:
    RunTest() { Open(); }
    ConversionRun& run = converter.Run;
};

TEST_F(RunTest, WithoutACheckedRowThereIsNone) {
    AddJob(QStringLiteral("a.wav"));
    converter.Rows.SetAllChecked(false);
    Start();
    EXPECT_THAT(Messages(), ElementsAre("No file selected!"));
    EXPECT_EQ(prompts.messages[0].icon, PromptIcon::Warning);
    EXPECT_EQ(Status(), "");
    EXPECT_FALSE(run.IsRunning());
}

TEST_F(RunTest, WithoutAnOutputFolderThereIsNone) {
    AddJob(QStringLiteral("a.wav"));
    const std::string storedBefore = rules::Content(ConPath());
    converter.Jobs.TextOutPath_Change(out.Path(QStringLiteral("gone")));
    Start();
    converter.Jobs.TextOutPath_Change(QString());
    Start();
    EXPECT_THAT(Messages(), ElementsAre("Invalid output directory!", "Invalid output directory!"));
    EXPECT_EQ(prompts.messages[0].icon, PromptIcon::Warning);
    EXPECT_EQ(rules::Content(ConPath()), storedBefore);
    EXPECT_TRUE(run.IsImage1Visible());
}

TEST_F(RunTest, StoresThePaths) {
    AddJob(QStringLiteral("a.wav"));
    Start();
    EXPECT_NE(rules::Content(ConPath()).find(Utf8(out.Path())), std::string::npos);
}

TEST_F(RunTest, LeavesNothingInAFolderThatItDidNotConvertTo) {
    AddJob(QStringLiteral("a.wav"));
    Start();
    EXPECT_TRUE(AllEntries(out.Path()).isEmpty());
    EXPECT_THAT(Messages(), ElementsAre("Done!"));
    EXPECT_EQ(prompts.messages[0].icon, PromptIcon::Warning);
}

TEST_F(RunTest, WithoutAFormatCountsTheRowsAndNoStage) {
    AddJob(QStringLiteral("a.wav"));
    AddJob(QStringLiteral("b.wav"));
    Start();
    EXPECT_EQ(converter.State.FilesConverted, 2);
    EXPECT_EQ(converter.State.FilesCreated, 0);
    EXPECT_EQ(converter.State.FilesTotal, 2);
    EXPECT_EQ(Status(), "0 File Created/2 Files Converted(Total 2)");
    EXPECT_THAT(Messages(), ElementsAre("Done!"));
    EXPECT_TRUE(output.calls.isEmpty());
}

TEST_F(RunTest, WritesEachTickedFormatOfEachCheckedRowInTheOrderOfTheStages) {
    AddJob(QStringLiteral("a.wav"));
    AddJob(QStringLiteral("skipped.wav"));
    AddJob(QStringLiteral("b.wav"));
    converter.Rows.SetChecked(2, false);
    for (int i = 0; i < outputBoxCount; ++i) {
        Tick(static_cast<OutputBox>(i));
    }
    prompts.filesToChoose << QStringList(QStringLiteral("/t/x.wav"));
    converter.Settings.ChooseTemplate();
    Start();
    EXPECT_THAT(Created(),
                ElementsAre("a_ACM.wav", "a_39.wma", "a.mp3", "a_ADPCM.wav", "a_DSP.wav", "a.mp2", "a.vox",
                            "a.ogg", "a_GSM.wav", "a.g726", "a.g723", "a.g721", "a_ULAW.raw", "b_ACM.wav",
                            "b_39.wma", "b.mp3", "b_ADPCM.wav", "b_DSP.wav", "b.mp2", "b.vox", "b.ogg",
                            "b_GSM.wav", "b.g726", "b.g723", "b.g721", "b_ULAW.raw"));
    EXPECT_EQ(converter.State.FilesCreated, 26);
    EXPECT_EQ(Status(), "26 Files Created/2 Files Converted(Total 2)");
}

TEST_F(RunTest, TheTemplateStageIsOnFromTheFirstTemplateOn) {
    AddJob(QStringLiteral("a.wav"));
    prompts.filesToChoose << QStringList(QStringLiteral("/t/x.wav"));
    converter.Settings.ChooseTemplate();
    converter.Settings.ChooseTemplate(); // cancelled
    Start();
    EXPECT_THAT(Created(), ElementsAre("a_ACM.wav"));
}

TEST_F(RunTest, CopiesTheSamples) {
    const QString path = AddJob(QStringLiteral("a.wav"), 1000);
    Tick(OutputBox::chOGG);
    Start();
    EXPECT_EQ(output.written.value(out.Path(QStringLiteral("a.ogg"))), input.files.value(path).pcm);
    EXPECT_EQ(pending.runs, 5);
}

TEST_F(RunTest, OnlyTheLastPointPartsTheName) {
    AddJob(QStringLiteral("song.x.mp3"));
    Tick(OutputBox::chOGG);
    Start();
    EXPECT_THAT(Created(), ElementsAre("song.x.ogg"));
}

TEST_F(RunTest, WmaIsNamedByItsProfile) {
    AddJob(QStringLiteral("a.wav"));
    Tick(OutputBox::chWMA);
    Start();
    EXPECT_THAT(Created(), ElementsAre("a_39.wma"));
}

TEST_F(RunTest, FilesThatDifferInTheirEndingAloneWriteTheSameNames) {
    AddJob(QStringLiteral("a.wav"), 300);
    const QString later = AddJob(QStringLiteral("a.mp3"), 400);
    Tick(OutputBox::chOGG);
    Start();
    EXPECT_THAT(Created(), ElementsAre("a.ogg", "a.ogg"));
    EXPECT_EQ(output.written.value(out.Path(QStringLiteral("a.ogg"))), input.files.value(later).pcm);
    EXPECT_THAT(Messages(), ElementsAre("Done!"));
}

TEST_F(RunTest, AFileThatHasDisappearedIsToldOfAndCounts) {
    const QString gone = AddJob(QStringLiteral("gone.wav"));
    AddJob(QStringLiteral("a.wav"));
    QFile::remove(gone);
    Tick(OutputBox::chOGG);
    Start();
    EXPECT_THAT(Messages(), ElementsAre("Invalid input file name: " + Utf8(gone), "Done!"));
    EXPECT_EQ(prompts.messages[0].icon, PromptIcon::Critical);
    EXPECT_THAT(Created(), ElementsAre("a.ogg"));
    EXPECT_EQ(converter.State.FilesConverted, 2);
    EXPECT_EQ(converter.State.FilesCreated, 1);
}

TEST_F(RunTest, ANameWithoutAPointIsRefusedTheSameWay) {
    const QString path = AddJob(QStringLiteral("song"));
    Tick(OutputBox::chOGG);
    Start();
    EXPECT_THAT(Messages(), ElementsAre("Invalid input file name: " + Utf8(path), "Done!"));
    EXPECT_THAT(Created(), IsEmpty());
    EXPECT_EQ(Status(), "0 File Created/1 File Converted(Total 1)");
}

TEST_F(RunTest, StagesThatWriteNothingCountAsCreated) {
    const QString path = AddJob(QStringLiteral("a.wav"));
    input.files[path].formatId = -1;
    Tick(OutputBox::chOGG);
    Tick(OutputBox::chVOX);
    Start();
    EXPECT_THAT(Created(), IsEmpty());
    EXPECT_EQ(converter.State.FilesCreated, 2);
    EXPECT_THAT(Log(), ElementsAre("Start ConvertToVOX", "Stop ConvertToVOX", "Start ConvertVOXtoPCM",
                                   "Start ConvertToOgg", "Stop ConvertToOgg", "Start ConvertOggtoPCM"));
    EXPECT_THAT(Messages(), ElementsAre("Done!"));
}

TEST_F(RunTest, WritesThatFailArePassedOver) {
    AddJob(QStringLiteral("a.wav"), 1000);
    output.writesFail = true;
    Tick(OutputBox::chOGG);
    Start();
    EXPECT_EQ(output.calls.count(QStringLiteral("WriteBlock 200")), 5);
    EXPECT_THAT(Messages(), ElementsAre("Done!"));
}

TEST_F(RunTest, ShowsTheCurrentFileAndTheArrowOfItsStage) {
    AddJob(QStringLiteral("a.wav"));
    Tick(OutputBox::chMP3);
    std::string file;
    std::string arrow;
    pending.onRun = [&] {
        file = Utf8(run.Label10(0));
        arrow = Utf8(run.Label11());
        EXPECT_TRUE(run.IsLabel11Visible());
    };
    Start();
    EXPECT_EQ(file, "Current File: a.wav");
    EXPECT_EQ(arrow, "--> MP3");
    EXPECT_FALSE(run.IsLabel11Visible());
}

TEST_F(RunTest, SwitchesTheControlsToRunningAndBack) {
    AddJob(QStringLiteral("a.wav"));
    Tick(OutputBox::chMP3);
    EXPECT_TRUE(run.IsImage1Visible());
    EXPECT_FALSE(run.IsImage2Visible());
    EXPECT_TRUE(run.IsImageQuitEnabled());
    EXPECT_TRUE(run.ArePathsEnabled());
    EXPECT_FALSE(run.IsLabel11Visible());
    bool wasLookedAt = false;
    pending.onRun = [&] {
        wasLookedAt = true;
        EXPECT_FALSE(run.IsImage1Visible());
        EXPECT_TRUE(run.IsImage2Visible());
        EXPECT_FALSE(run.IsImageQuitEnabled());
        EXPECT_FALSE(run.ArePathsEnabled());
        EXPECT_TRUE(run.IsLabel11Visible());
        EXPECT_TRUE(run.IsPointerBusy());
        EXPECT_TRUE(run.IsRunning());
        EXPECT_TRUE(converter.State.Converting);
    };
    int ends = 0;
    QObject::connect(&run, &ConversionRun::RunEnded, [&] { ++ends; });
    Start();
    EXPECT_TRUE(wasLookedAt);
    EXPECT_TRUE(run.IsImage1Visible());
    EXPECT_FALSE(run.IsImage2Visible());
    EXPECT_TRUE(run.IsImageQuitEnabled());
    EXPECT_TRUE(run.ArePathsEnabled());
    EXPECT_FALSE(run.IsPointerBusy());
    EXPECT_FALSE(run.IsRunning());
    EXPECT_FALSE(converter.State.Converting);
    EXPECT_EQ(ends, 1);
}

TEST_F(RunTest, StatusLineTakesTheSingularBelowTwo) {
    converter.State.FilesTotal = 1;
    run.DispFile();
    EXPECT_EQ(Status(), "0 File Created/0 File Converted(Total 1)");
    converter.State.FilesCreated = 1;
    converter.State.FilesConverted = 1;
    run.DispFile();
    EXPECT_EQ(Status(), "1 File Created/1 File Converted(Total 1)");
    converter.State.FilesCreated = 2;
    converter.State.FilesTotal = 1000;
    run.DispFile();
    EXPECT_EQ(Status(), "2 Files Created/1 File Converted(Total 1000)");
    converter.State.FilesConverted = 2;
    run.DispFile();
    EXPECT_EQ(Status(), "2 Files Created/2 Files Converted(Total 1000)");
}

TEST_F(RunTest, StatusLineFollowsEachStageAndEachRow) {
    AddJob(QStringLiteral("a.wav"));
    AddJob(QStringLiteral("b.wav"));
    Tick(OutputBox::chMP3);
    Texts seen;
    QObject::connect(&run, &ConversionRun::Label10Shown, [&](int index, const QString& text) {
        if (index == 1) {
            seen.push_back(Utf8(text));
        }
    });
    Start();
    EXPECT_THAT(seen, ElementsAre("0 File Created/0 File Converted(Total 2)",
                                  "1 File Created/0 File Converted(Total 2)",
                                  "1 File Created/1 File Converted(Total 2)",
                                  "2 Files Created/1 File Converted(Total 2)",
                                  "2 Files Created/2 Files Converted(Total 2)"));
}

TEST_F(RunTest, ProgressOfTheBatchCountsTheRows) {
    AddJob(QStringLiteral("a.wav"));
    AddJob(QStringLiteral("b.wav"));
    Texts seen;
    QObject::connect(&run, &ConversionRun::ProgressBar1Shown, [&](int value, int maximum) {
        seen.push_back(std::to_string(value) + "/" + std::to_string(maximum));
    });
    Start();
    EXPECT_THAT(seen, ElementsAre("0/2", "1/2", "2/2"));
    seen.clear();
    Start();
    EXPECT_THAT(seen, ElementsAre("0/2", "1/2", "2/2"));
}

TEST_F(RunTest, ProgressOfAFileFollowsItsBlocksAndRestsAboveNothing) {
    AddJob(QStringLiteral("a.wav"), 800);
    Tick(OutputBox::chMP3);
    std::vector<float> seen;
    QObject::connect(&run, &ConversionRun::ProgressConvertShown, [&](float value) { seen.push_back(value); });
    EXPECT_FLOAT_EQ(run.ProgressConvert(), 0.001F);
    Start();
    EXPECT_THAT(seen, ElementsAre(0.001F, 25.0F, 50.0F, 75.0F, 100.0F, 100.0F, 0.001F));
    EXPECT_FLOAT_EQ(run.ProgressConvert(), 0.001F);
}

TEST_F(RunTest, AFileThatCannotBeOpenedLeavesTheBarAtRest) {
    const QString path = AddJob(QStringLiteral("a.wav"));
    input.files.remove(path);
    Tick(OutputBox::chMP3);
    std::vector<float> seen;
    QObject::connect(&run, &ConversionRun::ProgressConvertShown, [&](float value) { seen.push_back(value); });
    Start();
    EXPECT_THAT(seen, ElementsAre(0.001F, 0.001F));
    EXPECT_FALSE(run.IsPointerBusy());
}

// A file without a length: the reader does not know it yet, or it is empty.
class UnmeasuredFile : public FakeAudioFile {
public:
    qint64 length = 0;
    qint64 GetLengthBytes() override { return length; }
};

class UnmeasuredComponents : public FakeComponents {
public:
    std::unique_ptr<KSTAudioFile2> MakeAudioFile() override {
        return Noted(files, std::make_unique<UnmeasuredFile>());
    }
};

TEST_F(RunTest, ProgressStaysANumberWhenTheLengthIsNotKnown) {
    UnmeasuredComponents parts;
    ConverterTool unmeasuredTool(parts, program, playlist);
    auto& unmeasured = static_cast<UnmeasuredFile&>(*parts.files[1]);
    ConverterRules& other = unmeasuredTool.rules;
    const QString path = AddMusic(QStringLiteral("a.wav"), 800);
    unmeasured.files = input.files;
    other.Load();
    std::vector<float> seen;
    QObject::connect(&other.Run, &ConversionRun::ProgressConvertShown,
                     [&](float value) { seen.push_back(value); });
    const auto copyFile = [&] {
        other.State.Converting = true;
        other.Run.ConvertFile(path, out.Path(QStringLiteral("a.mp3")));
    };
    copyFile();
    EXPECT_THAT(seen, ElementsAre(0.001F, 100.0F, 0.001F));
    EXPECT_EQ(parts.files[0]->written.value(out.Path(QStringLiteral("a.mp3"))).size(), 800);
    // One that is too short never shows more than the whole.
    seen.clear();
    unmeasured.length = 300;
    copyFile();
    EXPECT_NEAR(seen.at(1), 66.667F, 0.001F);
    EXPECT_THAT(std::vector<float>(seen.begin() + 2, seen.end()),
                ElementsAre(100.0F, 100.0F, 100.0F, 100.0F, 0.001F));
}

TEST_F(RunTest, AnEmptyFileIsCopiedAsOne) {
    AddJob(QStringLiteral("a.wav"), 0);
    Tick(OutputBox::chMP3);
    Start();
    EXPECT_THAT(Created(), ElementsAre("a.mp3"));
    EXPECT_EQ(output.written.value(out.Path(QStringLiteral("a.mp3"))).size(), 0);
    EXPECT_EQ(pending.runs, 0);
}

TEST_F(RunTest, ARowUntickedDuringTheRunIsPassedOver) {
    AddJob(QStringLiteral("a.wav"));
    AddJob(QStringLiteral("b.wav"));
    AddJob(QStringLiteral("c.wav"));
    Tick(OutputBox::chMP3);
    pending.onRun = [this] { converter.Rows.SetChecked(2, false); };
    Start();
    EXPECT_THAT(Created(), ElementsAre("a.mp3", "c.mp3"));
    EXPECT_EQ(Status(), "2 Files Created/2 Files Converted(Total 3)");
}

TEST_F(RunTest, ARowTickedDuringTheRunIsConverted) {
    AddJob(QStringLiteral("a.wav"));
    AddJob(QStringLiteral("b.wav"));
    converter.Rows.SetChecked(2, false);
    Tick(OutputBox::chMP3);
    pending.onRun = [this] { converter.Rows.SetChecked(2, true); };
    Start();
    EXPECT_THAT(Created(), ElementsAre("a.mp3", "b.mp3"));
    EXPECT_EQ(run.ProgressBar1(), 1);
    EXPECT_EQ(run.ProgressBar1Maximum(), 1);
}

TEST_F(RunTest, AListClearedDuringTheRunEndsItAfterTheFile) {
    AddJob(QStringLiteral("a.wav"), 1000);
    AddJob(QStringLiteral("b.wav"));
    Tick(OutputBox::chMP3);
    Tick(OutputBox::chOGG);
    pending.onRun = [this] { converter.Rows.Clear(); };
    Start();
    EXPECT_THAT(Created(), ElementsAre("a.mp3", "a.ogg"));
    EXPECT_THAT(Messages(), ElementsAre("Done!"));
}

TEST_F(RunTest, ASettingChangedDuringTheRunTakesEffectOnTheNextStage) {
    AddJob(QStringLiteral("a.wav"), 200);
    Tick(OutputBox::chMP3);
    Tick(OutputBox::chVOX);
    pending.onRun = [this] { converter.Settings.opFreq_Click(0); };
    Start();
    const qsizetype created =
        output.calls.indexOf(QStringLiteral("Create ") + out.Path(QStringLiteral("a.vox")));
    ASSERT_GT(created, 0);
    EXPECT_EQ(Utf8(output.calls[created - 1]), "SetFormatVOX 8000");
}

TEST_F(RunTest, AFormatTickedDuringTheRunIsReadWhenItsTurnComes) {
    AddJob(QStringLiteral("a.wav"), 200);
    Tick(OutputBox::chMP3);
    pending.onRun = [this] {
        Tick(OutputBox::chULAW);
        Tick(OutputBox::chWMA); // its turn is over
    };
    Start();
    EXPECT_THAT(Created(), ElementsAre("a.mp3", "a_ULAW.raw"));
}

TEST_F(RunTest, CountersStayWithinSixteenBits) {
    AddJob(QStringLiteral("a.wav"), 0);
    Tick(OutputBox::chMP3);
    run.Converter(QStringLiteral("a.wav"), 1);
    converter.State.FilesCreated = 32766;
    run.Converter(QStringLiteral("a.wav"), 1);
    EXPECT_EQ(converter.State.FilesCreated, 32767);
    run.Converter(QStringLiteral("a.wav"), 1);
    EXPECT_EQ(converter.State.FilesCreated, 32767);
}

TEST_F(RunTest, ASecondRunCountsAnew) {
    AddJob(QStringLiteral("a.wav"));
    Tick(OutputBox::chMP3);
    Start();
    Start();
    EXPECT_EQ(Status(), "1 File Created/1 File Converted(Total 1)");
    EXPECT_THAT(Messages(), ElementsAre("Done!", "Done!"));
}

} // namespace
} // namespace kestrune::convert
