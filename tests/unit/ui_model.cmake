tarnwik_test(ui_model_test
  SOURCES AppModelFacadeTest.cpp AppearanceTasksTest.cpp ApplicationActionsTest.cpp EnablingRulesTest.cpp
          FormatterFixture.h PresentationTest.cpp RecordListModelTest.cpp RefreshActionTest.cpp
          SubscriptionsFacadeTest.cpp SubscriptionStoreFixture.h UIModelFixture.h UIModelInQMLTest.cpp
          VPNActionTest.cpp
  LINK tarnwik_ui_model tarnwik_test_platform Qt6::Qml Qt6::Test)
