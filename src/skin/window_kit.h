// Builds the controls of a window from its layout.
#pragma once

#include "skin/elided_label.h"
#include "skin/hover_keeper.h"
#include "skin/image_button.h"
#include "skin/key_layout.h"
#include "skin/skin_picture.h"

#include <QColor>
#include <QLabel>
#include <QWidget>

namespace kestrune {

inline constexpr int bodyFontPixels = 11;
inline constexpr int titleFontPixels = 12;

// The name of a member of a control array, as "ImageCMD(2)".
QString Indexed(const QString& name, qsizetype index);

// Gives a control its object name and its place in its parent.
template <typename Widget>
Widget* Put(Widget* widget, const QString& name, const QRect& place) {
    widget->setObjectName(name);
    widget->setGeometry(place);
    return widget;
}

// The place of a control in a grid that is filled row by row. `first` is the first one's.
QRect InGrid(const QRect& first, int index, int columns, int columnStep, int rowStep);

// The colour and the size of a label's letters.
void SetInk(QLabel* label, const QColor& colour, int pixels = bodyFontPixels,
            QFont::Weight weight = QFont::Normal);

// Tab goes from each to the next.
void OrderTabs(const QWidgetList& order);

// What a window's keys and labels are made with. Pictures and keeper must outlive the controls. Window
// thread.
class WindowKit {
public:
    // `off` is the background with all glyphs dimmed; null in windows without one.
    WindowKit(QWidget* window, const SkinPicture& strip, const SkinPicture* off, HoverKeeper& hover)
        : window_(window), strip_(strip), off_(off), hover_(hover) {}

    // A picture key of the window, or of a part of it. Its tip is its accessible name, too. `group` is one of
    // the keeper's, `index` its number there.
    ImageButton* Picture(const QString& name, const QString& tip, const KeyLayout& key, int group, int index,
                         QWidget* parent = nullptr);
    // The same for a key that the caller made.
    void Equip(ImageButton* button, const QString& name, const QString& tip, const KeyLayout& key, int group,
               int index);
    static ButtonLooks LooksOf(const KeyLayout& key);

    // A label in one line; the place is that in its parent.
    ElidedLabel* Text(const QString& name, const QString& text, const QRect& place, const QColor& colour,
                      QWidget* parent = nullptr);

private:
    QWidget* window_;
    const SkinPicture& strip_;
    const SkinPicture* off_;
    HoverKeeper& hover_;
};

} // namespace kestrune
