#include "playlists/command_map.h"

#include "platform/system/trim_blanks.h"

#include <QList>

#include <algorithm>

namespace melovane {

namespace {

template <typename Pairs> auto findKey(Pairs& pairs, QStringView key)
{
    return std::find_if(pairs.begin(), pairs.end(),
                        [&](const auto& pair) { return pair.first == key; });
}

} // namespace

std::optional<QString> CommandMap::value(QStringView key) const
{
    const auto found = findKey(m_pairs, key);
    return found == m_pairs.end() ? std::nullopt : std::optional(found->second);
}

bool CommandMap::add(const QString& key, const QString& value)
{
    if (findKey(m_pairs, key) != m_pairs.end()) {
        return false;
    }
    m_pairs.emplace_back(key, value);
    return true;
}

void CommandMap::set(const QString& key, const QString& value)
{
    const auto found = findKey(m_pairs, key);
    if (found == m_pairs.end()) {
        m_pairs.emplace_back(key, value);
    } else {
        found->second = value;
    }
}

void CommandMap::remove(QStringView key)
{
    std::erase_if(m_pairs, [&](const auto& pair) { return pair.first == key; });
}

std::optional<CommandMap> CommandToMap(QStringView text)
{
    CommandMap map;
    for (const QStringView item : text.split(u'&')) {
        const QList<QStringView> parts = item.split(u'=');
        if (parts.size() == 2 && !map.add(parts[0].toString(), parts[1].toString())) {
            return std::nullopt;
        }
    }
    return map;
}

QString MapToCommand(const CommandMap& map)
{
    QString text;
    for (const auto& [key, value] : map.pairs()) {
        text += key + u'=' + trimBlanks(value) + u'&';
    }
    return text;
}

CommandMap& CommandMapAdd(CommandMap& map, const QString& key, const QString& value)
{
    map.set(key, value);
    return map;
}

} // namespace melovane
