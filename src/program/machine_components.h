// The components of the running program: the libraries, the user and the time of this machine.
#pragma once

#include "program/application_events.h"
#include "program/components.h"
#include "program/prompt_dialogs.h"
#include "program/system_clock.h"

namespace kestrune {

class MachineComponents : public Components {
public:
    std::unique_ptr<KSTAudioPlayer2> MakeAudioPlayer() override;
    std::unique_ptr<KSTAudioFile2> MakeAudioFile() override;
    std::unique_ptr<KSTAudioInformation2> MakeAudioInformation() override;
    std::unique_ptr<KSTAudioTransform2> MakeAudioTransform() override;
    std::unique_ptr<Spectrum> MakeSpectrum() override;

    PromptDialogs& Prompts() override { return prompts_; }
    Clock& Time() override { return clock_; }
    PendingEvents& Events() override { return events_; }

private:
    PromptDialogs prompts_;
    SystemClock clock_;
    ApplicationEvents events_;
};

} // namespace kestrune
