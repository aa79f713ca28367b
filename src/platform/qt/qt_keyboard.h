#pragma once

#include "platform/system/keyboard.h"

#include <QHash>
#include <QObject>

#include <functional>

class QKeyEvent;
class QWidget;

namespace melovane {

/// The code of the key of an event in the numbering of Keyboard; 0 for a key that has none.
///
/// Digits and signs are told by their place on the keyboard, so that they keep their codes whatever
/// is held down with them; in an event without a place (one that no keyboard made) by what they
/// write.
[[nodiscard]] int keyCodeOf(const QKeyEvent& event);

/// The keyboard as the events of the application tell it.
///
/// Forgets all keys when the application loses the keyboard: their releases never arrive.
class QtKeyboard : public QObject, public Keyboard
{
    Q_OBJECT

public:
    /// Watches all events of the application until it is destroyed.
    QtKeyboard();
    ~QtKeyboard() override;

    [[nodiscard]] bool isDown(int code) const override;

    /// \param window  keys pressed in other windows (dialogs, menus) only change the state
    /// \param handler asked at each press, repeats of a held key included, before a shortcut or the
    ///        control with the focus gets it. True takes the key: nobody else sees it
    void setHandler(QWidget* window, std::function<bool()> handler);

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    /// One press of a key, which arrives several times on its way to a control.
    struct Press
    {
        quint64 place = 0;
        bool asked = false;
        bool taken = false;
    };

    [[nodiscard]] bool isTaken(const QObject* watched, const QKeyEvent& event);
    [[nodiscard]] bool noteDown(const QKeyEvent& event);
    void forgetAll();

    QHash<quint64, int> m_keys; ///< codes by the place of the key; no modifiers
    Qt::KeyboardModifiers m_modifiers;
    Qt::MouseButtons m_buttons;
    QWidget* m_window = nullptr;
    std::function<bool()> m_handler;
    Press m_press;
};

} // namespace melovane
