#pragma once

#include "platform/db/definitions.h"

#include <QStringView>

#include <memory>

namespace melovane {

/// A row of a set, wherever it stands now. Comparable within one set and its clones only.
struct Bookmark
{
    qint64 id = -1;

    bool operator==(const Bookmark&) const = default;

    [[nodiscard]] bool isValid() const { return id >= 0; }
};

class Recordset;

/// One column of a set, for reading and writing the current row. Valid as long as its set.
class Field
{
public:
    Field(Recordset& set, int index);

    [[nodiscard]] const FieldDef& definition() const;

    [[nodiscard]] QString Name() const { return definition().Name; }

    [[nodiscard]] FieldType Type() const { return definition().Type; }

    [[nodiscard]] int Size() const { return definition().Size; }

    [[nodiscard]] int Attributes() const { return definition().Attributes; }

    [[nodiscard]] QString DefaultValue() const { return definition().DefaultValue; }

    [[nodiscard]] bool AllowZeroLength() const { return definition().AllowZeroLength; }

    [[nodiscard]] melovane::Value Value() const;
    void SetValue(const melovane::Value& value);

private:
    Recordset* m_set;
    int m_index;
};

/// An ordered set of rows with a current row.
///
/// The keys of all rows are read when it opens; rows are fetched by key when they are looked at, a
/// page at a time. So a set keeps its rows and their order while others write, shows the values of
/// the moment of the fetch, and costs no more than its keys. requery() runs the statement anew.
///
/// A set is updatable unless it comes from distinct, union, group by or an aggregate. In a join
/// every column can be written whose table has its key column in the set.
class Recordset
{
public:
    virtual ~Recordset() = default;

    /// True behind the last row, and in an empty set. (EOF is taken by the C library.)
    [[nodiscard]] virtual bool Eof() const = 0;
    [[nodiscard]] virtual bool Bof() const = 0;

    /// Moves beyond an end stop there. On an empty set they do nothing.
    virtual void MoveFirst() = 0;
    virtual void MoveLast() = 0;
    virtual void MoveNext() = 0;
    virtual void MovePrevious() = 0;

    /// Rows reached so far; the number of rows after MoveLast.
    [[nodiscard]] virtual qint64 RecordCount() const = 0;

    /// Number of rows of the set, known without moving.
    [[nodiscard]] virtual qint64 rowCount() const = 0;

    /// Row number from 0; -1 before the first and behind the last row. Setting a number outside the
    /// set throws kNoCurrentRecord.
    [[nodiscard]] virtual qint64 AbsolutePosition() const = 0;
    virtual void SetAbsolutePosition(qint64 row) = 0;

    [[nodiscard]] virtual Bookmark bookmark() const = 0;
    virtual void SetBookmark(Bookmark mark) = 0;

    /// The row number of a bookmark, or -1.
    [[nodiscard]] virtual qint64 rowOf(Bookmark mark) const = 0;

    /// The row that stands for the same record of its first table as a row of another set does, or
    /// -1: where a track lies in a new order. No record is read.
    [[nodiscard]] virtual qint64 rowOfSame(const Recordset& other, Bookmark mark) const = 0;

    /// The row written by the last Update.
    [[nodiscard]] virtual Bookmark LastModified() const = 0;

    [[nodiscard]] virtual int fieldCount() const = 0;
    [[nodiscard]] virtual const FieldDef& fieldDef(int index) const = 0;

    /// Index of a column by name without regard to case, or -1.
    [[nodiscard]] virtual int fieldIndex(QStringView name) const = 0;

    /// \throws DbError kItemNotFound
    [[nodiscard]] Field Fields(QStringView name);
    [[nodiscard]] Field Fields(int index);

    /// The cell of the current row, or of the row being edited.
    /// \throws DbError kNoCurrentRecord, kRecordDeleted
    [[nodiscard]] virtual Value value(int index) const = 0;
    [[nodiscard]] Value value(QStringView name) const;

    [[nodiscard]] virtual bool Updatable() const = 0;

    /// Starts a new row: all cells null or at their defaults.
    virtual void AddNew() = 0;

    /// Starts changing the current row.
    virtual void Edit() = 0;

    /// Sets a cell of the row started by AddNew or Edit; nothing is written before Update.
    /// \throws DbError kUpdateWithoutEdit, kReadOnly, kFieldTooSmall, kTypeMismatch
    virtual void setValue(int index, const Value& value) = 0;
    void setValue(QStringView name, const Value& value);

    /// Writes the started row, whole or not at all. After AddNew the current row stays as it was
    /// and the new one is LastModified, standing at the end of the set. \throws DbError
    /// kDuplicateKey, kRecordDeleted, kLocked ...
    virtual void Update() = 0;
    virtual void CancelUpdate() = 0;

    /// Deletes the current row (in a join: from the table of its first key).
    virtual void Delete() = 0;

    /// A second set over the same rows with a place of its own; it shares bookmarks and costs
    /// little.
    [[nodiscard]] virtual std::unique_ptr<Recordset> Clone() const = 0;

    /// Runs the statement anew; the first row becomes the current one. Clones keep the old rows.
    virtual void Requery() = 0;

    /// Forgets fetched row contents, so that the next look shows the values of now.
    virtual void Refresh() = 0;

    virtual void Close() = 0;
};

} // namespace melovane
