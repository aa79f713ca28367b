#include "platform/qt/search_line.h"

#include "platform/qt/icon_set.h"

#include <QAction>
#include <QKeyEvent>
#include <QLineEdit>

namespace melovane {

SearchLine::SearchLine(const IconSet& icons, QWidget* parent)
    : QComboBox(parent)
{
    setEditable(true);
    setInsertPolicy(NoInsert);
    // A completer would write letters that nobody has typed.
    setCompleter(nullptr);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    setMinimumContentsLength(12);
    lineEdit()->addAction(icons.icon(QStringLiteral("search"), ThemeRole::TextSecond),
                          QLineEdit::LeadingPosition);
    m_clear = lineEdit()->addAction(icons.icon(QStringLiteral("clear"), ThemeRole::TextSecond),
                                    QLineEdit::TrailingPosition);
    m_clear->setObjectName(QStringLiteral("clear"));
    m_clear->setVisible(false);
    connect(m_clear, &QAction::triggered, lineEdit(), &QLineEdit::clear);
    connect(this, &QComboBox::editTextChanged, this, [this](const QString& now) {
        m_clear->setVisible(!now.isEmpty());
        emit textChanged(now);
    });
    // At the end of typing the box takes a text that stands in its list for a choice from it.
    disconnect(lineEdit(), &QLineEdit::editingFinished, this, nullptr);
    connect(this, &QComboBox::activated, this, [this] { emit entered(text()); });
}

void SearchLine::setClearTip(const QString& tip)
{
    m_clear->setToolTip(tip);
}

QString SearchLine::text() const
{
    return currentText();
}

void SearchLine::setText(const QString& text)
{
    setEditText(text);
}

QStringList SearchLine::list() const
{
    QStringList texts;
    for (int index = 0; index < count(); ++index) {
        texts.append(itemText(index));
    }
    return texts;
}

void SearchLine::setList(const QStringList& texts)
{
    // An entry that becomes the current one would count as typed.
    const QSignalBlocker quiet(this);
    const QString typed = text();
    clear();
    addItems(texts);
    setCurrentIndex(-1);
    setEditText(typed);
}

void SearchLine::focus()
{
    setFocus(Qt::ShortcutFocusReason);
    lineEdit()->selectAll();
}

void SearchLine::keyPressEvent(QKeyEvent* event)
{
    const bool plain = (event->modifiers() & ~Qt::KeypadModifier) == Qt::NoModifier;
    if (plain && event->key() == Qt::Key_Down) {
        emit downPressed();
    } else if (plain && (event->key() == Qt::Key_Up || event->key() == Qt::Key_PageUp ||
                         event->key() == Qt::Key_PageDown)) {
        event->accept(); // would put another entry of the list in the place of what is typed
    } else if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) {
        emit entered(text());
    } else {
        QComboBox::keyPressEvent(event);
    }
}

void SearchLine::wheelEvent(QWheelEvent* event)
{
    // Turning the wheel over a combo box would choose another text.
    event->ignore();
}

} // namespace melovane
