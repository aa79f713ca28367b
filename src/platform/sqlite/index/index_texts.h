#pragma once

#include "platform/db/text_compare.h"
#include "platform/sqlite/index/index_array.h"

#include <functional>
#include <optional>
#include <string_view>

namespace melovane::sqlite {

/// Runs of neighbouring numbers [first, second), ascending.
class NumberRanges
{
public:
    /// Not below anything added before.
    void add(quint32 first, quint32 end);

    void add(quint32 number) { add(number, number + 1); }

    [[nodiscard]] auto begin() const { return m_ranges.begin(); }

    [[nodiscard]] auto end() const { return m_ranges.end(); }

    [[nodiscard]] std::size_t size() const { return m_ranges.size(); }

private:
    std::vector<std::pair<quint32, quint32>> m_ranges;
};

/// The distinct texts of a column in their order, folded, as UTF-8. Folding and UTF-8 keep
/// beginnings and pieces what they are, so bytes are compared.
class IndexTexts
{
public:
    IndexTexts() = default;

    /// \param ends for each text the place behind its last byte
    /// \param signs for each text which of the letters a to z, which figures at all, and which
    /// others beyond ASCII it holds, a bit each
    IndexTexts(IndexArray<char> letters, IndexArray<quint32> ends, IndexArray<quint64> signs)
        : m_letters(std::move(letters))
        , m_ends(std::move(ends))
        , m_signs(std::move(signs))
    {}

    [[nodiscard]] quint32 count() const { return quint32(m_ends.size()); }

    [[nodiscard]] std::string_view text(quint32 number) const
    {
        const quint32 begin = beginOf(number);
        return {m_letters.data() + begin, m_ends[number] - begin};
    }

    [[nodiscard]] QString decoded(quint32 number) const;

    /// The first text that is not less than this one, or count().
    [[nodiscard]] quint32 lowerBound(QStringView folded) const;
    [[nodiscard]] std::optional<quint32> find(QStringView folded) const;

    /// Whether a text need not be looked into.
    using Known = std::function<bool(quint32 number)>;

    /// \param known of a text that may be among the result or not
    [[nodiscard]] NumberRanges matching(const textcompare::LikePattern& pattern,
                                        const Known& known) const;

    [[nodiscard]] const IndexArray<char>& letters() const { return m_letters; }

    [[nodiscard]] const IndexArray<quint32>& ends() const { return m_ends; }

    [[nodiscard]] const IndexArray<quint64>& signs() const { return m_signs; }

    [[nodiscard]] qint64 bytes() const
    {
        const std::size_t bytes =
            m_letters.size() + m_ends.size() * sizeof(quint32) + m_signs.size() * sizeof(quint64);
        return qint64(bytes);
    }

private:
    [[nodiscard]] quint32 beginOf(quint32 number) const
    {
        return number == 0 ? 0 : m_ends[number - 1];
    }

    [[nodiscard]] NumberRanges holdingLetter(quint32 bit) const;
    template <typename Test>
    void addBeginning(const QString& folded, NumberRanges& result, const Test& test) const;
    template <typename Test>
    void addHolding(const QString& folded, NumberRanges& result, const Test& test) const;
    void addSigned(std::string_view piece, NumberRanges& result, const Known& known) const;
    [[nodiscard]] NumberRanges holding(const QString& folded, const Known& known) const;
    [[nodiscard]] NumberRanges holdingPieces(const std::vector<QString>& pieces,
                                             const Known& known) const;
    [[nodiscard]] bool holds(std::string_view text, std::span<const QByteArray> pieces) const;
    [[nodiscard]] bool isRare(quint64 signs, const Known& known) const;

    IndexArray<char> m_letters;
    IndexArray<quint32> m_ends;
    IndexArray<quint64> m_signs;

    /// What the piece asked for last was found in, or was not looked for: one typed on from it is
    /// looked for only there.
    struct Found
    {
        QByteArray piece;
        NumberRanges numbers;
    };

    mutable std::optional<Found> m_last;
};

/// Collects the texts of a column and numbers the distinct ones.
class IndexTextsBuilder
{
public:
    IndexTextsBuilder();

    /// \param utf8 as it stands in the file, damaged bytes included
    /// \return the number of the text, in the order of first sight
    quint32 add(std::string_view utf8);

    /// False when there is more than an index can number.
    [[nodiscard]] bool fits() const { return m_fits; }

    struct Sorted
    {
        IndexTexts texts;
        std::vector<quint32> places; ///< of each number given by add()
    };

    /// To be called once, at the end.
    [[nodiscard]] Sorted sort();

private:
    [[nodiscard]] std::string_view text(quint32 number) const;
    [[nodiscard]] std::string_view fold(std::string_view utf8);
    void grow();

    std::vector<char> m_letters;
    std::vector<quint32> m_ends;
    /// At the place of its hash: the hash and, below, the number + 1; 0 for none.
    std::vector<quint64> m_table;
    std::vector<char> m_folded;
    bool m_fits = true;
};

} // namespace melovane::sqlite
