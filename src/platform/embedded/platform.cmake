tarnwik_library(tarnwik_embedded
  SOURCES EmbeddedHTTPSession.cpp EmbeddedHTTPSession.h EmbeddedPlatform.cpp EmbeddedPlatform.h
          EmbeddedTunnelManager.cpp EmbeddedTunnelManager.h EmbeddedTunnelState.cpp EmbeddedTunnelState.h
  LINK tarnwik_keychain_embedded tarnwik_platform_qt tarnwik_service tarnwik_store_embedded)
