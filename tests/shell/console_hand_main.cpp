#include "platform/controls/status_line.h"
#include "platform/qt/data_grid.h"
#include "platform/qt/outline_tree.h"
#include "platform/qt/search_line.h"
#include "shell/application.h"
#include "shell/ui/console_application.h"
#include "shell/ui/mlvdb_window.h"
#include "trees/tree_key.h"
#include "trees/ui/tree_widget.h"

#include <QAction>
#include <QHeaderView>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSocketNotifier>
#include <QTest>
#include <QTextEdit>
#include <QTimer>
#include <QToolButton>

#include <sys/prctl.h>
#include <unistd.h>

#include <algorithm>
#include <csignal>
#include <cstdio>
#include <span>

namespace {

using namespace melovane;
using namespace Qt::Literals::StringLiterals;
using namespace std::chrono_literals;

/// The user of a console: looks for its dialogs, and does with keys and mouse what a line of the
/// standard input says. Each line is a JSON array of texts, and is answered with one line.
class Hand
{
public:
    explicit Hand(Application& console)
        : m_console(console)
        , m_input(STDIN_FILENO, QSocketNotifier::Read)
    {
        QObject::connect(&m_input, &QSocketNotifier::activated, qApp, [this] { read(); });
        QObject::connect(&m_watcher, &QTimer::timeout, qApp, [this] { answerDialog(); });
        m_watcher.start(10ms);
    }

private:
    using Words = QStringList;

    void read()
    {
        char bytes[4096];
        const auto size = ::read(STDIN_FILENO, bytes, sizeof bytes);
        if (size <= 0) {
            m_input.setEnabled(false);
            QApplication::quit();
            return;
        }
        m_line.append(bytes, size);
        for (qsizetype end = m_line.indexOf('\n'); end >= 0; end = m_line.indexOf('\n')) {
            Words words;
            for (const QJsonValue& word : QJsonDocument::fromJson(m_line.left(end)).array()) {
                words.append(word.toString());
            }
            m_line.remove(0, end + 1);
            reply(act(words));
        }
    }

    static void reply(const QJsonObject& answer)
    {
        std::puts(QJsonDocument(answer).toJson(QJsonDocument::Compact).constData());
        std::fflush(stdout);
    }

    QJsonObject act(const Words& words)
    {
        struct Action
        {
            QStringView name;
            void (Hand::*work)(const Words& words);
        };

        static constexpr Action kActions[] = {
            {u"search", &Hand::search},   {u"cell", &Hand::cell},
            {u"newlist", &Hand::newList}, {u"newgroup", &Hand::newGroup},
            {u"open", &Hand::open},       {u"append", &Hand::append},
            {u"paste", &Hand::paste},     {u"move", &Hand::move},
            {u"remove", &Hand::remove},   {u"droplist", &Hand::dropList},
            {u"undo", &Hand::step},       {u"redo", &Hand::step},
            {u"rate", &Hand::rate},       {u"toggle", &Hand::toggle},
            {u"sort", &Hand::sort},       {u"reload", &Hand::reload},
            {u"save", &Hand::save},       {u"close", &Hand::close},
            {u"row", &Hand::row},         {u"tool", &Hand::tool},
        };
        m_done = 0;
        const auto* found = std::find_if(std::begin(kActions), std::end(kActions),
                                         [&](const Action& row) { return row.name == words[0]; });
        if (found != std::end(kActions)) {
            // As the program's own message loop runs it.
            m_console.guarded([&] { (this->*found->work)(words); });
        }
        return state();
    }

    // -- What stands on the screen --

    [[nodiscard]] QJsonObject state()
    {
        QJsonObject result;
        result[u"done"_s] = m_done;
        result[u"asked"_s] = QJsonArray::fromStringList(std::exchange(m_asked, {}));
        if (window() == nullptr) {
            return result;
        }
        result[u"search"_s] = searchLine().text();
        result[u"tracks"_s] = library().model()->rowCount();
        result[u"lent"_s] = library().emptyNote().title;
        result[u"status"_s] =
            static_cast<MlvdbWindow*>(window())->status().panel(StatusPanel::Message);
        QJsonArray lists;
        for (int row = 0; row < tree().rowCount(); ++row) {
            const QString key = tree().row(row).key;
            if (const QString id = treekey::playlistId(key); !id.isEmpty()) {
                lists.append(id);
            }
        }
        result[u"lists"_s] = lists;
        result[u"open"_s] = window()->findChild<QLabel*>(u"ListName"_s)->text();
        result[u"marked"_s] = treekey::playlistId(tree().row(tree().currentRow()).key);
        QJsonArray entries;
        DataGrid& list = playlist();
        for (int row = 0; row < list.model()->rowCount(); ++row) {
            entries.append(list.model()->index(row, list.columnOf(u"Titel"_s)).data().toString());
        }
        result[u"entries"_s] = entries;
        result[u"track"_s] = titleOf(library());
        result[u"entry"_s] = titleOf(list);
        result[u"kind"_s] = window()->findChild<TreeWidget*>(u"Tree1"_s)->outline().objectName();
        return result;
    }

