#include "platform/sqlite/index/column_index_fixture.h"
#include "platform/sqlite/index/index_checksum.h"
#include "platform/sqlite/index/index_snapshot.h"

#include <QDataStream>
#include <QDir>
#include <QFile>

#include <cmath>
#include <cstring>

/// The index that a run keeps for the next start: used only when it is whole and still true.
namespace melovane::test {
namespace {

const QString kAll = u"select [FID] ,[TITEL] from db_all\n where ( [Titel] like 'a*' ) "
                     "order by [Titel] ASC"_s;
const QString kByAlbum = u"select [FID] ,[TITEL] from db_all\n where ( [Album] like 'album 7' ) "
                         "order by [Album] DESC"_s;

class ColumnIndexSnapshot : public ColumnIndexTest
{
protected:
    ColumnIndexSnapshot()
    {
        addTrack(u"1"_s, u"Abba"_s);
        addTrack(u"2"_s, u"Adele"_s);
        addTrack(u"3"_s, u"Beck"_s);
        raw(u"WITH RECURSIVE n(i) AS (SELECT 100 UNION ALL SELECT i+1 FROM n WHERE i<20200) "
            "INSERT INTO db_all(FID,Titel,Album,BPM) SELECT i,'Bulk '||i,'Album '||(i%500),i%200 "
            "FROM n"_s);
    }

    /// A run of a program that searches: its engine, and what it still does when it is idle. A
    /// search that begins a load does one slice of it.
    struct Run
    {
        Run(const Clock& clock, const QString& file, const QString& folder)
            : engine(sqlite::makeEngine(
                  clock,
                  {.searchIndex = figures,
                   .whenIdle = [this](std::function<bool()> next) { work = std::move(next); },
                   .searchTimeout = std::chrono::milliseconds(0),
                   .snapshotFolder = folder}))
            , database(engine->OpenDatabase(file))
        {}

        void finish()
        {
            while (work && work()) {
            }
        }

        std::shared_ptr<sqlite::IndexFigures> figures = std::make_shared<sqlite::IndexFigures>();
        std::function<bool()> work;
        std::unique_ptr<DBEngine> engine;
        std::unique_ptr<Database> database;
    };

    [[nodiscard]] QString folder() const { return path(u"cache"_s); }

    [[nodiscard]] std::unique_ptr<Run> start() const
    {
        return std::make_unique<Run>(m_clock, path(), folder());
    }

    /// The only file of the folder; fails when there are others.
    [[nodiscard]] QString snapshot() const
    {
        const QStringList names = QDir(folder()).entryList(QDir::Files);
        EXPECT_EQ(names.size(), 1) << names.join(u", ").toStdString();
        return folder() + u'/' + names.value(0);
    }

    void keep()
    {
        const auto run = start();
        ASSERT_EQ(rowsOf(*run->database, kAll).size(), 2);
        run->finish();
        ASSERT_EQ(run->figures->kept, 1);
    }

    /// A start whose first search is answered at once from the snapshot.
    void expectUsed(const QStringList& rows)
    {
        const auto run = start();
        EXPECT_EQ(rowsOf(*run->database, kAll), rows);
        EXPECT_EQ(run->figures->snapshots, 1);
        EXPECT_EQ(run->figures->answers, 1);
        EXPECT_EQ(run->figures->loads, 0);
    }

    /// A start that reads the table as if there were no snapshot, and finds these rows.
    void expectIgnored(const QStringList& rows)
    {
        const auto run = start();
        EXPECT_EQ(rowsOf(*run->database, kAll), rows);
        run->finish();
        EXPECT_EQ(rowsOf(*run->database, kAll), rows);
        EXPECT_EQ(run->figures->snapshots, 0);
        EXPECT_EQ(run->figures->loads, 1);
    }

    void change(const QString& file, qint64 at)
    {
        QFile bytes(file);
        ASSERT_TRUE(bytes.open(QIODevice::ReadWrite));
        bytes.seek(at);
        char byte = 0;
        bytes.getChar(&byte);
        bytes.seek(at);
        bytes.putChar(char(byte ^ 0x10));
    }

