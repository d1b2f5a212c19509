#include "ui/controls/ControlsTestSetup.h"

#include <QtQuickTest>

QUICK_TEST_MAIN_WITH_SETUP(controls_test, tarnwik::test::ControlsTestSetup)
