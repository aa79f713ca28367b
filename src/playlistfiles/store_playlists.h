#pragma once

#include "playlists/playlist_ids.h"

#include <QHash>
#include <QString>
#include <QStringList>

#include <functional>

namespace melovane {

class ConfigObjects;
class Database;
class DBEngine;
class Files;
class GlobalSettings;

/// Lines as a message tells them: the first ones, and how many more there are.
[[nodiscard]] QString toldLines(const ConfigObjects& texts, const QStringList& lines);

/// What the user reads about entries that no file holds; see M3uWriter::withoutTrack.
[[nodiscard]] QString leftOutText(const ConfigObjects& texts, const QStringList& entries);

/// Writes all lists that have changed since they were written: one M3U file each in the folder of
/// the settings, in a folder for each group.
class StorePlaylists
{
public:
    StorePlaylists(DBEngine& engine,
                   const GlobalSettings& settings,
                   Files& files,
                   const ConfigObjects& texts);

    struct Result
    {
        int written = 0;
        QStringList failures; ///< "name of the list: reason", in the user's language
        QStringList leftOut;  ///< "name of the list, entry": see M3uWriter::withoutTrack
    };

    /// A list that was written is marked as saved, in one transaction with its reading: a change
    /// that comes meanwhile waits, and marks it anew. One that fails stays marked, and so does its
    /// old file. \throws DbError when the lists cannot be read
    [[nodiscard]] Result run(const std::function<void(const QString& file)>& written = {});

    /// Full paths of the files of all lists. Lists, or groups, that would have the same name get
    /// their numbers behind it, so that none ever replaces another's file.
    [[nodiscard]] QHash<Pnid, QString> places(Database& database) const;

private:
    void store(Database& database, Pnid list, const QString& file);

    DBEngine& m_engine;
    const GlobalSettings& m_settings;
    Files& m_files;
    const ConfigObjects& m_texts;
};

} // namespace melovane
