#include "backends/formats/format_text.h"

#include <QStringList>

namespace kestrune {

namespace {

constexpr int longestKind = 120;

QString WithThousandsCommas(int value) {
    QString digits = QString::number(value);
    for (qsizetype at = digits.size() - 3; at > 0; at -= 3) {
        digits.insert(at, QLatin1Char(','));
    }
    return digits;
}

QString ChannelText(int channels) {
    switch (channels) {
    case 1:
        return QStringLiteral("Mono");
    case 2:
        return QStringLiteral("Stereo");
    default:
        return QStringLiteral("%1 Channels").arg(channels);
    }
}

QString AsciiKind(const QString& kind) {
    QString ascii = kind.left(longestKind);
    for (QChar& character : ascii) {
        if (character < QLatin1Char(' ') || character > QLatin1Char('~')) {
            character = QLatin1Char('?');
        }
    }
    return ascii;
}

} // namespace

QString FormatText(const QString& kind, int rateHz, int bitrateBps, int channels, BitrateUnit unit) {
    QStringList parts(AsciiKind(kind));
    if (rateHz > 0) {
        parts << WithThousandsCommas(rateHz) + QStringLiteral(" Hz");
    }
    if (bitrateBps > 0) {
        const qint64 kbps = (static_cast<qint64>(bitrateBps) + 500) / 1000;
        const QLatin1String name(unit == BitrateUnit::Small ? "kbps" : "KBPS");
        parts << QStringLiteral("%1 %2").arg(kbps).arg(name);
    }
    if (channels > 0) {
        parts << ChannelText(channels);
    }
    return parts.join(QStringLiteral(", "));
}

} // namespace kestrune
