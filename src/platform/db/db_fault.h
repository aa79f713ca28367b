#pragma once

#include "platform/db/db_error.h"

namespace melovane {

/// What can go wrong in the engine. Each kind has one number and one German sentence, both in the
/// table of db_fault.cpp; %1 and %2 of a sentence are the names that stand behind a kind here.
enum class DbFault
{
    // Files
    FileNotFound,       ///< path
    FileCannotBeOpened, ///< path, reason
    FileIsNoFile,       ///< path
    FileEmpty,          ///< path
    FileIsNoDatabase,   ///< path
    FileOfAnother,      ///< path
    FileOfPrevious,     ///< path
    FileCutOff,         ///< path
    FileDamaged,        ///< files, reason
    FileNotWritten,     ///< path
    FileExists,         ///< path
    FileOntoItself,     ///< path
    FileReadOnly,       ///< files
    FileLocked,         ///< files
    FileGivenAway,      ///< path
    DiskFull,           ///< files
    DiskError,          ///< files, reason
    FileReplaced,       ///< path
    OutOfMemory,

    // Catalogue
    ItemNotFound,          ///< name
    SourceNotFound,        ///< table or query
    WorkspaceNotFound,     ///< number
    NameInvalid,           ///< name
    NameTaken,             ///< name
    FieldTwice,            ///< column, table
    FieldNotThere,         ///< column, table
    FieldInIndex,          ///< column, index
    NoFields,              ///< table
    AutoNumberWrong,       ///< table
    IndexTwice,            ///< index, table
    IndexNotThere,         ///< index, table
    IndexWithoutFields,    ///< index, table
    PrimaryTwice,          ///< table
    LinkWithoutFile,       ///< link
    TableOfOtherFile,      ///< table
    DefaultWrong,          ///< column, expression
    ParameterNotThere,     ///< parameter, query
    ParameterWithoutValue, ///< parameter

    // Statements
    OneStatementOnly,
    SelectExecuted,
    ActionOpened,

    // Values
    ValueMismatch, ///< column
    RowNumberMismatch,
    TextTooLong,   ///< column
    TextEmpty,     ///< column
    ValueRequired, ///< column
    KeyNull,       ///< column
    DuplicateKey,  ///< columns

    // Sets
    SetClosed,
    DatabaseClosed,
    NoCurrentRecord,
    BookmarkInvalid,
    RecordDeleted,
    UpdateWithoutEdit,
    SetReadOnly,
    FieldReadOnly,     ///< column
    RowOfTwoTables,    ///< first table, second table
    RowWithoutPartner, ///< table

    // Transactions
    NoTransaction,
    TransactionUndone,
};

/// The error of that kind with its number and its sentence about these names.
[[nodiscard]] DbError dbError(DbFault fault, const QString& first = {}, const QString& second = {});

} // namespace melovane
