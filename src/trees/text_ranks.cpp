#include "trees/text_ranks.h"

#include "platform/db/text_compare.h"

#include <algorithm>

namespace melovane {

namespace {

/// Letters that are compared at once.
constexpr qsizetype kTogether = 4;

/// Below this a sort by whole texts is as fast.
constexpr std::ptrdiff_t kFew = 8;

struct Ranked
{
    std::uint64_t letters = 0; ///< some of the key's, the first of them highest
    std::uint32_t text = 0;
};

/// Sorts texts by their keys. Four letters of each lie beside one another, so that most texts are
/// told apart without a look at their keys.
class KeySort
{
public:
    explicit KeySort(const std::vector<QString>& keys)
        : m_keys(keys)
    {
        m_order.resize(keys.size());
        for (std::uint32_t i = 0; i < m_order.size(); ++i) {
            m_order[i].text = i;
        }
        sort(m_order.begin(), m_order.end(), 0);
    }

    [[nodiscard]] const std::vector<Ranked>& order() const { return m_order; }

private:
    using Place = std::vector<Ranked>::iterator;

    [[nodiscard]] const QString& key(const Ranked& ranked) const { return m_keys[ranked.text]; }

    /// Of keys that are the same up to that letter.
    void sort(Place begin, Place end, qsizetype at)
    {
        if (end - begin < kFew || anyEnds(begin, end, at)) {
            std::sort(begin, end,
                      [&](const Ranked& a, const Ranked& b) { return key(a) < key(b); });
            return;
        }
        for (Place each = begin; each != end; ++each) {
            each->letters = lettersAt(key(*each), at);
        }
        std::sort(begin, end,
                  [](const Ranked& a, const Ranked& b) { return a.letters < b.letters; });
        while (begin != end) {
            const Place next =
                std::find_if(begin, end, [letters = begin->letters](const Ranked& ranked) {
                    return ranked.letters != letters;
                });
            if (next - begin > 1) {
                sort(begin, next, at + kTogether);
            }
            begin = next;
        }
    }

    /// True when the letters from there don't tell how the keys are ordered: behind an end stands
    /// what could be a letter, too.
    [[nodiscard]] bool anyEnds(Place begin, Place end, qsizetype at) const
    {
        return at > 0 && std::any_of(begin, end,
                                     [&](const Ranked& ranked) { return key(ranked).size() < at; });
    }

    static std::uint64_t lettersAt(const QString& key, qsizetype at)
    {
        std::uint64_t letters = 0;
        for (qsizetype i = at; i < at + kTogether; ++i) {
            letters = letters << 16U | (i < key.size() ? key[i].unicode() : 0U);
        }
        return letters;
    }

    const std::vector<QString>& m_keys;
    std::vector<Ranked> m_order;
};

} // namespace

std::vector<std::uint32_t> textRanks(const std::vector<QString>& texts)
{
    std::vector<QString> keys;
    keys.reserve(texts.size());
    for (const QString& text : texts) {
        keys.push_back(textcompare::sortKey(text));
    }
    const KeySort sorted(keys);
    std::vector<std::uint32_t> ranks(texts.size(), 0);
    std::uint32_t rank = 0;
    const QString* previous = nullptr;
    for (const Ranked& ranked : sorted.order()) {
        const QString& key = keys[ranked.text];
        if (previous && *previous != key) {
            ++rank;
        }
        previous = &key;
        ranks[ranked.text] = rank;
    }
    return ranks;
}

} // namespace melovane
