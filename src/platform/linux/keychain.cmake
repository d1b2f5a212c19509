# The keychain of a Linux desktop: the Secret Service, through libsecret.
tarnwik_library(tarnwik_keychain_linux
  SOURCES SecretServiceAttributes.cpp SecretServiceAttributes.h SecretServiceBus.cpp SecretServiceBus.h
          SecretServiceError.cpp SecretServiceError.h SecretServiceKeychain.cpp SecretServiceKeychain.h
          SecretServiceLoop.cpp SecretServiceLoop.h SecretServicePointers.h SecretServicePrompt.cpp
          SecretServicePrompt.h SecretServiceRefusal.cpp SecretServiceRefusal.h SecretServiceSession.cpp
          SecretServiceSession.h
  LINK tarnwik_platform PkgConfig::libsecret)
