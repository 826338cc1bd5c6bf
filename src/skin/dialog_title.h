// The bar at the top of a framed dialog.
#pragma once

#include <QLabel>
#include <QPushButton>
#include <QWidget>

namespace kestrune {

// The cross that closes a dialog.
class DialogCloseButton : public QPushButton {
    Q_OBJECT
public:
    explicit DialogCloseButton(QWidget* parent);
    QSize sizeHint() const override { return {22, 20}; }

protected:
    void paintEvent(QPaintEvent* event) override;
};

// LabelTitle with the dialog's title, and ImageQuit, which closes the dialog. Window thread.
class DialogTitle : public QWidget {
    Q_OBJECT
public:
    static constexpr int height = 32;

    explicit DialogTitle(QWidget* dialog);
    // Takes the title and the width of the dialog.
    void Follow();
    QLabel* LabelTitle() const { return labelTitle_; }
    QPushButton* ImageQuit() const { return imageQuit_; }

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QLabel* labelTitle_;
    QPushButton* imageQuit_;
};

// A strip along an edge or a corner of a window that resizes it.
class ResizeEdge : public QWidget {
    Q_OBJECT
public:
    static constexpr int thickness = 5;

    ResizeEdge(Qt::Edges edges, QWidget* window);
    void Follow();

protected:
    void mousePressEvent(QMouseEvent* event) override;

private:
    Qt::Edges edges_;
};

} // namespace kestrune
