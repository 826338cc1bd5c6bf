// The state of the converter window that its rules share. One object, owned by ConverterRules and passed by
// reference.
#pragma once

#include "components/audio_format.h"

#include <QString>
#include <QtGlobal>
#include <array>

namespace kestrune {

// Boxes of the output formats, in the order of the screen; also the indices of ImageCheckOut.
enum class OutputBox : int {
    chWMA = 0,
    chMP3,
    chOGG,
    chADPCM,
    chDSP,
    chMP2,
    chVOX,
    chGSM,
    chG721,
    chG723,
    chG726,
    chULAW
};
inline constexpr int outputBoxCount = 12;

inline constexpr qint32 smallestWmaProfile = 0;
inline constexpr qint32 largestWmaProfile = 47;

struct ConverterState {
    qint32 SampleRate = 44100; // Hz
    qint32 Channels = 2;       // 1 or 2
    qint32 G726Bits = 5;       // bits a sample; 4 after the window has loaded
    qint32 G723Bits = 5;       // bits a sample
    QString AcmTemplatePath;   // a WAV file whose format is the target; empty: that stage is off
    QString InputPath;         // full path of the file that is being converted
    QString OutputHead;        // output folder and the input's name without its extension
    qint32 BackwardTransform = 1;
    bool Converting = false;         // a file's chain of formats is running; the copy loop watches it
    kestrune::Mp3Options Mp3Options; // settings of the MP3 encoder
    qint16 ClickedRow = 0;           // 1-based row last clicked, 0 for none
    bool StopBatch = false;          // the user refused the next file
    bool SkipCurrent = false;        // lives within the handler of Stop only
    qint16 FilesCreated = 0;         // stages run
    qint16 FilesConverted = 0;       // checked rows handled
    qint16 FilesTotal = 0;           // checked rows at the start of the run
    bool Loading = false;            // clicks that the load itself raises have no side effects
    qint32 udWMAProfile = 39;        // value of the spinner
    std::array<bool, outputBoxCount> ticks{}; // of the output formats, by OutputBox

    bool IsTicked(OutputBox box) const { return ticks[static_cast<size_t>(box)]; }
};

} // namespace kestrune
