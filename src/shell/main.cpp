#include "shell/application.h"

#include <QApplication>

int main(int argc, char** argv)
{
    QApplication application(argc, argv);
    QApplication::setApplicationName(QStringLiteral("MelovaneDB"));
    QApplication::setApplicationDisplayName(QStringLiteral("Melovane DB"));
    return melovane::Application(application).run();
}
