#pragma once

#include <QLocale>
#include <QString>

#include <gtest/gtest.h>

#include <unicode/decimfmt.h>

#include <memory>
#include <utility>

namespace tarnwik::test {

inline QString text(const char16_t *utf16)
{
    return QString::fromUtf16(utf16);
}

/// The user's locale while it lives, and the former one afterwards.
class UserLocale
{
public:
    explicit UserLocale(const QLocale &locale) { QLocale::setDefault(locale); }
    explicit UserLocale(const char *name)
        : UserLocale(QLocale(QString::fromLatin1(name)))
    {
    }
    UserLocale(const UserLocale &) = delete;
    UserLocale &operator=(const UserLocale &) = delete;
    ~UserLocale() { QLocale::setDefault(m_former); }

private:
    const QLocale m_former;
};

/// An ICU whose formatters of Austrian German fail at one step, as long as it lives. ICU keeps the decimal formatter
/// that it made first of a locale to copy it later: those of this locale fail for good, and no other test may use them.
class FailingICU
{
public:
    enum class Step { Currency, Format };

    explicit FailingICU(Step step)
    {
        UErrorCode status = U_ZERO_ERROR;
        m_key = icu::NumberFormat::registerFactory(new Factory(step), status);
        EXPECT_TRUE(U_SUCCESS(status));
    }
    FailingICU(const FailingICU &) = delete;
    FailingICU &operator=(const FailingICU &) = delete;
    ~FailingICU()
    {
        UErrorCode status = U_ZERO_ERROR;
        icu::NumberFormat::unregister(m_key, status);
        EXPECT_TRUE(U_SUCCESS(status));
    }

    static constexpr const char *locale = "de_AT";

private:
    class Format : public icu::DecimalFormat
    {
    public:
        Format(Step step, UErrorCode &status)
            : DecimalFormat(u"0.0", status)
            , m_step(step)
        {
        }
        Format *clone() const override { return new Format(*this); }
        void setCurrency(const char16_t *currency, UErrorCode &status) override
        {
            if (m_step == Step::Currency)
                status = U_MEMORY_ALLOCATION_ERROR;
            else
                DecimalFormat::setCurrency(currency, status);
        }
        using DecimalFormat::format;
        icu::UnicodeString &format(double value, icu::UnicodeString &appendTo, icu::FieldPositionIterator *positions,
                                   UErrorCode &status) const override
        {
            if (m_step == Step::Format)
                status = U_MEMORY_ALLOCATION_ERROR;
            return DecimalFormat::format(value, appendTo, positions, status);
        }

    private:
        Step m_step;
    };

    class Factory : public icu::SimpleNumberFormatFactory
    {
    public:
        explicit Factory(Step step)
            : SimpleNumberFormatFactory(icu::Locale(locale))
            , m_step(step)
        {
        }
        icu::NumberFormat *createFormat(const icu::Locale &, UNumberFormatStyle) override
        {
            UErrorCode status = U_ZERO_ERROR;
            return new Format(m_step, status);
        }

    private:
        Step m_step;
    };

    URegistryKey m_key = nullptr;
};

} // namespace tarnwik::test
