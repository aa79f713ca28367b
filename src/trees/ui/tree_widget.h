#pragma once

#include "platform/qt/panel.h"
#include "trees/tree_form.h"

#include <array>

class QButtonGroup;
class QLineEdit;
class QStackedWidget;
class QToolButton;

namespace melovane {

class ConfigObjects;
class IconSet;
class OutlineTree;
class Tree;

/// The form of the library tree: a row of kinds, a filter line with the buttons that concern the
/// rows, and the trees on top of one another.
class TreeWidget : public Panel, public TreeForm
{
    Q_OBJECT

public:
    TreeWidget(const Skin& skin, const IconSet& icons, QWidget* parent = nullptr);

    [[nodiscard]] TreeControl& page(TreeKind kind) override;
    void bringUp(TreeKind kind) override;
    void setGroupButtons(bool shown) override;
    void setFolds(bool folds) override;

    /// Connects the form with its logic, which outlives the last event of the form.
    void attach(Tree& logic, const ConfigObjects& texts);

    /// Everything that stands still speaks the language of the texts as they are now.
    void translate(const ConfigObjects& texts);

    /// Where the last context menu was asked for, on the screen.
    [[nodiscard]] QPoint menuPlace() const { return m_menuPlace; }

    /// The tree that is seen.
    [[nodiscard]] OutlineTree& outline() const;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void buildTrees(const Skin& skin);
    void buildFilter();
    void connectTree(OutlineTree& tree, Tree& logic);
    void createToolBar(Tree& logic, const ConfigObjects& texts);
    QToolButton* addRowButton(const QString& key, const QString& icon);
    void filter(const QString& text, Tree& logic);
    void beginFilter(const QString& text);

    const IconSet& m_icons;
    std::array<OutlineTree*, kTreeKinds> m_trees{};
    QStackedWidget* m_stack;
    QWidget* m_rowTools; ///< filter line and buttons of the rows
    QLineEdit* m_filter;
    QToolButton* m_fold = nullptr;
    QToolButton* m_newGroup = nullptr;
    QToolButton* m_delete = nullptr;
    QButtonGroup* m_kinds;
    QString m_foldTip;
    QString m_openTip;
    QPoint m_menuPlace;
};

} // namespace melovane
