#pragma once

#include "platform/controls/popup_menu.h"

namespace melovane {

class IconSet;

/// Pop-up menus of Qt.
class QtPopup : public myPopup
{
public:
    explicit QtPopup(const IconSet& icons);

    void Create() override;
    void Append(const PopupEntry& entry) override;
    [[nodiscard]] int Show() override;

private:
    const IconSet& m_icons;
    std::vector<PopupEntry> m_entries;
};

} // namespace melovane
