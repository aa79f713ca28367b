#pragma once

#include "platform/controls/grid_source.h"
#include "platform/db/database.h"

#include <QString>

#include <memory>

namespace melovane {

/// Binds a statement to a grid: `Data1`, `Data2`.
///
/// Holds a connection from its first Refresh until closeDatabase(). The grid reads cells by row and
/// column through it; rows are fetched a page at a time as they come on the screen.
class DataControl : public GridSource
{
    Q_OBJECT

public:
    explicit DataControl(DBEngine& engine, QObject* parent = nullptr);
    ~DataControl() override;

    /// Another file closes the present connection; nothing is read before Refresh.
    void SetDatabaseName(const QString& name);

    [[nodiscard]] QString DatabaseName() const { return m_databaseName; }

    /// Takes effect at the next Refresh.
    void SetRecordSource(const QString& statement);

    [[nodiscard]] QString RecordSource() const { return m_recordSource; }

    /// Runs the statement and emits refreshed(). When it fails the former rows stay. A database
    /// that was closed underneath is opened again.
    /// \throws DbError
    void Refresh();

    /// The rows of the last Refresh, or null before it. Owned by this object, valid until the next
    /// successful Refresh.
    [[nodiscard]] melovane::Recordset* Recordset() const { return m_set.get(); }

    /// The open connection, or null.
    [[nodiscard]] melovane::Database* Database() const { return m_database.get(); }

    /// Lets go of the file. The rows are gone with it; refreshed() is emitted with none.
    void closeDatabase();

    [[nodiscard]] qint64 rowCount() const override;
    [[nodiscard]] int columnCount() const override;
    /// Only after a Refresh, for an index below columnCount().
    [[nodiscard]] const FieldDef& column(int index) const;

    [[nodiscard]] QString columnName(int index) const override { return column(index).Name; }

    /// A cell for painting: never moves the current row, and reads as null when the row is gone or
    /// the file cannot be read.
    [[nodiscard]] Value cell(qint64 row, int column) const override;

    /// Forgets fetched cells, so that the next paint shows the values of now; emits cellsChanged().
    void refreshCells();

private:
    [[nodiscard]] std::unique_ptr<melovane::Recordset> openSet();

    DBEngine& m_engine;
    QString m_databaseName;
    QString m_recordSource;
    std::unique_ptr<melovane::Database> m_database;
    std::unique_ptr<melovane::Recordset> m_set;
    std::unique_ptr<melovane::Recordset> m_painter; ///< clone that painting moves about
};

} // namespace melovane
