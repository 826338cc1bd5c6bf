// The record of "Options.dat": packed, little-endian, at the start of the file.
#pragma once

#include "components/audio_player.h"

#include <QByteArray>
#include <QString>
#include <array>

namespace kestrune {

inline constexpr int playlistItemCount = 7; // Title, Duration, Type, Size, Path, File Name, Format Strings

struct OptionsRecord {
    quint8 FftType = 0;
    quint8 FftResolution = 0;
    quint8 PlayMode = 0;
    EqualizerGains EqBand{};
    bool UseDefaultOnStartup = false;
    std::array<bool, playlistItemCount> Items{}; // which columns of the playlist show
    QString CurPath;
};

// Takes any bytes. What lies beyond the end of the file reads as zero; a band that is not a number reads as
// 0.
OptionsRecord DecodeOptions(const QByteArray& bytes);

// True when the bytes reach behind the options, so that they hold the column flags.
bool HoldsColumns(const QByteArray& bytes);

// The file's new content. The file never gets shorter: old bytes behind the record stay.
QByteArray EncodeOptions(const OptionsRecord& record, const QByteArray& oldBytes);

} // namespace kestrune
