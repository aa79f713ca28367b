#pragma once

#include <QString>

#include <functional>

namespace melovane {

class ConfigObjects;
class SuiteMessages;

/// What the user asks of the player. One that does not run is started with it; where there is none
/// that is told.
class PlayerCommands
{
public:
    /// \param show puts a line before the user
    /// \param start starts the player with an order, see SiblingControl::startPlayer; false when it
    ///              is not installed
    PlayerCommands(SuiteMessages& suite,
                   const ConfigObjects& texts,
                   std::function<bool(const QString& order)> start,
                   std::function<void(const QString& text)> show);

    /// Has the player play a track behind the present one. Does nothing without a track.
    /// \return whether there is a track
    bool playNext(const QString& fid);
    /// The same at once.
    bool playNow(const QString& fid);

    /// Brings the player's window to the front, or opens it.
    void showPlayer();

private:
    bool play(const QString& fid, qint32 id);
    void start(const QString& order);

    SuiteMessages& m_suite;
    const ConfigObjects& m_texts;
    std::function<bool(const QString& order)> m_start;
    std::function<void(const QString& text)> m_show;
};

} // namespace melovane
