// Where an MP4 file tells places of its sound in bytes from its start.
#pragma once

#include <QByteArray>
#include <QtGlobal>

namespace kestrune {

// Places from `fromBytes` on are moved by `byBytes`.
struct Mp4Move {
    qint64 fromBytes = 0;
    qint64 byBytes = 0;
};

// Changes the places that are told inside of a "moov", "moof" or "mfra" atom, given whole. False if they do
// not fit, or stand in parts that are not understood; then the bytes are of no use.
bool MoveMp4Places(QByteArray& atom, const Mp4Move& move);

} // namespace kestrune
