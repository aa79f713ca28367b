#include "store/track_fields.h"

#include "config/global_settings.h"

#include <algorithm>
#include <array>
#include <utility>

namespace melovane {

using namespace Qt::Literals::StringLiterals;

namespace {

using F = TrackField;
using M = MlvAllData;
using S = GlobalSettings;

constexpr auto kBarred = TrackEdit::Barred;
constexpr auto kFree = TrackEdit::Free;
constexpr auto kNumber = TrackEdit::Number;
constexpr auto kGenre = TrackEdit::Genre;
constexpr auto kLeft = CellAlignment::Left;
constexpr auto kCentre = CellAlignment::Centre;
constexpr auto kRight = CellAlignment::Right;

constexpr TrackColumnType kMemo = {FieldType::Memo};
constexpr TrackColumnType kLong = {FieldType::Long};
constexpr TrackColumnType kDate = {FieldType::Date};

constexpr TrackColumnType text(int width)
{
    return {FieldType::Text, width};
}

constexpr TagFrame named(QStringView description)
{
    return {u"TXXX", description};
}

constexpr TrackColumn shown(TrackFieldPlace place)
{
    return {place, true};
}

constexpr TrackColumn hidden(TrackFieldPlace place)
{
    return {place, false};
}

constexpr TrackColumn kNone = {};

// What a row says, from left to right: field, column, type, frame in the tag, edit, tree, search,
// width and alignment in grids, place in the library's grid and in that of a playlist, place and
// member in the record.
// clang-format off
constexpr std::array<TrackFieldRow, kTrackFieldCount> kFields = {{
    {F::FID,          u"FID",          text(12),   named(u"FID"),          kBarred, {},           {},                            13, kLeft,   hidden(450), hidden(340), 10,  &M::FID},
    {F::Titel,        u"Titel",        text(255),  {u"TIT2"},              kFree,   {},           {10},                          40, kLeft,   shown(20),   shown(40),   20,  &M::Titel},
    {F::Interpret,    u"Interpret",    text(255),  {u"TPE1"},              kFree,   u"Interpret", {20},                          18, kLeft,   shown(30),   shown(50),   70,  &M::Interpret},
    {F::Album,        u"Album",        text(255),  {u"TALB"},              kFree,   u"Album",     {30, &S::SuchAlbum},           15, kLeft,   shown(40),   hidden(120), 90,  &M::Album},
    {F::Genre,        u"Genre",        text(255),  {u"TCON"},              kGenre,  u"Genre",     {},                            11, kLeft,   shown(50),   hidden(130), 110, &M::Genre},
    {F::Jahr,         u"Jahr",         text(10),   {u"TYER", {}, u"TDRC"}, kFree,   {},           {},                            5,  kRight,  hidden(110), hidden(140), 100, &M::Jahr},
    {F::Track,        u"Track",        text(10),   {u"TRCK"},              kNumber, {},           {},                            5,  kRight,  hidden(120), hidden(150), 50,  &M::Track},
    {F::Kommentar,    u"Kommentar",    kMemo,      {u"COMM"},              kFree,   {},           {40, &S::SuchKommentar},       24, kLeft,   hidden(130), hidden(160), 80,  &M::Kommentar},
    {F::Note,         u"Note",         text(1),    {u"POPM"},              kNumber, {},           {},                            4,  kCentre, shown(10),   shown(30),   60,  &M::Note},
    {F::BPM,          u"BPM",          text(10),   {u"TBPM"},              kNumber, {},           {},                            5,  kRight,  shown(60),   shown(60),   200, &M::BPM},
    {F::Path,         u"Path",         text(4096), {},                     kBarred, {},           {60, &S::SuchPath},            30, kLeft,   hidden(260), hidden(320), 280, &M::Path},
    {F::DName,        u"DName",        text(255),  {},                     kBarred, {},           {50, &S::SuchDatei, u"Dname"}, 24, kLeft,   hidden(270), hidden(330), 120, &M::DName},
    {F::DLen,         u"DLen",         kLong,      {},                     kFree,   {},           {},                            10, kRight,  hidden(250), kNone,       140, &M::DLen},
    {F::DTime,        u"DTime",        text(20),   {},                     kFree,   {},           {},                            6,  kRight,  shown(70),   shown(90),   150, &M::DTime},
    {F::DTimeMsec,    u"DTimeMsec",    kLong,      {},                     kFree,   {},           {},                            9,  kRight,  hidden(330), kNone,       130, &M::DTimeMsec},
    {F::DKhz,         u"DKhz",         kLong,      {},                     kFree,   {},           {},                            8,  kRight,  hidden(240), hidden(310), 180, &M::DKhz},
    {F::DBit,         u"DBit",         kLong,      {},                     kFree,   {},           {},                            7,  kRight,  hidden(230), hidden(300), 190, &M::DBit},
    {F::DTSDatei,     u"DTSDatei",     kDate,      {},                     kFree,   {},           {},                            18, kRight,  hidden(300), kNone,       160, &M::DTSDatei},
    {F::DTSImport,    u"DTSImport",    kDate,      {},                     kFree,   {},           {},                            18, kRight,  hidden(310), kNone,       170, &M::DTSImport},
    {F::DriveTyp,     u"DriveTyp",     kLong,      {},                     kFree,   {},           {},                            6,  kRight,  hidden(290), kNone,       290, &M::DriveTyp},
    {F::DriveName,    u"DriveName",    text(255),  {},                     kFree,   {},           {},                            12, kLeft,   hidden(280), kNone,       300, &M::DriveName},
    {F::DEL,          u"DEL",          kLong,      {},                     kFree,   {},           {},                            6,  kRight,  hidden(440), kNone,       210, &M::DEL},
    {F::FrameStart,   u"FrameStart",   kLong,      {},                     kFree,   {},           {},                            8,  kRight,  hidden(340), kNone,       220, &M::FrameStart},
    {F::FrameStop,    u"FrameStop",    kLong,      {},                     kFree,   {},           {},                            8,  kRight,  hidden(350), kNone,       230, &M::FrameStop},
    {F::Normalize,    u"Normalize",    kLong,      {},                     kFree,   {},           {},                            8,  kRight,  hidden(420), kNone,       240, &M::Normalize},
    {F::Pitch,        u"Pitch",        kLong,      {},                     kFree,   {},           {},                            6,  kRight,  hidden(400), hidden(280), 30,  &M::Pitch},
    {F::Volume,       u"Volume",       kLong,      {},                     kFree,   {},           {},                            8,  kRight,  hidden(410), hidden(290), 40,  &M::Volume},
    {F::MixIn,        u"MixIn",        text(255),  {},                     kFree,   {},           {},                            14, kLeft,   hidden(370), kNone,       310, &M::MixIn},
    {F::MixOut,       u"MixOut",       text(255),  {},                     kFree,   {},           {},                            14, kLeft,   hidden(380), kNone,       320, &M::MixOut},
    {F::eq,           u"eq",           text(255),  {},                     kFree,   {},           {},                            14, kLeft,   hidden(390), kNone,       330, &M::EQ},
    {F::MixTime,      u"MixTime",      kLong,      {},                     kFree,   {},           {},                            7,  kRight,  hidden(360), shown(100),  340, &M::MixTime},
    {F::Play,         u"Play",         kDate,      {},                     kBarred, {},           {},                            8,  kRight,  shown(80),   shown(110),  250, &M::Play},
    {F::PlayCountDay, u"PlayCountDay", kLong,      {},                     kFree,   {},           {},                            6,  kRight,  shown(90),   hidden(260), 260, &M::PlayCountDay},
    {F::PlayCountAll, u"PlayCountAll", kLong,      {},                     kFree,   {},           {},                            7,  kRight,  shown(100),  hidden(270), 270, &M::PlayCountAll},
    {F::favorit,      u"favorit",      kDate,      {},                     kFree,   {},           {},                            18, kRight,  hidden(320), kNone,       0,   {}},
    {F::Image,        u"Image",        text(255),  {u"APIC"},              kFree,   {},           {},                            16, kLeft,   hidden(430), kNone,       350, &M::Image},
    {F::Kategorie,    u"Kategorie",    text(255),  named(u"Kategorie"),    kFree,   {},           {},                            12, kLeft,   hidden(140), hidden(170), 360, &M::Kategorie},
    {F::Situation,    u"Situation",    text(255),  named(u"Situation"),    kFree,   {},           {},                            12, kLeft,   hidden(150), hidden(180), 370, &M::Situation},
    {F::Stimmung,     u"Stimmung",     text(255),  named(u"Stimmung"),     kFree,   {},           {},                            12, kLeft,   hidden(160), hidden(190), 380, &M::Stimmung},
    {F::Tempo,        u"Tempo",        text(255),  named(u"Tempo"),        kFree,   {},           {},                            12, kLeft,   hidden(170), hidden(200), 390, &M::Tempo},
    {F::User1,        u"User1",        text(255),  named(u"User1"),        kFree,   {},           {},                            12, kLeft,   hidden(180), hidden(210), 400, &M::User1},
    {F::User2,        u"User2",        text(255),  named(u"User2"),        kFree,   {},           {},                            12, kLeft,   hidden(190), hidden(220), 410, &M::User2},
    {F::User3,        u"User3",        text(255),  named(u"User3"),        kFree,   {},           {},                            12, kLeft,   hidden(200), hidden(230), 420, &M::User3},
    {F::User4,        u"User4",        text(255),  named(u"User4"),        kFree,   {},           {},                            12, kLeft,   hidden(210), hidden(240), 430, &M::User4},
    {F::User5,        u"User5",        text(255),  named(u"User5"),        kFree,   {},           {},                            12, kLeft,   hidden(220), hidden(250), 440, &M::User5},
}};

// clang-format on

constexpr bool isInOrder()
{
    for (std::size_t i = 0; i < kFields.size(); ++i) {
        if (kFields[i].field != TrackField(i)) {
            return false;
        }
    }
    return true;
}

static_assert(isInOrder(), "a row stands at the number of its field");

// What an order sorts by.
constexpr auto kByRecord = [](const TrackFieldRow& row) { return row.recordPlace; };
constexpr auto kBySearch = [](const TrackFieldRow& row) { return row.search.place; };
constexpr auto kByLibrary = [](const TrackFieldRow& row) { return row.library.place; };
constexpr auto kByPlaylist = [](const TrackFieldRow& row) { return row.playlist.place; };

/// The fields that have a place, sorted by it.
template <auto Place> constexpr auto ordered()
{
    constexpr auto kCount = std::count_if(kFields.begin(), kFields.end(),
                                          [](const auto& row) { return Place(row) != 0; });
    std::array<TrackField, kCount> order{};
    std::size_t end = 0;
    for (const TrackFieldRow& row : kFields) {
        if (Place(row) != 0) {
            order[end++] = row.field;
        }
    }
    std::sort(order.begin(), order.end(), [](TrackField one, TrackField two) {
        return Place(kFields[std::size_t(one)]) < Place(kFields[std::size_t(two)]);
    });
    return order;
}

constexpr auto kRecord = ordered<kByRecord>();
constexpr auto kSearched = ordered<kBySearch>();
constexpr auto kLibrary = ordered<kByLibrary>();
constexpr auto kPlaylist = ordered<kByPlaylist>();

} // namespace

std::span<const TrackFieldRow> trackFields()
{
    return kFields;
}

const TrackFieldRow& rowOf(TrackField field)
{
    return kFields[std::size_t(field)];
}

QStringView columnOf(TrackField field)
{
    return rowOf(field).column;
}

QStringList columnNames(std::span<const TrackField> fields)
{
    QStringList names;
    for (const TrackField field : fields) {
        names.append(columnOf(field).toString());
    }
    return names;
}

QString columnList(std::span<const TrackField> fields)
{
    return columnNames(fields).join(u", "_s);
}

QString columnList(std::initializer_list<TrackField> fields)
{
    return columnList(std::span(fields.begin(), fields.size()));
}

const TrackFieldRow* findTrackField(QStringView column)
{
    const auto* const found =
        std::find_if(kFields.begin(), kFields.end(), [column](const auto& row) {
            // Asked for each cell that is painted: the sizes tell most columns apart.
            return row.column.size() == column.size() &&
                   row.column.compare(column, Qt::CaseInsensitive) == 0;
        });
    return found == kFields.end() ? nullptr : &*found;
}

QString headingKey(QStringView column)
{
    return u"column."_s + column.toString();
}

std::span<const TrackField> recordFields()
{
    return kRecord;
}

std::span<const TrackField> searchedFields()
{
    return kSearched;
}

GridColumn gridColumn(const TrackFieldRow& row, const TrackColumn& start)
{
    GridColumn column{row.column.toString(), row.column.toString(), row.gridWidth, row.alignment,
                      start.shown};
    // What people read takes the free width.
    column.stretched = row.field == TrackField::Titel || row.field == TrackField::Interpret ||
                       row.field == TrackField::Album;
    column.fixed = row.field == TrackField::Note; // one figure
    return column;
}

std::span<const TrackField> libraryGridFields()
{
    return kLibrary;
}

std::span<const TrackField> playlistGridFields()
{
    return kPlaylist;
}

} // namespace melovane
