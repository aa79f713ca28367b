#include "intake/intake_library.h"

#include "intake/tag_import.h"
#include "intake/tree_marks.h"
#include "platform/db/sql_text.h"

#include <array>
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

int delOfFoundFile(int del)
{
    return del == kMissing ? kNormal : del == kMarkedAndMissing ? kMarked : del;
}

using F = TrackField;

/// What the file tells of its place on a drive, and of its sound.
constexpr std::array kPlaceFields = {F::Path, F::DName};
constexpr std::array kDriveFields = {F::DriveTyp, F::DriveName};
constexpr std::array kFileFields = {F::DLen, F::DTSDatei};
constexpr std::array kSoundFields = {F::DTimeMsec, F::DTime, F::DKhz, F::DBit};

void setFields(Recordset& row, const ImportedTrack& track, std::span<const TrackField> fields)
{
    for (const TrackField field : fields) {
        row.setValue(columnOf(field), track.value(field));
    }
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
    setFields(row, track, kFileFields);
    row.setValue(u"DEL", delOfFoundFile(row.value(u"DEL").toLong()));
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

IntakeLibrary::IntakeLibrary(DBEngine& engine,
                             const QString& file,
                             const Files& files,
                             const Clock& clock)
    : m_database(engine.OpenDatabase(file))
    , m_places(*m_database, files)
    , m_insert(*m_database, m_places, clock)
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
    m_folderRows =
        m_database->OpenRecordset(LibraryPlaces::statement(u"Path="_s + sql::text(folder)));
}

bool IntakeLibrary::readFolder(QHash<QString, StoredPlace>& places)
{
    if (!m_folderRows) {
        return false;
    }
    for (int i = 0; i < kRowsPerRead && !m_folderRows->Eof(); ++i, m_folderRows->MoveNext()) {
        StoredPlace place = LibraryPlaces::rowFrom(*m_folderRows);
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

void IntakeLibrary::openStored()
{
    m_stored = m_database->OpenRecordset(u"select %1 from db_all order by Path, DName"_s.arg(
        columnList({F::FID, F::Path, F::DName, F::DLen, F::DTSDatei, F::DEL, F::DriveTyp})));
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

bool IntakeLibrary::hasFile(const ImportedTrack& track)
{
    return m_places.find(track.Path, track.DName).has_value();
}

std::optional<StoredPlace> IntakeLibrary::placeOf(const QString& fid)
{
    return m_places.placeOf(fid);
}

TrackInsert::Result IntakeLibrary::add(ImportedTrack& track)
{
    begin();
    const auto result = m_insert.add(track, TrackInsert::TakenFid::Tell);
    if (result.kind == TrackInsert::Result::Kind::Added) {
        ++m_changes;
    }
    return result;
}

void IntakeLibrary::move(const StoredPlace& place, const ImportedTrack& track)
{
    begin();
    const auto row = m_database->OpenRecordset(rowStatement(place.FID));
    row->Edit();
    setFields(*row, track, kPlaceFields);
    setFields(*row, track, kDriveFields);
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
        setFields(*row, track, kDriveFields);
    }
    setFile(*row, track);
    setFields(*row, track, kSoundFields);
    if (!keepTexts) {
        setTexts(*row, track);
    }
    row->Update();
    ++m_changes;
}

void IntakeLibrary::markTrees()
{
    begin();
    melovane::markTrees(*m_database);
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
