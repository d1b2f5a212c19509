#pragma once

namespace tarnwik {

/// Mends what Qt Quick tells screen readers: that a control is disabled, that a label takes no focus, and nothing of
/// what a password field holds but its name. To be called once: after Qt Quick has been loaded by the first component,
/// and before a window is shown, since Qt keeps what it has once made for a control.
void installAccessibilityFactory();

} // namespace tarnwik
