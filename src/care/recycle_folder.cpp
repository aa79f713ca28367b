#include "care/recycle_folder.h"

#include "care/recycle_script.h"
#include "care/removed_track.h"
#include "platform/system/clock.h"
#include "platform/system/path_text.h"
#include "platform/system/text_file.h"
#include "store/file_locator.h"

#include <QJsonDocument>
#include <QJsonObject>
#include <QSet>

#include <cerrno>

namespace melovane {

using namespace Qt::Literals::StringLiterals;

namespace {

// Names of folders and files that other programs look for: keep.
const QString kFolder = u"MelovaneRecycler"_s;
const QString kDamaged = u"MP3ERROR"_s;
const QString kRecords = u"ReMoveFiles.jsonl"_s;
const QString kList = u"MelovaneRecycler.txt"_s;

/// The size of a record of ten thousand tracks and more.
constexpr qint64 kLargestRecord = qint64{1024} * 1024 * 1024;
/// The largest file that is compared with its copy; an audio file is smaller.
constexpr qint64 kLargestFile = qint64{2} * 1024 * 1024 * 1024;
/// Numbers tried for a name that is taken.
constexpr int kMaxNumber = 10'000;

/// What tells a record from another one: a program that is killed before the file moves has written
/// it, and the next one writes it again.
QString moveOf(const RecycledFile& file)
{
    return file.from + u'\n' + file.to;
}

QByteArray lineOf(const RecycledFile& file)
{
    const QJsonObject record{
        {u"fid"_s, file.fid},   {u"title"_s, file.title},
        {u"from"_s, file.from}, {u"to"_s, file.to},
        {u"rows"_s, file.rows}, {u"moment"_s, file.moment.toString(Qt::ISODateWithMs)}};
    return QJsonDocument(record).toJson(QJsonDocument::Compact) + '\n';
}

std::optional<RecycledFile> recordOf(const QString& folder, const QByteArray& line)
{
    const QJsonObject record = QJsonDocument::fromJson(line).object();
    RecycledFile file;
    file.folder = folder;
    file.fid = record[u"fid"_s].toString();
    file.title = record[u"title"_s].toString();
    file.from = record[u"from"_s].toString();
    file.to = record[u"to"_s].toString();
    file.rows = record[u"rows"_s].toString();
    file.moment = QDateTime::fromString(record[u"moment"_s].toString(), Qt::ISODateWithMs);
    return file.from.isEmpty() || file.to.isEmpty() ? std::nullopt : std::optional(file);
}

/// "a.mp3", "a (2).mp3", "a (3).mp3" ...
QString numbered(const QString& name, int number)
{
    if (number == 1) {
        return name;
    }
    const QString extension = path::extension(name);
    const QString dot = extension.isEmpty() ? QString() : u'.' + extension;
    return u"%1 (%2)"_s.arg(path::baseName(name)).arg(number) + dot;
}

bool isBelow(const QString& file, const QString& folder)
{
    const QStringList parts = path::components(file);
    return file.startsWith(path::withSeparator(folder)) && !parts.contains(u".."_s) &&
           !parts.contains(u"."_s);
}

} // namespace

RecycleFolder::RecycleFolder(RecycleParts parts)
    : m_parts(std::move(parts))
{}

/// Makes a folder, or takes one that is there; never what a link leads to.
bool RecycleFolder::makeOwnFolder(const QString& folder)
{
    if (!m_parts.files.facts(folder)) {
        m_parts.files.makeFolder(folder);
    }
    const auto facts = m_parts.files.facts(folder);
    return facts && facts->isFolder && !facts->isLink;
}

/// The folder in a recycle folder that a file belongs into; empty when there is none.
/// \param file without links
QString RecycleFolder::folderFor(const QString& file, Reason reason, QString& recycler)
{
    const QString root = m_parts.files.volume(file).root;
    QStringList parts = path::components(path::parent(file)).mid(1);
    recycler = path::join(root, kFolder);
    const bool isOnVolume = !root.isEmpty() && isBelow(file, root) && makeOwnFolder(recycler) &&
                            m_parts.files.canList(recycler);
    if (isOnVolume) {
        parts = parts.mid(path::components(root).size() - 1);
    } else {
        recycler = path::join(m_parts.homeFolder, kFolder);
        if (!m_parts.files.makeFolders(m_parts.homeFolder) || !makeOwnFolder(recycler)) {
            return {};
        }
    }
    if (reason == Reason::Damaged) {
        parts.prepend(kDamaged);
    }
    QString folder = recycler;
    for (const QString& part : parts) {
        folder = path::join(folder, part);
        if (!makeOwnFolder(folder)) {
            return {};
        }
    }
    return folder;
}

/// False when the name is taken. \throws IoError
bool RecycleFolder::moveTo(const QString& file, const QString& target, const CopyStep& step)
{
    Files& files = m_parts.files;
    try {
        files.rename(file, target);
        return true;
    } catch (const IoError& error) {
        if (error.number() == EEXIST) {
            return false;
        }
        if (error.number() != EXDEV) {
            throw;
        }
    }
    if (files.names(path::parent(target)).contains(path::fileName(target))) {
        return false;
    }
    if (files.facts(file).value_or(FileFacts()).isLink) {
        throw IoError(file, u"a link to another volume"_s);
    }
    if (!files.copyInSteps(file, target, step)) {
        throw IoError(file, u"given up"_s);
    }
    if (files.read(file, kLargestFile) != files.read(target, kLargestFile) || !files.remove(file)) {
        files.remove(target);
        throw IoError(file, u"the copy is not the same"_s);
    }
    return true;
}

bool RecycleFolder::take(const RemovedTrack& track, Reason reason, const CopyStep& step)
{
    if (track.isOnDisc) {
        return false;
    }
    QString folder = track.path;
    const QString stored =
        FileLocator(m_parts.files, m_parts.dataFolder).ExistFile(folder, track.name);
    const QString place = m_parts.files.canonical(path::parent(stored));
    if (place.isEmpty() || !m_parts.files.fileExists(stored)) {
        return false;
    }
    // Its folder without links: a link that is the file itself is moved itself.
    const QString file = path::join(place, path::fileName(stored));
    if (path::components(file).contains(kFolder)) {
        return false;
    }
    try {
        RecycledFile record{.fid = track.fid,
                            .title = track.title,
                            .from = file,
                            .rows = track.rows,
                            .moment = m_parts.clock.now()};
        const QString target = folderFor(file, reason, record.folder);
        if (target.isEmpty()) {
            return false;
        }
        remember(record.folder);
        for (int number = 1; number < kMaxNumber; ++number) {
            record.to = path::join(target, numbered(path::fileName(file), number));
            if (m_parts.files.facts(record.to)) {
                continue;
            }
            write(record);
            if (moveTo(file, record.to, step)) {
                writeScripts(record);
                return true;
            }
        }
    } catch (const IoError&) {
        // It stays where it is, or its record tells the way back without the scripts.
    }
    return false;
}

void RecycleFolder::write(const RecycledFile& file)
{
    m_parts.files.append(path::join(file.folder, kRecords), lineOf(file));
}

QByteArray RecycleFolder::batchLine(const RecycledFile& file) const
{
    const QString folder = path::withSeparator(path::parent(file.from));
    return recyclescript::batchLine(file.to, folder).toUtf8();
}

QByteArray RecycleFolder::shellLine(const RecycledFile& file) const
{
    return recyclescript::shellLine(m_parts.systemName(file.to), m_parts.systemName(file.from));
}

void RecycleFolder::writeScripts(const RecycledFile& file)
{
    const QString shell = path::join(file.folder, recyclescript::kShell);
    const bool isThere = m_parts.files.facts(shell).has_value();
    m_parts.files.append(shell,
                         (isThere ? QByteArray() : recyclescript::shellHead()) + shellLine(file));
    m_parts.files.append(path::join(file.folder, recyclescript::kBatch), batchLine(file));
}

QStringList RecycleFolder::folders() const
{
    const QString list = path::join(m_parts.dataFolder, kList);
    try {
        return m_parts.files.fileExists(list)
                   ? textfile::lines(QString::fromUtf8(m_parts.files.read(list, kLargestRecord)))
                   : QStringList();
    } catch (const IoError&) {
        return {};
    }
}

void RecycleFolder::remember(const QString& recycler)
{
    if (!folders().contains(recycler)) {
        m_parts.files.append(path::join(m_parts.dataFolder, kList), recycler.toUtf8() + '\n');
    }
}

std::vector<RecycledFile> RecycleFolder::all() const
{
    std::vector<RecycledFile> result;
    QHash<QString, size_t> known;
    for (const QString& folder : folders()) {
        const QString records = path::join(folder, kRecords);
        if (!m_parts.files.fileExists(records)) {
            continue;
        }
        for (const QByteArray& line : m_parts.files.read(records, kLargestRecord).split('\n')) {
            std::optional<RecycledFile> file = recordOf(folder, line);
            if (!file || !isBelow(file->to, folder) || !isBelow(file->from, reachOf(folder))) {
                continue;
            }
            file->isHere = m_parts.files.fileExists(file->to);
            if (!file->isHere && !m_parts.files.fileExists(file->from)) {
                continue;
            }
            const auto former = known.constFind(moveOf(*file));
            if (former != known.cend()) {
                result[*former] = std::move(*file);
            } else {
                known.insert(moveOf(*file), result.size());
                result.push_back(std::move(*file));
            }
        }
    }
    return result;
}

/// Where files of a recycle folder may go to. Whoever had a stick in his hands could have written
/// its side record, which must not reach other files of the user.
QString RecycleFolder::reachOf(const QString& recycler) const
{
    const bool isAtHome = recycler == path::join(m_parts.homeFolder, kFolder);
    return isAtHome ? u"/"_s : path::parent(recycler);
}

/// The same when links inside of it are followed. \throws IoError
void RecycleFolder::requireOwnPlace(const QString& file, const QString& reach) const
{
    const QString place = m_parts.files.canonical(path::parent(file));
    const QString own = m_parts.files.canonical(reach);
    if (own.isEmpty() || !path::withSeparator(place).startsWith(path::withSeparator(own))) {
        throw IoError(file, u"a link leads out of the folder"_s);
    }
}

void RecycleFolder::putBack(const RecycledFile& file, const CopyStep& step)
{
    if (!file.isHere) {
        return;
    }
    requireOwnPlace(file.to, file.folder);
    if (!m_parts.files.makeFolders(path::parent(file.from))) {
        throw IoError(path::parent(file.from), u"the folder cannot be made"_s);
    }
    requireOwnPlace(file.from, reachOf(file.folder));
    if (!moveTo(file.to, file.from, step)) {
        throw IoError(file.from, u"File exists"_s, EEXIST);
    }
}

/// Lines with their ends; none for a file that is not there.
QList<QByteArray> RecycleFolder::linesOf(const QString& folder, QStringView name) const
{
    const QString file = path::join(folder, name);
    if (!m_parts.files.fileExists(file)) {
        return {};
    }
    QList<QByteArray> lines = m_parts.files.read(file, kLargestRecord).split('\n');
    const QByteArray rest = lines.takeLast();
    for (QByteArray& line : lines) {
        line += '\n';
    }
    return rest.isEmpty() ? lines : lines << rest;
}

void RecycleFolder::replaceLines(const QString& folder,
                                 QStringView name,
                                 const QList<QByteArray>& lines)
{
    const QString file = path::join(folder, name);
    if (!lines.isEmpty()) {
        m_parts.files.writeWhole(file, lines.join());
    } else if (m_parts.files.fileExists(file)) {
        m_parts.files.remove(file);
    }
}

void RecycleFolder::forget(const std::vector<RecycledFile>& files)
{
    struct Gone
    {
        QSet<QString> moves;
        QSet<QByteArray> batch;
    };

    QHash<QString, Gone> gone; // by folder
    for (const RecycledFile& file : files) {
        gone[file.folder].moves << moveOf(file);
        gone[file.folder].batch << batchLine(file);
    }
    for (auto folder = gone.cbegin(); folder != gone.cend(); ++folder) {
        QList<QByteArray> batch = linesOf(folder.key(), recyclescript::kBatch);
        batch.removeIf([&](const QByteArray& line) { return folder->batch.contains(line); });
        QList<QByteArray> records = linesOf(folder.key(), kRecords);
        records.removeIf([&](const QByteArray& line) {
            const auto record = recordOf(folder.key(), line);
            return record && folder->moves.contains(moveOf(*record));
        });
        QList<QByteArray> shell;
        for (const QByteArray& line : records) {
            if (const auto left = recordOf(folder.key(), line)) {
                shell.append(shellLine(*left));
            }
        }
        if (!shell.isEmpty()) {
            shell.prepend(recyclescript::shellHead());
        }
        replaceLines(folder.key(), recyclescript::kBatch, batch);
        replaceLines(folder.key(), recyclescript::kShell, shell);
        // The last one: until it is written the files are known.
        replaceLines(folder.key(), kRecords, records);
    }
}

} // namespace melovane
