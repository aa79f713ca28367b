#pragma once

#include "platform/qt/panel.h"
#include "tagbench/bench_fields.h"

#include <vector>

class QAction;
class QFormLayout;
class QLabel;
class QLineEdit;
class QScrollArea;
class QToolButton;

namespace melovane {

class BenchSession;
class CoverRow;
class IconSet;

/// The values that the chosen tracks have in common. Where they differ the field is empty and says
/// so; what is typed changes all of them.
class CommonForm : public Panel
{
    Q_OBJECT

public:
    CommonForm(const Skin& skin, const IconSet& icons, BenchSession& session, QWidget* parent);

    void setChosen(const std::vector<int>& tracks);

    [[nodiscard]] CoverRow& cover() { return *m_cover; }

    /// Whether the form can be folded in, which it is at first.
    void setFolding(bool on);

    /// Reads the selection lists of genre and the four selection fields. \throws DbError
    void loadChoices();

protected:
    void showEvent(QShowEvent* event) override;

private:
    struct Line
    {
        TrackField field;
        QLabel* label;
        QLineEdit* edit;
        QAction* revert;
    };

    void addField(QFormLayout& rows, const IconSet& icons, TrackField field);
    [[nodiscard]] QWidget* ratingRow();
    void typed(TrackField field, const QString& text);
    void showAll();
    void showLine(const Line& line);
    void fold();

    const Skin& m_skin;
    const IconSet& m_icons;
    BenchSession& m_session;
    std::vector<int> m_chosen;
    std::vector<Line> m_lines;
    QToolButton* m_fold;
    QLabel* m_for;
    CoverRow* m_cover;
    QScrollArea* m_scroll;
};

} // namespace melovane
