#pragma once

#include "platform/sqlite/index/index_scan.h"

#include <QStringView>

namespace melovane::sqlite {

/// A pattern of letters, "?" and "*", which is tried on all texts of a column at once: places where
/// it may go on are bits, and each of its steps moves the bits of 64 letters together. A pass costs
/// the same whatever the texts hold.
class IndexGlob
{
public:
    struct Step
    {
        enum class Kind
        {
            Byte,
            AnyLetter,
            AnyRun
        } kind = Kind::Byte;
        std::size_t byte = 0; ///< which of bytes()
    };

    /// \param pattern of `like`; nothing for one with digits or classes, or with so many different
    /// letters that looking at one text after the other is no slower
    [[nodiscard]] static std::optional<IndexGlob> of(QStringView pattern);

    [[nodiscard]] const std::vector<Step>& steps() const { return m_steps; }

    /// The different bytes of its letters, and kTextEnd as the last.
    [[nodiscard]] const std::vector<char>& bytes() const { return m_bytes; }

private:
    [[nodiscard]] std::size_t indexOf(char byte);

    std::vector<Step> m_steps;
    std::vector<char> m_bytes;
};

/// Adds `first` + the number of each text that matches.
/// \param found with room for `first` + all texts
void addMatching(const PackedTexts& texts,
                 const IndexGlob& glob,
                 qint64 first,
                 IndexBits& found,
                 VectorWidth width = vectorWidth());

} // namespace melovane::sqlite
