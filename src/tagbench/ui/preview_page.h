#pragma once

#include "tagbench/bench_look.h"

#include <QWidget>

#include <functional>

class QCheckBox;
class QLabel;
class QLineEdit;
class QPushButton;
class QVBoxLayout;

namespace melovane {

class BenchSession;
class DataGrid;
class IconSet;
class Skin;

/// A page of the bench: what shall be done on the left, what would come of it on the right. What
/// the user changes on the left stands in the tracks at once, as one step that can be taken back.
class PreviewPage : public QWidget
{
    Q_OBJECT

public:
    /// \param name   of the page in the texts
    /// \param ticks  whether rows can be left out one by one
    PreviewPage(const Skin& skin,
                const IconSet& icons,
                BenchSession& session,
                const QString& name,
                bool ticks,
                QWidget* parent);

    /// Where what shall be done is chosen.
    [[nodiscard]] QVBoxLayout* choices() { return m_choices; }

    /// Makes the preview; set once, before the first refresh().
    std::function<Preview()> make;

    /// A line to type in, with a caption above it.
    [[nodiscard]] QLineEdit* addLine(const QString& name, const QString& caption);
    /// \param isPartOfIt whether the preview depends on it
    [[nodiscard]] QCheckBox*
    addBox(const QString& name, const QString& caption, bool ticked, bool isPartOfIt = true);

    /// Buttons that put a text into a line.
    void addSamples(QLineEdit* line, const QStringList& samples);

    /// Ends the left side.
    void finish();

    /// Shows what would come of it now; what is hidden is shown when it comes to the front. While
    /// the preview stands in the tracks it stays as it is.
    void refresh();

    /// The user has changed what shall be done: the preview follows, and the tracks follow it.
    void edited();

    [[nodiscard]] QString title() const;

    /// What the preview comes to, in one sentence.
    [[nodiscard]] const QString& summary() const { return m_rows.preview().summary; }

signals:
    void refreshed();

protected:
    void showEvent(QShowEvent* event) override;

private:
    void take();
    void toggle(qint64 row);
    void follow(const std::function<void()>& preview);
    void showPreview();
    void arrangeColumns();
    void fitChoices();

    const Skin& m_skin;
    const IconSet& m_icons;
    BenchSession& m_session;
    QString m_name;
    PreviewRows m_rows;
    PreviewLook m_look;
    QVBoxLayout* m_choices;
    DataGrid* m_grid = nullptr;
    QWidget* m_right;
    QLabel* m_warning;
    QPushButton* m_take;
    QStringList m_headings; ///< that the grid was made for
    bool m_ticks;
    bool m_isFollowing = false; ///< the tracks are being changed by this page
};

} // namespace melovane
