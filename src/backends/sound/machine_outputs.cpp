#include "backends/sound/machine_outputs.h"

#include "backends/sound/alsa_output.h"
#include "backends/sound/pulse_output.h"

#include <QCoreApplication>
#include <alsa/asoundlib.h>
#include <vector>

namespace kestrune {

namespace {

struct Entry {
    QString name;
    QByteArray pcmName; // of libasound
    bool isDefault = false;
};

// The library prints to the standard error otherwise, on a machine without sound at every look.
void IgnoreAlsaMessage(const char*, int, const char*, int, const char*, ...) {} // NOLINT(cert-dcl50-cpp)

bool CanPlay(snd_ctl_t* card) {
    snd_pcm_info_t* info = nullptr;
    snd_pcm_info_alloca(&info);
    int device = -1;
    while (snd_ctl_pcm_next_device(card, &device) >= 0 && device >= 0) {
        snd_pcm_info_set_device(info, static_cast<unsigned>(device));
        snd_pcm_info_set_subdevice(info, 0);
        snd_pcm_info_set_stream(info, SND_PCM_STREAM_PLAYBACK);
        if (snd_ctl_pcm_info(card, info) >= 0) {
            return true;
        }
    }
    return false;
}

std::vector<Entry> FindCards() {
    std::vector<Entry> cards;
    int number = -1;
    while (snd_card_next(&number) >= 0 && number >= 0) {
        const QByteArray numberText = QByteArray::number(number);
        snd_ctl_t* card = nullptr;
        if (snd_ctl_open(&card, QByteArray("hw:" + numberText).constData(), 0) < 0) {
            continue;
        }
        char* name = nullptr;
        if (CanPlay(card) && snd_card_get_name(number, &name) >= 0) {
            cards.push_back({QString::fromUtf8(name), "plughw:" + numberText, false});
            free(name); // NOLINT(cppcoreguidelines-no-malloc): the library hands it over so
        }
        snd_ctl_close(card);
    }
    return cards;
}

class MachineOutputs : public OutputSource {
public:
    explicit MachineOutputs(DefaultOutput defaultWay) : way_(defaultWay) {
        snd_lib_error_set_handler(IgnoreAlsaMessage);
    }

    int Count(int openIndex) override {
        const bool holdsDefault = openIndex >= 0 && HasIndex(openIndex) && entries_[openIndex].isDefault;
        Refresh(holdsDefault);
        return static_cast<int>(entries_.size());
    }

    QString Name(int index) override {
        FindIndex(index);
        return HasIndex(index) ? entries_[static_cast<size_t>(index)].name : QString();
    }

    Opened Open(int index, int sampleRateHz, int channels) override {
        FindIndex(index);
        if (!HasIndex(index)) {
            return {Outcome::DeviceFailed, nullptr};
        }
        const Entry& entry = entries_[static_cast<size_t>(index)];
        return entry.isDefault ? OpenDefault(sampleRateHz, channels)
                               : AlsaOutput::Open(entry.pcmName, sampleRateHz, channels);
    }

private:
    bool HasIndex(int index) const { return index >= 0 && index < static_cast<int>(entries_.size()); }

    // A device that is not on the list may have come since it was made.
    void FindIndex(int index) {
        if (!HasIndex(index)) {
            Refresh(false);
        }
    }

    Opened OpenDefault(int sampleRateHz, int channels) const {
        if (way_ == DefaultOutput::ServerFirst) {
            Opened opened = PulseOutput::Open(sampleRateHz, channels);
            // libasound would ask a server that hangs once more, and with more patience.
            if (opened.outcome != Outcome::NotFound) {
                return opened;
            }
        }
        return AlsaOutput::Open("default", sampleRateHz, channels);
    }

    void Refresh(bool holdsDefault) {
        entries_.clear();
        constexpr int commonRateHz = 44100;
        if (holdsDefault || OpenDefault(commonRateHz, 2).outcome == Outcome::Ok) {
            entries_.push_back(
                {QCoreApplication::translate("AudioPlayer", "Default output"), "default", true});
        }
        for (Entry& card : FindCards()) {
            entries_.push_back(std::move(card));
        }
    }

    DefaultOutput way_;
    std::vector<Entry> entries_;
};

} // namespace

std::unique_ptr<OutputSource> MakeMachineOutputs(DefaultOutput way) {
    return std::make_unique<MachineOutputs>(way);
}

} // namespace kestrune
