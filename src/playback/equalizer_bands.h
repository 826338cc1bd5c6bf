// The gains of the equalizer, and how they are told and stepped.
#pragma once

#include "components/equalizer.h"

#include <QString>

namespace kestrune {

// The control itself; the panel shows it.
class EqualizerBands : public KSTEqualizer21 {
    Q_OBJECT
public:
    using KSTEqualizer21::KSTEqualizer21;

    float Property(int number) const override;
    Outcome SetProperty(int number, float value) override;
    EqualizerGains Gains() const override { return gainsDb_; }
    void SetGains(const EqualizerGains& gainsDb) override;

    // Half the range: the most that a band goes up or down.
    float LargestGainDb() const { return rangeDb_ / 2; }

private:
    float Cut(float gainDb) const;

    EqualizerGains gainsDb_{};
    float rangeDb_ = 2 * equalizerLargestGainDb;
};

// `steps` whole dB further up, or down when negative. A gain between two whole ones goes to the next whole
// one by its first step, so that 0 is never stepped over.
float StepGain(float gainDb, int steps);
// "31", "940", "1.6k", "16k": the centre of a band, 0 to 11.
QString BandLabel(int band);
// "31 Hz", "1,600 Hz".
QString BandFrequency(int band);
// "+6 dB", "-4.5 dB", "0 dB", to half a dB, with a true minus sign.
QString GainText(float gainDb);

} // namespace kestrune
