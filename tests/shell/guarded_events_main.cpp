#include "platform/db/db_error.h"
#include "shell/ui/console_application.h"

#include <QTimer>

namespace {

using namespace melovane;

/// Fails over each event of a user's own kind, as a slot does that asks a broken database.
class Failing : public QObject
{
public:
    bool event(QEvent* event) override
    {
        if (event->type() == QEvent::User) {
            throw DbError(dberror::kCorrupt, QStringLiteral("broken"));
        }
        return QObject::event(event);
    }
};

} // namespace

/// A console whose handlers fail: an event, a signal's slot, a timer, one inside another. The exit
/// code is the number of failures that its guard has stopped.
int main(int argc, char** argv)
{
    ConsoleApplication application(argc, argv);
    int stopped = 0;
    application.setGuard([&stopped](const std::function<void()>& work) {
        try {
            work();
        } catch (const DbError&) {
            ++stopped;
        }
    });
    Failing receiver;
    QCoreApplication::postEvent(&receiver, new QEvent(QEvent::User));
    QObject::connect(&receiver, &QObject::objectNameChanged, &receiver,
                     [] { throw DbError(dberror::kCorrupt, QStringLiteral("broken")); });
    QTimer::singleShot(0, &receiver, [&receiver] {
        QEvent inner(QEvent::User);
        QCoreApplication::sendEvent(&receiver, &inner);
        receiver.setObjectName(QStringLiteral("renamed"));
    });
    QTimer::singleShot(20, &receiver, [&] {
        application.setGuard({});
        QCoreApplication::exit(stopped);
    });
    return QApplication::exec();
}
