#pragma once

#include "platform/qt/panel.h"

#include <functional>
#include <vector>

class QCheckBox;
class QLabel;
class QStackedWidget;
class QTabBar;

namespace melovane {

class BenchSession;
class IconSet;
class PreviewPage;

/// The ways to change many tracks at once, a page for each.
class BenchPages : public Panel
{
    Q_OBJECT

public:
    /// \param chosen the selected tracks; all are meant when it gives fewer than two
    BenchPages(const Skin& skin,
               const IconSet& icons,
               BenchSession& session,
               std::function<std::vector<int>()> chosen,
               QWidget* parent);

    /// Shows what would come of it now.
    void refresh();

    [[nodiscard]] bool removesEmptyFolders() const;

private:
    [[nodiscard]] PreviewPage* addPage(const QString& name, bool ticks);
    void buildNames();
    void buildRenaming();
    void buildReplacing();
    void buildSpelling();
    [[nodiscard]] std::vector<int> chosenOrAll() const;

    const Skin& m_skin;
    const IconSet& m_icons;
    BenchSession& m_session;
    std::function<std::vector<int>()> m_chosen;
    QTabBar* m_tabs;
    QStackedWidget* m_pages;
    QLabel* m_summary;
    QCheckBox* m_emptyFolders = nullptr;
};

} // namespace melovane
