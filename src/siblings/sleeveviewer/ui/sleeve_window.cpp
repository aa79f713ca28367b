#include "siblings/sleeveviewer/ui/sleeve_window.h"

#include "config/config_objects.h"
#include "platform/qt/elided_label.h"
#include "platform/qt/icon_set.h"
#include "platform/qt/panel.h"
#include "siblings/sleeveviewer/sleeve_viewer.h"
#include "siblings/sleeveviewer/ui/sleeve_stage.h"

#include <QAction>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QScreen>
#include <QToolButton>
#include <QVBoxLayout>

#include <algorithm>
#include <array>
#include <cstdlib>

namespace melovane {

using namespace Qt::Literals::StringLiterals;

SleeveWindow::SleeveWindow(SleeveViewer& viewer,
                           const ConfigObjects& texts,
                           const Skin& skin,
                           const IconSet& icons)
    : m_viewer(viewer)
    , m_texts(texts)
    , m_icons(icons)
    , m_stage(new SleeveStage(skin, this))
    , m_bar(new QWidget(this))
    , m_title(new ElidedLabel(m_bar))
    , m_caption(new ElidedLabel(m_bar))
{
    setObjectName(u"SleeveWindow"_s);
    m_stage->setAccessibleName(texts.text(u"viewer.title"));
    m_stage->setFocusPolicy(Qt::StrongFocus);
    m_stage->setFocus();
    buildCommands();
    buildBar();
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    column->addWidget(m_stage, 1);
    column->addWidget(m_bar);
    connect(m_stage, &SleeveStage::clicked, this, [this] { m_viewer.choose(); });
    connect(m_stage, &SleeveStage::stepped, this, [this](int steps) {
        for (; steps > 0; --steps) {
            m_viewer.next();
        }
        for (; steps < 0; ++steps) {
            m_viewer.previous();
        }
    });
    refresh();
}

/// \param name of the text; that of the action, too
QAction* SleeveWindow::addCommand(const QString& name,
                                  const QList<QKeySequence>& keys,
                                  const std::function<void()>& work)
{
    auto* action = new QAction(m_texts.text(name), this);
    action->setObjectName(name);
    action->setShortcuts(keys);
    connect(action, &QAction::triggered, this, work);
    // Of the window, so that they act whoever has the keyboard; on the stage they are its menu.
    addAction(action);
    m_stage->addAction(action);
    return action;
}

void SleeveWindow::buildCommands()
{
    addCommand(u"viewer.next"_s, {Qt::Key_Right, Qt::Key_Down, Qt::Key_PageDown, Qt::Key_Space},
               [this] { m_viewer.next(); });
    addCommand(u"viewer.previous"_s, {Qt::Key_Left, Qt::Key_Up, Qt::Key_PageUp, Qt::Key_Backspace},
               [this] { m_viewer.previous(); });
    addCommand(u"viewer.first"_s, {Qt::Key_Home}, [this] { m_viewer.first(); });
    addCommand(u"viewer.last"_s, {Qt::Key_End}, [this] { m_viewer.last(); });
    addCommand(u"viewer.zoomin"_s, {Qt::Key_Plus, Qt::Key_Equal, QKeySequence::ZoomIn},
               [this] { m_stage->zoom(1); });
    addCommand(u"viewer.zoomout"_s, {Qt::Key_Minus, QKeySequence::ZoomOut},
               [this] { m_stage->zoom(-1); });
    addCommand(u"viewer.fit"_s, {Qt::Key_0}, [this] { m_stage->fit(); });
    addCommand(u"viewer.fullscreen"_s, {Qt::Key_F11}, [this] { toggleFullScreen(); });
    addCommand(u"viewer.choose"_s, {Qt::Key_Return, Qt::Key_Enter}, [this] { m_viewer.choose(); });
    addCommand(u"viewer.close"_s, {Qt::Key_Escape}, [this] { leave(); });
    m_stage->setContextMenuPolicy(Qt::ActionsContextMenu);
}

void SleeveWindow::buildBar()
{
    m_bar->setObjectName(u"Bar"_s);
    m_title->setObjectName(u"lblTitle"_s);
    m_caption->setObjectName(u"lblCaption"_s);
    m_caption->setForegroundRole(QPalette::PlaceholderText);
    auto* row = new QHBoxLayout(m_bar);
    const int gap = fontMetrics().height() / 3;
    row->setContentsMargins(gap * 2, gap, gap, gap);
    row->setSpacing(gap);
    // The window's title says it whole; which picture this is is said here alone.
    m_title->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    row->addWidget(m_title, 1);
    row->addWidget(m_caption);
    addTool(*row, u"viewer.previous"_s, u"back"_s);
    addTool(*row, u"viewer.next"_s, u"forward"_s);
    addTool(*row, u"viewer.zoomout"_s, u"zoom.out"_s);
    addTool(*row, u"viewer.zoomin"_s, u"zoom.in"_s);
    addTool(*row, u"viewer.fit"_s, u"zoom.fit"_s);
    addTool(*row, u"viewer.fullscreen"_s, u"fullscreen"_s);
}

void SleeveWindow::addTool(QHBoxLayout& row, const QString& command, const QString& icon)
{
    auto* action = findChild<QAction*>(command);
    auto* button = new QToolButton(m_bar);
    button->setObjectName(u"tool."_s + command);
    button->setAutoRaise(true);
    button->setFocusPolicy(Qt::TabFocus);
    button->setIcon(m_icons.icon(icon));
    Panel::tellTool(*button, action->text(), action->shortcut().toString(QKeySequence::NativeText),
                    {});
    connect(button, &QToolButton::clicked, action, &QAction::trigger);
    row.addWidget(button);
}

void SleeveWindow::refresh()
{
    m_stage->setImage(m_viewer.image());
    m_stage->setNote(m_viewer.noteTitle(), m_viewer.noteText());
    m_stage->setClickable(m_viewer.canChoose());
    findChild<QAction*>(u"viewer.choose"_s)->setEnabled(m_viewer.canChoose());
    m_title->setText(m_viewer.title());
    m_caption->setText(m_viewer.caption());
    const QString program = m_texts.text(u"viewer.title");
    setWindowTitle(m_viewer.title().isEmpty() ? program : m_viewer.title() + u" - "_s + program);
    const bool hasPicture = !m_viewer.image().isNull();
    enable({u"viewer.next"_s, u"viewer.previous"_s, u"viewer.first"_s, u"viewer.last"_s},
           m_viewer.hasOthers());
    enable({u"viewer.zoomin"_s, u"viewer.zoomout"_s, u"viewer.fit"_s}, hasPicture);
}

/// \param commands with their buttons, where they have one
void SleeveWindow::enable(const QStringList& commands, bool on)
{
    for (const QString& command : commands) {
        findChild<QAction*>(command)->setEnabled(on);
        if (auto* const button = m_bar->findChild<QToolButton*>(u"tool."_s + command)) {
            button->setEnabled(on);
        }
    }
}

QString SleeveWindow::placeText() const
{
    // Before it was maximised, or filled the screen.
    const QRect place = isMaximized() || isFullScreen() ? normalGeometry() : geometry();
    const bool isLarge = isFullScreen() ? m_wasMaximised : isMaximized();
    return u"%1,%2,%3,%4,%5"_s.arg(place.left())
        .arg(place.top())
        .arg(place.width())
        .arg(place.height())
        .arg(isLarge ? 1 : 0);
}

void SleeveWindow::takePlace(const QString& text)
{
    constexpr int kNumbers = 5;
    // The part of a window that must be on a screen for the hand to get hold of it.
    constexpr int kReachable = 100;
    constexpr int kLargest = 32'000;
    std::array<int, kNumbers> numbers{};
    const QStringList parts = text.split(u',');
    for (int i = 0; i < kNumbers; ++i) {
        bool isNumber = parts.size() == kNumbers;
        numbers[size_t(i)] = isNumber ? parts[i].toInt(&isNumber) : 0;
        if (!isNumber || std::abs(numbers[size_t(i)]) > kLargest) {
            return;
        }
    }
    const QRect place(numbers[0], numbers[1], numbers[2], numbers[3]);
    const QRect handle(place.topLeft(), QSize(place.width(), 1));
    const QList<QScreen*> screens = QGuiApplication::screens();
    const bool isReachable =
        std::any_of(screens.begin(), screens.end(), [&](const QScreen* screen) {
            return screen->availableGeometry().intersected(handle).width() >= kReachable;
        });
    if (isReachable && place.height() >= kReachable) {
        setGeometry(place);
        setWindowState(numbers[4] == 1 ? Qt::WindowMaximized : Qt::WindowNoState);
    }
}

void SleeveWindow::toggleFullScreen()
{
    if (isFullScreen()) {
        m_bar->show();
        m_wasMaximised ? showMaximized() : showNormal();
    } else {
        m_wasMaximised = isMaximized();
        m_bar->hide();
        showFullScreen();
    }
}

/// Escape leaves the full screen first.
void SleeveWindow::leave()
{
    if (isFullScreen()) {
        toggleFullScreen();
    } else {
        close();
    }
}

} // namespace melovane
