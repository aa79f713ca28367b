#include "fuzz/formats/formats.h"
#include "fuzz/formats/scratch.h"
#include "platform/sqlite/index/index_checksum.h"
#include "platform/sqlite/index/index_column_builder.h"
#include "platform/sqlite/index/index_snapshot.h"

#include <QDataStream>
#include <QtEndian>

#include <cstring>

namespace melovane::fuzz {

using namespace Qt::Literals::StringLiterals;

namespace {

using namespace sqlite;

const QString kFile = u"a.index"_s;

// The head of a snapshot: what stands where.
constexpr qsizetype kHead = 96;
constexpr qsizetype kFixed = 24; ///< mark, format and rules of comparing
constexpr qsizetype kDirectoryOffset = 64;
constexpr qsizetype kDirectoryBytes = 72;
constexpr qsizetype kDirectorySum = 80;
constexpr qsizetype kHeadSum = 88;

template <typename Number> Number numberAt(const QByteArray& bytes, qsizetype at)
{
    Number number = 0;
    std::memcpy(&number, bytes.constData() + at, sizeof number);
    return number;
}

void setNumber(QByteArray& bytes, qsizetype at, quint64 number)
{
    std::memcpy(bytes.data() + at, &number, sizeof number);
}

quint64 sumOf(const QByteArray& bytes, qint64 offset, qint64 length)
{
    return IndexChecksum::of(bytes.constData() + offset, std::size_t(length));
}

bool isInside(const QByteArray& bytes, qint64 offset, qint64 length)
{
    return offset >= 0 && length >= 0 && offset <= bytes.size() && length <= bytes.size() - offset;
}

/// Puts the sum of each piece that the directory names into the directory.
void sealPieces(QByteArray& bytes, qint64 offset, qint64 length)
{
    const QByteArray directory = bytes.mid(offset, length);
    QDataStream stream(directory);
    stream.setVersion(QDataStream::Qt_6_0);
    while (!stream.atEnd() && stream.status() == QDataStream::Ok) {
        quint8 kind = 0;
        QString name;
        bool flag = false;
        quint32 pieces = 0;
        stream >> kind >> name >> flag >> flag >> pieces;
        for (quint32 i = 0; i < pieces && stream.status() == QDataStream::Ok; ++i) {
            qint64 begin = 0;
            qint64 size = 0;
            quint64 sum = 0;
            stream >> begin >> size;
            const qint64 place = offset + stream.device()->pos();
            stream >> sum;
            if (stream.status() == QDataStream::Ok && isInside(bytes, begin, size)) {
                qToBigEndian(sumOf(bytes, begin, size), bytes.data() + place);
            }
        }
    }
}

/// A table as the console keeps it.
IndexTable smallTable()
{
    IndexColumnBuilder titles(true);
    IndexColumnBuilder tempos(false);
    for (const char* title : {"abba", "queen", "abba", "\xC3\xA4rzte", "zz top"}) {
        titles.addText(title);
        tempos.addNumber(double(std::strlen(title)));
    }
    titles.addNull();
    tempos.addNull();
    IndexTable table(IndexArray<qint64>(std::vector<qint64>{1, 2, 5, 7, 9, 20}));
    table.addColumn(u"Titel"_s, titles.make());
    table.addColumn(u"BPM"_s, tempos.make());
    table.makeReady({{u"Titel"_s, false}});
    table.makeReady({{u"BPM"_s, true}, {u"Titel"_s, false}});
    return table;
}

QByteArray written(const Scratch& scratch, const IndexTable& table)
{
    IndexSnapshotWriter writer(scratch.path(kFile), {3, {1, 2}, {4, 5}}, table);
    while (writer.step()) {
    }
    return writer.isKept() ? scratch.read(kFile) : QByteArray();
}

/// The same bytes with all sums right, so that what they say is looked at.
QByteArray sealed(QByteArray bytes)
{
    static const QByteArray own = written(Scratch(), smallTable());
    if (bytes.size() < kHead) {
        return bytes;
    }
    bytes.replace(0, kFixed, own.left(kFixed));
    const auto offset = numberAt<qint64>(bytes, kDirectoryOffset);
    const auto length = numberAt<qint64>(bytes, kDirectoryBytes);
    if (offset >= kHead && isInside(bytes, offset, length)) {
        sealPieces(bytes, offset, length);
        setNumber(bytes, kDirectorySum, sumOf(bytes, offset, length));
    }
    setNumber(bytes, kHeadSum, sumOf(bytes, 0, kHeadSum));
    return bytes;
}

std::vector<SearchStatement> searches()
{
    const auto test = [](SearchTest::Kind kind, const QString& text) {
        return SearchTest{kind, u"Titel"_s, true, text, {}};
    };
    const SearchTest tempo{SearchTest::Kind::AnyOfNumbers, u"BPM"_s, false, {}, {4, 5}};
    const SearchTest fast{SearchTest::Kind::AtLeast, u"BPM"_s, false, {}, {5}};
    using Kind = SearchTest::Kind;
    return {
        {false, {{test(Kind::Like, u"a*"_s)}}, {{u"Titel"_s, false}}},
        {false, {{test(Kind::Like, u"*e*"_s)}, {fast}}, {{u"BPM"_s, true}, {u"Titel"_s, false}}},
        {false, {{test(Kind::Like, u"*[a-c]?b*"_s), tempo}}, {{u"Titel"_s, true}}},
        {false, {{test(Kind::Equal, u"queen"_s), test(Kind::AtLeast, u"q"_s)}}, {}}};
}

QString searchFault(IndexTable& table, const SearchStatement& statement)
{
    if (!table.missing(statement).isEmpty() || !table.answers(statement)) {
        return {};
    }
    const auto found = table.search(statement);
    if (found->count() != table.count(statement.where)) {
        return u"%1 rows, %2 counted"_s.arg(found->count()).arg(table.count(statement.where));
    }
    for (qint64 row = 0; row < found->count(); ++row) {
        if (found->rowOf(found->keyAt(row, 0), 0) != row) {
            return u"a row that is elsewhere"_s;
        }
    }
    return {};
}

/// The table of a snapshot, as far as it can be read.
std::unique_ptr<IndexTable> tableOf(IndexSnapshot& snapshot)
{
    const auto keys = snapshot.keys();
    if (!keys) {
        return nullptr;
    }
    auto table = std::make_unique<IndexTable>(*keys);
    for (const auto& [name, isText] :
         {std::pair(u"Titel"_s, true), std::pair(u"BPM"_s, false), std::pair(u"Album"_s, true)}) {
        if (auto column = snapshot.column(name, isText)) {
            table->addColumn(name, std::move(column));
        }
    }
    for (const SearchStatement& statement : searches()) {
        if (auto order = snapshot.order(statement.order)) {
            table->addOrder(statement.order, std::move(order));
        }
    }
    return table;
}

QString fileFault(const Scratch& scratch, const QByteArray& bytes)
{
    const auto snapshot = IndexSnapshot::open(scratch.file(kFile, bytes));
    const auto table = snapshot ? tableOf(*snapshot) : nullptr;
    if (!table) {
        return {};
    }
    for (const SearchStatement& statement : searches()) {
        if (const QString fault = searchFault(*table, statement); !fault.isEmpty()) {
            return fault;
        }
    }
    // Rows that changed since are put among the others.
    std::vector<IndexCell> cells(std::size_t(table->columns().size()));
    if (table->keys().size() > 0) {
        table->removeRow(table->keys()[0]);
    }
    table->setRow(3, cells);
    table->setRow(5, cells);
    for (const SearchStatement& statement : searches()) {
        if (const QString fault = searchFault(*table, statement); !fault.isEmpty()) {
            return u"behind a change: "_s + fault;
        }
    }
    return {};
}

QString check(const QByteArray& bytes)
{
    static const Scratch scratch;
    const QString fault = fileFault(scratch, bytes);
    return fault.isEmpty() ? fileFault(scratch, sealed(bytes)) : fault;
}

std::vector<QByteArray> seeds()
{
    const Scratch scratch;
    return {written(scratch, smallTable()), written(scratch, IndexTable({}))};
}

} // namespace

Format snapshot()
{
    return {"snapshot", check, seeds};
}

} // namespace melovane::fuzz
