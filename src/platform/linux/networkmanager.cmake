# The tunnel manager over NetworkManager.
tarnwik_library(tarnwik_tunnel_linux
  SOURCES NetworkManagerActiveConnections.cpp NetworkManagerActiveConnections.h
          NetworkManagerConfiguration.cpp NetworkManagerConfiguration.h
          NetworkManagerConnectionSettings.cpp NetworkManagerConnectionSettings.h
          NetworkManagerDaemon.cpp NetworkManagerDaemon.h
          NetworkManagerEndReason.cpp NetworkManagerEndReason.h
          NetworkManagerErrorText.cpp NetworkManagerErrorText.h
          NetworkManagerNames.h
          NetworkManagerPrivateKey.cpp NetworkManagerPrivateKey.h
          NetworkManagerProviderRest.cpp NetworkManagerProviderRest.h
          NetworkManagerSavedConnections.cpp NetworkManagerSavedConnections.h
          NetworkManagerSecretAgent.cpp NetworkManagerSecretAgent.h
          NetworkManagerSession.cpp NetworkManagerSession.h
          NetworkManagerStatus.cpp NetworkManagerStatus.h
          NetworkManagerTunnelManager.cpp NetworkManagerTunnelManager.h
          NetworkManagerTurns.cpp NetworkManagerTurns.h
  LINK tarnwik_platform Qt6::DBus PkgConfig::sodium)
