// Draws every look of every picture button of the main window, at twice the size: kestrune_contact_sheet
// PICTURE.
#include "app/main_layout.h"
#include "app/main_pictures.h"
#include "skin/skin_colours.h"
#include "skin/skin_style.h"

#include <QApplication>
#include <QImage>
#include <QPainter>
#include <array>
#include <cstdio>
#include <vector>

namespace {

using namespace kestrune;

constexpr qreal scale = 2;
constexpr int nameWidth = 150;
constexpr int cellWidth = 90;
constexpr int margin = 12;
constexpr int headHeight = 28;
constexpr int rowGap = 10;

struct Row {
    QString name;
    layout::Key key;
};

template <size_t count>
void Add(std::vector<Row>& rows, const char* name, const std::array<layout::Key, count>& keys) {
    for (size_t i = 0; i < count; ++i) {
        rows.push_back({QStringLiteral("%1(%2)").arg(QLatin1String(name)).arg(i), keys[i]});
    }
}

std::vector<Row> AllKeys() {
    std::vector<Row> rows;
    Add(rows, "ImagePlayButton", layout::ImagePlayButton);
    Add(rows, "ImageRepeatModeBut", layout::ImageRepeatModeBut);
    Add(rows, "ImageListCmd", layout::ImageListCmd);
    Add(rows, "ImageWin", layout::ImageWin);
    rows.push_back({QStringLiteral("ImageChgLstBnd"), layout::ImageChgLstBnd});
    rows.push_back({QStringLiteral("ImageColour"), layout::ImageColour});
    for (size_t i = 0; i < layout::ImageToolBar.size(); ++i) {
        const QPoint first(layout::toolFrameLefts[0], layout::toolFrameTops[i]);
        const QPoint second(layout::toolFrameLefts[1], layout::toolFrameTops[i]);
        rows.push_back({QStringLiteral("ImageToolBar(%1)").arg(i),
                        {{layout::ImageToolBar[i], layout::toolCell}, first, second}});
    }
    return rows;
}

// The look as it is seen: the window's own piece, and over it that of the strip.
void PaintLook(QPainter& painter, const MainPictures& pictures, const Row& row, int look, const QPoint& at) {
    const QSize size = row.key.place.size();
    if (look == 4) {
        pictures.Off().Paint(painter, at, row.key.place);
        return;
    }
    pictures.Window().Paint(painter, at, row.key.place);
    const std::array<QPoint, 4> corners = {QPoint(-1, -1), row.key.hover, row.key.pressed, row.key.lit};
    const QPoint corner = corners[static_cast<size_t>(look)];
    if (corner.x() >= 0) {
        pictures.Strip().Paint(painter, at, {corner, size});
    }
}

QImage Sheet(const MainPictures& pictures, const std::vector<Row>& rows) {
    int height = headHeight + margin;
    for (const Row& row : rows) {
        height += row.key.place.height() + rowGap;
    }
    const int width = nameWidth + 5 * cellWidth + 2 * margin;
    QImage sheet(QSize(width, height) * scale, QImage::Format_RGB32);
    sheet.setDevicePixelRatio(scale);
    sheet.fill(colours::bodyBottom.lighter(120));
    QPainter painter(&sheet);
    painter.setPen(colours::textOnBody);
    const std::array<const char*, 5> heads = {"normal", "hover", "pressed", "on", "disabled"};
    for (int look = 0; look < 5; ++look) {
        painter.drawText(QRect(margin + nameWidth + look * cellWidth, 0, cellWidth, headHeight),
                         Qt::AlignVCenter, QLatin1String(heads[static_cast<size_t>(look)]));
    }
    int top = headHeight;
    for (const Row& row : rows) {
        const int rowHeight = row.key.place.height();
        painter.drawText(QRect(margin, top, nameWidth, rowHeight), Qt::AlignVCenter, row.name);
        for (int look = 0; look < 5; ++look) {
            if (look == 3 && row.key.lit.x() < 0) {
                continue;
            }
            PaintLook(painter, pictures, row, look, {margin + nameWidth + look * cellWidth, top});
        }
        top += rowHeight + rowGap;
    }
    return sheet;
}

} // namespace

int main(int argc, char** argv) {
    if (argc != 2) {
        std::fputs("usage: kestrune_contact_sheet PICTURE\n", stderr);
        return 2;
    }
    QApplication application(argc, argv);
    ApplySkinStyle(application);
    const MainPictures pictures;
    return Sheet(pictures, AllKeys()).save(QString::fromLocal8Bit(argv[1])) ? 0 : 1;
}
