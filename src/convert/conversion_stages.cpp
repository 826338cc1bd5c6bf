#include "convert/conversion_stages.h"

#include <QCoreApplication>

namespace kestrune {

namespace {

constexpr qint32 sampleBits = 16;

// What most stages share.
StageFacts Facts(Stage stage, std::optional<OutputBox> box, const char* arrow, const char* logName) {
    return {stage, box, QStringLiteral("--> ") + QLatin1String(arrow), QLatin1String(logName), false,
            true,  {}};
}

StageFacts WithWayBack(StageFacts facts, const std::array<BackStep, largestBackSteps>& backSteps) {
    facts.backSteps = backSteps;
    return facts;
}

StageFacts WithFormatBeforeLog(StageFacts facts) {
    facts.isFormatSetBeforeLog = true;
    return facts;
}

StageFacts WithoutFlagTest(StageFacts facts) {
    facts.isFlagTestedBehind = false;
    return facts;
}

std::array<StageFacts, stageCount> MakeStages() {
    using B = BackStep;
    using O = OutputBox;
    return {
        WithWayBack(Facts(Stage::ACM, {}, "ACM", "ACM"), {B::OutputPcm, B::Log}),
        WithWayBack(Facts(Stage::WMA, O::chWMA, "WMA", "WMA"),
                    {B::Log, B::OpenWritten, B::OutputPcm, B::CloseInput}),
        WithWayBack(Facts(Stage::MP3, O::chMP3, "MP3", "MP3"), {B::OutputPcm, B::Log}),
        Facts(Stage::ADPCM, O::chADPCM, "ADPCM", "ADPCM"),
        Facts(Stage::DSP, O::chDSP, "DSP", "DSP"),
        WithWayBack(Facts(Stage::MP2, O::chMP2, "MP2", "MP2"), {B::OutputPcm, B::Log}),
        WithWayBack(Facts(Stage::VOX, O::chVOX, "VOX", "VOX"), {B::InputVox, B::OutputPcm, B::Log}),
        WithWayBack(Facts(Stage::OGG, O::chOGG, "OGG", "Ogg"), {B::Log, B::OutputPcm}),
        Facts(Stage::GSM, O::chGSM, "GSM", "GSM"),
        WithWayBack(Facts(Stage::G726, O::chG726, "G.726", "G726"), {B::InputG726, B::OutputPcm, B::Log}),
        WithWayBack(WithFormatBeforeLog(Facts(Stage::G723, O::chG723, "G.723", "G723")),
                    {B::Log, B::InputG723, B::OutputPcm}),
        WithWayBack(WithoutFlagTest(WithFormatBeforeLog(Facts(Stage::G721, O::chG721, "G.721", "G721"))),
                    {B::Log, B::InputG721, B::OutputPcm}),
        WithWayBack(Facts(Stage::ALAW, O::chULAW, "A-LAW", "ULAW"), {B::Log, B::InputRaw, B::OutputPcm}),
    };
}

QString OutputSuffix(Stage stage, const ConverterState& state) {
    switch (stage) {
    case Stage::ACM:
        return QStringLiteral("_ACM.wav");
    case Stage::WMA:
        return QStringLiteral("_%1.wma").arg(state.udWMAProfile);
    case Stage::MP3:
        return QStringLiteral(".mp3");
    case Stage::ADPCM:
        return QStringLiteral("_ADPCM.wav");
    case Stage::DSP:
        return QStringLiteral("_DSP.wav");
    case Stage::MP2:
        return QStringLiteral(".mp2");
    case Stage::VOX:
        return QStringLiteral(".vox");
    case Stage::OGG:
        return QStringLiteral(".ogg");
    case Stage::GSM:
        return QStringLiteral("_GSM.wav");
    case Stage::G726:
        return QStringLiteral(".g726");
    case Stage::G723:
        return QStringLiteral(".g723");
    case Stage::G721:
        return QStringLiteral(".g721");
    case Stage::ALAW:
        return QStringLiteral("_ULAW.raw");
    }
    return {};
}

} // namespace

const std::array<StageFacts, stageCount>& Stages() {
    static const std::array<StageFacts, stageCount> stages = MakeStages();
    return stages;
}

QString StartLog(const StageFacts& facts) {
    return QCoreApplication::translate("kestrune::ConversionRun", "Start ConvertTo%1").arg(facts.logName);
}

QString StopLog(const StageFacts& facts) {
    return QCoreApplication::translate("kestrune::ConversionRun", "Stop ConvertTo%1").arg(facts.logName);
}

QString BackLog(const StageFacts& facts) {
    return QCoreApplication::translate("kestrune::ConversionRun", "Start Convert%1toPCM").arg(facts.logName);
}

bool HasWayBack(const StageFacts& facts) {
    return facts.backSteps.front() != BackStep::None;
}

bool IsStageTicked(const StageFacts& facts, const ConverterState& state) {
    return facts.box.has_value() ? state.IsTicked(*facts.box) : !state.AcmTemplatePath.isEmpty();
}

Outcome SetStageFormat(Stage stage, const ConverterState& state, AudioFormat& outputFile) {
    switch (stage) {
    case Stage::ACM:
        return outputFile.SetFormatFromFile(state.AcmTemplatePath);
    case Stage::WMA:
        return outputFile.SetFormatWMA(state.udWMAProfile);
    case Stage::ADPCM:
        return outputFile.SetFormatADPCM(state.SampleRate, state.Channels);
    case Stage::DSP:
        return outputFile.SetFormatDSP();
    case Stage::VOX:
        return outputFile.SetFormatVOX(state.SampleRate);
    case Stage::GSM:
        return outputFile.SetFormatGSM(state.SampleRate);
    case Stage::G726:
        return outputFile.SetFormatG726(state.SampleRate, state.G726Bits);
    case Stage::G723:
        return outputFile.SetFormatG723(state.SampleRate, state.G723Bits);
    case Stage::G721:
        return outputFile.SetFormatG721(state.SampleRate);
    case Stage::ALAW:
        // The first of the two leaves no trace: the second one stands.
        outputFile.SetFormatRaw(RawMuLaw, state.SampleRate, state.Channels, sampleBits);
        return outputFile.SetFormatRaw(RawALaw, state.SampleRate, state.Channels, sampleBits);
    case Stage::MP3:
    case Stage::MP2:
    case Stage::OGG:
        break;
    }
    return Outcome::Ok;
}

Outcome CallBackStep(BackStep step, const ConverterState& state, KSTAudioFile2& inputFile,
                     AudioFormat& outputFile) {
    switch (step) {
    case BackStep::OutputPcm:
        return outputFile.SetFormatPCMFreq(state.SampleRate, state.Channels, sampleBits);
    case BackStep::InputRaw:
        return inputFile.SetFormatRaw(RawALaw, state.SampleRate, state.Channels, sampleBits);
    case BackStep::InputVox:
        return inputFile.SetFormatVOX(state.SampleRate);
    case BackStep::InputG726:
        return inputFile.SetFormatG726(state.SampleRate, state.G726Bits);
    case BackStep::InputG723:
        return inputFile.SetFormatG723(state.SampleRate, state.G723Bits);
    case BackStep::InputG721:
        return inputFile.SetFormatG721(state.SampleRate);
    case BackStep::CloseInput:
        return inputFile.CloseFile();
    case BackStep::None:
    case BackStep::Log:
    case BackStep::OpenWritten:
        break;
    }
    return Outcome::Ok;
}

void GetFileHead(const QString& path, QString& head, QString& extension) {
    const qsizetype point = path.lastIndexOf(u'.');
    if (point >= 0) {
        head = path.left(point);
        extension = path.mid(point + 1);
    }
}

QString StageOutput(Stage stage, const ConverterState& state) {
    return state.OutputHead + OutputSuffix(stage, state);
}

} // namespace kestrune
