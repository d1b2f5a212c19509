tarnwik_test(platform_qt_test
  SOURCES HTTPSessionPolicyTest.cpp InformationDictionaryTest.cpp UserDefaultsFailureTest.cpp UserDefaultsTest.cpp
  LINK tarnwik_platform_qt)
