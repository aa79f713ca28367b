#include "care/health.h"

#include "care/backup_desk.h"
#include "care/last_check.h"
#include "config/config_objects.h"
#include "config/global_settings.h"
#include "config/moment_text.h"
#include "config/paths.h"
#include "platform/db/database.h"
#include "platform/db/db_error.h"
#include "platform/system/clock.h"
#include "platform/system/files.h"
#include "platform/system/path_text.h"
#include "playlists/history_file.h"

#include <QLocale>

#include <set>

namespace melovane {

using namespace Qt::Literals::StringLiterals;

namespace {

/// Beside the library: \see CheckDatabase.
const QString kTreeFile = u"melovane.tree.mdb"_s;

/// A backup of the day is made at each first start of a day.
constexpr int kOldBackupDays = 7;

HealthSection programs(const HealthParts& parts)
{
    HealthSection section{parts.texts.text(u"health.programs"), {}};
    const std::vector<PublishedControl> published = publishedControls(parts.settings.toolBox());
    const std::vector<LiveProgram> live = parts.programs();
    std::set<qint64> named; // processes of which a control is published
    for (const LiveProgram& program : live) {
        if (program.process > 0 && !keysOf(program.handle, published).isEmpty()) {
            named.insert(program.process);
        }
    }
    for (const LiveProgram& program : live) {
        const QString keys = keysOf(program.handle, published).join(u", "_s);
        // A program has further controls for itself; of one without a name the first is shown.
        if (keys.isEmpty() && program.process > 0 && !named.insert(program.process).second) {
            continue;
        }
        const QString process = program.process > 0 ? QString::number(program.process) : u"?"_s;
        section.lines.push_back(
            {program.name, parts.texts.text(u"health.program", program.handle, process, keys)});
    }
    if (section.lines.empty()) {
        section.lines.push_back({parts.texts.text(u"health.programs.none"), {}, false});
    }
    return section;
}

/// What is shown of each row.
QStringList textsOf(Database& database,
                    const QString& statement,
                    const std::function<QString(const WalkedRow&)>& shown)
{
    QStringList found;
    database.walkRows(statement, [&](const WalkedRow& row) { found.append(shown(row)); });
    return found;
}

qint64 count(Database& database, const QString& statement)
{
    qint64 result = 0;
    database.walkRows(statement, [&result](const WalkedRow& row) { result = row.number(0); });
    return result;
}

HealthSection waiting(const HealthParts& parts)
{
    const ConfigObjects& texts = parts.texts;
    HealthSection section{texts.text(u"health.waiting"), {}};
    const auto add = [&](QStringView what, const QString& value) {
        section.lines.push_back(
            {texts.text(what), value.isEmpty() ? texts.text(u"health.nothing") : value});
    };
    try {
        const auto database = parts.engine.OpenDatabase(parts.settings.DbName());
        add(u"health.todo",
            textsOf(*database, u"select id, count(*) from todo group by id order by id"_s,
                    [&texts](const WalkedRow& row) {
                        return texts.text(u"health.todo.row", row.number(0), row.number(1));
                    })
                .join(u", "_s));
        const qint64 tags =
            count(*database, u"select count(*) from (select distinct fid from db_edit)"_s);
        add(u"health.tags", tags > 0 ? texts.text(u"health.tracks", tags) : QString());
        add(u"health.trees", textsOf(*database, u"select distinct TreeName from ChangeTree"_s,
                                     [](const WalkedRow& row) { return row.text(0); })
                                 .join(u", "_s));
        const qint64 lists = count(*database, u"select count(*) from VPLGROUP_SAVE"_s);
        add(u"health.lists", lists > 0 ? QString::number(lists) : QString());
    } catch (const DbError& error) {
        section.lines.push_back({texts.text(u"health.library.unread"), error.text(), true});
    }
    return section;
}

HealthSection messages(const HealthParts& parts)
{
    HealthSection section{parts.texts.text(u"health.messages"), {}};
    for (const QString& line : parts.messages()) {
        section.lines.push_back({line, {}, false});
    }
    if (section.lines.empty()) {
        section.lines.push_back({parts.texts.text(u"health.messages.none"), {}, false});
    }
    return section;
}

HealthSection safety(const HealthParts& parts)
{
    const ConfigObjects& texts = parts.texts;
    HealthSection section{texts.text(u"health.safety"), {}};
    const std::vector<Backup> backups = parts.backups();
    if (backups.empty()) {
        section.lines.push_back({texts.text(u"health.backup"), texts.text(u"health.never"), true});
    } else {
        const Backup& last = backups.front();
        const bool isOld = last.made.daysTo(parts.clock.now()) > kOldBackupDays;
        section.lines.push_back(
            {texts.text(u"health.backup"),
             texts.text(u"health.backup.last", momentText(texts, last.made),
                        backupStateText(texts, last.state), qint64(backups.size())),
             isOld || last.state == BackupState::Damaged});
    }
    const auto check = lastCheck(parts.settings, parts.settings.DbName());
    const QString found =
        !check ? texts.text(u"health.never")
        : check->findings == 0
            ? texts.text(u"health.check.whole", momentText(texts, check->moment))
            : texts.text(u"health.check.found", momentText(texts, check->moment), check->findings);
    section.lines.push_back({texts.text(u"health.check"), found, check && check->findings > 0});
    return section;
}

HealthSection places(const HealthParts& parts)
{
    const ConfigObjects& texts = parts.texts;
    HealthSection section{texts.text(u"health.paths"), {}};
    const QString library = parts.settings.DbName();
    const QString data = parts.paths.GetConfigPath();
    const auto add = [&](QStringView what, const QString& place, bool isNeeded) {
        const bool isThere =
            !place.isEmpty() && (parts.files.fileExists(place) || parts.files.folderExists(place));
        const auto facts = isThere ? parts.files.facts(place) : std::nullopt;
        QString value = place;
        if (!isThere) {
            value = texts.text(u"health.missing", place);
        } else if (facts && !facts->isFolder) {
            value += u"  ("_s + QLocale(texts.text(u"Sprach.Code")).formattedDataSize(facts->size) +
                     u')';
        }
        section.lines.push_back({texts.text(what), value, isNeeded && !isThere});
    };
    add(u"health.path.library", library, true);
    add(u"health.path.trees", path::join(path::parent(library), kTreeFile), true);
    add(u"health.path.history", historyFileOf(library), false);
    add(u"health.path.settings", path::join(data, parts.settings.SetIniFilename()), true);
    add(u"health.path.data", data, true);
    add(u"health.path.lists", parts.settings.PlaylistVerzeichnis(), true);
    add(u"health.path.program", parts.paths.programFolder(), true);
    add(u"health.path.runtime", parts.runtimeFolder, true);
    return section;
}

} // namespace

std::vector<HealthSection> healthOf(const HealthParts& parts)
{
    return {programs(parts), waiting(parts), messages(parts), safety(parts), places(parts)};
}

QString healthText(const std::vector<HealthSection>& sections)
{
    QString text;
    for (const HealthSection& section : sections) {
        text += (text.isEmpty() ? QString() : u"\n"_s) + section.title + u'\n';
        for (const HealthLine& line : section.lines) {
            text += (line.isAlarming ? u"! "_s : u"  "_s) + line.what +
                    (line.value.isEmpty() ? QString() : u": "_s + line.value) + u'\n';
        }
    }
    return text;
}

} // namespace melovane
