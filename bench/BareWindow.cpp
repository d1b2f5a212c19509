// A program that shows one window of Qt Quick and does nothing else, to measure against.

#include <QGuiApplication>
#include <QQmlApplicationEngine>
#include <QQuickWindow>

int main(int argc, char **argv)
{
    QQuickWindow::setSceneGraphBackend(QStringLiteral("software"));
    const QGuiApplication application(argc, argv);
    const QQmlApplicationEngine engine(QUrl(QStringLiteral("qrc:/qt/qml/TarnwikBench/BareWindow.qml")));
    return QGuiApplication::exec();
}
