#pragma once

#include "platform/linux/file_writing.h"
#include "platform/message/message_control.h"

#include <QString>

#include <vector>

namespace melovane {

/// A message control that can be reached.
struct LiveControl
{
    MessageHandle handle = 0;
    qint64 process = 0; ///< number of the process that it belongs to; 0 when it is too busy to tell
};

namespace linuxmessages {

/// The folder in which the message controls of one user meet: one socket a control, its name made
/// of the class word and the handle.
class MessageFolder
{
public:
    /// \param path a folder of mode 0700, see Environment::runtimeFolder; with an empty path no
    ///             control can be made and none is found
    /// \param user whose processes are let in
    MessageFolder(QString path, quint32 user);

    struct Endpoint
    {
        linuxfiles::Descriptor listener = linuxfiles::Descriptor(); ///< invalid: none was made
        MessageHandle handle = 0;
    };

    /// Makes a socket under a new random handle. It is alive from the moment at which others can
    /// see it.
    [[nodiscard]] Endpoint listen() const;

    /// Takes the socket of a control of ours away.
    void remove(MessageHandle handle) const;

    /// A connection to a control that answers at once; invalid when there is none, when it is
    /// another user's, or when so many wait to be let in that it must be hung.
    [[nodiscard]] linuxfiles::Descriptor connect(MessageHandle handle) const;

    /// True when a process of this user listens, be it busy or hung.
    [[nodiscard]] bool isAlive(MessageHandle handle) const;

    /// Lets the next peer of a listening socket in. Invalid when nobody waits (errno is EAGAIN
    /// then), or when it was another user's and has been turned away.
    [[nodiscard]] linuxfiles::Descriptor accept(int listener) const;

    /// All live controls, by handle.
    [[nodiscard]] std::vector<LiveControl> controls() const;

    /// Removes sockets that killed processes have left, a limited number at a time.
    void sweep() const;

private:
    enum class Answer
    {
        Connected,
        Busy,    ///< its queue of peers is full
        Refused, ///< nobody listens any more
        Foreign  ///< another user's, or no socket of ours at all
    };

    struct Call
    {
        Answer answer = Answer::Foreign;
        linuxfiles::Descriptor socket = linuxfiles::Descriptor();
        qint64 process = 0;
    };

    [[nodiscard]] Call call(MessageHandle handle) const;
    [[nodiscard]] bool place(const QByteArray& from, const QByteArray& to) const;
    [[nodiscard]] QByteArray pathOf(const QByteArray& name) const;
    [[nodiscard]] std::vector<QByteArray> names() const;
    void sweepName(const QByteArray& name) const;

    QString m_path;
    quint32 m_user;
};

} // namespace linuxmessages
} // namespace melovane
