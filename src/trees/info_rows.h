#pragma once

#include "platform/controls/tree_control.h"

#include <QString>

#include <vector>

namespace melovane {

class ConfigObjects;
class Database;
struct MlvAllData;

/// A text as a search that finds its spelling variants: each sign that is neither a letter nor a
/// digit from 0 to 9 becomes "*".
[[nodiscard]] QString searchPattern(const QString& text);

/// What is known of one track, each value with a key that finds its like. What the track lacks has
/// no row.
/// \param bpmRange tempos below and above that get a row of their own
/// \param cover    full path of a picture file, or empty; its row names `MlvAllData::Image`
/// \throws DbError
[[nodiscard]] std::vector<TreeRow> informationRows(Database& database,
                                                   const ConfigObjects& texts,
                                                   const MlvAllData& track,
                                                   int bpmRange,
                                                   const QString& cover);

} // namespace melovane
