#include "platform/db/database.h"
#include "platform/linux/ini_profile.h"
#include "platform/linux/linux_files.h"
#include "platform/linux/linux_messages.h"
#include "platform/sqlite/engine/sqlite_engine.h"
#include "platform/system/clock.h"
#include "support/wait_for.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QFile>

#include <cstdio>

namespace {

using namespace melovane;

/// Another program of the suite, for one errand: "FOLDER HANDLE ERRAND ...".
class Program
{
public:
    Program(const QString& folder, MessageHandle console)
        : m_messages(MessagePlace(folder))
        , m_control(m_messages.makeControl())
    {
        m_control->setTarget(console);
        m_control->setMessageNumber([this](qint32 id, qint32, qint32 lParam) {
            m_released = m_released || (id == 1037 && lParam == 2);
            m_received.append(id);
            return 0;
        });
    }

    /// "number ID WPARAM LPARAM ..." sends numbers one after the other.
    int numbers(const QStringList& arguments)
    {
        for (qsizetype at = 0; at + 2 < arguments.size(); at += 3) {
            m_control->Send(arguments[at].toInt(), arguments[at + 1].toInt(),
                            arguments[at + 2].toInt());
        }
        return 0;
    }

    /// "player DATABASE SETTINGS STEP ..." plays the player's role, its handle in the settings. A
    /// step "number ID WPARAM LPARAM" is sent, its milliseconds are printed; "await ID" waits for a
    /// number and prints the track that lies in the mailbox for it; any other is a statement.
    int player(const QStringList& arguments)
    {
        LinuxFiles files;
        IniProfile(files).write(arguments[1], QStringLiteral("Message"),
                                QStringLiteral("Handle.DJ"), QString::number(m_control->handle()));
        const SystemClock clock;
        const auto engine = sqlite::makeEngine(clock);
        const auto database = engine->OpenDatabase(arguments[0]);
        std::puts("ready");
        std::fflush(stdout);
        for (const QString& step : arguments.mid(2)) {
            const QStringList words = step.split(u' ');
            if (words[0] == QLatin1String("number")) {
                QElapsedTimer timer;
                timer.start();
                m_control->Send(words[1].toInt(), words[2].toInt(), words[3].toInt());
                std::printf("%s %.1f ms\n", qPrintable(words[1]),
                            static_cast<double>(timer.nsecsElapsed()) / 1e6);
            } else if (words[0] == QLatin1String("await")) {
                const int id = words[1].toInt();
                if (!test::waitFor([this, id] { return m_received.contains(id); })) {
                    return 2;
                }
                engine->Idle(dbRefreshCache);
                std::printf(
                    "%s\n",
                    qPrintable(database
                                   ->OpenRecordset(
                                       QStringLiteral("select fid from todo where id=%1").arg(id))
                                   ->value(0)
                                   .toText()));
            } else {
                database->Execute(step);
            }
            std::fflush(stdout);
        }
        return 0;
    }

    /// "import DATABASE STATEMENT": changes the library and tells the console.
    int import(const QStringList& arguments)
    {
        const SystemClock clock;
        const auto engine = sqlite::makeEngine(clock);
        engine->OpenDatabase(arguments[0])->Execute(arguments[1]);
        m_control->Send(1048, 0, 0);
        return 0;
    }

    /// "replace DATABASE OTHER": puts another file in the place of the library while the console
    /// has let go of it. 2 when it has not.
    int replace(const QStringList& arguments)
    {
        m_control->Send(1037, 0, m_control->handle());
        if (!m_released) {
            return 2;
        }
        // A file that somebody still holds open keeps its journal beside it.
        if (QFile::exists(arguments[0] + QStringLiteral("-wal"))) {
            return 3;
        }
        if (!QFile::remove(arguments[0]) || !QFile::rename(arguments[1], arguments[0])) {
            return 4;
        }
        m_control->Send(1038, 0, 0);
        return 0;
    }

    /// "take DATABASE ASIDE": takes the library away and tells the console all the same that it may
    /// have it back. "give DATABASE ASIDE" really gives it back.
    int move(const QString& from, const QString& to)
    {
        m_control->Send(1037, 0, m_control->handle());
        const bool moved = m_released && QFile::rename(from, to);
        m_control->Send(1038, 0, 0);
        return moved ? 0 : 2;
    }

    /// "hold": has the console let go of the library and says "released" or "refused", as it is.
    /// Gives it back when a line comes; who is killed before never does.
    int hold()
    {
        m_control->Send(1037, 0, m_control->handle());
        std::puts(m_released ? "released" : "refused");
        std::fflush(stdout);
        if (std::getchar() == EOF) {
            return 2;
        }
        m_control->Send(1038, 0, 0);
        return 0;
    }

private:
    LinuxMessages m_messages;
    std::unique_ptr<KSMessage> m_control;
    bool m_released = false;
    QList<qint32> m_received;
};

} // namespace

int main(int argc, char** argv)
{
    const QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    if (arguments.size() < 4) {
        return 1;
    }
    Program program(arguments[1], arguments[2].toInt());
    const QString& errand = arguments[3];
    const QStringList rest = arguments.mid(4);
    if (errand == QStringLiteral("number")) {
        return program.numbers(rest);
    }
    if (errand == QStringLiteral("player")) {
        return program.player(rest);
    }
    if (errand == QStringLiteral("hold")) {
        return program.hold();
    }
    if (errand == QStringLiteral("take")) {
        return program.move(rest[0], rest[1]);
    }
    if (errand == QStringLiteral("give")) {
        return program.move(rest[1], rest[0]);
    }
    return errand == QStringLiteral("import") ? program.import(rest) : program.replace(rest);
}
