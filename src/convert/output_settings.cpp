#include "convert/output_settings.h"

#include "app/failure_log.h"
#include "playlist/file_choice.h"

#include <algorithm>

namespace kestrune {

namespace {

constexpr qint32 shownLayer2Kbps = 192;
constexpr qint32 startKbps = 128;
constexpr qint32 byBitRate = -1; // no quality given
constexpr qint32 rawBits = 16;

} // namespace

OutputSettings::OutputSettings(OutputSettingsParts parts, QObject* parent) : QObject(parent), parts_(parts) {}

QString OutputSettings::CheckOutTag(int index) const {
    const bool isTicked = index >= 0 && index < outputBoxCount && IsTicked(static_cast<OutputBox>(index));
    return isTicked ? QStringLiteral("1") : QStringLiteral("0");
}

void OutputSettings::Load() {
    ConverterState& state = parts_.state;
    KSTAudioFile2& outputFile = parts_.outputFile;
    state.SampleRate = 44100;
    state.Channels = 2;
    state.G726Bits = 5;
    state.G723Bits = 5;
    cmbG726Bits_Click(2);
    cmbG723Bits_Click(1);
    state.BackwardTransform = 1;
    state.Converting = false;
    parts_.inputFile.SetFlag(KSTAudioFile2::wholeFiles);
    outputFile.SetFlag(KSTAudioFile2::wholeFiles);
    PassOver(logConvert, outputFile.SetFormatOggVorbis(44100, 2, startKbps, 0, 0, byBitRate),
             "SetFormatOggVorbis");
    TakeFormatText(FormatBox::txtOGGFormatString);
    PassOver(logConvert, outputFile.SetFormatMP3(44100, startKbps, 2), "SetFormatMP3");
    TakeFormatText(FormatBox::txtMP3FormatString);
    PassOver(logConvert, outputFile.SetFormatWMA(state.udWMAProfile), "SetFormatWMA");
    TakeFormatText(FormatBox::txtWMAFormatString);
    RefreshFormatStrings();
}

void OutputSettings::RefreshFormatStrings() {
    const ConverterState& state = parts_.state;
    KSTAudioFile2& outputFile = parts_.outputFile;
    PassOver(logConvert, outputFile.SetFormatADPCM(state.SampleRate, state.Channels), "SetFormatADPCM");
    TakeFormatText(FormatBox::txtADPCMFormatString);
    PassOver(logConvert, outputFile.SetFormatGSM(state.SampleRate), "SetFormatGSM");
    TakeFormatText(FormatBox::txtGSMFormatString);
    PassOver(logConvert, outputFile.SetFormatDSP(), "SetFormatDSP");
    TakeFormatText(FormatBox::txtDSPFormatString);
    PassOver(logConvert, outputFile.SetFormatVOX(state.SampleRate), "SetFormatVOX");
    TakeFormatText(FormatBox::txtVOXFormatString);
    PassOver(logConvert, outputFile.SetFormatRaw(RawALaw, state.SampleRate, state.Channels, rawBits),
             "SetFormatRaw");
    TakeFormatText(FormatBox::txtULAWFormatString);
    PassOver(logConvert, outputFile.SetFormatMP2(state.SampleRate, shownLayer2Kbps, state.Channels),
             "SetFormatMP2");
    TakeFormatText(FormatBox::txtMP2FormatString);
    PassOver(logConvert, outputFile.SetFormatG723(state.SampleRate, state.G723Bits), "SetFormatG723");
    TakeFormatText(FormatBox::txtG723FormatString);
    PassOver(logConvert, outputFile.SetFormatG726(state.SampleRate, state.G726Bits), "SetFormatG726");
    TakeFormatText(FormatBox::txtG726FormatString);
}

void OutputSettings::TakeFormatText(FormatBox box) {
    SetFormatText(box, parts_.outputFile.GetFormatText());
}

void OutputSettings::SetFormatText(FormatBox box, const QString& text) {
    texts_[static_cast<size_t>(box)] = text;
    emit FormatTextShown(box, text);
}

void OutputSettings::SetCheckOut(int index, CheckAction action) {
    if (index < 0 || index >= outputBoxCount) {
        return;
    }
    const bool isTicked = IsTicked(static_cast<OutputBox>(index));
    OutputBox_Click(index, action == CheckAction::Click ? !isTicked : isTicked);
}

void OutputSettings::opFreq_Click(int index) {
    if (index < 0 || index >= static_cast<int>(optionFrequencies.size())) {
        return;
    }
    opFreq_ = index;
    parts_.state.SampleRate = optionFrequencies[static_cast<size_t>(index)];
    emit FrequencyShown(index);
    parts_.log.AddEvent(tr("Set Frequency: %1 Hz").arg(parts_.state.SampleRate), EventIcon::SettingsChange);
    RefreshFormatStrings();
}

void OutputSettings::opChannels_Click(int index) {
    if (index != 1 && index != 2) {
        return;
    }
    parts_.state.Channels = index;
    emit ChannelsShown(index);
    parts_.log.AddEvent(index == 1 ? tr("Set Mono") : tr("Set Stereo"), EventIcon::SettingsChange);
    RefreshFormatStrings();
}

void OutputSettings::cmbG723Bits_Click(int index) {
    if (index != 0 && index != 1) {
        return;
    }
    cmbG723Bits_ = index;
    parts_.state.G723Bits = index == 0 ? 3 : 5;
    emit G723BitsShown(index);
    RefreshFormatStrings();
    parts_.log.AddEvent(tr("Set G.723 Format parameters "), EventIcon::SettingsChange);
}

void OutputSettings::cmbG726Bits_Click(int index) {
    if (index < 0 || index > 3) {
        return;
    }
    cmbG726Bits_ = index;
    parts_.state.G726Bits = index + 2;
    emit G726BitsShown(index);
    RefreshFormatStrings();
    parts_.log.AddEvent(tr("Set G.726 Format parameters "), EventIcon::SettingsChange);
}

void OutputSettings::udWMAProfile_Change(qint32 value) {
    const qint32 profile = std::clamp(value, smallestWmaProfile, largestWmaProfile);
    if (profile == parts_.state.udWMAProfile) {
        if (profile != value) {
            emit WmaProfileShown(profile);
        }
        return;
    }
    parts_.state.udWMAProfile = profile;
    emit WmaProfileShown(profile);
    PassOver(logConvert, parts_.outputFile.SetFormatWMA(profile), "SetFormatWMA");
    TakeFormatText(FormatBox::txtWMAFormatString);
    parts_.log.AddEvent(tr("Set WMA Format parameters "), EventIcon::SettingsChange);
}

void OutputSettings::OutputBox_Click(int index, bool ticked) {
    if (index < 0 || index >= outputBoxCount) {
        return;
    }
    parts_.state.ticks[static_cast<size_t>(index)] = ticked;
    emit CheckOutShown(index, ticked);
}

void OutputSettings::EncoderDialogClosed(EncoderDialog dialog) {
    parts_.log.AddEvent(dialog == EncoderDialog::Mp3 ? tr("Set MP3 Format parameters ")
                                                     : tr("Set Ogg Vorbis Format parameters "),
                        EventIcon::SettingsChange);
}

void OutputSettings::ChooseTemplate() {
    FileChoice choice;
    choice.filter = FilterText({{QT_TRANSLATE_NOOP("kestrune::FileChoice", "Wav files (*.wav)"), "*.wav"}});
    const QString path = parts_.prompts.ChooseFiles(choice).files.value(0);
    if (path.isEmpty()) {
        return;
    }
    parts_.state.AcmTemplatePath = path;
    PassOver(logConvert, parts_.outputFile.SetFormatFromFile(path), "SetFormatFromFile", path);
    TakeFormatText(FormatBox::Text1);
    parts_.log.AddEvent(tr("Set ACM Format parameters "), EventIcon::SettingsChange);
}

} // namespace kestrune
