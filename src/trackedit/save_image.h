#pragma once

#include <QString>

namespace melovane {

class Database;
class ListHistory;

/// Gives a track another cover, and with it every track that shared the former one; the track is
/// entered for its tags. All of it is one step that can be taken back.
///
/// \param image  name of the new picture
/// \param former the name that the track had, or empty
/// \throws DbError, and all tracks keep the former one
void SaveImage(ListHistory& history,
               Database& database,
               const QString& fid,
               const QString& image,
               const QString& former);

} // namespace melovane
