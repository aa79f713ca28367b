#include "fuzz/m3u_check.h"

#include "platform/linux/tag_reader.h"
#include "platform/sqlite/engine/sqlite_engine.h"
#include "platform/system/letter_case.h"
#include "platform/system/path_text.h"
#include "playlistfiles/m3u_place.h"
#include "playlistfiles/m3u_writer.h"
#include "store/check_database.h"
#include "store/shipped_database.h"

#include <QDir>
#include <QFile>

namespace melovane::fuzz {

using namespace Qt::Literals::StringLiterals;

namespace {

EnvironmentPlaces placesBelow(const QString& folder)
{
    EnvironmentPlaces places;
    places.programFolder = folder;
    places.programName = u"MelovaneDB"_s;
    places.userData = folder;
    places.commonData = folder;
    places.userDocuments = folder;
    places.commonDocuments = folder;
    places.programFiles = folder;
    places.machineFile = path::join(folder, u"machine.conf");
    places.userFile = path::join(folder, u"user.conf");
    places.cacheBase = folder;
    places.runtimeBase = folder;
    places.temporaryBase = folder;
    return places;
}

std::vector<M3uRecord> recordsOf(const QByteArray& bytes)
{
    M3uLines lines(bytes);
    M3uParser parser;
    std::vector<M3uRecord> records;
    qint64 before = -1;
    while (const auto line = lines.next()) {
        if (lines.position() <= before) {
            return {}; // no line may be read twice
        }
        before = lines.position();
        if (auto record = parser.take(*line)) {
            records.push_back(std::move(*record));
        }
    }
    return records;
}

QString line(const char* prefix, const std::vector<Value>& values)
{
    QStringList texts;
    for (const Value& value : values) {
        texts.append(m3uline::printed(value));
    }
    return QString::fromLatin1(prefix) + texts.join(u'|') + u"\r\n"_s;
}

bool isSame(const M3uRecord& one, const M3uRecord& other)
{
    return one.FID == other.FID && one.Titel == other.Titel && one.Interpret == other.Interpret &&
           one.Genre == other.Genre && one.BPM == other.BPM && one.Volume == other.Volume &&
           one.Pitch == other.Pitch && one.DTimeMsec == other.DTimeMsec &&
           one.FrameStart == other.FrameStart && one.FrameStop == other.FrameStop &&
           one.MixTime == other.MixTime && one.MixIn == other.MixIn && one.MixOut == other.MixOut &&
           one.eq == other.eq;
}

} // namespace

M3uCheck::M3uCheck()
    : m_environment(placesBelow(m_folder.path()))
    , m_profile(m_files)
    , m_paths(m_environment, m_files)
    , m_engine(sqlite::makeEngine(m_clock))
    , m_settings(m_paths, m_profile, m_files, *m_engine)
    , m_locator(m_files, m_folder.path())
    , m_history(*m_engine, m_files, m_clock, m_settings, {})
    , m_snapshots(m_files, m_folder.path())
    , m_reader(linux_media::makeTagReader())
    , m_m3u({*m_engine,
             m_settings,
             m_files,
             m_locator,
             *m_reader,
             m_clock,
             m_history,
             m_snapshots,
             {}})
{
    const QString database = m_folder.filePath(u"fuzz.mdb"_s);
    buildShippedDatabase(*m_engine, m_files, QString::fromUtf8(MLV_SCHEMA_FOLDER), database);
    CheckDatabase check(*m_engine, m_files, m_clock, {database, m_folder.path(), u"Fuzz"_s}, {});
    check.checkTempTables();
    m_settings.SetDbName(database);
    // The history has a fuzz of its own: the changes.
    m_settings.WriteKeyValue(u"Global"_s, kHistorySetting.toString(), u"0"_s);
    m_files.writeWhole(m_folder.filePath(u"ChangeDir.conf"_s),
                       "C:\\Music ?? " + m_folder.path().toUtf8());
    m_files.writeWhole(m_folder.filePath(u"a.mp3"_s), "no sound");
    m_files.writeWhole(m_folder.filePath(u"ä b.mp3"_s), "no sound");
    fillLibrary();
    m_list = m_m3u.CreatePlaylist(u"List"_s, GroupId{1});
}

M3uCheck::~M3uCheck() = default;

void M3uCheck::fillLibrary()
{
    const auto database = m_engine->OpenDatabase(m_settings.DbName());
    const auto tracks = database->OpenRecordset(u"db_all"_s);
    for (const auto& [fid, name] :
         {std::pair(u"800000000001"_s, u"ä b.mp3"_s), std::pair(u"1"_s, u"gone.mp3"_s)}) {
        tracks->AddNew();
        tracks->setValue(u"FID", fid);
        tracks->setValue(u"Path", path::withSeparator(m_folder.path()));
        tracks->setValue(u"DName", name);
        tracks->Update();
    }
}

int M3uCheck::count(const QString& from) const
{
    return m_engine->OpenDatabase(m_settings.DbName())
        ->OpenRecordset(u"select count(*) from "_s + from)
        ->value(0)
        .toLong();
}

QString M3uCheck::checkRecord(const M3uRecord& record)
{
    if (record.file.contains(u'|') || !record.line.startsWith(record.file)) {
        return u"a path with a bar: "_s + record.file;
    }
    const QStringList readings = m3uplace::readings(record.file, record.line);
    if (readings.isEmpty()) {
        return u"a path without a reading: "_s + record.file;
    }
    for (const QString& reading : readings) {
        const QString cleaned = m3uplace::cleaned(reading);
        if (m3uplace::cleaned(cleaned) != cleaned) {
            return u"cleaned twice is another path: "_s + reading;
        }
    }
    for (const QString& text : {record.FID, record.Titel, record.MixIn, record.eq}) {
        if (upperCase(text) == "NULL"_L1) {
            return u"a text that is Null"_s;
        }
    }
    const QString written =
        line("#MLV:FID=", {record.FID}) +
        line("#MLV:TIT=", {record.Titel, record.Interpret, record.Genre}) +
        line("#MLV:VOL=", {record.Volume, record.Pitch, record.BPM, record.DTimeMsec}) +
        line("#MLV:MIX=", {record.FrameStart, record.FrameStop, record.MixTime, record.MixIn,
                           record.MixOut, record.eq}) +
        u"x.mp3\r\n"_s;
    const auto again = recordsOf(written.toUtf8());
    return again.size() == 1 && isSame(again[0], record) ? QString()
                                                         : u"reads back otherwise: "_s + written;
}

QString M3uCheck::checkImport(const QByteArray& bytes)
{
    const auto records = recordsOf(bytes).size();
    const QString file = m_folder.filePath(u"list.m3u"_s);
    QFile list(file);
    if (!list.open(QIODevice::WriteOnly) || list.write(bytes) != bytes.size()) {
        return u"the list cannot be written"_s;
    }
    list.close();
    const int tracks = count(u"db_all"_s);
    const int failures = m_m3u.LoadPlaylist(file);
    m_entries += m_m3u.loaded();
    m_failures += failures;
    if (size_t(m_m3u.loaded()) + size_t(failures) != records) {
        return u"%1 records, but %2 entries and %3 failures"_s.arg(records)
            .arg(m_m3u.loaded())
            .arg(failures);
    }
    if (m_m3u.Append(m_list) != m_m3u.loaded() || count(u"pl_all"_s) != m_m3u.loaded()) {
        return u"not all entries have come into the list"_s;
    }
    m_engine->OpenDatabase(m_settings.DbName())->Execute(u"delete from pl_all"_s);
    return count(u"db_all"_s) == tracks ? QString() : u"the library has changed"_s;
}

QString M3uCheck::checkText(const QByteArray& bytes)
{
    for (const M3uRecord& record : recordsOf(bytes)) {
        const QString fault = checkRecord(record);
        if (!fault.isEmpty()) {
            return fault;
        }
    }
    return {};
}

} // namespace melovane::fuzz
