#pragma once

#include "playlists/playlist_ids.h"

#include <QString>

namespace melovane {

class ConfigObjects;
class DBEngine;
class GlobalSettings;

/// What a list amounts to, as the user reads it.
struct PlaylistDetails
{
    QString name;
    QString group;
    QString count;
    QString totalTime;
    QString createTime;
    QString updateTime;
    QString mp3Space;   ///< of the files, each counted once
    QString audioSpace; ///< as CD audio, each entry counted
    QString playFirst;
    QString playLast;
    QString info; ///< the user's own note
};

/// The dialog with the figures of a list.
class DetailForm
{
public:
    virtual ~DetailForm() = default;

    /// Shows it and waits. The note as the user left it when he pressed OK; a null text when he
    /// left the dialog another way.
    [[nodiscard]] virtual QString ask(const PlaylistDetails& details) = 0;
};

/// Shows the figures of a list and lets the user change its note.
class frmDetailPlaylist
{
public:
    frmDetailPlaylist(DBEngine& engine, const GlobalSettings& settings, DetailForm& form);

    /// Returns when the dialog was closed. \throws DbError when the figures cannot be read or the
    /// note cannot be written
    void Show(Pnid list);

    /// All texts are empty for a list that is gone. \throws DbError
    [[nodiscard]] PlaylistDetails read(Pnid list) const;

    /// Writes the note when it is another one. \throws DbError
    void save(Pnid list, const QString& info);

private:
    DBEngine& m_engine;
    const GlobalSettings& m_settings;
    DetailForm& m_form;
};

/// Bytes as megabytes with two decimals that are cut, not rounded: "1.99 MB".
[[nodiscard]] QString megabytes(double bytes);

} // namespace melovane
