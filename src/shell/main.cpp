#include "shell/application.h"

#include <QApplication>

int main(int argc, char** argv)
{
    QApplication application(argc, argv);
    // No display name: it would be appended to every title, and others find the main window by its
    // caption.
    QApplication::setApplicationName(QStringLiteral("MelovaneDB"));
    return melovane::Application(application).run();
}
