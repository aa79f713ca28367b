#pragma once

#include "care/health.h"
#include "platform/qt/dialog_frame.h"

class QLabel;
class QPushButton;
class QTreeWidget;

namespace melovane {

class IconSet;

/// The window "Zustand der Suite": its facts by sections, as they are when it opens or is asked to
/// look again, and as a text for the clipboard.
class HealthDialog : public DialogFrame
{
    Q_OBJECT

public:
    /// \param look makes the report anew
    HealthDialog(const ConfigObjects& texts,
                 const IconSet& icons,
                 std::function<std::vector<HealthSection>()> look);

    /// Shows it until the user closes it.
    void run();

protected:
    void changeEvent(QEvent* event) override;

private:
    void translate();
    void lookAgain();
    void copy();

    const ConfigObjects& m_texts;
    const IconSet& m_icons;
    std::function<std::vector<HealthSection>()> m_look;
    std::vector<HealthSection> m_sections;
    QTreeWidget* m_list;
    QLabel* m_note;
    QPushButton* m_again;
    QPushButton* m_copy;
    QPushButton* m_close;
};

} // namespace melovane
