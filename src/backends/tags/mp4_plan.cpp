#include "backends/tags/mp4_plan.h"

#include "backends/tags/genre_names.h"
#include "backends/tags/mp4_atoms.h"
#include "backends/tags/mp4_items.h"
#include "backends/tags/mp4_places.h"
#include "backends/tags/tag_changes.h"

#include <QtEndian>

#include <algorithm>
#include <limits>

namespace kestrune {

namespace {

constexpr qint64 headBytes = 16;
constexpr qint64 shortHeadBytes = 8;
constexpr qint64 spareBytes = 1024;
constexpr qsizetype mostAtoms = 1000000;

// The atoms of the file itself. The last one may be cut.
std::optional<QList<Mp4Atom>> ReadTopAtoms(BoundedFile& file) {
    QList<Mp4Atom> atoms;
    for (qint64 at = 0; at < file.SizeBytes();) {
        const qint64 leftBytes = file.SizeBytes() - at;
        std::optional<Mp4Atom> atom = Mp4AtomHead(file.ReadAt(at, headBytes), leftBytes);
        if (!atom || atoms.size() == mostAtoms) {
            // What is none can stay behind the others.
            return atoms.size() == mostAtoms ? std::nullopt : std::make_optional(atoms);
        }
        atom->offset = at;
        atom->sizeBytes = std::min(atom->sizeBytes, leftBytes);
        at = atom->End();
        atoms.append(*atom);
    }
    return atoms;
}

// The atoms from "moov" down to the list of items, as far as they are there, with offsets in "moov".
struct ItemsPath {
    QList<Mp4Atom> holders; // moov, udta, meta
    std::optional<Mp4Atom> list;
    qint64 roomBytes = 0; // of the list with the padding behind it
};

// A "meta" atom has four bytes in front of its parts, but not in every file; of the kinds of it one is ours.
std::optional<QList<Mp4Atom>> PartsOfMeta(const QByteArray& moov, const Mp4Atom& meta) {
    const qint64 at = meta.Content();
    const bool bare = moov.mid(at + 4, 4) == "hdlr";
    const auto parts = Mp4AtomsIn(moov, std::min(at + (bare ? 0 : 4), meta.End()), meta.End());
    const Mp4Atom* handler = parts ? FindMp4Atom(*parts, "hdlr") : nullptr;
    const bool ours = handler != nullptr && moov.mid(handler->Content() + 8, 4) == "mdir";
    return ours ? parts : std::nullopt;
}

std::optional<ItemsPath> FindItems(const QByteArray& moov) {
    ItemsPath path;
    const std::optional<Mp4Atom> head = Mp4AtomHead(moov, moov.size());
    if (!head || head->sizeBytes != moov.size()) {
        return std::nullopt;
    }
    path.holders.append(*head);
    const auto inMoov = Mp4AtomsIn(moov, head->Content(), head->End());
    const Mp4Atom* udta = inMoov ? FindMp4Atom(*inMoov, "udta") : nullptr;
    if (udta == nullptr) {
        return inMoov ? std::make_optional(path) : std::nullopt;
    }
    path.holders.append(*udta);
    const auto inUdta = Mp4AtomsIn(moov, udta->Content(), udta->End());
    const Mp4Atom* meta = inUdta ? FindMp4Atom(*inUdta, "meta") : nullptr;
    if (meta == nullptr) {
        return inUdta ? std::make_optional(path) : std::nullopt;
    }
    path.holders.append(*meta);
    const auto parts = PartsOfMeta(moov, *meta);
    if (!parts) {
        return std::nullopt;
    }
    for (const Mp4Atom& part : *parts) {
        const bool isPadding =
            path.list && part.name == "free" && path.list->offset + path.roomBytes == part.offset;
        if (!path.list && part.name == "ilst") {
            path.list = part;
            path.roomBytes = part.sizeBytes;
        } else if (isPadding) {
            path.roomBytes += part.sizeBytes;
        }
    }
    return path;
}

QByteArray ItemsOf(const QByteArray& moov, const ItemsPath& path) {
    return path.list ? moov.mid(path.list->Content(), path.list->sizeBytes - path.list->headBytes)
                     : QByteArray();
}

// The list with padding behind it, which fills the old room where it can.
QByteArray RenderedList(const QByteArray& items, qint64 roomBytes) {
    QByteArray list = RenderMp4Atom("ilst", items);
    const qint64 leftBytes = roomBytes - list.size();
    if (leftBytes == 0) {
        return list;
    }
    const qint64 padding = leftBytes >= shortHeadBytes ? leftBytes : spareBytes;
    return list + RenderMp4Atom("free", QByteArray(padding - shortHeadBytes, '\0'));
}

// The list inside of those holders that are missing.
QByteArray WithNewHolders(QByteArray list, qsizetype holders) {
    if (holders < 3) {
        const QByteArray handler =
            RenderMp4Atom("hdlr", QByteArray(8, '\0') + "mdirappl" + QByteArray(9, '\0'));
        list = RenderMp4Atom("meta", QByteArray(4, '\0') + handler + list);
    }
    return holders < 2 ? RenderMp4Atom("udta", list) : list;
}

// Where a part that is new goes: to the end of its holder, in front of zeros that some writers leave there.
qint64 EndOfParts(const QByteArray& moov, const Mp4Atom& holder) {
    if (holder.name != "udta") {
        return holder.End();
    }
    const auto parts = Mp4AtomsIn(moov, holder.Content(), holder.End());
    return parts && !parts->isEmpty() ? parts->back().End() : holder.Content();
}

// The "moov" atom with other items; empty if that is not possible.
QByteArray WithItems(const QByteArray& moov, const ItemsPath& path, const QByteArray& items) {
    const QByteArray list = WithNewHolders(RenderedList(items, path.roomBytes), path.holders.size());
    const qint64 at = path.list ? path.list->offset : EndOfParts(moov, path.holders.back());
    QByteArray changed = moov.left(at) + list + moov.mid(at + path.roomBytes);
    for (const Mp4Atom& holder : path.holders) {
        if (!GrowMp4Atom(changed, holder, changed.size() - moov.size())) {
            return {};
        }
    }
    return changed;
}

struct Mp4Layout {
    QList<Mp4Atom> atoms;
    qsizetype moovAt = -1;
    QByteArray moov;
    ItemsPath path;
};

// An atom that tells places, with these told anew; empty if that is not possible.
QByteArray Moved(QByteArray atom, qint64 wantedBytes, const Mp4Move& move) {
    return atom.size() == wantedBytes && MoveMp4Places(atom, move) ? atom : QByteArray();
}

// The file with another "moov". Sound that then stands elsewhere is told of anew. Empty if that is not
// possible.
std::optional<FilePieces> WithMoov(BoundedFile& file, const Mp4Layout& layout, const QByteArray& moov) {
    const Mp4Atom& old = layout.atoms[layout.moovAt];
    const Mp4Move move{old.End(), moov.size() - old.sizeBytes};
    FilePieces pieces;
    qint64 at = 0;
    for (const Mp4Atom& atom : layout.atoms) {
        const bool isMoov = atom.offset == old.offset;
        if (!isMoov && (move.byBytes == 0 || !(atom.name == "moof" || atom.name == "mfra"))) {
            // An index in front of it tells distances to what is behind it.
            if (move.byBytes != 0 && atom.name == "sidx" && atom.offset < old.offset) {
                return std::nullopt;
            }
            continue;
        }
        QByteArray bytes = isMoov ? moov : file.ReadAt(atom.offset, atom.sizeBytes);
        if (move.byBytes != 0) {
            bytes = Moved(bytes, isMoov ? moov.size() : atom.sizeBytes, move);
        }
        if (bytes.isEmpty()) {
            return std::nullopt;
        }
        pieces.AddRange(at, atom.offset - at);
        pieces.AddBytes(bytes);
        at = atom.End();
    }
    pieces.AddRange(at, file.SizeBytes() - at);
    return pieces;
}

std::optional<Mp4Layout> ReadLayout(BoundedFile& file) {
    Mp4Layout layout;
    const auto atoms = ReadTopAtoms(file);
    if (!atoms) {
        return std::nullopt;
    }
    layout.atoms = *atoms;
    for (qsizetype at = 0; at < layout.atoms.size(); ++at) {
        if (layout.atoms[at].name == "moov") {
            if (layout.moovAt >= 0) {
                return std::nullopt;
            }
            layout.moovAt = at;
        }
    }
    if (layout.moovAt < 0) {
        return std::nullopt;
    }
    const Mp4Atom& moov = layout.atoms[layout.moovAt];
    layout.moov = file.ReadAt(moov.offset, moov.sizeBytes);
    const auto path = layout.moov.size() == moov.sizeBytes ? FindItems(layout.moov) : std::nullopt;
    if (!path) {
        return std::nullopt;
    }
    layout.path = *path;
    return layout;
}

} // namespace

SavePlan PlanMp4(BoundedFile& file, const TagFields& from, const TagFields& to) {
    if (SameFields(from, to)) {
        return {};
    }
    file.RenewBudgetForTag();
    const std::optional<Mp4Layout> layout = ReadLayout(file);
    const auto items = layout ? ChangedMp4Items(ItemsOf(layout->moov, layout->path), from, to) : std::nullopt;
    const QByteArray moov = items ? WithItems(layout->moov, layout->path, *items) : QByteArray();
    if (moov.isEmpty()) {
        return SavePlan::Refused(Outcome::NotSupported);
    }
    file.RenewBudgetForTag();
    SavePlan plan;
    plan.pieces = WithMoov(file, *layout, moov);
    return plan.pieces ? plan : SavePlan::Refused(Outcome::NotSupported);
}

qint16 Mp4GenreNumber(BoundedFile& file) {
    file.RenewBudgetForTag();
    const std::optional<Mp4Layout> layout = ReadLayout(file);
    return layout ? Mp4GenreNumber(ItemsOf(layout->moov, layout->path)) : noGenre;
}

} // namespace kestrune
