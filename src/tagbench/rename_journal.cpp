#include "tagbench/rename_journal.h"

#include "platform/db/database.h"
#include "platform/db/sql_text.h"
#include "platform/system/files.h"
#include "platform/system/path_text.h"

#include <QDataStream>
#include <QIODevice>
#include <QSet>

#include <algorithm>

namespace melovane {

using namespace Qt::Literals::StringLiterals;

namespace {

/// Behind the name of the library; a number follows where there is one already: keep.
const QString kEnding = u".renames"_s;

/// Begins a journal. Keep: a later program mends what this one has left.
constexpr quint32 kMark = 0x4D4C5652;

/// More than any change that is applied at once.
constexpr qint64 kLargestJournal = qint64{256} * 1024 * 1024;

} // namespace

RenameJournal::RenameJournal(Files& files, const QString& library)
    : m_files(files)
    , m_library(library)
{}

QStringList RenameJournal::journals() const
{
    const QString folder = path::parent(m_library);
    const QString beginning = path::fileName(m_library) + kEnding;
    QStringList result;
    for (const QString& name : m_files.names(folder)) {
        if (name.startsWith(beginning)) {
            result.append(path::join(folder, name));
        }
    }
    return result;
}

QString RenameJournal::freeName() const
{
    QString name = m_library + kEnding;
    for (int number = 2; m_files.facts(name); ++number) {
        name = m_library + kEnding + QString::number(number);
    }
    return name;
}

void RenameJournal::begin(const std::vector<FileMove>& moves,
                          const std::vector<MovePlan::Group>& groups,
                          const QStringList& newFolders)
{
    QByteArray bytes;
    QDataStream out(&bytes, QIODevice::WriteOnly);
    out.setVersion(QDataStream::Qt_6_0);
    out << kMark << newFolders;
    for (const MovePlan::Group& group : groups) {
        for (const MoveStep& step : group) {
            const FileMove& move = moves[step.move];
            // A step that goes on from beside moves the same file.
            const auto facts =
                m_files.facts(group.front().move == step.move ? group.front().from : step.from);
            out << move.fid << move.wanted << step.from << step.to << (facts ? facts->size : 0)
                << (facts ? facts->inode : 0) << (group.size() > 1);
        }
    }
    const QString name = freeName();
    m_files.writeWhole(name, bytes);
    m_current = name;
}

void RenameJournal::end()
{
    if (!m_current.isEmpty()) {
        m_files.remove(m_current);
        m_current.clear();
    }
}

bool RenameJournal::read(const QString& journal, Record& record) const
{
    QByteArray bytes;
    try {
        bytes = m_files.read(journal, kLargestJournal);
    } catch (const IoError&) {
        return false;
    }
    QDataStream in(bytes);
    in.setVersion(QDataStream::Qt_6_0);
    quint32 mark = 0;
    in >> mark;
    if (mark != kMark) {
        return false;
    }
    in >> record.newFolders;
    while (in.status() == QDataStream::Ok && !in.atEnd()) {
        Entry entry;
        in >> entry.fid >> entry.wanted >> entry.from >> entry.to >> entry.size >> entry.inode >>
            entry.isInRing;
        record.entries.push_back(std::move(entry));
    }
    return in.status() == QDataStream::Ok;
}

void RenameJournal::mend(Database& database)
{
    for (const QString& journal : journals()) {
        Record record;
        if (read(journal, record) && mendOne(record, database)) {
            m_files.remove(journal);
        }
    }
}

void RenameJournal::mend(Database& database, const ClaimNames& claim)
{
    if (const auto lock = claim ? claim() : nullptr; lock || !claim) {
        mend(database);
    }
}

/// False when a file could not be asked or moved.
bool RenameJournal::mendOne(const Record& record, Database& database)
{
    QSet<QString> renamed; // tracks whose rows have the new name
    for (const Entry& entry : record.entries) {
        const auto row = database.OpenRecordset(u"select Path, DName from db_all where FID="_s +
                                                sql::text(entry.fid));
        if (!row->Eof() &&
            row->value(u"Path").toText() + row->value(u"DName").toText() == entry.wanted) {
            renamed.insert(entry.fid);
        }
    }
    bool isWhole = true;
    for (auto entry = record.entries.rbegin(); entry != record.entries.rend(); ++entry) {
        if (!renamed.contains(entry->fid)) {
            isWhole = move(*entry, entry->to, entry->from) && isWhole;
        }
    }
    for (const Entry& entry : record.entries) {
        if (renamed.contains(entry.fid)) {
            isWhole = move(entry, entry.from, entry.to) && isWhole;
        }
    }
    for (auto folder = record.newFolders.rbegin(); folder != record.newFolders.rend(); ++folder) {
        m_files.removeFolder(*folder);
    }
    return isWhole;
}

/// Names that were swapped are all taken before and behind it: there the file itself must tell. Of
/// all others its size is enough, for a volume that was away may number its files anew.
bool RenameJournal::isOf(const FileFacts& facts, const Entry& entry)
{
    return entry.isInRing ? facts.inode == entry.inode : facts.size == entry.size;
}

/// Moves the file of an entry unless that has happened.
bool RenameJournal::move(const Entry& entry, const QString& from, const QString& to)
{
    const auto there = m_files.facts(from);
    if (!there || m_files.facts(to)) {
        // Neither here nor there: its volume may be away.
        return there || m_files.facts(to) ||
               (m_files.folderExists(path::parent(entry.from)) &&
                m_files.folderExists(path::parent(entry.to)));
    }
    if (!isOf(*there, entry)) {
        return true;
    }
    try {
        m_files.makeFolders(path::parent(to));
        m_files.rename(from, to);
        return true;
    } catch (const IoError&) {
        return false;
    }
}

} // namespace melovane
