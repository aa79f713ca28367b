#include "trees/named_rows.h"

#include "platform/db/database.h"
#include "platform/db/kept_text.h"

#include <algorithm>
#include <array>
#include <charconv>

namespace melovane::treerows {

using namespace Qt::Literals::StringLiterals;

namespace {

/// The longest text of a count: two numbers with what stands around them.
constexpr std::size_t kCountSize = 32;

/// \return its letters
std::size_t writeCount(int own, int total, std::array<char, kCountSize>& text)
{
    char* at = text.data();
    const auto write = [&](int number) {
        at = std::to_chars(at, text.data() + text.size(), number).ptr;
    };
    *at++ = '[';
    write(own > 0 ? own : total);
    if (own > 0 && total > 0 && total != own) {
        at = std::copy_n(" - ", 3, at);
        write(total);
    }
    *at++ = ']';
    return std::size_t(at - text.data());
}

} // namespace

const QString& PictureNames::of(const WalkedRow& row, int column)
{
    const std::string_view word = row.bytes(column);
    auto known = std::find_if(m_names.begin(), m_names.end(),
                              [&](const auto& each) { return each.first == word; });
    if (known == m_names.end()) {
        m_names.emplace_back(word, pictureOf(row.text(column)));
        known = std::prev(m_names.end());
    }
    return known->second;
}

void setText(TreeRow& row, std::string_view name, int own, int total)
{
    std::array<char, kCountSize> count{};
    const std::size_t letters = writeCount(own, total, count);
    row.text.reserve(qsizetype(name.size()) + 1 + qsizetype(letters));
    appendKept(row.text, name);
    row.text += u' ';
    row.text += QLatin1StringView(count.data(), qsizetype(letters));
    row.countLetters = int(letters);
}

QString NamedRow::key() const
{
    const std::string_view name = m_row.bytes(m_shared.keyedColumn);
    QString key;
    key.reserve(m_shared.keyHead.size() + qsizetype(name.size()));
    key += m_shared.keyHead;
    appendKept(key, name);
    return key;
}

QString countText(int own, int total)
{
    std::array<char, kCountSize> text{};
    const std::size_t letters = writeCount(own, total, text);
    return QString::fromLatin1(text.data(), qsizetype(letters));
}

std::size_t roomFor(Database& database, const QString& table)
{
    constexpr qint64 kMost = 1'000'000;
    // Not by a recordset: a rebuild may take the row away between finding and reading it.
    const auto end = [&](QLatin1StringView which) {
        qint64 number = 0;
        database.walkRows("select "_L1 + which + "(id) from "_L1 + table,
                          [&](const WalkedRow& row) { number = row.number(0); });
        return number;
    };
    return std::size_t(std::clamp<qint64>(end("max"_L1) - end("min"_L1) + 1, 1, kMost));
}

void walkNamed(Database& database,
               const QString& from,
               const KeyOf& keyOf,
               const std::function<void(const NamedRow&)>& visit,
               const QString& keyed)
{
    const QStringList columns{u"Name"_s, u"anzahl"_s, u"imgkey"_s, u"favorit"_s, keyed};
    // The name itself is read from the first place of the two.
    NamedRow::Shared shared{keyOf({}), int(columns.indexOf(keyed))};
    database.walkRows("select "_L1 + columns.join(", "_L1) + from,
                      [&](const WalkedRow& row) { visit(NamedRow(row, shared)); });
}

RowTick tickOf(bool on)
{
    return on ? RowTick::On : RowTick::Off;
}

TreeRow countedRow(const NamedRow& named, int level, RowTick tick)
{
    TreeRow row;
    row.level = level;
    row.key = named.key();
    row.picture = named.picture();
    named.setCounted(row);
    row.tick = tick;
    return row;
}

} // namespace melovane::treerows
