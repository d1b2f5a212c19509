tarnwik_test(async_test
  SOURCES AsyncChildTest.cpp AsyncClockTest.cpp AsyncDetachTest.cpp GateTest.cpp
  LINK tarnwik_async)
