#pragma once

#include "care/recycler.h"
#include "platform/qt/dialog_frame.h"

class QLabel;
class QProgressBar;
class QTreeWidget;

namespace melovane {

class Skin;

/// The dialog of the recycle folders; made for one showing.
class RecyclerDialog : public DialogFrame, public RecyclerForm
{
    Q_OBJECT

public:
    /// \param skin outlives the dialog
    RecyclerDialog(const ConfigObjects& texts, const Skin& skin);

    /// \param logic outlives the showing
    void attach(Recycler& logic);

    void show(const RecyclerView& view) override;
    void close() override;

    /// Escape and the close box do what the button does.
    void reject() override;

private:
    void makeList(const ConfigObjects& texts);
    void makeProgress();
    void fillList(const std::vector<RecyclerView::Row>& rows);
    void judge();
    [[nodiscard]] std::set<int> chosen() const;

    QTreeWidget* m_list;
    QLabel* m_step;
    QProgressBar* m_bar;
    QPushButton* m_one;
    QPushButton* m_all;
    QPushButton* m_cancel;
    std::vector<RecyclerView::Row> m_rows;
    bool m_isRunning = false;
    Recycler* m_logic = nullptr;
};

} // namespace melovane
