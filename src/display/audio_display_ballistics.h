// How the moving parts of the display move. Pure; one thread at a time. Levels are parts of a scale: 0 its
// foot, 1 its top.
#pragma once

namespace kestrune {

// --- Scales ---

// A level of full scale, 0 to 1, in dB; silence is -160.
double DbOfLevel(double level);

// Place on the scale of the level bars of a level in dB of full scale: 0 from -60 dB down, 1 at 0 dB. It
// opens toward the top, where levels matter; -9 dB, the highest level that programme peaks are to reach in
// broadcasting (EBU R 68), lies at 0.70.
double MeterScale(double db);

// Place on the scale of the spectra, even in dB: 0 from -72 dB down, 1 at 0 dB.
double SpectrumScale(double db);

// Deflection of the analog meters for the average of a rectified signal, 0 to 1 of full scale. The scale is
// even in volts, as that of a moving coil; 0 VU is a sine of -9 dB and lies at 0.70.
double NeedleScale(double rectifiedAverage);
// Deflection of a mark in VU.
double NeedleMark(double vu);
// As far as a needle goes.
inline constexpr double needleStop = 1.04;

// --- Motion ---

// A bar that jumps up at once and comes down as if it fell; its peak stays a while before it falls.
class FallingLevel {
public:
    double Level() const { return level_; }
    double Peak() const { return peak_; }
    // Goes on by a span of time toward a level.
    void Move(double target, double spanMs, double holdMs);
    void Clear() { *this = FallingLevel(); }
    bool IsAtRest() const { return level_ <= 0 && peak_ <= 0; }

private:
    double level_ = 0;
    double peak_ = 0;
    double speed_ = 0;     // of the level's fall, scales a second
    double peakSpeed_ = 0; //
    double peakAgeMs_ = 0;
};

// A needle with the motion of a volume meter (IEC 60268-17): 99 % of a step after 300 ms, with an overshoot
// of 1 to 1.5 %.
class Needle {
public:
    double Deflection() const { return deflection_; }
    void Move(double target, double spanMs);
    void Clear() { *this = Needle(); }
    bool IsAtRest() const;

private:
    double deflection_ = 0;
    double speed_ = 0; // scales a second
};

} // namespace kestrune
