#include "backends/tags/tag_reader.h"

#include "backends/tags/chunked_plan.h"
#include "backends/tags/genre_names.h"
#include "backends/tags/id3v1_block.h"
#include "backends/tags/id3v2_fields.h"
#include "backends/tags/id3v2_frames.h"
#include "backends/tags/mp4_plan.h"

#include <taglib/aifffile.h>
#include <taglib/asffile.h>
#include <taglib/commentsframe.h>
#include <taglib/id3v2header.h>
#include <taglib/id3v2tag.h>
#include <taglib/mp4file.h>
#include <taglib/mpegfile.h>
#include <taglib/textidentificationframe.h>
#include <taglib/tpropertymap.h>
#include <taglib/trueaudiofile.h>
#include <taglib/urllinkframe.h>
#include <taglib/wavfile.h>

#include <algorithm>
#include <limits>

namespace kestrune {

namespace {

QString FromTagLib(const TagLib::String& text) {
    return QString::fromStdWString(text.toWString());
}

qint16 Int16Of(unsigned int value) {
    return static_cast<qint16>(std::min<unsigned int>(value, std::numeric_limits<qint16>::max()));
}

// What every TagLib tag has.
TagFields CommonFields(const TagLib::Tag& tag) {
    TagFields fields;
    fields.title = FromTagLib(tag.title());
    fields.artist = FromTagLib(tag.artist());
    fields.album = FromTagLib(tag.album());
    fields.comment = FromTagLib(tag.comment());
    fields.genreText = FromTagLib(tag.genre());
    fields.genre = GenreOfText(fields.genreText);
    fields.year = static_cast<qint32>(tag.year());
    fields.track = Int16Of(tag.track());
    return fields;
}

QString FrameText(const TagLib::ID3v2::Tag& tag, const char* id) {
    const TagLib::ID3v2::FrameList& frames = tag.frameList(id);
    return frames.isEmpty() ? QString() : FromTagLib(frames.front()->toString());
}

// The comment without a description, else the first whose description is not one of those that a program
// writes for itself.
QString CommentOf(const TagLib::ID3v2::Tag& tag) {
    QString first;
    for (const TagLib::ID3v2::Frame* frame : tag.frameList("COMM")) {
        const auto* comment = dynamic_cast<const TagLib::ID3v2::CommentsFrame*>(frame);
        if (comment == nullptr) {
            continue;
        }
        if (comment->description().isEmpty()) {
            return FromTagLib(comment->text());
        }
        if (first.isNull() && !comment->description().startsWith("iTun")) {
            first = FromTagLib(comment->text());
        }
    }
    return first;
}

// The user's web link: the first without a description, else the first.
QString UrlOf(const TagLib::ID3v2::Tag& tag) {
    QString first;
    for (const TagLib::ID3v2::Frame* frame : tag.frameList("WXXX")) {
        const auto* link = dynamic_cast<const TagLib::ID3v2::UserUrlLinkFrame*>(frame);
        if (link == nullptr) {
            continue;
        }
        if (link->description().isEmpty()) {
            return FromTagLib(link->url());
        }
        if (first.isNull()) {
            first = FromTagLib(link->url());
        }
    }
    return first;
}

// TagLib names genre numbers by its own list, so the frame is read as it stands: numbers set the genre, other
// text is the genre's text and sets the number if it is the name of one.
void SetGenre(TagFields& fields, const TagLib::ID3v2::Tag& tag) {
    fields.genre = noGenre;
    fields.genreText.clear();
    const TagLib::ID3v2::FrameList& frames = tag.frameList("TCON");
    const auto* frame = frames.isEmpty()
                            ? nullptr
                            : dynamic_cast<const TagLib::ID3v2::TextIdentificationFrame*>(frames.front());
    if (frame == nullptr) {
        return;
    }
    for (const TagLib::String& value : frame->fieldList()) {
        const QString text = FromTagLib(value);
        bool isNumber = false;
        text.toInt(&isNumber);
        if (!isNumber && fields.genreText.isEmpty()) {
            fields.genreText = text;
        }
        if (fields.genre == noGenre) {
            fields.genre = GenreOfText(text);
        }
    }
}

TagFields Id3v2Fields(const TagLib::ID3v2::Tag& tag) {
    TagFields fields = CommonFields(tag);
    SetGenre(fields, tag);
    fields.comment = CommentOf(tag);
    fields.copyright = FrameText(tag, "TCOP");
    fields.encodedBy = FrameText(tag, "TENC");
    fields.composer = FrameText(tag, "TCOM");
    fields.originalArtist = FrameText(tag, "TOPE");
    fields.url = UrlOf(tag);
    return fields;
}

QString AsfText(const TagLib::ASF::Tag& tag, const char* name) {
    const TagLib::ASF::AttributeList values = tag.attribute(name);
    return values.isEmpty() ? QString() : FromTagLib(values.front().toString());
}

// Some writers tell these among the other texts.
void TakeAsfTwin(QString& text, const TagLib::ASF::Tag& tag, std::initializer_list<const char*> names) {
    for (const char* name : names) {
        if (text.isEmpty()) {
            text = AsfText(tag, name);
        }
    }
}

void AddAsfFields(TagFields& fields, const TagLib::ASF::Tag& tag) {
    fields.copyright = FromTagLib(tag.copyright());
    fields.encodedBy = AsfText(tag, "WM/EncodedBy");
    fields.composer = AsfText(tag, "WM/Composer");
    fields.originalArtist = AsfText(tag, "WM/OriginalArtist");
    fields.url = AsfText(tag, "WM/AuthorURL");
    TakeAsfTwin(fields.title, tag, {"Title", "title", "WM/Title"});
    TakeAsfTwin(fields.artist, tag, {"Author", "author", "artist", "WM/Author"});
    TakeAsfTwin(fields.comment, tag, {"Description", "comment", "WM/Description"});
    TakeAsfTwin(fields.copyright, tag, {"Copyright", "copyright", "WM/Copyright"});
}

QString FirstOf(const TagLib::PropertyMap& values, std::initializer_list<const char*> names) {
    for (const char* name : names) {
        const auto found = values.find(name);
        if (found != values.end() && !found->second.isEmpty()) {
            return FromTagLib(found->second.front());
        }
    }
    return {};
}

// Comments of Ogg and FLAC, items of APE and MP4: fields by name. Where writers disagree, the commonest comes
// first.
void AddNamedFields(TagFields& fields, const TagLib::PropertyMap& values) {
    fields.copyright = FirstOf(values, {"COPYRIGHT"});
    fields.encodedBy = FirstOf(values, {"ENCODEDBY", "ENCODED-BY", "ENCODED_BY", "ENCODED BY"});
    fields.composer = FirstOf(values, {"COMPOSER"});
    fields.originalArtist = FirstOf(values, {"ORIGINALARTIST", "ORIGINAL ARTIST"});
    fields.url = FirstOf(values, {"URL", "WWW", "CONTACT"});
}

// Fields that MP4 has only long names for.
void AddFreeMp4Fields(TagFields& fields, const TagLib::MP4::Tag& tag) {
    const auto text = [&tag](const char* name) {
        const TagLib::MP4::Item item = tag.item(TagLib::String("----:com.apple.iTunes:") + name);
        return item.isValid() ? FromTagLib(item.toStringList().toString()) : QString();
    };
    fields.originalArtist = text("ORIGINALARTIST");
    fields.url = text("URL");
}

// A WAVE file may hold a list of texts, an ID3v2 chunk, or both; the list is what other programs show, so
// that goes before, field by field.
TagFields WaveFields(const TagLib::RIFF::WAV::File& wave, BoundedFile& file) {
    TagFields fields = WaveInfoFields(file);
    if (!wave.hasID3v2Tag()) {
        return fields;
    }
    const TagFields chunk = Id3v2Fields(*wave.ID3v2Tag());
    for (QString TagFields::*text :
         {&TagFields::album, &TagFields::artist, &TagFields::comment, &TagFields::copyright,
          &TagFields::title, &TagFields::url, &TagFields::encodedBy, &TagFields::composer,
          &TagFields::originalArtist}) {
        if ((fields.*text).isEmpty()) {
            fields.*text = chunk.*text;
        }
    }
    if (fields.genreText.isEmpty()) {
        fields.genreText = chunk.genreText;
        fields.genre = chunk.genre;
    }
    fields.year = fields.year > 0 ? fields.year : chunk.year;
    fields.track = fields.track > 0 ? fields.track : chunk.track;
    return fields;
}

TagFields Id3v1Fields(BoundedFile& file) {
    return ParseId3v1(file.ReadAt(file.SizeBytes() - id3v1Bytes, id3v1Bytes)).value_or(TagFields());
}

// The ID3v2 tag of a kind that may hold an ID3v1 tag beside it.
const TagLib::ID3v2::Tag* PairedId3v2(TagLib::File& tagged) {
    if (auto* mpeg = dynamic_cast<TagLib::MPEG::File*>(&tagged)) {
        return mpeg->ID3v2Tag();
    }
    if (auto* tta = dynamic_cast<TagLib::TrueAudio::File*>(&tagged)) {
        return tta->ID3v2Tag();
    }
    return nullptr;
}

TagFields PairedId3v2Fields(TagLib::File& tagged, BoundedFile& file) {
    const TagLib::ID3v2::Tag* tag = PairedId3v2(tagged);
    if (tag == nullptr) {
        return {};
    }
    TagFields fields = Id3v2Fields(*tag);
    if (tag->header()->majorVersion() == 2) {
        const qint64 sizeBytes = Id3v2SizeOf(file.ReadAt(0, id3v2HeadBytes));
        const auto block = ParseId3v2(file.ReadAt(0, sizeBytes));
        fields.originalArtist = block ? OriginalArtistIn(*block) : QString();
    }
    return fields;
}

bool HoldsPair(const TagLib::File& tagged) {
    return dynamic_cast<const TagLib::MPEG::File*>(&tagged) != nullptr ||
           dynamic_cast<const TagLib::TrueAudio::File*>(&tagged) != nullptr;
}

} // namespace

// Of two tags the one that is asked for: the editor begins with ID3v1 (TagInformation) and changes by its
// ChooseTagKind. Rows of the playlist take NamingOf, where the second version goes first.
TagFields ReadFields(TagLib::File& tagged, BoundedFile& file, TagKind kind) {
    if (HoldsPair(tagged)) {
        if (kind == TagKind::Id3v1) {
            return Id3v1Fields(file);
        }
        return PairedId3v2Fields(tagged, file);
    }
    if (const auto* wave = dynamic_cast<TagLib::RIFF::WAV::File*>(&tagged)) {
        return WaveFields(*wave, file);
    }
    if (const auto* aiff = dynamic_cast<TagLib::RIFF::AIFF::File*>(&tagged)) {
        return Id3v2Fields(*aiff->tag());
    }
    if (tagged.tag() == nullptr) {
        return {};
    }
    TagFields fields = CommonFields(*tagged.tag());
    if (const auto* asf = dynamic_cast<TagLib::ASF::File*>(&tagged)) {
        AddAsfFields(fields, *asf->tag());
    } else {
        AddNamedFields(fields, tagged.properties());
    }
    if (const auto* mp4 = dynamic_cast<TagLib::MP4::File*>(&tagged)) {
        AddFreeMp4Fields(fields, *mp4->tag());
        // TagLib names numbers by its own list.
        if (const qint16 genre = Mp4GenreNumber(file); genre != noGenre) {
            fields.genre = genre;
            fields.genreText = NameOfGenre(genre);
        }
    }
    return fields;
}

Naming NamingOf(TagLib::File& tagged, BoundedFile& file) {
    if (const auto* wave = dynamic_cast<TagLib::RIFF::WAV::File*>(&tagged)) {
        const TagFields fields = WaveFields(*wave, file);
        return {fields.title, fields.artist};
    }
    Naming naming;
    if (const TagLib::ID3v2::Tag* tag = PairedId3v2(tagged)) {
        naming = {FromTagLib(tag->title()), FromTagLib(tag->artist())};
    }
    if (HoldsPair(tagged) && (naming.title.isEmpty() || naming.artist.isEmpty())) {
        const TagFields old = Id3v1Fields(file);
        naming.title = naming.title.isEmpty() ? old.title : naming.title;
        naming.artist = naming.artist.isEmpty() ? old.artist : naming.artist;
    }
    if (tagged.tag() != nullptr) {
        naming.title = naming.title.isEmpty() ? FromTagLib(tagged.tag()->title()) : naming.title;
        naming.artist = naming.artist.isEmpty() ? FromTagLib(tagged.tag()->artist()) : naming.artist;
    }
    return naming;
}

} // namespace kestrune
