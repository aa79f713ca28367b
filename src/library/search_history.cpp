#include "library/search_history.h"

#include "platform/system/leading_number.h"
#include "platform/system/quoted_record.h"
#include "platform/system/text_file.h"

#include <algorithm>

namespace melovane {

namespace {

constexpr qsizetype kFields = 4;

std::optional<HistoryEntry> entryOf(const QString& line)
{
    const auto fields = readRecordLine(line);
    if (!fields || fields->size() != kFields) {
        return std::nullopt;
    }
    const int byNumber = leadingLong((*fields)[1]);
    return HistoryEntry{(*fields)[0], (*fields)[2], (*fields)[3],
                        static_cast<qint16>(std::clamp(byNumber, -32768, 32767))};
}

bool isSameView(const HistoryEntry& one, const HistoryEntry& two)
{
    return one.kind == two.kind && one.field == two.field && one.value == two.value;
}

} // namespace

void SearchHistory::push(const HistoryEntry& entry)
{
    const auto found =
        std::find_if(m_entries.begin(), m_entries.end(),
                     [&entry](const auto& known) { return isSameView(known, entry); });
    if (found != m_entries.end() && m_last > 1) {
        m_entries.erase(found);
    } else if (m_last >= kLastIndex) {
        m_entries.erase(m_entries.begin());
    }
    m_entries.push_back(entry);
    m_last = static_cast<int>(m_entries.size()) - 1;
    m_cursor = m_last;
}

std::optional<HistoryEntry> SearchHistory::back()
{
    if (!canGoBack()) {
        return std::nullopt;
    }
    return m_entries[static_cast<size_t>(--m_cursor)];
}

std::optional<HistoryEntry> SearchHistory::forward()
{
    if (!canGoForward()) {
        return std::nullopt;
    }
    return m_entries[static_cast<size_t>(++m_cursor)];
}

bool SearchHistory::read(const QByteArray& bytes)
{
    std::vector<HistoryEntry> entries;
    bool isWhole = true;
    for (const QString& line : textfile::lines(textfile::decode(bytes))) {
        if (line.isEmpty()) {
            continue;
        }
        const auto entry = entryOf(line);
        if (!entry) {
            isWhole = false;
            break;
        }
        entries.push_back(*entry);
    }
    if (entries.empty()) {
        return isWhole;
    }
    if (entries.size() > size_t{kLastIndex} + 1) {
        entries.erase(entries.begin(), entries.end() - (kLastIndex + 1));
    }
    m_entries = std::move(entries);
    m_last = static_cast<int>(m_entries.size()) - 1;
    m_cursor = m_last;
    return isWhole;
}

QByteArray SearchHistory::toText() const
{
    QString text;
    for (const HistoryEntry& entry : m_entries) {
        if (!entry.kind.isEmpty() && !entry.value.isEmpty()) {
            text += recordLine({entry.kind, qint64{entry.byNumber}, entry.field, entry.value});
            text += u'\n';
        }
    }
    return text.toUtf8();
}

} // namespace melovane
