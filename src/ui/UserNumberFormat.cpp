#include "ui/UserNumberFormat.h"

#include <QLocale>

#include <unicode/locid.h>
#include <unicode/unistr.h>

namespace tarnwik {

namespace {

icu::Locale userLocale(UErrorCode &status)
{
    const QLocale locale;
    if (locale.language() == QLocale::C)
        return icu::Locale::getUS();
    // The tag and not the name: zh_Hant and sr_Latn are lost in QLocale::name().
    return icu::Locale::forLanguageTag(locale.bcp47Name().toStdString(), status);
}

} // namespace

std::unique_ptr<icu::NumberFormat> makeUserNumberFormat(UNumberFormatStyle style)
{
    UErrorCode status = U_ZERO_ERROR;
    const icu::Locale locale = userLocale(status);
    std::unique_ptr<icu::NumberFormat> format(icu::NumberFormat::createInstance(locale, style, status));
    if (U_FAILURE(status))
        return nullptr;
    return format;
}

std::optional<QString> formatted(const icu::NumberFormat &format, double value)
{
    UErrorCode status = U_ZERO_ERROR;
    icu::UnicodeString text;
    format.format(value, text, nullptr, status);
    if (U_FAILURE(status))
        return std::nullopt;
    return QString::fromUtf16(text.getBuffer(), text.length());
}

} // namespace tarnwik
