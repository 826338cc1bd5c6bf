// The equalizer control: twelve gains, set by number.
#pragma once

#include "components/audio_player.h"
#include "components/outcome.h"

#include <QObject>
#include <array>

namespace kestrune {

// Centre of each band in Hz, all but equally far apart on a logarithmic scale (0.82 octaves).
inline constexpr std::array<double, equalizerBands> equalizerCentresHz = {31,  55,   97,   170,  300,  530,
                                                                          940, 1600, 2900, 5100, 9000, 16000};
// A gain beyond this, up or down, is cut to it, in the control and in the player.
inline constexpr float equalizerLargestGainDb = 15.0F;

// Numbers of the properties.
inline constexpr int equalizerFirstBand = 17; // to 28: the gains of the twelve bands in dB, lowest band first
inline constexpr int equalizerRange = 38;     // the whole travel of a band in dB: 30 is -15 to +15

// Window thread. Nothing blocks.
class KSTEqualizer21 : public QObject {
    Q_OBJECT
public:
    using QObject::QObject;

    // 0 for a number that is no property.
    virtual float Property(int number) const = 0;
    // Sets a gain, cut to half the range up or down; a gain that is not a number becomes 0. Or sets the
    // range, cut to 2 to 30 dB, which cuts the gains, too. NotSupported for any other number, and for a range
    // that is not a number.
    virtual Outcome SetProperty(int number, float value) = 0;

    // All twelve gains at once.
    virtual EqualizerGains Gains() const = 0;
    virtual void SetGains(const EqualizerGains& gainsDb) = 0;

signals:
    // A gain or the range is another than before, whoever changed it: once for each call that changes any.
    void Changed();
};

} // namespace kestrune
