tarnwik_test(api_test
  SOURCES KeyConversionTest.cpp RecordFieldsTest.cpp RecordsTest.cpp
  LINK tarnwik_api)
