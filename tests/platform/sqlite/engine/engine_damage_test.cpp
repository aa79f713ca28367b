#include "platform/db/db_error.h"
#include "platform/sqlite/engine/engine_changes.h"
#include "platform/sqlite/engine/engine_fixture.h"
#include "support/proof.h"
#include "support/work_time.h"

#include <QFile>
#include <QRandomGenerator>

#include <gtest/gtest.h>

namespace melovane::test {
namespace {

constexpr qsizetype kPage = 4096;
/// The journal of WAL: a header, then frames of a small header and a page.
constexpr qsizetype kWalHeader = 32;
constexpr qsizetype kWalFrame = 24 + kPage;
/// Longer than anything takes on a damaged file, even under a sanitizer.
constexpr qint64 kMostWork = 20000; // milliseconds

const QString kMain = u"melovane.mdb"_s;

QByteArray randomBytes(qsizetype size, QRandomGenerator& random)
{
    QByteArray bytes(size, '\0');
    for (char& byte : bytes) {
        byte = char(random.bounded(256));
    }
    return bytes;
}

struct Damage
{
    const char* name;
    /// Changes one page of the file.
    void (*apply)(QByteArray& file, qsizetype page, QRandomGenerator& random);
};

void putPage(QByteArray& file, qsizetype page, const QByteArray& bytes)
{
    file.replace(page * kPage, kPage, bytes);
}

const Damage kDamages[] = {
    {"Zeros",
     [](QByteArray& file, qsizetype page, QRandomGenerator&) {
         putPage(file, page, QByteArray(kPage, '\0'));
     }},
    {"Ones",
     [](QByteArray& file, qsizetype page, QRandomGenerator&) {
         putPage(file, page, QByteArray(kPage, '\xFF'));
     }},
    {"Random",
     [](QByteArray& file, qsizetype page, QRandomGenerator& random) {
         putPage(file, page, randomBytes(kPage, random));
     }},
    {"AnotherPage",
     [](QByteArray& file, qsizetype page, QRandomGenerator& random) {
         putPage(file, page, file.mid(random.bounded(int(file.size() / kPage)) * kPage, kPage));
     }},
    {"SwappedWithTheNext",
     [](QByteArray& file, qsizetype page, QRandomGenerator&) {
         const qsizetype next = (page + 1) % (file.size() / kPage);
         const QByteArray first = file.mid(page * kPage, kPage);
         putPage(file, page, file.mid(next * kPage, kPage));
         putPage(file, next, first);
     }},
    {"FewBytes",
     [](QByteArray& file, qsizetype page, QRandomGenerator& random) {
         for (int i = 0; i < 8; ++i) {
             file[page * kPage + random.bounded(int(kPage))] = char(random.bounded(256));
         }
     }},
    {"FewBytesOfTheHead",
     [](QByteArray& file, qsizetype page, QRandomGenerator& random) {
         constexpr int kHead = 64; // what the rest of a page hangs on
         const qsizetype begin = page == 0 ? 100 : page * kPage;
         for (int i = 0; i < 3; ++i) {
             file[begin + random.bounded(kHead)] = char(random.bounded(256));
         }
     }},
    {"HalfOfItIsOld",
     [](QByteArray& file, qsizetype page, QRandomGenerator&) {
         file.replace(page * kPage + kPage / 2, kPage / 2, QByteArray(kPage / 2, '\0'));
     }},
};

/// What a test did to a file and what came of it.
class DamagedFiles : public testing::Test
{
protected:
    /// Runs the work, which may end in an error that has a text, and in nothing else.
    template <typename Work> bool tries(Work&& work)
    {
        ++m_tries;
        try {
            work();
            return true;
        } catch (const DbError& error) {
            EXPECT_FALSE(error.text().isEmpty());
            ++m_errors;
            return false;
        }
    }

