#include "trees/ui/tree_words.h"

#include "config/config_objects.h"

namespace melovane {

OutlineWords treeWords(const ConfigObjects& texts)
{
    return {texts.text(u"tree.row.level"), texts.text(u"tree.row.open"),
            texts.text(u"tree.row.folded"), texts.text(u"tree.row.ticked"),
            texts.text(u"tree.row.unticked")};
}

} // namespace melovane
