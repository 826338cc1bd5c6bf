// Gives the picture buttons of one window their hover looks and takes them off again.
#pragma once

#include "skin/hover_groups.h"

#include <QHash>
#include <QObject>
#include <QPointer>

class QMouseEvent;
class QWidget;

namespace kestrune {

class ImageButton;

// One for each window. Buttons are told of by Add; ImageButton reports the mouse to its keeper. Window
// thread.
class HoverKeeper : public QObject {
    Q_OBJECT
public:
    explicit HoverKeeper(QObject* parent = nullptr);

    // A group of buttons with a hover index of its own.
    int AddGroup() { return groups_.AddGroup(); }
    // The button must not be in another group; it may be destroyed before the keeper.
    void Add(int group, int index, ImageButton* button);
    // Takes every hover look off.
    void ReturnButton();
    // Takes the looks off whenever the mouse moves over this widget or anything in it, now or later, other
    // than a button that can be lit, or a held button is let go over it. Turns mouse tracking on for all of
    // them. The window itself is what to watch.
    void Watch(QWidget* widget);

    // True if a widget that was held is let go over another place of its window. While it is held it takes
    // all moves of the mouse, and none need follow where it is let go.
    static bool IsLetGoElsewhere(const QWidget& held, const QMouseEvent& release);

    // Index plus 1 of the lit button of a group, 0 for none.
    quint8 HoverIndex(int group) const { return groups_.HoverIndex(group); }

    // For ImageButton: the mouse moved over it.
    void Moved(int group, int index);

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    ImageButton* ButtonAt(const HoverButton& place) const;

    HoverGroups groups_;
    QHash<int, QPointer<ImageButton>> buttons_; // by group and index
};

} // namespace kestrune