    void readEverything(Database& database)
    {
        std::vector<TableDef> tables;
        QStringList queries;
        tries([&] { tables = database.tableDefs().All(); });
        tries([&] { queries = database.queryDefs().Names(); });
        for (const TableDef& table : tables) {
            tries([&] { (void)rowsOf(database, u"select * from [%1]"_s.arg(table.Name)); });
            tries([&] { (void)database.tableDefs().Item(table.Name); });
        }
        for (const QString& query : queries) {
            tries([&] { (void)database.queryDefs().Item(query)->Fields(); });
        }
        tries([&] { (void)rowsOf(database, u"select * from VPL_ALL order by titel"_s); });
    }

    void changeEverything(Database& database)
    {
        tries([&] { database.Execute(u"insert into db_all (FID, Titel) values ('n', 'x')"_s); });
        tries([&] { database.Execute(u"update db_all set titel='y'+titel"_s); });
        tries([&] { database.Execute(u"insert into TREE_DIR (Name) values ('/n')"_s); });
        tries([&] { database.Execute(u"delete from pl_all where sid<30"_s); });
        tries([&] {
            Transaction transaction(database);
            database.Execute(u"update genre set name='z'"_s);
            transaction.commit();
        });
        tries([&] { database.Execute(u"alter table pl_all add column x text(5)"_s); });
        tries([&] { database.tableDefs().Append(table(u"t"_s, {textField(u"a"_s, 5)})); });
    }

    /// Uses the files as they lie there in every way.
    void useAll()
    {
        const WorkTime timer;
        if (tries([&] { (void)m_scene.db(); })) {
            readEverything(m_scene.db());
            changeEverything(m_scene.db());
            readEverything(m_scene.db());
        }
        tries([&] { m_scene.engine().BackupDatabase(m_scene.path(kMain), m_scene.path(u"c"_s)); });
        m_scene.close();
        EXPECT_LT(timer.elapsed(), kMostWork);
    }

    [[nodiscard]] QByteArray bytesOf(const QString& name)
    {
        QFile file(m_scene.path(name));
        EXPECT_TRUE(file.open(QIODevice::ReadOnly));
        return file.readAll();
    }

    void write(const QString& name, const QByteArray& bytes)
    {
        QFile file(m_scene.path(name));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(bytes);
    }

    void report(const char* what) const
    {
        if (isFullProof()) {
            std::printf("proof: %s: %d operations on damaged files, %d told an error, no crash\n",
                        what, m_tries, m_errors);
        }
    }

    Scene m_scene;
    QRandomGenerator m_random{1848};
    int m_tries = 0;
    int m_errors = 0;
};

class EachPageOfAFile : public DamagedFiles, public testing::WithParamInterface<const char*>
{};

TEST_P(EachPageOfAFile, DamagedInTurnTellsAnErrorOrWorks)
{
    const QString name = QString::fromLatin1(GetParam());
    m_scene.reset();
    const QByteArray whole = bytesOf(name);
    const qsizetype pages = whole.size() / kPage;
    ASSERT_GT(pages, 3);
    for (qsizetype page = 0; page < pages; ++page) {
        const int manners = repetitions(1, int(std::size(kDamages)));
        for (int i = 0; i < manners; ++i) {
            const int manner = isFullProof() ? i : m_random.bounded(int(std::size(kDamages)));
            SCOPED_TRACE(testing::Message() << "page " << page << " " << kDamages[manner].name);
            QByteArray bytes = whole;
            kDamages[manner].apply(bytes, page, m_random);
            m_scene.reset();
            write(name, bytes);
            useAll();
        }
    }
    report(GetParam());
}

TEST_P(EachPageOfAFile, CutOffBehindItTellsAnErrorOrWorks)
{
    const QString name = QString::fromLatin1(GetParam());
    m_scene.reset();
    const QByteArray whole = bytesOf(name);
    const qsizetype step = repetitions(int(kPage) * 3, int(kPage) / 2);
    for (qsizetype size = 0; size < whole.size(); size += step) {
        SCOPED_TRACE(testing::Message() << "cut off at " << size);
        m_scene.reset();
        write(name, whole.left(size));
        useAll();
    }
    report(GetParam());
}

INSTANTIATE_TEST_SUITE_P(File,
                         EachPageOfAFile,
                         testing::Values("melovane.mdb", "melovane.tree.mdb"),
                         [](const testing::TestParamInfo<const char*>& test) {
                             return qstrcmp(test.param, "melovane.mdb") == 0 ? "Main" : "Side";
                         });

/// A database whose last changes stand in the journal, as a killed program leaves it.
class DamagedJournal : public DamagedFiles
{
protected:
    static constexpr int kRows = 12;

