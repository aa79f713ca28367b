#pragma once

#include "trackedit/former_cover.h"
#include "trackedit/kept_covers.h"

#include <QByteArray>
#include <QHash>
#include <QString>
#include <QStringList>

namespace melovane {

class Database;

/// The pictures of one change of the bench: what a new cover replaces is kept, and the chosen
/// picture lies in the folder of covers before a row names it. Audio files are not touched: the job
/// that writes tags brings the covers into them.
class CoverWork
{
public:
    /// \param pictures JPEGs by the names that the rows will hold; outlives this, as the sources do
    CoverWork(const CoverSources& sources, const QHash<QString, QByteArray>& pictures);
    /// Without keep() nothing is left but what was kept of the former covers.
    ~CoverWork();
    CoverWork(const CoverWork&) = delete;
    CoverWork& operator=(const CoverWork&) = delete;

    /// Keeps the cover that a track has; to be called within the transaction, before its row gets
    /// another one. A cover that stood in the file alone has a name from then on, which the row
    /// gets and taking back goes to.
    /// \param image what the row holds \param now what it will hold, empty for none
    /// \param file  the audio file as it lies now; empty for nowhere
    /// \throws DbError, IoError when the picture cannot be written
    void change(Database& database,
                const QString& fid,
                const QString& image,
                const QString& now,
                const QString& file);

    /// Tells the job what the user has chosen; the last thing before the transaction ends.
    void settle();

    /// The transaction has ended. Pictures that no row names any more are set aside.
    void keep(Database& database);

private:
    void put(const QString& image);

    const CoverSources& m_sources;
    const QHash<QString, QByteArray>& m_pictures;
    KeptCovers m_kept;
    QHash<QString, QStringList> m_chosen; ///< tracks by the picture that they get
    QStringList m_put;                    ///< picture files
    QStringList m_former;                 ///< names of pictures
    bool m_isSettled = false;
};

} // namespace melovane
