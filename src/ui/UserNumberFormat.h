#pragma once

#include <QString>

#include <unicode/numfmt.h>

#include <memory>
#include <optional>

namespace tarnwik {

/// A fresh number formatter of \a style in the locale that QLocale() stands for at this moment, which is the user's
/// own unless the program has chosen another. The "C" locale means en_US. For a locale that ICU has no data of, ICU
/// takes its own default. Null when ICU can make no formatter.
std::unique_ptr<icu::NumberFormat> makeUserNumberFormat(UNumberFormatStyle style);

/// \a value as \a format writes it; absent when ICU reports an error.
std::optional<QString> formatted(const icu::NumberFormat &format, double value);

} // namespace tarnwik
