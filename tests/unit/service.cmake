tarnwik_test(service_test
  SOURCES ServiceDatabaseTest.cpp ServiceDeviceTest.cpp ServiceFixture.h ServiceProfileTest.cpp ServiceRequestTest.cpp
          ServiceSeedTest.cpp ServiceSessionTest.cpp ServiceTransactionFixture.h ServiceTransactionRefusalTest.cpp
          ServiceTransactionTest.cpp ServiceUpgradeTest.cpp ServiceUsageTest.cpp
  LINK tarnwik_service tarnwik_test_signing)
target_compile_definitions(service_test PRIVATE
  TARNWIK_SEED_FILE="${CMAKE_SOURCE_DIR}/packaging/seed.example.json"
  TARNWIK_VERSION_1_SQL="${CMAKE_CURRENT_SOURCE_DIR}/service-version-1.sql")
