#include "display/audio_display_view.h"

#include "app/display_rates.h"

#include <QKeyEvent>
#include <QPaintEvent>
#include <QPainter>
#include <algorithm>
#include <array>

namespace kestrune {

namespace {

constexpr double firstPart = 0.6;
const QColor accent(128, 128, 255);

QColor ColourOf(const AudioDisplay& display, int number) {
    return QColor::fromRgb(static_cast<QRgb>(display.Property(number)));
}

std::unique_ptr<DisplayPicture> MakePicture(qint32 type) {
    switch (type) {
    case AnalogMeters:
        return MakeAnalogPicture();
    case FftFire:
        return MakeFirePicture();
    case FftGlass:
        return MakeGlassPicture();
    case FftKryptonite:
        return MakeKryptonitePicture();
    default:
        return MakeBarsPicture();
    }
}

} // namespace

AudioDisplayView::AudioDisplayView(AudioDisplay& display, QWidget* parent)
    : QWidget(parent), display_(display) {
    setObjectName(QStringLiteral("KSTAudioDisplay1"));
    setAccessibleName(tr("Display"));
    setFocusPolicy(Qt::TabFocus);
    setContextMenuPolicy(Qt::CustomContextMenu);
    setAttribute(Qt::WA_OpaquePaintEvent);
    fallTimer_.setInterval(fallStepMs);
    connect(&fallTimer_, &QTimer::timeout, this, [this] {
        display_.Advance();
        if (!display_.IsFalling()) {
            fallTimer_.stop();
        }
    });
    secondStep_.setInterval(secondStepMs);
    secondStep_.setSingleShot(true);
    connect(&secondStep_, &QTimer::timeout, this, [this] { Follow(1); });
    connect(&display_, &AudioDisplay::Drawn, this, &AudioDisplayView::TakeDrawn);
    connect(&display_, &AudioDisplay::Cleared, this, [this] {
        secondStep_.stop();
        picture_->Clear();
        Follow(1);
        update();
    });
    connect(&display_, &KSTAudioDisplay1::PropertyChanged, this, [this](int number) {
        if (number == DisplayKind) {
            TakeType();
        }
        Relay();
    });
    TakeType();
}

AudioDisplayView::~AudioDisplayView() = default;

void AudioDisplayView::TakeType() {
    const std::array<QString, displayTypeCount> names = {tr("Level Bars"), tr("Analog"), tr("FFT Fire"),
                                                         tr("FFT Glass"), tr("FFT Kryptonite")};
    const qint32 type = display_.Property(DisplayKind);
    setAccessibleDescription(names[static_cast<size_t>(type)]);
    picture_ = MakePicture(type);
}

// At once and not with the next paint, so that the blocks until then already find their bands.
void AudioDisplayView::Relay() {
    laidRatio_ = 0;
    if (isVisible()) {
        LayIfNeeded();
    }
    update();
}

void AudioDisplayView::LayIfNeeded() {
    const double ratio = devicePixelRatioF();
    if (laidRatio_ == ratio) {
        return;
    }
    laidRatio_ = ratio;
    picture_->Lay(Canvas());
    if (picture_->BandRoom() > 0) {
        display_.SetBandCount(picture_->BandRoom());
    }
    ground_ = EmptyLayer(size(), ratio);
    ground_.fill(ColourOf(display_, DisplayBackColor));
    QPainter ground(&ground_);
    ground.setRenderHints(QPainter::Antialiasing | QPainter::TextAntialiasing);
    picture_->PaintGround(ground);
    ground.end();
    sheen_ = EmptyLayer(size(), ratio);
    QPainter sheen(&sheen_);
    sheen.setRenderHint(QPainter::Antialiasing);
    PaintGlass(sheen);
    PaintBorder(sheen);
    sheen.end();
    picture_->Follow(display_, 1);
}

void AudioDisplayView::TakeDrawn() {
    if (display_.IsFalling()) {
        if (!fallTimer_.isActive()) {
            fallTimer_.start();
        }
        Follow(1);
        return;
    }
    Follow(firstPart);
    if (picture_->BandRoom() > 0) {
        secondStep_.start();
    }
}

void AudioDisplayView::Follow(double part) {
    if (!isVisible()) {
        return;
    }
    if (laidRatio_ != devicePixelRatioF()) {
        update();
        return;
    }
    const QRegion changed = picture_->Follow(display_, part);
    if (!changed.isEmpty()) {
        update(changed);
    }
}

DisplayCanvas AudioDisplayView::Canvas() const {
    DisplayCanvas canvas;
    canvas.field = Field();
    canvas.pixelRatio = devicePixelRatioF();
    canvas.colours = {ColourOf(display_, DisplayBackColor), ColourOf(display_, DisplayInscriptionsColor),
                      ColourOf(display_, DisplayScaleColor), ColourOf(display_, DisplayLevelsColor),
                      ColourOf(display_, DisplayMaxLevelColor)};
    canvas.highFrom = display_.Property(DisplayMaxLevel) / 100.0;
    canvas.markHeight = display_.Property(DisplayOutLinesHeight);
    canvas.channels = display_.Channels();
    return canvas;
}

QRectF AudioDisplayView::Field() const {
    constexpr std::array<double, 4> borderWidths = {0, 1, 2, 2};
    const double border = borderWidths[static_cast<size_t>(display_.Property(DisplayBorderStyle))];
    return QRectF(rect()).adjusted(border, border, -border, -border);
}

// An inner shadow along the edges, and the light of the room on the upper half.
void AudioDisplayView::PaintGlass(QPainter& painter) const {
    const QRectF field = Field();
    constexpr int shadowDepth = 5;
    painter.setBrush(Qt::NoBrush);
    for (int i = 0; i < shadowDepth; ++i) {
        const double fade = 1 - static_cast<double>(i) / shadowDepth;
        painter.setPen(QPen(QColor(0, 0, 0, static_cast<int>(95 * fade * fade)), 1));
        const double inset = i + 0.5;
        painter.drawRect(field.adjusted(inset, inset, -inset, -inset));
    }
    QLinearGradient light(field.topLeft(), QPointF(field.left(), field.top() + field.height() * 0.46));
    light.setColorAt(0, QColor(255, 255, 255, 16));
    light.setColorAt(1, QColor(255, 255, 255, 3));
    painter.fillRect(QRectF(field.topLeft(), QSizeF(field.width(), field.height() * 0.46)), light);
}

void AudioDisplayView::PaintBorder(QPainter& painter) const {
    const qint32 style = display_.Property(DisplayBorderStyle);
    const QColor colour = ColourOf(display_, DisplayBorderColor);
    const QRectF outer = QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5);
    const auto edges = [&painter](const QRectF& at, const QColor& upper, const QColor& lower) {
        painter.setPen(QPen(upper, 1));
        painter.drawPolyline(QPolygonF({at.bottomLeft(), at.topLeft(), at.topRight()}));
        painter.setPen(QPen(lower, 1));
        painter.drawPolyline(QPolygonF({at.topRight(), at.bottomRight(), at.bottomLeft()}));
    };
    const QRectF inner = outer.adjusted(1, 1, -1, -1);
    const QColor dark = Mixed(colour, Qt::black, 0.72);
    const QColor light = Mixed(colour, Qt::white, 0.18);
    const QColor dim = Mixed(colour, Qt::black, 0.35);
    if (style == BorderSingle) {
        painter.setPen(QPen(colour, 1));
        painter.drawRect(outer);
    } else if (style == BorderLowered) {
        edges(outer, dark, dim);
        edges(inner, Mixed(dark, Qt::black, 0.5), Mixed(colour, Qt::black, 0.68));
    } else if (style == BorderRaised) {
        edges(outer, light, dark);
        edges(inner, colour, Mixed(colour, Qt::black, 0.5));
    }
}

