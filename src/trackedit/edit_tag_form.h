#pragma once

#include "trackedit/panel_fields.h"

#include <QByteArray>
#include <QString>
#include <QStringList>

#include <vector>

namespace melovane {

struct NoteColours;

/// What the head and the foot of the panel say about its track.
struct PanelTrack
{
    struct Fact
    {
        QString name; ///< of the column, for who looks for the line
        QString caption;
        QString text;

        bool operator==(const Fact&) const = default;
    };

    QString title;
    QString artist;
    QString warning;   ///< what is wrong with the file, in words; empty for nothing
    QString unwritten; ///< why its changes did not reach the file; empty when they did, or may yet
    QString start;     ///< positions and level as texts
    QString stop;
    QString level;
    QString length;          ///< `txtTime`
    std::vector<Fact> facts; ///< file and folder first

    bool operator==(const PanelTrack&) const = default;
};

/// Whether the fields take anything.
enum class PanelUse
{
    Editing,
    Locked, ///< the fields show the track, and a sentence says why they take nothing
    Empty   ///< no track; a sentence says so
};

/// The form of the tag panel, `EditTag1`, as its logic sees it.
class EditTagForm
{
public:
    virtual ~EditTagForm() = default;

    /// The logic is gone: what the user does reaches nobody from now on.
    virtual void detach() = 0;

    /// Brings the panel into the window, or takes it away.
    virtual void setPanelShown(bool shown) = 0;
    [[nodiscard]] virtual bool isPanelShown() const = 0;

    /// In units of the screen.
    [[nodiscard]] virtual int panelHeight() const = 0;
    /// 0 or less is as high as the form needs.
    virtual void setPanelHeight(int height) = 0;

    /// Gives the keyboard to the first field.
    virtual void focusFirst() = 0;

    /// A text that stands there already changes nothing, so that the cursor stays.
    virtual void setText(PanelField field, const QString& text) = 0;
    /// The texts that are offered in a list; what stands in the field stays.
    virtual void setChoices(PanelField field, const QStringList& texts) = 0;
    /// Marks one of the options of `opNote`, 0 to 5.
    virtual void setRating(int option) = 0;
    virtual void setRatingColours(const NoteColours& colours) = 0;
    virtual void setTrack(const PanelTrack& track) = 0;
    /// \param why shown unless the fields can be edited
    virtual void setUse(PanelUse use, const QString& why) = 0;
    /// Tracks whose changes wait to be written to their files; 0 shows nothing.
    virtual void setWaiting(qint64 tracks) = 0;
    /// \param picture a picture file; empty shows the program's own
    virtual void setCover(const QByteArray& picture) = 0;
};

} // namespace melovane
