#include "skin/skin_style.h"

#include "skin/compositor.h"
#include "skin/corner_sizes.h"
#include "skin/skin_colours.h"
#include "skin/skin_icons.h"
#include "skin/style_paint.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QComboBox>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QTabBar>
#include <QTimerEvent>

namespace kestrune {

namespace {

constexpr int menuRowHeight = 22;
constexpr int menuSeparatorHeight = 7;
constexpr int menuPanelEllipse = 16;
constexpr int tipEllipse = 10;
constexpr int comboRowHeight = 20;
constexpr int listRowHeight = 17;
constexpr int menuTextExtra = 26 + 18 + 14; // marks, arrow, air between text and key
constexpr int busyTickMs = 33;
constexpr int busyPeriodMs = 1600;
constexpr int facePixels = 11;

QRegion RoundedRegion(const QSize& size, int ellipse) {
    QRegion region;
    const std::vector<int> insets = CornerInsets(size, {ellipse, ellipse});
    for (size_t row = 0; row < insets.size(); ++row) {
        region += QRect(insets[row], static_cast<int>(row), size.width() - 2 * insets[row], 1);
    }
    return region;
}

} // namespace

QPalette SkinPalette() {
    using shapes::Mixed;
    QPalette palette;
    const QColor window(0x2A, 0x2E, 0x35);
    const QColor selection = Mixed(colours::glass, colours::accent, colours::selectionStrength);
    palette.setColor(QPalette::Window, window);
    palette.setColor(QPalette::WindowText, colours::textOnBody);
    palette.setColor(QPalette::Base, colours::glass);
    palette.setColor(QPalette::AlternateBase, QColor(25, 25, 27));
    palette.setColor(QPalette::Text, colours::textOnGlass);
    palette.setColor(QPalette::PlaceholderText, colours::textMuted);
    palette.setColor(QPalette::Button, colours::bodyTop);
    palette.setColor(QPalette::ButtonText, colours::textOnBody);
    palette.setColor(QPalette::BrightText, QColor(0xF2, 0xF3, 0xFA));
    palette.setColor(QPalette::Highlight, selection);
    palette.setColor(QPalette::HighlightedText, QColor(0xF2, 0xF3, 0xFA));
    palette.setColor(QPalette::Link, QColor(0x9A, 0x9A, 0xFF));
    palette.setColor(QPalette::LinkVisited, QColor(0xB4, 0x9A, 0xE8));
    palette.setColor(QPalette::ToolTipBase, colours::glass);
    palette.setColor(QPalette::ToolTipText, colours::textOnGlass);
    palette.setColor(QPalette::Light, QColor(0x4A, 0x50, 0x5B));
    palette.setColor(QPalette::Midlight, QColor(0x3E, 0x44, 0x4D));
    palette.setColor(QPalette::Mid, QColor(0x22, 0x25, 0x2B));
    palette.setColor(QPalette::Dark, QColor(0x16, 0x18, 0x1C));
    palette.setColor(QPalette::Shadow, QColor(0x0A, 0x0B, 0x0D));
    for (const QPalette::ColorRole role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText,
                                           QPalette::HighlightedText, QPalette::PlaceholderText}) {
        palette.setColor(QPalette::Disabled, role, colours::textDisabled);
    }
    palette.setColor(QPalette::Disabled, QPalette::Highlight, QColor(0x2E, 0x30, 0x3A));
    palette.setColor(QPalette::Disabled, QPalette::Base, QColor(0x1F, 0x21, 0x24));
    return palette;
}

SkinStyle::SkinStyle() : QProxyStyle(QStringLiteral("fusion")) {
    setObjectName(QStringLiteral("kestrune"));
}

QPalette SkinStyle::standardPalette() const {
    return SkinPalette();
}

QIcon SkinStyle::standardIcon(StandardPixmap icon, const QStyleOption* option, const QWidget* widget) const {
    const QIcon own = SkinIcon(icon);
    return own.isNull() ? QProxyStyle::standardIcon(icon, option, widget) : own;
}

