#pragma once

#include "care/double_look.h"
#include "care/doubles.h"
#include "care/ui/care_window.h"

class QCheckBox;
class QLabel;
class QPushButton;
class QVBoxLayout;

namespace melovane {

class DataGrid;
class IconSet;
class Skin;

/// The window for tracks that are there twice: what is compared, the groups with which of them
/// stays, and merging. Nothing is written before "Zusammenlegen".
class DoublesWindow : public CareWindow
{
    Q_OBJECT

public:
    /// All of it outlives the window.
    DoublesWindow(const Skin& skin,
                  const IconSet& icons,
                  Doubles& doubles,
                  const ConfigObjects& texts,
                  MessageLoop& loop,
                  QWidget* parent = nullptr);
    ~DoublesWindow() override;

    /// Searches what is ticked.
    void search();

private:
    void showState() override;
    void showProgress() override;
    [[nodiscard]] bool endWork() override;
    void buildHead(QVBoxLayout& column, const IconSet& icons);
    void merge();
    void showGroups();
    void choose(qint64 row);
    [[nodiscard]] QString sentence() const;

    Doubles& m_doubles;
    DoubleRows m_rows;
    QLabel* m_sentence;
    QCheckBox* m_sound;
    QCheckBox* m_names;
    QPushButton* m_search;
    DataGrid* m_grid;
    QCheckBox* m_recycle;
    QPushButton* m_merge;
    QString m_outcome; ///< of the last merge
    bool m_hasSearched = false;
};

} // namespace melovane
