// Each of the thirteen stages on its own: what it calls, writes and logs.
#include "converter_fixture.h"

namespace kestrune::convert {
namespace {

struct StageCase {
    Stage stage;
    std::vector<OutputBox> boxes; // none: a template
    const char* arrow;
    const char* output;
    // Calls on OutputFile from the first to the last but for those of the copy, which COPY stands for. Lines
    // of the log begin with '#'.
    Texts outputCalls;
    Texts inputCalls; // the same on InputFile
};

const char* const copy = "COPY";

const std::vector<StageCase> cases = {
    {Stage::ACM,
     {},
     "--> ACM",
     "a_ACM.wav",
     {"#Start ConvertToACM", "SetFormatFromFile /t/x.wav", copy, "#Stop ConvertToACM",
      "SetFormatPCMFreq 22050 1 16", "#Start ConvertACMtoPCM"},
     {"#Start ConvertToACM", copy, "#Stop ConvertToACM", "#Start ConvertACMtoPCM"}},
    {Stage::MP3,
     {OutputBox::chMP3},
     "--> MP3",
     "a.mp3",
     {"#Start ConvertToMP3", copy, "#Stop ConvertToMP3", "SetFormatPCMFreq 22050 1 16",
      "#Start ConvertMP3toPCM"},
     {"#Start ConvertToMP3", copy, "#Stop ConvertToMP3", "#Start ConvertMP3toPCM"}},
    {Stage::ADPCM,
     {OutputBox::chADPCM},
     "--> ADPCM",
     "a_ADPCM.wav",
     {"#Start ConvertToADPCM", "SetFormatADPCM 22050 1", copy, "#Stop ConvertToADPCM"},
     {"#Start ConvertToADPCM", copy, "#Stop ConvertToADPCM"}},
    {Stage::DSP,
     {OutputBox::chDSP},
     "--> DSP",
     "a_DSP.wav",
     {"#Start ConvertToDSP", "SetFormatDSP", copy, "#Stop ConvertToDSP"},
     {"#Start ConvertToDSP", copy, "#Stop ConvertToDSP"}},
    {Stage::MP2,
     {OutputBox::chMP2},
     "--> MP2",
     "a.mp2",
     {"#Start ConvertToMP2", copy, "#Stop ConvertToMP2", "SetFormatPCMFreq 22050 1 16",
      "#Start ConvertMP2toPCM"},
     {"#Start ConvertToMP2", copy, "#Stop ConvertToMP2", "#Start ConvertMP2toPCM"}},
    {Stage::VOX,
     {OutputBox::chVOX},
     "--> VOX",
     "a.vox",
     {"#Start ConvertToVOX", "SetFormatVOX 22050", copy, "#Stop ConvertToVOX", "SetFormatPCMFreq 22050 1 16",
      "#Start ConvertVOXtoPCM"},
     {"#Start ConvertToVOX", copy, "#Stop ConvertToVOX", "SetFormatVOX 22050", "#Start ConvertVOXtoPCM"}},
    {Stage::OGG,
     {OutputBox::chOGG},
     "--> OGG",
     "a.ogg",
     {"#Start ConvertToOgg", copy, "#Stop ConvertToOgg", "#Start ConvertOggtoPCM",
      "SetFormatPCMFreq 22050 1 16"},
     {"#Start ConvertToOgg", copy, "#Stop ConvertToOgg", "#Start ConvertOggtoPCM"}},
    {Stage::GSM,
     {OutputBox::chGSM},
     "--> GSM",
     "a_GSM.wav",
     {"#Start ConvertToGSM", "SetFormatGSM 22050", copy, "#Stop ConvertToGSM"},
     {"#Start ConvertToGSM", copy, "#Stop ConvertToGSM"}},
    {Stage::G726,
     {OutputBox::chG726},
     "--> G.726",
     "a.g726",
     {"#Start ConvertToG726", "SetFormatG726 22050 2", copy, "#Stop ConvertToG726",
      "SetFormatPCMFreq 22050 1 16", "#Start ConvertG726toPCM"},
     {"#Start ConvertToG726", copy, "#Stop ConvertToG726", "SetFormatG726 22050 2",
      "#Start ConvertG726toPCM"}},
    {Stage::G723,
     {OutputBox::chG723},
     "--> G.723",
     "a.g723",
     {"SetFormatG723 22050 3", "#Start ConvertToG723", copy, "#Stop ConvertToG723", "#Start ConvertG723toPCM",
      "SetFormatPCMFreq 22050 1 16"},
     {"#Start ConvertToG723", copy, "#Stop ConvertToG723", "#Start ConvertG723toPCM",
      "SetFormatG723 22050 3"}},
    {Stage::G721,
     {OutputBox::chG721},
     "--> G.721",
     "a.g721",
     {"SetFormatG721 22050", "#Start ConvertToG721", copy, "#Stop ConvertToG721", "#Start ConvertG721toPCM",
      "SetFormatPCMFreq 22050 1 16"},
     {"#Start ConvertToG721", copy, "#Stop ConvertToG721", "#Start ConvertG721toPCM", "SetFormatG721 22050"}},
    {Stage::ALAW,
     {OutputBox::chULAW},
     "--> A-LAW",
     "a_ULAW.raw",
     {"#Start ConvertToULAW", "SetFormatRaw 3 22050 1 16", "SetFormatRaw 2 22050 1 16", copy,
      "#Stop ConvertToULAW", "#Start ConvertULAWtoPCM", "SetFormatPCMFreq 22050 1 16"},
     {"#Start ConvertToULAW", copy, "#Stop ConvertToULAW", "#Start ConvertULAWtoPCM",
      "SetFormatRaw 2 22050 1 16"}},
};

class StagesTest : public ConverterTest {
protected:
    StagesTest() {
        converter.Load();
        converter.State.SampleRate = 22050;
        converter.State.Channels = 1;
        converter.State.G723Bits = 3;
        converter.State.G726Bits = 2;
        source = AddMusic(QStringLiteral("a.wav"), 500);
        converter.State.InputPath = source;
        converter.State.OutputHead = out.Path(QStringLiteral("a"));
        converter.State.AcmTemplatePath = QStringLiteral("/t/x.wav");
        converter.State.Converting = true;
        Forget();
    }
    void Run(Stage stage) { converter.Run.RunStage(stage); }
    // The calls of the copy, 500 bytes in blocks of 200.
    Texts OutputCopy(const std::string& name) const {
        return {"Create " + Utf8(out.Path()) + "/" + name,
                "SetSourceFormat 100 2",
                "WriteBlock 200",
                "WriteBlock 200",
                "WriteBlock 100",
                "CloseFile"};
    }
    Texts InputCopy() const {
        return {"OpenRead " + Utf8(source),
                "ReadBlock 200",
                "ReadBlock 200",
                "ReadBlock 200",
                "ReadBlock 200",
                "CloseFile"};
    }
    static Texts With(const Texts& calls, const Texts& copied) {
        Texts all;
        for (const std::string& call : calls) {
            if (call == copy) {
                all.insert(all.end(), copied.begin(), copied.end());
            } else {
                all.push_back(call);
            }
        }
        return all;
    }
    QString source;
};

TEST_F(StagesTest, CallWriteAndLogByTheTable) {
    for (const StageCase& expected : cases) {
        SCOPED_TRACE(expected.output);
        Forget();
        Run(expected.stage);
        EXPECT_EQ(ToTexts(output.calls), With(expected.outputCalls, OutputCopy(expected.output)));
        EXPECT_EQ(ToTexts(input.calls), With(expected.inputCalls, InputCopy()));
        const StageFacts& facts = Stages()[static_cast<size_t>(expected.stage)];
        EXPECT_EQ(facts.stage, expected.stage);
        EXPECT_EQ(Utf8(facts.arrow), expected.arrow);
        EXPECT_EQ(facts.box.has_value(), !expected.boxes.empty());
        if (facts.box.has_value()) {
            EXPECT_EQ(*facts.box, expected.boxes.front());
        }
        EXPECT_EQ(output.written.value(out.Path(QString::fromLatin1(expected.output))),
                  input.files.value(source).pcm);
    }
}

TEST_F(StagesTest, AllOfTheirLinesAreStepsOfARun) {
    Run(Stage::VOX);
    ASSERT_EQ(Log().size(), 3U);
    for (int line = firstLine; line <= converter.Events.Count(); ++line) {
        EXPECT_EQ(converter.Events.Icon(line), EventIcon::RunStep);
    }
}

TEST_F(StagesTest, WmaLooksAtItsSourceBeforeItSetsItsFormat) {
    const QString written = out.Path(QStringLiteral("a_39.wma"));
    AddContent(written, 100);
    Run(Stage::WMA);
    EXPECT_EQ(ToTexts(output.calls),
              With({"#Start ConvertToWMA", "SetSourceFormat 100 2", "SetFormatWMA 39", copy,
                    "#Stop ConvertToWMA", "#Start ConvertWMAtoPCM", "SetFormatPCMFreq 22050 1 16"},
                   OutputCopy("a_39.wma")));
    EXPECT_EQ(ToTexts(input.calls),
              With({"#Start ConvertToWMA", "OpenRead " + Utf8(source), "CloseFile", copy,
                    "#Stop ConvertToWMA", "#Start ConvertWMAtoPCM", "OpenRead " + Utf8(written), "CloseFile"},
                   InputCopy()));
    EXPECT_EQ(Utf8(Stages()[1].arrow), "--> WMA");
    EXPECT_EQ(Stages()[1].box, OutputBox::chWMA);
}

TEST_F(StagesTest, WmaThatCannotBeReadBackChangesNoFormat) {
    Run(Stage::WMA);
    EXPECT_EQ(ToTexts(output.calls).back(), "#Start ConvertWMAtoPCM");
    EXPECT_EQ(ToTexts(input.calls).back(), "OpenRead " + Utf8(out.Path()) + "/a_39.wma");
}

TEST_F(StagesTest, WmaOfASourceThatCannotBeReadEndsBehindItsFirstLine) {
    input.files.clear();
    Run(Stage::WMA);
    EXPECT_THAT(ToTexts(output.calls), ElementsAre("#Start ConvertToWMA"));
    EXPECT_THAT(ToTexts(input.calls), ElementsAre("#Start ConvertToWMA", "OpenRead " + Utf8(source)));
}

TEST_F(StagesTest, WmaIsNamedByItsProfile) {
    converter.State.udWMAProfile = 7;
    Run(Stage::WMA);
    EXPECT_THAT(Created(), ElementsAre("a_7.wma"));
    EXPECT_TRUE(output.calls.contains(QStringLiteral("SetFormatWMA 7")));
}

TEST_F(StagesTest, NoneDoesAnythingWhileNothingIsConverted) {
    converter.State.Converting = false;
    for (const StageFacts& facts : Stages()) {
        Run(facts.stage);
    }
    EXPECT_TRUE(output.calls.isEmpty());
    EXPECT_TRUE(input.calls.isEmpty());
    EXPECT_THAT(Log(), IsEmpty());
}

TEST_F(StagesTest, WithoutTheWayBackAStageEndsWithItsStopLine) {
    converter.State.BackwardTransform = 0;
    for (const StageFacts& facts : Stages()) {
        Forget();
        Run(facts.stage);
        EXPECT_EQ(ToTexts(output.calls).back(), Utf8(u'#' + StopLog(facts)));
        EXPECT_EQ(ToTexts(input.calls).back(), Utf8(u'#' + StopLog(facts)));
    }
}

TEST_F(StagesTest, AStoppedCopyTakesNoWayBack) {
    pending.onRun = [this] { converter.State.Converting = false; };
    Run(Stage::VOX);
    EXPECT_THAT(Log(), ElementsAre("Start ConvertToVOX", "Stop ConvertToVOX"));
    EXPECT_EQ(ToTexts(output.calls).back(), "#Stop ConvertToVOX");
}

TEST_F(StagesTest, AnOutputThatCannotBeCreatedIsLoggedLikeAnyOther) {
    output.refusedTargets << out.Path(QStringLiteral("a.vox"));
    Run(Stage::VOX);
    EXPECT_THAT(Log(), ElementsAre("Start ConvertToVOX", "Stop ConvertToVOX", "Start ConvertVOXtoPCM"));
    EXPECT_THAT(Messages(), IsEmpty());
}

TEST_F(StagesTest, TheyRunInTheirOwnOrder) {
    Texts arrows;
    for (const StageFacts& facts : Stages()) {
        EXPECT_EQ(static_cast<size_t>(facts.stage), arrows.size());
        arrows.push_back(Utf8(facts.arrow));
    }
    EXPECT_THAT(arrows,
                ElementsAre("--> ACM", "--> WMA", "--> MP3", "--> ADPCM", "--> DSP", "--> MP2", "--> VOX",
                            "--> OGG", "--> GSM", "--> G.726", "--> G.723", "--> G.721", "--> A-LAW"));
}

TEST(GetFileHead, PartsAtTheLastPoint) {
    QString head = QStringLiteral("head");
    QString extension = QStringLiteral("extension");
    GetFileHead(QStringLiteral("/a.b/song"), head, extension);
    EXPECT_EQ(Utf8(head), "/a");
    EXPECT_EQ(Utf8(extension), "b/song");
    GetFileHead(QStringLiteral("/m/song.x.mp3"), head, extension);
    EXPECT_EQ(Utf8(head), "/m/song.x");
    EXPECT_EQ(Utf8(extension), "mp3");
    GetFileHead(QStringLiteral("/m/song"), head, extension);
    EXPECT_EQ(Utf8(head), "/m/song.x");
    EXPECT_EQ(Utf8(extension), "mp3");
}

} // namespace
} // namespace kestrune::convert
