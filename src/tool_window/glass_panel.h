// A pane of dark glass let into the body.
#pragma once

#include <QWidget>

namespace kestrune {

// Shadow at its upper edge, a faint reflection, light on the body's lower lip; labels on it are bright.
// Window thread.
class GlassPanel : public QWidget {
    Q_OBJECT
public:
    explicit GlassPanel(QWidget* parent);

protected:
    void paintEvent(QPaintEvent* event) override;
};

} // namespace kestrune
