#include "platform/sqlite/index/index_snapshot.h"

#include "platform/sqlite/index/index_checksum.h"

#include <QDataStream>
#include <QDir>
#include <QFileInfo>
#include <QRandomGenerator>

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

#include <algorithm>
#include <bit>
#include <cerrno>
#include <cstdio>
#include <cstring>

namespace melovane::sqlite {

namespace {

using namespace Qt::Literals::StringLiterals;

/// What entries are. Keep, or change kFormat.
constexpr quint8 kKeys = 0;
constexpr quint8 kColumn = 1;
constexpr quint8 kOrder = 2;

/// Pieces of an entry.
constexpr std::size_t kColumnPieces = 6;
constexpr std::size_t kOrderPieces = 2;

constexpr char kMagic[8] = {'M', 'L', 'V', 'I', 'N', 'D', 'E', 'X'};
/// Raised with every change of what stands in the file or of what an index is. A machine with
/// another order of bytes reads another number.
constexpr quint32 kFormat = 2;

/// Bytes of one step of writing, and of reading between looks at the checksum.
constexpr qint64 kPart = qint64{1024} * 1024;

/// A directory is some dozen entries.
constexpr qint64 kMostDirectory = qint64{1024} * 1024;

/// Snapshots of how many databases are kept.
constexpr qsizetype kMostSnapshots = 4;
/// Ends the name of a file that is being written.
const QString kUnfinished = u".part"_s;

struct Header
{
    std::array<char, 8> magic{};
    quint32 format = 0;
    quint32 reserved = 0;
    quint64 rules = 0;
    qint64 schema = 0;
    std::array<qint64, 4> entries{}; ///< of the list of changes: number and row, twice
    qint64 directoryOffset = 0;
    qint64 directoryBytes = 0;
    quint64 directorySum = 0;
    quint64 sum = 0; ///< of what stands before it
};

static_assert(std::is_trivially_copyable_v<Header> && sizeof(Header) == 96);

quint64 sumOf(const Header& header)
{
    return IndexChecksum::of(reinterpret_cast<const char*>(&header), offsetof(Header, sum));
}

/// Tells the rules of comparing apart: an index made under others stands in another order.
quint64 rulesOfComparing()
{
    static const quint64 rules = [] {
        constexpr std::pair<char16_t, char16_t> kBlocks[] = {
            {0x20, 0x24F}, {0x370, 0x52F}, {0x1E00, 0x1EFF}, {0x2010, 0x2040}};
        QString keys = QString::fromLatin1(qVersion());
        for (const auto& [first, last] : kBlocks) {
            for (char16_t letter = first; letter <= last; ++letter) {
                keys += textcompare::sortKey(QStringView(&letter, 1)) + u'\n';
            }
        }
        return IndexChecksum::of(reinterpret_cast<const char*>(keys.constData()),
                                 std::size_t(keys.size()) * sizeof(char16_t));
    }();
    return rules;
}

QString nameOf(const std::vector<SearchOrder>& terms)
{
    QString name;
    for (const SearchOrder& term : terms) {
        name += term.column + (term.descending ? u" DESC\n"_s : u"\n"_s);
    }
    return name;
}

QDataStream& operator<<(QDataStream& stream, const IndexSnapshot::Entry& entry)
{
    stream << entry.kind << entry.name << entry.isText << entry.fits
           << quint32(entry.pieces.size());
    for (const IndexSnapshot::Piece& piece : entry.pieces) {
        stream << piece.offset << piece.bytes << piece.checksum;
    }
    return stream;
}

QDataStream& operator>>(QDataStream& stream, IndexSnapshot::Entry& entry)
{
    quint32 pieces = 0;
    stream >> entry.kind >> entry.name >> entry.isText >> entry.fits >> pieces;
    for (quint32 i = 0; i < pieces && stream.status() == QDataStream::Ok; ++i) {
        IndexSnapshot::Piece piece;
        stream >> piece.offset >> piece.bytes >> piece.checksum;
        entry.pieces.push_back(piece);
    }
    return stream;
}

/// The lock ends with the program, however that ends.
bool isBeingWritten(const QString& file)
{
    const int descriptor =
        ::open(QFile::encodeName(file).constData(), O_RDONLY | O_CLOEXEC | O_NOFOLLOW);
    const bool isHeld =
        descriptor >= 0 && ::flock(descriptor, LOCK_EX | LOCK_NB) != 0 && errno == EWOULDBLOCK;
    if (descriptor >= 0) {
        ::close(descriptor);
    }
    return isHeld;
}

bool ascend(const IndexArray<qint64>& keys)
{
    return std::adjacent_find(keys.begin(), keys.end(), std::greater_equal<>()) == keys.end();
}

bool isOrderOf(const IndexOrder& order, std::size_t rows)
{
    if (order.rowAt.size() != rows || order.placeOf.size() != rows) {
        return false;
    }
    for (std::size_t place = 0; place < rows; ++place) {
        const quint32 row = order.rowAt[place];
        if (row >= rows || order.placeOf[row] != place) {
            return false;
        }
    }
    return true;
}

} // namespace

// ---- reading

std::unique_ptr<IndexSnapshot> IndexSnapshot::open(const QString& file)
{
    std::unique_ptr<IndexSnapshot> snapshot(new IndexSnapshot(file));
    const bool opened = !file.isEmpty() &&
                        snapshot->m_file.open(QIODevice::ReadOnly | QIODevice::Unbuffered) &&
                        snapshot->readDirectory();
    return opened ? std::move(snapshot) : nullptr;
}

void IndexSnapshot::removeUnfinished(const QString& file)
{
    QDir folder(QFileInfo(file).path());
    for (const QString& part : folder.entryList({u'*' + kUnfinished}, QDir::Files)) {
        if (!isBeingWritten(folder.filePath(part))) {
            folder.remove(part);
        }
    }
}

bool IndexSnapshot::readDirectory()
{
    Header header;
    if (m_file.read(reinterpret_cast<char*>(&header), sizeof header) != sizeof header ||
        std::memcmp(header.magic.data(), kMagic, sizeof kMagic) != 0 || header.format != kFormat ||
        header.sum != sumOf(header) || header.rules != rulesOfComparing() ||
        header.directoryBytes < 0 || header.directoryBytes > kMostDirectory ||
        !m_file.seek(header.directoryOffset)) {
        return false;
    }
    const QByteArray directory = m_file.read(header.directoryBytes);
    if (directory.size() != header.directoryBytes ||
        IndexChecksum::of(directory.constData(), std::size_t(directory.size())) !=
            header.directorySum) {
        return false;
    }
    QDataStream stream(directory);
    stream.setVersion(QDataStream::Qt_6_0);
    while (!stream.atEnd() && stream.status() == QDataStream::Ok) {
        Entry entry;
        stream >> entry;
        m_entries.push_back(std::move(entry));
    }
    const auto& [from, fromRow, mark, markRow] = header.entries;
    m_stamp = {header.schema, {from, fromRow}, {mark, markRow}};
    return stream.status() == QDataStream::Ok;
}

const IndexSnapshot::Entry* IndexSnapshot::find(quint8 kind, const QString& name) const
{
    const auto found = std::find_if(m_entries.begin(), m_entries.end(), [&](const Entry& entry) {
        return entry.kind == kind && entry.name == name;
    });
    return found == m_entries.end() ? nullptr : &*found;
}

/// Read into memory of its own: a file that somebody shortens must not end the program.
template <typename Item> bool IndexSnapshot::read(const Piece& piece, IndexArray<Item>& items)
{
    const qint64 size = m_file.size();
    if (piece.offset < 0 || piece.bytes < 0 || piece.offset > size ||
        piece.bytes > size - piece.offset || piece.bytes % qint64(sizeof(Item)) != 0 ||
        !m_file.seek(piece.offset)) {
        return false;
    }
    const auto count = std::size_t(piece.bytes) / sizeof(Item);
    const std::shared_ptr<Item[]> owned(new Item[count]);
    char* const bytes = reinterpret_cast<char*>(owned.get());
    IndexChecksum sum;
    for (qint64 at = 0; at < piece.bytes; at += kPart) {
        const qint64 part = std::min(kPart, piece.bytes - at);
        if (m_file.read(bytes + at, part) != part) {
            return false;
        }
        sum.add(bytes + at, std::size_t(part));
    }
    items = IndexArray<Item>(owned, std::span<const Item>(owned.get(), count));
    return sum.result() == piece.checksum;
}

std::optional<IndexArray<qint64>> IndexSnapshot::keys()
{
    IndexArray<qint64> keys;
    const Entry* const entry = find(kKeys, QString());
    if (!entry || entry->pieces.size() != 1 || !read(entry->pieces[0], keys) || !ascend(keys)) {
        return {};
    }
    m_rows = keys.size();
    return keys;
}

std::shared_ptr<const IndexColumn> IndexSnapshot::column(const QString& name, bool isText)
{
    const Entry* const entry = find(kColumn, name);
    if (!entry || entry->pieces.size() != kColumnPieces || entry->isText != isText) {
        return nullptr;
    }
    IndexColumnParts parts;
    parts.isText = entry->isText;
    parts.fits = entry->fits;
    const auto& pieces = entry->pieces;
    const bool isRead = read(pieces[0], parts.letters) && read(pieces[1], parts.textEnds) &&
                        read(pieces[2], parts.numbers) && read(pieces[3], parts.values) &&
                        read(pieces[4], parts.ends) && read(pieces[5], parts.rows);
    return isRead ? IndexColumn::fromParts(std::move(parts), m_rows) : nullptr;
}

std::shared_ptr<const IndexOrder> IndexSnapshot::order(const std::vector<SearchOrder>& terms)
{
    const Entry* const entry = find(kOrder, nameOf(terms));
    auto order = std::make_shared<IndexOrder>();
    const bool isRead = entry && entry->pieces.size() == kOrderPieces &&
                        read(entry->pieces[0], order->rowAt) &&
                        read(entry->pieces[1], order->placeOf) && isOrderOf(*order, m_rows);
    return isRead ? order : nullptr;
}

// ---- writing

IndexSnapshotWriter::IndexSnapshotWriter(QString file,
                                         const SnapshotStamp& stamp,
                                         const IndexTable& table)
    : m_name(std::move(file))
    , m_stamp(stamp)
{
    m_entries.push_back({kKeys, QString(), false, false, {}});
    add(0, table.keys());
    for (const QString& name : table.columns()) {
        const IndexColumnParts parts = table.column(name)->parts();
        m_entries.push_back({kColumn, name, parts.isText, parts.fits, {}});
        const std::size_t entry = m_entries.size() - 1;
        add(entry, parts.letters);
        add(entry, parts.textEnds);
        add(entry, parts.numbers);
        add(entry, parts.values);
        add(entry, parts.ends);
        add(entry, parts.rows);
    }
    for (const auto& [terms, order] : table.orders()) {
        m_entries.push_back({kOrder, nameOf(terms), false, false, {}});
        add(m_entries.size() - 1, order->rowAt);
        add(m_entries.size() - 1, order->placeOf);
    }
}

IndexSnapshotWriter::~IndexSnapshotWriter()
{
    if (m_open) {
        m_file.remove();
    }
}

template <typename Item>
void IndexSnapshotWriter::add(std::size_t entry, const IndexArray<Item>& items)
{
    IndexSnapshot::Entry& target = m_entries[entry];
    const auto owner = std::make_shared<IndexArray<Item>>(items);
    m_sources.push_back(
        {owner, reinterpret_cast<const char*>(owner->data()), entry, target.pieces.size()});
    target.pieces.push_back({0, qint64(items.size() * sizeof(Item)), 0});
}

bool IndexSnapshotWriter::step()
{
    if (!m_open) {
        return m_source == 0 && begin();
    }
    if (m_source < m_sources.size() && !writePart()) {
        m_file.remove();
        m_open = false;
        return false;
    }
    if (m_source < m_sources.size()) {
        return true;
    }
    m_kept = finish();
    if (!m_kept) {
        m_file.remove();
    }
    m_open = false;
    return false;
}

bool IndexSnapshotWriter::begin()
{
    const QFileInfo place(m_name);
    if (!QDir().mkpath(place.path())) {
        return false;
    }
    // What titles a user has is nobody else's business.
    QFile::setPermissions(place.path(), QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    m_file.setFileName(m_name +
                       u".%1"_s.arg(QRandomGenerator::system()->generate64(), 16, 16, QChar(u'0')) +
                       kUnfinished);
    m_open = m_file.open(QIODevice::WriteOnly | QIODevice::NewOnly | QIODevice::Unbuffered);
    if (m_open) {
        // Without locks another program may take it for abandoned; then this one is not kept.
        (void)::flock(m_file.handle(), LOCK_EX | LOCK_NB);
    }
    return m_open && m_file.setPermissions(QFile::ReadOwner | QFile::WriteOwner) &&
           m_file.seek(sizeof(Header));
}

bool IndexSnapshotWriter::writePart()
{
    const Source& source = m_sources[m_source];
    IndexSnapshot::Piece& piece = m_entries[source.entry].pieces[source.piece];
    if (m_done == 0) {
        piece.offset = m_file.pos();
    }
    const qint64 part = std::min(kPart, piece.bytes - m_done);
    if (m_file.write(source.data + m_done, part) != part) {
        return false;
    }
    m_sum.add(source.data + m_done, std::size_t(part));
    m_done += part;
    if (m_done == piece.bytes) {
        piece.checksum = std::exchange(m_sum, {}).result();
        m_done = 0;
        ++m_source;
    }
    return true;
}

/// The header comes last, so that a file without all its pieces is none.
bool IndexSnapshotWriter::finish()
{
    QByteArray directory;
    QDataStream stream(&directory, QIODevice::WriteOnly);
    stream.setVersion(QDataStream::Qt_6_0);
    for (const IndexSnapshot::Entry& entry : m_entries) {
        stream << entry;
    }
    Header header;
    std::memcpy(header.magic.data(), kMagic, sizeof kMagic);
    header.format = kFormat;
    header.rules = rulesOfComparing();
    header.schema = m_stamp.schema;
    header.entries = {m_stamp.from.entry, m_stamp.from.row, m_stamp.mark.entry, m_stamp.mark.row};
    header.directoryOffset = m_file.pos();
    header.directoryBytes = directory.size();
    header.directorySum = IndexChecksum::of(directory.constData(), std::size_t(directory.size()));
    header.sum = sumOf(header);
    if (m_file.write(directory) != directory.size() || !m_file.seek(0) ||
        m_file.write(reinterpret_cast<const char*>(&header), sizeof header) != sizeof header) {
        return false;
    }
    // No sync: what a power cut leaves of it fails its checksums.
    const bool moved = std::rename(QFile::encodeName(m_file.fileName()).constData(),
                                   QFile::encodeName(m_name).constData()) == 0;
    if (moved) {
        m_file.close();
        removeOthers();
    }
    return moved;
}

/// Snapshots of databases long not used, and what killed programs left unfinished.
void IndexSnapshotWriter::removeOthers() const
{
    IndexSnapshot::removeUnfinished(m_name);
    const QFileInfo place(m_name);
    QDir folder(place.path());
    QStringList known = folder.entryList({u"*."_s + place.suffix()}, QDir::Files, QDir::Time);
    known.removeAll(place.fileName());
    for (const QString& old : known.mid(kMostSnapshots - 1)) {
        folder.remove(old);
    }
}

} // namespace melovane::sqlite
