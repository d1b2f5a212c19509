tarnwik_test(service_test
  SOURCES ServiceDatabaseTest.cpp ServiceDeviceTest.cpp ServiceFixture.h ServiceProfileTest.cpp ServiceRequestTest.cpp
          ServiceSeedTest.cpp ServiceSessionTest.cpp ServiceUsageTest.cpp
  LINK tarnwik_service)
target_compile_definitions(service_test PRIVATE
  TARNWIK_SEED_FILE="${CMAKE_SOURCE_DIR}/packaging/seed.example.json")
