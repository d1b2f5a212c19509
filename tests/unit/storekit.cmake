set(storekit_stand_in ${CMAKE_SOURCE_DIR}/tests/support/StoreKitStandIn.cpp
                      ${CMAKE_SOURCE_DIR}/tests/support/StoreKitStandIn.h)

tarnwik_test(storekit_test
  SOURCES StoreKitAppStoreTest.cpp StoreKitFixture.h StoreKitRepliesTest.cpp StoreKitSubscriptionTest.cpp
          StoreKitThreadsTest.cpp ${storekit_stand_in}
  LINK tarnwik_storekit tarnwik_store tarnwik_test_platform)

# What crosses threads once more under the thread sanitizer, in every build but that of the other sanitizers, which do not
# go with it. These sources are compiled anew, without Qt: code that was built without the sanitizer hides what it locks.
if(NOT TARNWIK_SANITIZE)
  set(storekit_folder ${CMAKE_SOURCE_DIR}/src/platform/macos/storekit)
  add_executable(storekit_threads_test
    StoreKitThreadsTest.cpp ${storekit_stand_in} ${storekit_folder}/StoreKitListener.cpp
    ${storekit_folder}/StoreKitMailbox.cpp ${storekit_folder}/StoreKitQuestion.cpp)
  tarnwik_options(storekit_threads_test)
  target_include_directories(storekit_threads_test PRIVATE ${CMAKE_SOURCE_DIR}/tests)
  target_compile_options(storekit_threads_test PRIVATE -fsanitize=thread -fno-omit-frame-pointer)
  target_link_options(storekit_threads_test PRIVATE -fsanitize=thread)
  target_link_libraries(storekit_threads_test PRIVATE GTest::gtest GTest::gtest_main)
  add_test(NAME storekit_threads_test
    COMMAND storekit_threads_test --gtest_output=xml:${CMAKE_BINARY_DIR}/test-results/storekit_threads_test.xml)
  set_tests_properties(storekit_threads_test PROPERTIES TIMEOUT 60)
endif()
