#pragma once

#include "platform/db/value.h"

#include <QString>
#include <QStringView>

#include <functional>
#include <vector>

namespace melovane {

class DBEngine;

/// How a field shows its value; siblings know the numbers: keep.
enum class KsDisplay
{
    Plain = 0,
    Genre = 1,
    Moment = 2,   ///< date and time
    Rating = 3,   ///< "1" to "5"
    Number = 4,   ///< kept as a text
    Setting = 5,  ///< volume and pitch, which no form shows
    Position = 6, ///< frames
    Drive = 7,
    Title = 8, ///< stands in the line of title and artist
    BitRate = 11,
    Level = 14, ///< linear, shown in decibels
};

/// One field of a track in an edit form.
struct KsField
{
    // In the order of the suite's record: keep.

    QString DatabaseName; ///< column
    QString Caption;
    QString Table; ///< "DB_ALL", "DB_PATH" or "Genre"
    Value value;   ///< as it is edited
    Value StoredValue;
    Value PreviousValue; ///< spare
    bool Visible = false;
    KsDisplay Display = KsDisplay::Plain;
    bool ReadOnly = true; ///< never written

    // Layout of the form; nothing in the console reads the first four.
    QString LayoutName;
    QString LayoutGroup;
    int LayoutColumn = 0;
    int LayoutRow = 0;
    bool TagPage = false; ///< stands on the pages of the tag

    /// Whether one of value and StoredValue is null and the other is not, or their texts differ in
    /// more than blanks at their ends.
    [[nodiscard]] bool isChanged() const;
};

/// One track as a list of named fields, each as it was read and as it is now.
///
/// Set db_name, call GetFidData, change values through GetField, ask IsChanged, call UpdateFID. The
/// list is also the catalogue of what an edit form shows of a track.
class KsEditFid
{
public:
    explicit KsEditFid(DBEngine& engine);

    /// File of the database that is read and written.
    [[nodiscard]] const QString& db_name() const { return m_dbName; }

    void setDb_name(const QString& name) { m_dbName = name; }

    /// All fields in their order. "KsFieds" is its spelling everywhere.
    [[nodiscard]] const std::vector<KsField>& KsFieds() const { return m_fields; }

    /// The field of a column without regard to case; null for a name that the list lacks.
    [[nodiscard]] KsField* GetField(QStringView name);
    [[nodiscard]] const KsField* GetField(QStringView name) const;

    /// Reads a track; a null column reads as the empty text. An empty id does nothing, an unknown
    /// one leaves the values as they were. \throws DbError
    void GetFidData(const QString& fid);

    /// Whether a field that can be edited has another value than was read.
    [[nodiscard]] bool IsChanged() const;

    /// Writes the changed fields that can be edited and enters the track for its tags, also when
    /// there are none. The values that were read stay: who goes on editing reads anew.
    /// \throws DbError, also for an unknown id; nothing is written then
    void UpdateFID(const QString& fid);

    /// Hears the name of each field that is about to be written.
    void setFieldWritten(std::function<void(const QString& field)> hear)
    {
        m_fieldWritten = std::move(hear);
    }

private:
    DBEngine& m_engine;
    QString m_dbName;
    std::vector<KsField> m_fields;
    std::function<void(const QString& field)> m_fieldWritten;
};

} // namespace melovane
