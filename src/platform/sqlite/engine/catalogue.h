#pragma once

#include "platform/sqlite/dialect/translation.h"
#include "platform/sqlite/engine/attachments.h"

#include <QHash>

namespace melovane::sqlite {

/// A line of the catalogue.
struct CatalogueObject
{
    enum class Kind
    {
        Table,
        Link,
        Query
    };

    Kind kind = Kind::Table;
    QString name;
    QString sql;                        ///< queries
    QueryType type = QueryType::Select; ///< queries
    QString connect;                    ///< links
    QString source;                     ///< links: table name in the linked file
};

/// What a database holds: tables, links and stored queries, as other connections left it.
///
/// Read once and kept until somebody changes it; refresh() notices that. Reading only; changes are
/// made by schema_change.h.
class Catalogue : public NameSource
{
public:
    Catalogue(Connection& connection, Attachments& attachments)
        : m_connection(connection)
        , m_attachments(attachments)
    {}

    /// Looks whether another connection changed the catalogue. Asked once per statement.
    void refresh();

    /// Forgets everything; for after own changes.
    void invalidate();

    /// Changes when the catalogue did; translations of another version are worthless.
    [[nodiscard]] qint64 version() const { return m_version; }

    /// In order of creation.
    [[nodiscard]] const std::vector<CatalogueObject>& objects() const;

    /// Null when there is none of that name.
    [[nodiscard]] const CatalogueObject* object(const QString& name) const;

    /// Columns and indexes of a table or, through its file, of a link.
    /// \throws DbError kObjectNotFound, kFileNotFound
    [[nodiscard]] TableDef table(const CatalogueObject& object) const;

    [[nodiscard]] std::optional<Source> find(const QString& name) const override;

    /// Full path of the file that a link names.
    [[nodiscard]] QString linkedFile(const QString& connect) const;

private:
    void load() const;
    [[nodiscard]] const TableDef& localTable(const QString& name) const;
    [[nodiscard]] Source linkSource(const CatalogueObject& link) const;

    struct LinkedTable
    {
        qint64 schemaVersion = -1;
        TableDef table;
    };

    Connection& m_connection;
    Attachments& m_attachments;
    qint64 m_version = 0;
    qint64 m_dataVersion = -1;
    qint64 m_stamp = -1;
    mutable bool m_loaded = false;
    mutable std::vector<CatalogueObject> m_objects;
    mutable QHash<QString, std::size_t> m_byName;
    mutable QHash<QString, TableDef> m_tables;
    mutable QHash<QString, LinkedTable> m_linkedTables; ///< by schema and name
};

/// The path of a link's Connect text ";DATABASE=path", any case; empty when it names none.
[[nodiscard]] QString pathOfConnect(const QString& connect);

} // namespace melovane::sqlite