    /// Of the current row; empty without one.
    static QString titleOf(const DataGrid& grid)
    {
        const QModelIndex current = grid.currentIndex();
        return current.siblingAtColumn(grid.columnOf(u"Titel"_s)).data().toString();
    }

    static QMainWindow* window()
    {
        for (QWidget* widget : QApplication::topLevelWidgets()) {
            auto* const found = qobject_cast<QMainWindow*>(widget);
            if (found != nullptr && found->isVisible()) {
                return found;
            }
        }
        return nullptr;
    }

    static DataGrid& library() { return *window()->findChild<DataGrid*>(u"TDBGrid1"_s); }

    static DataGrid& playlist() { return *window()->findChild<DataGrid*>(u"PlaylistGrid1"_s); }

    static OutlineTree& tree() { return *window()->findChild<OutlineTree*>(u"PlaylistTree"_s); }

    static SearchLine& searchLine() { return *window()->findChild<SearchLine*>(u"Text1"_s); }

    static void press(const QString& panel, const QString& tool)
    {
        window()->findChild<QWidget*>(panel)->findChild<QToolButton*>(tool)->click();
    }

    // -- What the user does. Rows and columns are taken modulo what there is --

    static bool clickRow(DataGrid& grid, int number, int column)
    {
        const int rows = grid.model()->rowCount();
        if (rows == 0) {
            return false;
        }
        const QModelIndex index = grid.model()->index(number % rows, column);
        grid.scrollTo(index);
        QTest::mouseClick(grid.viewport(), Qt::LeftButton, {}, grid.visualRect(index).center());
        return true;
    }

    static bool selectRows(DataGrid& grid, int number, int count)
    {
        if (!clickRow(grid, number, grid.columnOf(u"Titel"_s))) {
            return false;
        }
        for (int i = 1; i < count; ++i) {
            QTest::keyClick(&grid, Qt::Key_Down, Qt::ShiftModifier);
        }
        return true;
    }

    void search(const Words& words)
    {
        QLineEdit* const line = searchLine().lineEdit();
        line->setFocus();
        line->selectAll();
        QTest::keyClick(line, Qt::Key_Delete);
        QTest::keyClicks(line, words[1]);
    }

    /// "row list N", "row library N"
    void row(const Words& words)
    {
        DataGrid& grid = words[1] == "list"_L1 ? playlist() : library();
        clickRow(grid, words[2].toInt(), grid.columnOf(u"Titel"_s));
    }

    /// "tool PANEL KEY"
    void tool(const Words& words) { press(words[1], words[2]); }

    void cell(const Words& words)
    {
        DataGrid& grid = library();
        const int column = grid.columnOf(words[2]);
        if (!clickRow(grid, words[1].toInt(), column)) {
            return;
        }
        QTest::keyClick(&grid, Qt::Key_Return);
        if (auto* const editor = grid.viewport()->findChild<QLineEdit*>()) {
            editor->selectAll();
            QTest::keyClicks(editor, words[3]);
            QTest::keyClick(editor, Qt::Key_Return);
            m_done = 1;
        }
        if (auto* const refused = grid.viewport()->findChild<QLineEdit*>()) {
            QTest::keyClick(refused, Qt::Key_Escape);
            m_done = 0;
        }
    }

    void typeName(const QString& name)
    {
        if (auto* const editor = tree().viewport()->findChild<QLineEdit*>()) {
            editor->selectAll();
            QTest::keyClicks(editor, name);
            QTest::keyClick(editor, Qt::Key_Return);
            m_done = 1;
        }
    }

    void newList(const Words& words)
    {
        press(u"PlaylistFavorit1"_s, u"all.newdoc"_s);
        typeName(words[1]);
    }

    void newGroup(const Words& words)
    {
        press(u"PlaylistFavorit1"_s, u"all.newdir"_s);
        typeName(words[1]);
    }

    void open(const Words& words)
    {
        OutlineTree& lists = tree();
        if (lists.rowCount() == 0) {
            return;
        }
        const int row = words[1].toInt() % lists.rowCount();
        lists.setFirstVisibleRow(row);
        QTest::mouseClick(lists.viewport(), Qt::LeftButton, {}, lists.placeOf(row).center());
    }

    void append(const Words& words)
    {
        if (selectRows(library(), words[1].toInt(), words[2].toInt())) {
            press(u"ctl_MP3DB1"_s, u"all.db.append"_s);
        }
    }

    /// Copies rows of the list, or of the library, and inserts them in front of a row of the list.
    void paste(const Words& words)
    {
        const bool own = words[1] == "list"_L1;
        if (selectRows(own ? playlist() : library(), words[2].toInt(), words[3].toInt())) {
            press(own ? u"ctl_Playlist1"_s : u"ctl_MP3DB1"_s, u"all.copy"_s);
            clickRow(playlist(), words[4].toInt(), playlist().columnOf(u"Titel"_s));
            press(u"ctl_Playlist1"_s, u"all.clip.insert"_s);
        }
    }

