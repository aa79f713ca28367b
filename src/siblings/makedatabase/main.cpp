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
    const QStringList arguments = QCoreApplication::arguments();
    if (arguments.size() != 3) {
        return fail(u"needs a schema folder and a target file"_s);
    }
    const SystemClock clock;
    const auto engine = sqlite::makeEngine(clock);
    LinuxFiles files;
    try {
        buildShippedDatabase(*engine, files, arguments[1], arguments[2]);
    } catch (const DbError& error) {
        return fail(error.text() + u' ' + error.statement());
    } catch (const IoError& error) {
        return fail(error.path() + u": "_s + error.reason());
    }
    return 0;
}
