#pragma once

#include <QString>

#include <span>
#include <vector>

namespace melovane {

class MenuCommands;
struct MoreResultEntry;

/// One entry of the window's menus.
struct MenuRow
{
    enum class Kind
    {
        Menu,   ///< entries follow, one level deeper
        Entry,  ///< does something
        Check,  ///< the same with a tick
        Filled, ///< a menu whose entries are made at run time
        Separator
    };

    int level; ///< 0 stands in the menu bar
    Kind kind;
    QStringView name;     ///< of the control; style sheets and tests find it by this
    QStringView key = {}; ///< of its text in the catalogue; empty: the name
    QStringView icon = {};
    QStringView shortcut = {};
    /// What it does. An entry without one waits for a view that this release does not have yet; it
    /// is shown disabled and says so.
    void (MenuCommands::*action)() = nullptr;

    [[nodiscard]] QString textKey() const { return (key.isEmpty() ? name : key).toString(); }

    [[nodiscard]] bool isLater() const
    {
        return (kind == Kind::Entry || kind == Kind::Check) && action == nullptr;
    }
};

/// A program that the user has added, in the menu `mnuTopPlugin`.
struct PlugInEntry
{
    QString name;
    QString caption;
};

/// One entry of the context menu of the grids, `mnuPOPDBGRID`. 3, 6, 10 and 14 are separators.
struct ContextRow
{
    int index;
    QStringView key; ///< of its text in the catalogue; empty for a separator
    QStringView tag; ///< what it does; empty for the submenu `mnuMoreResult`
    QStringView icon = {};

    [[nodiscard]] bool isSeparator() const { return key.isEmpty(); }

    [[nodiscard]] bool isMoreResult() const { return !isSeparator() && tag.isEmpty(); }
};

[[nodiscard]] std::span<const ContextRow> contextRows();

/// The menus of the main window, as its logic sees them. Entries go by the names of the controls.
class MenuControl
{
public:
    virtual ~MenuControl() = default;

    virtual void setText(const QString& name, const QString& caption, const QString& toolTip) = 0;
    virtual void setChecked(const QString& name, bool checked) = 0;

    /// The entries `mnuPlugIn`, from index 0 on.
    virtual void setPlugIns(const std::vector<PlugInEntry>& entries) = 0;

    /// Opens `popupDBGRID` at the mouse, or at the current row when the keyboard has asked for it.
    /// Returns at once.
    virtual void showContextMenu(const std::vector<MoreResultEntry>& more) = 0;
};

} // namespace melovane