void AudioDisplayView::paintEvent(QPaintEvent* event) {
    LayIfNeeded();
    QPainter painter(this);
    painter.setClipRegion(event->region());
    painter.drawPixmap(0, 0, ground_);
    painter.save();
    painter.setClipRect(Field(), Qt::IntersectClip);
    picture_->PaintMoving(painter);
    painter.restore();
    painter.drawPixmap(0, 0, sheen_);
    if (hasFocus()) {
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(QPen(accent, 1.5));
        painter.setBrush(Qt::NoBrush);
        painter.drawRoundedRect(QRectF(rect()).adjusted(0.75, 0.75, -0.75, -0.75), 2, 2);
    }
}

void AudioDisplayView::resizeEvent(QResizeEvent* /*event*/) {
    Relay();
}

void AudioDisplayView::showEvent(QShowEvent* /*event*/) {
    Relay();
}

// The Menu key comes as an event of its own, from the platform.
void AudioDisplayView::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_F10 && event->modifiers().testFlag(Qt::ShiftModifier)) {
        emit customContextMenuRequested(rect().center());
        return;
    }
    QWidget::keyPressEvent(event);
}

void AudioDisplayView::focusInEvent(QFocusEvent* event) {
    QWidget::focusInEvent(event);
    update();
}

void AudioDisplayView::focusOutEvent(QFocusEvent* event) {
    QWidget::focusOutEvent(event);
    update();
}

} // namespace kestrune
