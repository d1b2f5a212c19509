#pragma once

class QQmlEngine;

namespace tarnwik {

/// Makes `import Tarnwik.Controls` work in \a engine: the import path of all modules that lie in the program, and the
/// icons.
void addControlsModule(QQmlEngine &engine);

} // namespace tarnwik
