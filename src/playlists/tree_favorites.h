#pragma once

#include "store/error_sink.h"

#include <QStringView>

#include <functional>

namespace melovane {

class Database;
class DBEngine;
class GlobalSettings;

/// Writes what the user ticks in the library tree: the favourite flags of the tree tables and of
/// lists and groups, and what is folded in the extended tree.
///
/// Each operation takes the key of a row and a word; the value of the key stands behind its "??". A
/// key of another form, an empty value and a word that the operation doesn't know do nothing.
/// Quiet: a failed write changes nothing.
///
/// Quotes in names become "*" and names are compared by "=", so a name that holds one meets no row
/// and can't be kept: the tables come from all programs of the suite, which do the same.
class TreeFavorites
{
public:
    /// Both outlive it. \param sink learns of failures
    TreeFavorites(DBEngine& engine, const GlobalSettings& settings, ErrorSink sink);

    /// "delete", "update". The last letter of the value is cut: the star of a folder's key. A key
    /// without one loses its separator and meets no row.
    void UpdateTreeDirFavorit(QStringView key, QStringView word);
    /// "delete", "update".
    void UpdateTreeAlbum(QStringView key, QStringView word);
    /// "delete", "update".
    void UpdateTreeInterpret(QStringView key, QStringView word);
    /// "delete", "update": whether the panel of lists shows it.
    void UpdateTreePlaylist(QStringView key, QStringView word);
    void UpdateTreePlaylistGroup(QStringView key, QStringView word);
    /// "delete" and "update" by genre, with all its artists; "delete_fav" and "update_fav" by
    /// artist, under every genre; "update_fav_dir" the genre alone.
    void UpdateTreeGenreFavorit(QStringView key, QStringView word);

    /// Keeps whether a row of `TreeErweitertConfig` is open. \param state "true" or "false"
    void SetCollapsInfoState(qint64 id, QStringView state);

private:
    void named(QStringView where, QStringView name, QStringView head, QStringView word);
    void numbered(QStringView where,
                  QStringView key,
                  QStringView table,
                  QStringView column,
                  QStringView word);
    void quiet(QStringView where, const std::function<void(Database&)>& work);

    DBEngine& m_engine;
    const GlobalSettings& m_settings;
    ErrorSink m_sink;
};

} // namespace melovane
