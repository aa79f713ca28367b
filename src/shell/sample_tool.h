#pragma once

#include "playlists/playlist_detail.h"

#include <QString>

#include <functional>

namespace melovane {

class Files;
class SiblingControl;
class SuiteMessages;

/// What the sample tool works with here; outlives SampleTool.
struct SampleToolParts
{
    Files& files;
    QString dataFolder;    ///< where the state file lies
    QString programFolder; ///< where an older tool keeps it
    SuiteMessages& suite;
    SiblingControl& siblings;
    std::function<void(const QString& program)> tellMissing;
};

/// Start and stop of an entry as the sample tool has left them.
struct SampleEdit
{
    Plid PLID{};
    QString FID;
    int FrameStart = 0; ///< frames
    int FrameStop = 0;  ///< 0 for the end of the track
};

/// Hands one entry at a time to the sample tool, which edits it in a window of its own.
class SampleTool
{
public:
    explicit SampleTool(SampleToolParts parts);

    /// Writes the state file and has the tool read it; a tool that does not run is started, one
    /// that cannot be started is told.
    ///
    /// \param replyTo message control that hears when the tool is done
    void edit(const MlvPlaylistDetail& entry, qint32 replyTo);

    /// What stands in the state file now; all fields at their defaults without one.
    [[nodiscard]] SampleEdit read() const;

private:
    SampleToolParts m_parts;
};

} // namespace melovane
