tarnwik_test(core_test
  SOURCES APIClientTest.cpp AppModelConnectTest.cpp AppModelRefreshTest.cpp AppModelSessionTest.cpp
          AppModelUsageTest.cpp AppRuntimeTest.cpp SubscriptionFlowTest.cpp VPNControllerTest.cpp
  LINK tarnwik_core tarnwik_test_platform Qt6::Test PkgConfig::sodium)

tarnwik_test(store_test
  SOURCES AppStoreSubscriptionPlanTest.cpp EmptyAppStoreTest.cpp SubscriptionPurchaseTest.cpp
          SubscriptionStoreFixture.h SubscriptionStoreTest.cpp
  LINK tarnwik_store tarnwik_test_platform Qt6::Test)
