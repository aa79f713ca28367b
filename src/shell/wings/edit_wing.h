#pragma once

#include "bus/event_guard.h"
#include "platform/linux/id3_cover.h"
#include "platform/linux/linux_files.h"
#include "platform/linux/linux_tag_writer.h"
#include "platform/qt/qt_picture_maker.h"
#include "platform/qt/qt_worker.h"
#include "shell/mlvdb_parts.h"
#include "trackedit/cover_change.h"
#include "trackedit/covers.h"
#include "trackedit/edit_tag.h"

#include <QSet>

namespace melovane {

struct Desk;
struct ListsWing;
struct Machine;
struct SuiteWing;

/// The tag panel, and the covers of tracks.
struct EditWing
{
    EditWing(Machine& machine, Desk& desk, SuiteWing& suite, ListsWing& lists);

    /// Files that a tag tool has left under half of their new names when it was killed get those of
    /// their rows, as by the next tag tool. To be called when the library can be opened.
    void mendNames();

    /// What the main window asks of the panel.
    [[nodiscard]] TagPanelCommands commands();

    /// The picture file of a track for the information tree, empty for none. One that stands in the
    /// tag alone is taken out of it, which is told by "db.refresh.by.fid" when it is done.
    [[nodiscard]] QString coverOf(const MlvAllData& track);

    Machine& machine;
    SuiteWing& suite;
    ListsWing& lists;
    Desk& desk;
    bool isOfLibrary = true; ///< the view that opened the panel last
    linux_media::Id3CoverReader coverReader;
    linux_media::LinuxTagWriter tagWriter;
    QtPictureMaker pictures;
    EventGuard guard;
    LinuxFiles coverFiles; ///< of the worker: what one of them remembers is for one thread alone
    Covers covers;
    CoverChange coverChange;
    EditTag panel;

private:
    [[nodiscard]] EditTagParts parts();
    [[nodiscard]] CoverChange::Parts coverParts();
    void saveCover(const Covers::Track& track, const QString& image);
    void nameCover(const QString& fid, const QString& image);
    void takenOut(const QString& fid, const QString& former, const QString& image);
    void focusRows();
    [[nodiscard]] QString unwritten(const QString& fid) const;

    QSet<QString> m_askedCovers; ///< tracks whose tags were looked into for a cover
    QtWorker m_worker;           ///< the last member: it ends before all that it works on
};

} // namespace melovane
