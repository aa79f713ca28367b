#pragma once

#include "platform/db/database.h"

#include <QRandomGenerator>

#include <memory>

namespace melovane::test {

/// What one of several writers has done, or all of them together.
struct Sum
{
    int rows = 0;     ///< in todo
    int edits = 0;    ///< of rows in todo that are still there
    int counted = 0;  ///< in the row of pl_name that all share
    int sideRows = 0; ///< in the side file
    int queries = 0;  ///< stored

    [[nodiscard]] QString text() const;
};

/// Changes of every kind to one database, one after the other, and what must have come of them.
class MixedChanges
{
public:
    /// \param writer number of the program among those that write at once
    MixedChanges(DBEngine& engine, QString file, int writer);

    Sum run(int count);

private:
    void change(int kind);

    void execute(const QString& statement) { m_database->Execute(statement); }

    QString newFid();
    void addByRecordset();
    void insert();
    std::unique_ptr<Recordset> ownRows(const QString& order);
    void editLast();
    void deleteFirst();
    void transaction();
    void changeCatalogue(int number);

    DBEngine& m_engine;
    QString m_file;
    int m_writer;
    QRandomGenerator m_random;
    std::unique_ptr<Database> m_database;
    int m_next = 0;
    Sum m_sum;
};

} // namespace melovane::test
