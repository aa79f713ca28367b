#pragma once

#include "platform/sqlite/index/index_figures.h"
#include "shell/application.h"
#include "support/suite_fixture.h"

#include <QApplication>
#include <QLabel>
#include <QLineEdit>
#include <QMainWindow>
#include <QPushButton>
#include <QTest>
#include <QTextEdit>
#include <QTimer>

namespace melovane::test {

/// The whole console, put together by its own composition root, over an installation of its own.
class ApplicationTest : public SuiteFixture
{
protected:
    /// Runs the console until its start ends or its window was closed. Each warning is answered as
    /// a user would and kept; in the open window `inWindow` runs once.
    int run(const std::function<void(QMainWindow&)>& inWindow = {})
    {
        suite.engine->Release(suite.dbName());
        EnvironmentPlaces places = suite.folders.places();
        if (!copyOfFolder.isEmpty()) {
            places.programFolder = copyOfFolder;
        }
        if (withoutRuntimeFolder) {
            places.runtimeBase = QLatin1String("");
            places.temporaryBase = QStringLiteral("/proc");
        }
        Application console(*qApp, places, calledWith);
        running = &console;
        QTimer watcher;
        QObject::connect(&watcher, &QTimer::timeout, qApp, [&] { look(inWindow); });
        watcher.start(std::chrono::milliseconds(10));
        const int code = console.run();
        watcher.stop();
        searches = console.searchFigures();
        running = nullptr;
        return code;
    }

    /// Answers the dialog that is open; false when there is none.
    bool answered()
    {
        QWidget* dialog = QApplication::activeModalWidget();
        if (dialog == nullptr) {
            return false;
        }
        if (dialog->objectName() == QLatin1String("frmKopieFile")) {
            return true; // the test that has opened it acts in it
        }
        if (auto* name = dialog->findChild<QLineEdit*>(QStringLiteral("fileNameEdit"))) {
            name->setText(chosenFile);
            QTest::keyClick(name, Qt::Key_Return);
            return true;
        }
        if (dialog->findChild<QLabel*>(QStringLiteral("SkinLabel1")) == nullptr) {
            return true; // likewise
        }
        warnings.append(dialog->findChild<QLabel*>(QStringLiteral("SkinLabel1"))->text() +
                        QStringLiteral(": ") +
                        dialog->findChild<QTextEdit*>(QStringLiteral("SkinLabel2"))->toPlainText());
        auto* no = dialog->findChild<QPushButton*>(saysYes ? QStringLiteral("cmdJa")
                                                           : QStringLiteral("cmdNein"));
        (no != nullptr ? no : dialog->findChild<QPushButton*>(QStringLiteral("cmdOk")))->click();
        return true;
    }

    void look(const std::function<void(QMainWindow&)>& inWindow)
    {
        if (answered()) {
            return;
        }
        // What the test does in the window may end other windows of the list.
        QMainWindow* window = nullptr;
        for (QWidget* widget : QApplication::topLevelWidgets()) {
            auto* const found = qobject_cast<QMainWindow*>(widget);
            window = found != nullptr && found->isVisible() ? found : window;
        }
        if (window == nullptr) {
            return;
        }
        if (inWindow) {
            inWindow(*window);
        }
        if (closesWindow) {
            window->close();
        }
    }

    /// The start-up window, if it is shown.
    static QWidget* splash()
    {
        for (QWidget* widget : QApplication::topLevelWidgets()) {
            if (widget->objectName() == QLatin1String("frmStartUpDB") && widget->isVisible()) {
                return widget;
            }
        }
        return nullptr;
    }

    /// Makes the shipped English language the chosen one.
    void chooseEnglish(const QByteArray& otherSettings = {})
    {
        QFile shipped(resourceFolder() + QStringLiteral("/languages/lang_English.ini"));
        ASSERT_TRUE(shipped.open(QIODevice::ReadOnly));
        suite.write(QStringLiteral("lang_English.ini"), shipped.readAll());
        suite.write(QStringLiteral("melovane.ini"),
                    otherSettings + "[Value]\nSprach.Datei=lang_English.ini\n");
    }

    Application* running = nullptr;    ///< while the console runs
    QStringList calledWith;            ///< files
    QString copyOfFolder;              ///< of the suite, which runs then in its place
    bool closesWindow = true;          ///< else the test ends the console
    bool withoutRuntimeFolder = false; ///< and with nothing in its place
    bool saysYes = false;              ///< to warnings that ask
    QStringList warnings;
    QString chosenFile;            ///< in the file dialogs
    sqlite::IndexFigures searches; ///< of the last run
};

} // namespace melovane::test
