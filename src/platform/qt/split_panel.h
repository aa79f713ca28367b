#pragma once

#include "platform/controls/window_frame.h"

#include <QSplitter>

namespace melovane {

/// Two areas with a gap between them that the user drags: `ElasticOne`.
class SplitPanel : public QSplitter, public SplitControl
{
    Q_OBJECT

public:
    /// Width of the gap.
    static constexpr int kGap = 5;

    explicit SplitPanel(Qt::Orientation orientation, QWidget* parent = nullptr);

    [[nodiscard]] int position() const override;

    /// May be called before the panel is shown.
    void setPosition(int thousandths) override;
};

} // namespace melovane
