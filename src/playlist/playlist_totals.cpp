#include "playlist/playlist_totals.h"

#include "playlist/playlist_text.h"

namespace kestrune {

namespace {

QString Megabytes(const PlaylistSums& sums) {
    return FormatTenths(static_cast<double>(sums.milliMegabytes) / 1000);
}

QString MegabytesWithDigit(const PlaylistSums& sums) {
    QString text = Megabytes(sums);
    if (text.endsWith(u'.')) {
        text.append(u'0');
    }
    return text;
}

QString LabelText(const PlaylistSums& sums) {
    return FormatMinutes(sums.seconds) + QStringLiteral(" (") + Megabytes(sums) + QStringLiteral(" MB)");
}

} // namespace

TotalTexts TotalTextsOf(const PlaylistRows& rows) {
    const PlaylistSums& total = rows.TotalSums();
    const PlaylistSums& selected = rows.SelectedSums();
    TotalTexts texts;
    texts.LabelSeltal0 = LabelText(total);
    texts.LabelSeltal1 = LabelText(selected);
    texts.PictureSelToalTip = MegabytesWithDigit(total) + QStringLiteral(" MB/") +
                              MegabytesWithDigit(selected) + QStringLiteral(" MB");
    texts.LabelTemp = FormatMinutes(total.seconds) + u'/' + FormatMinutes(selected.seconds);
    return texts;
}

} // namespace kestrune
