#include "playlist/playlist_totals.h"

#include "playlist/playlist_text.h"

#include <QCoreApplication>

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
    return QCoreApplication::translate("kestrune::TotalTexts", "%1 (%2 MB)")
        .arg(FormatMinutes(sums.seconds), Megabytes(sums));
}

} // namespace

TotalTexts TotalTextsOf(const PlaylistRows& rows) {
    const PlaylistSums& total = rows.TotalSums();
    const PlaylistSums& selected = rows.SelectedSums();
    TotalTexts texts;
    texts.LabelSeltal0 = LabelText(total);
    texts.LabelSeltal1 = LabelText(selected);
    texts.PictureSelToalTip = QCoreApplication::translate("kestrune::TotalTexts", "%1 MB/%2 MB")
                                  .arg(MegabytesWithDigit(total), MegabytesWithDigit(selected));
    texts.LabelTemp = FormatMinutes(total.seconds) + u'/' + FormatMinutes(selected.seconds);
    return texts;
}

} // namespace kestrune
