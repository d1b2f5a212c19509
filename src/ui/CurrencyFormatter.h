#pragma once

#include <QString>

namespace tarnwik {

/// Amounts of money as the user reads them.
class CurrencyFormatter
{
public:
    CurrencyFormatter() = delete;

    /// \a cents of US dollars in the manner of the user's locale at the time of the call: "$9.99" in the United States,
    /// "9,99 $" in Germany. "$0.00" when ICU fails.
    static QString cents(qint64 cents);
};

} // namespace tarnwik
