#pragma once

#include <QString>

#include <functional>

namespace melovane {

class ConfigObjects;
class SiblingControl;

/// Starts programs of the suite for the user, who is told when one is not there.
class SiblingCommands
{
public:
    /// \param show puts a line before the user
    SiblingCommands(SiblingControl& siblings,
                    const ConfigObjects& texts,
                    std::function<void(const QString& text)> show);

    /// Looks for new music.
    void importMusic();

    /// Opens the tag editor, where it is installed.
    void editTags();

    /// Opens the viewer of covers, where it is installed.
    void viewCovers();

    /// Has the tables of the trees filled anew.
    void rebuildTrees();

    /// Has the tempo of a track found; see SiblingControl::StartBeatGauge.
    void findTempo(const QString& cmd, const QString& fid, const QString& plid = {});

    /// Tells that a program is missing unless it was started.
    void tellUnless(bool isStarted, const QString& program) const;

private:
    SiblingControl& m_siblings;
    const ConfigObjects& m_texts;
    std::function<void(const QString& text)> m_show;
};

} // namespace melovane
