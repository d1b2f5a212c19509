# The keychain as a file of the program's own.
tarnwik_library(tarnwik_keychain_embedded
  SOURCES FileKeychain.cpp FileKeychain.h
  LINK tarnwik_platform)
