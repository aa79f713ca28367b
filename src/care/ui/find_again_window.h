#pragma once

#include "care/find_again.h"
#include "care/found_look.h"
#include "care/ui/care_window.h"

class QCheckBox;
class QLabel;
class QPushButton;
class QVBoxLayout;

namespace melovane {

class DataGrid;
class IconSet;
class Panel;
class Skin;

/// The window that finds missing files again: rules on the left, what each of them does on the
/// right. Nothing is written before "Übernehmen".
class FindAgainWindow : public CareWindow
{
    Q_OBJECT

public:
    /// All of it outlives the window.
    FindAgainWindow(const Skin& skin,
                    const IconSet& icons,
                    FindAgain& find,
                    const ConfigObjects& texts,
                    MessageLoop& loop,
                    QWidget* parent = nullptr);
    ~FindAgainWindow() override;

    /// Asks for a folder; empty when nothing was chosen. The desktop's own dialog unless set.
    std::function<QString(QWidget*)> chooseFolder;
    /// The same for a file.
    std::function<QString(QWidget*)> chooseFile;

    /// Looks up what is missing; says why when that fails.
    void load();

private:
    void showState() override;
    void showProgress() override;
    [[nodiscard]] bool endWork() override;
    void buildHead(QVBoxLayout& column, const IconSet& icons);
    void buildGrids(QVBoxLayout& column, const Skin& skin, const IconSet& icons);
    void connectGrids();
    void apply();
    void showRules();
    void showPreview(qint64 rule);
    void toggleRule(qint64 row);
    void toggleTrack(qint64 row);
    void addRuleByHand();
    void showFile();

    FindAgain& m_find;
    RuleRows m_ruleRows;
    FoundRows m_trackRows;
    QLabel* m_sentence;
    QPushButton* m_search;
    QPushButton* m_byHand;
    QPushButton* m_show;
    QLabel* m_found;
    QLabel* m_previewFolder;
    QLabel* m_previewCount;
    DataGrid* m_rules;
    DataGrid* m_tracks;
    QCheckBox* m_remember;
    QPushButton* m_apply;
    FindAgain::State m_shown = FindAgain::State::Ready;
};

} // namespace melovane
