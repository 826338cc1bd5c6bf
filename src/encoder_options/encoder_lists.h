// The bit rates, sampling rates and texts that the encoder option dialogs offer.
#pragma once

#include <QString>
#include <QtGlobal>
#include <array>
#include <optional>

namespace kestrune {

// kbit/s by the position of a bit rate slider. 40 and 80 are left out.
inline constexpr std::array<qint32, 15> bitRatesKbps = {8,   16,  24,  32,  48,  56,  64, 96,
                                                        112, 128, 160, 192, 224, 256, 320};
inline constexpr int lastBitRateIndex = static_cast<int>(bitRatesKbps.size()) - 1;

// kbit/s of a slider's position; positions outside 0 to 14 are brought into it.
qint32 BitRateAt(int index);
// The position of a bit rate, none for one that is not in the table.
std::optional<int> BitRateIndex(qint32 kbps);

struct SamplingFrequency {
    const char* text;
    qint32 hz;
};
inline constexpr std::array<SamplingFrequency, 9> samplingFrequencies = {{{"  8 000 Hz", 8000},
                                                                          {"11 025 Hz", 11025},
                                                                          {"12 000 Hz ", 12000},
                                                                          {"16 000 Hz", 16000},
                                                                          {"22 050 Hz", 22050},
                                                                          {"24 000 Hz", 24000},
                                                                          {"32 000 Hz", 32000},
                                                                          {"44 100 Hz", 44100},
                                                                          {"48 000 Hz", 48000}}};
inline constexpr int lastFrequencyIndex = static_cast<int>(samplingFrequencies.size()) - 1;

// Hz of an entry; indexes outside the list are brought into it.
qint32 SamplingFrequencyAt(int index);
// The entry of a rate. The search begins at the first entry and stays at the last one when none is equal.
int SamplingFrequencyIndex(qint32 hz);

// A value of an options dialog that picks an entry of a list: `index` if the list has it, else `current`.
int IndexInList(int index, size_t count, int current);

} // namespace kestrune
