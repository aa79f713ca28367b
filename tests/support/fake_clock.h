#pragma once

#include "platform/system/clock.h"

namespace melovane::test {

/// A clock that stands until it is moved.
class FakeClock : public Clock
{
public:
    explicit FakeClock(QDateTime start = QDateTime(QDate(2026, 3, 14), QTime(15, 9, 26)))
        : m_now(std::move(start))
    {}

    [[nodiscard]] QDateTime now() const override { return m_now; }

    void set(const QDateTime& now) { m_now = now; }

    void addSeconds(qint64 seconds) { m_now = m_now.addSecs(seconds); }

private:
    QDateTime m_now;
};

} // namespace melovane::test
