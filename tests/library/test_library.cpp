#include "library/test_library.h"

#include "config/melovane_configuration.h"

#include <QFile>

namespace melovane::test {

using namespace Qt::Literals::StringLiterals;

namespace {

FieldDef field(const QString& name, FieldType type)
{
    FieldDef result;
    result.Name = name;
    result.Type = type;
    result.Size = type == FieldType::Text ? 255 : 4;
    return result;
}

TableDef tracksTable()
{
    TableDef table;
    table.Name = u"db_all"_s;
    for (const QString& name :
         {u"FID"_s,       u"Titel"_s,     u"Interpret"_s, u"Album"_s,  u"Genre"_s, u"Jahr"_s,
          u"Track"_s,     u"Kommentar"_s, u"Note"_s,      u"BPM"_s,    u"Path"_s,  u"DName"_s,
          u"DTime"_s,     u"DriveName"_s, u"MixIn"_s,     u"MixOut"_s, u"eq"_s,    u"Image"_s,
          u"Kategorie"_s, u"Situation"_s, u"Stimmung"_s,  u"Tempo"_s,  u"User1"_s, u"User2"_s,
          u"User3"_s,     u"User4"_s,     u"User5"_s}) {
        table.Fields.push_back(field(name, FieldType::Text));
    }
    for (const QString& name :
         {u"DLen"_s, u"DTimeMsec"_s, u"DKhz"_s, u"DBit"_s, u"DriveTyp"_s, u"DEL"_s, u"FrameStart"_s,
          u"FrameStop"_s, u"Normalize"_s, u"Pitch"_s, u"Volume"_s, u"MixTime"_s, u"PlayCountDay"_s,
          u"PlayCountAll"_s}) {
        table.Fields.push_back(field(name, FieldType::Long));
    }
    for (const QString& name : {u"DTSDatei"_s, u"DTSImport"_s, u"Play"_s, u"favorit"_s}) {
        table.Fields.push_back(field(name, FieldType::Date));
    }
    IndexDef key;
    key.Name = u"PrimaryKey"_s;
    key.Fields = {u"FID"_s};
    key.Primary = true;
    key.Unique = true;
    table.Indexes = {key};
    return table;
}

TableDef editsTable()
{
    TableDef table;
    table.Name = u"db_edit"_s;
    table.Fields = {field(u"FID"_s, FieldType::Text)};
    return table;
}

TableDef namesTable(const QString& name, const QString& key)
{
    TableDef table;
    table.Name = name;
    table.Fields = {field(key, FieldType::Long), field(u"Name"_s, FieldType::Text)};
    return table;
}

} // namespace

TestLibrary::TestLibrary()
    : engine(sqlite::makeEngine(clock))
    , texts(folders.paths(), folders.profile(), folders.files())
    , bus(folders.paths(), folders.files(), clock)
    , m_databaseName(folders.configFile(u"melovane.mdb"_s))
{
    // Made once, then copied: creating tables costs a test more than all the rest.
    static const TempFolder kept;
    const QString made = kept.file(u"made.mdb"_s);
    if (!QFile::exists(made)) {
        makeDatabase();
        engine->BackupDatabase(m_databaseName, made);
    } else {
        QFile::copy(made, m_databaseName);
    }
    settings = folders.makeSettings(*engine);
    settings->SetDbName(m_databaseName);
    settings->SetLiveSuche(1);
    MelovaneConfiguration::fill(texts);
}

void TestLibrary::makeDatabase()
{
    const auto database =
        engine->Workspaces(0).CreateDatabase(m_databaseName, QString::fromUtf16(kDatabaseLocale));
    database->tableDefs().Append(tracksTable());
    database->tableDefs().Append(editsTable());
    database->tableDefs().Append(namesTable(u"genre"_s, u"Genre_ID"_s));
    database->tableDefs().Append(namesTable(u"pl_group"_s, u"GRID"_s));
    database->tableDefs().Append(namesTable(u"pl_name"_s, u"NID"_s));
}

void TestLibrary::insert(Recordset& tracks, const TestTrack& track)
{
    const auto textOrNull = [](const QString& text) {
        return text.isNull() ? Value() : Value(text);
    };
    tracks.AddNew();
    tracks.setValue(u"FID", QString::number(++m_lastFid));
    tracks.setValue(u"Titel", textOrNull(track.title));
    tracks.setValue(u"Interpret", textOrNull(track.artist));
    tracks.setValue(u"Album", textOrNull(track.album));
    tracks.setValue(u"Note", textOrNull(track.note));
    tracks.setValue(u"DEL", track.del);
    tracks.Update();
}

void TestLibrary::add(const std::vector<TestTrack>& tracks)
{
    const auto database = engine->OpenDatabase(m_databaseName);
    Transaction transaction(*database);
    const auto set = database->OpenRecordset(u"db_all"_s);
    for (const TestTrack& track : tracks) {
        insert(*set, track);
    }
    transaction.commit();
}

void TestLibrary::addMany(int count)
{
    std::vector<TestTrack> tracks;
    tracks.reserve(size_t(count));
    for (int number = 0; number < count; ++number) {
        tracks.push_back(
            {u"Titel %1"_s.arg(number, 5, 10, QChar(u'0')), u"Die Probe"_s, {}, {}, 0});
    }
    add(tracks);
}

void TestLibrary::execute(const QString& statement)
{
    engine->OpenDatabase(m_databaseName)->Execute(statement);
}

} // namespace melovane::test
