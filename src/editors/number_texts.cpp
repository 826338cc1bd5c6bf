#include "editors/number_texts.h"

#include "playlist/playlist_text.h"

#include <QRegularExpression>
#include <limits>

namespace kestrune {

namespace {

// A number larger than any that is asked for, and yet one that can be rounded.
constexpr double largestReadable = 1e15;

QString NumberPattern() {
    return QStringLiteral("[+-]?(?:[0-9]+\\.?[0-9]*|\\.[0-9]+)(?:[eE][+-]?[0-9]+)?");
}

std::optional<qint64> Within(const QString& number, qint64 smallest, qint64 largest) {
    bool isNumber = false;
    const double value = number.toDouble(&isNumber);
    if (!isNumber || !(value > -largestReadable && value < largestReadable)) {
        return std::nullopt;
    }
    const qint64 whole = RoundHalfEven(value);
    return whole < smallest || whole > largest ? std::nullopt : std::optional(whole);
}

} // namespace

std::optional<qint64> NumberOfText(const QString& text, qint64 smallest, qint64 largest) {
    const QRegularExpression whole(QRegularExpression::anchoredPattern(NumberPattern()));
    const QString number = text.trimmed();
    return whole.match(number).hasMatch() ? Within(number, smallest, largest) : std::nullopt;
}

qint32 NumberPrefix(const QString& text) {
    const QRegularExpression prefix(QStringLiteral("^\\s*(") + NumberPattern() + u')');
    const QRegularExpressionMatch match = prefix.match(text);
    if (!match.hasMatch()) {
        return 0;
    }
    using Limits = std::numeric_limits<qint32>;
    return static_cast<qint32>(Within(match.captured(1), Limits::min(), Limits::max()).value_or(0));
}

} // namespace kestrune
