#pragma once

#include "tagbench/bench_covers.h"

#include <QPixmap>
#include <QWidget>

#include <functional>
#include <vector>

class QDragEnterEvent;
class QDropEvent;
class QLabel;
class QPushButton;
class QToolButton;

namespace melovane {

class BenchSession;
class IconSet;

/// The cover of the chosen tracks, at the top of their common values: how many different ones, what
/// the first looks like, and one picture for all of them.
class CoverRow : public QWidget
{
    Q_OBJECT

public:
    CoverRow(const IconSet& icons, BenchSession& session, QWidget* parent);

    /// Asks for a picture file; empty when none was chosen.
    std::function<QString(const QString& folder)> choosePicture;

    void setChosen(const std::vector<int>& tracks);

signals:
    /// A picture could not be read, in the user's words.
    void failed(const QString& text);

protected:
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dropEvent(QDropEvent* event) override;

private:
    void choose();
    void takeFile(const QString& file);
    void take(const QByteArray& picture, const QDateTime& date);
    void ask();
    void show(const BenchCovers::Shown& shown);
    [[nodiscard]] QString text(const BenchCovers::Shown& shown) const;
    [[nodiscard]] QPixmap stacked(const QPixmap& picture, bool isStack) const;

    const IconSet& m_icons;
    BenchSession& m_session;
    std::vector<int> m_chosen;
    std::vector<QString> m_asked; ///< the covers of the chosen tracks when they were shown last
    QLabel* m_picture;
    QLabel* m_text;
    QLabel* m_size;
    QPushButton* m_choose;
    QPushButton* m_remove;
    QToolButton* m_revert;
};

} // namespace melovane
