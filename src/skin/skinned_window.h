// Bases for the windows of the skin. A widget of another base gets the same by a WindowChrome of its own.
#pragma once

#include "skin/corner_sizes.h"
#include "skin/window_chrome.h"

#include <QDialog>

namespace kestrune {

// A window that stands for itself.
class SkinnedWindow : public QWidget {
    Q_OBJECT
public:
    explicit SkinnedWindow(const QSize& ellipse, QWidget* parent = nullptr)
        : QWidget(parent), chrome_(new WindowChrome(this, ellipse)) {}
    WindowChrome& Chrome() { return *chrome_; }

private:
    WindowChrome* chrome_;
};

// A window that is run modally by exec. Escape closes it.
class SkinnedDialog : public QDialog {
    Q_OBJECT
public:
    explicit SkinnedDialog(const QSize& ellipse, QWidget* parent = nullptr)
        : QDialog(parent), chrome_(new WindowChrome(this, ellipse)) {}
    WindowChrome& Chrome() { return *chrome_; }

private:
    WindowChrome* chrome_;
};

} // namespace kestrune
