# The adapters of macOS, over stand-ins of what speaks to its frameworks.
tarnwik_test(macos_test
  SOURCES MacAdapterStandIns.cpp MacAdapterStandIns.h MacDesktopTest.cpp MacInformationDictionaryTest.cpp
          MacKeychainTest.cpp MacNetworkExtensionStandIn.h MacTunnelConfigurationTest.cpp MacTunnelManagerTest.cpp
          MacTunnelValuesTest.cpp MacUserDefaultsTest.cpp ReplyTest.cpp
  LINK tarnwik_macos tarnwik_macos_desktop tarnwik_secure tarnwik_tunnel
       tarnwik_test_platform Qt6::Test)
