#include "backends/tags/id3v2_fields.h"

#include "backends/tags/genre_names.h"
#include "backends/tags/tag_changes.h"

#include <QStringConverter>

#include <algorithm>

namespace kestrune {

namespace {

// A frame's name in version 2.2 and later; where 2.4 has another than 2.3, that one too.
struct FrameName {
    const char* in22;
    const char* in23;
    const char* in24;
};

constexpr FrameName titleFrame{"TT2", "TIT2", "TIT2"};
constexpr FrameName artistFrame{"TP1", "TPE1", "TPE1"};
constexpr FrameName albumFrame{"TAL", "TALB", "TALB"};
constexpr FrameName commentFrame{"COM", "COMM", "COMM"};
constexpr FrameName copyrightFrame{"TCR", "TCOP", "TCOP"};
constexpr FrameName genreFrame{"TCO", "TCON", "TCON"};
constexpr FrameName yearFrame{"TYE", "TYER", "TDRC"};
constexpr FrameName linkFrame{"WXX", "WXXX", "WXXX"};
constexpr FrameName trackFrame{"TRK", "TRCK", "TRCK"};
constexpr FrameName encodedByFrame{"TEN", "TENC", "TENC"};
constexpr FrameName composerFrame{"TCM", "TCOM", "TCOM"};
constexpr FrameName originalArtistFrame{"TOA", "TOPE", "TOPE"};

// How a text stands in a frame; the number is the frame's first byte.
enum TextCoding : char { Latin1 = 0, Utf16 = 1, Utf16BigEndian = 2, Utf8 = 3 };

QByteArray NameIn(const FrameName& name, int version) {
    return version == 2 ? name.in22 : version == 3 ? name.in23 : name.in24;
}

bool IsLatin1(const QString& text) {
    return std::all_of(text.begin(), text.end(), [](QChar unit) { return unit.unicode() < 0x100; });
}

TextCoding CodingFor(const QString& text, int version) {
    return version == 4 ? Utf8 : IsLatin1(text) ? Latin1 : Utf16;
}

QByteArray Encoded(const QString& text, TextCoding coding) {
    switch (coding) {
    case Latin1:
        return text.toLatin1();
    case Utf8:
        return text.toUtf8();
    default: {
        QStringEncoder encoder(QStringConverter::Utf16LE, QStringConverter::Flag::WriteBom);
        return text.isEmpty() ? QByteArray("\xFF\xFE") : QByteArray(encoder(text));
    }
    }
}

QString Decoded(const QByteArray& bytes, char coding) {
    switch (coding) {
    case Utf16:
        return QStringDecoder(QStringConverter::Utf16)(bytes);
    case Utf16BigEndian:
        return QStringDecoder(QStringConverter::Utf16BE)(bytes);
    case Utf8:
        return QString::fromUtf8(bytes);
    default:
        return QString::fromLatin1(bytes);
    }
}

QByteArray Terminator(TextCoding coding) {
    return {coding == Utf16 ? 2 : 1, '\0'};
}

// Where the text that begins at `at` ends.
qsizetype EndOfText(const QByteArray& content, qsizetype at, char coding) {
    const qsizetype width = coding == Utf16 || coding == Utf16BigEndian ? 2 : 1;
    for (; at + width <= content.size(); at += width) {
        if (content[at] == '\0' && content[at + width - 1] == '\0') {
            return at;
        }
    }
    return content.size();
}

Id3v2Frame NewFrame(const Id3v2Block& block, const FrameName& name, const QByteArray& content) {
    Id3v2Frame frame;
    frame.id = NameIn(name, block.version);
    if (block.version > 2) {
        // Text in UTF-8 has no byte that unsynchronising would change.
        const bool marked = block.version == 4 && block.unsynchronised;
        frame.flags = QByteArray(1, '\0') + (marked ? '\x02' : '\0');
    }
    frame.content = content;
    return frame;
}

bool HasName(const Id3v2Block& block, const Id3v2Frame& frame, const FrameName& name) {
    return block.version == 2 ? frame.id == name.in22 : frame.id == name.in23 || frame.id == name.in24;
}

qsizetype IndexOf(const Id3v2Block& block, const FrameName& name) {
    const auto found = std::find_if(block.frames.begin(), block.frames.end(),
                                    [&](const Id3v2Frame& frame) { return HasName(block, frame, name); });
    return found == block.frames.end() ? -1 : found - block.frames.begin();
}

// The first frame of the name gets the text, others of it go; an empty text takes all away.
void SetText(Id3v2Block& block, const FrameName& name, const QString& text) {
    qsizetype at = IndexOf(block, name);
    if (!text.isEmpty()) {
        const TextCoding coding = CodingFor(text, block.version);
        const Id3v2Frame frame = NewFrame(block, name, coding + Encoded(text, coding));
        at = at < 0 ? block.frames.size() : at;
        if (at == block.frames.size()) {
            block.frames.append(frame);
        } else {
            block.frames[at] = frame;
        }
        ++at;
    }
    for (qsizetype later = std::max<qsizetype>(at, 0); later < block.frames.size();) {
        if (HasName(block, block.frames[later], name)) {
            block.frames.removeAt(later);
        } else {
            ++later;
        }
    }
}

QString StoredText(const Id3v2Block& block, const FrameName& name) {
    const qsizetype at = IndexOf(block, name);
    const auto content = at < 0 ? std::nullopt : ReadableContent(block.frames[at], block.version);
    return content && !content->isEmpty() ? Decoded(content->mid(1), content->front()) : QString();
}

QString GenreFrameText(const TagFields& fields, int version) {
    const bool nameTellsAll = GenreOfText(fields.genreText) == fields.genre;
    if (fields.genre == noGenre || (nameTellsAll && !fields.genreText.isEmpty())) {
        const bool escaped = version < 4 && fields.genreText.startsWith(QLatin1Char('('));
        return escaped ? QLatin1Char('(') + fields.genreText : fields.genreText;
    }
    const QString number = QString::number(fields.genre);
    if (version < 4) {
        return QLatin1Char('(') + number + QLatin1Char(')') + fields.genreText;
    }
    return fields.genreText.isEmpty() ? number : number + QChar(u'\0') + fields.genreText;
}

// A frame that tells apart several of its kind by a description, and what stands in front of that.
struct Described {
    char coding = Latin1;
    QByteArray language; // of comments
    QString description;
};

std::optional<Described> DescriptionOf(const Id3v2Frame& frame, int version, qsizetype languageBytes) {
    const std::optional<QByteArray> content = ReadableContent(frame, version);
    if (!content || content->size() < 1 + languageBytes) {
        return std::nullopt;
    }
    Described described;
    described.coding = content->front();
    described.language = content->mid(1, languageBytes);
    const qsizetype start = 1 + languageBytes;
    const qsizetype end = EndOfText(*content, start, described.coding);
    described.description = Decoded(content->mid(start, end - start), described.coding);
    return described;
}

// The frame that stands for the field: the first without a description, else the first whose description
// is not one of those that a program writes for itself. -1 if there is none.
qsizetype IndexOfShown(const Id3v2Block& block, const FrameName& name, qsizetype languageBytes) {
    qsizetype first = -1;
    for (qsizetype at = 0; at < block.frames.size(); ++at) {
        if (!HasName(block, block.frames[at], name)) {
            continue;
        }
        const auto described = DescriptionOf(block.frames[at], block.version, languageBytes);
        if (described && described->description.isEmpty()) {
            return at;
        }
        if (described && first < 0 && !described->description.startsWith(QLatin1String("iTun"))) {
            first = at;
        }
    }
    return first;
}

// The text of a link is Latin-1 whatever the description is in; other characters are told as addresses do.
QByteArray LinkBytes(const QString& link) {
    if (IsLatin1(link)) {
        return link.toLatin1();
    }
    QByteArray bytes;
    for (const char byte : link.toUtf8()) {
        const bool plain = static_cast<unsigned char>(byte) < 0x80;
        bytes += plain ? QByteArray(1, byte) : '%' + QByteArray(1, byte).toHex().toUpper();
    }
    return bytes;
}

QByteArray DescribedContent(const Described& described, const QString& text, int version, bool isLink) {
    const TextCoding coding =
        CodingFor(isLink ? described.description : described.description + text, version);
    const QByteArray plain = isLink ? LinkBytes(text) : Encoded(text, coding);
    return coding + described.language + Encoded(described.description, coding) + Terminator(coding) + plain;
}

void SetDescribed(Id3v2Block& block, const FrameName& name, const QString& text, bool isLink) {
    const qsizetype languageBytes = isLink ? 0 : 3;
    qsizetype at = IndexOfShown(block, name, languageBytes);
    if (text.isEmpty()) {
        for (; at >= 0; at = IndexOfShown(block, name, languageBytes)) {
            block.frames.removeAt(at);
        }
        return;
    }
    Described described;
    described.language = isLink ? QByteArray() : QByteArray("XXX"); // the code for an unknown language
    if (at >= 0) {
        described = *DescriptionOf(block.frames[at], block.version, languageBytes);
    }
    const Id3v2Frame frame = NewFrame(block, name, DescribedContent(described, text, block.version, isLink));
    if (at >= 0) {
        block.frames[at] = frame;
    } else {
        block.frames.append(frame);
    }
}

} // namespace

void EditId3v2(Id3v2Block& block, const TagFields& from, const TagFields& to) {
    const auto setText = [&block, &from, &to](const FrameName& name, QString TagFields::*field) {
        if (from.*field != to.*field) {
            SetText(block, name, to.*field);
        }
    };
    setText(titleFrame, &TagFields::title);
    setText(artistFrame, &TagFields::artist);
    setText(albumFrame, &TagFields::album);
    setText(copyrightFrame, &TagFields::copyright);
    setText(composerFrame, &TagFields::composer);
    setText(encodedByFrame, &TagFields::encodedBy);
    setText(originalArtistFrame, &TagFields::originalArtist);
    if (from.genre != to.genre || from.genreText != to.genreText) {
        SetText(block, genreFrame, GenreFrameText(to, block.version));
    }
    if (from.year != to.year) {
        SetText(block, yearFrame, YearAsText(to.year));
    }
    if (from.track != to.track) {
        SetText(block, trackFrame, TrackAsText(to.track, StoredText(block, trackFrame)));
    }
    if (from.comment != to.comment) {
        SetDescribed(block, commentFrame, to.comment, false);
    }
    if (from.url != to.url) {
        SetDescribed(block, linkFrame, to.url, true);
    }
}

QString OriginalArtistIn(const Id3v2Block& block) {
    const QString text = StoredText(block, originalArtistFrame);
    const qsizetype end = text.indexOf(QChar(u'\0'));
    return end < 0 ? text : text.left(end);
}

} // namespace kestrune
