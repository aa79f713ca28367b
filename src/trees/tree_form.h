#pragma once

#include "platform/controls/tree_control.h"
#include "trees/tree_rows.h"

namespace melovane {

/// The form of the library tree, as its logic sees it: a stack of trees, one for each kind, of
/// which the top one is seen, and the buttons whose picture or presence changes.
class TreeForm
{
public:
    virtual ~TreeForm() = default;

    [[nodiscard]] virtual TreeControl& page(TreeKind kind) = 0;

    /// Brings the tree of a kind to the top and shows its button as the chosen one.
    virtual void bringUp(TreeKind kind) = 0;

    /// Shows or takes away the buttons that make and delete groups.
    virtual void setGroupButtons(bool shown) = 0;

    /// The picture of the fold button: that of folding, or that of unfolding.
    virtual void setFolds(bool folds) = 0;
};

} // namespace melovane
