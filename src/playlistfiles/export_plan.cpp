#include "playlistfiles/export_plan.h"

#include "config/global_settings.h"
#include "platform/db/database.h"
#include "platform/db/recordset.h"
#include "platform/db/sql_text.h"
#include "platform/system/files.h"
#include "platform/system/path_text.h"
#include "platform/system/timers.h"
#include "playlistfiles/m3u_writer.h"
#include "playlistfiles/template_path.h"
#include "store/file_locator.h"
#include "store/track_fields.h"

#include <QHash>
#include <QSet>

namespace melovane {

using namespace Qt::Literals::StringLiterals;

namespace {

/// Files looked for between two turns of the message loop.
constexpr size_t kFilesPerTurn = 20;

std::unique_ptr<Recordset> openRows(Database& database, Pnid list)
{
    return database.OpenRecordset(u"select * from vpl_save where nid="_s +
                                  sql::number(numberOf(list)));
}

TemplateValues valuesOf(const Recordset& row)
{
    using F = TrackField;
    const auto text = [&row](QStringView column) { return row.value(column).toText(); };
    return {text(u"GroupName"),       text(columnOf(F::Album)), text(columnOf(F::Interpret)),
            text(columnOf(F::Titel)), text(columnOf(F::Genre)), text(u"plname"),
            text(columnOf(F::DName)), text(columnOf(F::Track))};
}

ExportPlan readRows(const ExportParts& parts, const ExportOrder& order)
{
    const auto database = parts.engine.OpenDatabase(parts.settings.DbName());
    const auto rows = openRows(*database, order.list);
    ExportPlan plan;
    if (order.withData) {
        plan.header = m3uline::head();
    }
    const qint64 count = rows->rowCount();
    plan.items.reserve(size_t(count));
    const M3uEntryLines lines(*rows);
    Template2Path paths(order.pathTemplate);
    for (; !rows->Eof(); rows->MoveNext()) {
        if (plan.listFile.isEmpty()) {
            plan.listFile =
                path::join(order.folder, m3uline::fileName(rows->value(u"plname")) + u".m3u"_s);
        }
        ExportItem item;
        item.Path = rows->value(columnOf(TrackField::Path)).toText();
        item.DName = rows->value(columnOf(TrackField::DName)).toText();
        item.relative = paths.path(valuesOf(*rows), qint64(plan.items.size()) + 1, count);
        item.lines = (order.withData ? lines.of(*rows) : QString()) + m3uline::place(item.relative);
        plan.items.push_back(std::move(item));
    }
    plan.leftOut = M3uWriter(*database, parts.files).withoutTrack(order.list);
    return plan;
}

/// False when `goOn` said no.
bool locateFiles(const ExportParts& parts, ExportPlan& plan, const std::function<bool()>& goOn)
{
    size_t looked = 0;
    for (ExportItem& item : plan.items) {
        QString folder = item.Path;
        const QString place = parts.locator.ExistFile(folder, item.DName);
        const auto facts = parts.files.facts(place);
        if (facts && !facts->isFolder) {
            item.source = place;
            item.size = facts->size;
        }
        if (++looked % kFilesPerTurn == 0) {
            parts.loop.turn();
            if (!goOn()) {
                return false;
            }
        }
    }
    return true;
}

/// Identities of what stands at a place.
struct ThingsAt
{
    QString file; ///< behind all its names and links; empty for a folder, or when there is none
    QString link; ///< of the place itself, by whatever way to its folder; empty when it is none

    /// What a copy to this place replaces: a link itself, never what it leads to.
    [[nodiscard]] const QString& replaced() const { return link.isEmpty() ? file : link; }

