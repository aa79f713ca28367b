#include "shell/wings/edit_wing.h"

#include "bus/message_names.h"
#include "library/ui/mp3db_widget.h"
#include "platform/linux/job_locks.h"
#include "platform/system/path_text.h"
#include "playlistview/ui/playlist_widget.h"
#include "shell/wings/desk.h"
#include "shell/wings/lists_wing.h"
#include "shell/wings/machine.h"
#include "shell/wings/suite_wing.h"
#include "store/track_writing.h"
#include "tagbench/rename_journal.h"
#include "trackedit/save_image.h"
#include "trackedit/ui/edit_tag_widget.h"
#include "trackedit/unwritten_tags.h"

namespace melovane {

using namespace Qt::Literals::StringLiterals;

namespace {

/// Folder of the journals of tag writers, below the configuration path: the same for all programs
/// of the suite, keep.
constexpr QStringView kTagJournal = u"tagjournal";

} // namespace

EditWing::EditWing(Machine& base, Desk& room, SuiteWing& talk, ListsWing& steps)
    : machine(base)
    , suite(talk)
    , lists(steps)
    , desk(room)
    , tagWriter(path::join(base.paths.GetConfigPath(), kTagJournal))
    , guard(
          base.texts,
          [&base] { return base.settings.DbName(); },
          [&talk](const QString& text) { talk.showStatusText(text); },
          base.log())
    , covers({.files = base.files,
              .workFiles = coverFiles,
              .dataFolder = base.paths.GetConfigPath(),
              .reader = coverReader,
              .pictures = pictures,
              .writer = tagWriter,
              .worker = m_worker})
    , coverChange(coverParts())
    , panel(parts(), room.window.tags())
{
    // What a writer that was killed has left behind.
    m_worker.run([this] { tagWriter.repair(); }, [] {});
}

void EditWing::mendNames()
{
    const QString library = machine.settings.DbName();
    RenameJournal journal(machine.files, library);
    if (!journal.isLeft()) {
        return;
    }
    const QStringList folders{machine.environment.runtimeFolder(), machine.paths.GetConfigPath()};
    guard.run(u"Renames"_s, [&] {
        journal.mend(*machine.engine->OpenDatabase(library),
                     jobClaim(jobLockFile(machine.files, folders, u"tagbench"_s, library)));
    });
}

CoverChange::Parts EditWing::coverParts()
{
    return {.covers = covers,
            .chooser = desk.fileChooser,
            .warnings = desk.warnings,
            .settings = machine.settings,
            .texts = machine.texts,
            .guard = guard,
            .save = [this](const Covers::Track& track,
                           const QString& image) { saveCover(track, image); },
            .name = [this](const QString& fid, const QString& image) { nameCover(fid, image); },
            .changed = [this](const QString& fid) { panel.coverChanged(fid); },
            .tell = [this](const QString& text) { suite.showStatusText(text); }};
}

void EditWing::saveCover(const Covers::Track& track, const QString& image)
{
    SaveImage(lists.history, *machine.engine->OpenDatabase(machine.settings.DbName()), track.fid,
              image, track.image);
}

QString EditWing::coverOf(const MlvAllData& track)
{
    const QString there = covers.fileOf(track.Image);
    if (!there.isEmpty() || track.FID.isEmpty() || m_askedCovers.contains(track.FID)) {
        return there;
    }
    m_askedCovers.insert(track.FID);
    const Covers::Track asked{track.FID, track.Image,
                              machine.locator.placeOf(track.Path + track.DName)};
    const int width =
        machine.settings.GetKeyValueLong(u"Global"_s, u"Import.Image.Max.Size"_s, 500);
    covers.takeOut(asked, width,
                   [this, fid = track.FID, former = track.Image](const QString& image) {
                       takenOut(fid, former, image);
                   });
    return {};
}

/// The track gets the name of its picture; its file has the picture already, so nothing waits to be
/// written into it. \throws DbError
void EditWing::nameCover(const QString& fid, const QString& image)
{
    const std::vector<ColumnValue> values{{u"Image"_s, image}};
    writeTrack(*machine.engine->OpenDatabase(machine.settings.DbName()), fid, values,
               TagOrder::None);
}

void EditWing::takenOut(const QString& fid, const QString& former, const QString& image)
{
    if (image.isEmpty()) {
        return;
    }
    const bool isStored = image == former || guard.run(u"Cover"_s, [&] { nameCover(fid, image); });
    if (isStored) {
        suite.sender.SendMessage(bus::kDbRefreshByFid, fid);
    }
}

EditTagParts EditWing::parts()
{
    return {.engine = *machine.engine,
            .settings = machine.settings,
            .texts = machine.texts,
            .loop = machine.loop,
            .bus = suite.bus,
            .history = lists.history,
            .log = machine.log(),
            .mayWrite = [world = suite.world(machine)] { return !world.isReadOnly(); },
            .placeOf = [this](const QString& file) { return machine.locator.placeOf(file); },
            .unwritten = [this](const QString& fid) { return unwritten(fid); },
            // Its window tries again and lists what fails.
            .showUnwritten =
                [this] {
                    machine.processes.startProgram(
                        path::join(machine.paths.programFolder(), u"Task.WriteTags.exe"), {},
                        Processes::WindowStyle::Normal);
                },
            .run =
                [this](const QString& line) {
                    return machine.processes.start(line, Processes::WindowStyle::Normal);
                },
            .showCover =
                [this](const Covers::Track& track, std::function<void(const QByteArray&)> shown) {
                    covers.show(track, std::move(shown));
                },
            .chooseCover = [this](const Covers::Track& track) { coverChange.choose(track); },
            .left = [this] { focusRows(); }};
}

QString EditWing::unwritten(const QString& fid) const
{
    const auto known = unwrittenOf(machine.files, machine.paths.GetConfigPath(), fid);
    return known ? unwrittenReason(machine.texts, known->fault, known->detail) : QString();
}

TagPanelCommands EditWing::commands()
{
    return {.show =
                [this](const QString& fid, bool edits, bool inLibrary) {
                    isOfLibrary = inLibrary;
                    panel.showTrack(fid, edits);
                },
            .saveState = [this] { panel.end(); }};
}

void EditWing::focusRows()
{
    if (isOfLibrary) {
        desk.window.library().controls().grid.focus();
    } else {
        desk.window.playlist().controls(desk.warnings).grid.focus();
    }
}

} // namespace melovane
