#include "ui/controls/ControlsModule.h"

#include "ui/controls/IconProvider.h"

#include <QQmlEngine>
#include <QtQml/qqmlextensionplugin.h>

Q_IMPORT_QML_PLUGIN(Tarnwik_ControlsPlugin)

namespace tarnwik {

void addControlsModule(QQmlEngine &engine)
{
    engine.addImportPath(QStringLiteral("qrc:/qt/qml"));
    engine.addImageProvider(QStringLiteral("icon"), new IconProvider); // The engine owns it.
}

} // namespace tarnwik
