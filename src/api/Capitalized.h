#pragma once

#include <QString>

namespace tarnwik {

/// \a text with the first letter of each word in title case and the others in lower case, whatever the locale: the
/// platform's `capitalized`. A word ends at any character without case, except those that Unicode calls
/// case-ignorable, such as the apostrophe.
QString capitalized(const QString &text);

} // namespace tarnwik
