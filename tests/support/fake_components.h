// The components of a program in a test.
#pragma once

#include "program/components.h"
#include "support/fake_audio_file.h"
#include "support/fake_audio_information.h"
#include "support/fake_audio_player.h"
#include "support/fake_audio_transform.h"
#include "support/fake_clock.h"
#include "support/fake_pending_events.h"
#include "support/fake_spectrum.h"
#include "support/fake_user_prompts.h"

#include <QList>

namespace kestrune {

// Makes fakes, and knows those that were made, in their order, for as long as their owners live. A test that
// needs another one, or a real one, overrides what makes it.
class FakeComponents : public Components {
public:
    QList<FakeAudioPlayer*> players;
    QList<FakeAudioFile*> files;
    QList<FakeAudioInformation*> information;
    FakeUserPrompts prompts;
    FakeClock clock;
    FakePendingEvents events;

    std::unique_ptr<KSTAudioPlayer2> MakeAudioPlayer() override { return Noted(players); }
    std::unique_ptr<KSTAudioFile2> MakeAudioFile() override { return Noted(files); }
    std::unique_ptr<KSTAudioInformation2> MakeAudioInformation() override { return Noted(information); }
    std::unique_ptr<KSTAudioTransform2> MakeAudioTransform() override {
        return std::make_unique<FakeAudioTransform>();
    }
    std::unique_ptr<Spectrum> MakeSpectrum() override { return std::make_unique<FakeSpectrum>(); }

    UserPrompts& Prompts() override { return prompts; }
    Clock& Time() override { return clock; }
    PendingEvents& Events() override { return events; }

protected:
    template <typename Fake, typename Made>
    static std::unique_ptr<Made> Noted(QList<Fake*>& made, std::unique_ptr<Made> fake) {
        made.append(fake.get());
        return fake;
    }
    template <typename Fake>
    static std::unique_ptr<Fake> Noted(QList<Fake*>& made) {
        return Noted(made, std::make_unique<Fake>());
    }
};

} // namespace kestrune
