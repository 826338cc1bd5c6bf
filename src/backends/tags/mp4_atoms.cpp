#include "backends/tags/mp4_atoms.h"

#include <QtEndian>

#include <algorithm>
#include <limits>

namespace kestrune {

namespace {

constexpr qint64 shortHeadBytes = 8;
constexpr qint64 longHeadBytes = 16;

} // namespace

std::optional<Mp4Atom> Mp4AtomHead(QByteArrayView bytes, qint64 leftBytes) {
    if (bytes.size() < shortHeadBytes) {
        return std::nullopt;
    }
    Mp4Atom atom;
    atom.name = bytes.sliced(4, 4).toByteArray();
    atom.headBytes = shortHeadBytes;
    atom.sizeBytes = qFromBigEndian<quint32>(bytes.data());
    if (atom.sizeBytes == 0) {
        atom.sizeBytes = leftBytes;
    } else if (atom.sizeBytes == 1) {
        if (bytes.size() < longHeadBytes) {
            return std::nullopt;
        }
        const auto size = qFromBigEndian<quint64>(bytes.data() + shortHeadBytes);
        atom.headBytes = longHeadBytes;
        atom.sizeBytes = static_cast<qint64>(std::min<quint64>(size, std::numeric_limits<qint64>::max() / 2));
    }
    return atom.sizeBytes < atom.headBytes ? std::nullopt : std::make_optional(atom);
}

std::optional<QList<Mp4Atom>> Mp4AtomsIn(const QByteArray& bytes, qint64 from, qint64 to) {
    QList<Mp4Atom> atoms;
    while (from < to) {
        const QByteArrayView left = QByteArrayView(bytes).sliced(from, to - from);
        if (left.size() <= 4 &&
            std::all_of(left.begin(), left.end(), [](char byte) { return byte == '\0'; })) {
            break;
        }
        std::optional<Mp4Atom> atom = Mp4AtomHead(left, left.size());
        if (!atom || atom->sizeBytes > left.size()) {
            return std::nullopt;
        }
        atom->offset = from;
        from += atom->sizeBytes;
        atoms.append(*atom);
    }
    return atoms;
}

const Mp4Atom* FindMp4Atom(const QList<Mp4Atom>& atoms, const char* name) {
    const auto found =
        std::find_if(atoms.begin(), atoms.end(), [name](const Mp4Atom& atom) { return atom.name == name; });
    return found == atoms.end() ? nullptr : &*found;
}

QByteArray RenderMp4Atom(const QByteArray& name, const QByteArray& content) {
    QByteArray size(4, Qt::Uninitialized);
    qToBigEndian(static_cast<quint32>(shortHeadBytes + content.size()), size.data());
    return size + name + content;
}

bool GrowMp4Atom(QByteArray& bytes, const Mp4Atom& atom, qint64 grownBytes) {
    char* const head = bytes.data() + atom.offset;
    const auto told = qFromBigEndian<quint32>(head);
    if (told == 0) {
        return true; // to the end of the file, wherever that is
    }
    const qint64 size = atom.sizeBytes + grownBytes;
    if (told == 1) {
        qToBigEndian(static_cast<quint64>(size), head + shortHeadBytes);
        return true;
    }
    qToBigEndian(static_cast<quint32>(size), head);
    return size <= std::numeric_limits<quint32>::max();
}

} // namespace kestrune
