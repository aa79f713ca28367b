#pragma once

#include "platform/controls/grid_source.h"
#include "tagbench/bench_fields.h"

#include <QString>
#include <QStringList>

#include <array>
#include <functional>
#include <optional>
#include <vector>

namespace melovane {

/// One track on the bench: what is stored of it, and what it is to become.
struct BenchTrack
{
    using Texts = std::array<QString, kBenchSlots>;

    QString fid;    ///< empty: a file that the library does not know yet
    QString folder; ///< as it is stored, with its separator
    Texts stored;   ///< by benchSlot(); null reads as empty
    Texts now;

    [[nodiscard]] bool isChanged() const { return stored != now; }

    /// True when something else than the place of the file is to be written.
    [[nodiscard]] bool isChangedInTag() const;

    /// The full name of the file, as it is stored and as it is to become.
    [[nodiscard]] const QString& storedPlace() const { return stored.back(); }

    [[nodiscard]] const QString& place() const { return now.back(); }

    /// place() below the present folder; without any folder where it lies elsewhere.
    [[nodiscard]] QString shownPlace() const;
};

/// A field of a track that gets another text.
struct BenchCell
{
    int track = 0;
    TrackField field = TrackField::Titel;
    QString text;
};

/// The tracks of the tag tool with everything that was changed and is not yet applied. Each change
/// is a step that can be taken back. Nothing here reads or writes a file or a database.
///
/// As a source of rows it shows the tracks that the filter lets through: `track(row)` tells which.
/// Columns are the names of benchFields(), then Image, DName (shownPlace()) and FID.
class BenchTracks : public GridSource
{
    Q_OBJECT

public:
    explicit BenchTracks(QObject* parent = nullptr);

    /// Begins with these tracks, nothing changed, nothing filtered.
    void setTracks(std::vector<BenchTrack> tracks);
    /// The same with more tracks behind the present ones, whose changes stay.
    void addTracks(std::vector<BenchTrack> tracks);

    [[nodiscard]] int count() const { return int(m_tracks.size()); }

    [[nodiscard]] const BenchTrack& at(int track) const { return m_tracks[size_t(track)]; }

    [[nodiscard]] const QString& text(int track, TrackField field) const;
    [[nodiscard]] const QString& storedText(int track, TrackField field) const;

    [[nodiscard]] bool isChanged(int track, TrackField field) const
    {
        return text(track, field) != storedText(track, field);
    }

    /// The one text that all these tracks have in a field; nothing where they differ, and for none.
    [[nodiscard]] std::optional<QString> common(const std::vector<int>& tracks,
                                                TrackField field) const;

    /// Cells that differ from what is stored, and tracks with such cells.
    [[nodiscard]] int changedCells() const { return m_changedCells; }

    [[nodiscard]] int changedTracks() const;

    // -- Changes, each one step --

    /// Texts go through benchText(); cells whose text it refuses stay. False when nothing changed.
    bool change(const std::vector<BenchCell>& cells);

    /// Typing: while the same field of the same tracks goes on being changed it is one step.
    bool type(const std::vector<int>& tracks, TrackField field, const QString& text);

    /// A preview that stands in the tracks while its owner goes on: until something else changes
    /// the bench it is one step, whatever comes of it next.
    /// \param make what it comes to; sees the texts as they were before the owner began
    bool draft(const QObject* owner, const std::function<std::vector<BenchCell>()>& make);

    /// Whether the last change is the owner's draft.
    [[nodiscard]] bool isDraftOf(const QObject* owner) const
    {
        return m_draftOwner == owner && !m_done.empty();
    }

    /// Gives a field what is stored.
    bool revert(const std::vector<int>& tracks, TrackField field);

    [[nodiscard]] bool canUndo() const { return !m_done.empty(); }

    [[nodiscard]] bool canRedo() const { return !m_undone.empty(); }

    void undo();
    void redo();

    /// What these tracks are to become is stored now, but for some cells; the steps end here.
    void setStored(const std::vector<int>& tracks, const std::vector<BenchCell>& left = {});
    /// Somebody else has stored these texts meanwhile. What the user has made of such a cell stays
    /// to be applied; the steps end here.
    void setFound(const std::vector<BenchCell>& cells);
    /// A row was added for a file.
    void setFid(int track, const QString& fid);

    // -- As rows of a grid --

    /// Only tracks with this text in the file or one of the fields, without regard to case; empty
    /// for all.
    void setFilter(const QString& text);

    [[nodiscard]] int track(qint64 row) const { return m_shown[size_t(row)]; }

    [[nodiscard]] qint64 rowCount() const override { return qint64(m_shown.size()); }

    [[nodiscard]] int columnCount() const override { return kBenchSlots + 1; }

    [[nodiscard]] QString columnName(int index) const override;
    [[nodiscard]] Value cell(qint64 row, int column) const override;

signals:
    /// Some texts are others now.
    void changed();

private:
    struct Change
    {
        int track;
        int slot;
        QString before;
        QString after;
    };

    using Step = std::vector<Change>;

    [[nodiscard]] bool isShown(const BenchTrack& track) const;
    void filter();
    void put(int track, int slot, const QString& text);
    bool enter(Step step);
    void endTyping();
    void endSteps();
    void takeBackLast();
    void tell();

    std::vector<BenchTrack> m_tracks;
    std::vector<int> m_shown; ///< rows of the grid, by number of their track
    QString m_filter;
    std::vector<Step> m_done;
    std::vector<Step> m_undone;
    std::vector<int> m_typedTracks; ///< of the step that typing goes on with; empty: of none
    TrackField m_typedField = TrackField::Titel;
    const QObject* m_draftOwner = nullptr; ///< of the last step; null when it is no draft
    int m_changedCells = 0;
};

} // namespace melovane
