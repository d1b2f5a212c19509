#pragma once

class QQmlEngine;

namespace tarnwik {

/// Makes `import Tarnwik` work in \a engine: the screens, and the controls that they are made of.
void addScreensModule(QQmlEngine &engine);

} // namespace tarnwik
