#pragma once

#include <QString>

#include <functional>

namespace melovane {

class ConfigObjects;
class SuiteMessages;

/// What the user asks of the player; a player that does not run is told.
class PlayerCommands
{
public:
    /// \param show puts a line before the user
    PlayerCommands(SuiteMessages& suite,
                   const ConfigObjects& texts,
                   std::function<void(const QString& text)> show);

    /// Has the player play a track behind the present one. Does nothing without a track.
    /// \return whether there is a track
    bool playNext(const QString& fid);
    /// The same at once.
    bool playNow(const QString& fid);

    /// Brings the player's window to the front.
    void showPlayer();

private:
    bool play(const QString& fid, qint32 id);

    SuiteMessages& m_suite;
    const ConfigObjects& m_texts;
    std::function<void(const QString& text)> m_show;
};

} // namespace melovane
