#pragma once

#include <QString>

namespace melovane {

class DBEngine;
class Files;
class FileLocator;

/// What the viewer needs of a track. Without a FID there is no such track.
struct SleeveTrack
{
    QString FID;
    QString title;     ///< as a person reads it
    QString image;     ///< name of its cover in the library, which several tracks may share
    QString audioFile; ///< where it should be; nobody has looked yet

    bool operator==(const SleeveTrack&) const = default;
};

/// Finds tracks in a library, which is let go of again. Quiet: a library that fails has none.
class SleeveTracks
{
public:
    /// \param dataFolder of the mappings of moved folders
    SleeveTracks(DBEngine& engine, const Files& files, QString dataFolder);

    [[nodiscard]] SleeveTrack byFid(const QString& library, const QString& fid) const;

    /// A track that has the cover of that name, given with or without ".jpg".
    [[nodiscard]] SleeveTrack byImage(const QString& library, const QString& image) const;

private:
    [[nodiscard]] SleeveTrack find(const QString& library, const QString& condition) const;

    DBEngine& m_engine;
    const Files& m_files;
    QString m_dataFolder;
};

} // namespace melovane
