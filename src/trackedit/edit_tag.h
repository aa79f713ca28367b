#pragma once

#include "bus/bus_table.h"
#include "platform/db/data_control.h"
#include "trackedit/covers.h"
#include "trackedit/edit_tag_form.h"
#include "trackedit/ks_edit_fid.h"
#include "trackedit/panel_choices.h"
#include "trackedit/panel_writer.h"

#include <functional>
#include <memory>
#include <span>

namespace melovane {

class ConfigObjects;
class GlobalSettings;
class ListHistory;
class MessageLoop;
class Timer;

/// What the tag panel is made over; all of it outlives the panel.
struct EditTagParts
{
    DBEngine& engine;
    GlobalSettings& settings;
    const ConfigObjects& texts;
    MessageLoop& loop;
    MLVMessageBus& bus;
    ListHistory& history; ///< takes each change as a step
    ErrorSink log = {};
    /// False while the library can only be read.
    std::function<bool()> mayWrite = [] { return true; };
    /// Where a stored file lies now; empty for nowhere.
    std::function<QString(const QString& file)> placeOf = [](const QString& file) { return file; };
    /// Why the changes of a track did not reach its file; empty when nothing is known.
    std::function<QString(const QString& fid)> unwritten = [](const QString&) { return QString(); };
    /// Shows the list of all such files.
    std::function<void()> showUnwritten = [] {};
    /// Runs a command line of the suite.
    std::function<bool(const QString& commandLine)> run = [](const QString&) { return false; };
    /// The cover of a track, sooner or later; only the last question is answered.
    std::function<void(const Covers::Track& track,
                       std::function<void(const QByteArray& picture)> shown)>
        showCover = [](const Covers::Track&, const std::function<void(const QByteArray&)>&) {};
    /// Asks for a new one; what follows goes on beside the window.
    std::function<void(const Covers::Track& track)> chooseCover = [](const Covers::Track&) {};
    /// The panel was closed, or the user has left it: the keyboard belongs to the rows again.
    std::function<void()> left = [] {};
};

/// The panel where the fields of the current track are edited.
///
/// Every change goes straight into the row of the track and enters it for the job that writes tags.
/// Nothing that was typed is lost: it is written before another track is shown, before the library
/// goes away and before the panel closes; what cannot be written stays in the fields, or is kept
/// for its track and written as soon as the library takes it.
class EditTag
{
public:
    EditTag(EditTagParts parts, EditTagForm& form);
    ~EditTag();

    EditTag(const EditTag&) = delete;
    EditTag& operator=(const EditTag&) = delete;

    // -- Operations of the suite --

    /// Shows the panel, or closes it. Shown once more while it is away, it is closed first, so that
    /// it begins anew.
    void ShowTagEdit(bool show);
    /// Colours of the ratings, from the settings.
    void UpdateUserControlSkinColors();

    // -- Which track --

    /// "show.tagedit.mp3db", "show.tagedit.playlist": shows the panel with a track, or closes it
    /// when it shows that track already.
    /// \param edits the user wants to edit: the panel is never closed then, and gets the keyboard
    void showTrack(const QString& fid, bool edits);

    /// Another row is the current one of a view; ignored unless the panel is in use.
    void trackEntered(const QString& fid);

    /// Another program, or another view, may have changed the row.
    void renewTrack();

    [[nodiscard]] const QString& fid() const { return m_fid; }

    /// The panel is in use: while it is not, no message does anything.
    [[nodiscard]] bool isActive() const { return m_isActive; }

    // -- The library --

    /// Another program takes it.
    void leaveLibrary();
    void libraryIsBack();
    /// Reads anew if the library is another file than the one that the track is from.
    void libraryChanged();
    /// The program ends.
    void end();

    // -- What the user does --

    /// Typed in a field. It is written when the hand rests, and when the keyboard leaves the field.
    void typed(PanelField field, const QString& text);
    /// A text was chosen in a list: it is written at once.
    void chosen(PanelField field, const QString& text);

    void fieldEntered(PanelField field) { m_texts.enter(field); }

    void fieldLeft(PanelField field);
    /// Enter: the lists of the catalogue write; the genre does not.
    void enterPressed(PanelField field);
    /// A field gets its former text; one that has it already leaves the panel to the rows.
    void escapePressed(PanelField field);

    /// Escape beside the fields: the keyboard goes back to the rows.
    void leave() { m_parts.left(); }

    /// An option of `opNote`: 0 takes the rating away, 1 is the best.
    void rate(int option);

    /// A click on the cover: another one is asked for. Ignored unless the panel is in use.
    void Mp3Image();
    /// A track has got another cover.
    void coverChanged(const QString& fid);

    /// The mark of a file that was not written: the way to the list of all of them.
    void unwrittenPressed() { m_parts.showUnwritten(); }

    void cmdNewGenre();
    void cmdStart();
    void cmdStop();
    void ButtonShowDir();
    /// The close button.
    void closePressed();

private:
    [[nodiscard]] static std::span<const BusRow<EditTag>> busTable();
    void infoFromFid(const MLVMessage& message);
    void addNewGenre(const MLVMessage& message);
    void refreshByFid(const MLVMessage& message);

    void disconnectDatabase(const MLVMessage&) { leaveLibrary(); }

    void reconnectDatabase(const MLVMessage&) { libraryIsBack(); }

    void changeDatabase(const MLVMessage&) { libraryChanged(); }

    void updateColor(const MLVMessage&) { UpdateUserControlSkinColors(); }

    void close();

    void setFid(const QString& fid);
    void readRow();
    void showRow();
    void showTexts();
    void tellUse();
    [[nodiscard]] QString unwritten() const;
    [[nodiscard]] bool canEdit() const;
    [[nodiscard]] bool hasRow() const;
    [[nodiscard]] Covers::Track coverTrack() const;
    void showCover();
    /// Writes what was typed, and one value besides. False when it could not be written.
    bool commit(std::vector<ColumnValue> values = {});
    void keepForLater();
    void keepHeight();

    EditTagParts m_parts;
    EditTagForm& m_form;
    BusSender m_bus;
    EventGuard m_guard;
    PanelWriter m_writer;
    PanelChoices m_choices;
    DataControl m_data1; ///< `Data1`: the row of the track
    KsEditFid m_record;  ///< what the panel tells of the track beside its fields
    PanelTexts m_texts;
    QString m_fid;
    QString m_shownImage; ///< whose picture was asked for last
    bool m_isActive = false;
    bool m_isAway = false;                 ///< another program has the library
    std::unique_ptr<Timer> m_timerChange;  ///< from the last letter to the writing
    MLVMessageBus::Subscription m_messBus; ///< the last member: nothing arrives without the rest
};

} // namespace melovane