    const QStringList m_rows{u"1|Abba"_s, u"2|Adele"_s};
};

TEST_F(ColumnIndexSnapshot, TheFirstSearchOfTheNextStartIsAnsweredFromIt)
{
    keep();
    expectUsed(m_rows);
}

TEST_F(ColumnIndexSnapshot, ColumnsAndOrdersAreTheSameAsWithout)
{
    keep();
    const auto run = start();
    ASSERT_EQ(rowsOf(*run->database, kAll), m_rows);
    for (const QString& statement :
         {kByAlbum,
          u"select [FID] from db_all\n where ( [Titel] like 'bulk 1*' ) order by [BPM] ASC, "
          "[Titel] DESC"_s,
          u"select [FID] from db_all\n where ( [Album] like '*m 12*' ) and del in (0,-1)  order by "
          "[Titel] ASC"_s}) {
        EXPECT_EQ(rowsOf(*run->database, statement), rowsOf(plain(), statement))
            << statement.toStdString();
    }
    EXPECT_EQ(run->figures->left, 0);
    EXPECT_EQ(run->figures->loads, 0);
}

TEST_F(ColumnIndexSnapshot, WhatChangedSinceIsTakenFromTheDatabase)
{
    keep();
    raw(u"UPDATE db_all SET Titel='Axel', Album='Album 7' WHERE FID='3'"_s);
    raw(u"DELETE FROM db_all WHERE FID='1'"_s);
    raw(u"INSERT INTO db_all(FID,Titel) VALUES('9','Aaa')"_s);
    expectUsed({u"9|Aaa"_s, u"2|Adele"_s, u"3|Axel"_s});
    const auto run = start();
    ASSERT_EQ(rowsOf(*run->database, kAll).size(), 3);
    EXPECT_EQ(rowsOf(*run->database, kByAlbum), rowsOf(plain(), kByAlbum));
}

TEST_F(ColumnIndexSnapshot, ChangesWhileItWasMadeAreNotLost)
{
    {
        const auto run = start();
        ASSERT_EQ(rowsOf(*run->database, kAll).size(), 2);
        ASSERT_TRUE(run->work && run->work());
        raw(u"UPDATE db_all SET Titel='Aaron' WHERE FID='3'"_s);
        run->finish();
        ASSERT_EQ(run->figures->kept, 1);
    }
    expectUsed({u"3|Aaron"_s, u"1|Abba"_s, u"2|Adele"_s});
}

TEST_F(ColumnIndexSnapshot, MoreChangesThanTheListTellsOfMakeItWorthless)
{
    keep();
    raw(u"UPDATE db_all SET Jahr='1999'"_s);
    expectIgnored(m_rows);
}

TEST_F(ColumnIndexSnapshot, AnotherSetOfColumnsMakesItWorthless)
{
    keep();
    raw(u"ALTER TABLE db_all ADD COLUMN Extra TEXT"_s);
    expectIgnored(m_rows);
}

TEST_F(ColumnIndexSnapshot, ACopyFromBeforeItThatWentItsOwnWayIsNotTakenForItsDatabase)
{
    const auto engine = sqlite::makeEngine(m_clock);
    {
        // The list of changes is there before the copy is made.
        const auto run = start();
        ASSERT_EQ(rowsOf(*run->database, kAll).size(), 2);
    }
    engine->BackupDatabase(path(), path(u"copy.mdb"_s));
    raw(u"UPDATE db_all SET Titel='Azz' WHERE FID='3'"_s);
    {
        const auto run = start();
        ASSERT_EQ(rowsOf(*run->database, kAll).size(), 3);
        run->finish();
        ASSERT_EQ(run->figures->kept, 1);
    }
    // Back to the copy, in which the same row changes, by as many entries of the list.
    m_raw.reset();
    engine->BackupDatabase(path(u"copy.mdb"_s), path());
    m_raw = std::make_unique<sqlite::Connection>(
        path(),
        sqlite::ConnectionOptions{std::chrono::seconds(3), [this] { return m_clock.now(); }});
    raw(u"UPDATE db_all SET Titel='Zzz' WHERE FID='3'"_s);
    raw(u"INSERT INTO mlv_change(key) VALUES(3)"_s);
    expectIgnored(m_rows);
}

TEST_F(ColumnIndexSnapshot, ASingleChangedByteAnywhereShowsNoWrongRow)
{
    keep();
    const QString file = snapshot();
    const qint64 size = QFileInfo(file).size();
    ASSERT_TRUE(QFile::copy(file, path(u"whole"_s)));
    const QStringList byAlbum = rowsOf(plain(), kByAlbum);
    for (qint64 at = 0; at < size; at += at < 100 ? 8 : size / 25) {
        QFile::remove(file);
        ASSERT_TRUE(QFile::copy(path(u"whole"_s), file));
        change(file, at);
        const auto run = start();
        ASSERT_EQ(rowsOf(*run->database, kAll), m_rows) << at;
        ASSERT_EQ(rowsOf(*run->database, kByAlbum), byAlbum) << at;
    }
}

TEST_F(ColumnIndexSnapshot, ATextOfWhichALetterFellOverIsNotBelieved)
{
    keep();
    QFile file(snapshot());
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    const qsizetype place = file.readAll().indexOf("adele");
    ASSERT_GT(place, 0);
    change(file.fileName(), place);
    const auto run = start();
    EXPECT_EQ(rowsOf(*run->database, kAll), m_rows);
    run->finish();
    EXPECT_EQ(rowsOf(*run->database, kAll), m_rows);
}

TEST_F(ColumnIndexSnapshot, AFileCutOffAnywhereIsReadAsFarAsItIsWhole)
{
    keep();
    const QString file = snapshot();
    const qint64 size = QFileInfo(file).size();
    for (qint64 length = size - 1; length > 0; length -= size / 9) {
        QFile::resize(file, length);
        const auto run = start();
        ASSERT_EQ(rowsOf(*run->database, kAll), m_rows) << length;
    }
    QFile::resize(file, 0);
    expectIgnored(m_rows);
}

TEST_F(ColumnIndexSnapshot, ColumnsThatTheFileLosesInTheRunComeFromTheDatabase)
{
    keep();
    const auto run = start();
    ASSERT_EQ(rowsOf(*run->database, kAll), m_rows);
    QFile::resize(snapshot(), 500);
    EXPECT_EQ(rowsOf(*run->database, kByAlbum), rowsOf(plain(), kByAlbum));
    EXPECT_EQ(run->figures->left, 0);
}

TEST_F(ColumnIndexSnapshot, APieceWithRightChecksumsAndWrongNumbersIsRefused)
{
    using namespace sqlite;
    IndexColumnParts parts;
    parts.isText = false;
    parts.numbers = IndexArray(std::vector<double>{1, 2});
    parts.values = IndexArray(std::vector<quint32>{1, 2, 0});
    parts.ends = IndexArray(std::vector<quint32>{1, 2, 3});
    parts.rows = IndexArray(std::vector<quint32>{2, 0, 1});
    EXPECT_TRUE(IndexColumn::fromParts(parts, 3));
    EXPECT_FALSE(IndexColumn::fromParts(parts, 4));
    const auto refuses = [&](auto IndexColumnParts::*part, auto items) {
        IndexColumnParts wrong = parts;
        wrong.*part = IndexArray(items);
        return !IndexColumn::fromParts(wrong, 3);
    };
    using Numbers = std::vector<quint32>;
    EXPECT_TRUE(refuses(&IndexColumnParts::values, Numbers{1, 3, 0}));
    EXPECT_TRUE(refuses(&IndexColumnParts::rows, Numbers{2, 0, 3}));
    EXPECT_TRUE(refuses(&IndexColumnParts::ends, Numbers{1, 3, 2}));
    EXPECT_TRUE(refuses(&IndexColumnParts::ends, Numbers{1, 2, 4}));
    EXPECT_TRUE(refuses(&IndexColumnParts::ends, Numbers{1, 3}));
    // Each in its range, but not of each other.
    EXPECT_TRUE(refuses(&IndexColumnParts::values, Numbers{1, 1, 1}));
    EXPECT_TRUE(refuses(&IndexColumnParts::ends, Numbers{1, 1, 3}));
    EXPECT_TRUE(refuses(&IndexColumnParts::rows, Numbers{2, 0, 0}));
    EXPECT_TRUE(refuses(&IndexColumnParts::rows, Numbers{0, 2, 1}));
    EXPECT_TRUE(refuses(&IndexColumnParts::numbers, std::vector<double>{2, 1}));
    EXPECT_TRUE(refuses(&IndexColumnParts::numbers, std::vector<double>{1, std::nan("")}));
}

TEST_F(ColumnIndexSnapshot, TextsThatDoNotEndWhereTheirColumnSaysAreRefused)
{
    using namespace sqlite;
    const auto takes = [](std::string_view letters, std::vector<quint32> textEnds) {
        IndexColumnParts parts;
        parts.letters = IndexArray(std::vector<char>(letters.begin(), letters.end()));
        parts.textEnds = IndexArray(std::move(textEnds));
        parts.values = IndexArray(std::vector<quint32>{1, 2, 0});
        parts.ends = IndexArray(std::vector<quint32>{1, 2, 3});
        parts.rows = IndexArray(std::vector<quint32>{2, 0, 1});
        return IndexColumn::fromParts(std::move(parts), 3) != nullptr;
    };
    EXPECT_TRUE(takes("ab\xFFz\xFF", {2, 4}));
    EXPECT_FALSE(takes("ab\xFFz\xFF", {2, 3}));
    EXPECT_FALSE(takes("ab\xFFz\xFF", {2, 400}));
    EXPECT_FALSE(takes("ab\xFFz\xFF\xFF", {2, 4}));
    EXPECT_FALSE(takes("abzzz", {2, 4}));
}

/// The file with other numbers in one of its pieces and with the checksums that belong to them.
class Forgery
{
public:
    explicit Forgery(const QString& file)
        : m_file(file)
    {
        QFile source(file);
        EXPECT_TRUE(source.open(QIODevice::ReadOnly));
        m_bytes = source.readAll();
        QDataStream stream(m_bytes.sliced(number(kDirectoryAt), number(kDirectoryAt + 8)));
        stream.setVersion(QDataStream::Qt_6_0);
        while (!stream.atEnd()) {
            m_entries.push_back(read(stream));
        }
    }

