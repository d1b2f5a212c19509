# The terminal's client as its users see it: the program itself, beside the real development service or a server that
# answers anything.
function(tarnwikctl_test name)
  tarnwik_test(${name} SOURCES TarnwikctlFixture.h ${ARGN} LINK tarnwik_test_programs Qt6::Network TIMEOUT 120)
  target_compile_definitions(${name} PRIVATE
    TARNWIKCTL_PROGRAM="$<TARGET_FILE:tarnwikctl>"
    TARNWIK_SERVICE_PROGRAM="$<TARGET_FILE:tarnwik-service>"
    TARNWIKCTL_COMPLETION="${CMAKE_SOURCE_DIR}/packaging/tarnwikctl.bash")
  add_dependencies(${name} tarnwikctl tarnwik-service)
endfunction()

tarnwikctl_test(tarnwikctl_demo_test TarnwikctlCompletionTest.cpp TarnwikctlDemoTest.cpp TarnwikctlPasswordTest.cpp
                TarnwikctlWatchTest.cpp)
tarnwikctl_test(tarnwikctl_subscription_test TarnwikctlSubscriptionTest.cpp)
target_link_libraries(tarnwikctl_subscription_test PRIVATE tarnwik_service)
tarnwikctl_test(tarnwikctl_server_test ServiceProcess.h TarnwikctlAnswersTest.cpp TarnwikctlFilesTest.cpp
                TarnwikctlServerTest.cpp)

# The client of the REST API over the real HTTP session.
tarnwik_test(service_client_test
  SOURCES ServiceClientAnswersTest.cpp ServiceClientCancellationTest.cpp ServiceClientFixture.h
          ServiceClientTest.cpp ServiceClientWireTest.cpp ServiceProcess.h
  LINK tarnwik_api tarnwik_platform_qt tarnwik_secure Qt6::Network
  TIMEOUT 60)
target_compile_definitions(service_client_test PRIVATE TARNWIK_SERVICE_PROGRAM="$<TARGET_FILE:tarnwik-service>")
add_dependencies(service_client_test tarnwik-service)

# A purchase, from the store through the real service to the account.
tarnwik_test(subscription_chain_test
  SOURCES ServiceProcess.h SubscriptionChainTest.cpp
  LINK tarnwik_core tarnwik_platform_qt tarnwik_store_embedded tarnwik_test_platform Qt6::Network
  TIMEOUT 60)
target_compile_definitions(subscription_chain_test PRIVATE TARNWIK_SERVICE_PROGRAM="$<TARGET_FILE:tarnwik-service>")
add_dependencies(subscription_chain_test tarnwik-service)
