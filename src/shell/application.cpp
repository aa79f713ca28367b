#include "shell/application.h"

#include "bus/message_names.h"
#include "platform/linux/end_signals.h"
#include "playlistview/playlist_edits.h"
#include "shell/opened_files.h"
#include "shell/wings/care_wing.h"
#include "shell/wings/desk.h"
#include "shell/wings/edit_wing.h"
#include "shell/wings/library_wing.h"
#include "shell/wings/lists_wing.h"
#include "shell/wings/machine.h"
#include "shell/wings/main_wing.h"
#include "shell/wings/playlist_wing.h"
#include "shell/wings/sound_wing.h"
#include "shell/wings/start_wing.h"
#include "shell/wings/suite_wing.h"
#include "shell/wings/trees_wing.h"

#include <QGuiApplication>

namespace melovane {

using namespace Qt::Literals::StringLiterals;

Application::Application(QApplication& application,
                         EnvironmentPlaces places,
                         const QStringList& files)
    : m_machine(std::make_unique<Machine>(std::move(places)))
    , m_desk(std::make_unique<Desk>(application, *m_machine))
    , m_suite(std::make_unique<SuiteWing>(*m_machine))
    , m_sound(std::make_unique<SoundWing>(*m_machine, *m_desk, *m_suite))
    , m_lists(std::make_unique<ListsWing>(*m_machine, *m_suite))
    , m_library(std::make_unique<LibraryWing>(*m_machine, *m_desk, *m_suite, *m_lists))
    , m_playlist(std::make_unique<PlaylistWing>(
          PlaylistWing::Below{.machine = *m_machine,
                              .desk = *m_desk,
                              .suite = *m_suite,
                              .sound = *m_sound,
                              .lists = *m_lists,
                              .library = *m_library},
          PlaylistWing::TreeActions{
              .importGroup = [this] { return m_trees->favorit.importGroup(); },
              .newList = [this] { m_trees->favorit.newPlaylist(); }}))
    , m_edit(std::make_unique<EditWing>(*m_machine, *m_desk, *m_suite, *m_lists))
    , m_trees(std::make_unique<TreesWing>(
          *m_machine,
          *m_desk,
          *m_suite,
          *m_lists,
          *m_playlist,
          [this](const MlvAllData& track) { return m_edit->coverOf(track); }))
    , m_care(std::make_unique<CareWing>(*m_machine, *m_desk, *m_suite, *m_lists))
    , m_main(std::make_unique<MainWing>(MainWing::Below{.machine = *m_machine,
                                                        .desk = *m_desk,
                                                        .suite = *m_suite,
                                                        .sound = *m_sound,
                                                        .library = *m_library,
                                                        .playlist = *m_playlist,
                                                        .trees = *m_trees,
                                                        .edit = *m_edit,
                                                        .care = *m_care}))
    , m_opened(std::make_unique<OpenedFiles>(OpenedFiles::Parts{
          .loop = m_machine->loop,
          .isList = isListFile,
          .importLists =
              [this](const QStringList& lists) { m_playlist->listFiles.importLists(lists); },
          .tracksOf = [this](const QStringList& some) { return m_playlist->drops.tracksOf(some); },
          .show =
              [this](const QString& condition) {
                  m_suite->sender.SendMessage(bus::kTreeClickRow, condition, u"FID:where"_s,
                                              QString(), m_machine->texts.text(u"open.files"));
              }}))
    , m_start(std::make_unique<StartWing>(*m_machine, *m_desk))
{
    m_start->called = files;
    m_start->openFiles = [this](const QStringList& given) {
        guarded([&] { m_opened->open(given); });
    };
    m_care->safety.toWindow = [this](qint32 id) {
        m_main->window.suiteHandler().MessageNumber(id, 0, 0);
    };
    m_start->rescue = [this](const OpenFault& fault, const QString& reason) {
        return m_care->safety.rescue(fault, reason);
    };
    m_suite->siblings.setStarted([this] { m_start->splash.StandAside(); });
}

Application::~Application() = default;

void Application::guarded(const std::function<void()>& work)
{
    m_main->window.guard().run(u"Event"_s, work);
}

QString Application::crashFile() const
{
    return m_start->crashFile();
}

MLVMessageBus& Application::bus()
{
    return m_suite->bus;
}

const sqlite::IndexFigures& Application::searchFigures() const
{
    return *m_machine->searchFigures;
}

int Application::run()
{
    switch (m_start->run([this] {
        m_edit->mendNames();
        m_main->show();
    })) {
    case StartResult::SecondCopy:
        return 0;
    case StartResult::Refused:
        return 1;
    case StartResult::Run:
        break;
    }
    m_care->found.endLeftMerges();
    m_care->safety.begin(m_start->lastRunDied);
    m_main->place.begin(m_start->called.isEmpty());
    // The end of the desktop's session keeps what a closed window keeps, and the user's place.
    bool isAskedFromOutside = false;
    const auto leave = [this, &isAskedFromOutside] {
        isAskedFromOutside = true;
        m_main->place.note();
    };
    const EndSignals ending([&leave] {
        leave();
        QGuiApplication::quit();
    });
    // A session manager closes the windows itself, once every program has kept what it has.
    const QObject session;
    QObject::connect(qGuiApp, &QGuiApplication::commitDataRequest, &session, leave,
                     Qt::DirectConnection);
    const int code = QGuiApplication::exec();
    m_main->place.end(isAskedFromOutside);
    m_start->end(!isAskedFromOutside);
    return code;
}

} // namespace melovane
