#include "platform/qt/split_panel.h"

namespace melovane {

namespace {

constexpr int kWhole = 1000;

} // namespace

SplitPanel::SplitPanel(Qt::Orientation orientation, QWidget* parent)
    : QSplitter(orientation, parent)
{
    setHandleWidth(kGap);
    setChildrenCollapsible(true);
    setOpaqueResize(true);
}

int SplitPanel::position() const
{
    const QList<int> areas = sizes();
    const int both = areas.value(0) + areas.value(1);
    return both > 0 ? (areas.value(0) * kWhole + both / 2) / both : 0;
}

void SplitPanel::setPosition(int thousandths)
{
    if (thousandths < 0 || thousandths > kWhole) {
        return;
    }
    const QList<int> areas = sizes();
    const int shown = areas.value(0) + areas.value(1);
    // Before the first layout the areas have no size yet; the proportion is what counts then.
    const int both = shown > 0 ? shown : kWhole;
    const int first = static_cast<int>(qint64{both} * thousandths / kWhole);
    setSizes({first, both - first});
}

} // namespace melovane
