#include "config/built_in_texts.h"
#include "store/schema_source.h"
#include "store/track_fields.h"
#include "store/vpl_all.h"
#include "support/suite_fixture.h"

#include <QFile>
#include <QRegularExpression>
#include <QSet>

using namespace Qt::Literals::StringLiterals;
using namespace melovane;

namespace {

using TrackFields = test::SuiteFixture;

QString resource(const QString& name)
{
    QFile file(QStringLiteral(MLV_RESOURCE_FOLDER) + u'/' + name);
    EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << name.toStdString();
    return QString::fromUtf8(file.readAll());
}

/// A column as both a table and its fields tell it: "Titel 10 255".
QString columnText(QStringView name, FieldType type, int width)
{
    return u"%1 %2 %3"_s.arg(name).arg(int(type)).arg(type == FieldType::Text ? width : 0);
}

QStringList columnsOf(const TableDef& table)
{
    QStringList columns;
    for (const FieldDef& field : table.Fields) {
        columns.append(columnText(field.Name, field.Type, field.Size));
    }
    return columns;
}

QStringList columnsOfFields()
{
    QStringList columns;
    for (const TrackFieldRow& row : trackFields()) {
        columns.append(columnText(row.column, row.type.type, row.type.width));
    }
    return columns;
}

QStringList namesOf(std::span<const TrackField> fields)
{
    QStringList names;
    for (const TrackField field : fields) {
        names.append(columnOf(field).toString());
    }
    return names;
}

/// Places of an order, without those of fields that are not in it.
template <typename Place> QList<int> placesOf(const Place& place)
{
    QList<int> places;
    for (const TrackFieldRow& row : trackFields()) {
        if (place(row) != 0) {
            places.append(place(row));
        }
    }
    return places;
}

} // namespace

TEST_F(TrackFields, EveryColumnOfTheSchemaHasOneRowOfItsTypeAndWidthAndEveryRowAColumn)
{
    const schema::Tables read = schema::parseTables(resource(u"schema/tables.txt"_s));
    ASSERT_EQ(read.faults, QStringList());
    const auto table =
        std::find_if(read.tables.begin(), read.tables.end(),
                     [](const TableDef& candidate) { return candidate.Name == "db_all"_L1; });
    ASSERT_NE(table, read.tables.end());
    EXPECT_EQ(columnsOfFields(), columnsOf(*table));
}

TEST_F(TrackFields, TheLibraryThatAFirstStartMakesHasTheseColumnsAndNoOther)
{
    EXPECT_EQ(columnsOfFields(), columnsOf(suite.open()->tableDefs().Item(u"db_all"_s)));
}

TEST_F(TrackFields, EveryHeadingHasAGermanAndAnEnglishText)
{
    QSet<QString> german;
    for (const BuiltInText& text : owntexts::columns()) {
        EXPECT_FALSE(text.description.isEmpty()) << text.name.toString().toStdString();
        german.insert(text.name.toString());
    }
    const QString english = resource(u"languages/lang_English.ini"_s);
    for (const TrackFieldRow& row : trackFields()) {
        const QString key = headingKey(row.column);
        EXPECT_TRUE(german.contains(key)) << key.toStdString();
        const QRegularExpression line(u"^%1=\\S"_s.arg(QRegularExpression::escape(key)),
                                      QRegularExpression::MultilineOption);
        EXPECT_TRUE(english.contains(line)) << key.toStdString();
    }
}

TEST_F(TrackFields, AColumnIsFoundInAnyLetterCaseAndAnUnknownOneIsNone)
{
    for (const TrackFieldRow& row : trackFields()) {
        EXPECT_EQ(findTrackField(row.column.toString().toUpper()), &row);
        EXPECT_EQ(&rowOf(row.field), &row);
    }
    EXPECT_EQ(findTrackField(u"PLID"), nullptr);
    EXPECT_EQ(findTrackField(u""), nullptr);
}

TEST_F(TrackFields, NoTwoFieldsShareAPlaceOrAFrame)
{
    const auto isUnique = [](const QList<int>& places) {
        return QSet<int>(places.begin(), places.end()).size() == places.size();
    };
    EXPECT_TRUE(isUnique(placesOf([](const auto& row) { return row.recordPlace; })));
    EXPECT_TRUE(isUnique(placesOf([](const auto& row) { return row.search.place; })));
    EXPECT_TRUE(isUnique(placesOf([](const auto& row) { return row.library.place; })));
    EXPECT_TRUE(isUnique(placesOf([](const auto& row) { return row.playlist.place; })));
    QStringList frames;
    for (const TrackFieldRow& row : trackFields()) {
        if (!row.frame.id.isEmpty()) {
            frames.append(row.frame.id.toString() + u':' + row.frame.description.toString());
        }
    }
    EXPECT_EQ(frames.removeDuplicates(), 0);
    EXPECT_EQ(frames.size(), 20);
}

TEST_F(TrackFields, TheLibraryGridHoldsAllOfThem)
{
    EXPECT_EQ(libraryGridFields().size(), kTrackFieldCount);
}

TEST_F(TrackFields, WhatAPlaylistGridShowsIsAColumnOfItsStatement)
{
    suite.execute(u"insert into db_all (FID) values ('826816166000')"_s);
    const auto rows = suite.open()->OpenRecordset(vplAllStatement());
    for (const TrackField field : playlistGridFields()) {
        EXPECT_GE(rows->fieldIndex(columnOf(field)), 0) << columnOf(field).toString().toStdString();
    }
}

TEST_F(TrackFields, AMemberOfTheRecordHasAPlaceInItAndAPlaceAMember)
{
    for (const TrackFieldRow& row : trackFields()) {
        EXPECT_EQ(std::holds_alternative<std::monostate>(row.member), row.recordPlace == 0)
            << row.column.toString().toStdString();
    }
}

TEST_F(TrackFields, TheRecordIsReadInItsOwnOrder)
{
    EXPECT_EQ(
        namesOf(recordFields()).join(u' '),
        u"FID Titel Pitch Volume Track Note Interpret Kommentar Album Jahr Genre DName DTimeMsec "
        "DLen DTime DTSDatei DTSImport DKhz DBit BPM DEL FrameStart FrameStop Normalize Play "
        "PlayCountDay PlayCountAll Path DriveTyp DriveName MixIn MixOut eq MixTime Image Kategorie "
        "Situation Stimmung Tempo User1 User2 User3 User4 User5"_s);
}

TEST_F(TrackFields, AListOfColumnsIsAStatementsOwn)
{
    EXPECT_EQ(columnList({TrackField::FID, TrackField::eq, TrackField::DName}),
              u"FID, eq, DName"_s);
}
