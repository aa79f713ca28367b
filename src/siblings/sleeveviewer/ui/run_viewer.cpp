#include "siblings/sleeveviewer/ui/run_viewer.h"

#include "bus/message_numbers.h"
#include "bus/viewer_messages.h"
#include "config/config_objects.h"
#include "config/global_settings.h"
#include "config/melovane_configuration.h"
#include "config/paths.h"
#include "help/ui/help_desk.h"
#include "platform/linux/id3_cover.h"
#include "platform/linux/ini_profile.h"
#include "platform/linux/library_loan.h"
#include "platform/linux/linux_environment.h"
#include "platform/linux/linux_files.h"
#include "platform/linux/linux_messages.h"
#include "platform/linux/only_copy.h"
#include "platform/qt/icon_set.h"
#include "platform/qt/skin.h"
#include "platform/qt/started_window.h"
#include "platform/sqlite/engine/sqlite_engine.h"
#include "platform/system/clock.h"
#include "shell/ui/suite_look.h"
#include "siblings/sleeveviewer/picture_worker.h"
#include "siblings/sleeveviewer/sleeve_pictures.h"
#include "siblings/sleeveviewer/sleeve_viewer.h"
#include "siblings/sleeveviewer/ui/sleeve_window.h"

#include <QApplication>
#include <QDir>

#include <optional>

namespace melovane {

using namespace Qt::Literals::StringLiterals;

namespace {

/// Where the window stood: keep.
const QString kSection = u"SleeveViewer"_s;
const QString kPlace = u"Place"_s;

/// Everything that lives as long as the program, bottom to top.
class ViewerProgram
{
public:
    ViewerProgram()
        : m_paths(m_environment, m_files)
        , m_engine(sqlite::makeEngine(m_clock))
        , m_settings(m_paths, m_profile, m_files, *m_engine)
        , m_loan(m_files, lockFolders())
        , m_messages(MessagePlace(m_environment.runtimeFolder()))
        , m_control(m_messages.makeControl())
        , m_onlyCopy(lockFolders(), u"SleeveViewer"_s)
        , m_texts(m_paths, m_profile, m_files)
        , m_tracks(*m_engine, m_files, m_paths.GetConfigPath())
        , m_worker(
              [folder = m_paths.GetConfigPath()](const SleeveTrack& track) {
                  LinuxFiles files;
                  return sleevePictures(files, linux_media::Id3CoverReader(), folder, track);
              },
              [](const QString& file) {
                  return isPictureName(file)
                             ? readPicture(file)
                             : readPictureBytes(linux_media::Id3CoverReader().cover(file));
              })
        , m_viewer(viewerParts())
    {
        // Language files are looked for in the current folder.
        QDir::setCurrent(m_paths.GetConfigPath());
        MelovaneConfiguration::fill(m_texts);
        QObject::connect(&m_worker, &PictureWorker::found, &m_worker,
                         [this](const QStringList& files) { m_viewer.found(files); });
        QObject::connect(&m_worker, &PictureWorker::pictureRead, &m_worker,
                         [this](const ReadPicture& picture) { m_viewer.pictureRead(picture); });
    }

    [[nodiscard]] const ConfigObjects& texts() const { return m_texts; }

    /// What F1 shows.
    [[nodiscard]] HelpPages::Parts help() { return helpOf(m_files, m_paths, m_texts, m_settings); }

    [[nodiscard]] SleeveViewer& viewer() { return m_viewer; }

    /// Dresses the program from now on as the settings say; the skin outlives this.
    void dress(QApplication& application, Skin& skin)
    {
        m_look.emplace(SuiteLook::Parts{application, m_paths, m_files, m_settings, m_texts, skin});
    }

    /// True when no other viewer runs.
    [[nodiscard]] bool claim() { return m_onlyCopy.claim(); }

    void handOver(const QString& image)
    {
        m_control->setTarget(m_onlyCopy.runningCopy());
        m_control->SendText(message::kShowImage, 0, image);
    }

