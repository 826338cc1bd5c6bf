// A button that is a picture: transparent in its normal state, so that the window's background shows through,
// and a piece of the window's strip in its other looks.
#pragma once

#include "skin/hover_groups.h"

#include <QAbstractButton>
#include <QPointer>
#include <QVariantAnimation>
#include <optional>

namespace kestrune {

class HoverKeeper;
class SkinPicture;

// Where the looks lie in the strip, in pixels; each is as large as the button.
struct ButtonLooks {
    QPoint hover;
    std::optional<QPoint> pressed = std::nullopt; // without one, the hover look stands in
    std::optional<QPoint> lit = std::nullopt;     // of a checkable button that is on
    std::optional<QPoint> litHover =
        std::nullopt; // the same under the mouse; without one, the lit look stays
};

// Which look is seen: one that the program holds, else off (disabled), else pressed, else lit, else hover,
// else none. The hover look comes with the mouse, through the window's HoverKeeper, and goes when the mouse
// moves over something else. Pictures must outlive the button. Takes the focus by Tab, not by the mouse;
// Space and Enter press it. Window thread.
class ImageButton : public QAbstractButton {
    Q_OBJECT
    // Hover looks come and go in a short fade. Off, they change at once.
    Q_PROPERTY(bool hoverFades READ HoverFades WRITE SetHoverFades)
public:
    enum class Change { AtOnce, Faded };

    ImageButton(const SkinPicture& strip, const ButtonLooks& looks, QWidget* parent = nullptr);

    void SetLooks(const ButtonLooks& looks);
    const ButtonLooks& Looks() const { return looks_; }
    // The window's background with all glyphs dimmed. A disabled button shows it at its own place in the
    // window. With none it stays transparent.
    void SetOffPicture(const SkinPicture* background);
    // Holds the pressed look by program, as Play does while it plays, also on a disabled button.
    void SetPressedLook(bool pressed);
    bool HasPressedLook() const { return pressedLook_; }

    // The piece of the strip that is shown once fades have ended; nothing for a transparent button.
    std::optional<QRect> ShownPiece() const;
    bool IsLit() const { return hovered_; }
    bool CanBeLit() const { return !keeper_.isNull(); }
    bool HoverFades() const { return hoverFades_; }
    void SetHoverFades(bool fades) { hoverFades_ = fades; }

    // For HoverKeeper.
    void SetHoverKeeper(HoverKeeper* keeper, const HoverButton& place);
    void ShowHover(bool shown, Change change);

    QSize sizeHint() const override { return size(); }

protected:
    void paintEvent(QPaintEvent* event) override;
    void enterEvent(QEnterEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void keyReleaseEvent(QKeyEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    void ReportMouse();
    QRect PieceAt(const QPoint& place) const { return {place, size()}; }
    std::optional<QPoint> PressedPlace() const;
    void PaintOff(QPainter& painter) const;
    void PaintLooks(QPainter& painter) const;

    const SkinPicture& strip_;
    const SkinPicture* off_ = nullptr;
    ButtonLooks looks_;
    QPointer<HoverKeeper> keeper_;
    HoverButton place_;
    QVariantAnimation fade_; // opacity of the hover look, 0 to 1
    qreal hoverOpacity_ = 0;
    bool hovered_ = false;
    bool hoverFades_ = true;
    bool pressedLook_ = false;
    bool showsFocus_ = false; // the focus came by the keyboard
    bool enterHeld_ = false;
};

} // namespace kestrune
