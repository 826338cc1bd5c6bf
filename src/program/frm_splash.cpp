#include "program/frm_splash.h"

#include "skin/program_icon.h"
#include "skin/skin_colours.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QPainterPath>
#include <cmath>

namespace kestrune {

namespace {

constexpr double glassRadius = 7;
constexpr QRectF glassPlace(14, 14, 372, 158);
constexpr int emblemSize = 124;
constexpr QPoint emblemPlace(28, 30);

void PaintGlass(QPainter& painter) {
    QPainterPath outline;
    outline.addRoundedRect(glassPlace, glassRadius, glassRadius);
    painter.fillPath(outline, colours::glass);
    painter.save();
    painter.setClipPath(outline);
    QLinearGradient shadow(glassPlace.topLeft(), glassPlace.topLeft() + QPointF(0, 14));
    shadow.setColorAt(0, QColor(0, 0, 0, 190));
    shadow.setColorAt(1, QColor(0, 0, 0, 0));
    painter.fillRect(glassPlace, shadow);
    QRadialGradient glow(QPointF(emblemPlace) + QPointF(emblemSize / 2.0, emblemSize / 2.0), 150);
    QColor light = colours::accent;
    light.setAlphaF(0.26F);
    glow.setColorAt(0, light);
    light.setAlphaF(0);
    glow.setColorAt(1, light);
    painter.fillRect(glassPlace, glow);
    QPainterPath reflection;
    reflection.moveTo(glassPlace.topLeft());
    reflection.lineTo(glassPlace.topRight());
    reflection.lineTo(glassPlace.right(), glassPlace.top() + 34);
    reflection.quadTo(glassPlace.center().x(), glassPlace.top() + 74, glassPlace.left(),
                      glassPlace.top() + 62);
    QLinearGradient shine(glassPlace.topLeft(), glassPlace.topLeft() + QPointF(0, 74));
    shine.setColorAt(0, QColor(255, 255, 255, 20));
    shine.setColorAt(1, QColor(255, 255, 255, 5));
    painter.fillPath(reflection, shine);
    painter.restore();
    // The rim: dark above, where the body throws its shadow, and lit below.
    QLinearGradient rim(glassPlace.topLeft(), glassPlace.bottomLeft());
    rim.setColorAt(0, QColor(0, 0, 0, 200));
    rim.setColorAt(1, QColor(255, 255, 255, 38));
    painter.setPen(QPen(QBrush(rim), 1));
    painter.setBrush(Qt::NoBrush);
    painter.drawRoundedRect(glassPlace.adjusted(-0.5, -0.5, 0.5, 0.5), glassRadius, glassRadius);
}

// A line of sound that runs out to the right under the name.
void PaintWave(QPainter& painter) {
    constexpr double left = 166;
    constexpr double right = 372;
    constexpr double middle = 136;
    constexpr double pitch = 5;
    painter.setPen(Qt::NoPen);
    for (double x = left; x < right; x += pitch) {
        const double along = (x - left) / (right - left);
        const double height =
            2 + 26 * (1 - along) * std::abs(std::sin(along * 17) * std::cos(along * 6.3 + 0.4));
        QColor colour = colours::accent;
        colour.setAlphaF(static_cast<float>(0.85 - 0.7 * along));
        painter.setBrush(colour);
        painter.drawRoundedRect(QRectF(x, middle - height / 2, 3, height), 1.5, 1.5);
    }
}

QFont Face(int pixels, QFont::Weight weight) {
    QFont face(QStringLiteral("Inter"));
    face.setPixelSize(pixels);
    face.setWeight(weight);
    return face;
}

void PaintName(QPainter& painter) {
    QFont face = Face(38, QFont::DemiBold);
    face.setLetterSpacing(QFont::AbsoluteSpacing, -0.6);
    painter.setFont(face);
    painter.setPen(QColor(0xF2, 0xF3, 0xFF));
    painter.drawText(QRect(164, 42, 214, 46), Qt::AlignLeft | Qt::AlignVCenter, QStringLiteral("Kestrune"));
    painter.setFont(Face(12, QFont::Normal));
    painter.setPen(colours::textOnGlass);
    painter.drawText(QRect(166, 90, 212, 18), Qt::AlignLeft | Qt::AlignVCenter,
                     FrmSplash::tr("Audio workbench for the desktop"));
}

} // namespace

FrmSplash::FrmSplash(const ProgramState& state, QWidget* parent)
    : SkinnedDialog(corners::dialog, parent),
      state_(state),
      labelVer_(MakeLabel(QStringLiteral("LabelVer"), {22, 184, 178, 20}, 13, colours::textOnBody)),
      labelBuild_(MakeLabel(QStringLiteral("LabelBuild"), {200, 184, 178, 20}, 13, colours::textOnBody)) {
    setObjectName(QStringLiteral("frmSplash"));
    setWindowTitle(tr("About Kestrune"));
    setAccessibleName(windowTitle());
    setWindowIcon(ProgramIcon());
    setFixedSize(windowSize);
    labelBuild_->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    QLabel* licence =
        MakeLabel(QStringLiteral("LabelLicence"), {22, 210, 356, 18}, 11, colours::textMutedOnBody);
    licence->setText(tr("Free software under the GNU GPL, version 3 or later"));
}

QLabel* FrmSplash::MakeLabel(const QString& name, const QRect& place, int pixels, const QColor& ink) {
    auto* label = new QLabel(this);
    label->setObjectName(name);
    label->setGeometry(place);
    label->setFont(Face(pixels, pixels > 11 ? QFont::DemiBold : QFont::Normal));
    QPalette inks;
    inks.setColor(QPalette::WindowText, ink);
    label->setPalette(inks);
    // A click on a label is a click on the window.
    label->setAttribute(Qt::WA_TransparentForMouseEvents);
    return label;
}

void FrmSplash::showEvent(QShowEvent* event) {
    labelVer_->setText(state_.AppVersion);
    labelBuild_->setText(tr("Build %1").arg(state_.BuildNumber));
    setAccessibleDescription(tr("Kestrune %1, %2").arg(labelVer_->text(), labelBuild_->text()));
    Chrome().Centre();
    SkinnedDialog::showEvent(event);
}

void FrmSplash::paintEvent(QPaintEvent* /*event*/) {
    if (panel_.isNull() || panel_.devicePixelRatio() != devicePixelRatioF()) {
        panel_ = QPixmap(size() * devicePixelRatioF());
        panel_.setDevicePixelRatio(devicePixelRatioF());
        panel_.fill(Qt::transparent);
        QPainter painter(&panel_);
        painter.setRenderHint(QPainter::Antialiasing);
        PaintGlass(painter);
        PaintWave(painter);
        PaintName(painter);
        painter.drawPixmap(emblemPlace, ProgramEmblem(emblemSize, devicePixelRatioF()));
    }
    QPainter(this).drawPixmap(0, 0, panel_);
}

void FrmSplash::keyPressEvent(QKeyEvent* event) {
    switch (event->key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
    case Qt::Key_Space:
        accept();
        break;
    default:
        SkinnedDialog::keyPressEvent(event);
        break;
    }
}

void FrmSplash::mouseReleaseEvent(QMouseEvent* event) {
    if (rect().contains(event->position().toPoint())) {
        accept();
    }
}

} // namespace kestrune
