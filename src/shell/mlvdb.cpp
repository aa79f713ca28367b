#include "shell/mlvdb.h"

#include "config/global_settings.h"
#include "platform/controls/window_frame.h"
#include "platform/system/path_text.h"
#include "shell/paths.h"

namespace melovane {

using namespace Qt::Literals::StringLiterals;

namespace {

/// Name of the record with the place of this window.
const QString kPosition = u"DBPosition"_s;

/// Value of `WindowState` for a window that fills the screen: keep.
constexpr int kMaximised = 2;

constexpr QSize kLeastSize{600, 300};
/// Size of the window over an empty library.
constexpr QSize kFirstSize{800, 600};

/// Where the splits are kept, and what they are before anybody has moved them, in thousandths.
const QString kSplitSection = u"Value"_s;
constexpr std::array<int, 3> kFirstSplits{740, 190, 190};

QString splitKey(size_t index)
{
    return u"DBGridSplit-%1"_s.arg(index);
}

} // namespace

MLVDB::MLVDB(GlobalSettings& settings,
             Mod_API& paths,
             Files& files,
             Processes& processes,
             MessageLoop& loop,
             MlvdbControls controls)
    : m_settings(settings)
    , m_paths(paths)
    , m_skinFiles(paths, files)
    , m_processes(processes)
    , m_controls(controls)
    , m_statusText(loop, controls.status)
{}

void MLVDB::load()
{
    m_controls.window.setCaption(mainWindowCaption());
    m_controls.window.setLeastSize(kLeastSize);
    const QString text = m_skinFiles.text(m_settings.SkinFileName());
    if (text.isEmpty() || !m_controls.skin.load(text)) {
        m_controls.skin.clear();
    }
    restoreSplits();
}

std::vector<SkinEntry> MLVDB::skins() const
{
    std::vector<SkinEntry> result;
    const QString chosen = m_settings.SkinFileName();
    for (const QString& name : m_skinFiles.names()) {
        const QString title = m_controls.skin.titleOf(m_skinFiles.text(name));
        result.push_back({name, title.isEmpty() ? path::baseName(name) : title,
                          name.compare(chosen, Qt::CaseInsensitive) == 0});
    }
    std::sort(result.begin(), result.end(), [](const SkinEntry& one, const SkinEntry& two) {
        return one.title.localeAwareCompare(two.title) < 0;
    });
    return result;
}

void MLVDB::chooseSkin(const QString& fileName)
{
    if (fileName.isEmpty()) {
        m_controls.skin.clear();
    } else if (!m_controls.skin.load(m_skinFiles.text(fileName))) {
        showStatusText(u"Das Farbschema %1 ist nicht lesbar."_s.arg(fileName));
        return;
    }
    m_settings.SetSkinFileName(fileName);
}

void MLVDB::activateFirst(qint64 tracks)
{
    startSibling(u"MelovaneJob.exe"_s, Processes::WindowStyle::Hidden);
    if (tracks > 0) {
        restorePlace();
        return;
    }
    QRect place(QPoint(), kFirstSize);
    place.moveCenter(m_controls.window.screenArea().center());
    m_controls.window.setPlace(place);
    mnuImpMP3(0);
}

void MLVDB::restorePlace()
{
    const WindowPosition& stored = m_settings.Position(kPosition);
    if (stored.WindowState == kMaximised) {
        m_controls.window.maximise();
        return;
    }
    // Sums of numbers from a file may leave the 32 bits.
    const QRect area = m_controls.window.screenArea();
    const qint64 right = qint64{stored.Left} + stored.Whidth;
    const qint64 bottom = qint64{stored.Top} + stored.Height;
    const bool inside = stored.Left >= area.left() && stored.Top >= area.top() &&
                        right <= qint64{area.left()} + area.width() &&
                        bottom <= qint64{area.top()} + area.height();
    if (inside && stored.Height >= 0 && stored.Whidth >= 0) {
        m_controls.window.setPlace({stored.Left, stored.Top, stored.Whidth, stored.Height});
    }
}

void MLVDB::restoreSplits()
{
    for (size_t index = 0; index < m_controls.splits.size(); ++index) {
        const int stored =
            m_settings.GetKeyValueLong(kSplitSection, splitKey(index), kFirstSplits[index]);
        m_controls.splits[index]->setPosition(stored);
    }
}

void MLVDB::unload()
{
    WindowPosition& stored = m_settings.Position(kPosition);
    const QRect place = m_controls.window.place();
    stored.Left = place.left();
    stored.Top = place.top();
    stored.Whidth = place.width();
    stored.Height = place.height();
    stored.WindowState = m_controls.window.isMaximisedNow() ? kMaximised : 0;
    m_settings.PositionSave(kPosition);
    for (size_t index = 0; index < m_controls.splits.size(); ++index) {
        m_settings.WriteKeyValue(kSplitSection, splitKey(index),
                                 QString::number(m_controls.splits[index]->position()));
    }
}

bool MLVDB::startSibling(const QString& command, Processes::WindowStyle style)
{
    return m_processes.start(path::join(m_paths.programFolder(), command), style);
}

void MLVDB::mnuRefreshTree()
{
    startSibling(u"Task.RebuildTree.exe 1"_s, Processes::WindowStyle::Minimised);
}

void MLVDB::mnuImpMP3(int index)
{
    const QString command = index == 2 ? u"mediaintake.exe 2"_s : u"mediaintake.exe 1"_s;
    if (!startSibling(command, Processes::WindowStyle::Normal)) {
        showStatusText(u"Der Importer (mediaintake) lässt sich nicht starten."_s);
    }
}

void MLVDB::mnuExit()
{
    m_controls.window.closeWindow();
}

QString MLVDB::aboutText()
{
    return u"%1\n\nDie Musikdatenbank für DJ und Sendung."_s.arg(mainWindowCaption());
}

} // namespace melovane
