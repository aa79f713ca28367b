#pragma once

#include "library/search_history.h"

namespace melovane {

class Files;
class Mod_API;

/// What was shown, one after the other, kept in `suche.his` of the configuration path. Quiet: a
/// file that cannot be read is a run without the history of the former ones, and one that cannot be
/// written stays as it was. A damaged one is kept aside before the next run's is written in its
/// place. Files and paths outlive it.
class StoredHistory : public SearchHistory
{
public:
    StoredHistory(Mod_API& paths, Files& files)
        : m_paths(paths)
        , m_files(files)
    {}

    /// \return where a damaged file is kept, which is mended by that; nothing when it was whole
    std::optional<QString> load();
    void save();

private:
    std::optional<QString> keepDamaged();
    [[nodiscard]] QString file() const;

    Mod_API& m_paths;
    Files& m_files;
};

} // namespace melovane
