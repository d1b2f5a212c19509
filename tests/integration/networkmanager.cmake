# The tunnel manager against a real NetworkManager, in namespaces of its own.
tarnwik_program(tarnwik_networkmanager_tests
  SOURCES NetworkManagerDaemonTest.cpp NetworkManagerOrdinaryUserTest.cpp NetworkManagerSavingTest.cpp
          NetworkManagerSecretAgentTest.cpp NetworkManagerTunnelTest.cpp
          ${CMAKE_SOURCE_DIR}/tests/support/networkmanager/InMemoryKeychain.h
          ${CMAKE_SOURCE_DIR}/tests/support/networkmanager/NetworkManagerFixture.cpp
          ${CMAKE_SOURCE_DIR}/tests/support/networkmanager/NetworkManagerFixture.h
          ${CMAKE_SOURCE_DIR}/tests/support/networkmanager/UnendingNetworkManager.h
  LINK tarnwik_tunnel_linux tarnwik_test_main tarnwik_test_support)
target_include_directories(tarnwik_networkmanager_tests PRIVATE ${CMAKE_SOURCE_DIR}/tests)

# tarnwik_networkmanager_test(SUITE [wrapper]...): one suite, beside a daemon of its own. 77 is the fixture's word for a
# machine that cannot carry it.
function(tarnwik_networkmanager_test suite)
  set(tools ${CMAKE_SOURCE_DIR}/tests/support/networkmanager)
  add_test(NAME ${suite}
    COMMAND ${tools}/run-beside-networkmanager.sh ${ARGN} $<TARGET_FILE:tarnwik_networkmanager_tests>
            --gtest_filter=*${suite}.*)
  set_tests_properties(${suite} PROPERTIES
    TIMEOUT 180 SKIP_RETURN_CODE 77 FAIL_REGULAR_EXPRESSION "Running 0 tests")
endfunction()

foreach(suite NetworkManagerAgent NetworkManagerDaemonLife NetworkManagerFailure NetworkManagerSaving
        NetworkManagerTunnel)
  tarnwik_networkmanager_test(${suite})
endforeach()
tarnwik_networkmanager_test(NetworkManagerOrdinaryUser
  ${CMAKE_SOURCE_DIR}/tests/support/networkmanager/as-ordinary-user.sh)
