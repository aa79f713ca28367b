#pragma once

#include "platform/linux/file_writing.h"

#include <QString>
#include <QStringList>

#include <functional>
#include <memory>

namespace melovane {

class FileLock;
class Files;

/// Path of the lock that a program which works behind the console holds on a library: the same for
/// every path that leads to the library's file. Empty when none of the folders is there.
///
/// \param folders Environment::runtimeFolder and what stands in for it, as for OnlyCopy
/// \param job     the kind of program: "rebuildtree", "storeplaylists", "writetags", "mediaintake",
///                "tagbench". Keep: they look for each other's locks
[[nodiscard]] QString jobLockFile(const Files& files,
                                  const QStringList& folders,
                                  const QString& job,
                                  const QString& library);

/// Takes the lock of that path, trying once: null while somebody holds it. Empty for an empty path,
/// where nothing can be locked.
[[nodiscard]] std::function<std::unique_ptr<FileLock>()> jobClaim(const QString& path);

/// Whether a program holds the lock of that path now. False for an empty path.
[[nodiscard]] bool isLocked(const QString& path);

/// A lock that a started program takes along: it is held until the last of both ends, however they
/// end.
class InheritedLock
{
public:
    /// Tries once. True, too, where no lock can be made; false when somebody holds it.
    [[nodiscard]] bool take(const QString& path);

    void release() { m_file.reset(); }

    /// To be called in the new process, before its program begins: nothing else happens there.
    void keepInChild() const;

private:
    linuxfiles::Descriptor m_file;
};

} // namespace melovane
