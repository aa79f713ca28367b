#pragma once

#include "platform/system/files.h"
#include "shell/skin_files.h"
#include "shell/status_text.h"

#include <QString>

#include <array>
#include <vector>

namespace melovane {

class GlobalSettings;
class MessageLoop;
class Mod_API;
class SkinControl;
class SplitControl;
class StatusLine;
class WindowFrame;

/// The parts of the main window that its logic speaks to; they outlive it.
struct MlvdbControls
{
    WindowFrame& window;
    StatusLine& status;
    SkinControl& skin;
    /// `ElasticOne1` upper and lower, `ElasticOne2` tree and library, `ElasticOne3` list tree and
    /// playlist.
    std::array<SplitControl*, 3> splits;
};

/// A theme that can be chosen.
struct SkinEntry
{
    QString fileName; ///< in the folder "skin" of the configuration path
    QString title;
    bool active = false;
};

/// What the main window does: menu entries, where it stands, what it starts. No track, no SQL.
class MLVDB
{
public:
    MLVDB(GlobalSettings& settings,
          Mod_API& paths,
          Files& files,
          Processes& processes,
          MessageLoop& loop,
          MlvdbControls controls);

    /// Before the window is shown: caption, least size, theme.
    void load();

    /// Once, when the window is shown first. Starts the jobs behind the console where they are
    /// installed. With tracks in the library it takes the place that it
    /// had when it was closed, if that lies inside the screen. With none it stands in the middle
    /// and the importer opens.
    void activateFirst(qint64 tracks);

    /// Before the window closes: keeps its place and its splits.
    void unload();

    /// Menu "MP3s importieren": 0 looks for new files, 2 reads changed files again.
    void mnuImpMP3(int index);
    /// Has all trees rebuilt.
    void mnuRefreshTree();
    void mnuExit();

    /// The text of the information window.
    [[nodiscard]] static QString aboutText();

    /// The theme files that lie ready, by title.
    [[nodiscard]] std::vector<SkinEntry> skins() const;

    /// Takes a theme and keeps it for the next start; an empty name follows the desktop.
    void chooseSkin(const QString& fileName);

    void showStatusText(const QString& text) { m_statusText.show(text); }

private:
    bool startSibling(const QString& command, Processes::WindowStyle style);
    void restorePlace();
    void restoreSplits();

    GlobalSettings& m_settings;
    Mod_API& m_paths;
    SkinFiles m_skinFiles;
    Processes& m_processes;
    MlvdbControls m_controls;
    StatusText m_statusText;
};

} // namespace melovane
