// The level and spectrum display.
#pragma once

#include "components/outcome.h"

#include <QList>
#include <QObject>
#include <QtGlobal>
#include <array>

namespace kestrune {

// Properties of the display, by number. Colours are 0xRRGGBB; one with an opaque alpha byte (0xFFRRGGBB, as
// QColor::rgb gives it) is taken too and read back without it.
enum DisplayProperty : int {
    DisplayBorderStyle = 10,       // a DisplayBorder; Lowered at the start
    DisplayKind = 11,              // a DisplayType; LevelBars at the start
    DisplayBackColor = 12,         // (20, 20, 20) at the start
    DisplayBorderColor = 13,       //
    DisplayInscriptionsColor = 14, // text and needles
    DisplayScaleColor = 15,        // lines of scales
    DisplayLevelsColor = 16,       // (128, 128, 255) at the start
    DisplayMaxLevelColor = 17,     // what lies above MaxLevel, and marks of the maximum
    DisplayFftSize = 18,           // frames, one of displayFftSizes; 4096 at the start
    DisplayMaxLevel = 19,          // per cent of the scale, 0 to 100, from where a level counts as high
    DisplayOutLinesHeight = 20,    // pixels, 0 to 10, of the marks of the maximum; 0 shows none
    DisplayChannels = 21           // 1 or 2: channels of the blocks to come; 2 at the start
};
inline constexpr int firstDisplayProperty = DisplayBorderStyle;
inline constexpr int lastDisplayProperty = DisplayChannels;

enum DisplayBorder : qint32 { BorderNone = 0, BorderSingle = 1, BorderLowered = 2, BorderRaised = 3 };
enum DisplayType : qint32 { LevelBars = 0, AnalogMeters = 1, FftFire = 2, FftGlass = 3, FftKryptonite = 4 };
inline constexpr int displayTypeCount = 5;
inline constexpr std::array<qint32, 5> displayFftSizes = {64, 256, 1024, 4096, 16384};
inline constexpr qint32 largestOutLinesHeight = 10;

// Thread: all calls and signals on the window thread. No call runs events.
class KSTAudioDisplay1 : public QObject {
    Q_OBJECT
public:
    using QObject::QObject;

    // NotSupported for a number outside 10 to 21 and for a value outside the property's range, which then
    // keeps what it held.
    virtual Outcome SetProperty(int number, qint32 value) = 0;
    // 0 for a number outside 10 to 21.
    virtual qint32 Property(int number) const = 0;
    // Shows a block of samples: interleaved frames of as many channels as property 21 says, the latest frame
    // last. Any length will do: of more frames than property 18 the latest count, fewer are shown as they
    // are, and samples beyond the last whole frame are dropped. An empty block clears the display at once.
    virtual void DrawBlock(const QList<qint16>& samples) = 0;

signals:
    // A property took another value than it had.
    void PropertyChanged(int number, qint32 value);
};

} // namespace kestrune
