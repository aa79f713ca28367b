#include "trees/track_block.h"

#include "platform/db/row_walk.h"

namespace melovane {

TrackBlock::TrackBlock(const std::vector<Kind>& kinds)
{
    for (const Kind kind : kinds) {
        Column& column = m_columns.emplace_back();
        column.kind = kind;
        switch (kind) {
        case Kind::Text:
            column.texts.resize(kRows);
            break;
        case Kind::Whole:
            column.wholes.resize(kRows);
            break;
        case Kind::Day:
            column.days.resize(kRows);
            break;
        }
    }
}

void TrackBlock::add(const WalkedRow& row, bool isLive)
{
    for (std::size_t i = 0; i < m_columns.size(); ++i) {
        Column& column = m_columns[i];
        const auto number = int(i);
        switch (column.kind) {
        case Kind::Text:
            addText(column, row.bytes(number));
            break;
        case Kind::Whole:
            column.wholes[m_size] = row.number(number);
            break;
        case Kind::Day:
            column.days[m_size] = {row.real(number), row.isNull(number), row.isNumber(number)};
            break;
        }
    }
    m_isLive[m_size] = isLive;
    ++m_size;
}

/// Tracks of one album or folder mostly stand together: their texts are kept once.
void TrackBlock::addText(Column& column, std::string_view text)
{
    Place& place = column.texts[m_size];
    if (text.empty()) {
        place = {};
        return;
    }
    column.isEmpty = false;
    if (m_size > 0) {
        const Place& above = column.texts[m_size - 1];
        if (text == std::string_view(m_bytes.data() + above.begin, above.size)) {
            place = above;
            return;
        }
    }
    place = {std::uint32_t(m_bytes.size()), std::uint32_t(text.size())};
    m_bytes.insert(m_bytes.end(), text.begin(), text.end());
}

void TrackBlock::clear()
{
    m_bytes.clear();
    m_size = 0;
    for (Column& column : m_columns) {
        column.isEmpty = true;
    }
}

} // namespace melovane
