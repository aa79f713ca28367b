#include "shell/ui/splash_window.h"

#include "platform/qt/dialog_frame.h"
#include "platform/qt/icon_set.h"
#include "platform/qt/skin.h"

#include <QApplication>
#include <QEvent>
#include <QHBoxLayout>
#include <QLabel>
#include <QPainter>
#include <QScreen>
#include <QToolButton>
#include <QVBoxLayout>

namespace melovane {

using namespace Qt::Literals::StringLiterals;

namespace {

/// A plain ground with a thin frame.
class SplashGround : public QWidget
{
public:
    explicit SplashGround(const Skin& skin)
        : QWidget(nullptr, Qt::SplashScreen | Qt::WindowStaysOnTopHint | Qt::FramelessWindowHint)
        , m_skin(skin)
    {
        setObjectName(u"frmStartUpDB"_s);
        setAttribute(Qt::WA_DeleteOnClose);
        // The main window keeps the keyboard.
        setAttribute(Qt::WA_ShowWithoutActivating);
    }

protected:
    void paintEvent(QPaintEvent*) override
    {
        QPainter painter(this);
        painter.setBrush(m_skin.theme().qcolor(ThemeRole::Panel));
        painter.setPen(m_skin.theme().qcolor(ThemeRole::Hairline));
        painter.drawRect(rect().adjusted(0, 0, -1, -1));
    }

private:
    const Skin& m_skin;
};

bool isDialogShown(const QObject* watched, const QEvent& event)
{
    const auto* widget = qobject_cast<const QWidget*>(watched);
    return event.type() == QEvent::Show && widget && widget->windowType() == Qt::Dialog;
}

QToolButton* makeButton(QWidget* parent,
                        const QString& name,
                        const QIcon& icon,
                        const QString& tip,
                        const std::function<void()>& clicked)
{
    auto* button = new QToolButton(parent);
    button->setObjectName(name);
    button->setIcon(icon);
    button->setToolTip(tip);
    button->setAccessibleName(tip);
    button->setAutoRaise(true);
    button->setFocusPolicy(Qt::NoFocus);
    QObject::connect(button, &QToolButton::clicked, parent, clicked);
    return button;
}

QLabel*
makeLabel(QWidget* parent, const QString& name, const QString& text, QPalette::ColorRole role)
{
    auto* label = new QLabel(text, parent);
    label->setObjectName(name);
    label->setTextFormat(Qt::PlainText);
    label->setForegroundRole(role);
    return label;
}

} // namespace

SplashWindow::SplashWindow(const Skin& skin, const IconSet& icons)
    : m_skin(skin)
    , m_icons(icons)
{}

SplashWindow::~SplashWindow()
{
    delete m_window;
}

void SplashWindow::load(const SplashView& view)
{
    unload();
    m_view = view;
    m_window = new SplashGround(m_skin);
    const int line = m_window->fontMetrics().height();
    QToolButton* logo = makeButton(m_window, u"cmdLogo"_s, QIcon(u":/suite/melovane.svg"_s),
                                   view.logoTip, view.logoClicked);
    logo->setIconSize(QSize(line * 4, line * 4));
    logo->setCursor(Qt::PointingHandCursor);
    QToolButton* close = makeButton(m_window, u"cmdClose"_s, m_icons.icon(u"clear"_s),
                                    view.closeTip, view.closeClicked);
    QLabel* product = makeLabel(m_window, u"SkinLabel1"_s, view.product, QPalette::WindowText);
    product->setFont(titleFont(titleFont(m_window->font())));
    QLabel* state = makeLabel(m_window, u"SkinLabel2"_s, view.state, QPalette::PlaceholderText);

    auto* words = new QVBoxLayout;
    words->addStretch();
    words->addWidget(product);
    words->addWidget(state);
    words->addStretch();
    auto* row = new QHBoxLayout(m_window);
    row->setContentsMargins(line * 2, line, line / 2, line);
    row->setSpacing(line);
    row->addWidget(logo);
    row->addLayout(words, 1);
    row->addSpacing(line);
    row->addWidget(close, 0, Qt::AlignTop);

    m_window->resize(m_window->sizeHint());
    const QRect screen = m_window->screen()->geometry();
    m_window->move(screen.center() - m_window->rect().center());
    qApp->installEventFilter(this);
    m_window->show();
}

void SplashWindow::bringToFront()
{
    if (m_window) {
        m_window->raise();
    }
}

void SplashWindow::showAsNormal()
{
    if (m_window) {
        m_window->showNormal();
    }
}

void SplashWindow::unload()
{
    qApp->removeEventFilter(this);
    if (m_window) {
        m_window->close();
    }
}

bool SplashWindow::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::KeyPress || event->type() == QEvent::MouseButtonPress) {
        const auto* widget = qobject_cast<QWidget*>(watched);
        if (widget && widget->window() != m_window) {
            m_view.workedElsewhere();
        }
    }
    if (event->type() == QEvent::ApplicationDeactivate || isDialogShown(watched, *event)) {
        // A question under this window looks like a program that hangs.
        m_view.otherInFront();
    }
    return QObject::eventFilter(watched, event);
}

} // namespace melovane
