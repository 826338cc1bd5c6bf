// The right side of the converter: which formats a run writes, and with which parameters.
#pragma once

#include "components/audio_file.h"
#include "components/user_prompts.h"
#include "convert/converter_state.h"
#include "convert/job_list.h"
#include "tool_window/event_log.h"

#include <QObject>
#include <QString>
#include <array>

namespace kestrune {

// The read-only texts that show a format in the words of OutputFile.
enum class FormatBox : int {
    txtWMAFormatString = 0,
    txtMP3FormatString,
    txtOGGFormatString,
    txtADPCMFormatString,
    txtDSPFormatString,
    txtMP2FormatString,
    txtVOXFormatString,
    txtGSMFormatString,
    txtG723FormatString,
    txtG726FormatString,
    txtULAWFormatString,
    Text1 // of the template
};
inline constexpr int formatBoxCount = 12;

inline constexpr std::array<qint32, 8> optionFrequencies = {8000,  11025, 16000, 22050,
                                                            24000, 32000, 44100, 48000}; // Hz, by opFreq

// Encoder dialogs of ImageSet; the third entry of it chooses a template.
enum class EncoderDialog { Mp3 = 0, Ogg = 1 };

// What the settings work with. All of it must outlive them.
struct OutputSettingsParts {
    ConverterState& state;
    KSTAudioFile2& inputFile;
    KSTAudioFile2& outputFile;
    UserPrompts& prompts;
    EventLog& log;
};

// Window thread. No result of a format call is looked at: a format that is not offered shows an empty text.
// Every handler is live during a run, too, and then changes the format of the next output.
class OutputSettings : public QObject {
    Q_OBJECT
public:
    explicit OutputSettings(OutputSettingsParts parts, QObject* parent = nullptr);

    // --- State ---
    int opFreq() const { return opFreq_; }                   // index of the chosen frequency, 6 at the start
    int opChannels() const { return parts_.state.Channels; } // 1 mono, 2 stereo
    int cmbG723Bits() const { return cmbG723Bits_; }         // list index of "3 bit", "5 bit"
    int cmbG726Bits() const { return cmbG726Bits_; }         // list index of "2 bit" to "5 bit"
    const QString& FormatText(FormatBox box) const { return texts_[static_cast<size_t>(box)]; }
    bool IsTicked(OutputBox box) const { return parts_.state.IsTicked(box); }
    // Tag of a picture box of ImageCheckOut, "0" or "1".
    QString CheckOutTag(int index) const;

    // --- Procedures ---
    // Defaults, with the calls on both file objects and the two log lines that they give rise to.
    void Load();
    // Every format with the present settings, one after another on OutputFile, which is left in the last one.
    void RefreshFormatStrings();
    // For the encoder dialogs, which set their format on OutputFile by themselves.
    void SetFormatText(FormatBox box, const QString& text);
    void SetCheckOut(int index, CheckAction action);

    // --- What the user does ---
    void opFreq_Click(int index);
    void opChannels_Click(int index); // 1 mono, 2 stereo
    void cmbG723Bits_Click(int index);
    void cmbG726Bits_Click(int index);
    // A value outside the spinner's bounds is brought into them; one that is already there raises nothing.
    void udWMAProfile_Change(qint32 value);
    // A box of an output format, by OutputBox: nothing else changes.
    void OutputBox_Click(int index, bool ticked);
    // ImageSet(0) and ImageSet(1), when their dialog has closed by whatever button.
    void EncoderDialogClosed(EncoderDialog dialog);
    // ImageSet(2): chooses a template.
    void ChooseTemplate();

signals:
    void FormatTextShown(kestrune::FormatBox box, const QString& text);
    void FrequencyShown(int index);
    void ChannelsShown(int index);
    void G723BitsShown(int index);
    void G726BitsShown(int index);
    void WmaProfileShown(qint32 value);
    void CheckOutShown(int index, bool ticked); // picture box and real box

private:
    void TakeFormatText(FormatBox box);

    OutputSettingsParts parts_;
    int opFreq_ = 6;
    int cmbG723Bits_ = 1;
    int cmbG726Bits_ = 2;
    std::array<QString, formatBoxCount> texts_;
};

} // namespace kestrune
