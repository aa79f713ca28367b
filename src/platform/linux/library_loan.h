#pragma once

#include "platform/system/files.h"

#include <QStringList>

#include <memory>

namespace melovane {

/// The mark of a library that the console has lent to another program: programs that are started
/// meanwhile, by whomever, see by it that they must not write there, for the file may be replaced
/// by another one.
///
/// A lock in the runtime folder, named after the library's path: the kernel frees it when the
/// console ends, however it ends. Those who look take a shared lock for a moment, so that they
/// never take one another for the console.
class LibraryLoan
{
public:
    /// \param files   outlives this
    /// \param folders of the lock, see OnlyCopy; the same for every program of the suite
    LibraryLoan(const Files& files, const QStringList& folders);

    /// Marks a library until end(), or until this is destroyed. Where no lock can be made nobody
    /// sees the mark.
    void begin(const QString& library);

    void end() { m_mark.reset(); }

    /// For other programs.
    [[nodiscard]] bool isLent(const QString& library) const;

private:
    [[nodiscard]] QString markOf(const QString& library) const;

    const Files& m_files;
    QString m_folder; ///< empty for none
    std::unique_ptr<FileLock> m_mark;
};

} // namespace melovane
