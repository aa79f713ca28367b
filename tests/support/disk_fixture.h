#pragma once

#include "support/faulty_vfs.h"

#include <sqlite3.h>

namespace melovane::test {

/// A base for fixtures whose disk fills up or fails: it stands in front of the base with the
/// database, whose connections end before it.
class DiskFixture
{
protected:
    /// From now on nothing can be written: kDiskFull.
    void fillDisk() { m_disk.arm({FileCall::Write, 1, SQLITE_FULL, true}); }

private:
    FaultyVfs m_disk;
};

} // namespace melovane::test
