// demotour MUSIC PICTURE [--stay]
//
// Imports a folder of MP3 files with the suite's importer, opens the console on that library, types
// two searches, makes a playlist of the hits, saves it beside the picture, exports it with its
// files, and saves pictures of the windows.

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
    // The tour answers the dialogs, so they are those of the tool kit.
    QCoreApplication::setAttribute(Qt::AA_DontUseNativeDialogs);
    melovane::ConsoleApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    if (arguments.size() < 3) {
        std::fputs("demotour MUSIC PICTURE [--stay]\n", stderr);
        return 2;
    }
    std::puts("Importing the demo library");
    std::fflush(stdout);
    if (!import(arguments[1])) {
        std::puts("The import failed");
        return 1;
    }
    melovane::Application console(application);
    melovane::Tour tour(arguments[2], arguments.contains(u"--stay"_s));
    tour.start();
    const int code = console.run();
    return code != 0 ? code : tour.result();
}
