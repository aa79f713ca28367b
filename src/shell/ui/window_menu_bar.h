#pragma once

#include "shell/window_menus.h"

#include <QObject>
#include <QPointer>

#include <functional>

class QAction;
class QLineEdit;
class QMainWindow;
class QMenu;
class QPoint;

namespace melovane {

class IconSet;
class MLVDB;

/// The menu bar of the main window and the context menu of its grids.
///
/// Captions come later, by the names of the entries; each gets an accelerator of its own.
class WindowMenuBar : public QObject, public MenuControl
{
    Q_OBJECT

public:
    WindowMenuBar(QMainWindow& window, const IconSet& icons);

    /// Connects the entries with the logic, which outlives the last click.
    void attach(MLVDB& logic);

    /// \param place where a context menu that the keyboard or mouse has asked for is to open
    void setContextPlace(std::function<QPoint()> place) { m_contextPlace = std::move(place); }

    /// \param place what the control with the keyboard belongs to; asked for the last one that was
    ///        none of the menu bar's, and never for null
    void setEditPlace(std::function<EditPlace(QWidget* control)> place)
    {
        m_editPlace = std::move(place);
    }

    /// A menu whose entries are made at run time, such as `mnuSkin`.
    [[nodiscard]] QMenu* filledMenu(const QString& name) const;

    void setText(const QString& name, const QString& caption, const QString& toolTip) override;
    void setChecked(const QString& name, bool checked) override;
    void setEnabled(const QString& name, bool enabled, const QString& toolTip) override;
    void setVisible(const QString& name, bool visible) override;
    void setKey(const QString& name, const QString& key) override;
    void setChoices(const QString& menu, const std::vector<MenuChoice>& choices) override;
    [[nodiscard]] EditPlace editPlace() const override;
    [[nodiscard]] bool canEditText(QStringView name) const override;
    void editText(QStringView name) override;
    void setPlugIns(const std::vector<PlugInEntry>& entries) override;
    void showContextMenu(const std::vector<MoreResultEntry>& more) override;

    /// The line that takes what is typed into a control; null for a control without one.
    [[nodiscard]] static QLineEdit* textFieldOf(QWidget* control);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void buildBar();
    void buildContextMenu();
    void buildEditRows();
    void buildKeys();
    void noteFocus(QWidget* control);
    void giveKeyboardBack();
    void addRow(QMenu* parent, const MenuRow& row);
    QMenu* addMenu(QMenu* parent, const QString& name);
    void fillMoreResult(const std::vector<MoreResultEntry>& entries);
    [[nodiscard]] QAction* find(const QString& name) const;

    QMainWindow& m_window;
    const IconSet& m_icons;
    MLVDB* m_logic = nullptr; ///< null before attach()
    QMenu* m_plugIns = nullptr;
    QMenu* m_context = nullptr; ///< `popupDBGRID`
    QMenu* m_moreResult = nullptr;
    std::function<QPoint()> m_contextPlace;
    std::function<EditPlace(QWidget* control)> m_editPlace;
    QPointer<QWidget> m_focus; ///< the last control of the window with the keyboard, but the bar
};

/// The caption with an accelerator before the first letter whose upper case form is not in `used`,
/// which then holds it, too. A caption that has one keeps it.
[[nodiscard]] QString withAccelerator(const QString& caption, QString& used);

} // namespace melovane
