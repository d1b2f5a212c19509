# What cmake --install puts into place. Packages of a distribution are made from nothing else.
add_test(NAME install_test
  COMMAND ${CMAKE_CURRENT_SOURCE_DIR}/install.sh ${CMAKE_COMMAND} ${CMAKE_BINARY_DIR} ${PROJECT_VERSION})
add_test(NAME launch_test COMMAND ${CMAKE_CURRENT_SOURCE_DIR}/launch.sh ${CMAKE_COMMAND} ${CMAKE_BINARY_DIR})
# Both write the build's list of what was installed.
set_tests_properties(install_test launch_test PROPERTIES
  TIMEOUT 120 SKIP_RETURN_CODE 77 RESOURCE_LOCK installation)
