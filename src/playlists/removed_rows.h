#pragma once

#include "playlists/list_delta.h"

#include <QSet>
#include <QString>

#include <functional>

namespace melovane {

class Database;

/// Rows that have left the library for good.
struct RemovedRows
{
    QSet<QString> tracks; ///< FID
    QSet<qint64> entries; ///< PLID
    QSet<qint64> lists;   ///< NID

    [[nodiscard]] bool isEmpty() const
    {
        return tracks.isEmpty() && entries.isEmpty() && lists.isEmpty();
    }
};

/// True when the change, or taking it back, writes one of these rows or an entry of such a track.
[[nodiscard]] bool touches(const ListDelta& delta, const RemovedRows& removed);

/// Forgets the steps of the history that would write rows which have left the library; the others
/// can be taken back as before. What cannot be read goes, too.
/// \param turn called between two steps, of which one may be long
/// Nothing for a library without steps. \throws DbError
void forgetSteps(Database& database, const RemovedRows& removed, const std::function<void()>& turn);

} // namespace melovane
