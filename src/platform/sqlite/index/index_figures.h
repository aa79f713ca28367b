#pragma once

#include <QtGlobal>

namespace melovane::sqlite {

/// What an index did; for measurements and tests.
struct IndexFigures
{
    qint64 answers = 0;   ///< searches and counts answered from memory
    qint64 left = 0;      ///< statements of the search shape that SQLite had to answer
    qint64 loads = 0;     ///< times that the table was read as a whole, to the end
    qint64 snapshots = 0; ///< times that it came out of a snapshot of a former run
    qint64 kept = 0;      ///< snapshots written
    qint64 bytes = 0;     ///< memory taken, roughly
};

} // namespace melovane::sqlite
