tarnwik_test(jws_test
  SOURCES JWSCertificateTest.cpp JWSEncodingTest.cpp JWSFixture.h JWSPayloadTest.cpp JWSSampleTest.cpp
          JWSTamperingTest.cpp SigningIdentityTest.cpp
  LINK tarnwik_test_signing
  TIMEOUT 120)
target_compile_definitions(jws_test PRIVATE
  TARNWIK_ROOT_FILE="${CMAKE_SOURCE_DIR}/tests/fuzz/jws-root.pem"
  TARNWIK_TRANSACTION_FOLDER="${CMAKE_SOURCE_DIR}/tests/fuzz/corpus/jws_fuzz/")
