// Runs the tests of all rules in one executable that links no windows: a rule that reaches for one does not
// link.
#include <QCoreApplication>
#include <QTemporaryDir>
#include <gtest/gtest.h>

int main(int argc, char** argv) {
    testing::InitGoogleTest(&argc, argv);
    // Nothing of the user's own folders may be touched.
    const QTemporaryDir home;
    qputenv("KESTRUNE_HOME", home.path().toUtf8());
    qputenv("XDG_CONFIG_HOME", home.path().toUtf8());
    QCoreApplication application(argc, argv);
    return RUN_ALL_TESTS();
}
