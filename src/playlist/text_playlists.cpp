#include "playlist/text_playlists.h"

#include "app/paths.h"
#include "app/text_coding.h"
#include "playlist/playlist_text.h"

#include <QUrl>

namespace kestrune {

namespace {

// A title without the line ends at which a reader cuts; other controls stay as they are.
QString TitleLine(QString title) {
    title.replace(u'\n', u' ');
    return title.replace(u'\r', u' ');
}

const QLatin1String lineEnd("\r\n");

// A whole number of seconds in 16 bits; 0 if it does not fit.
qint64 SecondsOf(const QString& text) {
    const qint64 seconds = RoundHalfEven(Val(text));
    return seconds > 32767 ? 0 : seconds;
}

// Behind the first mark, nothing if there is none.
QString Behind(const QString& text, QChar mark) {
    const qsizetype at = text.indexOf(mark);
    return at < 0 ? QString() : text.mid(at + 1);
}

// The value without its end: cut `before` places before its first "/". A value in which that is not possible
// comes back whole.
QString CutBeforeSlash(const QString& value, qsizetype before) {
    const qsizetype slash = value.indexOf(u'/') + 1;
    return slash < before || slash == 0 ? value : value.left(slash - before);
}

QString ParamValue(const QString& line) {
    const qsizetype at = line.indexOf(QLatin1String("Value ="));
    return at < 0 ? QString() : line.mid(at + 9);
}

QString TitleOf(const QString& line) {
    const QString text = line.mid(line.indexOf(u'>') + 2);
    return text.left(text.indexOf(u'<'));
}

void ReadAsxLine(const QString& line, ListEntry& entry) {
    if (line.startsWith(QLatin1String("<Duration value ="))) {
        entry.seconds = GetMusicSec(Behind(line, u':').left(5));
    } else if (line.startsWith(QLatin1String("<Param Name =")) && line.contains(QLatin1String("FileSize"))) {
        const qint64 bytes = RoundHalfEven(Val(CutBeforeSlash(ParamValue(line), 3)));
        entry.bytes = bytes > std::numeric_limits<qint32>::max() ? 0 : bytes;
    } else if (line.startsWith(QLatin1String("<Param Name =")) && line.contains(QLatin1String("SourceURL"))) {
        entry.path = CutBeforeSlash(ParamValue(line), 3);
        entry.isFullPath = true;
    } else if (line.startsWith(QLatin1String("<Title >")) && line.contains(QLatin1String("</Title>"))) {
        entry.title = TitleOf(line);
    } else if (line.startsWith(QLatin1String("<Ref href =")) && entry.path.isEmpty()) {
        const QString value = line.mid(line.indexOf(u'=') + 3);
        entry.path = CutBeforeSlash(value, 2);
    }
}

// Reads the first line, which names the kind of list. False when no entries follow: the list is then empty if
// there is no second line, and not valid if the line names something else.
bool ReadHead(LineReader& reader, const QLatin1String& head, ParsedList& list) {
    const QString first = reader.ReadLine();
    if (reader.AtEnd()) {
        return false;
    }
    list.isValid = first.toUpper() == head;
    return list.isValid;
}

const QLatin1String addressHead("file://");

// A path as a line of a list. One with a line end in it would break its entry, and in a PLS all behind it, so
// it stands as an address, in which a line end is spelled. Other programs read such addresses too.
QString PathLine(const QString& path) {
    if (!path.contains(u'\n') && !path.contains(u'\r')) {
        return path;
    }
    return addressHead + QString::fromLatin1(QUrl::toPercentEncoding(path, "/"));
}

// Any other text of this look is a path below the folder of the list, like everything that does not begin
// with a separator.
bool IsPathAddress(const QString& text) {
    return text.startsWith(addressHead + pathSeparator) &&
           (text.contains(QLatin1String("%0A"), Qt::CaseInsensitive) ||
            text.contains(QLatin1String("%0D"), Qt::CaseInsensitive));
}

} // namespace

ParsedList ParseM3u(const QByteArray& bytes) {
    ParsedList list;
    LineReader reader(bytes);
    if (!ReadHead(reader, QLatin1String("#EXTM3U"), list)) {
        return list;
    }
    const QLatin1String mark("#EXTINF:");
    while (!reader.AtEnd()) {
        const QString line = reader.ReadLine();
        if (reader.AtEnd()) {
            break;
        }
        if (!line.startsWith(mark)) {
            continue;
        }
        const QString value = line.mid(mark.size());
        const qsizetype comma = value.indexOf(u',');
        ListEntry entry;
        entry.seconds = SecondsOf(comma < 0 ? value : value.left(comma));
        entry.title = Behind(value, u',');
        entry.path = reader.ReadLine();
        list.entries.push_back(entry);
    }
    return list;
}

ParsedList ParsePls(const QByteArray& bytes) {
    ParsedList list;
    LineReader reader(bytes);
    if (!ReadHead(reader, QLatin1String("[PLAYLIST]"), list)) {
        return list;
    }
    while (!reader.AtEnd()) {
        const QString file = reader.ReadLine();
        const QString title = reader.ReadLine();
        const QString length = reader.ReadLine();
        if (reader.AtEnd()) {
            break;
        }
        if (file.startsWith(QLatin1String("File")) && title.startsWith(QLatin1String("Title")) &&
            length.startsWith(QLatin1String("Length"))) {
            ListEntry entry;
            entry.path = Behind(file, u'=');
            entry.title = Behind(title, u'=');
            entry.seconds = SecondsOf(Behind(length, u'='));
            list.entries.push_back(entry);
        }
    }
    return list;
}

ParsedList ParseAsx(const QByteArray& bytes) {
    ParsedList list;
    LineReader reader(bytes);
    const QString first = reader.ReadLine();
    if (reader.AtEnd()) {
        return list;
    }
    if (!first.startsWith(QLatin1String("<Asx Version"))) {
        list.isValid = false;
        return list;
    }
    while (!reader.AtEnd()) {
        if (!reader.ReadLine().startsWith(QLatin1String("<Entry>"))) {
            continue;
        }
        ListEntry entry;
        while (!reader.AtEnd()) {
            const QString line = reader.ReadLine();
            if (line.startsWith(QLatin1String("</Entry>"))) {
                break;
            }
            ReadAsxLine(line, entry);
        }
        list.entries.push_back(entry);
    }
    return list;
}

QByteArray EncodeM3u(const PlaylistRows& rows) {
    QString text = QStringLiteral("#EXTM3U") + lineEnd;
    for (int row = 1; row <= rows.Count(); ++row) {
        text += QStringLiteral("#EXTINF:") + QString::number(GetMusicSec(rows.Field(row, SubTime))) + u',' +
                TitleLine(rows.Title(row)) + lineEnd + PathLine(rows.FullPath(row)) + lineEnd;
    }
    return EncodeText(text);
}

QByteArray EncodePls(const PlaylistRows& rows) {
    QString text = QStringLiteral("[playlist]") + lineEnd;
    for (int row = 1; row <= rows.Count(); ++row) {
        const QString number = QString::number(row) + u'=';
        text += QStringLiteral("File") + number + PathLine(rows.FullPath(row)) + lineEnd;
        text += QStringLiteral("Title") + number + TitleLine(rows.Title(row)) + lineEnd;
        text += QStringLiteral("Length") + number + QString::number(GetMusicSec(rows.Field(row, SubTime))) +
                lineEnd;
    }
    text += QStringLiteral("NumberOfEntries=") + QString::number(rows.Count()) + lineEnd;
    text += QStringLiteral("Version=2") + lineEnd;
    return EncodeText(text);
}

QByteArray EncodeAsx(const PlaylistRows& rows) {
    QString text = QStringLiteral("<Asx Version = \"3.0\" >") + lineEnd + lineEnd;
    for (int row = 1; row <= rows.Count(); ++row) {
        QString path = PathLine(rows.FullPath(row));
        path.replace(pathSeparator, u'\\');
        text += QStringLiteral("<Entry> ") + lineEnd;
        text += QStringLiteral("<Title > ") + TitleLine(rows.Title(row)) + QStringLiteral("</Title>") +
                lineEnd + lineEnd;
        text += QStringLiteral("<Ref href = \"") + path + QStringLiteral("\"/>") + lineEnd;
        text += QStringLiteral("</Entry>") + lineEnd + lineEnd;
    }
    text += QStringLiteral("</Asx>") + lineEnd;
    return EncodeText(text);
}

QString NativeListPath(const QString& path) {
    QString native = path;
    if (!native.contains(pathSeparator)) {
        native.replace(u'\\', pathSeparator);
    }
    if (IsPathAddress(native)) {
        return QUrl::fromPercentEncoding(native.mid(addressHead.size()).toUtf8());
    }
    return native;
}

QString ResolveListPath(const QString& path, const QString& baseFolder) {
    QString native = NativeListPath(path);
    const bool hasDrive = native.size() > 1 && native[1] == u':';
    if (hasDrive || native.startsWith(pathSeparator)) {
        return native;
    }
    return baseFolder + native;
}

} // namespace kestrune