    /// Changes the numbers of a piece of a column: 3 the value of each row, 4 the ends of the
    /// values, 5 the rows by value.
    template <typename Change> void change(const QString& column, std::size_t piece, Change&& apply)
    {
        for (sqlite::IndexSnapshot::Entry& entry : m_entries) {
            if (entry.kind == 1 && entry.name == column) {
                sqlite::IndexSnapshot::Piece& target = entry.pieces[piece];
                std::vector<quint32> numbers(std::size_t(target.bytes) / sizeof(quint32));
                std::memcpy(numbers.data(), m_bytes.constData() + target.offset,
                            std::size_t(target.bytes));
                apply(std::span(numbers));
                std::memcpy(m_bytes.data() + target.offset, numbers.data(),
                            std::size_t(target.bytes));
                target.checksum = sumOf(target.offset, target.bytes);
                ++m_changed;
            }
        }
    }

    void write()
    {
        EXPECT_EQ(m_changed, 1);
        QByteArray directory;
        QDataStream stream(&directory, QIODevice::WriteOnly);
        stream.setVersion(QDataStream::Qt_6_0);
        for (const sqlite::IndexSnapshot::Entry& entry : m_entries) {
            write(stream, entry);
        }
        ASSERT_EQ(directory.size(), number(kDirectoryAt + 8));
        m_bytes.replace(number(kDirectoryAt), directory.size(), directory);
        setSum(kDirectoryAt + 16, sumOf(number(kDirectoryAt), directory.size()));
        setSum(kDirectoryAt + 24, sumOf(0, kDirectoryAt + 24));
        QFile target(m_file);
        ASSERT_TRUE(target.open(QIODevice::WriteOnly));
        target.write(m_bytes);
    }

private:
    /// Of the header: place and size of the directory, its checksum, and that of the header.
    static constexpr qint64 kDirectoryAt = 64;

