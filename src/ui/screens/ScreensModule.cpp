#include "ui/screens/ScreensModule.h"

#include "ui/controls/ControlsModule.h"

#include <QtQml/qqmlextensionplugin.h>

Q_IMPORT_QML_PLUGIN(TarnwikPlugin)

namespace tarnwik {

void addScreensModule(QQmlEngine &engine)
{
    addControlsModule(engine);
}

} // namespace tarnwik