QPixmap SkinStyle::standardPixmap(StandardPixmap icon, const QStyleOption* option,
                                  const QWidget* widget) const {
    const QIcon own = SkinIcon(icon);
    if (own.isNull()) {
        return QProxyStyle::standardPixmap(icon, option, widget);
    }
    const qreal ratio = widget != nullptr ? widget->devicePixelRatioF() : qApp->devicePixelRatio();
    const bool message = icon >= SP_MessageBoxInformation && icon <= SP_MessageBoxQuestion;
    const int side = pixelMetric(message ? PM_MessageBoxIconSize : PM_SmallIconSize, option, widget);
    return own.pixmap(QSize(side, side), ratio);
}

void SkinStyle::polish(QWidget* widget) {
    QProxyStyle::polish(widget);
    if (qobject_cast<QLineEdit*>(widget) != nullptr || qobject_cast<QTabBar*>(widget) != nullptr ||
        qobject_cast<QHeaderView*>(widget) != nullptr) {
        widget->setAttribute(Qt::WA_Hover);
    }
    if (auto* view = qobject_cast<QAbstractItemView*>(widget)) {
        view->viewport()->setAttribute(Qt::WA_Hover);
    }
    if (qobject_cast<QMenu*>(widget) != nullptr) {
        widget->setWindowFlag(Qt::FramelessWindowHint);
        widget->setWindowFlag(Qt::NoDropShadowWindowHint);
        widget->setAttribute(Qt::WA_TranslucentBackground);
    } else if (widget->inherits("QTipLabel")) {
        widget->setAttribute(Qt::WA_TranslucentBackground);
        // Many tips tell a file's name or tag, which may look like markup.
        if (auto* tip = qobject_cast<QLabel*>(widget)) {
            tip->setTextFormat(Qt::PlainText);
        }
    }
}

int SkinStyle::pixelMetric(PixelMetric metric, const QStyleOption* option, const QWidget* widget) const {
    switch (metric) {
    case PM_ScrollBarExtent:
        return 11;
    case PM_ScrollBarSliderMin:
        return 24;
    case PM_ScrollView_ScrollBarSpacing:
    case PM_ScrollView_ScrollBarOverlap:
    case PM_MenuPanelWidth:
    case PM_MenuHMargin:
    case PM_TabBarTabShiftVertical:
    case PM_TabBarTabOverlap:
    case PM_ButtonShiftHorizontal:
        return 0;
    case PM_MenuVMargin:
        return 5;
    case PM_IndicatorWidth:
    case PM_IndicatorHeight:
    case PM_ExclusiveIndicatorWidth:
    case PM_ExclusiveIndicatorHeight:
        return 14;
    case PM_CheckBoxLabelSpacing:
    case PM_RadioButtonLabelSpacing:
        return 7;
    case PM_ButtonShiftVertical:
        return 1;
    case PM_SliderLength:
    case PM_SliderControlThickness:
        return 16;
    case PM_DefaultFrameWidth:
        return 1;
    case PM_ToolTipLabelFrameWidth:
        return 5;
    case PM_MessageBoxIconSize:
        return 40;
    case PM_SmallIconSize:
    case PM_ListViewIconSize:
    case PM_TabBarIconSize:
    case PM_ButtonIconSize:
        return 16;
    case PM_SplitterWidth:
        return 7;
    case PM_SizeGripSize:
        return 15;
    default:
        return QProxyStyle::pixelMetric(metric, option, widget);
    }
}

