#pragma once

#include "platform/controls/tree_control.h"

#include <cstdint>
#include <string>
#include <vector>

namespace melovane {

/// The texts of all rows without regard to case, packed behind one another: a search over 300,000
/// of them takes milliseconds. Counts at the end of texts are left out. Made when first asked.
class OutlineTexts
{
public:
    /// The form in which texts are compared.
    [[nodiscard]] static std::string folded(const QString& text);

    [[nodiscard]] bool isMade() const { return !m_starts.empty(); }

    void make(const std::vector<TreeRow>& rows);

    void clear();

    /// Rows have come in front of that one. Nothing happens while nothing is made; so with the two
    /// below.
    void inserted(const std::vector<TreeRow>& rows, int at, int count);
    void removed(int at, int count);
    void changed(const std::vector<TreeRow>& rows, int row);

    /// The rows whose text holds a piece (folded), rising; none for an empty one.
    [[nodiscard]] std::vector<std::uint32_t> rowsWith(const std::string& piece) const;

    [[nodiscard]] bool startsWith(int row, const std::string& piece) const;
    [[nodiscard]] bool contains(int row, const std::string& piece) const;

private:
    [[nodiscard]] std::string_view textOf(int row) const;

    std::string m_letters;               ///< a zero byte behind each text
    std::vector<std::uint32_t> m_starts; ///< one more than rows
};

} // namespace melovane
