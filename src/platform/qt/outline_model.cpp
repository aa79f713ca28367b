#include "platform/qt/outline_model.h"

#include <algorithm>
#include <chrono>
#include <utility>

namespace melovane {

namespace {

using namespace std::chrono_literals;

/// Fewer rows are searched at once without anything made before.
constexpr int kManyRows = 10000;

/// After which a large tree gets ready to be searched: its first page stands by then.
constexpr auto kPrepareAfter = 20ms;

} // namespace

OutlineModel::OutlineModel(QObject* parent)
    : QAbstractTableModel(parent)
{
    m_preparing.setInterval(kPrepareAfter);
    connect(&m_preparing, &QTimer::timeout, this, &OutlineModel::prepare);
}

OutlineModel::~OutlineModel() = default;

void OutlineModel::setRows(std::vector<TreeRow> rows)
{
    beginResetModel();
    m_keys.clear();
    m_texts.clear();
    m_former = m_rows.setAll(std::move(rows));
    m_imageRows.clear();
    noteImages(0, 0, m_rows.count());
    if (!m_filter.empty()) {
        m_rows.filter(findHits());
        m_rows.collect();
    }
    endResetModel();
    if (std::max(m_rows.all().size(), m_former.size()) >= kManyRows) {
        m_preparing.start();
    } else {
        m_former.clear();
    }
}

/// One step a turn, so that no turn is long.
void OutlineModel::prepare()
{
    if (!m_former.empty()) {
        m_former = {};
    } else if (!m_texts.isMade()) {
        m_texts.make(m_rows.all());
    } else {
        m_keys.make(m_rows.all());
        m_preparing.stop();
    }
}

void OutlineModel::setRow(int row, const TreeRow& value)
{
    if (!m_rows.has(row)) {
        return;
    }
    const TreeRow before = m_rows.row(row);
    m_rows.setRow(row, value);
    if (before.key != value.key) {
        m_keys.clear();
    }
    if (before.image != value.image) {
        noteImages(row, 1, 1);
    }
    if (before.text != value.text || before.countLetters != value.countLetters) {
        m_texts.changed(m_rows.all(), row);
        filterAgain();
    }
    const QModelIndex index = indexOf(row);
    if (index.isValid()) {
        emit dataChanged(index, index);
    }
}

void OutlineModel::insertRows(int row, std::vector<TreeRow> rows)
{
    row = std::clamp(row, 0, m_rows.count());
    const int count = int(rows.size());
    const OutlineRows::NewLines lines = m_rows.insert(row, std::move(rows));
    m_keys.inserted(m_rows.all(), row, count);
    m_texts.inserted(m_rows.all(), row, count);
    noteImages(row, 0, count);
    showLines(lines);
    filterAgain();
}

void OutlineModel::removeRow(int row)
{
    if (!m_rows.has(row)) {
        return;
    }
    const int count = m_rows.end(row) - row;
    hideLines(m_rows.linesOf(row));
    m_rows.remove(row);
    m_keys.removed(row, count);
    m_texts.removed(row, count);
    noteImages(row, count, 0);
    filterAgain();
}

/// So many rows have gone at a place, and so many have come there.
void OutlineModel::noteImages(int at, int gone, int come)
{
    const auto from = std::lower_bound(m_imageRows.begin(), m_imageRows.end(), at);
    const auto later = std::lower_bound(from, m_imageRows.end(), at + gone);
    std::for_each(later, m_imageRows.end(), [&](int& row) { row += come - gone; });
    std::vector<int> fresh;
    for (int row = at; row < at + come; ++row) {
        if (!m_rows.row(row).image.isEmpty()) {
            fresh.push_back(row);
        }
    }
    m_imageRows.insert(m_imageRows.erase(from, later), fresh.begin(), fresh.end());
}

int OutlineModel::find(const QString& key) const
{
    return m_keys.find(m_rows.all(), key);
}

int OutlineModel::findNext(const QString& key, int behind) const
{
    const int first = find(key);
    if (first < 0 || first > behind) {
        return first;
    }
    const std::vector<TreeRow>& rows = m_rows.all();
    const auto begin = rows.begin() + std::min<std::ptrdiff_t>(behind + 1, std::ssize(rows));
    const auto next =
        std::find_if(begin, rows.end(), [&](const TreeRow& row) { return row.key == key; });
    return next == rows.end() ? -1 : int(next - rows.begin());
}

int OutlineModel::rowOf(const QModelIndex& index) const
{
    return index.isValid() ? m_rows.rowOfLine(index.row()) : -1;
}

QModelIndex OutlineModel::indexOf(int row) const
{
    const int line = m_rows.has(row) ? m_rows.lineOf(row) : -1;
    return line >= 0 ? index(line, 0) : QModelIndex();
}

void OutlineModel::showLines(const OutlineRows::NewLines& lines)
{
    if (!lines.rows.empty()) {
        beginInsertRows({}, lines.at, lines.at + int(lines.rows.size()) - 1);
        m_rows.show(lines);
        endInsertRows();
    }
}

void OutlineModel::hideLines(const OutlineRows::Run& run)
{
    if (run.count > 0) {
        beginRemoveRows({}, run.at, run.at + run.count - 1);
        m_rows.hide(run);
        endRemoveRows();
    }
}

/// Goes from the lines that there are to others by few steps, so that what is selected stays so.
void OutlineModel::becomeLines(const std::vector<std::uint32_t>& wanted)
{
    std::size_t at = 0;
    for (;;) {
        const std::vector<std::uint32_t>& lines = m_rows.lines();
        while (at < wanted.size() && at < lines.size() && wanted[at] == lines[at]) {
            ++at;
        }
        const std::uint32_t nextWanted = at < wanted.size() ? wanted[at] : UINT32_MAX;
        const std::uint32_t next = at < lines.size() ? lines[at] : UINT32_MAX;
        if (nextWanted == next) {
            return;
        }
        if (next < nextWanted) {
            const auto first = lines.begin() + std::ptrdiff_t(at);
            const auto last = std::lower_bound(first, lines.end(), nextWanted);
            hideLines({int(at), int(last - first)});
        } else {
            const auto first = wanted.begin() + std::ptrdiff_t(at);
            const auto last = std::lower_bound(first, wanted.end(), next);
            showLines({int(at), {first, last}});
        }
    }
}

void OutlineModel::setOpen(int row, bool open)
{
    if (!m_rows.has(row) || m_rows.end(row) == row + 1) {
        return;
    }
    const bool wasOpen = m_rows.isOpen(row);
    m_rows.setOpen(row, open);
    if (wasOpen == m_rows.isOpen(row)) {
        return;
    }
    if (open) {
        showLines(m_rows.linesToOpen(row));
    } else {
        hideLines(m_rows.linesBelow(row));
    }
    const QModelIndex index = indexOf(row);
    if (index.isValid()) {
        emit dataChanged(index, index);
    }
}

void OutlineModel::setBranchOpen(int row, bool open)
{
    if (m_rows.has(row)) {
        beginResetModel();
        m_rows.setBranchOpen(row, open);
        m_rows.collect();
        endResetModel();
    }
}

void OutlineModel::foldTo(int level)
{
    beginResetModel();
    m_rows.foldTo(level);
    m_rows.collect();
    endResetModel();
}

/// Keys that no row has are left out.
std::vector<int> OutlineModel::rowsOf(const QStringList& keys) const
{
    std::vector<int> rows;
    rows.reserve(std::size_t(keys.size()));
    for (const QString& key : keys) {
        const int row = find(key);
        if (row >= 0) {
            rows.push_back(row);
        }
    }
    return rows;
}

void OutlineModel::foldOnly(const QStringList& keys)
{
    const std::vector<int> rows = rowsOf(keys);
    beginResetModel();
    m_rows.foldOnly(rows);
    m_rows.collect();
    endResetModel();
}

void OutlineModel::setFolds(const QStringList& folded, const QStringList& open)
{
    const std::vector<int> closing = rowsOf(folded);
    const std::vector<int> opening = rowsOf(open);
    beginResetModel();
    for (const int row : closing) {
        m_rows.setOpen(row, false);
    }
    for (const int row : opening) {
        m_rows.setOpen(row, true);
    }
    m_rows.collect();
    endResetModel();
}

QStringList OutlineModel::folded() const
{
    QStringList keys;
    for (const int row : m_rows.folded()) {
        keys.append(m_rows.row(row).key);
    }
    return keys;
}

void OutlineModel::reveal(int row)
{
    if (!m_rows.has(row)) {
        return;
    }
    for (int above = m_rows.parent(row); above >= 0; above = m_rows.parent(above)) {
        if (!m_rows.isOpen(above)) {
            m_rows.setOpen(above, true);
        }
    }
    if (m_rows.isFiltered()) {
        m_rows.letThrough(row);
    }
    if (m_rows.lineOf(row) < 0) {
        becomeLines(m_rows.wantedLines());
    }
}

const OutlineTexts& OutlineModel::texts() const
{
    if (!m_texts.isMade()) {
        m_texts.make(m_rows.all());
    }
    return m_texts;
}

const std::vector<std::uint32_t>& OutlineModel::findHits()
{
    m_hits = texts().rowsWith(m_filter);
    return m_hits;
}

void OutlineModel::setFilter(const QString& text)
{
    std::string wanted = OutlineTexts::folded(text);
    if (wanted == m_filter) {
        return;
    }
    m_filter = std::move(wanted);
    beginResetModel();
    if (m_filter.empty()) {
        m_hits.clear();
        m_rows.endFilter();
    } else {
        m_rows.filter(findHits());
    }
    m_rows.collect();
    endResetModel();
}

/// Rows have come, gone or changed under the filter.
void OutlineModel::filterAgain()
{
    if (!m_filter.empty()) {
        m_rows.filter(findHits(), true);
        becomeLines(m_rows.wantedLines());
    }
}

int OutlineModel::filterHits() const
{
    return m_filter.empty() ? -1 : int(m_hits.size());
}

int OutlineModel::findText(int line, const QString& text) const
{
    const std::string piece = OutlineTexts::folded(text);
    const int lines = m_rows.lineCount();
    if (piece.empty() || lines == 0) {
        return -1;
    }
    const OutlineTexts& all = texts();
    const auto search = [&](bool (OutlineTexts::*fits)(int, const std::string&) const) {
        for (int step = 0; step < lines; ++step) {
            const int at = (std::max(line, 0) + step) % lines;
            if ((all.*fits)(m_rows.rowOfLine(at), piece)) {
                return at;
            }
        }
        return -1;
    };
    const int found = search(&OutlineTexts::startsWith);
    return found >= 0 ? found : search(&OutlineTexts::contains);
}

void OutlineModel::setEdited(const QModelIndex& index, const QString& text)
{
    m_edited = index;
    m_editedText = text;
    m_isEdited = index.isValid();
}

bool OutlineModel::takeLostEdit()
{
    return m_isEdited && !m_edited.isValid() && std::exchange(m_isEdited, false);
}

int OutlineModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : m_rows.lineCount();
}

