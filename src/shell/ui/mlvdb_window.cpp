#include "shell/ui/mlvdb_window.h"

#include "library/ui/mp3db_widget.h"
#include "platform/qt/empty_view.h"
#include "platform/qt/icon_set.h"
#include "platform/qt/skin.h"
#include "platform/qt/split_panel.h"
#include "platform/qt/status_bar.h"
#include "shell/mlvdb.h"

#include <QActionGroup>
#include <QCloseEvent>
#include <QMenuBar>
#include <QMessageBox>
#include <QScreen>
#include <QVBoxLayout>

namespace melovane {

using namespace Qt::Literals::StringLiterals;

namespace {

/// Size of the window before it was ever closed; less on a smaller screen.
constexpr QSize kFirstSize{1280, 800};

QAction* addEntry(QMenu* menu, const QString& name, const QIcon& icon, const QString& caption)
{
    QAction* entry = menu->addAction(icon, caption);
    entry->setObjectName(name);
    return entry;
}

} // namespace

MlvdbWindow::MlvdbWindow(Skin& skin, const IconSet& icons)
    : m_skin(skin)
    , m_icons(icons)
{
    setObjectName(u"MLVDB"_s);
    buildPanels();
    const QSize room = screenArea().size();
    resize(kFirstSize.boundedTo(room * 9 / 10));
}

Panel* MlvdbWindow::laterPanel(const QString& name,
                               const QString& icon,
                               const QString& title,
                               const QString& text)
{
    auto* panel = new Panel(m_skin, this);
    panel->setObjectName(name);
    auto* view = new EmptyView(m_icons, icon, panel);
    view->setNote({title, text, {}});
    view->setQuiet();
    panel->setView(view);
    return panel;
}

void MlvdbWindow::buildPanels()
{
    m_library = new Mp3dbWidget(m_skin, m_icons, this);
    auto* tree =
        laterPanel(u"Tree1"_s, u"tree"_s, u"Navigation"_s,
                   u"Ordner, Genres, Interpreten und Favoriten: noch nicht in dieser Fassung."_s);
    auto* lists = laterPanel(u"PlaylistFavorit1"_s, u"lists"_s, u"Listen"_s,
                             u"Playlists und Jingles: noch nicht in dieser Fassung."_s);
    auto* playlist = laterPanel(u"ctl_Playlist1"_s, u"playlist"_s, u"Playlist"_s,
                                u"Die geöffnete Playlist: noch nicht in dieser Fassung."_s);
    auto* frame = new QWidget(this);
    frame->setObjectName(u"Frame"_s);
    m_splits = {new SplitPanel(Qt::Vertical, frame), new SplitPanel(Qt::Horizontal),
                new SplitPanel(Qt::Horizontal)};
    for (size_t index = 0; index < m_splits.size(); ++index) {
        m_splits[index]->setObjectName(u"ElasticOne%1"_s.arg(index + 1));
    }
    m_splits[0]->addWidget(m_splits[1]);
    m_splits[0]->addWidget(m_splits[2]);
    m_splits[1]->addWidget(tree);
    m_splits[1]->addWidget(m_library);
    m_splits[2]->addWidget(lists);
    m_splits[2]->addWidget(playlist);

    m_status = new StatusBar(frame);
    auto* column = new QVBoxLayout(frame);
    column->setContentsMargins(0, SplitPanel::kGap, 0, 0);
    column->setSpacing(SplitPanel::kGap);
    auto* row = new QHBoxLayout;
    row->setContentsMargins(SplitPanel::kGap, 0, SplitPanel::kGap, 0);
    row->addWidget(m_splits[0]);
    column->addLayout(row, 1);
    column->addWidget(m_status);
    setCentralWidget(frame);
}

MlvdbControls MlvdbWindow::controls()
{
    return {*this, *m_status, m_skin, {m_splits[0], m_splits[1], m_splits[2]}};
}

void MlvdbWindow::attach(MLVDB& logic)
{
    buildMenus(logic);
    connect(m_library, &Mp3dbWidget::importWanted, this, [&logic] { logic.mnuImpMP3(0); });
}

void MlvdbWindow::buildMenus(MLVDB& logic)
{
    QMenu* file = menuBar()->addMenu(u"&Datei"_s);
    file->setObjectName(u"mnuDatei"_s);
    const auto import = [&](int index, const QString& icon, const QString& caption) {
        QAction* entry = addEntry(file, u"mnuImpMP3_%1"_s.arg(index), m_icons.icon(icon), caption);
        connect(entry, &QAction::triggered, this, [&logic, index] { logic.mnuImpMP3(index); });
    };
    import(0, u"import"_s, u"Neue MP3s &importieren …"_s);
    import(2, u"reload"_s, u"&Geänderte MP3s neu einlesen …"_s);
    file->addSeparator();
    QAction* exit = addEntry(file, u"mnuExit"_s, m_icons.icon(u"exit"_s), u"&Beenden"_s);
    exit->setShortcut(Qt::CTRL | Qt::Key_Q);
    connect(exit, &QAction::triggered, this, [&logic] { logic.mnuExit(); });

    QMenu* view = menuBar()->addMenu(u"&Ansicht"_s);
    view->setObjectName(u"mnuAnsicht"_s);
    QMenu* skins = view->addMenu(m_icons.icon(u"theme"_s), u"&Farbschema"_s);
    skins->setObjectName(u"mnuSkin"_s);
    connect(skins, &QMenu::aboutToShow, this,
            [this, skins, &logic] { fillSkinMenu(*skins, logic); });

    QMenu* help = menuBar()->addMenu(u"&?"_s);
    help->setObjectName(u"mnuHelp"_s);
    QAction* about = addEntry(help, u"mnuUeber"_s, m_icons.icon(u"info"_s), u"Ü&ber"_s);
    connect(about, &QAction::triggered, this, &MlvdbWindow::showAbout);
}

void MlvdbWindow::fillSkinMenu(QMenu& menu, MLVDB& logic)
{
    menu.clear();
    auto* group = new QActionGroup(&menu);
    const auto add = [&](const QString& title, const QString& fileName, bool active) {
        QAction* entry = menu.addAction(title);
        entry->setObjectName(fileName);
        entry->setCheckable(true);
        entry->setChecked(active);
        group->addAction(entry);
        connect(entry, &QAction::triggered, this,
                [&logic, fileName] { logic.chooseSkin(fileName); });
    };
    for (const SkinEntry& skin : logic.skins()) {
        add(skin.title, skin.fileName, m_skin.isLoaded() && skin.active);
    }
    menu.addSeparator();
    add(u"Wie der Desktop"_s, QString(), !m_skin.isLoaded());
}

void MlvdbWindow::showAbout()
{
    QMessageBox box(QMessageBox::NoIcon, u"Über Melovane DB"_s, MLVDB::aboutText(), QMessageBox::Ok,
                    this);
    box.setObjectName(u"frmInfo"_s);
    box.setTextFormat(Qt::PlainText);
    box.exec();
}

void MlvdbWindow::setCaption(const QString& caption)
{
    setWindowTitle(caption);
}

void MlvdbWindow::setLeastSize(const QSize& size)
{
    setMinimumSize(size);
}

QRect MlvdbWindow::place() const
{
    return isMaximized() || isMinimized() ? normalGeometry() : geometry();
}

void MlvdbWindow::setPlace(const QRect& place)
{
    setGeometry(place);
}

bool MlvdbWindow::isMaximisedNow() const
{
    return isMaximized();
}

void MlvdbWindow::maximise()
{
    setWindowState(windowState() | Qt::WindowMaximized);
}

QRect MlvdbWindow::screenArea() const
{
    return screen()->availableGeometry();
}

void MlvdbWindow::bringToFront()
{
    setWindowState((windowState() & ~Qt::WindowMinimized) | Qt::WindowActive);
    raise();
    activateWindow();
}

void MlvdbWindow::closeWindow()
{
    close();
}

void MlvdbWindow::showEvent(QShowEvent* event)
{
    QMainWindow::showEvent(event);
    if (!m_shown) {
        m_shown = true;
        emit firstShown();
    }
}

void MlvdbWindow::closeEvent(QCloseEvent* event)
{
    emit closing();
    QMainWindow::closeEvent(event);
}

} // namespace melovane
