#pragma once

#include "care/ber_db.h"
#include "platform/qt/dialog_frame.h"

#include <vector>

class QCheckBox;
class QLabel;
class QProgressBar;

namespace melovane {

class IconSet;

/// The dialog `frmBerDB`; made for one showing.
class BerDbDialog : public DialogFrame, public BerDbForm
{
    Q_OBJECT

public:
    BerDbDialog(const ConfigObjects& texts, const IconSet& icons);

    /// \param logic outlives the showing
    void attach(frmBerDB& logic);

    void show(const BerDbView& view) override;
    void close() override;

    /// Escape and the close box do what the button does.
    void reject() override;

private:
    /// A box with what its step does beside it.
    struct Row
    {
        QWidget* line;
        QCheckBox* box;
        QLabel* picture;
        QLabel* note;
    };

    [[nodiscard]] Row makeRow(const ConfigObjects& texts, int index);
    void makeProgress();
    void showRow(const Row& row, const BerDbView::Box& box) const;

    const IconSet& m_icons;
    std::vector<Row> m_rows;
    QLabel* m_step;
    QLabel* m_percent;
    QProgressBar* m_bar;
    QPushButton* m_ok;
    QPushButton* m_cancel;
    frmBerDB* m_logic = nullptr;
};

} // namespace melovane