int SkinStyle::styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                         QStyleHintReturn* returned) const {
    switch (hint) {
    case SH_UnderlineShortcut:
    case SH_Menu_MouseTracking:
    case SH_Menu_SubMenuPopupDelay:
    case SH_ItemView_ShowDecorationSelected:
    case SH_MessageBox_TextInteractionFlags:
        return hint == SH_Menu_SubMenuPopupDelay            ? 160
               : hint == SH_MessageBox_TextInteractionFlags ? static_cast<int>(Qt::LinksAccessibleByMouse)
                                                            : 1;
    case SH_ComboBox_Popup:
    case SH_EtchDisabledText:
    case SH_DitherDisabledText:
    case SH_DialogButtonBox_ButtonsHaveIcons:
        return 0;
    case SH_ToolTipLabel_Opacity:
        return 255;
    case SH_Menu_Mask:
    case SH_ToolTip_Mask: {
        auto* mask = qstyleoption_cast<QStyleHintReturnMask*>(returned);
        if (mask == nullptr || option == nullptr || HasCompositor()) {
            return 0;
        }
        mask->region =
            RoundedRegion(option->rect.size(), hint == SH_Menu_Mask ? menuPanelEllipse : tipEllipse);
        return 1;
    }
    default:
        return QProxyStyle::styleHint(hint, option, widget, returned);
    }
}

QRect SkinStyle::subElementRect(SubElement element, const QStyleOption* option, const QWidget* widget) const {
    if (element == SE_ProgressBarGroove || element == SE_ProgressBarContents ||
        element == SE_ProgressBarLabel) {
        return option->rect;
    }
    return QProxyStyle::subElementRect(element, option, widget);
}

QSize SkinStyle::sizeFromContents(ContentsType type, const QStyleOption* option, const QSize& contents,
                                  const QWidget* widget) const {
    QSize size = QProxyStyle::sizeFromContents(type, option, contents, widget);
    switch (type) {
    case CT_MenuItem: {
        const auto* item = qstyleoption_cast<const QStyleOptionMenuItem*>(option);
        if (item == nullptr) {
            return size;
        }
        const bool separator = item->menuItemType == QStyleOptionMenuItem::Separator;
        return {contents.width() + menuTextExtra + item->reservedShortcutWidth,
                separator ? menuSeparatorHeight : menuRowHeight};
    }
    case CT_PushButton:
        return size.expandedTo({76, 26});
    case CT_LineEdit:
    case CT_ComboBox:
    case CT_SpinBox:
        return size.expandedTo({0, 24});
    case CT_ItemViewItem: {
        const bool combo = widget != nullptr && widget->parentWidget() != nullptr &&
                           widget->parentWidget()->inherits("QComboBoxPrivateContainer");
        return size.expandedTo({0, combo ? comboRowHeight : listRowHeight});
    }
    case CT_HeaderSection:
        return size.expandedTo({0, 22});
    case CT_TabBarTab:
        return size.expandedTo({0, 26}) + QSize(6, 0);
    case CT_ProgressBar:
        return size.expandedTo({0, 16});
    default:
        return size;
    }
}

qreal SkinStyle::BusyPhase(QObject* bar) const {
    if (bar != nullptr && !busyBars_.contains(bar)) {
        busyBars_.append(bar);
    }
    if (!busyTimer_.isActive()) {
        busyTimer_.start(busyTickMs, const_cast<SkinStyle*>(this));
        busyTime_.start();
    }
    return static_cast<qreal>(busyTime_.elapsed() % busyPeriodMs) / busyPeriodMs;
}

void SkinStyle::timerEvent(QTimerEvent* event) {
    if (event->timerId() != busyTimer_.timerId()) {
        QProxyStyle::timerEvent(event);
        return;
    }
    // Whoever is still busy and seen signs on again when it is drawn.
    const QList<QPointer<QObject>> bars = std::exchange(busyBars_, {});
    bool any = false;
    for (const QPointer<QObject>& bar : bars) {
        auto* widget = qobject_cast<QWidget*>(bar.data());
        if (widget != nullptr && widget->isVisible()) {
            widget->update();
            any = true;
        }
    }
    if (!any) {
        busyTimer_.stop();
    }
}

void ApplySkinStyle(QApplication& application) {
    QApplication::setAttribute(Qt::AA_DontUseNativeDialogs);
    QApplication::setAttribute(Qt::AA_DontUseNativeMenuBar);
    QFont face(QStringLiteral("Inter"));
    face.setPixelSize(facePixels);
    application.setFont(face);
    application.setStyle(new SkinStyle);
    application.setPalette(SkinPalette());
}

} // namespace kestrune
