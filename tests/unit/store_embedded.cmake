tarnwik_test(store_embedded_test
  SOURCES EmbeddedStoreControlTest.cpp EmbeddedStoreFilesTest.cpp EmbeddedStoreFixture.h EmbeddedStorePurchaseTest.cpp
          EmbeddedStoreSizeTest.cpp EmbeddedStoreUpdatesTest.cpp StoreConfigurationTest.cpp
  LINK tarnwik_store_embedded
  TIMEOUT 120)
target_compile_definitions(store_embedded_test PRIVATE
  TARNWIK_STORE_FILE="${CMAKE_SOURCE_DIR}/packaging/store.example.json")