    static sqlite::IndexSnapshot::Entry read(QDataStream& stream)
    {
        sqlite::IndexSnapshot::Entry entry;
        quint32 pieces = 0;
        stream >> entry.kind >> entry.name >> entry.isText >> entry.fits >> pieces;
        for (quint32 i = 0; i < pieces; ++i) {
            sqlite::IndexSnapshot::Piece& piece = entry.pieces.emplace_back();
            stream >> piece.offset >> piece.bytes >> piece.checksum;
        }
        return entry;
    }

    static void write(QDataStream& stream, const sqlite::IndexSnapshot::Entry& entry)
    {
        stream << entry.kind << entry.name << entry.isText << entry.fits
               << quint32(entry.pieces.size());
        for (const sqlite::IndexSnapshot::Piece& piece : entry.pieces) {
            stream << piece.offset << piece.bytes << piece.checksum;
        }
    }

    [[nodiscard]] qint64 number(qint64 at) const
    {
        qint64 result = 0;
        std::memcpy(&result, m_bytes.constData() + at, sizeof result);
        return result;
    }

    [[nodiscard]] quint64 sumOf(qint64 offset, qint64 bytes) const
    {
        return sqlite::IndexChecksum::of(m_bytes.constData() + offset, std::size_t(bytes));
    }

