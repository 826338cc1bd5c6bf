// The parts that an MP4 file is made of: atoms, some of which hold others
// (ISO/IEC 14496-12, there called boxes).
#pragma once

#include <QByteArray>
#include <QByteArrayView>
#include <QList>
#include <QtGlobal>

#include <optional>

namespace kestrune {

// Bytes from the start of what was searched.
struct Mp4Atom {
    QByteArray name; // four bytes
    qint64 offset = 0;
    qint64 headBytes = 0; // 8, or 16 with a size of 64 bits
    qint64 sizeBytes = 0; // with the head

    qint64 Content() const { return offset + headBytes; }
    qint64 End() const { return offset + sizeBytes; }
};

// The head of an atom at the start of `bytes`, of which up to 16 are looked at; `leftBytes` is what there is
// from there on, which an atom without a size of its own takes all. Empty if it is none. The size may go
// beyond what is left.
std::optional<Mp4Atom> Mp4AtomHead(QByteArrayView bytes, qint64 leftBytes);

// The atoms one behind the other from `from` to `to`, with offsets in `bytes`. Fewer than four bytes at the
// end, and zeros, count as none, as some writers leave them. Empty if they do not fill the place exactly.
std::optional<QList<Mp4Atom>> Mp4AtomsIn(const QByteArray& bytes, qint64 from, qint64 to);

// Null if there is none.
const Mp4Atom* FindMp4Atom(const QList<Mp4Atom>& atoms, const char* name);

QByteArray RenderMp4Atom(const QByteArray& name, const QByteArray& content);

// Adds to the size that the head at `offset` tells. False if it does not fit there.
bool GrowMp4Atom(QByteArray& bytes, const Mp4Atom& atom, qint64 grownBytes);

} // namespace kestrune
