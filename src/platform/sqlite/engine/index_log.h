#pragma once

#include "platform/sqlite/engine/connection.h"
#include "platform/sqlite/index/change_log.h"

namespace melovane::sqlite {

/// The list of changed rows, kept in the file by triggers: whoever writes, with whatever program of
/// the suite, adds to it. It belongs to no catalogue.
class IndexLog : public ChangeLog
{
public:
    explicit IndexLog(Connection& connection)
        : m_connection(connection)
    {}

    [[nodiscard]] bool ensure() override;
    [[nodiscard]] std::optional<Position> mark() override;
    [[nodiscard]] bool knows(const Position& position) override;
    [[nodiscard]] Position end() override;
    [[nodiscard]] std::optional<std::vector<qint64>> changedSince(const Position& position,
                                                                  qint64 max) override;
    void trim() override;

private:
    [[nodiscard]] bool isThere();

    Connection& m_connection;
};

} // namespace melovane::sqlite
