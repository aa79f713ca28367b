#pragma once

#include "care/recycle_folder.h"

#include <algorithm>

namespace melovane::test {

/// What the recycle folder has of a folder. It lies at the root of the volume, so other tests that
/// run at the same time, or that were killed, have files in it, too.
[[nodiscard]] inline std::vector<RecycledFile> recycledOf(const RecycleFolder& recycler,
                                                          const QString& folder)
{
    std::vector<RecycledFile> files = recycler.all();
    std::erase_if(files, [&](const RecycledFile& file) {
        return !file.from.startsWith(folder + QLatin1Char('/'));
    });
    return files;
}

/// Takes out what a test has put there.
inline void throwAway(Files& disk, RecycleFolder& recycler, const std::vector<RecycledFile>& files)
{
    for (const RecycledFile& file : files) {
        disk.remove(file.to);
    }
    recycler.forget(files);
}

} // namespace melovane::test
