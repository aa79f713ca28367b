#pragma once

#include <QString>

#include <cstdint>
#include <vector>

namespace melovane {

/// Of each text, its place in the order of textcompare::compare(), counted from 0; texts that are
/// equal share theirs.
[[nodiscard]] std::vector<std::uint32_t> textRanks(const std::vector<QString>& texts);

} // namespace melovane