    /// From now on what others send is heard.
    void listen(std::function<void()> changed, std::function<void()> bringToFront)
    {
        m_changed = std::move(changed);
        m_control->setMessageNumber([this](qint32 id, qint32, qint32) {
            if (id == message::kConfigChanged) {
                m_look->follow();
                m_changed();
            }
            return 0;
        });
        m_control->setMessageText(
            [this, bring = std::move(bringToFront)](qint32 id, qint32, const QString& text) {
                if (id == message::kRowOfConsole) {
                    m_viewer.showFid(text);
                } else if (id == message::kShowImage) {
                    show(text);
                    bring();
                }
                return 0;
            });
        m_onlyCopy.publish(m_control->handle());
        m_settings.WriteKeyValue(section::kMessageHandle.toString(), message::kViewerKey.toString(),
                                 QString::number(m_control->handle()));
    }

    [[nodiscard]] QString place() const { return m_settings.GetKeyValue(kSection, kPlace, {}); }

    void keepPlace(const QString& place) { m_settings.WriteKeyValue(kSection, kPlace, place); }

    /// \param image empty for the row of the console
    void show(const QString& image)
    {
        if (!image.isEmpty()) {
            m_viewer.showImage(image);
            return;
        }
        m_control->setTarget(m_settings.GetKeyValueLong(section::kMessageHandle.toString(),
                                                        message::kRowOfConsoleKey.toString(), 0));
        m_control->PostText(message::kViewerWantsRow, m_control->handle(), {});
    }

private:
    [[nodiscard]] QStringList lockFolders()
    {
        return {m_environment.runtimeFolder(), m_paths.GetConfigPath()};
    }

    [[nodiscard]] SleeveViewer::Parts viewerParts()
    {
        return {.texts = m_texts,
                .trackByFid =
                    [this](const QString& fid) {
                        return canRead() ? m_tracks.byFid(m_settings.DbName(), fid) : SleeveTrack();
                    },
                .trackByImage =
                    [this](const QString& image) {
                        return canRead() ? m_tracks.byImage(m_settings.DbName(), image)
                                         : SleeveTrack();
                    },
                .find = [this](const SleeveTrack& track) { m_worker.find(track); },
                .read = [this](const QString& file) { m_worker.read(file); },
                .choose = [this](const QString& image) { tellConsole(image); },
                .changed = [this] { m_changed(); }};
    }

    /// The library of the settings is there, and nobody has it for himself.
    [[nodiscard]] bool canRead()
    {
        m_settings.Refresh();
        return m_settings.namedDbName() == m_settings.DbName() &&
               !m_loan.isLent(m_settings.DbName());
    }

    /// Without waiting: the console searches as long as it likes.
    void tellConsole(const QString& image)
    {
        m_settings.RefreshMessageHandle();
        m_control->setTarget(m_settings.MessageHandleDB());
        m_control->PostText(message::kImageChosen, 0, image);
    }

    SystemClock m_clock;
    LinuxFiles m_files;
    LinuxEnvironment m_environment;
    IniProfile m_profile{m_files};
    Mod_API m_paths;
    std::unique_ptr<DBEngine> m_engine;
    GlobalSettings m_settings;
    LibraryLoan m_loan;
    LinuxMessages m_messages;
    std::unique_ptr<KSMessage> m_control;
    OnlyCopy m_onlyCopy;
    ConfigObjects m_texts;
    SleeveTracks m_tracks;
    std::function<void()> m_changed = [] {};
    PictureWorker m_worker;
    SleeveViewer m_viewer;
    std::optional<SuiteLook> m_look;
};

} // namespace

int runViewer(int argc, char** argv, const QString& image)
{
    QApplication application(argc, argv);
    ViewerProgram program;
    if (!program.claim()) {
        program.handOver(image);
        return 0;
    }
    Skin skin(application);
    program.dress(application, skin);
    const IconSet icons(skin);
    const HelpDesk help(application, program.help(), icons);
    SleeveWindow window(program.viewer(), program.texts(), skin, icons);
    program.listen([&window] { window.refresh(); },
                   [&window] {
                       window.show();
                       window.raise();
                       window.activateWindow();
                   });
    window.takePlace(program.place());
    program.show(image);
    showAsStarted(window);
    const int code = QApplication::exec();
    program.keepPlace(window.placeText());
    return code;
}

} // namespace melovane
