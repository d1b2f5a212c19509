// tarnwik: the client for the desktop.

#include "platform/BundleIdentifier.h"
#include "platform/SystemPlatform.h"
#include "platform/embedded/EmbeddedPlatform.h"
#include "platform/gui/SystemDesktop.h"
#include "ui/app/CommandLine.h"
#include "ui/app/SingleInstance.h"
#include "ui/app/TarnwikApp.h"
#include "ui/app/WindowPlace.h"

#include <QApplication>
#include <QOpenGLContext>
#include <QQuickWindow>
#include <QScreen>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <string_view>

namespace {

using namespace tarnwik;

const char *const activationToken = "XDG_ACTIVATION_TOKEN";
const QString activationTokenKey = QStringLiteral("activation-token");

int answer(const app::Answer &answer)
{
    std::fputs((answer.text + u'\n').toUtf8().constData(), answer.status == 0 ? stdout : stderr);
    return answer.status;
}

int fail(const char *sentence)
{
    std::fprintf(stderr, "%s\n", sentence);
    return 1;
}

/// Whether there is a desktop to show windows on. Qt ends the program when there is none.
bool hasDesktop(int argc, char **argv)
{
    // Qt takes its options with one dash or two.
    const auto isPlatform = [](std::string_view argument) {
        return argument == "-platform" || argument == "--platform";
    };
    return hasSystemDesktop() || qEnvironmentVariableIsSet("QT_QPA_PLATFORM")
        || std::any_of(argv, argv + argc, isPlatform);
}

/// Whether a point is a whole number of dots on every screen. Qt's drawing by the processor breaks round corners where
/// it is not.
bool hasWholeScale()
{
    const auto screens = QGuiApplication::screens();
    return std::all_of(screens.begin(), screens.end(), [](const QScreen *screen) {
        return screen->devicePixelRatio() == std::round(screen->devicePixelRatio());
    });
}

/// Whether the screens can be drawn by the graphics card, or by a library that stands for it.
bool hasGraphicsCard()
{
    return QOpenGLContext().create();
}

/// To be called before there is a window, but with the screens known.
void chooseRenderer()
{
    const bool isChosen = qEnvironmentVariableIsSet("QT_QUICK_BACKEND") || qEnvironmentVariableIsSet("QSG_RHI_BACKEND")
        || qEnvironmentVariableIsSet("QSG_RHI");
    if (!isChosen && isSoftwareRendererPreferred() && qEnvironmentVariable("TARNWIK_GPU") != QStringLiteral("1")
        && (hasWholeScale() || !hasGraphicsCard()))
        QQuickWindow::setSceneGraphBackend(QStringLiteral("software"));
}

/// What the desktop gave to this start, so that it lets the other one's window come to the front.
QVariantMap platformData()
{
    QVariantMap data;
    if (qEnvironmentVariableIsSet(activationToken))
        data.insert(activationTokenKey, qEnvironmentVariable(activationToken));
    return data;
}

void takePlatformData(const QVariantMap &data)
{
    const QByteArray token = data.value(activationTokenKey).toString().toUtf8();
    if (!token.isEmpty())
        qputenv(activationToken, token);
}

PlatformServices platform(const app::Options &options)
{
    PlatformServices services = options.isDemo ? embeddedPlatform(demoFolder()) : systemPlatform();
    services.desktop = systemDesktop();
    return services;
}

WindowPlaceFile windowPlace(const app::Options &options)
{
    return WindowPlaceFile(options.isDemo ? demoFolder() + QStringLiteral("/window.json")
                                          : WindowPlaceFile::defaultPath());
}

int run(const app::Options &options)
{
    const QString name = QGuiApplication::desktopFileName();
    SingleInstance instance(QDBusConnection::sessionBus(), options.isDemo ? name + QStringLiteral(".demo") : name);
    switch (instance.start(platformData())) {
    case SingleInstance::Start::First:
        break;
    case SingleInstance::Start::Raised:
        return 0;
    case SingleInstance::Start::Unanswered:
        return fail("Tarnwik runs already, but does not answer.");
    }
    const ScopedPlatform scope(platform(options));
    TarnwikApp application(windowPlace(options));
    QObject::connect(&instance, &SingleInstance::activated, &application, [&](const QVariantMap &data) {
        takePlatformData(data);
        application.openMainWindow();
    });
    application.applicationDidFinishLaunching();
    return QCoreApplication::exec();
}

} // namespace

int main(int argc, char **argv)
{
    // Help and version before anything that needs a desktop.
    QStringList arguments;
    for (int index = 0; index < argc; ++index)
        arguments.append(QString::fromLocal8Bit(argv[index]));
    if (const auto early = app::parseCommandLine(arguments);
        std::holds_alternative<app::Answer>(early) && std::get<app::Answer>(early).status == 0)
        return answer(std::get<app::Answer>(early));
    if (!hasDesktop(argc, argv))
        return fail("Tarnwik needs a desktop to show its window on. In a terminal, use tarnwikctl.");

    // The name by which the desktop announces the windows and the icon in its tray.
    QCoreApplication::setApplicationName(QStringLiteral("Tarnwik"));
    QGuiApplication::setDesktopFileName(bundleIdentifier());
    QGuiApplication::setQuitOnLastWindowClosed(false);
    prepareSystemPlatform();
    const QApplication application(argc, argv);
    const auto parsed = app::parseCommandLine(QCoreApplication::arguments());
    if (const auto *text = std::get_if<app::Answer>(&parsed))
        return answer(*text);
    chooseRenderer();
    return run(std::get<app::Options>(parsed));
}
