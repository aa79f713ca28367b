// demotour MUSIC PICTURE [--stay]
//
// Imports a folder of MP3 files with the suite's importer, opens the console on that library, types
// two searches, makes a playlist of the hits, saves it beside the picture, exports it with its
// files, and saves pictures of the windows.

#include "config/program_call.h"
#include "shell/application.h"
#include "shell/ui/console_application.h"
#include "siblings/demotour/ui/tour.h"

#include <QCoreApplication>
#include <QProcess>

#include <cstdio>

namespace {

using namespace Qt::Literals::StringLiterals;

bool import(const QString& music)
{
    QProcess importer;
    importer.setProcessChannelMode(QProcess::ForwardedChannels);
    importer.start(QCoreApplication::applicationDirPath() + u"/mediaintake"_s,
                   {u"1"_s, u"--folder"_s, music, u"--quiet"_s});
    return importer.waitForFinished(-1) && importer.exitStatus() == QProcess::NormalExit &&
           importer.exitCode() == 0;
}

} // namespace

int main(int argc, char** argv)
{
    const QString name = u"demotour"_s;
    const QStringList call = melovane::argumentsOf(argc, argv);
    if (const auto code = melovane::answerCall(name, call)) {
        return *code;
    }
    if (call.size() < 2 || call.size() > 3 || call[0].startsWith(u'-') ||
        (call.size() == 3 && call[2] != "--stay"_L1)) {
        return melovane::refuseCall(name, call.join(u' '));
    }
    // The tour answers the dialogs, so they are those of the tool kit.
    QCoreApplication::setAttribute(Qt::AA_DontUseNativeDialogs);
    melovane::ConsoleApplication application(argc, argv);
    std::puts("Importing the demo library");
    std::fflush(stdout);
    if (!import(call[0])) {
        std::puts("The import failed");
        return 1;
    }
    melovane::Application console(application);
    melovane::Tour tour(call[1], call.size() == 3);
    tour.start();
    const int code = console.run();
    return code != 0 ? code : tour.result();
}
