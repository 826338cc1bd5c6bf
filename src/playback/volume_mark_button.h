// One of the marks round the volume knob: lit up to the volume, and a button that sets it.
#pragma once

#include "skin/skin_picture.h"

#include <QAbstractButton>
#include <QPoint>

namespace kestrune {

// Unlit it is transparent: the dark mark is part of the window's picture. The strip must outlive it.
class VolumeMarkButton : public QAbstractButton {
    Q_OBJECT
public:
    VolumeMarkButton(const SkinPicture& strip, const QPoint& litInStrip, QWidget* parent = nullptr);
    void SetLit(bool lit);
    bool IsLit() const { return lit_; }

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    const SkinPicture& strip_;
    QPoint litInStrip_;
    bool lit_ = false;
};

} // namespace kestrune
