#include "shell/ui/mlvdb_window.h"

#include "config/config_objects.h"
#include "library/ui/mp3db_widget.h"
#include "platform/qt/icon_set.h"
#include "platform/qt/monitor_bars.h"
#include "platform/qt/skin.h"
#include "platform/qt/split_panel.h"
#include "platform/qt/status_bar.h"
#include "playlistview/ui/playlist_widget.h"
#include "shell/mlvdb.h"
#include "shell/ui/hint_line.h"
#include "shell/ui/window_menu_bar.h"
#include "trackedit/ui/edit_tag_widget.h"
#include "trees/ui/playlist_favorit_widget.h"
#include "trees/ui/tree_widget.h"

#include <QCloseEvent>
#include <QGuiApplication>
#include <QLineEdit>
#include <QMenu>
#include <QScreen>
#include <QTimer>
#include <QVBoxLayout>

#include <algorithm>
#include <chrono>

namespace melovane {

using namespace Qt::Literals::StringLiterals;

namespace {

/// Size of the window before it was ever closed; less on a smaller screen.
constexpr QSize kFirstSize{1280, 800};

/// How often and how long after one another it is looked whether a frame stands where it shall.
/// Half a second is more than a window manager takes and less than a hand needs to move the
/// window.
constexpr int kFrameLooks = 5;
constexpr std::chrono::milliseconds kFrameWait{100};

/// An entry of a menu of files, one of which is chosen.
QAction* addChoice(QMenu& menu, const QString& title, const QString& fileName, bool active)
{
    QAction* entry = menu.addAction(title);
    entry->setObjectName(fileName);
    entry->setCheckable(true);
    entry->setChecked(active);
    return entry;
}

} // namespace

MlvdbWindow::MlvdbWindow(Skin& skin, const IconSet& icons)
    : m_skin(skin)
    , m_icons(icons)
{
    setObjectName(u"MLVDB"_s);
    buildPanels();
    m_menus = new WindowMenuBar(*this, icons);
    m_menus->setContextPlace([this] {
        const bool inList = focusWidget() && m_playlist->isAncestorOf(focusWidget());
        return inList ? m_playlist->contextPlace() : m_library->contextPlace();
    });
    m_menus->setEditPlace([this](QWidget* control) {
        if (WindowMenuBar::textFieldOf(control) != nullptr) {
            return EditPlace::Text;
        }
        if (m_library->isAncestorOf(control)) {
            return EditPlace::Library;
        }
        return m_playlist->isAncestorOf(control) ? EditPlace::Playlist : EditPlace::None;
    });
    const QSize room = MlvdbWindow::screenArea().size();
    resize(kFirstSize.boundedTo(room * 9 / 10));
}

void MlvdbWindow::buildPanels()
{
    m_library = new Mp3dbWidget(m_skin, m_icons, this);
    m_tree = new TreeWidget(m_skin, m_icons, this);
    m_lists = new PlaylistFavoritWidget(m_skin, m_icons, this);
    m_playlist = new PlaylistWidget(m_skin, m_icons, this);
    auto* frame = new QWidget(this);
    frame->setObjectName(u"Frame"_s);
    m_splits = {new SplitPanel(Qt::Vertical, frame), new SplitPanel(Qt::Horizontal),
                new SplitPanel(Qt::Horizontal)};
    for (size_t index = 0; index < m_splits.size(); ++index) {
        m_splits[index]->setObjectName(u"ElasticOne%1"_s.arg(index + 1));
    }
    m_splits[0]->addWidget(m_splits[1]);
    m_splits[0]->addWidget(m_splits[2]);
    m_splits[1]->addWidget(m_tree);
    m_splits[1]->addWidget(buildLibraryArea());
    m_splits[2]->addWidget(m_lists);
    m_splits[2]->addWidget(m_playlist);

    m_hints = new HintLine(m_icons, frame);
    m_status = new StatusBar(frame);
    m_monitor = new MonitorBars(m_skin, m_icons, *m_status);
    auto* column = new QVBoxLayout(frame);
    column->setContentsMargins(0, SplitPanel::kGap, 0, 0);
    column->setSpacing(SplitPanel::kGap);
    auto* row = new QHBoxLayout;
    row->setContentsMargins(SplitPanel::kGap, 0, SplitPanel::kGap, 0);
    row->addWidget(m_splits[0]);
    column->addWidget(m_hints);
    column->addLayout(row, 1);
    column->addWidget(m_status);
    setCentralWidget(frame);
}

QWidget* MlvdbWindow::buildLibraryArea()
{
    m_tags = new EditTagWidget(m_skin, m_icons, this);
    auto* area = new SplitPanel(Qt::Vertical);
    area->setObjectName(u"TagSplit"_s);
    area->addWidget(m_library);
    area->addWidget(m_tags);
    area->setStretchFactor(0, 1);
    area->setStretchFactor(1, 0);
    area->setChildrenCollapsible(false);
    connect(m_tags, &EditTagWidget::heightWanted, area, [area](int height) {
        // A few rows of the library stay on the screen, or the panel has nothing to follow.
        const int most = area->height() * 2 / 3;
        const int panel = std::min(height, most);
        area->setSizes({area->height() - panel, panel});
    });
    return area;
}

MlvdbControls MlvdbWindow::controls()
{
    return {*this, *m_status, m_skin, *m_menus, {m_splits[0], m_splits[1], m_splits[2]}};
}

StatusLine& MlvdbWindow::status()
{
    return *m_status;
}

void MlvdbWindow::attach(MLVDB& logic, const ConfigObjects& texts)
{
    m_menus->attach(logic);
    translate(texts);
    QMenu* skins = m_menus->filledMenu(u"mnuSkin"_s);
    connect(skins, &QMenu::aboutToShow, this,
            [this, skins, &logic, &texts] { fillSkinMenu(*skins, logic, texts); });
    QMenu* languages = m_menus->filledMenu(u"mnuSprache"_s);
    connect(languages, &QMenu::aboutToShow, this,
            [this, languages, &logic] { fillLanguageMenu(*languages, logic); });
    connect(m_library, &Mp3dbWidget::importWanted, this,
            [&logic] { logic.siblings().importMusic(); });
}

void MlvdbWindow::translate(const ConfigObjects& texts)
{
    m_hints->translate(texts);
    m_monitor->setTexts({.seekName = texts.text(u"monitor.seek.name"_s),
                         .seekTip = texts.text(u"monitor.seek.tip"_s),
                         .volumeName = texts.text(u"playlist.volume"_s),
                         .volumeTip = texts.text(u"monitor.volume.tip"_s)});
}

void MlvdbWindow::fillSkinMenu(QMenu& menu, MLVDB& logic, const ConfigObjects& texts)
{
    menu.clear();
    const auto add = [&](const QString& title, const QString& fileName, bool active) {
        connect(addChoice(menu, title, fileName, active), &QAction::triggered, this,
                [&logic, fileName] { logic.chooseSkin(fileName); });
    };
    for (const SkinEntry& skin : logic.skins()) {
        add(skin.title, skin.fileName, m_skin.isLoaded() && skin.active);
    }
    menu.addSeparator();
    add(texts.text(u"skin.desktop"_s), QString(), !m_skin.isLoaded());
}

void MlvdbWindow::fillLanguageMenu(QMenu& menu, MLVDB& logic)
{
    menu.clear();
    for (const LanguageEntry& language : logic.languages()) {
        connect(addChoice(menu, language.title, language.fileName, language.active),
                &QAction::triggered, this,
                [&logic, name = language.fileName] { logic.chooseLanguage(name); });
    }
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
    m_looks = 0;
    setGeometry(place);
}

void MlvdbWindow::setOuterPlace(const QRect& place)
{
    m_outer = place;
    m_looks = kFrameLooks;
    fitFrame();
}

/// A window that comes out of the maximised state gets its frame from the window manager some
/// turns later, which no event tells, and is put into its place once more then.
void MlvdbWindow::fitFrame()
{
    if (m_looks == 0) {
        return;
    }
    --m_looks;
    const QRect outer = frameGeometry();
    const QRect inner = geometry();
    if (outer != m_outer) {
        setGeometry(m_outer.adjusted(inner.left() - outer.left(), inner.top() - outer.top(),
                                     inner.right() - outer.right(),
                                     inner.bottom() - outer.bottom()));
    }
    QTimer::singleShot(kFrameWait, this, &MlvdbWindow::fitFrame);
}

bool MlvdbWindow::isMaximisedNow() const
{
    return isMaximized();
}

void MlvdbWindow::maximise()
{
    setWindowState(windowState() | Qt::WindowMaximized);
}

void MlvdbWindow::setNormal()
{
    setWindowState(windowState() & ~(Qt::WindowMaximized | Qt::WindowMinimized));
}

int MlvdbWindow::windowHandle32() const
{
    return static_cast<int>(winId());
}

QRect MlvdbWindow::screenArea() const
{
    return screen()->availableGeometry();
}

QRect MlvdbWindow::screenOf(const QRect& place) const
{
    const QScreen* best = screen();
    int most = 0;
    for (const QScreen* candidate : QGuiApplication::screens()) {
        const QRect common = candidate->geometry().intersected(place);
        if (common.width() * common.height() > most) {
            most = common.width() * common.height();
            best = candidate;
        }
    }
    return best->geometry();
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
