#include "platform/db/db_error.h"
#include "support/suite_fixture.h"
#include "trackedit/ks_edit_fid.h"

namespace melovane {
namespace {

using namespace Qt::Literals::StringLiterals;

class EditRecord : public test::SuiteFixture
{
protected:
    EditRecord() { record.setDb_name(suite.dbName()); }

    [[nodiscard]] QString cell(const QString& column)
    {
        return suite.value(u"select %1 from db_all where fid='%2'"_s.arg(column, fid)).toText();
    }

    [[nodiscard]] QStringList entered() { return suite.column(u"select FID from db_edit"_s); }

    QString fid = suite.library.add({.Titel = u"Lied"_s, .Interpret = u"Wer"_s, .Note = u"3"_s});
    KsEditFid record{*suite.engine};
};

TEST_F(EditRecord, TheFieldsStandInTheirOrderWithTheirCaptions)
{
    QStringList names;
    QStringList editable;
    QStringList hidden;
    QStringList onTagPage;
    for (const KsField& field : record.KsFieds()) {
        names.append(field.DatabaseName);
        if (!field.ReadOnly) {
            editable.append(field.DatabaseName);
        }
        if (!field.Visible) {
            hidden.append(field.DatabaseName);
        }
        if (field.TagPage) {
            onTagPage.append(field.DatabaseName);
        }
    }
    EXPECT_EQ(names.join(u' '),
              u"FID Titel Interpret Kommentar TRACK Album Jahr Genre Note BPM Volume Pitch DKhz "
              "DBit DTime FrameStart FrameStop Normalize Play PlayCountDay PlayCountAll DName Path "
              "DLen DriveTyp DriveName DTimeMsec DTSDatei DTSImport"_s);
    EXPECT_EQ(editable.join(u' '), u"Titel Interpret Kommentar TRACK Album Jahr Genre Note BPM"_s);
    EXPECT_EQ(hidden.join(u' '), u"FID Volume Pitch DriveTyp"_s);
    EXPECT_EQ(onTagPage.join(u' '), u"Titel Kommentar Album Jahr Genre Note"_s);
    EXPECT_EQ(record.GetField(u"normalize")->Caption, u"Song Lautstärke"_s);
    EXPECT_EQ(int(record.GetField(u"Normalize")->Display), 14);
    EXPECT_EQ(record.GetField(u"genre")->Table, u"Genre"_s);
    EXPECT_EQ(record.GetField(u"Nirgends"), nullptr);
}

TEST_F(EditRecord, ATrackIsReadWithEmptyTextsWhereColumnsAreNull)
{
    record.GetFidData(u" %1 "_s.arg(fid));
    EXPECT_EQ(record.GetField(u"Titel")->value.toText(), u"Lied"_s);
    EXPECT_FALSE(record.GetField(u"Album")->value.isNull());
    EXPECT_EQ(record.GetField(u"Album")->StoredValue, Value(QString()));
    EXPECT_FALSE(record.IsChanged());
    EXPECT_EQ(record.GetField(u"Titel")->Caption, u"Titel, Iterpret"_s);
    EXPECT_EQ(record.GetField(u"Interpret")->Caption, u"Interpret"_s);
}

TEST_F(EditRecord, AnEmptyOrUnknownIdLeavesTheValuesAsTheyWere)
{
    record.GetFidData(fid);
    record.GetField(u"Titel")->value = u"Getippt"_s;
    record.GetFidData(u"  "_s);
    record.GetFidData(u"000000000000"_s);
    EXPECT_EQ(record.GetField(u"Titel")->value.toText(), u"Getippt"_s);
    EXPECT_TRUE(record.IsChanged());
}

TEST_F(EditRecord, ANullAndAnEmptyTextCompareAsChanged)
{
    record.GetFidData(fid);
    record.GetField(u"Album")->value = Value();
    EXPECT_TRUE(record.IsChanged());
    record.GetField(u"Album")->StoredValue = Value();
    EXPECT_FALSE(record.IsChanged());
    record.GetField(u"Album")->value = QString();
    EXPECT_TRUE(record.IsChanged());
}

TEST_F(EditRecord, ValuesThatDifferOnlyByBlanksAroundThemAreNotChanged)
{
    record.GetFidData(fid);
    record.GetField(u"Titel")->value = u"  Lied "_s;
    EXPECT_FALSE(record.IsChanged());
    record.GetField(u"Titel")->value = u"lied"_s;
    EXPECT_TRUE(record.IsChanged());
}

TEST_F(EditRecord, AFieldThatCannotBeEditedIsNeitherAChangeNorWritten)
{
    record.GetFidData(fid);
    record.GetField(u"DName")->value = u"anders.mp3"_s;
    EXPECT_FALSE(record.IsChanged());
    record.UpdateFID(fid);
    EXPECT_EQ(cell(u"DName"_s), fid + u".mp3"_s);
}

TEST_F(EditRecord, ChangedFieldsAreToldAndWrittenAndTheTrackIsEnteredForItsTags)
{
    QStringList told;
    record.setFieldWritten([&](const QString& field) {
        told.append(field + u'=' + cell(field)); // about to be: the row still has the former value
    });
    record.GetFidData(fid);
    record.GetField(u"Titel")->value = u"O'Neil [\"*]"_s;
    record.GetField(u"Genre")->value = u"Pop"_s;
    record.UpdateFID(u" %1 "_s.arg(fid));
    EXPECT_EQ(told, (QStringList{u"Titel=Lied"_s, u"Genre="_s}));
    EXPECT_EQ(cell(u"Titel"_s), u"O'Neil [\"*]"_s);
    EXPECT_EQ(cell(u"Genre"_s), u"Pop"_s);
    EXPECT_EQ(cell(u"Interpret"_s), u"Wer"_s);
    EXPECT_EQ(entered(), QStringList{fid});
}

TEST_F(EditRecord, UpdateAlwaysEntersTheTrackAndItCanStandThereSeveralTimes)
{
    record.GetFidData(fid);
    record.UpdateFID(fid);
    record.UpdateFID(fid);
    EXPECT_EQ(entered(), (QStringList{fid, fid}));
    EXPECT_EQ(cell(u"Titel"_s), u"Lied"_s);
}

TEST_F(EditRecord, ErrorsPassToTheCallerAndNothingIsWritten)
{
    record.GetFidData(fid);
    record.GetField(u"Titel")->value = u"Neu"_s;
    EXPECT_THROW(record.UpdateFID(u"000000000000"_s), DbError);
    record.GetField(u"Note")->value = u"zu lang"_s;
    EXPECT_THROW(record.UpdateFID(fid), DbError);
    EXPECT_EQ(cell(u"Titel"_s), u"Lied"_s);
    EXPECT_TRUE(entered().isEmpty());
    record.setDb_name(suite.file(u"nirgends.mdb"_s));
    EXPECT_THROW(record.GetFidData(fid), DbError);
}

} // namespace
} // namespace melovane