int OutlineModel::columnCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : 1;
}

QString OutlineModel::description(int row) const
{
    const TreeRow& shown = m_rows.row(row);
    QStringList parts;
    if (!m_words.level.isEmpty()) {
        parts.append(m_words.level + u' ' + QString::number(shown.level + 1));
    }
    if (m_rows.isParent(row) || shown.fillable) {
        parts.append(m_rows.isOpen(row) ? m_words.open : m_words.folded);
    }
    if (shown.tick != RowTick::None) {
        parts.append(shown.tick == RowTick::On ? m_words.ticked : m_words.unticked);
    }
    parts.removeAll(QString());
    return parts.join(QStringLiteral(", "));
}

QVariant OutlineModel::data(const QModelIndex& index, int role) const
{
    if (!index.isValid()) {
        return {};
    }
    const TreeRow& shown = m_rows.row(rowOf(index));
    switch (role) {
    case Qt::DisplayRole:
    case Qt::AccessibleTextRole:
        return shown.text;
    case Qt::AccessibleDescriptionRole:
        return description(rowOf(index));
    case Qt::CheckStateRole:
        if (shown.tick == RowTick::None) {
            return {};
        }
        return shown.tick == RowTick::On ? Qt::Checked : Qt::Unchecked;
    case Qt::EditRole:
        return m_editedText;
    default:
        return {};
    }
}

QVariant OutlineModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    Q_UNUSED(section)
    Q_UNUSED(orientation)
    Q_UNUSED(role)
    return {};
}

bool OutlineModel::setData(const QModelIndex& index, const QVariant& value, int role)
{
    if (!index.isValid() || role != Qt::EditRole || value.toString() == m_editedText) {
        return false;
    }
    emit edited(rowOf(index), value.toString());
    return true;
}

Qt::ItemFlags OutlineModel::flags(const QModelIndex& index) const
{
    if (!index.isValid()) {
        return Qt::NoItemFlags;
    }
    const TreeRow& shown = m_rows.row(rowOf(index));
    Qt::ItemFlags result = Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemIsDropEnabled;
    result.setFlag(Qt::ItemIsEditable, m_edited == index);
    result.setFlag(Qt::ItemIsDragEnabled, shown.movable || m_allDraggable);
    result.setFlag(Qt::ItemIsUserCheckable, shown.tick != RowTick::None);
    return result;
}

} // namespace melovane