    void setSum(qint64 at, quint64 sum) { std::memcpy(m_bytes.data() + at, &sum, sizeof sum); }

    QString m_file;
    QByteArray m_bytes;
    std::vector<sqlite::IndexSnapshot::Entry> m_entries;
    int m_changed = 0;
};

TEST_F(ColumnIndexSnapshot, AForgedFileWithRightChecksumsNeitherShowsWrongRowsNorHarmsTheProgram)
{
    keep();
    const QString file = snapshot();
    ASSERT_TRUE(QFile::copy(file, path(u"whole"_s)));
    const QString down = u"select [FID] from db_all where [Titel] like '*' order by [Titel] DESC"_s;
    const QStringList rows = rowsOf(plain(), down);
    using Numbers = std::span<quint32>;
    const std::function<void(Numbers)> changes[] = {
        [](Numbers numbers) { std::ranges::fill(numbers, numbers.back()); },
        [](Numbers numbers) { std::ranges::fill(numbers, 0U); },
        [](Numbers numbers) { std::swap(numbers[0], numbers[1]); },
        [](Numbers numbers) { ++numbers[numbers.size() / 2]; },
        [](Numbers numbers) { numbers[0] = 0xFFFFFFFF; },
    };
    for (const std::size_t piece : {3U, 4U, 5U}) {
        for (const auto& change : changes) {
            QFile::remove(file);
            ASSERT_TRUE(QFile::copy(path(u"whole"_s), file));
            Forgery forgery(file);
            forgery.change(u"Titel"_s, piece, change);
            forgery.write();
            const auto run = start();
            ASSERT_EQ(rowsOf(*run->database, kAll), m_rows) << piece;
            ASSERT_EQ(rowsOf(*run->database, down), rows) << piece;
            ASSERT_EQ(run->figures->snapshots, 1) << "the rest of the file is still good";
            ASSERT_EQ(run->figures->left, 0) << piece;
        }
    }
}

TEST_F(ColumnIndexSnapshot, WhatAKilledProgramLeftUnfinishedIsGoneAtTheNextStart)
{
    keep();
    const QString file = snapshot();
    QFile left(file + u".0123456789abcdef.part"_s);
    ASSERT_TRUE(left.open(QIODevice::WriteOnly));
    left.close();
    expectUsed(m_rows);
    EXPECT_EQ(snapshot(), file);
}

TEST_F(ColumnIndexSnapshot, WhatAnotherProgramIsJustWritingStays)
{
    keep();
    raw(u"UPDATE db_all SET Jahr='1999'"_s);
    const auto run = start();
    ASSERT_EQ(rowsOf(*run->database, kAll), m_rows);
    while (run->figures->loads == 0) {
        ASSERT_TRUE(run->work());
    }
    ASSERT_TRUE(run->work()); // the file is marked
    ASSERT_TRUE(run->work()); // and the new one begun
    const auto other = start();
    ASSERT_EQ(rowsOf(*other->database, kAll), m_rows);
    EXPECT_EQ(QDir(folder()).entryList(QDir::Files).size(), 2);
    run->finish();
    EXPECT_EQ(run->figures->kept, 1);
}

TEST_F(ColumnIndexSnapshot, AProgramThatEndsWhileItWritesLeavesTheFormerOne)
{
    keep();
    const QString file = snapshot();
    raw(u"UPDATE db_all SET Jahr='1999'"_s);
    {
        const auto run = start();
        ASSERT_EQ(rowsOf(*run->database, kAll), m_rows);
        while (run->figures->loads == 0) {
            ASSERT_TRUE(run->work());
        }
        ASSERT_TRUE(run->work()); // the file is marked
        ASSERT_TRUE(run->work()); // and the new one begun
        ASSERT_EQ(QDir(folder()).entryList(QDir::Files).size(), 2);
    }
    EXPECT_EQ(snapshot(), file);
}

TEST_F(ColumnIndexSnapshot, OnlyItsUserCanReadIt)
{
    keep();
    EXPECT_EQ(QFileInfo(snapshot()).permissions() & ~(QFile::ReadUser | QFile::WriteUser),
              QFile::ReadOwner | QFile::WriteOwner);
    EXPECT_EQ(QFileInfo(folder()).permissions() &
                  (QFile::ReadGroup | QFile::ReadOther | QFile::ExeGroup | QFile::ExeOther),
              QFile::Permissions());
}

TEST_F(ColumnIndexSnapshot, APlaceThatCannotBeWrittenIsDoneWithout)
{
    QFile file(folder());
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    const auto run = start();
    ASSERT_EQ(rowsOf(*run->database, kAll), m_rows);
    run->finish();
    EXPECT_EQ(rowsOf(*run->database, kAll), m_rows);
    EXPECT_EQ(run->figures->kept, 0);
    EXPECT_EQ(run->figures->answers, 1);
}

TEST_F(ColumnIndexSnapshot, AnotherProgramThatWritesOnlyDelaysIt)
{
    const auto run = start();
    ASSERT_EQ(rowsOf(*run->database, kAll), m_rows);
    raw(u"BEGIN IMMEDIATE"_s);
    while (run->figures->loads == 0) {
        ASSERT_TRUE(run->work());
    }
    ASSERT_TRUE(run->work());
    ASSERT_TRUE(run->work());
    raw(u"COMMIT"_s);
    run->finish();
    EXPECT_EQ(run->figures->kept, 1);
}

TEST_F(ColumnIndexSnapshot, ASmallLibraryKeepsNone)
{
    raw(u"DELETE FROM db_all WHERE FID>'2'"_s);
    const auto run = start();
    ASSERT_FALSE(rowsOf(*run->database, kAll).isEmpty());
    run->finish();
    EXPECT_EQ(run->figures->loads, 1);
    EXPECT_FALSE(QFileInfo::exists(folder()));
}

TEST_F(ColumnIndexSnapshot, SnapshotsOfDatabasesLongNotUsedMakeRoom)
{
    ASSERT_TRUE(QDir().mkpath(folder()));
    const QDateTime past = m_clock.now().addDays(-1);
    const auto leave = [&](const QString& name, int minutes) {
        QFile file(folder() + u'/' + name);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.setFileTime(past.addSecs(qint64{60} * minutes), QFileDevice::FileModificationTime);
    };
    for (int i = 0; i < 6; ++i) {
        leave(u"%1.index"_s.arg(i), i);
    }
    leave(u"killed.part"_s, 0);
    const auto run = start();
    ASSERT_EQ(rowsOf(*run->database, kAll), m_rows);
    run->finish();
    QStringList names = QDir(folder()).entryList(QDir::Files, QDir::Name);
    EXPECT_EQ(names.size(), 4);
    EXPECT_TRUE(names.contains(u"5.index"_s) && names.contains(u"3.index"_s));
    EXPECT_FALSE(names.contains(u"2.index"_s) || names.contains(u"killed.part"_s));
}

} // namespace
} // namespace melovane::test
