#include "ui/screens/ScreensModule.h"

#include <QDir>
#include <QEventLoop>
#include <QGuiApplication>
#include <QImage>
#include <QQuickItem>
#include <QQuickView>
#include <QTimer>

namespace {

constexpr QSize wide(960, 680);
constexpr QSize smallest(420, 540);

void wait(int milliseconds)
{
    QEventLoop loop;
    QTimer::singleShot(milliseconds, &loop, &QEventLoop::quit);
    loop.exec();
}

/// Shows one state of the stage and keeps a picture of it.
void take(QQuickView &view, const QString &state, QSize size, bool isDark, const QDir &folder)
{
    view.resize(size);
    QMetaObject::invokeMethod(view.rootObject(), "prepare", Q_ARG(QVariant, state), Q_ARG(QVariant, isDark));
    wait(200);
    QMetaObject::invokeMethod(view.rootObject(), "settle");
    wait(100);
    const QString name = QStringLiteral("%1-%2-%3%4.png")
                             .arg(state, size == wide ? QStringLiteral("wide") : QStringLiteral("small"),
                                  isDark ? QStringLiteral("dark") : QStringLiteral("light"),
                                  view.devicePixelRatio() > 1 ? QStringLiteral("@2x") : QString());
    view.grabWindow().save(folder.filePath(name));
}

} // namespace

/// usage: screens_pictures FOLDER [STATE…]
int main(int argc, char **argv)
{
    const QGuiApplication application(argc, argv);
    const QStringList arguments = QGuiApplication::arguments();
    const QDir folder(arguments.value(1));
    folder.mkpath(QStringLiteral("."));

    QQuickView view;
    tarnwik::addScreensModule(*view.engine());
    view.setResizeMode(QQuickView::SizeRootObjectToView);
    view.setSource(QUrl::fromLocalFile(QStringLiteral(PICTURES_FOLDER "/Stage.qml")));
    view.show();
    view.requestActivate();

    const QStringList chosen = arguments.mid(2);
    for (const QString &state : chosen.isEmpty() ? view.rootObject()->property("names").toStringList() : chosen)
        for (const QSize size : {wide, smallest})
            for (const bool isDark : {false, true})
                take(view, state, size, isDark, folder);
    return 0;
}
