#pragma once

#include "playlists/playlist_detail.h"

#include <QString>

namespace melovane {

class Files;

/// What this program and the sample tool tell each other about one entry, by way of a small text
/// file. The tool writes new values into it: keep the order of the lines.
class KivInterface
{
public:
    /// \param dataFolder    where `global.kiv` lies: the user may write there
    /// \param programFolder where an older sample tool keeps it. Read when it lies only there
    KivInterface(Files& files, QString dataFolder, QString programFolder);

    QString FID;           ///< line 1
    QString DName;         ///< line 2
    QString file;          ///< line 3, full path
    qint32 replyTo = 0;    ///< line 4, message control that gets the answer
    Plid PLID{};           ///< line 5
    qint32 reserved = 0;   ///< line 6
    qint32 FrameStart = 0; ///< line 7, frames
    qint32 FrameStop = 0;  ///< line 8
    QString Interpret;     ///< line 9
    QString Titel;         ///< line 10
    QString Path;          ///< line 11
    qint32 tempo = 0;      ///< line 12, beats a minute

    /// Path of the state file; blanks or nothing mean `global.kiv` of the data folder.
    QString fileName;

    /// Takes an entry over; replyTo stays.
    void setEntry(const MlvPlaylistDetail& entry);

    /// Writes the file, replacing an old one. A line end inside a text becomes a blank. Quiet: a
    /// file that cannot be written stays as it was.
    void KivSave();

    /// Reads the file. Quiet: a missing file leaves all fields as they were, a short one those that
    /// it lacks.
    void KivLoad();

    /// Deletes the file. Quiet.
    void KivKill();

private:
    [[nodiscard]] QString place() const;
    [[nodiscard]] QString placeToRead() const;

    Files& m_files;
    QString m_dataFolder;
    QString m_programFolder;
};

} // namespace melovane
