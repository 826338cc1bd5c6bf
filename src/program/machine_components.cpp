#include "program/machine_components.h"

#include "backends/audio_file/codec_file.h"
#include "backends/sound/alsa_player.h"
#include "backends/spectrum/tx_spectrum.h"
#include "backends/tags/tag_information.h"
#include "backends/transform/stereo_to_mono.h"

namespace kestrune {

std::unique_ptr<KSTAudioPlayer2> MachineComponents::MakeAudioPlayer() {
    return kestrune::MakeAudioPlayer();
}

std::unique_ptr<KSTAudioFile2> MachineComponents::MakeAudioFile() {
    return kestrune::MakeAudioFile();
}

std::unique_ptr<KSTAudioInformation2> MachineComponents::MakeAudioInformation() {
    return kestrune::MakeAudioInformation();
}

std::unique_ptr<KSTAudioTransform2> MachineComponents::MakeAudioTransform() {
    return std::make_unique<StereoToMonoTransform>();
}

std::unique_ptr<Spectrum> MachineComponents::MakeSpectrum() {
    return std::make_unique<TxSpectrum>();
}

} // namespace kestrune
