#pragma once

#include "platform/qt/panel.h"
#include "tagbench/bench_look.h"

#include <vector>

class QLabel;

namespace melovane {

class BenchSession;
class DataGrid;
class IconSet;
class SearchLine;

/// The tracks of the bench in a grid, with a line that filters them.
class BenchGridPanel : public Panel
{
    Q_OBJECT

public:
    /// All of it outlives the panel.
    BenchGridPanel(const Skin& skin,
                   const IconSet& icons,
                   BenchSession& session,
                   const NoteColours& colours,
                   QWidget* parent);

    /// The selected tracks, in the order of the grid.
    [[nodiscard]] std::vector<int> chosen() const;

    void selectAll();

    void setGenres(const QStringList& genres) { m_editing.setGenres(genres); }

    /// Gives the rows the keyboard.
    void focusRows();

signals:
    void chosenChanged();
    void folderWanted();
    void filesWanted();
    /// Something that the user shall know.
    void told(const QString& text);

private:
    void buildTools(const IconSet& icons);
    void buildPlayer(const IconSet& icons);
    void play(bool fromMiddle);
    void buildGrid();
    void showState();

    BenchSession& m_session;
    BenchLook m_look;
    BenchEditing m_editing;
    DataGrid* m_grid;
    SearchLine* m_filter;
    QLabel* m_count;
    QToolButton* m_undo;
    QToolButton* m_redo;
    std::vector<QToolButton*> m_player;
};

} // namespace melovane
