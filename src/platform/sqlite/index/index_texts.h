#pragma once

#include "platform/db/text_compare.h"
#include "platform/sqlite/index/index_array.h"
#include "platform/sqlite/index/index_scan.h"

#include <optional>

namespace melovane::sqlite {

/// The distinct texts of a column in their order, folded, as UTF-8. Folding and UTF-8 keep
/// beginnings and pieces what they are, so bytes are compared.
class IndexTexts
{
public:
    IndexTexts() = default;

    /// \param letters the texts, each followed by kTextEnd
    /// \param ends for each text the place behind its last byte
    IndexTexts(IndexArray<char> letters, IndexArray<quint32> ends);

    /// \param packed the letters, already passed over
    IndexTexts(IndexArray<char> letters, IndexArray<quint32> ends, PackedTexts packed);

    [[nodiscard]] quint32 count() const { return quint32(m_ends.size()); }

    [[nodiscard]] std::string_view text(quint32 number) const
    {
        const quint32 begin = number == 0 ? 0 : m_ends[number - 1] + 1;
        return {m_letters.data() + begin, m_ends[number] - begin};
    }

    [[nodiscard]] QString decoded(quint32 number) const;

    /// The first text that is not less than this one, or count().
    [[nodiscard]] quint32 lowerBound(QStringView folded) const;
    [[nodiscard]] std::optional<quint32> find(QStringView folded) const;

    /// Adds the number + 1 of each text that matches.
    /// \param text of the pattern
    /// \param values empty, with room for count() + 1
    void
    addMatching(const textcompare::LikePattern& pattern, QStringView text, IndexBits& values) const;

    /// False when letters and ends do not belong together.
    [[nodiscard]] bool isWhole() const;

    [[nodiscard]] const IndexArray<char>& letters() const { return m_letters; }

    [[nodiscard]] const IndexArray<quint32>& ends() const { return m_ends; }

    [[nodiscard]] qint64 bytes() const
    {
        const std::size_t ends = m_ends.size() * sizeof(quint32);
        return qint64(m_letters.size()) + qint64(ends) + qint64(m_packed.bytes());
    }

private:
    /// The same by a sort key or the beginning of one.
    [[nodiscard]] quint32 lowerBoundOfKey(const QString& key) const;
    [[nodiscard]] std::pair<quint32, quint32> beginningAlike(const QString& folded) const;
    void addBeginning(const QString& folded, IndexBits& values) const;
    void addHolding(const QString& folded, IndexBits& values) const;
    void addBehind(int skipped, const QString& folded, IndexBits& values) const;
    void addOther(const textcompare::LikePattern& pattern,
                  const QString& inside,
                  QStringView text,
                  IndexBits& values) const;
    template <typename Test> void keep(IndexBits& values, const Test& test) const;

    IndexArray<char> m_letters;
    IndexArray<quint32> m_ends;
    PackedTexts m_packed; ///< the letters

    /// What the piece asked for last was found in, when that was few: one typed on from it is
    /// looked for only there.
    struct Found
    {
        QByteArray piece;
        std::vector<quint32> values;
    };

    mutable std::optional<Found> m_last;
};

} // namespace melovane::sqlite
