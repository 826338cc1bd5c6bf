// The options of the MP3 encoder.
#pragma once

#include "encoder_options/encoder_options_dialog.h"
#include "encoder_options/mp3_dialog_rule.h"

namespace kestrune {

class Mp3Tabs;

// Object "ConverterfrmMP3" or "RipfrmMP3", with the controls of Mp3Tabs. Make it, exec() it once, and let it
// go. Window thread.
class Mp3Dialog : public EncoderOptionsDialog {
    Q_OBJECT
public:
    // The converter's: edits its options, which must outlive the dialog, and gives it both format texts.
    Mp3Dialog(Mp3Options& options, const Mp3Target& target, QWidget* parent);
    // The ripper's: edits options of its own, which start anew with each dialog.
    Mp3Dialog(AudioFormat& formatObject, QWidget* parent);

protected:
    bool ApplyControls() override;

private:
    void Load();

    Mp3Options own_;
    Mp3DialogRule rule_;
    Mp3Tabs* tabMP3_;
};

} // namespace kestrune
