#pragma once

#include "platform/linux/file_writing.h"
#include "platform/message/message_control.h"

#include <QString>
#include <QStringList>

namespace melovane {

/// Sees to it that a user runs a program once.
///
/// A file in the first folder that there is, the runtime folder as a rule, is locked by the copy
/// that runs and holds the handle of its message control. The kernel frees the lock when that copy
/// ends, however it ends.
class OnlyCopy
{
public:
    /// \param folders Environment::runtimeFolder and what stands in for it where there is none, the
    ///                same for every copy; empty ones are left out, with none left every copy takes
    ///                itself for the only one
    /// \param program name without extension
    OnlyCopy(const QStringList& folders, const QString& program);
    OnlyCopy(const QString& folder, const QString& program);

    /// True when no other copy runs; from then on, until this is destroyed, this is the one. A
    /// place where no lock can be made keeps nobody from starting.
    [[nodiscard]] bool claim();

    /// For the copy that runs: tells later ones by which control it is reached.
    void publish(MessageHandle control);

    /// For a later copy: what the one that runs has published; 0 as long as it has not.
    [[nodiscard]] MessageHandle runningCopy() const;

private:
    void write(const QByteArray& text);

    QByteArray m_path;
    linuxfiles::Descriptor m_lock;
};

} // namespace melovane
