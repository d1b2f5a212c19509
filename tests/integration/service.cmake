tarnwik_test(service_process_test
  SOURCES ServiceProcess.h ServiceProgramTest.cpp ServiceServerTest.cpp ServiceTransactionTest.cpp
  LINK tarnwik_test_signing Qt6::Network
  TIMEOUT 120)
target_compile_definitions(service_process_test PRIVATE TARNWIK_SERVICE_PROGRAM="$<TARGET_FILE:tarnwik-service>")
add_dependencies(service_process_test tarnwik-service)
