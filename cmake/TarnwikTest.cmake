# tarnwik_test(NAME SOURCES … [LINK …] [TIMEOUT SECONDS]): a GoogleTest program, and one ctest entry that runs all of it.
#
# One entry a program, since a process for each test would cost more than the tests themselves. What fails is still
# named: ctest shows the program's own output, and test-results/NAME.xml lists every behaviour with its outcome. The
# programs find neither a display nor a message bus of the person who runs them: a test that needs one starts its own.
function(tarnwik_test name)
  cmake_parse_arguments(ARG "" "TIMEOUT" "SOURCES;LINK" ${ARGN})
  if(NOT ARG_TIMEOUT)
    set(ARG_TIMEOUT 30)
  endif()

  tarnwik_program(${name} SOURCES ${ARG_SOURCES}
                  LINK tarnwik_test_main tarnwik_test_support ${ARG_LINK} GTest::gmock GTest::gtest)
  target_include_directories(${name} PRIVATE ${CMAKE_SOURCE_DIR}/tests)

  add_test(NAME ${name} COMMAND ${name} --gtest_output=xml:${CMAKE_BINARY_DIR}/test-results/${name}.xml)
  set_tests_properties(${name} PROPERTIES
    TIMEOUT ${ARG_TIMEOUT}
    ENVIRONMENT "DBUS_SESSION_BUS_ADDRESS=disabled:;QT_QPA_PLATFORM=offscreen;LC_ALL=C.UTF-8"
    ENVIRONMENT_MODIFICATION "DISPLAY=unset:;WAYLAND_DISPLAY=unset:")
endfunction()

# tarnwik_quick_test(NAME SOURCES … [LINK …] [TIMEOUT SECONDS]): a Qt Quick Test program, and one ctest entry that runs
# all the tst_*.qml files of the folder that calls this. The sources hold the program's main, which
# QUICK_TEST_MAIN_WITH_SETUP writes. The files are read from the source tree: a changed test needs no build.
function(tarnwik_quick_test name)
  cmake_parse_arguments(ARG "" "TIMEOUT" "SOURCES;LINK" ${ARGN})
  if(NOT ARG_TIMEOUT)
    set(ARG_TIMEOUT 60)
  endif()

  tarnwik_program(${name} SOURCES ${ARG_SOURCES} LINK ${ARG_LINK} Qt6::QuickTest)
  target_include_directories(${name} PRIVATE ${CMAKE_SOURCE_DIR}/tests)
  target_compile_definitions(${name} PRIVATE QUICK_TEST_SOURCE_DIR="${CMAKE_CURRENT_SOURCE_DIR}")

  add_test(NAME ${name} COMMAND ${name} -o ${CMAKE_BINARY_DIR}/test-results/${name}.xml,junitxml -o -,txt)
  set_tests_properties(${name} PROPERTIES
    TIMEOUT ${ARG_TIMEOUT}
    ENVIRONMENT "DBUS_SESSION_BUS_ADDRESS=disabled:;QT_QPA_PLATFORM=offscreen;QT_QUICK_BACKEND=software;LC_ALL=C.UTF-8"
    ENVIRONMENT_MODIFICATION "DISPLAY=unset:;WAYLAND_DISPLAY=unset:")
endfunction()
