#include "config/program_call.h"
#include "platform/db/db_error.h"
#include "platform/linux/linux_files.h"
#include "platform/sqlite/engine/sqlite_engine.h"
#include "platform/system/clock.h"
#include "store/shipped_database.h"

#include <QCoreApplication>
#include <QTextStream>

using namespace Qt::Literals::StringLiterals;
using namespace melovane;

namespace {

int fail(const QString& what)
{
    QTextStream(stderr) << "makedatabase: " << what << Qt::endl;
    return 1;
}

} // namespace

/// makedatabase SCHEMA_FOLDER TARGET: makes the database that ships with the program.
int main(int argc, char** argv)
{
    const QCoreApplication application(argc, argv);
    const QString name = u"makedatabase"_s;
    const QStringList call = argumentsOf(argc, argv);
    if (const auto code = answerCall(name, call)) {
        return *code;
    }
    if (call.size() != 2 || call[0].startsWith(u'-')) {
        return refuseCall(name, call.join(u' '));
    }
    const SystemClock clock;
    const auto engine = sqlite::makeEngine(clock);
    LinuxFiles files;
    try {
        buildShippedDatabase(*engine, files, call[0], call[1]);
    } catch (const DbError& error) {
        return fail(error.text() + u' ' + error.statement());
    } catch (const IoError& error) {
        return fail(error.path() + u": "_s + error.reason());
    }
    return 0;
}
