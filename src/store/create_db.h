#pragma once

#include <QString>

namespace melovane {

class DBEngine;
class Files;

/// Makes databases after the picture of others: the side files from the templates of the main
/// database, and new main databases from the shipped one.
///
/// Both file names are set by the caller before an operation. Every operation opens what it needs
/// and closes it again, and throws DbError when it fails.
class MLVCreateDB
{
public:
    MLVCreateDB(DBEngine& engine, Files& files);

    QString targetFile;
    QString sourceFile;

    /// Replaces the target by an empty database. Nobody may need its old content any more.
    void CreateDB();

    /// Copies every plain table of the source as ClonTableStrukt does, then every stored query but
    /// update queries. No rows are copied.
    void ClonDBStruktur();

    /// Makes an empty table in the target with the columns and indexes of the template in the
    /// source. An empty new name keeps that of the template; a template that is a link gives none.
    void ClonTableStrukt(const QString& templateName, const QString& newName = {});

    /// Copies one stored query from the source to the target.
    void ClonQuerydef(const QString& name);

    /// Stores a query in the target; one of that name is replaced.
    void CreateQuerydef(const QString& name, const QString& statement);

    /// Puts a link into the target by which the table of that name in the source is reached; a
    /// table of that name is deleted first. Neither the source nor its table need to exist.
    /// \param second stands in the operation's form and has no effect
    void LinkTable(const QString& name, const QString& second = {});

private:
    DBEngine& m_engine;
    Files& m_files;
};

} // namespace melovane
