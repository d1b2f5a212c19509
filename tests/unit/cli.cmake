tarnwik_test(cli_test
  SOURCES CommandLineTest.cpp SubscriptionCommandsTest.cpp TunnelWaitTest.cpp
  LINK tarnwik_cli tarnwik_test_platform)

tarnwik_test(embedded_test
  SOURCES EmbeddedTunnelTest.cpp
  LINK tarnwik_embedded Qt6::Test)
