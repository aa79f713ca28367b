#pragma once

#include "platform/controls/popup_menu.h"

#include <QPoint>

#include <functional>

namespace melovane {

class IconSet;

/// Pop-up menus of Qt.
class QtPopup : public myPopup
{
public:
    explicit QtPopup(const IconSet& icons);

    /// Where on the screen menus open; at the mouse as long as nothing is set. A menu that a key
    /// has asked for belongs to its row, wherever the mouse is.
    void setPlace(std::function<QPoint()> place) { m_place = std::move(place); }

    void Create() override;
    void Append(const PopupEntry& entry) override;
    [[nodiscard]] int Show() override;

private:
    const IconSet& m_icons;
    std::function<QPoint()> m_place;
    std::vector<PopupEntry> m_entries;
};

} // namespace melovane
