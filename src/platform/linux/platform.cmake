tarnwik_library(tarnwik_linux
  SOURCES LinuxPlatform.cpp LinuxPlatform.h
  LINK tarnwik_keychain_linux tarnwik_platform_qt tarnwik_tunnel_linux)
