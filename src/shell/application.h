#pragma once

#include "bus/mlv_message_bus.h"
#include "bus/suite_messages.h"
#include "config/config_objects.h"
#include "config/global_settings.h"
#include "config/log4mlv.h"
#include "config/paths.h"
#include "library/mp3db.h"
#include "monitor/monitor_player.h"
#include "platform/linux/ini_profile.h"
#include "platform/linux/linux_environment.h"
#include "platform/linux/linux_files.h"
#include "platform/linux/linux_messages.h"
#include "platform/linux/linux_processes.h"
#include "platform/linux/mp3_cue_finder.h"
#include "platform/linux/mp3_player.h"
#include "platform/linux/only_copy.h"
#include "platform/linux/sdl_output.h"
#include "platform/linux/tag_reader.h"
#include "platform/qt/icon_set.h"
#include "platform/qt/qt_file_chooser.h"
#include "platform/qt/qt_keyboard.h"
#include "platform/qt/qt_message_loop.h"
#include "platform/qt/qt_pointer.h"
#include "platform/qt/qt_popup.h"
#include "platform/qt/skin.h"
#include "platform/sqlite/engine/sqlite_engine.h"
#include "platform/system/clock.h"
#include "playlistfiles/kopie_file.h"
#include "playlistfiles/m3u_commands.h"
#include "playlistfiles/mlv_m3u.h"
#include "playlistfiles/ui/kopie_file_dialog.h"
#include "playlists/list_history.h"
#include "playlists/mlv_function.h"
#include "playlists/pl_insert_move_del.h"
#include "playlists/undo_redo.h"
#include "playlistview/playlist.h"
#include "playlistview/ui/list_figures_dialog.h"
#include "shell/edit_box.h"
#include "shell/info.h"
#include "shell/key_commands.h"
#include "shell/library_data.h"
#include "shell/mlvdb.h"
#include "shell/sample_tool.h"
#include "shell/show_warning.h"
#include "shell/sibling_control.h"
#include "shell/start_up_db.h"
#include "shell/sub_main.h"
#include "shell/ui/edit_box_dialog.h"
#include "shell/ui/info_dialog.h"
#include "shell/ui/mlvdb_window.h"
#include "shell/ui/msg_dialog.h"
#include "shell/ui/splash_window.h"
#include "store/file_locator.h"
#include "trees/playlist_favorit.h"

#include <memory>

namespace melovane {

/// The composition root: makes every long-lived object of the console once, bottom to top.
class Application
{
public:
    /// \param places where the installation lies; the machine's own unless a test says otherwise
    explicit Application(QApplication& application, EnvironmentPlaces places = {});
    ~Application();

    /// Starts the console and lives until its window is closed. The exit code of the process: 0,
    /// or 1 when the start failed and a dialog has told why.
    [[nodiscard]] int run();

    /// Runs the work of an event: a failed database or file is told, and the program goes on.
    void guarded(const EventGuard::Work& work)
    {
        m_mlvdb.guard().run(QStringLiteral("Event"), work);
    }

    /// What the column index of the library did so far.
    [[nodiscard]] const sqlite::IndexFigures& searchFigures() const { return *m_searchFigures; }

private:
    [[nodiscard]] StartSteps steps();
    [[nodiscard]] OpenFault openTest();
    [[nodiscard]] bool anotherCopyRuns();
    [[nodiscard]] ErrorSink log();
    [[nodiscard]] WindowDialogs dialogs();
    [[nodiscard]] LibraryCommands libraryCommands();
    [[nodiscard]] MlvdbParts windowParts();
    [[nodiscard]] MonitorParts monitorParts();
    [[nodiscard]] Mp3dbActions libraryActions();
    [[nodiscard]] Mp3dbParts libraryParts();
    [[nodiscard]] FavoritParts favoritParts();
    [[nodiscard]] KeyActions keyActions();
    [[nodiscard]] bool editLayout(const QString& caption,
                                  QStringView file,
                                  const DataControl& rows,
                                  const GridLook& look,
                                  const GridControl& present);
    [[nodiscard]] PlaylistCommands playlistCommands();
    [[nodiscard]] PlaylistParts listParts();
    [[nodiscard]] PlaylistViewParts playlistParts();
    [[nodiscard]] PlaylistActions playlistActions();
    [[nodiscard]] KopieParts exportParts();
    [[nodiscard]] SampleToolParts sampleParts();
    void hearSampleTool();
    void exportList(int list);
    [[nodiscard]] QStringList tracksOf(const QStringList& places);
    [[nodiscard]] M3uParts m3uParts();
    [[nodiscard]] M3uCommandParts m3uCommandParts();
    [[nodiscard]] GroupId groupForImports();
    [[nodiscard]] Pnid activeList() const;
    [[nodiscard]] QString placeOf(const QString& file);
    void loadConfig();
    void dress();
    void showMainWindow();
    void openMakersPage() const;
    void runWhenIdle(std::function<bool()> work);
    void connectViews();
    void listenForNextCopy();

    QApplication& m_application;
    SystemClock m_clock;
    LinuxFiles m_files;
    LinuxEnvironment m_environment;
    LinuxProcesses m_processes;
    IniProfile m_profile;
    Mod_API m_paths;
    LinuxMessages m_messages;
    OnlyCopy m_onlyCopy;
    std::shared_ptr<sqlite::IndexFigures> m_searchFigures;
    std::unique_ptr<DBEngine> m_engine;
    GlobalSettings m_settings;
    ConfigObjects m_texts;
    std::unique_ptr<Log4Mlv> m_log; ///< null before the configuration is loaded
    QtMessageLoop m_loop;
    Skin m_skin;
    IconSet m_icons;
    MsgDialog m_messageForm;
    frmMsg m_warnings;
    SplashWindow m_splashForm;
    frmStartUpDB m_splash;
    EditBoxDialog m_inputBox;
    InfoDialog m_infoForm;
    frmInfo m_info;
    MLVMessageBus m_bus;
    frmEditBox m_editBox;
    std::unique_ptr<KSMessage> m_message; ///< `KSMessage1` of the main window
    SuiteMessages m_suite;
    SiblingControl m_siblings;
    LibraryData m_data;
    FileLocator m_locator;
    ListHistory m_listHistory;
    MLVFunction m_lists;
    QtPopup m_popup;
    linux_media::SdlOutput m_output;
    linux_media::Mp3Player m_player;
    linux_media::LinuxTagReader m_tagReader;
    linux_media::Mp3CueFinder m_cueFinder;
    QtPointer m_pointer;
    MlvdbWindow m_window;
    Monitor m_monitor;
    MLVDB m_mlvdb;
    ctl_MP3DB m_library;
    ModUndoRedo m_snapshots;
    cls_PLInsertMoveDel m_listEdits;
    QtFileChooser m_fileChooser;
    MlvM3U m_m3u;
    M3uCommands m_listFiles;
    LayoutFiles m_layouts;
    ctl_Playlist m_playlist;
    SampleTool m_sampleTool;
    std::unique_ptr<KSMessage> m_playlistMessage; ///< `KSMessage1` of the playlist view
    KopieFileDialog m_exportForm;
    frmKopieFile m_export;
    ListFiguresDialog m_detailForm;
    frmDetailPlaylist m_listDetails;
    PlaylistFavorit m_favorit;
    QtKeyboard m_keyboard;
    KeyCommands m_keys;
    std::unique_ptr<KSMessage> m_nextCopy; ///< hears of later copies; null before the window is up
    std::vector<std::function<bool()>> m_idleWork; ///< each until it returns false
    std::unique_ptr<Timer> m_idleTimer;
};

} // namespace melovane
