#include "skin/body_key.h"

#include "skin/skin_colours.h"

#include <QPainter>

namespace kestrune {

namespace {

// As tools/make_skin/body_keys.py draws them.
constexpr QSize wordSize(80, 26);
constexpr QSize folderSize(28, 24);
constexpr int keyStep = 88;
constexpr int lookStep = 32;
enum LookRow { NormalRow, HoverRow, PressedRow, OffRow };

constexpr int fontPixels = 11;
constexpr int wordMargin = 5;
constexpr qreal halfCapital = 4; // half the height of a capital letter
constexpr qreal offStrength = 0.35;
const QColor pressedInk(0xF2, 0xF3, 0xFF);
// The dark upper and the light lower edge of an engraving.
constexpr qreal edgeShift = 0.8;
constexpr qreal upperEdge = 0.55;
constexpr qreal lowerEdge = 0.1;

QPoint PlaceOf(BodyKey::Face face, LookRow row) {
    return {static_cast<int>(face) * keyStep, row * lookStep};
}

QSize SizeOf(BodyKey::Face face) {
    return face == BodyKey::Face::Folder ? folderSize : wordSize;
}

QColor Faded(QColor ink, qreal strength) {
    ink.setAlphaF(static_cast<float>(strength));
    return ink;
}

} // namespace

BodyKeyPictures::BodyKeyPictures() : SkinPicture(QStringLiteral(":/skin/body_keys.svg")) {}

BodyKey::BodyKey(const BodyKeyPictures& pictures, const QString& word, QWidget* parent)
    : BodyKey(pictures, Face::Word, word, parent) {
    setText(word);
}

BodyKey::BodyKey(const BodyKeyPictures& pictures, Face face, const QString& name, QWidget* parent)
    : ImageButton(pictures, {.hover = PlaceOf(face, HoverRow), .pressed = PlaceOf(face, PressedRow)}, parent),
      pictures_(pictures),
      face_(face) {
    QFont letters = font();
    letters.setPixelSize(fontPixels);
    letters.setWeight(QFont::DemiBold);
    setFont(letters);
    setAccessibleName(name);
    setFixedSize(SizeOf(face));
}

QRect BodyKey::NormalPiece(Face face) {
    return {PlaceOf(face, NormalRow), SizeOf(face)};
}

QRect BodyKey::OffPiece(Face face) {
    return {PlaceOf(face, OffRow), SizeOf(face)};
}

void BodyKey::paintEvent(QPaintEvent* event) {
    {
        QPainter painter(this);
        pictures_.Paint(painter, {}, isEnabled() ? NormalPiece(face_) : OffPiece(face_));
    }
    ImageButton::paintEvent(event);
    PaintWord();
}

void BodyKey::PaintWord() {
    const QFontMetricsF metrics(font());
    const QString word = metrics.elidedText(text(), Qt::ElideRight, width() - 2 * wordMargin);
    const bool sunk = isEnabled() && (isDown() || HasPressedLook());
    const bool bright = sunk || (isEnabled() && IsLit());
    const QPointF baseline((width() - metrics.horizontalAdvance(word)) / 2,
                           height() / 2.0 + halfCapital + (sunk ? 1 : 0));
    const qreal strength = isEnabled() ? 1 : offStrength;
    QPainter painter(this);
    if (!bright) {
        painter.setPen(Faded(Qt::black, upperEdge * strength));
        painter.drawText(baseline - QPointF(0, edgeShift), word);
        painter.setPen(Faded(Qt::white, lowerEdge * strength));
        painter.drawText(baseline + QPointF(0, edgeShift), word);
    }
    painter.setPen(sunk ? pressedInk : bright ? colours::textOnGlass : Faded(colours::textOnBody, strength));
    painter.drawText(baseline, word);
}

} // namespace kestrune
