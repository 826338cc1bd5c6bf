// Runs the tests of the converter's rules. Nothing of the user's own folders may be touched.
#include <QCoreApplication>
#include <QTemporaryDir>
#include <gtest/gtest.h>

int main(int argc, char** argv) {
    testing::InitGoogleTest(&argc, argv);
    const QTemporaryDir home;
    qputenv("KESTRUNE_HOME", home.path().toUtf8());
    qputenv("XDG_CONFIG_HOME", home.path().toUtf8());
    QCoreApplication application(argc, argv);
    return RUN_ALL_TESTS();
}
