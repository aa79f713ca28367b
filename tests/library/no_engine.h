#pragma once

#include "platform/db/database.h"
#include "platform/db/db_error.h"

namespace melovane::test {

/// An engine that refuses everything: whoever makes only text never meets it.
class NoEngine : public DBEngine
{
public:
    [[nodiscard]] std::unique_ptr<Database> OpenDatabase(const QString& name) override
    {
        throw DbError(dberror::kFileNotFound, name);
    }

    void Idle(int) override {}

    [[nodiscard]] Workspace& Workspaces(int) override
    {
        throw DbError(dberror::kItemNotFound, QStringLiteral("no workspace"));
    }

    void BackupDatabase(const QString& source, const QString&) override
    {
        throw DbError(dberror::kFileNotFound, source);
    }

    void Release(const QString&) override {}
};

} // namespace melovane::test
