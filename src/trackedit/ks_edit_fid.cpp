#include "trackedit/ks_edit_fid.h"

#include "platform/db/database.h"
#include "platform/db/sql_text.h"
#include "platform/system/trim_blanks.h"
#include "store/track_writing.h"

#include <algorithm>

namespace melovane {

using namespace Qt::Literals::StringLiterals;

namespace {

/// What the list of fields begins with.
struct FieldRow
{
    QStringView column;
    QStringView caption;
    QStringView table;
    bool canEdit;
    bool isShown;
    KsDisplay display;
};

constexpr QStringView kAll = u"DB_ALL";
constexpr QStringView kPath = u"DB_PATH";

// clang-format off
constexpr FieldRow kFields[] = {
    {u"FID",          u"FID",                     kAll,     false, false, KsDisplay::Plain},
    {u"Titel",        u"Titel",                   kAll,     true,  true,  KsDisplay::Title},
    {u"Interpret",    u"Interpret",               kAll,     true,  true,  KsDisplay::Title},
    {u"Kommentar",    u"Kommentar",               kAll,     true,  true,  KsDisplay::Plain},
    {u"TRACK",        u"Track",                   kAll,     true,  true,  KsDisplay::Number},
    {u"Album",        u"Album",                   kAll,     true,  true,  KsDisplay::Plain},
    {u"Jahr",         u"Jahr",                    kAll,     true,  true,  KsDisplay::Plain},
    {u"Genre",        u"Genre",                   u"Genre", true,  true,  KsDisplay::Genre},
    {u"Note",         u"Note",                    kAll,     true,  true,  KsDisplay::Rating},
    {u"BPM",          u"BPM",                     kAll,     true,  true,  KsDisplay::Number},
    {u"Volume",       u"Volume",                  kAll,     false, false, KsDisplay::Setting},
    {u"Pitch",        u"Pitch",                   kAll,     false, false, KsDisplay::Setting},
    {u"DKhz",         u"Hz",                      kAll,     false, true,  KsDisplay::Plain},
    {u"DBit",         u"KBit",                    kAll,     false, true,  KsDisplay::BitRate},
    {u"DTime",        u"Gesamtzeit",              kAll,     false, true,  KsDisplay::Plain},
    {u"FrameStart",   u"Default Startposition",   kAll,     false, true,  KsDisplay::Position},
    {u"FrameStop",    u"Default Stopposition",    kAll,     false, true,  KsDisplay::Position},
    {u"Normalize",    u"Song Lautstärke",         kAll,     false, true,  KsDisplay::Level},
    {u"Play",         u"Zuletzt gespielt",        kAll,     false, true,  KsDisplay::Moment},
    {u"PlayCountDay", u"Anzahl Heute",            kAll,     false, true,  KsDisplay::Plain},
    {u"PlayCountAll", u"Anzahl Gesamt",           kAll,     false, true,  KsDisplay::Plain},
    {u"DName",        u"Datei",                   kAll,     false, true,  KsDisplay::Plain},
    {u"Path",         u"Path",                    kPath,    false, true,  KsDisplay::Plain},
    {u"DLen",         u"Dateilänge",              kAll,     false, true,  KsDisplay::Plain},
    {u"DriveTyp",     u"DriveTyp",                kPath,    false, false, KsDisplay::Drive},
    {u"DriveName",    u"Datenträgerbezeichnung",  kPath,    false, true,  KsDisplay::Plain},
    {u"DTimeMsec",    u"Gesamtzeit in millisec",  kAll,     false, true,  KsDisplay::Plain},
    {u"DTSDatei",     u"Dateidatum",              kAll,     false, true,  KsDisplay::Moment},
    {u"DTSImport",    u"Importiert",              kAll,     false, true,  KsDisplay::Moment},
};
// clang-format on

/// The fields that stand on the pages of the tag.
constexpr QStringView kTagPage[] = {u"Kommentar", u"Album", u"Genre", u"Jahr", u"Note", u"Titel"};

/// The two fields that stand in one line, and what that line is headed; spelt so.
constexpr QStringView kTitle = u"Titel";
constexpr QStringView kArtist = u"Interpret";
constexpr QStringView kTitleLine = u"Titel, Iterpret";

} // namespace

bool KsField::isChanged() const
{
    return value.isNull() != StoredValue.isNull() ||
           trimBlanks(value.toText()) != trimBlanks(StoredValue.toText());
}

KsEditFid::KsEditFid(DBEngine& engine)
    : m_engine(engine)
{
    for (const FieldRow& row : kFields) {
        KsField field;
        field.DatabaseName = row.column.toString();
        field.Caption = row.caption.toString();
        field.Table = row.table.toString();
        field.Visible = row.isShown;
        field.Display = row.display;
        field.ReadOnly = !row.canEdit;
        m_fields.push_back(field);
    }
    for (const QStringView name : kTagPage) {
        GetField(name)->TagPage = true;
    }
}

const KsField* KsEditFid::GetField(QStringView name) const
{
    const auto found = std::ranges::find_if(m_fields, [&](const KsField& field) {
        return name.compare(field.DatabaseName, Qt::CaseInsensitive) == 0;
    });
    return found == m_fields.end() ? nullptr : &*found;
}

KsField* KsEditFid::GetField(QStringView name)
{
    return const_cast<KsField*>(std::as_const(*this).GetField(name));
}

void KsEditFid::GetFidData(const QString& fid)
{
    const QString id = trimBlanks(fid);
    if (id.isEmpty()) {
        return;
    }
    for (const QStringView name : {kTitle, kArtist}) {
        KsField& field = *GetField(name);
        field.Display = KsDisplay::Title;
        field.Caption = name.toString();
    }
    const auto database = m_engine.OpenDatabase(m_dbName);
    const auto row =
        database->OpenRecordset(u"select * from DB_ALL where fid='"_s + sql::quoted(id) + u"'"_s);
    for (KsField& field : m_fields) {
        if (row->Eof()) {
            break;
        }
        const Value read = row->value(field.DatabaseName);
        field.value = read.isNull() ? Value(QString()) : read;
        field.StoredValue = field.value;
    }
    GetField(kTitle)->Caption = kTitleLine.toString();
}

bool KsEditFid::IsChanged() const
{
    return std::ranges::any_of(
        m_fields, [](const KsField& field) { return !field.ReadOnly && field.isChanged(); });
}

void KsEditFid::UpdateFID(const QString& fid)
{
    std::vector<ColumnValue> values;
    for (const KsField& field : m_fields) {
        if (field.ReadOnly || !field.isChanged()) {
            continue;
        }
        if (m_fieldWritten) {
            m_fieldWritten(field.DatabaseName);
        }
        values.push_back({field.DatabaseName, field.value});
    }
    writeTrack(*m_engine.OpenDatabase(m_dbName), fid, values, TagOrder::Enter);
}

} // namespace melovane
