// Runs tests on the X server that DISPLAY names, in the skin's style, and without touching the user's own
// folders.
#include "skin/skin_style.h"

#include <QApplication>
#include <QTemporaryDir>
#include <gtest/gtest.h>

int main(int argc, char** argv) {
    testing::InitGoogleTest(&argc, argv);
    qputenv("QT_QPA_PLATFORM", "xcb");
    const QTemporaryDir home;
    qputenv("KESTRUNE_HOME", home.path().toUtf8());
    qputenv("XDG_CONFIG_HOME", home.path().toUtf8());
    QApplication application(argc, argv);
    QApplication::setQuitOnLastWindowClosed(false);
    kestrune::ApplySkinStyle(application);
    return RUN_ALL_TESTS();
}
