#include "platform/db/sql_text.h"
#include "platform/sqlite/engine/database_file.h"
#include "platform/sqlite/engine/engine_fixture.h"
#include "support/as_nobody.h"

#include <QDir>
#include <QFile>
#include <QRandomGenerator>

#include <sqlite3.h>
#include <sys/stat.h>
#include <unistd.h>

namespace melovane::test {
namespace {

class EngineHostileFile : public EngineTest
{
protected:
    /// Writes the bytes, tries to use them as a database, and returns the error; the file must stay
    /// as it was, whatever happens.
    int errorOfBytes(const QByteArray& bytes)
    {
        const QString name = u"hostile.mdb"_s;
        m_folder.write(name, bytes);
        const int error = errorOf([&] {
            const auto database = m_engine->OpenDatabase(path(name));
            for (const TableDef& found : database->tableDefs().All()) {
                const auto set = database->OpenRecordset(found.Name);
                while (!set->Eof()) {
                    (void)set->value(0);
                    set->MoveNext();
                }
            }
        });
        m_engine->Release(path(name));
        EXPECT_EQ(m_folder.read(name), bytes);
        return error;
    }

    /// The bytes of a whole database with rows.
    QByteArray wholeFile()
    {
        makeSuite();
        Transaction transaction(db());
        for (int i = 0; i < 300; ++i) {
            addTrack(u"%1"_s.arg(i), QString(50, u'x'));
        }
        transaction.commit();
        db().Close();
        m_engine->Release(path());
        return m_folder.read(u"melovane.mdb"_s);
    }
};

class ReadOnlyMedia : public EngineHostileFile, public testing::WithParamInterface<mode_t>
{};

TEST_P(ReadOnlyMedia, CanBeReadAndRefuseEveryChange)
{
    const QByteArray bytes = wholeFile();
    const QByteArray file = QFile::encodeName(path());
    const QByteArray folder = QFile::encodeName(m_folder.path());
    ASSERT_EQ(::chmod(file.constData(), GetParam()), 0);
    ASSERT_EQ(::chmod(folder.constData(), 0555), 0);
    {
        const AsNobody nobody;
        const auto database = m_engine->OpenDatabase(path());
        EXPECT_EQ(
            database->OpenRecordset(u"select count(*) as anz from db_all"_s)->value(0).toLong(),
            300);
        EXPECT_EQ(errorOf([&] { database->Execute(u"delete from db_all"_s); }), dberror::kReadOnly);
    }
    m_engine->Release(path());
    ASSERT_EQ(::chmod(folder.constData(), 0755), 0);
    EXPECT_EQ(m_folder.read(u"melovane.mdb"_s), bytes);
    EXPECT_FALSE(QFile::exists(path() + u"-shm"_s));
}

INSTANTIATE_TEST_SUITE_P(FileModes, ReadOnlyMedia, testing::Values(mode_t{0444}, mode_t{0666}));

TEST_F(EngineHostileFile, AMissingFileIs3024)
{
    EXPECT_EQ(errorOf([&] { (void)m_engine->OpenDatabase(path(u"none.mdb"_s)); }), 3024);
    EXPECT_EQ(errorOf([&] { (void)m_engine->OpenDatabase(path(u"no/folder/none.mdb"_s)); }), 3024);
    EXPECT_EQ(errorOf([&] { (void)m_engine->OpenDatabase(path() + u"/below"_s); }), 3024);
    EXPECT_EQ(errorOf([&] { (void)m_engine->OpenDatabase({}); }), 3024);
}

TEST_F(EngineHostileFile, AnEmptyFileIsNoDatabase)
{
    EXPECT_EQ(errorOfBytes({}), dberror::kUnrecognisedFormat);
}

TEST_F(EngineHostileFile, RandomBytesAreNoDatabase)
{
    QRandomGenerator random(4711);
    for (const int size : {1, 15, 16, 99, 100, 101, 4096, 70000}) {
        QByteArray bytes(size, '\0');
        for (char& byte : bytes) {
            byte = char(random.bounded(256));
        }
        EXPECT_EQ(errorOfBytes(bytes), dberror::kUnrecognisedFormat) << size;
    }
}

TEST_F(EngineHostileFile, AFileOfThePreviousEngineGetsAClearMessage)
{
    const QByteArray header = QByteArray("\0\1\0\0Standard Jet DB\0", 20) + QByteArray(4076, '\0');
    EXPECT_EQ(errorOfBytes(header), dberror::kPreviousEngineFile);
    EXPECT_EQ(errorOfBytes(header.left(19)), dberror::kPreviousEngineFile);
    EXPECT_EQ(errorOfBytes(QByteArray("\0\1\0\0Standard XYZ", 16)), dberror::kUnrecognisedFormat);
}

TEST_F(EngineHostileFile, ADatabaseOfAnotherProgramIsNotTouched)
{
    sqlite3* raw = nullptr;
    ASSERT_EQ(sqlite3_open(path(u"foreign"_s).toUtf8().constData(), &raw), SQLITE_OK);
    sqlite3_exec(raw, "CREATE TABLE t(a); INSERT INTO t VALUES(1)", nullptr, nullptr, nullptr);
    sqlite3_close(raw);
    EXPECT_EQ(errorOfBytes(m_folder.read(u"foreign"_s)), dberror::kUnrecognisedFormat);
}

TEST_F(EngineHostileFile, AnotherProgramsDatabaseUnderOurMarkIsNotTouched)
{
    sqlite3* raw = nullptr;
    ASSERT_EQ(sqlite3_open(path(u"foreign"_s).toUtf8().constData(), &raw), SQLITE_OK);
    const QByteArray sql =
        "CREATE TABLE t(a); PRAGMA application_id=" + QByteArray::number(sqlite::kApplicationId);
    sqlite3_exec(raw, sql.constData(), nullptr, nullptr, nullptr);
    sqlite3_close(raw);
    EXPECT_EQ(errorOfBytes(m_folder.read(u"foreign"_s)), dberror::kUnrecognisedFormat);
}

TEST_F(EngineHostileFile, ATruncatedFileIsDamaged)
{
    const QByteArray whole = wholeFile();
    for (const qsizetype size : {qsizetype(20), qsizetype(99), qsizetype(100), qsizetype(512),
                                 qsizetype(4095), qsizetype(4096), qsizetype(8192),
                                 whole.size() / 2, whole.size() - 4096, whole.size() - 1}) {
        EXPECT_EQ(errorOfBytes(whole.left(size)), dberror::kCorrupt) << size;
    }
    EXPECT_EQ(errorOfBytes(whole), 0);
}

TEST_F(EngineHostileFile, BytesOverwrittenAnywhereNeverCrash)
{
    const QByteArray whole = wholeFile();
    QRandomGenerator random(815);
    for (int round = 0; round < 60; ++round) {
        QByteArray bytes = whole;
        const qsizetype at = 100 + random.bounded(int(whole.size()) - 400);
        for (qsizetype i = 0; i < 200; ++i) {
            bytes[at + i] = char(random.bounded(256));
        }
        (void)errorOfBytes(bytes);
    }
}

TEST_F(EngineHostileFile, AFolderInPlaceOfAFileCannotBeOpened)
{
    QDir().mkpath(path(u"folder.mdb"_s));
    EXPECT_EQ(errorOf([&] { (void)m_engine->OpenDatabase(path(u"folder.mdb"_s)); }),
              dberror::kCannotOpen);
}

TEST_F(EngineHostileFile, AFileThatCannotBeReachedCannotBeOpened)
{
    const QByteArray loop = path(u"loop.mdb"_s).toUtf8();
    ASSERT_EQ(::symlink(loop.constData(), loop.constData()), 0);
    EXPECT_EQ(errorOf([&] { (void)m_engine->OpenDatabase(path(u"loop.mdb"_s)); }),
              dberror::kCannotOpen);
    EXPECT_EQ(errorOf([&] { (void)m_engine->OpenDatabase(u"/dev/null"_s); }), dberror::kCannotOpen);
}

TEST_F(EngineHostileFile, ADatabaseInAFolderThatIsMissingCannotBeCreated)
{
    EXPECT_EQ(
        errorOf([&] { (void)m_engine->Workspaces(0).CreateDatabase(path(u"no/new.mdb"_s), {}); }),
        dberror::kCannotOpen);
}

TEST(DatabaseFile, SharedMemoryIsNotTrustedOnTheNetwork)
{
    EXPECT_TRUE(sqlite::sharesMemory(0xEF53)) << "ext4";
    EXPECT_TRUE(sqlite::sharesMemory(0x01021994)) << "tmpfs";
    EXPECT_FALSE(sqlite::sharesMemory(0x6969)) << "nfs";
    EXPECT_FALSE(sqlite::sharesMemory(qint32(0xFF534D42))) << "cifs, sign extended";
    EXPECT_FALSE(sqlite::sharesMemory(0x65735546)) << "fuse";
}

struct Text
{
    const char* name;
    QString value;
};

/// Values that break careless programs, through both doors.
class EngineHostileValue : public EngineTest, public testing::WithParamInterface<Text>
{
protected:
    EngineHostileValue()
    {
        db().tableDefs().Append(
            table(u"t"_s, {field(u"m"_s, FieldType::Memo), textField(u"s"_s, 255)}));
    }
};

TEST_P(EngineHostileValue, ComesOutAsItWentInThroughARecordset)
{
    const QString value = GetParam().value;
    const auto set = db().OpenRecordset(u"t"_s);
    set->AddNew();
    set->setValue(u"m", value);
    set->Update();
    EXPECT_EQ(sibling()->OpenRecordset(u"t"_s)->value(u"m").toText(), value);
}

TEST_P(EngineHostileValue, ComesOutAsItWentInThroughAStatement)
{
    const QString value = GetParam().value;
    db().Execute(u"insert into t (m) values (%1)"_s.arg(sql::text(value)));
    EXPECT_EQ(sibling()->OpenRecordset(u"t"_s)->value(u"m").toText(), value);
    EXPECT_EQ(rowsOf(db(), u"select m from t where m=%1"_s.arg(sql::text(value))).size(), 1);
}

TEST_P(EngineHostileValue, ComesOutAsItWentInThroughAParameter)
{
    const QString value = GetParam().value;
    const auto query =
        db().CreateQueryDef({}, u"parameters v Memo; insert into t (m) values (v)"_s);
    query->SetParameter(u"v"_s, value);
    query->Execute();
    EXPECT_EQ(sibling()->OpenRecordset(u"t"_s)->value(u"m").toText(), value);
}

INSTANTIATE_TEST_SUITE_P(All,
                         EngineHostileValue,
                         testing::Values(Text{"Quotes", u"it's \"quoted\" `x` ''"_s},
                                         Text{"Brackets", u"[a] ]] [[ {x} (y)"_s},
                                         Text{"Wildcards", u"* ? # % _ [!a-z]"_s},
                                         Text{"LineFeeds", u"a\nb\r\nc\td"_s},
                                         Text{"Comments", u"-- /* */ ; drop table t"_s},
                                         Text{"Marks", u"?1 :a @b $c %1 %%"_s},
                                         Text{"Empty", QString(u""_s)},
                                         Text{"Blanks", u"   "_s},
                                         Text{"Backslashes", u"C:\\Music\\'\\"_s},
                                         Text{"Umlauts", u"ÄÖÜäöüß éñ 日本語"_s},
                                         Text{"Emoji", u"🎵🎶"_s},
                                         Text{"Decomposed", u"A\u0308rger"_s},
                                         Text{"LoneHighSurrogate", u"a"_s + QChar(0xD83C) + u"b"_s},
                                         Text{"LoneLowSurrogate", QChar(0xDF00) + u"b"_s},
                                         Text{"SurrogateAtTheEnd", u"a"_s + QChar(0xD83C)},
                                         Text{"ReplacementCharacter", u"a\uFFFD\uFFFE b"_s},
                                         Text{"TenThousandLetters", QString(10000, u'ä')},
                                         Text{"Controls", u"\u0001\u001f\u007f\u0085\u2028"_s}),
                         [](const testing::TestParamInfo<Text>& test) { return test.param.name; });

class EngineHostileValues : public EngineTest
{
protected:
    EngineHostileValues()
    {
        db().tableDefs().Append(
            table(u"t"_s, {field(u"m"_s, FieldType::Memo), textField(u"s"_s, 255)}));
    }
};

TEST_F(EngineHostileValues, ZeroCharactersAreDroppedAndTheRestStays)
{
    const QString value = u"a"_s + QChar(u'\0') + u"b"_s;
    const auto set = db().OpenRecordset(u"t"_s);
    set->AddNew();
    set->setValue(u"m", value);
    EXPECT_EQ(set->value(u"m").toText(), u"ab"_s);
    set->Update();
    db().Execute(u"insert into t (m) values (%1)"_s.arg(sql::text(value)));
    EXPECT_EQ(rowsOf(db(), u"select m from t"_s), (QStringList{u"ab"_s, u"ab"_s}));
}

TEST_F(EngineHostileValues, ATextOfExactlyTheWidthFitsAndOneMoreDoesNot)
{
    const auto set = db().OpenRecordset(u"t"_s);
    set->AddNew();
    set->setValue(u"s", QString(255, u'ä'));
    EXPECT_EQ(errorOf([&] { set->setValue(u"s", QString(256, u'ä')); }), dberror::kFieldTooSmall);
    set->Update();
    EXPECT_EQ(rowsOf(db(), u"select s from t"_s), QStringList{QString(255, u'ä')});
    EXPECT_EQ(errorOf([&] {
                  db().Execute(
                      u"insert into t (s) values (%1)"_s.arg(sql::text(QString(256, u'x'))));
              }),
              dberror::kFieldTooSmall);
}

TEST_F(EngineHostileValues, NamesWithQuotesAndOddLettersWork)
{
    db().tableDefs().Append(
        table(u"it's a 'table'"_s, {textField(u"select"_s, 5), textField(u"a.b c;--"_s, 5)}));
    const auto set = db().OpenRecordset(u"it's a 'table'"_s);
    set->AddNew();
    set->setValue(u"select", u"1"_s);
    set->setValue(u"A.B C;--", u"2"_s);
    set->Update();
    EXPECT_EQ(rowsOf(db(), u"select [select] from [it's a 'table']"_s), QStringList{u"1"_s});
}

} // namespace
} // namespace melovane::test
