// Several processes write to one database at once for a while; afterwards every confirmed row must
// be there and nobody may have met a locked database.
//
//   write_storm [processes = 2] [seconds = 30]

#include "platform/db/database.h"
#include "platform/db/db_error.h"
#include "platform/db/sql_text.h"
#include "platform/linux/linux_files.h"
#include "platform/sqlite/engine/sqlite_engine.h"
#include "platform/system/clock.h"
#include "store/shipped_database.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>

#include <cstdio>
#include <memory>
#include <vector>

namespace {

using namespace Qt::Literals::StringLiterals;
using namespace melovane;

/// Adds tracks one by one and changes a row that all writers share; prints the rows confirmed.
int write(const QString& file, int writer, int seconds)
{
    SystemClock clock;
    const auto engine = sqlite::makeEngine(clock);
    int confirmed = 0;
    QElapsedTimer timer;
    timer.start();
    while (timer.elapsed() < qint64{seconds} * 1000) {
        try {
            const auto database = engine->OpenDatabase(file);
            const auto rows = database->OpenRecordset(u"select * from db_all where fid=''"_s);
            rows->AddNew();
            rows->setValue(u"FID",
                           QString::number(700'000'000'000LL + writer * 10'000'000LL + confirmed));
            rows->setValue(u"Titel", u"Writer %1's row %2"_s.arg(writer).arg(confirmed));
            rows->Update();
            ++confirmed;
            database->Execute(u"update pl_name set anzahl=anzahl+1 where nid=1"_s);
        } catch (const DbError& error) {
            std::fprintf(stderr, "writer %d: %d %s\n", writer, error.number(), error.what());
            std::printf("%d\n", confirmed);
            return 1;
        }
    }
    std::printf("%d\n", confirmed);
    return 0;
}

int storm(int processes, int seconds)
{
    const QTemporaryDir folder;
    const QString file = folder.filePath(u"storm.mdb"_s);
    LinuxFiles files;
    SystemClock clock;
    const auto engine = sqlite::makeEngine(clock);
    buildShippedDatabase(*engine, files, QStringLiteral(MLV_SCHEMA_FOLDER), file);
    engine->OpenDatabase(file)->Execute(
        u"insert into pl_name (nid,grid,name,sid,anzahl) values (1,1,'Storm',1,0)"_s);

    std::vector<std::unique_ptr<QProcess>> writers;
    for (int writer = 0; writer < processes; ++writer) {
        auto process = std::make_unique<QProcess>();
        process->setProcessChannelMode(QProcess::ForwardedErrorChannel);
        process->start(QCoreApplication::applicationFilePath(),
                       {u"--writer"_s, file, QString::number(writer), QString::number(seconds)});
        writers.push_back(std::move(process));
    }
    int confirmed = 0;
    bool failed = false;
    for (const auto& process : writers) {
        process->waitForFinished(-1);
        failed |= process->exitStatus() != QProcess::NormalExit || process->exitCode() != 0;
        confirmed += process->readAllStandardOutput().trimmed().toInt();
    }
    const auto database = engine->OpenDatabase(file);
    const int found =
        database->OpenRecordset(u"select count(*) as anz from db_all"_s)->value(0).toLong();
    const int counted =
        database->OpenRecordset(u"select anzahl from pl_name where nid=1"_s)->value(0).toLong();
    std::printf("%d processes, %d s: %d rows confirmed, %d found, shared counter %d, %s\n",
                processes, seconds, confirmed, found, counted,
                failed ? "a writer FAILED" : "no writer met an error");
    return failed || found != confirmed || counted != confirmed ? 1 : 0;
}

} // namespace

int main(int argc, char** argv)
{
    QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    if (arguments.value(1) == "--writer"_L1) {
        return write(arguments.value(2), arguments.value(3).toInt(), arguments.value(4).toInt());
    }
    return storm(arguments.value(1, u"2"_s).toInt(), arguments.value(2, u"30"_s).toInt());
}
