#include "bus/message_numbers.h"
#include "platform/db/database.h"
#include "platform/db/db_error.h"
#include "platform/linux/linux_messages.h"
#include "platform/sqlite/engine/sqlite_engine.h"
#include "platform/system/clock.h"

#include <QCoreApplication>
#include <QRandomGenerator>

#include <sys/prctl.h>

#include <array>
#include <csignal>
#include <cstdio>
#include <limits>
#include <vector>

namespace {

using namespace melovane;
using namespace Qt::Literals::StringLiterals;

/// Patience for a console that has a flood to work off.
constexpr std::chrono::minutes kPatience{9};

/// A number that nobody knows.
constexpr qint32 kUnknown = 1;

/// One in so many posts is another kind of thing.
constexpr int kTextEvery = 20;
constexpr int kRowEvery = 1000;

/// So many posts are made before what the console takes meanwhile is handed to it.
constexpr int kBatch = 100;

/// Sends what chance says to every control of one console, as fast as it can.
class Flood
{
public:
    Flood(const QString& folder, qint64 process, quint32 seed, QString library)
        : m_library(std::move(library))
        , m_random(seed)
        , m_messages(MessagePlace(folder))
        , m_control(m_messages.makeControl())
        , m_engine(sqlite::makeEngine(m_clock))
    {
        for (const LiveControl& control : m_messages.liveControls()) {
            if (control.process == process) {
                m_targets.push_back(control.handle);
            }
        }
    }

    [[nodiscard]] bool hasTargets() const { return !m_targets.empty(); }

    void post(int count)
    {
        for (int i = 1; i <= count; ++i) {
            m_control->setTarget(oneOf(m_targets));
            if (i % kTextEvery == 0) {
                m_control->PostText(textId(), number(), text());
            } else {
                m_control->Post(id(), number(), number());
            }
            if (i % kRowEvery == 0) {
                writeRow();
            }
            if (i == count / 2) {
                postSeen();
            }
            if (i % kBatch == 0) {
                QCoreApplication::processEvents();
            }
        }
    }

    /// False when a control did not take what was posted in time.
    bool isTaken()
    {
        bool taken = true;
        for (const qint32 target : m_targets) {
            m_control->setTarget(target);
            taken = m_control->SendWithin(kPatience, kUnknown, 0, 0) && taken;
        }
        return taken;
    }

private:
    /// One whose work the user sees, amid the others.
    void postSeen()
    {
        for (const qint32 target : m_targets) {
            m_control->setTarget(target);
            m_control->Post(message::kJobResult, message::kJobChanges, 1);
        }
    }

    template <typename List> qint32 oneOf(const List& list)
    {
        return list[size_t(m_random.bounded(quint32(list.size())))];
    }

    qint32 any() { return qint32(m_random.generate()); }

    qint32 between(qint32 first, qint32 last) { return m_random.bounded(first, last + 1); }

    qint32 id()
    {
        switch (m_random.bounded(10)) {
        case 0:
            return any();
        case 1:
            return between(message::kSampleValue1, message::kEditSample + 2);
        case 2:
            return oneOf(std::array{message::kBringToFront, message::kFieldClicked,
                                    message::kImageChosen, message::kBpmWantsTrack, 0, -1});
        default:
            return between(message::kFirstOfConsole - 2, message::kLastOfConsole + 2);
        }
    }

    qint32 textId()
    {
        return m_random.bounded(4) == 0
                   ? id()
                   : oneOf(std::array{message::kFieldClicked, message::kImageChosen,
                                      message::kBpmWantsTrack});
    }

    qint32 number()
    {
        using Limits = std::numeric_limits<qint32>;
        switch (m_random.bounded(4)) {
        case 0:
            return any();
        case 1:
            return between(0, 50);
        case 2:
            return oneOf(m_targets);
        default:
            return oneOf(std::array{0, -1, 1, Limits::min(), Limits::max(), message::kJobChanges,
                                    message::kJobTree, message::kMonitorVolumeIcon, 10'000});
        }
    }

    QString text()
    {
        const int size = m_random.bounded(100) == 0 ? 20'000 : m_random.bounded(60);
        QString result;
        for (int i = 0; i < size; ++i) {
            result.append(QChar(char16_t(m_random.bounded(1, 0xD7FF))));
        }
        return result;
    }

    /// What stands in the mailbox is no better than the numbers.
    void writeRow()
    {
        try {
            m_engine->OpenDatabase(m_library)->Execute(
                u"insert into todo (id,fid) values (%1,'%2')"_s.arg(id()).arg(any()));
        } catch (const DbError&) {
            // The row of that number is there already.
        }
        m_engine->Release(m_library);
    }

    QString m_library;
    QRandomGenerator m_random;
    LinuxMessages m_messages;
    std::unique_ptr<KSMessage> m_control;
    SystemClock m_clock;
    std::unique_ptr<DBEngine> m_engine;
    std::vector<qint32> m_targets;
};

} // namespace

/// message_flood RUNTIME_FOLDER PROCESS COUNT SEED LIBRARY: posts, prints "posted", and ends when
/// all has been taken.
int main(int argc, char** argv)
{
    ::prctl(PR_SET_PDEATHSIG, SIGKILL);
    const QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    if (arguments.size() < 6) {
        return 2;
    }
    Flood flood(arguments[1], arguments[2].toLongLong(), arguments[4].toUInt(), arguments[5]);
    if (!flood.hasTargets()) {
        return 3;
    }
    flood.post(arguments[3].toInt());
    std::puts("posted");
    std::fflush(stdout);
    return flood.isTaken() ? 0 : 4;
}