    [[nodiscard]] bool holds(const QString& identity) const
    {
        return identity == file || (!link.isEmpty() && identity == link);
    }
};

ThingsAt thingsAt(const Files& files, const QString& place)
{
    const auto facts = files.facts(place);
    if (!facts || facts->isFolder) {
        return {};
    }
    return {u"%1:%2"_s.arg(facts->device).arg(facts->inode),
            facts->isLink ? path::join(files.canonical(path::parent(place)), path::fileName(place))
                          : QString()};
}

/// Which of these files belong to tracks of the library, by whatever path those are known: through
/// a link, or a path of another machine that leads here.
QSet<QString> libraryFiles(const ExportParts& parts, const QHash<QString, QString>& files)
{
    // A statement of a few ten thousand letters; each goes through the library once.
    constexpr qsizetype kNamesPerStatement = 400;
    QSet<QString> wanted;
    QStringList names;
    for (auto file = files.cbegin(); file != files.cend(); ++file) {
        wanted.insert(file.value());
        names.append(sql::text(path::fileName(file.key())));
    }
    names.removeDuplicates();
    QSet<QString> found;
    const auto database = parts.engine.OpenDatabase(parts.settings.DbName());
    for (qsizetype at = 0; at < names.size(); at += kNamesPerStatement) {
        const auto rows =
            database->OpenRecordset(u"select Path, DName from db_all where DName in ("_s +
                                    names.mid(at, kNamesPerStatement).join(u',') + u')');
        for (; !rows->Eof(); rows->MoveNext()) {
            QString folder = rows->value(0).toText();
            const QString place = parts.locator.ExistFile(folder, rows->value(1).toText());
            const ThingsAt things = thingsAt(parts.files, place);
            for (const QString& identity : {things.file, things.link}) {
                if (wanted.contains(identity)) {
                    found.insert(identity);
                }
            }
        }
    }
    return found;
}

/// The files that other tracks live in must outlive an export into their own folder.
void guardLibrary(const ExportParts& parts, const QString& folder, ExportPlan& plan)
{
    QSet<QString> sources;
    QHash<QString, QString> present;
    for (const ExportItem& item : plan.items) {
        const ThingsAt source = thingsAt(parts.files, item.source);
        sources.insert(source.file);
        sources.insert(source.link);
        const QString target = path::join(folder, item.relative);
        const QString there = thingsAt(parts.files, target).replaced();
        if (!there.isEmpty() && !source.holds(there)) {
            present.insert(target, there);
        }
    }
    if (present.isEmpty()) {
        return;
    }
    const QSet<QString> known = libraryFiles(parts, present);
    for (ExportItem& item : plan.items) {
        const QString there = present.value(path::join(folder, item.relative));
        item.hitsLibrary = !there.isEmpty() && !thingsAt(parts.files, item.source).holds(there) &&
                           (sources.contains(there) || known.contains(there));
    }
}

} // namespace

ExportSubject readSubject(const ExportParts& parts, Pnid list)
{
    const auto database = parts.engine.OpenDatabase(parts.settings.DbName());
    const auto name = database->OpenRecordset(u"select name from pl_name where nid="_s +
                                              sql::number(numberOf(list)));
    ExportSubject subject;
    if (!name->Eof()) {
        subject.name = name->value(u"name").toText();
        subject.entries = openRows(*database, list)->rowCount();
    }
    return subject;
}

std::optional<ExportPlan>
planExport(const ExportParts& parts, const ExportOrder& order, const std::function<bool()>& goOn)
{
    ExportPlan plan = readRows(parts, order);
    if (!locateFiles(parts, plan, goOn)) {
        return {};
    }
    guardLibrary(parts, order.folder, plan);
    return plan;
}

qint64 ExportPlan::spaceNeeded(const Files& files, const QString& folder, qint64 block) const
{
    const auto rounded = [block](qint64 size) { return (size + block - 1) / block * block; };
    QHash<QString, qint64> onDisk;
    QSet<QString> newFolders;
    qint64 used = 0;
    qint64 peak = 0;
    for (const ExportItem& item : items) {
        if (item.source.isEmpty() || item.hitsLibrary) {
            continue;
        }
        const QString target = path::join(folder, item.relative);
        for (QString above = path::parent(target);
             above.size() > folder.size() && !newFolders.contains(above) &&
             !files.folderExists(above);
             above = path::parent(above)) {
            newFolders.insert(above);
            used += block;
        }
        if (!onDisk.contains(target)) {
            const auto present = files.facts(target);
            const bool givesBack = present && !present->isFolder && !present->isLink;
            onDisk.insert(target, givesBack ? rounded(present->size) : 0);
        }
        // The new file stands beside the old one until it is whole.
        peak = qMax(peak, used + rounded(item.size));
        used += rounded(item.size) - onDisk[target];
        onDisk[target] = rounded(item.size);
    }
    qint64 listSize = header.toUtf8().size();
    for (const ExportItem& item : items) {
        listSize += item.lines.toUtf8().size();
    }
    return qMax(peak, used + rounded(listSize));
}

} // namespace melovane
