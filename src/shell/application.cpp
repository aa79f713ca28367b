#include "shell/application.h"

#include "bus/message_names.h"
#include "bus/message_numbers.h"
#include "config/melovane_configuration.h"
#include "library/ui/mp3db_widget.h"
#include "platform/db/db_error.h"
#include "platform/qt/data_grid.h"
#include "platform/qt/desktop_texts.h"
#include "platform/qt/progress_dialog.h"
#include "platform/qt/qt_font_chooser.h"
#include "platform/sqlite/engine/sqlite_engine.h"
#include "platform/system/leading_number.h"
#include "platform/system/path_text.h"
#include "playlistfiles/dropped_tracks.h"
#include "playlistview/ui/playlist_widget.h"
#include "shell/skin_files.h"
#include "store/check_database.h"
#include "trees/ui/playlist_favorit_widget.h"
#include "views/edit_grid.h"
#include "views/ui/edit_grid_dialog.h"

#include <QApplication>
#include <QDesktopServices>
#include <QDir>
#include <QUrl>

namespace melovane {

using namespace Qt::Literals::StringLiterals;

namespace {

/// Between two slices of long work, so that keys and paints come first.
constexpr std::chrono::milliseconds kIdleInterval{2};

} // namespace

Application::Application(QApplication& application, EnvironmentPlaces places)
    : m_application(application)
    , m_environment(std::move(places))
    , m_profile(m_files)
    , m_paths(m_environment, m_files)
    , m_messages(MessagePlace(m_environment.runtimeFolder()))
    , m_onlyCopy(m_environment.runtimeFolder(), m_paths.programName())
    , m_searchFigures(std::make_shared<sqlite::IndexFigures>())
    , m_engine(sqlite::makeEngine(
          m_clock,
          {.searchIndex = m_searchFigures,
           .whenIdle = [this](std::function<bool()> work) { runWhenIdle(std::move(work)); },
           .snapshotFolder = path::join(m_environment.cacheFolder(), u"index")}))
    , m_settings(m_paths, m_profile, m_files, *m_engine)
    , m_texts(m_paths, m_profile, m_files)
    , m_skin(application)
    , m_icons(m_skin)
    , m_messageForm(m_icons)
    , m_warnings(m_settings, m_texts, m_paths, m_messageForm)
    , m_splashForm(m_skin, m_icons)
    , m_splash(m_texts, m_loop, m_splashForm, [this] { openMakersPage(); })
    , m_info(m_settings, m_texts, m_paths, m_infoForm)
    , m_bus(m_paths, m_files, m_clock)
    , m_editBox(m_texts, m_bus, m_inputBox)
    , m_message(m_messages.makeControl())
    , m_suite(m_settings, *m_engine, m_messages, *m_message, log())
    , m_siblings(m_paths, m_files, m_processes)
    , m_data(*m_engine, m_settings, m_paths, m_files, m_clock, log())
    , m_locator(m_files, m_paths.GetConfigPath())
    , m_listHistory(*m_engine, m_files, m_clock, m_settings, log())
    , m_lists(listParts(), m_clock)
    , m_popup(m_icons)
    , m_player(m_output, m_loop)
    , m_window(m_skin, m_icons)
    , m_monitor(monitorParts())
    , m_mlvdb(windowParts(), m_window.controls())
    , m_library(libraryParts(), m_window.library().controls(), libraryActions())
    , m_snapshots(m_files, m_paths.programFolder())
    , m_listEdits(*m_engine, m_snapshots, m_listHistory)
    , m_fileChooser(&m_window)
    , m_m3u(m3uParts())
    , m_listFiles(m3uCommandParts())
    , m_layouts(m_paths, m_files)
    , m_playlist(playlistParts(), m_window.playlist().controls(m_warnings), playlistActions())
    , m_sampleTool(sampleParts())
    , m_playlistMessage(m_messages.makeControl())
    , m_exportForm(m_icons, m_texts)
    , m_export(exportParts())
    , m_detailForm(m_texts)
    , m_listDetails(*m_engine, m_settings, m_detailForm)
    , m_favorit(favoritParts(), m_window.lists().tree())
    , m_keys(m_settings, m_loop, keyActions())
{}

Application::~Application() = default;

void Application::runWhenIdle(std::function<bool()> work)
{
    m_idleWork.push_back(std::move(work));
    if (!m_idleTimer) {
        m_idleTimer = m_loop.makeTimer(kIdleInterval, [this] {
            std::erase_if(m_idleWork, [](const auto& next) { return !next(); });
            if (m_idleWork.empty()) {
                m_idleTimer->stop();
            }
        });
    }
    m_idleTimer->start();
}

ErrorSink Application::log()
{
    return [this](const QString& where, const QString& what) {
        if (m_log) {
            m_log->DebugOut(where + u": "_s + what);
        }
    };
}

MonitorParts Application::monitorParts()
{
    return {m_player,
            m_window.status(),
            m_warnings,
            m_settings,
            m_texts,
            m_files,
            m_locator,
            m_loop,
            [this](const QString& fid) { return m_data.GetAllDataByFid(fid); },
            [this] { m_suite.StopOtherMonitors(); },
            [this](const QString& text) { m_mlvdb.showStatusText(text); }};
}

MlvdbParts Application::windowParts()
{
    return {m_settings,
            m_texts,
            m_paths,
            m_files,
            m_loop,
            m_bus,
            m_data,
            m_siblings,
            m_suite,
            *m_message,
            m_monitor,
            m_warnings,
            libraryCommands(),
            playlistCommands(),
            dialogs(),
            log()};
}

LibraryCommands Application::libraryCommands()
{
    return {[this] { m_library.start(); },
            [this] { m_library.Refresh(); },
            [this] { m_library.DB_ALL_DEL(); },
            [this] { m_library.DB_ALL_NOEXIST(); },
            [this] {
                m_library.end();
                m_library.SaveHist();
            },
            [this] { m_library.DelSuchlist(); },
            [this](const QString& text) {
                m_library.FindTreeValue({u"allfind"_s, {}, text}, true);
            }};
}

WindowDialogs Application::dialogs()
{
    return {[this] { m_info.Show(); },
            [this] { m_editBox.Show(); },
            [this] {
                return editLayout(u"EditGrid-db"_s, kLibraryLayout, m_library.Data1(),
                                  m_library.look(), m_window.library().controls().grid);
            },
            [this](const GridFont& present) {
                return QtFontChooser(&m_window, m_texts.text(u"mnuFont"_s)).choose(present);
            },
            [this] {
                return editLayout(u"EditGrid-pl"_s, kPlaylistLayout, m_playlist.Data1(),
                                  m_playlist.look(), m_window.playlist().controls(m_warnings).grid);
            },
            [this](int list) { exportList(list); }};
}

bool Application::editLayout(const QString& caption,
                             QStringView file,
                             const DataControl& rows,
                             const GridLook& look,
                             const GridControl& present)
{
    EditGridDialog dialog(m_skin, m_icons, m_texts, caption);
    DataGrid& grid = dialog.setRows(rows, look, present.columns());
    frmEditGrid logic(m_layouts, file.toString(), grid, present.columns());
    return dialog.choose(logic);
}

QString Application::placeOf(const QString& file)
{
    QString folder = path::withSeparator(path::parent(file));
    const QString place = m_locator.ExistFile(folder, path::fileName(file));
    return m_files.fileExists(place) ? place : QString();
}

Mp3dbParts Application::libraryParts()
{
    return {*m_engine, m_settings, m_texts, m_paths, m_files, m_clock, m_loop, m_bus, log()};
}

PlaylistCommands Application::playlistCommands()
{
    return {[this] { return int(numberOf(m_playlist.GetPNID())); },
            [this] { return int(numberOf(m_playlist.currentEntry())); },
            [this] { m_playlist.start(); },
            [this] { m_playlist.end(); },
            [this] { m_playlist.undo(); },
            [this] { m_playlist.redo(); },
            [this] { m_listFiles.importLists(); },
            [this] { m_listFiles.saveList(activeList()); }};
}

PlaylistParts Application::listParts()
{
    return {*m_engine, m_settings, m_files, m_locator, m_listHistory, log()};
}

PlaylistViewParts Application::playlistParts()
{
    return {*m_engine,
            m_settings,
            m_texts,
            m_clock,
            m_loop,
            m_bus,
            {m_lists, m_listEdits, m_listHistory, m_snapshots},
            log()};
}

PlaylistActions Application::playlistActions()
{
    return {m_paths.programName(),
            [this](const QString& cmd, const QString& fid, const QString& plid) {
                m_mlvdb.siblings().findTempo(cmd, fid, plid);
            },
            [this](int direction) { m_monitor.run(direction < 0 ? u"play.zur" : u"play.vor", {}); },
            [this](const QString& file) { return placeOf(file); },
            [this](const QStringList& places) { return tracksOf(places); },
            [this](const QString& name, const GridControl& grid) { m_layouts.save(name, grid); },
            [this](const QString& name, GridControl& grid) { m_layouts.load(name, grid); },
            [this](const QStringList& files, Pnid list, std::optional<Sid> target, int aktion) {
                return m_listFiles.insertLists(files, list, target, aktion);
            },
            [this](const MlvPlaylistDetail& entry) {
                m_sampleTool.edit(entry, m_playlistMessage->handle());
            },
            [this](const QString& file, int withinMs, int loudness) {
                return m_cueFinder.find(file, withinMs, loudness);
            }};
}

M3uParts Application::m3uParts()
{
    return {*m_engine,     m_settings,  m_files,
            m_locator,     m_tagReader, m_clock,
            m_listHistory, m_snapshots, {m_paths.programFolder(), m_paths.GetConfigPath()}};
}

M3uCommandParts Application::m3uCommandParts()
{
    return {m_m3u,
            m_settings,
            m_texts,
            m_files,
            m_warnings,
            m_fileChooser,
            m_bus,
            [this](const QString& title) {
                return std::make_unique<ProgressDialog>(title, m_texts.text(u"m3u.cancel"_s));
            },
            [this] { return groupForImports(); },
            [](const QString& file) { QDesktopServices::openUrl(QUrl::fromLocalFile(file)); }};
}

GroupId Application::groupForImports()
{
    const TreeControl& tree = m_window.lists().tree();
    const QString group = m_favorit.FindGRID(tree.currentRow());
    return group.isEmpty() ? m_lists.CreateNewGroup(m_lists.catalogue().nameFromFormat(
                                 m_settings.PlaylistGroupNameFormat()))
                           : GroupId(leadingLong(group));
}

Pnid Application::activeList() const
{
    return numberOf(m_playlist.GetPNID()) != 0 ? m_playlist.GetPNID() : m_playlist.activeList();
}

QStringList Application::tracksOf(const QStringList& places)
{
    const BusyCursor busy(m_pointer);
    DroppedTracks dropped(*m_engine, m_settings, m_files, m_tagReader, m_clock);
    const DroppedTracks::Result result = dropped.take(places);
    if (!result.skipped.isEmpty()) {
        m_mlvdb.showStatusText(m_texts.text(u"playlist.skipped"_s, result.skipped.size(),
                                            path::fileName(result.skipped.first())));
    }
    return result.fids;
}

FavoritParts Application::favoritParts()
{
    return {*m_engine,
            m_settings,
            m_texts,
            m_lists,
            m_loop,
            m_bus,
            m_warnings,
            m_popup,
            log(),
            [this](Pnid list) { m_listDetails.Show(list); },
            [this](Pnid list) { m_listFiles.saveList(list); }};
}

KeyActions Application::keyActions()
{
    return {[this](const QString& command) {
                return m_library.SendKeyUp(command) || m_playlist.SendKeyUp(command);
            },
            [this] { m_monitor.stop(); },
            [this] { BusSender(m_bus, u"MLVDB"_s).SendMessage(bus::kDbSetFavorit); },
            [this] { return m_mlvdb.player().playNext(m_library.GetFID()); },
            [this] { return m_mlvdb.player().playNow(m_library.GetFID()); },
            [this] {
                m_loop.turn();
                m_mlvdb.player().showPlayer();
            }};
}

Mp3dbActions Application::libraryActions()
{
    return {[this] { m_mlvdb.siblings().importMusic(); },
            [this](const QString& cmd, const QString& fid) {
                m_mlvdb.siblings().findTempo(cmd, fid, {});
            },
            [this](const QString& file) { return placeOf(file); },
            [this](const QString& fid) {
                m_sampleTool.edit(m_lists.GetPlaylistDetailByFID(fid), m_playlistMessage->handle());
            }};
}

bool Application::anotherCopyRuns()
{
    if (m_onlyCopy.claim()) {
        return false;
    }
    const auto control = m_messages.makeControl();
    control->setTarget(m_onlyCopy.runningCopy());
    control->Send(message::kBringToFront, 0, 0);
    return true;
}

void Application::listenForNextCopy()
{
    m_nextCopy = m_messages.makeControl();
    m_nextCopy->setMessageNumber([this](qint32 id, qint32, qint32) {
        if (id == message::kBringToFront) {
            m_window.bringToFront();
        }
        return 0;
    });
    m_onlyCopy.publish(m_nextCopy->handle());
}

OpenFault Application::openTest()
{
    const DatabasePlace place{m_settings.DbName(), m_paths.GetConfigPath(), m_paths.programName()};
    CheckDatabase check(*m_engine, m_files, m_clock, place, log());
    const QString text = check.openTest();
    return {text, check.openError()};
}

void Application::loadConfig()
{
    // Language files are looked for in the current folder.
    QDir::setCurrent(m_paths.GetConfigPath());
    MelovaneConfiguration::fill(m_texts);
    m_log = std::make_unique<Log4Mlv>(m_paths, m_files, m_clock);
    m_log->SetClassName(u"MLVDB"_s);
    m_log->SetAreaName(u"LoadConfig"_s);
    m_settings.InitTasten();
    m_settings.Refresh();
    dress();
}

void Application::dress()
{
    setLanguageOfDesktopTexts(m_application, m_texts.text(u"Sprach.Code"));
    const QString theme = SkinFiles(m_paths, m_files).text(m_settings.SkinFileName());
    if (!theme.isEmpty()) {
        m_skin.load(theme);
    }
}

void Application::openMakersPage() const
{
    const QString page = path::join(m_paths.programFolder(), u"Melovane.html"_s);
    QDesktopServices::openUrl(QUrl::fromLocalFile(page));
}

StartSteps Application::steps()
{
    return {
        [this] { return openTest(); },
        [this] { loadConfig(); },
        [this] { return anotherCopyRuns(); },
        [this] { return m_files.fileExists(m_settings.DbName()); },
        [this] { return m_settings.CheckDBVersion() == 0; },
        [this] { showMainWindow(); },
    };
}

void Application::connectViews()
{
    m_window.attach(m_mlvdb, m_texts);
    m_window.library().attach(m_library, m_texts);
    m_window.playlist().attach(m_playlist, m_texts);
    QObject::connect(&m_playlist, &ctl_Playlist::historyChanged, &m_window,
                     [this](const QString& undo, bool, const QString& redo, bool) {
                         m_mlvdb.menu().setHistoryTexts(undo, redo);
                     });
    m_window.lists().attach(m_favorit, m_texts);
    hearSampleTool();
    m_popup.setPlace([this] { return m_window.lists().menuPlace(); });
    m_settings.SetKeyboard(&m_keyboard);
    m_keyboard.setHandler(&m_window, [this] { return m_keys.keyPressed(); });
    QObject::connect(&m_window, &MlvdbWindow::firstShown, &m_library,
                     [this] { m_mlvdb.activateFirst(); });
    QObject::connect(&m_window, &MlvdbWindow::closing, &m_library, [this] {
        m_mlvdb.unload();
        m_favorit.end();
    });
}

void Application::showMainWindow()
{
    connectViews();
    try {
        m_mlvdb.load();
        m_favorit.toolPressed(u"all.activate"_s);
    } catch (const DbError& error) {
        // The window is there all the same, incomplete.
        m_log->DebugOut(u"MLVDB.Load: "_s + error.text());
        m_mlvdb.showStatusText(m_texts.text(u"fehler.unerwartet", error.text()));
    }
    m_window.show();
    listenForNextCopy();
}

int Application::run()
{
    const StartParts parts{m_settings, m_texts, m_warnings, m_messages, m_loop, m_splash};
    switch (SubMain(steps(), parts).run()) {
    case StartResult::SecondCopy:
        return 0;
    case StartResult::Refused:
        return 1;
    case StartResult::Run:
        break;
    }
    return QApplication::exec();
}

} // namespace melovane
