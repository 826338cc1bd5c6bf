// Everything that the program takes from outside of its rules.
#pragma once

#include "components/audio_file.h"
#include "components/audio_information.h"
#include "components/audio_player.h"
#include "components/audio_transform.h"
#include "components/clock.h"
#include "components/pending_events.h"
#include "components/spectrum.h"
#include "components/user_prompts.h"

#include <memory>

namespace kestrune {

// Makes every backend; a new one at each call, never null. The three of which there is one each live as long
// as this. It must outlive all that works with it. Window thread.
class Components {
public:
    Components() = default;
    Components(const Components&) = delete;
    Components& operator=(const Components&) = delete;
    virtual ~Components() = default;

    virtual std::unique_ptr<KSTAudioPlayer2> MakeAudioPlayer() = 0;
    virtual std::unique_ptr<KSTAudioFile2> MakeAudioFile() = 0;
    virtual std::unique_ptr<KSTAudioInformation2> MakeAudioInformation() = 0;
    virtual std::unique_ptr<KSTAudioTransform2> MakeAudioTransform() = 0;
    virtual std::unique_ptr<Spectrum> MakeSpectrum() = 0;

    virtual UserPrompts& Prompts() = 0;
    virtual Clock& Time() = 0;
    virtual PendingEvents& Events() = 0;
};

} // namespace kestrune
