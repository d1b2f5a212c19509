#pragma once

#include "ui/screens/ScreensModule.h"

#include <QObject>
#include <QQmlEngine>

namespace tarnwik::test {

/// Gives the engine of a Qt Quick Test program the screens.
class ScreensTestSetup : public QObject
{
    Q_OBJECT

public Q_SLOTS:
    static void qmlEngineAvailable(QQmlEngine *engine) { addScreensModule(*engine); }
};

} // namespace tarnwik::test
