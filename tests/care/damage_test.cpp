// A library that is damaged in many ways: it is told, or every row can be read; and the last backup
// brings all of it back. Longer: tools/prove_damage.sh
#include "care/backups.h"
#include "care/library_check.h"
#include "platform/linux/zstd_archive.h"
#include "platform/sqlite/engine/database_care.h"
#include "platform/sqlite/engine/sqlite_engine.h"
#include "support/suite_fixture.h"

#include <QFile>
#include <QRandomGenerator>

using namespace Qt::Literals::StringLiterals;
using namespace melovane;

namespace {

constexpr qint64 kPage = 4096;

struct Free : FileLock
{};

QByteArray contentOf(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

/// Each table that has not the same number of rows in both. Notes between programs are left out: a
/// page of another table in place of theirs is whole, and costs a job that is done once more.
QStringList difference(const QStringList& one, const QStringList& other)
{
    QStringList tables = one + other;
    tables.removeDuplicates();
    for (const QString& note : {u"ChangeTree"_s, u"db_edit"_s, u"todo"_s}) {
        tables.removeAll(note);
    }
    QStringList found;
    for (const QString& table : tables) {
        if (one.count(table) != other.count(table)) {
            found.append(
                u"%1: %2 for %3"_s.arg(table).arg(one.count(table)).arg(other.count(table)));
        }
    }
    return found;
}

void overwrite(QByteArray& bytes, qint64 at, qint64 count, QRandomGenerator& random)
{
    for (qint64 i = at; i < std::min<qint64>(at + count, bytes.size()); ++i) {
        bytes[i] = static_cast<char>(random.bounded(256));
    }
}

/// One way of damage, always the same for a seed.
QByteArray damaged(const QByteArray& whole, quint32 seed)
{
    QRandomGenerator random(seed);
    QByteArray bytes = whole;
    const auto pages = quint32(whole.size() / kPage);
    const qint64 page = random.bounded(pages) * kPage;
    switch (seed % 10) {
    case 0: // single bits
        for (quint32 i = 0; i <= random.bounded(8U); ++i) {
            const qint64 at = random.bounded(quint32(bytes.size()));
            bytes[at] = static_cast<char>(bytes[at] ^ (1 << random.bounded(8)));
        }
        break;
    case 1: // a page of nothing, as of a disk that lost it
        bytes.replace(page, kPage, QByteArray(kPage, '\0'));
        break;
    case 2: // a page of noise
        overwrite(bytes, page, kPage, random);
        break;
    case 3: // a page at another one's place
        bytes.replace(page, kPage, whole.mid(random.bounded(pages) * kPage, kPage));
        break;
    case 4: // cut off anywhere
        bytes.truncate(random.bounded(quint32(bytes.size())));
        break;
    case 5: // cut off between pages
        bytes.truncate(page);
        break;
    case 6: // the head of a page
        overwrite(bytes, page, 12, random);
        break;
    case 7: // the head of the file
        overwrite(bytes, random.bounded(100), 1 + random.bounded(8), random);
        break;
    case 8: // some bytes in the middle
        overwrite(bytes, random.bounded(quint32(bytes.size())), 64, random);
        break;
    default: // another file altogether
        overwrite(bytes, 0, bytes.size(), random);
        break;
    }
    return bytes;
}

class DamagedLibrary : public testing::Test
{
protected:
    DamagedLibrary()
    {
        QStringList tracks;
        for (int i = 0; i < 120; ++i) {
            tracks.append(suite.library.add(
                {.Titel = u"Titel %1"_s.arg(i), .Kommentar = QString(200, u'k')}));
        }
        suite.library.addPlaylist({.Name = u"Abend"_s, .tracks = tracks});
        suite.execute(u"update pl_name set anzahl=120"_s);
        EXPECT_EQ(backups().make(BackupOccasion::Daily, [](int) { return true; }),
                  BackupOutcome::Done);
        suite.engine->Release(suite.dbName());
        whole = contentOf(suite.dbName());
        titles = readTitles().value();
    }

    [[nodiscard]] Backups backups()
    {
        return Backups(
            {*care, archives, suite.files, suite.clock, [] { return std::make_unique<Free>(); }},
            {suite.dbName(), suite.dataFolder(), 34150});
    }

    void put(const QByteArray& bytes) const
    {
        for (const QString& ending : {u"-wal"_s, u"-shm"_s}) {
            suite.files.remove(suite.dbName() + ending);
        }
        QFile file(suite.dbName());
        ASSERT_TRUE(file.open(QIODevice::WriteOnly | QIODevice::Truncate));
        file.write(bytes);
    }

    /// What a user sees of his library; nothing when it cannot be read. The engine is new each
    /// time, as after a start.
    [[nodiscard]] std::optional<QStringList> readTitles() const
    {
        try {
            QStringList all;
            const auto engine = sqlite::makeEngine(suite.clock);
            const auto database = engine->OpenDatabase(suite.dbName());
            for (const QString& table : database->tableDefs().ownNames()) {
                const auto rows = database->OpenRecordset(u"select * from "_s + table);
                for (; !rows->Eof(); rows->MoveNext()) {
                    for (int column = 0; column < rows->fieldCount(); ++column) {
                        (void)rows->value(column);
                    }
                    all.append(table);
                }
            }
            return all;
        } catch (const DbError&) {
            return std::nullopt;
        }
    }

    [[nodiscard]] bool isTold() const
    {
        const auto engine = sqlite::makeEngine(suite.clock);
        CheckDatabase open(*engine, suite.files, suite.clock,
                           {suite.dbName(), suite.dataFolder(), u"Other"_s}, {});
        if (!open.openTest().isEmpty()) {
            return true;
        }
        LibraryCheck check({*engine, *care, suite.files, suite.clock}, {suite.dbName()});
        return !check.run(DatabaseCare::Depth::Indexes, [](qint64, qint64) { return true; })
                    .value()
                    .empty();
    }

    test::Suite suite;
    std::unique_ptr<DatabaseCare> care = sqlite::makeDatabaseCare(suite.clock);
    ZstdArchives archives;
    QByteArray whole;
    QStringList titles; ///< a line per row of the whole library
};

} // namespace

TEST_F(DamagedLibrary, IsToldOrGivesAllItsRowsAndComesBackFromItsBackup)
{
    const int count = qMax(60, qEnvironmentVariableIntValue("MLV_DAMAGES"));
    const QString backup = backups().list().front().name;
    int told = 0;
    for (int seed = qMax(1, qEnvironmentVariableIntValue("MLV_FIRST")); seed <= count; ++seed) {
        put(damaged(whole, quint32(seed)));
        const bool isKnown = isTold();
        told += isKnown ? 1 : 0;
        if (!isKnown) {
            const auto rows = readTitles();
            ASSERT_TRUE(rows.has_value()) << "seed " << seed << " was silent";
            ASSERT_EQ(difference(*rows, titles).join(u'|').toStdString(), std::string())
                << "seed " << seed;
            continue;
        }
        ASSERT_EQ(backups().restore(backup, false, [](int) { return true; }), BackupOutcome::Done)
            << "seed " << seed;
        ASSERT_EQ(readTitles(), titles) << "seed " << seed;
        ASSERT_FALSE(isTold()) << "seed " << seed;
        for (const Backup& safety : backups().list()) {
            if (safety.name != backup) {
                suite.files.remove(backups().fullName(safety.name));
            }
        }
    }
    RecordProperty("told", told);
    EXPECT_GT(told, count * 6 / 10);
}
