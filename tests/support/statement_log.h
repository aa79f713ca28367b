#pragma once

#include <QStringList>

namespace melovane::test {

/// Texts of the statements that SQLite runs in this process, on connections that are opened after
/// this was made. One at a time.
class StatementLog
{
public:
    StatementLog();
    ~StatementLog();
    StatementLog(const StatementLog&) = delete;
    StatementLog& operator=(const StatementLog&) = delete;

    /// What has run since the last call, oldest first.
    [[nodiscard]] QStringList take();

    /// The same, as far as it has run behind the last commit.
    [[nodiscard]] QStringList takeBehindCommit();
};

} // namespace melovane::test
