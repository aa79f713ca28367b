#include "platform/linux/linux_messages.h"
#include "support/message_sibling.h"

#include <QCoreApplication>
#include <QHash>
#include <QList>

#include <sys/prctl.h>
#include <unistd.h>

#include <csignal>
#include <cstdio>
#include <functional>

namespace {

using namespace melovane;
namespace sibling = melovane::test::sibling;

/// A program of the suite as tests need it: it does what its messages say.
class Program
{
public:
    explicit Program(const QString& folder)
        : m_messages(MessagePlace(folder))
        , m_control(m_messages.makeControl())
    {
        m_control->setMessageNumber([this](qint32 id, qint32 wParam, qint32 lParam) {
            if (const auto action = m_actions.value(id)) {
                return action(wParam, lParam);
            }
            m_seen.append({id, lParam});
            return 0;
        });
        m_control->setMessageText([this](qint32, qint32, const QString& text) {
            m_text = text;
            return qint32(text.size());
        });
    }

    [[nodiscard]] MessageHandle handle() const { return m_control->handle(); }

private:
    qint32 send(MessageHandle target, qint32 id, qint32 wParam, qint32 lParam)
    {
        m_control->setTarget(target);
        return m_control->Send(id, wParam, lParam);
    }

    qint32 pingPong(qint32 left, MessageHandle other)
    {
        return left > 0 ? send(other, sibling::kPingPong, left - 1, handle()) + 1 : 0;
    }

    qint32 storm(qint32 count, MessageHandle other)
    {
        m_answered = 0;
        for (qint32 i = 0; i < count; ++i) {
            m_answered += send(other, sibling::kStormDrop, i, 0) == i + 1 ? 1 : 0;
        }
        return 0;
    }

    qint32 postBack(qint32 count, MessageHandle other)
    {
        m_control->setTarget(other);
        for (qint32 i = 0; i < count; ++i) {
            m_control->Post(sibling::kAdd, i, 0);
        }
        return count;
    }

    qint32 postRefresh(qint32 count, MessageHandle other)
    {
        m_control->setTarget(other);
        for (qint32 i = 0; i < count; ++i) {
            m_control->Post(sibling::kRefresh, 0, 0);
        }
        return count;
    }

    qint32 textBack(MessageHandle other)
    {
        m_control->setTarget(other);
        return m_control->SendText(sibling::kTextBack, 0, m_text);
    }

    LinuxMessages m_messages;
    std::unique_ptr<KSMessage> m_control;
    QString m_text;
    QList<std::pair<qint32, qint32>> m_seen; ///< id and lParam
    qint32 m_answered = 0;
    qint32 m_received = 0;
    qint32 m_inOrder = 0;

    const QHash<qint32, std::function<qint32(qint32, qint32)>> m_actions = {
        {sibling::kAdd, [](qint32 one, qint32 two) { return one + two; }},
        {sibling::kPingPong, [this](qint32 left, qint32 other) { return pingPong(left, other); }},
        {sibling::kStorm, [this](qint32 count, qint32 other) { return storm(count, other); }},
        {sibling::kStormAnswered, [this](qint32, qint32) { return m_answered; }},
        {sibling::kStormReceived, [this](qint32, qint32) { return m_received; }},
        {sibling::kStormDrop,
         [this](qint32 number, qint32) {
             ++m_received;
             return number + 1;
         }},
        {sibling::kDie, [](qint32, qint32) { return std::raise(SIGKILL); }},
        {sibling::kPostBack, [this](qint32 count, qint32 other) { return postBack(count, other); }},
        {sibling::kPostRefresh,
         [this](qint32 count, qint32 other) { return postRefresh(count, other); }},
        {sibling::kCountPosts,
         [this](qint32 number, qint32) { return m_inOrder += number == m_inOrder ? 1 : 0; }},
        {sibling::kPostsInOrder, [this](qint32, qint32) { return m_inOrder; }},
        {sibling::kSendBack,
         [this](qint32 number, qint32 other) {
             return send(other, sibling::kAdd, number, 1) + 1000;
         }},
        {sibling::kTextBack, [this](qint32, qint32 other) { return textBack(other); }},
        {sibling::kIsLive,
         [this](qint32, qint32 other) { return m_messages.IsMsgWindow(other) ? 1 : 0; }},
        {sibling::kSeen, [this](qint32, qint32) { return qint32(m_seen.size()); }},
        {sibling::kSeenId, [this](qint32 index, qint32) { return m_seen.value(index).first; }},
        {sibling::kSeenLParam, [this](qint32 index, qint32) { return m_seen.value(index).second; }},
    };
};

/// Nobody is left behind by a test that was killed. False when its program has ended before.
bool endWithParent()
{
    const pid_t parent = ::getppid();
    return ::prctl(PR_SET_PDEATHSIG, SIGKILL) == 0 && ::getppid() == parent;
}

} // namespace

/// message_sibling FOLDER: prints the handle of its message control and serves until it is killed,
/// or the program that has started it ends.
int main(int argc, char** argv)
{
    if (!endWithParent()) {
        return 1;
    }
    const QCoreApplication application(argc, argv);
    const Program program(QString::fromLocal8Bit(argc > 1 ? argv[1] : ""));
    std::printf("%d\n", program.handle());
    std::fflush(stdout);
    return QCoreApplication::exec();
}
