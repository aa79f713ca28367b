#include "intake/intake_library.h"

#include "intake/tag_import.h"
#include "platform/db/db_error.h"
#include "platform/db/sql_text.h"

#include <algorithm>
#include <utility>

namespace melovane {

using namespace Qt::Literals::StringLiterals;

namespace {

/// A portion is committed when it has so many changes or is so old. Others who want to write wait
/// no longer than that, and a killed import loses no more.
constexpr int kPortionChanges = 2000;
constexpr std::chrono::milliseconds kPortionAge{250};

/// Rows of a folder read at once: a few milliseconds.
constexpr int kRowsPerRead = 500;

/// Values of column `DEL`: keep.
constexpr int kMarked = -1;
constexpr int kNormal = 0;
constexpr int kMissing = 2;
constexpr int kMarkedAndMissing = 3;

/// The dialect's word for the type of a column.
QString typeWord(FieldType type)
{
    switch (type) {
    case FieldType::Boolean:
        return u"yesno"_s;
    case FieldType::Long:
        return u"long"_s;
    case FieldType::Double:
        return u"double"_s;
    case FieldType::Date:
        return u"datetime"_s;
    case FieldType::Text:
        return u"text"_s;
    case FieldType::Memo:
        return u"memo"_s;
    }
    return {};
}

/// Parameters whose types are told go into their columns as they are.
QString insertStatement(const TableDef& table)
{
    QStringList declared;
    QStringList parameters;
    for (const QString& column : ImportedTrack::columns()) {
        const QString parameter = u"[p"_s + column + u']';
        const auto field =
            std::find_if(table.Fields.begin(), table.Fields.end(), [&](const FieldDef& candidate) {
                return candidate.Name.compare(column, Qt::CaseInsensitive) == 0;
            });
        if (field != table.Fields.end()) {
            declared.append(parameter + u' ' + typeWord(field->Type));
        }
        parameters.append(parameter);
    }
    return u"parameters "_s + declared.join(u", "_s) + u"; insert into db_all ("_s +
           ImportedTrack::columns().join(u", "_s) + u") values ("_s + parameters.join(u", "_s) +
           u')';
}

int delOfFoundFile(int del)
{
    return del == kMissing ? kNormal : del == kMarkedAndMissing ? kMarked : del;
}

StoredPlace placeFrom(const Recordset& row)
{
    return {row.value(u"FID").toText(),      row.value(u"Path").toText(),
            row.value(u"DName").toText(),    row.value(u"DEL").toLong(),
            row.value(u"DriveTyp").toLong(), row.value(u"DriveName").toText()};
}

/// What a tag doesn't tell stays as it is stored.
void setTexts(Recordset& row, const ImportedTrack& track)
{
    for (const ImportedField& field : ImportedTrack::fields()) {
        const auto text = field.text();
        if (text && field.isFromTag() && !(track.*text).isEmpty()) {
            row.setValue(columnOf(field.field), track.*text);
        }
    }
}

void setPositions(Recordset& row, const ImportedTrack& track)
{
    const int stop = row.value(u"FrameStop").toLong();
    const int wholeBefore = frameStopOf(row.value(u"DTimeMsec").toLong());
    if (stop <= 0 || stop == wholeBefore || stop > track.FrameStop) {
        row.setValue(u"FrameStop", track.FrameStop);
    }
    if (row.value(u"FrameStart").toLong() >= track.FrameStop) {
        row.setValue(u"FrameStart", 0);
    }
}

void setFile(Recordset& row, const ImportedTrack& track)
{
    row.setValue(u"DLen", track.DLen);
    row.setValue(u"DTSDatei", track.DTSDatei);
    row.setValue(u"DEL", delOfFoundFile(row.value(u"DEL").toLong()));
}

void setDrive(Recordset& row, const ImportedTrack& track)
{
    row.setValue(u"DriveTyp", track.DriveTyp);
    row.setValue(u"DriveName", track.DriveName);
}

bool liesWhereStored(const Recordset& row, const ImportedTrack& track)
{
    return row.value(u"Path").toText() == track.Path && row.value(u"DName").toText() == track.DName;
}

QString rowStatement(const QString& fid)
{
    return u"select * from db_all where fid="_s + sql::text(fid);
}

} // namespace

IntakeLibrary::IntakeLibrary(DBEngine& engine, const QString& file)
    : m_database(engine.OpenDatabase(file))
    , m_insert(m_database->CreateQueryDef({}, insertStatement(columns())))
{}

IntakeLibrary::~IntakeLibrary()
{
    dropPortion();
}

TableDef IntakeLibrary::columns()
{
    return m_database->tableDefs().Item(u"db_all"_s);
}

void IntakeLibrary::openFolder(const QString& folder)
{
    m_folder = folder;
    m_folderRows = m_database->OpenRecordset(
        u"select FID, Path, DName, DEL, DriveTyp, DriveName from db_all where Path="_s +
        sql::text(folder));
}

bool IntakeLibrary::readFolder(QHash<QString, StoredPlace>& places)
{
    if (!m_folderRows) {
        return false;
    }
    for (int i = 0; i < kRowsPerRead && !m_folderRows->Eof(); ++i, m_folderRows->MoveNext()) {
        StoredPlace place = placeFrom(*m_folderRows);
        // The statement takes folders that differ in letter case; on disk they are others.
        if (place.Path == m_folder) {
            places.insert(place.DName, place);
        }
    }
    if (m_folderRows->Eof()) {
        m_folderRows.reset();
    }
    return m_folderRows != nullptr;
}

std::optional<StoredPlace> IntakeLibrary::placeOf(const QString& fid)
{
    const auto rows = m_database->OpenRecordset(
        u"select FID, Path, DName, DEL, DriveTyp, DriveName from db_all where FID="_s +
        sql::text(fid));
    return rows->Eof() ? std::nullopt : std::optional(placeFrom(*rows));
}

void IntakeLibrary::openStored()
{
    m_stored = m_database->OpenRecordset(
        u"select FID, Path, DName, DLen, DTSDatei, DEL, DriveTyp from db_all order by Path, DName"_s);
}

qint64 IntakeLibrary::storedCount() const
{
    return m_stored->rowCount();
}

std::optional<StoredFile> IntakeLibrary::nextStored()
{
    if (m_stored->Eof()) {
        return std::nullopt;
    }
    StoredFile file{m_stored->value(0).toText(),     m_stored->value(1).toText(),
                    m_stored->value(2).toText(),     m_stored->value(3).toLong(),
                    m_stored->value(4).toDateTime(), m_stored->value(5).toLong(),
                    m_stored->value(6).toLong()};
    m_stored->MoveNext();
    return file;
}

bool IntakeLibrary::add(const ImportedTrack& track)
{
    begin();
    const QStringList& columns = ImportedTrack::columns();
    const std::vector<Value> values = track.values();
    for (qsizetype i = 0; i < columns.size(); ++i) {
        m_insert->SetParameter(u'p' + columns.at(i), values.at(static_cast<size_t>(i)));
    }
    try {
        m_insert->Execute();
    } catch (const DbError& error) {
        if (error.number() == dberror::kDuplicateKey) {
            return false;
        }
        throw;
    }
    ++m_changes;
    return true;
}

void IntakeLibrary::move(const StoredPlace& place, const ImportedTrack& track)
{
    begin();
    const auto row = m_database->OpenRecordset(rowStatement(place.FID));
    row->Edit();
    row->setValue(u"Path", track.Path);
    row->setValue(u"DName", track.DName);
    setDrive(*row, track);
    setFile(*row, track);
    row->Update();
    ++m_changes;
}

void IntakeLibrary::giveBack(const QString& fid, int del)
{
    begin();
    m_database->Execute(u"update db_all set del="_s + sql::number(qint64{delOfFoundFile(del)}) +
                        u" where fid="_s + sql::text(fid));
    ++m_changes;
}

bool IntakeLibrary::hasPendingEdit(const QString& fid)
{
    const auto count = m_database->OpenRecordset(
        u"select count(*) as anz from db_edit where fid="_s + sql::text(fid));
    return !count->Eof() && count->value(u"anz").toLong() > 0;
}

void IntakeLibrary::update(const QString& fid, const ImportedTrack& track)
{
    begin();
    const bool keepTexts = hasPendingEdit(fid);
    const auto row = m_database->OpenRecordset(rowStatement(fid));
    if (row->Eof()) {
        return; // deleted by somebody since the walk began
    }
    row->Edit();
    setPositions(*row, track);
    if (liesWhereStored(*row, track)) {
        setDrive(*row, track);
    }
    setFile(*row, track);
    row->setValue(u"DTimeMsec", track.DTimeMsec);
    row->setValue(u"DTime", track.DTime);
    row->setValue(u"DKhz", track.DKhz);
    row->setValue(u"DBit", track.DBit);
    if (!keepTexts) {
        setTexts(*row, track);
    }
    row->Update();
    ++m_changes;
}

void IntakeLibrary::markTrees()
{
    begin();
    for (const QString& tree : {u"Dir"_s, u"Interpret"_s, u"Album"_s, u"Genre"_s}) {
        const auto count = m_database->OpenRecordset(
            u"select count(*) as anz from ChangeTree where TreeName="_s + sql::text(tree));
        if (count->value(u"anz").toLong() == 0) {
            m_database->Execute(u"insert into ChangeTree (TreeName) values ("_s + sql::text(tree) +
                                u')');
        }
    }
    ++m_changes;
}

void IntakeLibrary::begin()
{
    if (!m_portion) {
        m_portion.emplace(*m_database);
        m_begun = std::chrono::steady_clock::now();
        m_changes = 0;
    }
}

bool IntakeLibrary::isPortionDue() const
{
    return m_portion && (m_changes >= kPortionChanges ||
                         std::chrono::steady_clock::now() - m_begun >= kPortionAge);
}

void IntakeLibrary::commitPortion()
{
    if (m_portion) {
        m_portion->commit();
        m_portion.reset();
    }
}

void IntakeLibrary::dropPortion()
{
    m_portion.reset();
}

} // namespace melovane
