#pragma once

#include "ui/controls/ControlsModule.h"

#include <QObject>
#include <QQmlEngine>

namespace tarnwik::test {

/// Gives the engine of each test file what the controls need.
class ControlsTestSetup : public QObject
{
    Q_OBJECT

public Q_SLOTS:
    static void qmlEngineAvailable(QQmlEngine *engine) { addControlsModule(*engine); }
};

} // namespace tarnwik::test
