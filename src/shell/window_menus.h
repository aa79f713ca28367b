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

/// Where the keyboard is, or was before a menu took it.
enum class EditPlace
{
    None,
    Library,
    Playlist,
    Text ///< a field that the user types into
};

/// An entry of a submenu that offers values, such as the rating of a track.
struct MenuChoice
{
    QString caption;
    QString tag; ///< what ContextMenu::clicked gets
    bool checked = false;
    QString key = {};    ///< "Ctrl+5", or empty
    QString whyNot = {}; ///< why it is grey; empty when it can work
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

/// Below these stand the commands of `mnuBearbeiten` that fit the view, and submenus: the last one
/// holds what is done to a whole list.
inline constexpr QStringView kRatingMenu = u"mnuRow_Note";
inline constexpr QStringView kPlayActionMenu = u"mnuRow_Aktion";
inline constexpr QStringView kListMenu = u"mnuRow_List";

/// In the playlist view alone: the transition into the next entry is heard on the monitor.
inline constexpr QStringView kRehearsalCommand = u"play.mix";

/// The entry of such a command in the menu of a row.
[[nodiscard]] inline QString rowEntryName(QStringView command)
{
    return QStringLiteral("mnuRow_") + command.toString();
}

/// The menus of the main window, as its logic sees them. Entries go by the names of the controls.
class MenuControl
{
public:
    virtual ~MenuControl() = default;

    virtual void setText(const QString& name, const QString& caption, const QString& toolTip) = 0;
    virtual void setChecked(const QString& name, bool checked) = 0;

    /// \param toolTip why it is grey, when it is
    virtual void setEnabled(const QString& name, bool enabled, const QString& toolTip) = 0;
    virtual void setVisible(const QString& name, bool visible) = 0;
    /// Shows a key that somebody else reacts to, "Ctrl+C"; empty shows none.
    virtual void setKey(const QString& name, const QString& key) = 0;
    /// Fills a submenu of the row menu.
    virtual void setChoices(const QString& menu, const std::vector<MenuChoice>& choices) = 0;

    [[nodiscard]] virtual EditPlace editPlace() const = 0;
    /// For EditPlace::Text: an entry of `mnuBearbeiten` by its name.
    [[nodiscard]] virtual bool canEditText(QStringView name) const = 0;
    virtual void editText(QStringView name) = 0;

    /// The entries `mnuPlugIn`, from index 0 on.
    virtual void setPlugIns(const std::vector<PlugInEntry>& entries) = 0;

    /// Opens `popupDBGRID` at the mouse, or at the current row when the keyboard has asked for it.
    /// Returns at once.
    virtual void showContextMenu(const std::vector<MoreResultEntry>& more) = 0;
};

} // namespace melovane
