#include "playback/equalizer_panel.h"

#include "components/equalizer_response.h"
#include "skin/skin_colours.h"

#include <QPainter>
#include <QPainterPath>
#include <QScopedValueRollback>
#include <QTimerEvent>
#include <algorithm>
#include <cmath>

namespace kestrune {

namespace {

constexpr int panelWidth = 360;
constexpr int panelHeight = 119;
constexpr int plotLeft = 29;
constexpr int columnWidth = 27;
constexpr int plotRight = plotLeft + equalizerBands * columnWidth;
constexpr int highestY = 12;
constexpr int lowestY = 96;
constexpr double middleY = (highestY + lowestY) / 2.0;
constexpr int labelTop = 102;
constexpr int labelHeight = 13;
constexpr double curveStep = 2; // pixels from point to point
constexpr int gridStepDb = 5;
constexpr int bubbleGap = 11;
constexpr int bubbleMs = 1200;
// The rate at which the curve is calculated. Only its very end would differ at another.
constexpr int curveRateHz = 48000;

QColor Faded(QColor colour, int alpha) {
    colour.setAlpha(alpha);
    return colour;
}

QFont LabelFont(QFont font, int pixels) {
    font.setPixelSize(pixels);
    return font;
}

// Of a place between the centres, which stand in the middle of their columns; goes on beyond both ends.
double HzAt(double x) {
    const double column = (x - plotLeft) / columnWidth - 0.5;
    const double left = std::clamp(std::floor(column), 0.0, equalizerBands - 2.0);
    const double from = equalizerCentresHz[static_cast<size_t>(left)];
    const double to = equalizerCentresHz[static_cast<size_t>(left) + 1];
    return from * std::pow(to / from, column - left);
}

void PaintGlass(QPainter& painter, const QRectF& area) {
    painter.setPen(Qt::NoPen);
    painter.setBrush(QColor(255, 255, 255, 22)); // the lower edge catches the light
    painter.drawRoundedRect(area, 4, 4);
    const QRectF glass = area.adjusted(0, 0, 0, -1);
    painter.setBrush(colours::glass);
    painter.drawRoundedRect(glass, 4, 4);
    QPainterPath shape;
    shape.addRoundedRect(glass, 4, 4);
    painter.save();
    painter.setClipPath(shape);
    QLinearGradient reflection(0, glass.top(), 0, glass.top() + glass.height() * 0.45);
    reflection.setColorAt(0, QColor(255, 255, 255, 15));
    reflection.setColorAt(1, QColor(255, 255, 255, 3));
    painter.fillRect(QRectF(glass.left(), glass.top(), glass.width(), glass.height() * 0.45), reflection);
    painter.setBrush(Qt::NoBrush);
    for (int depth = 0; depth < 4; ++depth) {
        painter.setPen(QPen(QColor(0, 0, 0, 110 - depth * 26), 1));
        painter.drawRoundedRect(glass.adjusted(depth + 0.5, depth + 0.5, -depth - 0.5, 8), 4, 4);
    }
    painter.restore();
}

} // namespace

EqualizerPanel::EqualizerPanel(QWidget* parent) : QWidget(parent), bubble_(new ValueBubbleWidget(this)) {
    setObjectName(QStringLiteral("KSTEqualizer21"));
    setAccessibleName(tr("Equalizer"));
    MakeFaders();
    setFocusProxy(faders_[0]);
    connect(&bands_, &KSTEqualizer21::Changed, this, [this] {
        ShowControl();
        if (!isShowing_) {
            emit GainsChanged(bands_.Gains());
        }
    });
    ShowControl();
}

QSize EqualizerPanel::sizeHint() const {
    return {panelWidth, panelHeight};
}

void EqualizerPanel::MakeFaders() {
    for (int band = 0; band < equalizerBands; ++band) {
        auto* fader = new BandFaderWidget(highestY, lowestY, this);
        fader->setObjectName(QStringLiteral("Band(%1)").arg(band));
        fader->setAccessibleName(tr("%1, gain in dB").arg(BandFrequency(band)));
        fader->setGeometry(plotLeft + band * columnWidth, 0, columnWidth, panelHeight);
        connect(fader, &BandFaderWidget::GainChosen, this, [this, band](float gainDb) {
            bands_.SetProperty(equalizerFirstBand + band, gainDb);
            Tell(band);
        });
        connect(fader, &BandFaderWidget::DragChanged, this, [this, band] { Tell(band); });
        connect(fader, &BandFaderWidget::ActiveChanged, this, qOverload<>(&QWidget::update));
        connect(fader, &BandFaderWidget::NeighbourWanted, this, [this, band](int step) {
            const int wanted = std::clamp(band + step, 0, equalizerBands - 1);
            faders_[static_cast<size_t>(wanted)]->setFocus(Qt::OtherFocusReason);
        });
        faders_[static_cast<size_t>(band)] = fader;
    }
}

void EqualizerPanel::ShowGains(const EqualizerGains& gainsDb) {
    const QScopedValueRollback<bool> showing(isShowing_, true);
    bands_.SetGains(gainsDb);
}

void EqualizerPanel::ShowControl() {
    if (shownLargestDb_ != bands_.LargestGainDb()) {
        shownLargestDb_ = bands_.LargestGainDb();
        glass_ = {};
        for (BandFaderWidget* fader : faders_) {
            fader->SetLargestGain(shownLargestDb_);
        }
    }
    const EqualizerGains gainsDb = bands_.Gains();
    for (size_t band = 0; band < faders_.size(); ++band) {
        faders_[band]->ShowGain(gainsDb[band]);
    }
    UpdateCurve();
    update();
}

void EqualizerPanel::Tell(int band) {
    const BandFaderWidget* fader = faders_[static_cast<size_t>(band)];
    if (bubbleTimer_ != 0) {
        killTimer(bubbleTimer_);
        bubbleTimer_ = 0;
    }
    bubble_->ShowBeside({fader->geometry().center().x() + 0.5, fader->CapY()}, bubbleGap,
                        GainText(fader->GainDb()));
    if (!fader->IsDragged()) {
        bubbleTimer_ = startTimer(bubbleMs);
    }
}

void EqualizerPanel::timerEvent(QTimerEvent* event) {
    if (event->timerId() == bubbleTimer_) {
        killTimer(bubbleTimer_);
        bubbleTimer_ = 0;
        bubble_->setVisible(false);
    } else {
        QWidget::timerEvent(event);
    }
}

void EqualizerPanel::hideEvent(QHideEvent* event) {
    bubble_->setVisible(false);
    QWidget::hideEvent(event);
}

void EqualizerPanel::UpdateCurve() {
    const EqualizerResponse response = SolveEqualizer(bands_.Gains(), curveRateHz);
    curve_.clear();
    for (double x = plotLeft; x <= plotRight; x += curveStep) {
        curve_.append({x, response.At(HzAt(x))});
    }
}

double EqualizerPanel::YOf(double gainDb) const {
    return middleY - gainDb / bands_.LargestGainDb() * (middleY - highestY);
}

void EqualizerPanel::PaintScale(QPainter& painter) const {
    const double largestDb = bands_.LargestGainDb();
    painter.setRenderHint(QPainter::Antialiasing, false);
    for (int gainDb = gridStepDb; gainDb <= largestDb; gainDb += gridStepDb) {
        painter.setPen(QColor(255, 255, 255, 13));
        for (const double y : {YOf(gainDb), YOf(-gainDb)}) {
            painter.drawLine(QPointF(plotLeft, std::round(y)), QPointF(plotRight, std::round(y)));
        }
    }
    painter.setPen(Faded(colours::accent, 70));
    painter.drawLine(QPointF(plotLeft, middleY), QPointF(plotRight, middleY));
    painter.setRenderHint(QPainter::Antialiasing, true);
}

void EqualizerPanel::PaintLabels(QPainter& painter) const {
    painter.setFont(LabelFont(font(), 10));
    painter.setPen(colours::textMuted);
    const double largestDb = bands_.LargestGainDb();
    for (const double gainDb : {largestDb, 0.0, -largestDb}) {
        const QString text = GainText(static_cast<float>(gainDb)).section(u' ', 0, 0);
        painter.drawText(QRectF(0, YOf(gainDb) - 7, plotLeft - 5, 14), Qt::AlignRight | Qt::AlignVCenter,
                         text);
    }
    painter.drawText(QRectF(0, YOf(largestDb / 2) - 7, plotLeft - 5, 14), Qt::AlignRight | Qt::AlignVCenter,
                     tr("dB"));
    painter.drawText(QRectF(0, labelTop, plotLeft - 5, labelHeight), Qt::AlignRight | Qt::AlignVCenter,
                     tr("Hz"));
    for (int band = 0; band < equalizerBands; ++band) {
        const BandFaderWidget* fader = faders_[static_cast<size_t>(band)];
        const bool isActive = fader->IsDragged() || fader->hasFocus() || fader->underMouse();
        painter.setPen(isActive ? colours::textOnGlass : colours::textMuted);
        painter.drawText(QRectF(fader->x(), labelTop, columnWidth, labelHeight), Qt::AlignCenter,
                         BandLabel(band));
    }
}

void EqualizerPanel::PaintCurve(QPainter& painter) const {
    QPolygonF line;
    for (const QPointF& point : curve_) {
        line.append({point.x(), std::clamp(YOf(point.y()), 4.0, panelHeight - 16.0)});
    }
    QPainterPath stroke;
    stroke.addPolygon(line);
    QPainterPath area(QPointF(line.first().x(), middleY));
    for (const QPointF& point : line) {
        area.lineTo(point);
    }
    area.lineTo(line.last().x(), middleY);
    area.closeSubpath();
    QLinearGradient light(0, highestY, 0, lowestY);
    light.setColorAt(0, Faded(colours::accent, 110));
    light.setColorAt(0.5, Faded(colours::accent, 22));
    light.setColorAt(1, Faded(colours::accent, 110));
    painter.fillPath(area, light);
    painter.setBrush(Qt::NoBrush);
    for (const auto& [width, alpha] : {std::pair(10.0, 14), std::pair(6.5, 26), std::pair(3.5, 56)}) {
        painter.setPen(
            QPen(Faded(colours::accent, alpha), width, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
        painter.drawPath(stroke);
    }
    painter.setPen(QPen(colours::accent.lighter(118), 1.3, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter.drawPath(stroke);
}

// What does not change from one picture to the next while a band moves.
void EqualizerPanel::DrawGlass() {
    const QSize pixels = (QSizeF(size()) * devicePixelRatioF()).toSize();
    glass_ = QPixmap(pixels);
    glass_.setDevicePixelRatio(devicePixelRatioF());
    glass_.fill(Qt::transparent);
    QPainter painter(&glass_);
    painter.setRenderHint(QPainter::Antialiasing);
    PaintGlass(painter, rect());
    PaintScale(painter);
}

void EqualizerPanel::resizeEvent(QResizeEvent* event) {
    glass_ = {};
    QWidget::resizeEvent(event);
}

void EqualizerPanel::paintEvent(QPaintEvent* /*event*/) {
    if (glass_.isNull() || glass_.devicePixelRatio() != devicePixelRatioF()) {
        DrawGlass();
    }
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.drawPixmap(0, 0, glass_);
    PaintCurve(painter);
    PaintLabels(painter);
}

} // namespace kestrune
