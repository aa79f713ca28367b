#pragma once

#include "platform/linux/only_copy.h"
#include "platform/system/files.h"

#include <QCryptographicHash>
#include <QStringList>

#include <optional>
#include <utility>

namespace melovane {

/// The mark of a library that the console has lent to another program: programs that are started
/// meanwhile, by whomever, see by it that they must not write there, for the file may be replaced
/// by another one.
///
/// A lock in the runtime folder, named after the library's path: the kernel frees it when the
/// console ends, however it ends.
class LibraryLoan
{
public:
    /// \param files   outlives this
    /// \param folders of the lock, see OnlyCopy; the same for every program of the suite
    LibraryLoan(const Files& files, QStringList folders)
        : m_files(files)
        , m_folders(std::move(folders))
    {}

    /// Marks a library until end(), or until this is destroyed. Where no lock can be made nobody
    /// sees the mark.
    void begin(const QString& library)
    {
        m_mark.emplace(m_folders, markName(library));
        static_cast<void>(m_mark->claim());
    }

    void end() { m_mark.reset(); }

    /// For other programs.
    [[nodiscard]] bool isLent(const QString& library) const
    {
        return !OnlyCopy(m_folders, markName(library)).claim();
    }

private:
    /// The same for every path that leads to the library's place; its file may be another one when
    /// it comes back. Keep: other programs look for it.
    [[nodiscard]] QString markName(const QString& library) const
    {
        const QString place = m_files.canonical(library);
        const QByteArray name = (place.isEmpty() ? library : place).toUtf8();
        return QStringLiteral("lent-") +
               QString::fromLatin1(
                   QCryptographicHash::hash(name, QCryptographicHash::Sha1).toHex());
    }

    const Files& m_files;
    QStringList m_folders;
    std::optional<OnlyCopy> m_mark;
};

} // namespace melovane
