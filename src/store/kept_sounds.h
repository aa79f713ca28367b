#pragma once

#include "platform/media/audio_identity.h"

#include <QByteArray>
#include <QHash>
#include <QString>

namespace melovane {

class Files;

/// The sound of tracks, kept beside the library so that a file that has moved is known again when
/// neither its name nor its tag says whose it is.
///
/// A side file, `<database>.sounds`: a line "FID bytes hash" for each print, where a later line of
/// a track replaces its earlier ones. Only ever grows at its end, so that a program that is killed
/// loses its last line at most. May be deleted at any time.
class KeptSounds
{
public:
    /// \param database full path of the library; empty keeps nothing
    KeptSounds(Files& files, const QString& database);

    /// A sampled print; lies in memory until write().
    void add(const QString& fid, const AudioPrint& print);

    /// Puts what was added into the file. A file that cannot be written is left as it is: a track
    /// without a print is only harder to find.
    void write();

    /// All prints of a library, by identifier. Lines that are none are left out; none at all when
    /// the file cannot be read.
    [[nodiscard]] static QHash<QString, AudioPrint> read(const Files& files,
                                                         const QString& database);

private:
    Files& m_files;
    QString m_file;
    QByteArray m_added;
};

} // namespace melovane
