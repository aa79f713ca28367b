#include "platform/qt/dialog_frame.h"

#include <QApplication>
#include <QDialogButtonBox>
#include <QPushButton>
#include <QShortcut>
#include <QVBoxLayout>

namespace melovane {

namespace {

/// The window that a dialog belongs to; none while the program starts.
QWidget* owner()
{
    // A splash goes by itself; it must not take the dialog with it.
    QWidget* const active = QApplication::activeWindow();
    if (active != nullptr && active->windowType() != Qt::SplashScreen) {
        return active;
    }
    for (QWidget* window : QApplication::topLevelWidgets()) {
        if (window->isVisible() && window->windowType() == Qt::Window) {
            return window;
        }
    }
    return nullptr;
}

} // namespace

QFont titleFont(const QFont& text)
{
    QFont title = text;
    title.setPointSizeF(text.pointSizeF() * 1.15);
    title.setWeight(QFont::DemiBold);
    return title;
}

DialogFrame::DialogFrame(const QString& name)
    : QDialog(owner())
    , m_column(new QVBoxLayout)
    , m_buttons(new QDialogButtonBox(this))
{
    setObjectName(name);
    setModal(true);
    const int line = fontMetrics().height();
    auto* all = new QVBoxLayout(this);
    all->setContentsMargins(line, line, line, line);
    all->setSpacing(line);
    m_column->setSpacing(line / 2);
    all->addLayout(m_column);
    all->addStretch();
    all->addWidget(m_buttons);
    all->setSizeConstraint(QLayout::SetFixedSize);
}

QPushButton* DialogFrame::addCommand(const QString& name, const QString& caption)
{
    const bool first = m_buttons->buttons().isEmpty();
    // Neither role: both would end the dialog.
    QPushButton* button =
        m_buttons->addButton(caption, first ? QDialogButtonBox::YesRole : QDialogButtonBox::NoRole);
    button->setObjectName(name);
    return button;
}

QPushButton* DialogFrame::addButton(const QString& name, const QString& caption, int result)
{
    const bool first = m_buttons->buttons().isEmpty();
    QPushButton* button = m_buttons->addButton(caption, first ? QDialogButtonBox::AcceptRole
                                                              : QDialogButtonBox::RejectRole);
    button->setObjectName(name);
    connect(button, &QPushButton::clicked, this, [this, result] { done(result); });
    return button;
}

void DialogFrame::setKeys(QPushButton* enter, QPushButton* escape)
{
    enter->setDefault(true);
    auto* key = new QShortcut(Qt::Key_Escape, this);
    connect(key, &QShortcut::activated, escape, &QPushButton::click);
}

int DialogFrame::ask(int left)
{
    // The close box ends a dialog with 0, which no button of the suite means.
    const int result = exec();
    return result == 0 ? left : result;
}

} // namespace melovane
