#include <gmock/gmock.h>

#include <QCoreApplication>
#include <QStandardPaths>

/// The tests of one program, on an application without windows and with the files of a test user.
int main(int argc, char **argv)
{
    testing::InitGoogleMock(&argc, argv);
    QCoreApplication application(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("tarnwik-tests"));
    QStandardPaths::setTestModeEnabled(true);
    return RUN_ALL_TESTS();
}
