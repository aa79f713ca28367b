#include "playlistfiles/m3u_commands.h"

#include "bus/event_guard.h"
#include "bus/message_names.h"
#include "config/config_objects.h"
#include "config/counted_text.h"
#include "config/global_settings.h"
#include "config/refusals.h"
#include "platform/controls/file_chooser.h"
#include "platform/controls/progress_window.h"
#include "platform/controls/warnings.h"
#include "platform/system/files.h"
#include "platform/system/path_text.h"
#include "playlistfiles/m3u_writer.h"
#include "playlistfiles/mlv_m3u.h"
#include "playlistfiles/store_playlists.h"

#include <QScopedValueRollback>

namespace melovane {

using namespace Qt::Literals::StringLiterals;

namespace {

/// Keys of section "Global" with the folders used last: keep.
const QString kLoadFolder = u"LoadPlaylistPath"_s;
const QString kSaveFolder = u"SavePlaylistPath"_s;

/// The play action that entries of a new list in that group have.
int aktionIn(GroupId group)
{
    return group == kJingleGroup ? kAktionJinglePlay : kAktionMix;
}

} // namespace

struct M3uCommands::Work
{
    std::unique_ptr<ProgressWindow> window;
    QString text;
    int errors = 0;
    int entered = 0; ///< tracks that are new in the library
};

M3uCommands::M3uCommands(M3uCommandParts parts)
    : m_parts(std::move(parts))
    , m_bus(m_parts.bus, u"MlvM3U"_s)
{}

void M3uCommands::tell(const QString& text)
{
    m_bus.SendMessage(bus::kShowStatusText, text);
}

QString M3uCommands::rememberedFolder(const QString& key) const
{
    const QString kept = m_parts.settings.GetKeyValue(section::kGlobal.toString(), key, {});
    return m_parts.files.folderExists(kept) ? kept : m_parts.settings.PlaylistVerzeichnis();
}

void M3uCommands::remember(const QString& key, const QString& file)
{
    m_parts.settings.WriteKeyValue(section::kGlobal.toString(), key, path::parent(file));
}

void M3uCommands::watch(Work& work)
{
    MlvM3U& m3u = m_parts.m3u;
    m3u.events = {};
    m3u.events.ProgressImport = [this](const QString& file) {
        tell(m_parts.texts.text(u"status.import"_s, file));
    };
    m3u.events.goOn = [&work](qint64 done, qint64 size) {
        return work.window->show(work.text, done, size);
    };
    m3u.events.RtError = [this](int, const QString& text, const QString&) { m_lastFailure = text; };
}

bool M3uCommands::load(Work& work, const QStringList& files)
{
    work.text = path::fileName(files.first());
    work.errors += m_parts.m3u.LoadPlaylists(files);
    work.entered += m_parts.m3u.entered();
    return !m_parts.m3u.wasGivenUp();
}

/// The views of the library show new tracks at once, as behind the importer.
void M3uCommands::tellEntered(const Work& work)
{
    if (work.entered > 0) {
        m_bus.SendMessage(bus::kDbChange);
    }
}

void M3uCommands::importLists()
{
    const QStringList files =
        m_parts.chooser.openFiles({m_parts.texts.text(u"m3u.import.title"_s),
                                   rememberedFolder(kLoadFolder),
                                   m_parts.texts.text(u"m3u.kind"_s),
                                   {u"*.m3u"_s, u"*.m3u8"_s, u"*.M3U"_s, u"*.M3U8"_s}});
    if (!files.isEmpty()) {
        remember(kLoadFolder, files.first());
        importLists(files);
    }
}

void M3uCommands::importLists(const QStringList& files)
{
    if (m_busy || files.isEmpty()) {
        return;
    }
    const QScopedValueRollback busy(m_busy, true);
    std::optional<GroupId> group; // asked for when there is something for it
    bool isJingle = false;
    MlvM3U& m3u = m_parts.m3u;
    Work work{m_parts.openProgress(m_parts.texts.text(u"m3u.import.title"_s)), {}, 0};
    watch(work);
    Pnid first{};
    int lists = 0;
    int entries = 0;
    bool goesOn = true;
    for (qsizetype i = 0; goesOn && i < files.size(); ++i) {
        const int before = work.errors;
        goesOn = load(work, {files[i]});
        // A file that gave nothing but failures makes no list; an empty list is one.
        if (goesOn && (m3u.loaded() > 0 || work.errors == before)) {
            if (!group) {
                group = m_parts.targetGroup();
                isJingle = *group == kJingleGroup;
                m3u.SetAktion(aktionIn(*group));
            }
            const Pnid list = m3u.importAsNewList(path::baseName(files[i]), *group);
            work.errors = before + m3u.failures();
            goesOn = !m3u.wasGivenUp();
            if (numberOf(list) != 0) {
                ++lists;
                entries += m3u.loaded();
                first = numberOf(first) == 0 ? list : first;
            }
        }
    }
    work.window.reset();
    m3u.events = {};
    tell(goesOn ? m_parts.texts.text(u"m3u.imported"_s, counted(u"m3u.imported.lists"_s, lists),
                                     counted(u"m3u.imported.tracks"_s, entries))
                : counted(u"m3u.import.cancelled"_s, lists));
    tellEntered(work);
    if (lists > 0) {
        m_bus.SendMessage(bus::kRefreshPlaylistTree);
        m_bus.SendMessage(isJingle ? bus::kJinglelistAktivieren : bus::kPlaylistAktivieren,
                          numberOf(first), false);
    }
    askForLog(work);
}

bool M3uCommands::insertLists(const QStringList& files,
                              Pnid list,
                              std::optional<Sid> target,
                              int aktion)
{
    if (m_busy || files.isEmpty()) {
        return false;
    }
    const QScopedValueRollback busy(m_busy, true);
    MlvM3U& m3u = m_parts.m3u;
    m3u.SetAktion(aktion);
    Work work{m_parts.openProgress(m_parts.texts.text(u"m3u.import.title"_s)), {}, 0};
    watch(work);
    int entries = 0;
    bool goesOn = load(work, files);
    if (goesOn) {
        entries = target ? m3u.Insert(*target, list) : m3u.Append(list);
        work.errors = m3u.failures();
        goesOn = !m3u.wasGivenUp();
    }
    work.window.reset();
    m3u.events = {};
    tell(goesOn ? counted(u"m3u.inserted"_s, entries)
                : m_parts.texts.text(u"m3u.insert.cancelled"_s));
    tellEntered(work);
    askForLog(work);
    return entries > 0;
}

/// A text with a number, in the form that fits it.
QString M3uCommands::counted(const QString& key, int count) const
{
    return countedText(m_parts.texts, key, count);
}

void M3uCommands::askForLog(const Work& work)
{
    if (work.errors == 0) {
        return;
    }
    const WarningAnswer answer = m_parts.warnings.ShowWarning(
        m_parts.texts.text(u"warnM3UErrors"_s), WarningType::Question,
        m_parts.texts.text(u"achtung"_s), u"warnM3UErrors"_s, u"warnM3UErrors.plctl"_s);
    if (answer == WarningAnswer::Yes) {
        // The place is told in any case: whether the desktop's program really shows it is not seen.
        const QString file = m_parts.m3u.logFile();
        const bool isOpened = m_parts.openFile(file);
        tell(m_parts.texts.text(isOpened ? u"m3u.log.opened"_s : u"m3u.log.noopener"_s, file));
    }
}

QString M3uCommands::askTarget(Pnid list)
{
    const QString name = m_parts.m3u.fileNameOf(list) + u".m3u"_s;
    const QString chosen =
        m_parts.chooser.saveFile({m_parts.texts.text(u"m3u.save.title"_s),
                                  path::join(rememberedFolder(kSaveFolder), name),
                                  m_parts.texts.text(u"m3u.kind"_s),
                                  {u"*.m3u"_s}});
    if (chosen.isEmpty()) {
        return {};
    }
    remember(kSaveFolder, chosen);
    // The dialog asked about the name that was typed, not about the one with its extension.
    const QString target = m3uline::withExtension(chosen);
    const bool isOther = target != chosen && m_parts.files.fileExists(target);
    const bool mayReplace = !isOther || m_parts.warnings.ShowWarning(
                                            m_parts.texts.text(u"m3u.save.replace"_s, target),
                                            WarningType::Question, m_parts.texts.text(u"achtung"_s),
                                            u"m3u.save.replace"_s) == WarningAnswer::Yes;
    return mayReplace ? target : QString();
}

void M3uCommands::tellLeftOut()
{
    const QStringList& entries = m_parts.m3u.leftOut();
    if (!entries.isEmpty()) {
        m_parts.warnings.ShowWarning(leftOutText(m_parts.texts, entries), WarningType::Note,
                                     m_parts.texts.text(u"m3u.save.title"_s), u"m3u.leftout"_s);
    }
}

void M3uCommands::saveList(Pnid list)
{
    if (m_busy) {
        return;
    }
    if (numberOf(list) == 0) {
        tell(m_parts.texts.text(u"m3u.save.nolist"_s));
        return;
    }
    const QScopedValueRollback busy(m_busy, true);
    QString target = askTarget(list);
    if (target.isEmpty()) {
        return;
    }
    m_lastFailure.clear();
    m_parts.m3u.events = {};
    m_parts.m3u.events.RtError = [this](int, const QString& text, const QString&) {
        m_lastFailure = text;
    };
    const bool done = m_parts.m3u.SavePlaylist(list, target, false, {});
    m_parts.m3u.events = {};
    if (done) {
        tell(m_parts.texts.text(u"m3u.saved"_s, target));
        tellLeftOut();
        return;
    }
    const int number = m_parts.m3u.databaseFailure();
    const QString reason = number != 0 ? databaseFaultText(m_parts.texts, number, m_lastFailure,
                                                           m_parts.settings.DbName())
                                       : systemReasonText(m_parts.texts, m_lastFailure);
    m_parts.warnings.ShowWarning(m_parts.texts.text(u"m3u.save.failed"_s, target, reason),
                                 WarningType::Stop, m_parts.texts.text(u"achtung"_s),
                                 u"m3u.save.failed"_s);
}

} // namespace melovane
