#pragma once

#include <QString>

#include <chrono>
#include <functional>
#include <memory>

namespace melovane {

/// Number of a message control, unique among those alive on this machine; 0 is nobody.
using MessageHandle = qint32;

/// Part of the name of every message control, which tells it from other endpoints: keep.
inline constexpr QStringView kMessageControlClass = u"AfxOleControl42";

/// `KSMessage`: an endpoint that numbers and texts are sent to, within this program and between
/// the programs of the suite.
///
/// A message is an identifier and two whole numbers of 32 bits, or an identifier, a number and a
/// text. Everything happens on the thread of the message loop. A handler may send, too; it may
/// destroy the control that it was called for.
class KSMessage
{
public:
    /// Answers a number message; the result is what the sender's Send returns.
    using NumberHandler = std::function<qint32(qint32 id, qint32 wParam, qint32 lParam)>;
    using TextHandler = std::function<qint32(qint32 id, qint32 number, const QString& text)>;

    virtual ~KSMessage() = default;

    /// The own handle, by which others reach this control; the same as long as it lives. 0 when
    /// the control could not be made: it then reaches nobody and is reached by nobody.
    [[nodiscard]] virtual MessageHandle handle() const = 0;

    /// The control that later messages go to.
    virtual void setTarget(MessageHandle target) = 0;
    [[nodiscard]] virtual MessageHandle target() const = 0;

    /// Sends and waits until the receiver's handler has returned; its result, or 0 when the target
    /// is dead, dies meanwhile, or does not answer in time. While waiting, messages that others
    /// send are served, nothing else is: no timer, no user event, no posted message.
    virtual qint32 Send(qint32 id, qint32 wParam, qint32 lParam) = 0;

    /// Send with a patience of its own. False when the target has not answered by then: what was
    /// sent reaches it all the same as soon as it goes on.
    virtual bool
    SendWithin(std::chrono::milliseconds patience, qint32 id, qint32 wParam, qint32 lParam) = 0;

    /// Sends a text in the same way as Send. What is longer than the control carries is refused
    /// with 0.
    virtual qint32 SendText(qint32 id, qint32 number, const QString& text) = 0;

    /// Sends without waiting: the receiver gets it from its message loop, in the order posted, each
    /// one after the handler of the one before has returned; a message loop inside a handler does
    /// not bring the next. A dead target is no error, and to one that takes nothing any more what
    /// exceeds the memory kept for it is lost.
    virtual void Post(qint32 id, qint32 wParam, qint32 lParam) = 0;
    virtual void PostText(qint32 id, qint32 number, const QString& text) = 0;

    /// The event `MessageNumber`. One handler; without one the answer is 0.
    virtual void setMessageNumber(NumberHandler handler) = 0;
    /// The event `MessageText`.
    virtual void setMessageText(TextHandler handler) = 0;
};

/// Makes message controls and tells which are alive.
class Messages
{
public:
    virtual ~Messages() = default;

    /// Never null; see KSMessage::handle() for one that could not be made.
    [[nodiscard]] virtual std::unique_ptr<KSMessage> makeControl() = 0;

    /// True when the handle is that of a live message control of the same user. The only proof of
    /// life: a number that stands in a file may be stale or another program's.
    [[nodiscard]] virtual bool IsMsgWindow(MessageHandle handle) const = 0;
};

} // namespace melovane