    DamagedJournal()
    {
        m_scene.reset();
        for (int i = 1; i <= kRows; ++i) {
            m_scene.db().Execute(u"insert into genre values (%1, 'row')"_s.arg(100 + i));
        }
        m_main = bytesOf(kMain);
        m_journal = bytesOf(kMain + u"-wal"_s);
        EXPECT_GT(m_journal.size(), kWalHeader + kRows * kWalFrame);
    }

    /// Opens the database beside that journal. \return rows of the journal that are there; they
    /// must be the first ones, and the file must be whole
    int rowsWith(const QByteArray& journal, const QByteArray& sharedMemory = {})
    {
        m_scene.reset();
        write(kMain, m_main);
        write(kMain + u"-wal"_s, journal);
        if (!sharedMemory.isEmpty()) {
            write(kMain + u"-shm"_s, sharedMemory);
        }
        const QStringList rows = rowsOf(
            m_scene.db(), u"select genre_id from genre where genre_id>100 order by genre_id"_s);
        for (int i = 0; i < rows.size(); ++i) {
            EXPECT_EQ(rows[i], QString::number(101 + i));
        }
        m_scene.db().Execute(u"insert into genre values (99, 'after')"_s);
        m_scene.close();
        EXPECT_EQ(integrityOf(m_scene.path(kMain)), u"ok"_s);
        return int(rows.size());
    }

    QByteArray m_main;
    QByteArray m_journal;
};

TEST_F(DamagedJournal, IsPlayedUpToTheDamage)
{
    EXPECT_EQ(rowsWith(m_journal), kRows);
    int former = 0;
    for (qsizetype at = kWalHeader; at < m_journal.size(); at += kWalFrame) {
        QByteArray journal = m_journal;
        const qsizetype place = at + m_random.bounded(int(kWalFrame));
        journal[place] = char(~journal[place]);
        const int rows = rowsWith(journal);
        EXPECT_GE(rows, former);
        former = rows;
    }
    EXPECT_EQ(former, kRows - 1);
}

TEST_F(DamagedJournal, IsPlayedAsFarAsItGoes)
{
    const qsizetype step = repetitions(int(kWalFrame) - 11, 512);
    int former = 0;
    for (qsizetype size = 0; size < m_journal.size(); size += step) {
        const int rows = rowsWith(m_journal.left(size));
        EXPECT_GE(rows, former);
        former = rows;
    }
    EXPECT_GE(former, kRows - 2);
}

TEST_F(DamagedJournal, OfRandomBytesIsNotPlayed)
{
    EXPECT_EQ(rowsWith(randomBytes(m_journal.size(), m_random)), 0);
    EXPECT_EQ(
        rowsWith(m_journal.left(kWalHeader) + randomBytes(m_journal.size() - kWalHeader, m_random)),
        0);
}

TEST_F(DamagedJournal, SharedMemoryOfRandomBytesIsMadeAnew)
{
    constexpr qsizetype kUsualSize = 32768;
    for (const qsizetype size : {qsizetype(1), qsizetype(136), kUsualSize, kUsualSize + 5}) {
        EXPECT_EQ(rowsWith(m_journal, randomBytes(size, m_random)), kRows) << size;
    }
}

} // namespace
} // namespace melovane::test
