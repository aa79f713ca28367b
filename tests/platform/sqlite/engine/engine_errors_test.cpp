#include "platform/sqlite/engine/engine_fixture.h"

#include <QFile>

namespace melovane::test {
namespace {

/// Number and sentence of each error that a user may meet: the sentence is German and names the
/// table, column, file or parameter.
class EngineErrors : public EngineTest
{
protected:
    EngineErrors()
    {
        makeSuite();
        addTrack(u"100"_s, u"one"_s);
        TableDef strict = table(u"strict"_s, {textField(u"filled"_s, 5), textField(u"must"_s, 5)});
        strict.Fields[0].AllowZeroLength = false;
        strict.Fields[1].Required = true;
        db().tableDefs().Append(strict);
    }

    /// The error that the statement ends in.
    static DbError errorBy(const std::function<void()>& work)
    {
        try {
            work();
        } catch (const DbError& error) {
            return error;
        }
        return {0, u"no error"_s};
    }

    DbError errorOfStatement(const QString& statement)
    {
        return errorBy([&] { db().Execute(statement); });
    }
};

void expectError(const DbError& error, int number, const QString& sentence)
{
    EXPECT_EQ(error.number(), number) << error.what();
    EXPECT_EQ(error.text().toStdString(), sentence.toStdString());
}

TEST_F(EngineErrors, ADuplicateKeyNamesItsColumn)
{
    const DbError error = errorOfStatement(u"insert into db_all (fid) values ('100')"_s);
    expectError(error, 3022,
                u"Die Änderung ergäbe doppelte Werte in einem eindeutigen Index (db_all.FID)."_s);
    EXPECT_EQ(error.statement(), u"insert into db_all (fid) values ('100')"_s);
}

TEST_F(EngineErrors, AMissingFileIsNamed)
{
    expectError(errorBy([&] { (void)m_engine->OpenDatabase(path(u"no.mdb"_s)); }), 3024,
                u"Die Datei %1 ist nicht vorhanden."_s.arg(path(u"no.mdb"_s)));
    db().tableDefs().Append(link(u"side"_s, path(u"gone.mdb"_s)));
    expectError(errorBy([&] { (void)db().OpenRecordset(u"side"_s); }), 3024,
                u"Die Datei %1 ist nicht vorhanden."_s.arg(path(u"gone.mdb"_s)));
}

TEST_F(EngineErrors, AMissingTableIsNamed)
{
    expectError(errorBy([&] { (void)db().OpenRecordset(u"nosuch"_s); }), 3078,
                u"Die Tabelle oder Abfrage \"nosuch\" ist nicht vorhanden."_s);
    EXPECT_TRUE(errorOfStatement(u"delete from nosuch"_s).text().contains(u"nosuch"_s));
}

TEST_F(EngineErrors, AMissingColumnOfASetIsNamed)
{
    const auto set = db().OpenRecordset(u"db_all"_s);
    expectError(errorBy([&] { (void)set->Fields(u"nosuch"); }), 3265,
                u"Das Element \"nosuch\" ist in dieser Auflistung nicht vorhanden."_s);
    expectError(errorBy([&] { db().tableDefs().Delete(u"none"_s); }), 3265,
                u"Das Element \"none\" ist in dieser Auflistung nicht vorhanden."_s);
}

TEST_F(EngineErrors, AReadOnlySetSaysWhy)
{
    const auto set = db().OpenRecordset(u"select distinct Titel from db_all"_s);
    const DbError error = errorBy([&] { set->Edit(); });
    expectError(error, 3027,
                u"Diese Datensätze können nur gelesen werden: jeder fasst mehrere zusammen."_s);
    EXPECT_EQ(error.statement(), u"select distinct Titel from db_all"_s);
}

TEST_F(EngineErrors, AnExpressionThatIsWrittenIsNamed)
{
    const auto set = db().OpenRecordset(u"select fid, Titel & 'x' as both from db_all"_s);
    set->Edit();
    expectError(errorBy([&] { set->setValue(u"both", u"y"_s); }), 3164,
                u"Die Spalte \"both\" kann nicht geändert werden."_s);
}

TEST_F(EngineErrors, ATextThatIsTooLongNamesItsColumn)
{
    const auto set = db().OpenRecordset(u"strict"_s);
    set->AddNew();
    expectError(errorBy([&] { set->setValue(u"must", u"123456"_s); }), 3163,
                u"Der Text ist zu lang für die Spalte \"must\"."_s);
    EXPECT_EQ(errorOfStatement(u"insert into strict (must) values ('123456')"_s).number(), 3163);
}

TEST_F(EngineErrors, AParameterWithoutAValueIsNamed)
{
    expectError(errorBy([&] { (void)db().OpenRecordset(u"QU_FindFile"_s); }), 3061,
                u"Der Parameter \"sPath\" hat keinen Wert."_s);
}

TEST_F(EngineErrors, AnEmptyTextIsRefusedByEveryRoad)
{
    const QString sentence = u"Die Spalte \"%1\" nimmt keinen leeren Text auf."_s;
    const auto set = db().OpenRecordset(u"strict"_s);
    set->AddNew();
    expectError(errorBy([&] { set->setValue(u"filled", u""_s); }), 3315, sentence.arg(u"filled"_s));
    expectError(errorOfStatement(u"insert into strict values ('','x')"_s), 3315,
                sentence.arg(u"strict.filled"_s));
    db().Execute(u"insert into strict values (null,'x')"_s);
    expectError(errorOfStatement(u"update strict set filled=''"_s), 3315,
                sentence.arg(u"strict.filled"_s));
    expectError(errorOfStatement(u"insert into strict select '' as filled, 'y' as must"_s), 3315,
                sentence.arg(u"strict.filled"_s));
}

TEST_F(EngineErrors, ANullIsRefusedByKeysAndRequiredColumns)
{
    expectError(
        errorOfStatement(u"insert into db_all (Titel) values ('x')"_s), 3058,
        u"Die Spalte \"db_all.FID\" gehört zum Primärschlüssel und muss einen Wert haben."_s);
    expectError(errorOfStatement(u"insert into strict (filled) values ('x')"_s), 3314,
                u"Die Spalte \"strict.must\" muss einen Wert haben."_s);
}

TEST_F(EngineErrors, AFileThatIsNoDatabaseIsNamed)
{
    const QString name = path(u"text.mdb"_s);
    QFile file(name);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write("no database at all");
    file.close();
    expectError(errorBy([&] { (void)m_engine->OpenDatabase(name); }), 3343,
                u"Die Datei %1 ist keine Datenbank."_s.arg(name));
}

TEST_F(EngineErrors, ANameWithAMarkInItStaysWhole)
{
    expectError(errorBy([&] { (void)db().OpenRecordset(u"a%2b%1"_s); }), 3078,
                u"Die Tabelle oder Abfrage \"a%2b%1\" ist nicht vorhanden."_s);
    const auto query = db().CreateQueryDef({}, u"select fid from db_all where fid=[p]"_s);
    expectError(errorBy([&] { query->SetParameter(u"x%2"_s, 1); }), 3265,
                u"Die Abfrage \"\" hat keinen Parameter \"x%2\"."_s);
}

} // namespace
} // namespace melovane::test
