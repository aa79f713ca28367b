#pragma once

#include "trackedit/edit_tag_form.h"

#include <QWidget>

namespace melovane {

class Skin;

/// What the panel tells of a file: captions and values one behind the other, in as many lines as
/// they need. What is longer than a line is cut in its middle, and its tool tip is the whole.
class FactLines : public QWidget
{
    Q_OBJECT

public:
    explicit FactLines(const Skin& skin, QWidget* parent = nullptr);

    /// \param ownLine this many at the beginning stand in a line of their own
    void setFacts(const std::vector<PanelTrack::Fact>& facts, size_t ownLine);

    [[nodiscard]] bool hasHeightForWidth() const override { return true; }

    [[nodiscard]] int heightForWidth(int width) const override;
    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;

protected:
    bool event(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    struct Place
    {
        QRect caption;
        QRect text;
        QString shown;
    };

    [[nodiscard]] std::vector<Place> places(int width) const;
    [[nodiscard]] int lineHeight() const;

    const Skin& m_skin;
    std::vector<PanelTrack::Fact> m_facts;
    size_t m_ownLine = 0;
};

} // namespace melovane
