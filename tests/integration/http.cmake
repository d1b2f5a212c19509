tarnwik_test(http_session_test
  SOURCES HTTPSessionCancellationTest.cpp HTTPSessionFailureTest.cpp HTTPSessionRedirectTest.cpp HTTPSessionTest.cpp
          HTTPSessionTLSTest.cpp
  LINK tarnwik_platform_qt)
