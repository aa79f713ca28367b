#include "care/ui/care_parts.h"

#include "platform/qt/data_grid.h"
#include "platform/qt/elided_label.h"
#include "platform/qt/grid_header.h"

#include <QProgressBar>
#include <QPushButton>
#include <QTreeWidget>

namespace melovane::careparts {

using namespace Qt::Literals::StringLiterals;

QPushButton* makeButton(const QString& name, const QString& caption, QWidget* parent)
{
    auto* button = new QPushButton(caption, parent);
    button->setObjectName(name);
    return button;
}

QLabel* makeLabel(const QString& name, QWidget* parent, bool isSecond)
{
    auto* label = new ElidedLabel(parent);
    label->setObjectName(name);
    // Names of folders may look like markup.
    label->setTextFormat(Qt::PlainText);
    label->setProperty("second", isSecond);
    return label;
}

QProgressBar* makeProgress(QWidget* parent)
{
    constexpr int kLetters = 24;
    auto* bar = new QProgressBar(parent);
    bar->setObjectName(u"ProgressBar1"_s);
    bar->setTextVisible(false);
    bar->setFixedWidth(parent->fontMetrics().averageCharWidth() * kLetters);
    return bar;
}

DataGrid* makeGrid(const QString& name,
                   const QString& title,
                   const Skin& skin,
                   const IconSet& icons,
                   QWidget* parent)
{
    auto* grid = new DataGrid(skin, icons, parent);
    grid->setObjectName(name);
    grid->setAccessibleName(title);
    grid->setDragEnabled(false);
    grid->setSortButtons(false);
    return grid;
}

void setGridHeads(QTreeWidget& list, const Skin& skin)
{
    auto* heads = new GridHeader(skin, &list);
    list.setHeader(heads);
    heads->setSectionsMovable(false);
    heads->setSectionsClickable(false);
    heads->setStretchLastSection(true);
}

} // namespace melovane::careparts
