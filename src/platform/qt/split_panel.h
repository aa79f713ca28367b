#pragma once

#include <QSplitter>

namespace melovane {

/// Two areas with a gap between them that the user drags: `ElasticOne`.
class SplitPanel : public QSplitter
{
public:
    /// Width of the gap.
    static constexpr int kGap = 5;

    explicit SplitPanel(Qt::Orientation orientation, QWidget* parent = nullptr);

    /// The size of the first area in thousandths of both; 0 when it is folded away.
    [[nodiscard]] int position() const;

    /// Numbers outside 0 to 1000 change nothing. May be called before the panel is shown.
    void setPosition(int thousandths);
};

} // namespace melovane
