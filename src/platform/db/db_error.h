#pragma once

#include <QString>

#include <stdexcept>

namespace melovane {

/// Error numbers that callers tell apart. They are the numbers of the suite's former engine and are
/// part of what siblings and logs know: keep.
namespace dberror {
/// A statement or expression that the dialect does not allow.
inline constexpr int kSyntax = 3075;
/// A value for a key that is already taken.
inline constexpr int kDuplicateKey = 3022;
/// The database file does not exist.
inline constexpr int kFileNotFound = 3024;
/// A table or query of that name does not exist.
inline constexpr int kObjectNotFound = 3078;
/// The file cannot be opened or is already opened exclusively by somebody else.
inline constexpr int kCannotOpen = 3051;
/// The file is not a database of this suite.
inline constexpr int kUnrecognisedFormat = 3343;
/// An old file of the previous engine, told by its first bytes.
inline constexpr int kPreviousEngineFile = 3447;
/// The file is damaged.
inline constexpr int kCorrupt = 3049;
/// Somebody else held the file for longer than the time-out.
inline constexpr int kLocked = 3260;
/// The set, database or field is read only.
inline constexpr int kReadOnly = 3027;
/// There is no current record.
inline constexpr int kNoCurrentRecord = 3021;
/// The current record was deleted, here or by another program.
inline constexpr int kRecordDeleted = 3167;
/// A field or column name that does not exist in the set.
inline constexpr int kItemNotFound = 3265;
/// Update without AddNew or Edit before it.
inline constexpr int kUpdateWithoutEdit = 3020;
/// A text is longer than its column.
inline constexpr int kFieldTooSmall = 3163;
/// Too few parameters: a name in a statement that is neither a column nor a set parameter.
inline constexpr int kTooFewParameters = 3061;
/// A value does not fit the type of its column.
inline constexpr int kTypeMismatch = 3464;
/// A key column was left null.
inline constexpr int kNullInKey = 3058;
/// A table, query or link of that name exists already.
inline constexpr int kObjectExists = 3012;
/// The disk is full.
inline constexpr int kDiskFull = 3026;
/// A failed read or write.
inline constexpr int kDiskError = 3043;
/// Not enough memory.
inline constexpr int kOutOfMemory = 3035;
/// The object was closed.
inline constexpr int kObjectClosed = 3420;
/// Anything else that the engine reports.
inline constexpr int kOther = 3000;
} // namespace dberror

/// A failed database operation: number, readable text and the statement that failed, if there was
/// one.
class DbError : public std::runtime_error
{
public:
    DbError(int number, QString text, QString statement = {});

    [[nodiscard]] int number() const { return m_number; }

    /// One sentence for a user or a log.
    [[nodiscard]] const QString& text() const { return m_text; }

    /// The statement as the caller wrote it; empty when no statement was involved.
    [[nodiscard]] const QString& statement() const { return m_statement; }

private:
    int m_number;
    QString m_text;
    QString m_statement;
};

} // namespace melovane
