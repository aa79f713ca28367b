#pragma once

#include <QDateTime>

namespace melovane {

/// Where the program's time comes from.
class Clock
{
public:
    virtual ~Clock() = default;

    /// Local time.
    [[nodiscard]] virtual QDateTime now() const = 0;
};

/// The machine's clock.
class SystemClock : public Clock
{
public:
    [[nodiscard]] QDateTime now() const override { return QDateTime::currentDateTime(); }
};

} // namespace melovane
