tarnwik_test(networkmanager_test
  SOURCES NetworkManagerConnectionSettingsTest.cpp NetworkManagerEndReasonTest.cpp NetworkManagerErrorTextTest.cpp
          NetworkManagerPrivateKeyTest.cpp NetworkManagerStatusTest.cpp NetworkManagerTurnsTest.cpp
  LINK tarnwik_tunnel_linux)
