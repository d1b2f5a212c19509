tarnwik_test(async_test
  SOURCES AsyncAbandonableTest.cpp AsyncChildTest.cpp AsyncClockTest.cpp AsyncDetachTest.cpp GateTest.cpp
  LINK tarnwik_async)
