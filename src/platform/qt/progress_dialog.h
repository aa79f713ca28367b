#pragma once

#include "platform/controls/progress_window.h"
#include "platform/qt/dialog_frame.h"

#include <QElapsedTimer>

class QLabel;
class QProgressBar;

namespace melovane {

/// The form of a long work: what is done, a bar, and a button that ends it.
class ProgressDialog : public DialogFrame, public ProgressWindow
{
    Q_OBJECT

public:
    /// \param cancel caption of the button
    ProgressDialog(const QString& title, const QString& cancel);

    [[nodiscard]] bool show(const QString& text, qint64 done, qint64 whole) override;

    /// Escape and the close box end the work, too.
    void reject() override;

private:
    QLabel* m_text;
    QProgressBar* m_bar;
    QElapsedTimer m_age;
    bool m_goesOn = true;
};

} // namespace melovane
