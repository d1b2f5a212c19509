tarnwik_test(url_test SOURCES URLTest.cpp URLErrorTest.cpp LINK tarnwik_platform)
