tarnwik_test(shell_test
  SOURCES AppearanceTest.cpp GuiDesktopTest.cpp ShellCommandLineTest.cpp SingleInstanceTest.cpp TrayHostTest.cpp
          WindowPlaceKeeperTest.cpp WindowPlaceTest.cpp ${CMAKE_SOURCE_DIR}/tests/support/ApplicationTestMain.cpp
  LINK tarnwik_shell tarnwik_platform_gui tarnwik_test_session_bus Qt6::Test Qt6::Widgets)
set_source_files_properties(ShellCommandLineTest.cpp PROPERTIES
  COMPILE_DEFINITIONS TARNWIK_VERSION="${PROJECT_VERSION}")

tarnwik_test(tray_menu_test
  SOURCES ApplicationMenuTest.cpp TrayMenuTest.cpp ${CMAKE_SOURCE_DIR}/tests/support/ApplicationTestMain.cpp
  LINK tarnwik_desktop_menus tarnwik_test_platform Qt6::Test Qt6::Widgets)

tarnwik_test(application_scenes_test
  SOURCES TarnwikAppTest.cpp ${CMAKE_SOURCE_DIR}/tests/support/ApplicationTestMain.cpp
  LINK tarnwik_application tarnwik_test_platform Qt6::Test Qt6::Widgets)
