#include <gmock/gmock.h>

#include <QApplication>
#include <QStandardPaths>

/// The tests of one program that needs windows or menus, with the files of a test user.
int main(int argc, char **argv)
{
    testing::InitGoogleMock(&argc, argv);
    QApplication application(argc, argv);
    QApplication::setApplicationName(QStringLiteral("tarnwik-tests"));
    QApplication::setQuitOnLastWindowClosed(false);
    QStandardPaths::setTestModeEnabled(true);
    return RUN_ALL_TESTS();
}
