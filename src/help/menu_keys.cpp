#include "help/menu_keys.h"

namespace melovane {

std::span<const MenuKey> menuKeys()
{
    static constexpr MenuKey kKeys[] = {
        {u"mnuInternet_0", u"F1"},
        {u"mnuQuickOpen", u"Ctrl+K"},
        {u"mnuImpMP3_0", u"Ctrl+I"},
        {u"mnuUndo", u"Ctrl+Z"},
        {u"mnuRedo", u"Ctrl+Shift+Z"},
        {u"mnuCut", u"Ctrl+X"},
        {u"mnuAktivePlaylist", u"Ctrl+Shift+S"},
        {u"mnuExit", u"Ctrl+Q"},
    };
    return kKeys;
}

} // namespace melovane
