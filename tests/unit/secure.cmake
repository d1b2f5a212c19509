tarnwik_test(secure_test
  SOURCES FileKeychainTest.cpp KeychainQueryTest.cpp KeychainStoreTest.cpp WireGuardKeyGeneratorTest.cpp
  LINK tarnwik_keychain_embedded tarnwik_secure)
