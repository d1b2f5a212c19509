tarnwik_test(core_test
  SOURCES APIClientTest.cpp AppModelConnectTest.cpp AppModelRefreshTest.cpp AppModelSessionTest.cpp
          AppModelUsageTest.cpp AppRuntimeTest.cpp VPNControllerTest.cpp
  LINK tarnwik_core tarnwik_test_platform Qt6::Test PkgConfig::sodium)
