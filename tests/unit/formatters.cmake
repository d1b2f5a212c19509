tarnwik_test(formatters_test
  SOURCES ByteFormatterTest.cpp CurrencyFormatterTest.cpp FormatterFixture.h
  LINK tarnwik_formatters)
