#pragma once

#include "library/mp3db.h"
#include "library/test_library.h"
#include "library/ui/mp3db_widget.h"
#include "platform/qt/data_grid.h"
#include "platform/qt/icon_set.h"
#include "platform/qt/qt_message_loop.h"
#include "platform/qt/search_line.h"
#include "platform/qt/skin.h"
#include "shell/fakes.h"
#include "shell/mlvdb.h"
#include "shell/ui/mlvdb_window.h"

#include <QApplication>

namespace melovane::test {

/// The main window with its views over a library, as the composition root puts it together; only
/// siblings are not really started.
class Console
{
public:
    explicit Console(TestLibrary& tracks)
        : library(tracks)
    {
        mlvdb.load();
        window.attach(mlvdb);
        window.library().attach(view);
        view.start();
        QObject::connect(&window, &MlvdbWindow::firstShown, &view,
                         [this] { mlvdb.activateFirst(view.librarySize()); });
        QObject::connect(&window, &MlvdbWindow::closing, &view, [this] {
            mlvdb.unload();
            view.end();
        });
    }

    ~Console()
    {
        skin.clear();
        qApp->setStyleSheet({});
    }

    Console(const Console&) = delete;
    Console& operator=(const Console&) = delete;

    /// A control by its name; the test fails loudly when there is none.
    template <typename Control> Control& control(const QString& name)
    {
        auto* found = window.findChild<Control*>(name);
        Q_ASSERT(found);
        return *found;
    }

    DataGrid& grid() { return control<DataGrid>(QStringLiteral("TDBGrid1")); }

    SearchLine& searchLine() { return control<SearchLine>(QStringLiteral("Text1")); }

    TestLibrary& library;
    RecordingProcesses processes;
    QtMessageLoop loop;
    Skin skin{*qApp};
    IconSet icons{skin};
    MlvdbWindow window{skin, icons};
    MLVDB mlvdb{
        *library.settings, library.folders.paths(), library.folders.files(), processes, loop,
        window.controls()};
    ctl_MP3DB view{*library.engine,
                   *library.settings,
                   library.clock,
                   loop,
                   window.library().controls(),
                   [this] { mlvdb.mnuImpMP3(0); }};
};

} // namespace melovane::test
