#include "playlist/playlist_text.h"

#include "app/paths.h"

#include <cmath>
#include <limits>

namespace kestrune {

namespace {
const QLatin1String endMark("//");
}

QString KillTitleHead(const QString& text) {
    const qsizetype point = text.indexOf(u'.');
    return point < 0 ? text : text.mid(point + 1);
}

QString TitleHead(const QString& text) {
    return text.left(text.indexOf(u'.') + 1);
}

QString OneLine(QString text) {
    for (const char16_t end : {u'\n', u'\v', u'\f', u'\r', u'\u0085', u'\u2028', u'\u2029'}) {
        text.replace(QChar(end), u' ');
    }
    return text;
}

QString KillGang0(const QString& text) {
    const qsizetype mark = text.indexOf(endMark);
    return mark < 0 ? QString() : text.left(mark);
}

QString KillGang0Folder(const QString& text) {
    const qsizetype mark = text.indexOf(endMark);
    if (mark < 0) {
        return {};
    }
    const qsizetype behind = mark + endMark.size();
    if (behind < text.size() && text[behind] == pathSeparator) {
        return text.left(mark + 1);
    }
    // At the very end of a field that is full, the first half of the pair is the folder's own separator and
    // the second one what was left of the mark.
    const bool endsInBackslash = mark > 0 && text[mark - 1] == u'\\';
    return behind == text.size() && !endsInBackslash ? QString() : text.left(mark);
}

double Val(const QString& text) {
    qsizetype pos = 0;
    while (pos < text.size() && text[pos] == u' ') {
        ++pos;
    }
    const qsizetype start = pos;
    const auto skipDigits = [&] {
        while (pos < text.size() && text[pos] >= u'0' && text[pos] <= u'9') {
            ++pos;
        }
    };
    skipDigits();
    if (pos < text.size() && text[pos] == u'.') {
        ++pos;
        skipDigits();
    }
    bool ok = false;
    const double value = text.mid(start, pos - start).toDouble(&ok);
    return ok && std::isfinite(value) ? value : 0.0;
}

qint64 RoundHalfEven(double value) {
    constexpr double limit = 9e15;
    if (!(std::abs(value) < limit)) {
        return 0;
    }
    const double lower = std::floor(value);
    const double rest = value - lower;
    const auto whole = static_cast<qint64>(lower);
    if (rest > 0.5 || (rest == 0.5 && whole % 2 != 0)) {
        return whole + 1;
    }
    return whole;
}

qint16 GetMusicSec(const QString& text) {
    const qsizetype colon = text.indexOf(u':');
    const double seconds = colon < 0 ? Val(text) : Val(text.left(colon)) * 60 + Val(text.mid(colon + 1));
    const qint64 whole = RoundHalfEven(seconds);
    if (whole > std::numeric_limits<qint16>::max() || whole < std::numeric_limits<qint16>::min()) {
        return 0;
    }
    return static_cast<qint16>(whole);
}

QString GetFileType(const QString& name) {
    const qsizetype point = name.lastIndexOf(u'.');
    return point < 0 ? QString() : name.mid(point + 1).toLower();
}

QString RowType(const QString& name) {
    return name.right(4).mid(1, 3).toLower();
}

QString FormatMinutes(qint64 seconds) {
    return QStringLiteral("%1:%2")
        .arg(seconds / 60, 2, 10, QChar(u'0'))
        .arg(seconds % 60, 2, 10, QChar(u'0'));
}

QString FormatTenths(double value) {
    const auto tenths = static_cast<qint64>(std::floor(value * 10 + 0.5));
    QString text;
    if (tenths / 10 != 0) {
        text = QString::number(tenths / 10);
    }
    text.append(u'.');
    if (tenths % 10 != 0) {
        text.append(QString::number(tenths % 10));
    }
    return text;
}

QString FormatSize(qint64 kilobytes) {
    QString text = FormatTenths(static_cast<double>(kilobytes) / 1024);
    if (text.startsWith(u'.')) {
        text.prepend(u'0');
    }
    if (text.endsWith(u'.')) {
        text.append(u'0');
    }
    return text + u'm';
}

QString WithSeparator(const QString& folder) {
    return folder.endsWith(pathSeparator) ? folder : folder + pathSeparator;
}

void SplitPath(const QString& full, QString& folder, QString& name) {
    const qsizetype cut = full.lastIndexOf(pathSeparator);
    if (cut < 0) {
        folder = full;
        name.clear();
    } else {
        folder = full.left(cut + 1);
        name = full.mid(cut + 1);
    }
    folder = WithSeparator(folder);
    // "//" ends a field in a stored list, so it may not stand inside a folder; it means the same as one
    // separator.
    while (folder.contains(endMark)) {
        folder.replace(endMark, QLatin1String("/"));
    }
}

} // namespace kestrune
