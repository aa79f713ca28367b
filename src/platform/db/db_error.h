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
/// Another program was given the file for itself, see DBEngine::GiveAway.
inline constexpr int kReleased = 3045;
/// The set, database or field is read only.
inline constexpr int kReadOnly = 3027;
/// The column of a set is an expression or an auto-number and cannot be written.
inline constexpr int kFieldReadOnly = 3164;
/// There is no current record.
inline constexpr int kNoCurrentRecord = 3021;
/// A bookmark that is not of this set.
inline constexpr int kBookmarkInvalid = 3159;
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
/// A statement that gives rows was executed, or one that gives none was opened as a set.
inline constexpr int kSelectExecuted = 3065;
inline constexpr int kInvalidOperation = 3219;
/// A value does not fit the type of its column.
inline constexpr int kTypeMismatch = 3464;
/// A key column was left null.
inline constexpr int kNullInKey = 3058;
/// A column that must have a value was left null.
inline constexpr int kRequired = 3314;
/// An empty text for a column that takes none.
inline constexpr int kZeroLength = 3315;
/// A table, query or link of that name exists already.
inline constexpr int kObjectExists = 3012;
/// A database file of that name exists already.
inline constexpr int kDatabaseExists = 3204;
/// A column, index or primary key of that name stands in the table already.
inline constexpr int kFieldTwice = 3191;
inline constexpr int kIndexExists = 3284;
inline constexpr int kPrimaryExists = 3283;
/// A column that an index needs cannot go.
inline constexpr int kFieldInIndex = 3280;
/// A table or an index without columns.
inline constexpr int kNoFields = 3264;
/// The disk is full.
inline constexpr int kDiskFull = 3026;
/// A failed read or write.
inline constexpr int kDiskError = 3043;
/// Not enough memory.
inline constexpr int kOutOfMemory = 3035;
/// The object was closed.
inline constexpr int kObjectClosed = 3420;
/// A commit without a transaction.
inline constexpr int kNoTransaction = 3034;
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
