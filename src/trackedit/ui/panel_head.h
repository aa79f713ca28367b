#pragma once

#include "trackedit/edit_tag_form.h"

#include <QString>

class QHBoxLayout;
class QLabel;
class QToolButton;
class QWidget;

namespace melovane {

class ConfigObjects;
class ElidedLabel;
class IconSet;

/// The head of the tag panel: the track, and how it stands with its file. At most one of three is
/// said of that: what is wrong with the file, that it could not be written, how many tracks wait.
class PanelHead
{
public:
    /// Puts its controls behind those of the row. \param panel whose letters they have
    PanelHead(const IconSet& icons, QHBoxLayout& row, const QWidget& panel);

    void setTexts(const ConfigObjects& texts);
    void setTrack(const PanelTrack& track);
    void setWaiting(qint64 tracks);

    /// The way to the list of all files that could not be written.
    [[nodiscard]] QToolButton* unwritten() const { return m_unwritten; }

private:
    void showMark();

    ElidedLabel* m_title;
    ElidedLabel* m_artist;
    QLabel* m_mark;           ///< waiting, or what is wrong with the file
    QToolButton* m_unwritten; ///< in its place, when the file could not be written
    QString m_waitingText;
    QString m_warning;
    qint64 m_waiting = 0;
};

} // namespace melovane