    void move(const Words& words)
    {
        if (selectRows(playlist(), words[1].toInt(), 1)) {
            QTest::keyClick(&playlist(), words[2] == "up"_L1 ? Qt::Key_Up : Qt::Key_Down,
                            Qt::ControlModifier);
        }
    }

    void remove(const Words& words)
    {
        if (selectRows(playlist(), words[1].toInt(), words[2].toInt())) {
            QTest::keyClick(&playlist(), Qt::Key_Delete);
        }
    }

    /// Deletes the open list.
    void dropList(const Words&)
    {
        m_answer = u"cmdJa"_s;
        tree().setFocus();
        QTest::keyClick(&tree(), Qt::Key_Delete);
        m_answer = u"cmdNein"_s;
    }

    /// "undo N", "redo N": so many steps, or as many as there are.
    void step(const Words& words)
    {
        auto* const button = window()
                                 ->findChild<QWidget*>(u"ctl_Playlist1"_s)
                                 ->findChild<QToolButton*>(u"all."_s + words[0]);
        const int count = words[1].toInt();
        while (m_done < count && button->isEnabled() && m_asked.isEmpty()) {
            button->click();
            ++m_done;
        }
    }

    void rate(const Words& words)
    {
        if (selectRows(library(), words[1].toInt(), words[2].toInt())) {
            const auto digit = Qt::Key(Qt::Key_0 + words[3].toInt());
            QTest::keyClick(&library(), digit, Qt::ControlModifier);
        }
    }

    void toggle(const Words& words)
    {
        if (selectRows(library(), words[1].toInt(), words[2].toInt())) {
            QTest::keyClick(&library(), Qt::Key_Delete);
        }
    }

    void sort(const Words& words)
    {
        QHeaderView* const header = library().horizontalHeader();
        const int section = library().columnOf(words[1]);
        library().scrollTo(library().model()->index(0, section));
        const QPoint place(header->sectionViewportPosition(section) +
                               header->sectionSize(section) / 2,
                           header->height() / 2);
        QTest::mouseClick(header->viewport(), Qt::LeftButton, {}, place);
    }

    void reload(const Words&)
    {
        QTest::keyClick(&library(), Qt::Key_F5);
        press(u"PlaylistFavorit1"_s, u"all.refresh"_s);
        press(u"ctl_Playlist1"_s, u"all.refresh"_s);
    }

    void save(const Words& words)
    {
        m_file = words[1];
        window()->findChild<QAction*>(u"mnuAktivePlaylist"_s)->trigger();
    }

    void close(const Words&) { window()->close(); }

    // -- Dialogs --

    void answerDialog()
    {
        QWidget* const dialog = QApplication::activeModalWidget();
        if (dialog == nullptr) {
            return;
        }
        if (auto* const name = dialog->findChild<QLineEdit*>(u"fileNameEdit"_s)) {
            name->setText(m_file);
            QTest::keyClick(name, Qt::Key_Return);
            return;
        }
        if (const auto* const text = dialog->findChild<QTextEdit*>(u"SkinLabel2"_s)) {
            m_asked.append(text->toPlainText());
        }
        for (const QString& key : {m_answer, u"cmdNein"_s, u"cmdOk"_s}) {
            auto* const button = dialog->findChild<QPushButton*>(key);
            if (button != nullptr && button->isVisible()) {
                button->click();
                return;
            }
        }
    }

    Application& m_console;
    QSocketNotifier m_input;
    QTimer m_watcher;
    QByteArray m_line;
    QStringList m_asked; ///< by dialogs, since the last answer
    QString m_answer = u"cmdNein"_s;
    QString m_file; ///< for the file dialog
    int m_done = 0; ///< steps of the present command
};

/// Nobody is left behind by a test that was killed. False when its program has ended before.
bool endWithParent()
{
    const pid_t parent = ::getppid();
    return ::prctl(PR_SET_PDEATHSIG, SIGKILL) == 0 && ::getppid() == parent;
}

} // namespace

/// console_hand FOLDER NAME MACHINE_FILE: the console as main() makes it, in that program folder
/// and under that name.
int main(int argc, char** argv)
{
    if (!endWithParent() || argc < 4) {
        return 2;
    }
    ConsoleApplication application(argc, argv);
    QApplication::setApplicationName(u"MelovaneDB"_s);
    const QStringList arguments = QApplication::arguments();
    EnvironmentPlaces places;
    places.programFolder = arguments[1];
    places.programName = arguments[2];
    places.machineFile = arguments[3];
    Application console(application, places);
    application.setGuard([&console](const auto& work) { console.guarded(work); });
    const Hand hand(console);
    const int code = console.run();
    application.setGuard({});
    return code;
}
