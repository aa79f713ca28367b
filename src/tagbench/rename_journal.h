#pragma once

#include "tagbench/move_plan.h"

#include <QString>
#include <QStringList>

#include <functional>
#include <memory>
#include <vector>

namespace melovane {

class Database;
class FileLock;
class Files;
struct FileFacts;

/// Tries to get the only right to rename files of a library: null when another tool has it. Empty
/// where nothing can be locked: then it is taken without asking.
using ClaimNames = std::function<std::unique_ptr<FileLock>()>;

/// What is written down before the first file of a change gets its new name, and forgotten when
/// rows and files agree again. A tool that is killed in between leaves it, and the next
/// tool or the next start of the console makes whole what it says: files whose rows have the new
/// names go on to them, all others go back.
///
/// It lies beside the library, in a file of its own for each change.
class RenameJournal
{
public:
    RenameJournal(Files& files, const QString& library);

    /// \throws IoError, and nothing may be renamed then
    void begin(const std::vector<FileMove>& moves,
               const std::vector<MovePlan::Group>& groups,
               const QStringList& newFolders);

    /// Rows and files agree.
    void end();

    /// Whether something was left beside the library; a look into its folder, no more.
    [[nodiscard]] bool isLeft() const { return !journals().isEmpty(); }

    /// Makes whole what the journals beside the library say. What lies on a volume that is away
    /// waits for the next time. Never replaces a file; a journal that cannot be read stays as it
    /// is. To be called while no other tool renames. \throws DbError
    void mend(Database& database);

    /// The same unless another tool renames now: that one has mended before, or does it next time.
    void mend(Database& database, const ClaimNames& claim);

private:
    struct Entry
    {
        QString fid;
        QString wanted;
        QString from;
        QString to;
        qint64 size = 0;   ///< of the file: another one is not touched
        quint64 inode = 0; ///< the same
        bool isInRing = false;
    };

    struct Record
    {
        std::vector<Entry> entries;
        QStringList newFolders;
    };

    [[nodiscard]] QStringList journals() const;
    [[nodiscard]] QString freeName() const;
    [[nodiscard]] bool read(const QString& journal, Record& record) const;
    [[nodiscard]] bool mendOne(const Record& record, Database& database);
    [[nodiscard]] static bool isOf(const FileFacts& facts, const Entry& entry);
    [[nodiscard]] bool move(const Entry& entry, const QString& from, const QString& to);

    Files& m_files;
    QString m_library;
    QString m_current; ///< the journal of the change that goes on; empty for none
};

} // namespace melovane
