#include "skin/dialog_title.h"

#include "skin/skin_colours.h"
#include "skin/style_paint.h"

#include <QCoreApplication>
#include <QIcon>
#include <QMouseEvent>
#include <QPainter>
#include <QStyleOptionButton>
#include <QWindow>

namespace kestrune {

namespace {

constexpr int titlePixels = 12;
constexpr int sideMargin = 14;
constexpr int quitMargin = 8;

Qt::CursorShape ShapeFor(Qt::Edges edges) {
    if (edges == (Qt::LeftEdge | Qt::TopEdge) || edges == (Qt::RightEdge | Qt::BottomEdge)) {
        return Qt::SizeFDiagCursor;
    }
    if (edges == (Qt::RightEdge | Qt::TopEdge) || edges == (Qt::LeftEdge | Qt::BottomEdge)) {
        return Qt::SizeBDiagCursor;
    }
    return edges.testFlag(Qt::LeftEdge) || edges.testFlag(Qt::RightEdge) ? Qt::SizeHorCursor
                                                                         : Qt::SizeVerCursor;
}

} // namespace

DialogCloseButton::DialogCloseButton(QWidget* parent) : QPushButton(parent) {
    setObjectName(QStringLiteral("ImageQuit"));
    setAccessibleName(tr("Close"));
    setToolTip(tr("Close"));
    setAutoDefault(false);
    setFocusPolicy(Qt::TabFocus);
    setAttribute(Qt::WA_Hover);
}

void DialogCloseButton::paintEvent(QPaintEvent* /*event*/) {
    QStyleOptionButton option;
    initStyleOption(&option);
    const shapes::Look look(option);
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const QRectF ground = QRectF(rect()).adjusted(1, 1, -1, -1);
    if (look.hover || look.pressed) {
        QColor lit = look.pressed ? QColor(0, 0, 0) : colours::accent;
        lit.setAlphaF(look.pressed ? 0.35F : 0.22F);
        painter.setPen(Qt::NoPen);
        painter.setBrush(lit);
        painter.drawRoundedRect(ground, 5, 5);
    }
    const QPointF centre = QRectF(rect()).center() + QPointF(0, look.pressed ? 1 : 0);
    constexpr qreal arm = 3.75;
    const QColor glyph = look.hover || look.pressed ? QColor(0xF2, 0xF3, 0xFA) : colours::textMutedOnBody;
    // Engraved: a light edge below the dark stroke's own colour.
    for (const auto& [shift, colour] : {std::pair(1.0, QColor(0, 0, 0, 110)), std::pair(0.0, glyph)}) {
        painter.setPen(QPen(colour, 1.5, Qt::SolidLine, Qt::RoundCap));
        const QPointF at = centre + QPointF(0, shift);
        painter.drawLine(at + QPointF(-arm, -arm), at + QPointF(arm, arm));
        painter.drawLine(at + QPointF(arm, -arm), at + QPointF(-arm, arm));
    }
    if (look.focus) {
        shapes::FocusRing(painter, ground, 5);
    }
}

DialogTitle::DialogTitle(QWidget* dialog)
    : QWidget(dialog), labelTitle_(new QLabel(this)), imageQuit_(new DialogCloseButton(this)) {
    labelTitle_->setObjectName(QStringLiteral("LabelTitle"));
    labelTitle_->setTextFormat(Qt::PlainText);
    QFont face = font();
    face.setPixelSize(titlePixels);
    face.setWeight(QFont::DemiBold);
    labelTitle_->setFont(face);
    QPalette colour = labelTitle_->palette();
    colour.setColor(QPalette::WindowText, QColor(0xE4, 0xE6, 0xEE));
    labelTitle_->setPalette(colour);
    connect(imageQuit_, &QPushButton::clicked, dialog, &QWidget::close);
    Follow();
}

void DialogTitle::Follow() {
    const QWidget* dialog = parentWidget();
    setGeometry(0, 0, dialog->width(), height);
    const QSize quit = imageQuit_->sizeHint();
    imageQuit_->setGeometry(width() - quitMargin - quit.width(), (height - quit.height()) / 2, quit.width(),
                            quit.height());
    labelTitle_->setGeometry(0, 0, imageQuit_->x() - 4, height);
    labelTitle_->setContentsMargins(sideMargin, 0, 0, 0);
    QString title = dialog->windowTitle();
    title.remove(QLatin1String("[*]"));
    if (title.isEmpty()) {
        title = QCoreApplication::applicationName();
    }
    labelTitle_->setText(
        labelTitle_->fontMetrics().elidedText(title, Qt::ElideRight, labelTitle_->width() - sideMargin));
}

void DialogTitle::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    painter.fillRect(QRect(10, height - 2, width() - 20, 1), QColor(0, 0, 0, 90));
    painter.fillRect(QRect(10, height - 1, width() - 20, 1), QColor(255, 255, 255, 16));
}

ResizeEdge::ResizeEdge(Qt::Edges edges, QWidget* window) : QWidget(window), edges_(edges) {
    setCursor(ShapeFor(edges));
    setAttribute(Qt::WA_NoSystemBackground);
    Follow();
}

void ResizeEdge::Follow() {
    const QRect all = parentWidget()->rect();
    const bool corner =
        (edges_ & (Qt::LeftEdge | Qt::RightEdge)) && (edges_ & (Qt::TopEdge | Qt::BottomEdge));
    const int reach = corner ? 2 * thickness : thickness;
    QRect place = all;
    if (edges_.testFlag(Qt::LeftEdge)) {
        place.setWidth(reach);
    } else if (edges_.testFlag(Qt::RightEdge)) {
        place.setLeft(all.right() - reach + 1);
    }
    if (edges_.testFlag(Qt::TopEdge)) {
        place.setHeight(corner ? thickness : reach);
    } else if (edges_.testFlag(Qt::BottomEdge)) {
        place.setTop(all.bottom() - (corner ? thickness : reach) + 1);
    }
    setGeometry(place);
    raise();
}

void ResizeEdge::mousePressEvent(QMouseEvent* event) {
    if (event->button() == Qt::LeftButton && window()->windowHandle() != nullptr) {
        window()->windowHandle()->startSystemResize(edges_);
    }
}

} // namespace kestrune
