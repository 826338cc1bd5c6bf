// What the display shows: levels, needles and spectra worked out from samples.
#pragma once

#include "components/audio_display.h"
#include "components/clock.h"
#include "components/spectrum.h"
#include "display/audio_display_ballistics.h"
#include "display/audio_display_bands.h"

#include <array>
#include <span>
#include <vector>

namespace kestrune {

// Knows nothing of the screen: a view reads what is to be seen after each Drawn. Only what the present type
// needs is worked out. Both meters look at the latest frames of a block alone, so that a long block does not
// make them late. Window thread.
class AudioDisplay : public KSTAudioDisplay1 {
    Q_OBJECT
public:
    // Both must outlive the display.
    AudioDisplay(Spectrum& spectrum, Clock& clock, QObject* parent = nullptr);

    Outcome SetProperty(int number, qint32 value) override;
    qint32 Property(int number) const override;
    void DrawBlock(const QList<qint16>& samples) override;

    // --- When sound stops without an end ---

    // No more blocks will come for now: by Advance, which the view then calls, all parts fall to their rest.
    // The next block ends this.
    void FallToRest();
    bool IsFalling() const { return falling_; }
    // Goes on by the time since the last move. To be called some 30 times a second while IsFalling.
    void Advance();

    // --- What is to be seen. Channels from 0 to Channels() - 1 ---

    int Channels() const { return Property(DisplayChannels); }
    const FallingLevel& Bar(int channel) const { return bars_[static_cast<size_t>(channel)]; }
    double NeedleDeflection(int channel) const { return needles_[static_cast<size_t>(channel)].Deflection(); }
    // A sample within 0.1 dB of full scale came by less than a second ago.
    bool IsOverloaded(int channel) const { return overloadMs_[static_cast<size_t>(channel)] > 0; }
    // Bands of each channel; two channels share the room of SetBandCount.
    int BandCount() const { return bands_.Count(); }
    const FallingLevel& Band(int channel, int band) const {
        return levels_[static_cast<size_t>(channel) * static_cast<size_t>(bands_.Count()) +
                       static_cast<size_t>(band)];
    }
    // How many bands there is room for in all, 2 to 512; 36 at the start. Another count clears the spectra.
    void SetBandCount(int count);
    const DisplayBands& Bands() const { return bands_; }

signals:
    // There is something new to be seen.
    void Drawn();
    // All is at its rest at once, by an empty block.
    void Cleared();

private:
    using Channel = std::vector<float>; // -1 to 1

    double TakeSpanMs();
    void ClearAll();
    void LayBands();
    void Move(std::span<const Channel> channels, double spanMs);
    void MoveBar(size_t channel, std::span<const float> latest, double spanMs);
    void MoveNeedle(size_t channel, std::span<const float> latest, double spanMs);
    void MoveBands(size_t channel, std::span<const float> block, double spanMs);
    bool IsAtRest() const;

    Spectrum& spectrum_;
    Clock& clock_;
    std::array<qint32, lastDisplayProperty - firstDisplayProperty + 1> properties_;
    qint64 lastMoveMs_ = -1;
    bool falling_ = false;
    int roomForBands_ = 36;
    DisplayBands bands_;
    std::array<Channel, 2> channels_;
    std::array<FallingLevel, 2> bars_;
    std::array<Needle, 2> needles_;
    std::array<double, 2> overloadMs_{};
    std::vector<FallingLevel> levels_;
};

} // namespace kestrune
