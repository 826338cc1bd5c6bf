// Draws every look of every picture button of the windows, at twice the size: kestrune_contact_sheet PICTURE.
#include "convert/converter_layout.h"
#include "convert/converter_pictures.h"
#include "convert/format_panel_layout.h"
#include "main_window/main_layout.h"
#include "main_window/main_pictures.h"
#include "skin/body_key.h"
#include "skin/skin_colours.h"
#include "skin/skin_style.h"

#include <QApplication>
#include <QImage>
#include <QPainter>
#include <array>
#include <cstdio>
#include <memory>
#include <vector>

namespace {

using namespace kestrune;

constexpr qreal scale = 2;
constexpr int nameWidth = 150;
constexpr int cellWidth = 104;
constexpr int margin = 12;
constexpr int headHeight = 28;
constexpr int rowGap = 10;

constexpr QPoint noLook(-1, -1);

// A button: where the normal look and the dimmed one are, and the places of the other looks in its strip.
struct Row {
    QString name;
    QRect normal;
    QPoint hover;
    QPoint pressed;
    QPoint lit;
    const SkinPicture* ground;
    const SkinPicture* off; // null: it is never disabled
    const SkinPicture* strip;
};

QString Named(const char* name, size_t index) {
    return QStringLiteral("%1(%2)").arg(QLatin1String(name)).arg(index);
}

std::vector<Row> MainKeys(const MainPictures& pictures) {
    std::vector<Row> rows;
    const auto add = [&](const QString& name, const KeyLayout& key) {
        rows.push_back({name, key.place, key.hover, key.pressed, key.lit, &pictures.Window(), &pictures.Off(),
                        &pictures.Strip()});
    };
    const auto addAll = [&add](const char* name, const auto& keys) {
        for (size_t i = 0; i < keys.size(); ++i) {
            add(Named(name, i), keys[i]);
        }
    };
    addAll("ImagePlayButton", layout::ImagePlayButton);
    addAll("ImageRepeatModeBut", layout::ImageRepeatModeBut);
    addAll("ImageListCmd", layout::ImageListCmd);
    addAll("ImageWin", layout::ImageWin);
    add(QStringLiteral("ImageChgLstBnd"), layout::ImageChgLstBnd);
    add(QStringLiteral("ImageColour"), layout::ImageColour);
    for (size_t i = 0; i < layout::ImageToolBar.size(); ++i) {
        const QPoint first(layout::toolFrameLefts[0], layout::toolFrameTops[i]);
        const QPoint second(layout::toolFrameLefts[1], layout::toolFrameTops[i]);
        add(Named("ImageToolBar", i), {{layout::ImageToolBar[i], layout::toolCell}, first, second});
    }
    return rows;
}

std::vector<Row> ConverterKeys(const ConverterPictures& pictures) {
    namespace at = converter_layout;
    namespace panel = format_panel_layout;
    std::vector<Row> rows;
    const auto add = [&](const QString& name, const KeyLayout& key, const SkinPicture& ground,
                         const SkinPicture* off) {
        rows.push_back({name, key.place, key.hover, key.pressed, key.lit, &ground, off, &pictures.Strip()});
    };
    const auto addKey = [&](const QString& name, const KeyLayout& key) {
        add(name, key, pictures.Short(), &pictures.Off());
    };
    addKey(QStringLiteral("ImageQuit"), at::ImageQuit);
    addKey(QStringLiteral("ImageinPath"), at::folder[0]);
    for (size_t i = 0; i < at::ImageAllClear.size(); ++i) {
        addKey(Named("ImageAllClear", i), at::ImageAllClear[i]);
    }
    addKey(QStringLiteral("Image1"), at::Image1);
    KeyLayout stop = at::Image2;
    stop.place.moveTo(at::Image2Normal);
    add(QStringLiteral("Image2"), stop, pictures.Strip(), nullptr);
    addKey(QStringLiteral("ImageOptions"), at::ImageOptions);
    addKey(QStringLiteral("ImageUpdown"), at::ImageUpdown);
    add(QStringLiteral("ImageUpdown, long"), at::ImageUpdownLong, pictures.Long(), nullptr);
    for (const auto& [name, key] : {std::pair(QStringLiteral("ImageSet"), panel::ImageSet(1)),
                                    std::pair(QStringLiteral("ImageSetdown"), panel::ImageSetdown)}) {
        KeyLayout onPanel = key;
        onPanel.place.translate(panel::ground.topLeft());
        add(name, onPanel, pictures.Strip(), nullptr);
    }
    return rows;
}

// The keys of the dialogs paint themselves; so their rows show what is seen.
std::vector<std::unique_ptr<BodyKey>> BodyKeys(const BodyKeyPictures& pictures) {
    std::vector<std::unique_ptr<BodyKey>> keys;
    for (const char* word :
         {"OK", "Cancel", "Apply", "Update", "Close", "Previous", "Next", "Cues", "Add", "Delete"}) {
        keys.push_back(std::make_unique<BodyKey>(pictures, QLatin1String(word), nullptr));
    }
    keys.push_back(std::make_unique<BodyKey>(pictures, BodyKey::Face::Folder,
                                             QStringLiteral("Open Audio File"), nullptr));
    return keys;
}

void PaintBodyKey(QPainter& painter, BodyKey& key, int look, const QPoint& at) {
    if (look == 3) {
        return;
    }
    key.setEnabled(look != 4);
    key.SetPressedLook(look == 2);
    key.ShowHover(look == 1, ImageButton::Change::AtOnce);
    QPixmap shown(key.size() * scale);
    shown.setDevicePixelRatio(scale);
    shown.fill(Qt::transparent);
    key.render(&shown, {}, {}, {});
    painter.drawPixmap(at, shown);
}

// The look as it is seen: the window's own piece, and over it that of the strip.
void PaintLook(QPainter& painter, const Row& row, int look, const QPoint& at) {
    if (look == 4) {
        if (row.off != nullptr) {
            row.off->Paint(painter, at, row.normal);
        }
        return;
    }
    const std::array<QPoint, 4> corners = {noLook, row.hover, row.pressed, row.lit};
    const QPoint corner = corners[static_cast<size_t>(look)];
    if (look == 3 && corner.x() < 0) {
        return;
    }
    row.ground->Paint(painter, at, row.normal);
    if (corner.x() >= 0) {
        row.strip->Paint(painter, at, {corner, row.normal.size()});
    }
}

QImage Sheet(const std::vector<Row>& rows, const std::vector<std::unique_ptr<BodyKey>>& keys) {
    int height = headHeight + margin;
    for (const Row& row : rows) {
        height += row.normal.height() + rowGap;
    }
    for (const auto& key : keys) {
        height += key->height() + rowGap;
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
        const int rowHeight = row.normal.height();
        painter.drawText(QRect(margin, top, nameWidth, rowHeight), Qt::AlignVCenter, row.name);
        for (int look = 0; look < 5; ++look) {
            PaintLook(painter, row, look, {margin + nameWidth + look * cellWidth, top});
        }
        top += rowHeight + rowGap;
    }
    for (const auto& key : keys) {
        painter.drawText(QRect(margin, top, nameWidth, key->height()), Qt::AlignVCenter,
                         key->accessibleName());
        for (int look = 0; look < 5; ++look) {
            PaintBodyKey(painter, *key, look, {margin + nameWidth + look * cellWidth, top});
        }
        top += key->height() + rowGap;
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
    const MainPictures mainPictures;
    const ConverterPictures converterPictures;
    std::vector<Row> rows = MainKeys(mainPictures);
    for (Row& row : ConverterKeys(converterPictures)) {
        rows.push_back(std::move(row));
    }
    const BodyKeyPictures bodyKeyPictures;
    return Sheet(rows, BodyKeys(bodyKeyPictures)).save(QString::fromLocal8Bit(argv[1])) ? 0 : 1;
}
