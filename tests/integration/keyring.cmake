# The keychain against a real gnome-keyring. One suite is one situation, which the fixture sets up.
tarnwik_program(tarnwik_keyring_tests
  SOURCES SecretServiceAbsentTest.cpp SecretServiceLockedTest.cpp SecretServiceTest.h SecretServiceUnlockedTest.cpp
  LINK tarnwik_keychain_linux tarnwik_secure tarnwik_test_main GTest::gmock GTest::gtest)

# tarnwik_keyring_test(FILTER [option of with-keyring.sh]...): the tests that match, in a session of their own.
function(tarnwik_keyring_test filter)
  string(JOIN " " name ${filter} ${ARGN})
  add_test(NAME ${name}
    COMMAND ${CMAKE_SOURCE_DIR}/tests/support/keyring/with-keyring.sh ${ARGN} --
            $<TARGET_FILE:tarnwik_keyring_tests> --gtest_filter=${filter})
  set_tests_properties(${name} PROPERTIES
    TIMEOUT 60 SKIP_RETURN_CODE 77 FAIL_REGULAR_EXPRESSION "Running 0 tests")
endfunction()

tarnwik_keyring_test(SecretServiceUnlocked.*)
tarnwik_keyring_test(SecretServiceLocked.* --locked)
tarnwik_keyring_test(SecretServiceLocked.* --locked --headless)
foreach(test readingAsksOnce deletingAsksOnce addingAsksOnceAndFindsTheDuplicate anAbsentItemIsNotFoundOnceUnlocked)
  tarnwik_keyring_test(SecretServiceUnlocking.${test} --locked --prompter password:tarnwik)
endforeach()
tarnwik_keyring_test(SecretServiceMistyping.* --locked --prompter password:wrong --prompter password:tarnwik)
tarnwik_keyring_test(SecretServiceDismissing.* --locked --prompter dismiss)
foreach(test aCallEndsWhenTheTimeIsUp savingAsksOnceAndTakesNoLongerThanOneCall aServiceThatDiesMeanwhileIsNotAvailable
             aBusThatDiesMeanwhileIsNotAvailableAndEndsNothingElse)
  tarnwik_keyring_test(SecretServiceIgnoring.${test} --locked --prompter ignore)
endforeach()
foreach(test theAnswerServesTheNextCall whatWasUnlockedMeanwhileIsUsedAtOnce)
  tarnwik_keyring_test(SecretServiceAnsweringLate.${test} --locked --prompter late:tarnwik)
endforeach()
tarnwik_keyring_test(SecretServiceEmpty.* --empty)
tarnwik_keyring_test(SecretServiceEmptyDismissing.* --empty --prompter dismiss)
tarnwik_keyring_test(SecretServiceEmptyCreating.* --empty --prompter password:chosen)
tarnwik_keyring_test(SecretServiceAbsent.* --no-service)
tarnwik_keyring_test(SecretServiceWithoutBus.* --no-bus)
tarnwik_keyring_test(SecretServiceHanging.*)
