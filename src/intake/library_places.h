#pragma once

#include "platform/db/database.h"

#include <QHash>
#include <QString>
#include <QStringList>

#include <memory>
#include <optional>
#include <utility>

namespace melovane {

class Files;

/// Where a row of the library says that its file is.
struct StoredPlace
{
    QString FID;
    QString Path;
    QString DName;
    int DEL = 0;
    int DriveTyp = 0;
    QString DriveName;
};

/// Which files the library has, whatever name leads to them: a folder that is stored under one name
/// and reached under another (a link, "/x/../x", a second mount) is one folder, and a link to a
/// file is the file.
///
/// Names of folders that were asked for once are kept: a link that is turned elsewhere meanwhile,
/// and a folder that another program stores under another name meanwhile, count for the next
/// object. Rows are always asked of the database. All operations throw DbError.
class LibraryPlaces
{
public:
    LibraryPlaces(Database& database, const Files& files);
    ~LibraryPlaces();

    /// The row that has the file; nothing when there is none. Letter case counts: on disk other
    /// letters are another file.
    /// \param folder with its separator at the end
    [[nodiscard]] std::optional<StoredPlace> find(const QString& folder, const QString& name);

    /// The caller has compared the files that it will ask for with the rows of their folders since
    /// the database had this Database::DataVersion. While nobody else writes, find() does not ask
    /// for the row of that name again, which would be a statement for each new file.
    void comparedSince(qint64 dataVersion) { m_comparedSince = dataVersion; }

    /// The row of an identifier; nothing when there is none.
    [[nodiscard]] std::optional<StoredPlace> placeOf(const QString& fid);

    /// Statement for the places of some rows; rowFrom() takes them from its result.
    [[nodiscard]] static QString statement(const QString& condition);
    [[nodiscard]] static StoredPlace rowFrom(const Recordset& row);

    /// A row with that folder was added. Only for a folder that find() was asked about.
    void added(const QString& folder);

private:
    using Identity = std::pair<quint64, quint64>; ///< device and inode

    struct Folder
    {
        std::optional<Identity> identity; ///< none for a folder that is not there
        QString canonical;                ///< without separator; empty for such a one
    };

    [[nodiscard]] std::optional<StoredPlace> rowOf(const QString& folder, const QString& name);
    [[nodiscard]] std::optional<StoredPlace> rowUnderOtherNames(const QString& folder,
                                                                const QString& name);
    [[nodiscard]] const Folder& folderOf(const QString& path);
    [[nodiscard]] const QStringList& storedNames(const QString& path);
    [[nodiscard]] QStringList findStoredNames(const QString& path);
    void readStored();

    Database& m_database;
    const Files& m_files;
    std::unique_ptr<QueryDef> m_byPlace;
    std::optional<qint64> m_comparedSince;
    QHash<QString, Folder> m_folders;           ///< by their names
    QHash<Identity, QStringList> m_storedNames; ///< stored folders that are one on disk
    bool m_readStored = false;
    QMultiHash<QString, QString> m_byLastPart;  ///< stored folders by the last part of their name
    QMultiHash<QString, QString> m_byFirstFile; ///< and by the first of their files
};

} // namespace melovane
