#pragma once

#include <QString>

#include <unordered_map>

namespace melovane::sqlite {

/// Numbers of names, found without regard to case and without making a text for it. Rows are
/// written column by column under their names, so this is asked more often than anything else.
class NameIndex
{
public:
    /// Gives the next number. Of equal names the first keeps its number.
    void add(const QString& name) { m_numbers.emplace(name, m_next++); }

    /// -1 when there is none of that name.
    [[nodiscard]] int find(QStringView name) const
    {
        const auto found = m_numbers.find(name);
        return found == m_numbers.end() ? -1 : found->second;
    }

private:
    struct Hash
    {
        using is_transparent = void;

        [[nodiscard]] std::size_t operator()(QStringView name) const
        {
            std::size_t hash = 0;
            for (const QChar sign : name) {
                // Enough to tell the suite's names apart; letters beyond ASCII count alike.
                hash = hash * 31 + (sign.unicode() < 0x80 ? sign.unicode() | 0x20U : 1U);
            }
            return hash;
        }
    };

    struct Equal
    {
        using is_transparent = void;

        [[nodiscard]] bool operator()(QStringView a, QStringView b) const
        {
            return a.size() == b.size() && (a == b || a.compare(b, Qt::CaseInsensitive) == 0);
        }
    };

    std::unordered_map<QString, int, Hash, Equal> m_numbers;
    int m_next = 0;
};

} // namespace melovane::sqlite
