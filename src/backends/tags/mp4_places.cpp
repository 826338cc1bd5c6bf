#include "backends/tags/mp4_places.h"

#include "backends/tags/mp4_atoms.h"

#include <QtEndian>

#include <algorithm>
#include <array>
#include <limits>

namespace kestrune {

namespace {

constexpr qint64 markBytes = 4; // version, and three bytes of flags
constexpr int mostDepth = 8;

// Numbers of four or eight bytes inside of an atom.
class Places {
public:
    Places(QByteArray& bytes, const Mp4Atom& atom, const Mp4Move& move)
        : bytes_(bytes), at_(atom.Content() + markBytes), end_(atom.End()), move_(move) {
        whole_ = at_ <= end_;
        version_ = whole_ ? static_cast<unsigned char>(bytes[atom.Content()]) : 0;
        flags_ = whole_ ? qFromBigEndian<quint32>(bytes.constData() + atom.Content()) & 0xFFFFFFU : 0;
    }

    unsigned Version() const { return version_; }
    quint32 Flags() const { return flags_; }
    bool Whole() const { return whole_; }
    bool Has(qint64 bytes) {
        whole_ = whole_ && bytes <= end_ - at_;
        return whole_;
    }
    void Skip(qint64 bytes) { at_ += Has(bytes) ? bytes : 0; }
    quint32 Number() {
        const quint32 number = Has(4) ? qFromBigEndian<quint32>(bytes_.constData() + at_) : 0;
        Skip(4);
        return number;
    }
    void Move(bool wide) {
        const qint64 width = wide ? 8 : 4;
        if (!Has(width)) {
            return;
        }
        char* const place = bytes_.data() + at_;
        const quint64 old = wide ? qFromBigEndian<quint64>(place) : qFromBigEndian<quint32>(place);
        if (old >= static_cast<quint64>(move_.fromBytes)) {
            const quint64 moved = old + static_cast<quint64>(move_.byBytes);
            whole_ = wide || moved <= std::numeric_limits<quint32>::max();
            wide ? qToBigEndian(moved, place) : qToBigEndian(static_cast<quint32>(moved), place);
        }
        at_ += width;
    }

private:
    QByteArray& bytes_;
    qint64 at_;
    qint64 end_;
    Mp4Move move_;
    bool whole_ = true;
    unsigned version_ = 0;
    quint32 flags_ = 0;
};

// Where the chunks of a track begin.
bool MoveChunks(Places places, bool wide) {
    const quint32 count = places.Number();
    places.Has(static_cast<qint64>(count) * (wide ? 8 : 4));
    for (quint32 at = 0; at < count && places.Whole(); ++at) {
        places.Move(wide);
    }
    return places.Whole();
}

// What the places in a fragment are counted from: the track's number, then the place, if it is told.
bool MoveFragment(Places places) {
    constexpr quint32 placeIsTold = 1;
    if ((places.Flags() & placeIsTold) != 0) {
        places.Skip(4);
        places.Move(true);
    }
    return places.Whole();
}

// A table of fragments: track, sizes of three numbers, count; each with time, place and the three numbers.
bool MoveFragmentTable(Places places) {
    places.Skip(4);
    const quint32 sizes = places.Number();
    const qint64 numbersBytes = 3 + (sizes >> 4U & 3U) + (sizes >> 2U & 3U) + (sizes & 3U);
    const quint32 count = places.Number();
    const bool wide = places.Version() == 1;
    for (quint32 at = 0; at < count && places.Whole(); ++at) {
        places.Skip(wide ? 8 : 4);
        places.Move(wide);
        places.Skip(numbersBytes);
    }
    return places.Whole();
}

bool IsAnyOf(const QByteArray& name, std::initializer_list<const char*> names) {
    return std::any_of(names.begin(), names.end(), [&name](const char* one) { return name == one; });
}

bool MoveIn(QByteArray& bytes, qint64 from, qint64 to, const Mp4Move& move, int depth) {
    const auto atoms = Mp4AtomsIn(bytes, from, to);
    if (!atoms || depth > mostDepth) {
        return false;
    }
    return std::all_of(atoms->begin(), atoms->end(), [&](const Mp4Atom& atom) {
        if (IsAnyOf(atom.name, {"moov", "trak", "mdia", "minf", "stbl", "moof", "traf", "mfra"})) {
            return MoveIn(bytes, atom.Content(), atom.End(), move, depth + 1);
        }
        if (IsAnyOf(atom.name, {"stco", "co64"})) {
            return MoveChunks(Places(bytes, atom, move), atom.name == "co64");
        }
        if (atom.name == "tfhd") {
            return MoveFragment(Places(bytes, atom, move));
        }
        if (atom.name == "tfra") {
            return MoveFragmentTable(Places(bytes, atom, move));
        }
        // A packed one, and places of keys.
        return !IsAnyOf(atom.name, {"cmov", "saio"});
    });
}

} // namespace

bool MoveMp4Places(QByteArray& atom, const Mp4Move& move) {
    return MoveIn(atom, 0, atom.size(), move, 0);
}

} // namespace kestrune
