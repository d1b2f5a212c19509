#pragma once

#include <QString>

namespace tarnwik {

/// Amounts of data as the user reads them.
class ByteFormatter
{
public:
    ByteFormatter() = delete;

    /// \a bytes in KB, MB or GB of 1024, 1024² and 1024³ bytes: "1.5 MB", and "Zero KB" for none. The unit is the
    /// largest that the amount holds before it is rounded, so one byte less than 1 MB is "1,024 KB". KB are whole, MB
    /// have one fraction digit at most and GB two, rounded half to even. The number is the user's locale's at the time
    /// of the call; the unit is English in every locale.
    static QString string(qint64 bytes);
};

} // namespace tarnwik
