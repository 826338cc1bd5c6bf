// A strip of plain colours, so that each look is known by one pixel.
#pragma once

#include "skin/skin_picture.h"

#include <QFile>
#include <QImage>
#include <QTemporaryDir>
#include <QWidget>

namespace kestrune {

// 100 x 60: hover looks red (0,0), pressed looks green (20,0), lit looks blue (40,0), each 20 x 20; a wheel
// of lines below, to tell whether pictures are sharp; the background is grey with yellow where a button lies.
class MadeStrip {
public:
    MadeStrip() {
        Write("strip.svg", R"(<rect width="20" height="20" fill="#ff0000"/>
            <rect x="20" width="20" height="20" fill="#00ff00"/>
            <rect x="40" width="20" height="20" fill="#0000ff"/>
            <rect x="60" width="20" height="20" fill="#ff00ff"/>
            <rect x="3" y="33" width="1" height="20" fill="#ffffff"/>)");
        Write("off.svg", R"(<rect width="100" height="60" fill="#808080"/>
            <rect x="10" y="10" width="20" height="20" fill="#ffff00"/>)");
    }
    QString StripFile() const { return folder_.filePath(QStringLiteral("strip.svg")); }
    QString OffFile() const { return folder_.filePath(QStringLiteral("off.svg")); }

private:
    void Write(const char* name, const char* body) const {
        QFile file(folder_.filePath(QString::fromLatin1(name)));
        if (file.open(QIODevice::WriteOnly)) {
            file.write(
                R"(<svg xmlns="http://www.w3.org/2000/svg" width="200" height="120" viewBox="0 0 100 60">)");
            file.write(body);
            file.write("</svg>");
        }
    }
    QTemporaryDir folder_;
};

// The colour that a widget shows at a place of its own, over a black ground.
inline QColor ColourAt(QWidget& widget, const QPoint& place) {
    QImage image(widget.size(), QImage::Format_RGB32);
    image.fill(Qt::black);
    widget.render(&image, {}, {}, QWidget::DrawChildren);
    return image.pixelColor(place);
}

} // namespace kestrune
