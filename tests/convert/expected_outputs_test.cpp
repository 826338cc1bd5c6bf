// What OutputFile is told beforehand, and that nothing else changes by it.
#include "converter_fixture.h"

namespace kestrune::convert {
namespace {

class ExpectedOutputsTest : public ConverterTest {
protected:
    ExpectedOutputsTest() {
        Open();
        AddJob(QStringLiteral("a.wav"), 200);
    }
    std::string Expect(const char* name) const { return "ExpectOutput " + Utf8(out.Path()) + "/" + name; }
    // Calls before the first line of the log.
    Texts Before() const {
        Texts calls = ToTexts(output.calls);
        calls.erase(
            std::find_if(calls.begin(), calls.end(), [](const std::string& call) { return call[0] == '#'; }),
            calls.end());
        return calls;
    }
};

TEST_F(ExpectedOutputsTest, AreToldInTheOrderOfTheRunWithTheirFormats) {
    Tick(OutputBox::chWMA);
    Tick(OutputBox::chMP3);
    Tick(OutputBox::chGSM);
    Tick(OutputBox::chULAW);
    Start();
    EXPECT_THAT(Before(),
                ElementsAre("ForgetExpectedOutputs", "SetFormatWMA 39", Expect("a_39.wma"), Expect("a.mp3"),
                            "SetFormatGSM 44100", Expect("a_GSM.wav"), "SetFormatRaw 3 44100 2 16",
                            "SetFormatRaw 2 44100 2 16", Expect("a_ULAW.raw")));
    EXPECT_EQ(Utf8(output.calls.last()), "ForgetExpectedOutputs");
    EXPECT_EQ(output.calls.count(QStringLiteral("ForgetExpectedOutputs")), 2);
    EXPECT_THAT(Created(), ElementsAre("a_39.wma", "a.mp3", "a_GSM.wav", "a_ULAW.raw"));
}

TEST_F(ExpectedOutputsTest, ASingleOneIsNotTold) {
    Tick(OutputBox::chMP3);
    Start();
    EXPECT_THAT(Before(), IsEmpty());
    EXPECT_EQ(output.calls.count(QStringLiteral("ForgetExpectedOutputs")), 0);
}

TEST_F(ExpectedOutputsTest, TheReaderIsToldWhetherFilesAreReadAgain) {
    input.calls.clear();
    Tick(OutputBox::chMP3);
    Start();
    EXPECT_TRUE(input.calls.contains(QStringLiteral("SetFlag -1")));
    input.calls.clear();
    Tick(OutputBox::chGSM);
    Start();
    EXPECT_TRUE(input.calls.contains(QStringLiteral("SetFlag -2")));
}

TEST_F(ExpectedOutputsTest, ATemplateAndABoxAreTwo) {
    Tick(OutputBox::chMP3);
    converter.State.AcmTemplatePath = QStringLiteral("/t/x.wav");
    Start();
    EXPECT_THAT(Before(), ElementsAre("ForgetExpectedOutputs", "SetFormatFromFile /t/x.wav",
                                      Expect("a_ACM.wav"), Expect("a.mp3")));
}

TEST_F(ExpectedOutputsTest, AFormatThatIsNotOfferedIsNotTold) {
    output.refusedFormats << QStringLiteral("SetFormatGSM");
    Tick(OutputBox::chMP3);
    Tick(OutputBox::chGSM);
    Start();
    EXPECT_THAT(Before(), ElementsAre("ForgetExpectedOutputs", Expect("a.mp3"), "SetFormatGSM 44100"));
    EXPECT_THAT(Created(), ElementsAre("a.mp3", "a_GSM.wav"));
}

TEST_F(ExpectedOutputsTest, TheTextsOfTheFormatsStay) {
    const QString before = converter.Settings.FormatText(FormatBox::txtGSMFormatString);
    converter.State.SampleRate = 8000;
    Tick(OutputBox::chMP3);
    Tick(OutputBox::chGSM);
    Start();
    EXPECT_EQ(converter.Settings.FormatText(FormatBox::txtGSMFormatString), before);
}

TEST_F(ExpectedOutputsTest, AreForgottenAfterAStop) {
    Tick(OutputBox::chMP3);
    Tick(OutputBox::chOGG);
    pending.onRun = [this] { Stop(); };
    Start();
    EXPECT_EQ(Utf8(output.calls.last()), "ForgetExpectedOutputs");
}

} // namespace
} // namespace kestrune::convert
