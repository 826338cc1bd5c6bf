#include "backends/tags/tag_writer.h"

#include "backends/tags/tag_changes.h"
#include "backends/tags/xiph_comments.h"

#include <QtEndian>

#include <taglib/apefile.h>
#include <taglib/apetag.h>
#include <taglib/asffile.h>
#include <taglib/flacfile.h>
#include <taglib/mpcfile.h>
#include <taglib/oggfile.h>
#include <taglib/oggflacfile.h>
#include <taglib/speexfile.h>
#include <taglib/wavpackfile.h>
#include <taglib/xiphcomment.h>

#include <array>
#include <functional>
#include <initializer_list>
#include <optional>
#include <utility>

namespace kestrune {

namespace {

using TextField = QString TagFields::*;

TagLib::String ToTagLib(const QString& text) {
    return {text.toUtf8().toStdString(), TagLib::String::UTF8};
}

QString FromTagLib(const TagLib::String& text) {
    return QString::fromStdWString(text.toWString());
}

// The ways a kind of tag has to tell a text by its name; an empty one takes it away.
struct NamedTexts {
    std::function<QString(const char*)> get;
    std::function<void(const char*, const QString&)> set;
};

// A field under its names: the first is for new texts, the others are read too.
struct NamedField {
    TextField field;
    std::array<const char*, 4> names;
};

// Those that TagLib has no call for, in Ogg comments and APE items.
constexpr std::array extraFields = {
    NamedField{&TagFields::copyright, {"COPYRIGHT"}},
    NamedField{&TagFields::encodedBy, {"ENCODEDBY", "ENCODED-BY", "ENCODED_BY", "ENCODED BY"}},
    NamedField{&TagFields::composer, {"COMPOSER"}},
    NamedField{&TagFields::originalArtist, {"ORIGINALARTIST", "ORIGINAL ARTIST"}},
    NamedField{&TagFields::url, {"URL", "WWW", "CONTACT"}},
};

// The name that told the old text gets the new one; with an empty text all names go.
void SetNamed(const NamedTexts& texts, const NamedField& named, const QString& text) {
    const char* target = named.names.front();
    for (const char* name : named.names) {
        if (name != nullptr && !texts.get(name).isEmpty()) {
            target = name;
            break;
        }
    }
    if (!text.isEmpty()) {
        texts.set(target, text);
        return;
    }
    for (const char* name : named.names) {
        if (name != nullptr) {
            texts.set(name, {});
        }
    }
}

void SetExtraFields(const NamedTexts& texts, const TagFields& from, const TagFields& to) {
    for (const NamedField& named : extraFields) {
        if (from.*named.field != to.*named.field) {
            SetNamed(texts, named, to.*named.field);
        }
    }
}

// What TagLib has calls for in every tag, the track excepted. Where a file has tags of several kinds, all of
// them are set.
void SetCommonFields(TagLib::Tag& tag, const TagFields& from, const TagFields& to) {
    if (from.title != to.title) {
        tag.setTitle(ToTagLib(to.title));
    }
    if (from.artist != to.artist) {
        tag.setArtist(ToTagLib(to.artist));
    }
    if (from.album != to.album) {
        tag.setAlbum(ToTagLib(to.album));
    }
    if (from.comment != to.comment) {
        tag.setComment(ToTagLib(to.comment));
    }
    if (GenreAsText(from) != GenreAsText(to)) {
        tag.setGenre(ToTagLib(GenreAsText(to)));
    }
    if (from.year != to.year) {
        tag.setYear(static_cast<unsigned>(to.year));
    }
    if (from.track != to.track) {
        tag.setTrack(static_cast<unsigned>(to.track));
    }
}

NamedTexts TextsOf(TagLib::Ogg::XiphComment& comment) {
    return {[&comment](const char* name) {
                const auto found = comment.fieldListMap().find(name);
                const bool told = found != comment.fieldListMap().end() && !found->second.isEmpty();
                return told ? FromTagLib(found->second.front()) : QString();
            },
            [&comment](const char* name, const QString& text) {
                comment.removeFields(name);
                if (!text.isEmpty()) {
                    comment.addField(name, ToTagLib(text));
                }
            }};
}

void SetXiph(TagLib::File& tagged, TagLib::Ogg::XiphComment& comment, const TagFields& from,
             const TagFields& to) {
    const NamedTexts texts = TextsOf(comment);
    const QString storedTrack = texts.get("TRACKNUMBER");
    SetCommonFields(*tagged.tag(), from, to);
    SetExtraFields(texts, from, to);
    if (from.track != to.track) {
        texts.set("TRACKNUM", {});
        texts.set("TRACKNUMBER", TrackAsText(to.track, storedTrack));
    }
    if (from.comment != to.comment && to.comment.isEmpty()) {
        texts.set("COMMENT", {});
        texts.set("DESCRIPTION", {});
    }
    if (from.year != to.year) {
        texts.set("YEAR", {});
    }
}

NamedTexts TextsOf(TagLib::APE::Tag& tag) {
    return {[&tag](const char* name) {
                const auto found = tag.itemListMap().find(name);
                return found != tag.itemListMap().end() ? FromTagLib(found->second.toString()) : QString();
            },
            [&tag](const char* name, const QString& text) {
                tag.removeItem(name);
                if (!text.isEmpty()) {
                    tag.addValue(name, ToTagLib(text), true);
                }
            }};
}

void SetApe(TagLib::File& tagged, TagLib::APE::Tag& tag, const TagFields& from, const TagFields& to) {
    const NamedTexts texts = TextsOf(tag);
    const QString storedTrack = texts.get("TRACK");
    SetCommonFields(*tagged.tag(), from, to);
    SetExtraFields(texts, from, to);
    if (from.track != to.track) {
        texts.set("TRACK", TrackAsText(to.track, storedTrack));
    }
}

void SetAsfText(TagLib::ASF::Tag& tag, const char* name, const QString& text) {
    tag.removeItem(name);
    if (!text.isEmpty()) {
        tag.setAttribute(name, TagLib::ASF::Attribute(ToTagLib(text)));
    }
}

void SetAsfTrack(TagLib::ASF::Tag& tag, qint16 track) {
    const TagLib::ASF::AttributeList stored = tag.attribute("WM/TrackNumber");
    tag.removeItem("WM/Track"); // an older name, counted from 0
    if (track > 0 && !stored.isEmpty() && stored.front().type() == TagLib::ASF::Attribute::DWordType) {
        tag.setAttribute("WM/TrackNumber", TagLib::ASF::Attribute(static_cast<unsigned>(track)));
    } else {
        SetAsfText(tag, "WM/TrackNumber", TrackAsText(track, {}));
    }
}

// These stand in a place of their own. Some writers tell them a second time among the other texts, and some
// readers prefer that.
void SetAsfDescription(TagLib::ASF::Tag& tag, const TagFields& from, const TagFields& to) {
    const auto removeTwins = [&tag](std::initializer_list<const char*> names) {
        for (const char* name : names) {
            tag.removeItem(name);
        }
    };
    if (from.title != to.title) {
        tag.setTitle(ToTagLib(to.title));
        removeTwins({"title", "Title", "WM/Title"});
    }
    if (from.artist != to.artist) {
        tag.setArtist(ToTagLib(to.artist));
        removeTwins({"artist", "author", "Author", "WM/Author"});
    }
    if (from.comment != to.comment) {
        tag.setComment(ToTagLib(to.comment));
        removeTwins({"comment", "Description", "WM/Description"});
    }
    if (from.copyright != to.copyright) {
        tag.setCopyright(ToTagLib(to.copyright));
        removeTwins({"copyright", "Copyright", "WM/Copyright"});
    }
}

void SetAsf(TagLib::ASF::Tag& tag, const TagFields& from, const TagFields& to) {
    constexpr std::array named = {
        std::pair{&TagFields::album, "WM/AlbumTitle"},
        std::pair{&TagFields::encodedBy, "WM/EncodedBy"},
        std::pair{&TagFields::composer, "WM/Composer"},
        std::pair{&TagFields::originalArtist, "WM/OriginalArtist"},
        std::pair{&TagFields::url, "WM/AuthorURL"},
    };
    for (const auto& [field, name] : named) {
        if (from.*field != to.*field) {
            SetAsfText(tag, name, to.*field);
        }
    }
    SetAsfDescription(tag, from, to);
    if (GenreAsText(from) != GenreAsText(to)) {
        SetAsfText(tag, "WM/Genre", GenreAsText(to));
        tag.removeItem("WM/GenreID"); // it would go on telling the old one
    }
    if (from.year != to.year) {
        SetAsfText(tag, "WM/Year", YearAsText(to.year));
    }
    if (from.track != to.track) {
        SetAsfTrack(tag, to.track);
    }
}

// The APE tag of a kind that has one, made if it is missing; null for other kinds.
TagLib::APE::Tag* ApeTagOf(TagLib::File& tagged) {
    if (auto* musepack = dynamic_cast<TagLib::MPC::File*>(&tagged)) {
        return musepack->APETag(true);
    }
    if (auto* monkeys = dynamic_cast<TagLib::APE::File*>(&tagged)) {
        return monkeys->APETag(true);
    }
    if (auto* wavPack = dynamic_cast<TagLib::WavPack::File*>(&tagged)) {
        return wavPack->APETag(true);
    }
    return nullptr;
}

// Where the comments stand in an Ogg stream: a packet, and what is in front of them there.
struct CommentPacket {
    unsigned int number = 1;
    QByteArray mark;
};

QByteArray PacketOf(TagLib::Ogg::File& ogg, unsigned int number) {
    const TagLib::ByteVector packet = ogg.packet(number);
    return {packet.data(), static_cast<qsizetype>(packet.size())};
}

// FLAC in Ogg has a block in each packet, with a head of four bytes: kind, and mark of the last one, and
// size.
std::optional<CommentPacket> FindFlacComments(TagLib::Ogg::File& ogg) {
    constexpr unsigned int mostBlocks = 128;
    for (unsigned int number = 1; number < mostBlocks; ++number) {
        const QByteArray packet = PacketOf(ogg, number);
        if (packet.size() < 4 || packet.startsWith('\xFF')) {
            break;
        }
        if ((static_cast<unsigned char>(packet[0]) & 0x7FU) == 4) {
            return CommentPacket{number, packet.left(4)};
        }
        if ((static_cast<unsigned char>(packet[0]) & 0x80U) != 0) {
            break;
        }
    }
    return std::nullopt;
}

std::optional<CommentPacket> FindComments(TagLib::Ogg::File& ogg) {
    if (dynamic_cast<TagLib::Ogg::FLAC::File*>(&ogg) != nullptr) {
        return FindFlacComments(ogg);
    }
    const QByteArray packet = PacketOf(ogg, 1);
    for (const char* mark : {"\x03vorbis", "OpusTags"}) {
        if (packet.startsWith(mark)) {
            return CommentPacket{1, mark};
        }
    }
    const bool isSpeex = dynamic_cast<TagLib::Ogg::Speex::File*>(&ogg) != nullptr;
    return isSpeex ? std::make_optional<CommentPacket>({1, {}}) : std::nullopt;
}

// The comments are changed here, since TagLib would write all their names in capitals and in order; TagLib
// divides the packets into pages and numbers these.
Outcome WriteOgg(TagLib::Ogg::File& ogg, const TagFields& from, const TagFields& to) {
    const std::optional<CommentPacket> place = FindComments(ogg);
    const QByteArray packet = place ? PacketOf(ogg, place->number) : QByteArray();
    std::optional<XiphComments> comments =
        place ? ParseXiphComments(packet.mid(place->mark.size())) : std::nullopt;
    if (!comments) {
        return Outcome::NotSupported;
    }
    EditXiphComments(*comments, from, to);
    const QByteArray list = RenderXiphComments(*comments);
    QByteArray mark = place->mark;
    if (dynamic_cast<TagLib::Ogg::FLAC::File*>(&ogg) != nullptr) {
        const auto kind = static_cast<quint32>(static_cast<unsigned char>(mark[0]));
        if (list.size() >= 1 << 24) {
            return Outcome::NotSupported;
        }
        qToBigEndian(kind << 24U | static_cast<quint32>(list.size()), mark.data());
    }
    const QByteArray changed = mark + list;
    ogg.setPacket(place->number, {changed.constData(), static_cast<unsigned int>(changed.size())});
    return ogg.TagLib::Ogg::File::save() ? Outcome::Ok : Outcome::WriteFailed;
}

} // namespace

Outcome WriteFields(TagLib::File& tagged, const TagFields& from, const TagFields& to) {
    if (auto* asf = dynamic_cast<TagLib::ASF::File*>(&tagged)) {
        SetAsf(*asf->tag(), from, to);
    } else if (TagLib::APE::Tag* ape = ApeTagOf(tagged)) {
        SetApe(tagged, *ape, from, to);
    } else if (auto* flac = dynamic_cast<TagLib::FLAC::File*>(&tagged)) {
        SetXiph(tagged, *flac->xiphComment(true), from, to);
    } else if (auto* ogg = dynamic_cast<TagLib::Ogg::File*>(&tagged)) {
        return WriteOgg(*ogg, from, to);
    } else {
        return Outcome::NotSupported;
    }
    return tagged.save() ? Outcome::Ok : Outcome::WriteFailed;
}

} // namespace kestrune
