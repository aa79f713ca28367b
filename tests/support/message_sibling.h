#pragma once

#include "platform/message/message_control.h"

#include <QProcess>
#include <QString>
#include <QStringList>

namespace melovane::test {

/// What the sibling program does with a number that it gets. All in one table, since the program
/// and the tests that start it have to agree.
namespace sibling {
inline constexpr qint32 kAdd = 1;           ///< answers wParam + lParam
inline constexpr qint32 kPingPong = 2;      ///< sends wParam - 1 back to lParam while above 0
inline constexpr qint32 kStorm = 3;         ///< sends wParam times kStormDrop to lParam
inline constexpr qint32 kStormAnswered = 4; ///< answers how many of them were answered rightly
inline constexpr qint32 kStormReceived = 5; ///< answers how many kStormDrop came in
inline constexpr qint32 kStormDrop = 6;     ///< answers wParam + 1
inline constexpr qint32 kDie = 7;           ///< kills its own process in the handler
inline constexpr qint32 kPostBack = 8;      ///< posts kAdd with 0 to wParam - 1 to lParam
inline constexpr qint32 kCountPosts = 9;    ///< a post: its wParam is the next expected number
inline constexpr qint32 kPostsInOrder = 10; ///< answers how many kCountPosts came in order
inline constexpr qint32 kSendBack = 11;     ///< sends kAdd with wParam, 1 to lParam, adds 1000
inline constexpr qint32 kTextBack = 12;     ///< sends the last text to lParam, its answer
inline constexpr qint32 kIsLive = 13;       ///< 1 when IsMsgWindow holds for lParam
inline constexpr qint32 kSeen = 14;         ///< answers how many numbers outside this table came
inline constexpr qint32 kSeenId = 15;       ///< the id of the one with index wParam
inline constexpr qint32 kSeenLParam = 16;   ///< its lParam
inline constexpr qint32 kPostRefresh = 17;  ///< posts kRefresh with 0, 0 wParam times to lParam
inline constexpr qint32 kRefresh = 18;      ///< asks to read again; equal ones may become one
} // namespace sibling

/// Full path of the sibling program, for a test that starts it in a way of its own. Its argument is
/// the folder where the controls meet.
[[nodiscard]] QString siblingProgram();

/// A real second process with a message control. Texts that it gets are answered with their length.
class Sibling
{
public:
    /// Starts it; the test fails when it does not come up.
    /// \param folder where the controls meet
    explicit Sibling(const QString& folder);
    ~Sibling();
    Sibling(const Sibling&) = delete;
    Sibling& operator=(const Sibling&) = delete;

    [[nodiscard]] MessageHandle handle() const { return m_handle; }

    [[nodiscard]] qint64 process() const { return m_process.processId(); }

    void stop() const;  ///< as if it hung
    void goOn() const;  ///< after stop
    void killAndWait(); ///< by signal 9

private:
    QProcess m_process;
    MessageHandle m_handle = 0;
};

} // namespace melovane::test
