#pragma once

#include <QString>

#include <vector>

namespace melovane {

/// One entry of a pop-up menu.
struct PopupEntry
{
    int id = 0;           ///< what the choice of the entry gives; never 0
    QString caption = {}; ///< empty for a separator
    bool enabled = true;
    bool checked = false; ///< has a tick
    QString icon = {};    ///< name of a picture; empty for none
    QString tip = {};     ///< why it is grey
};

/// A pop-up menu of free entries, `myPopup`, which its user makes anew each time.
class myPopup
{
public:
    virtual ~myPopup() = default;

    /// An empty menu.
    virtual void Create() = 0;

    virtual void Append(const PopupEntry& entry) = 0;

    /// A line between the entries before and behind it.
    void AppendSeparator() { Append(PopupEntry()); }

    /// Shows the menu at the mouse and waits; the number of the chosen entry, or 0 when it was left
    /// without a choice. The entries are gone afterwards.
    [[nodiscard]] virtual int Show() = 0;
};

} // namespace melovane
