#include "ui/screens/ScreensTestSetup.h"

#include <QtQuickTest>

QUICK_TEST_MAIN_WITH_SETUP(screens_test, tarnwik::test::ScreensTestSetup)
