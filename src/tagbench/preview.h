#pragma once

#include "platform/controls/grid_source.h"
#include "tagbench/bench_tracks.h"
#include "tagbench/rename_plan.h"
#include "tagbench/text_changes.h"

#include <QString>
#include <QStringList>

#include <vector>

namespace melovane {

class ConfigObjects;
class NameReader;

/// One line of a preview: what is now, what it would become, and what that would change.
struct PreviewRow
{
    QStringList cells;  ///< by column
    bool warns = false; ///< the last cell tells why nothing happens
    bool ticked = true; ///< takes part
    std::vector<BenchCell> change = {};
};

/// What a page of the bench would do.
struct Preview
{
    QStringList headings;
    std::vector<PreviewRow> rows;
    QString summary;
    QString warning;            ///< empty when all is well
    QStringList lastTexts = {}; ///< all that the last column may say one day

    /// What the ticked rows change.
    [[nodiscard]] std::vector<BenchCell> cells() const;
};

namespace previews {

/// Fields from the names of the files.
[[nodiscard]] Preview fromNames(const ConfigObjects& texts,
                                const BenchTracks& tracks,
                                const NameReader& reader,
                                bool onlyEmpty);

/// Names of the files from the fields.
[[nodiscard]] Preview
renaming(const ConfigObjects& texts, const BenchTracks& tracks, const std::vector<RenameRow>& plan);

/// A row for each field in which something is found.
[[nodiscard]] Preview replacing(const ConfigObjects& texts,
                                const BenchTracks& tracks,
                                const TextReplacement& replacement,
                                const std::vector<TrackField>& fields);

/// A row for each field that is spelt otherwise.
[[nodiscard]] Preview spelling(const ConfigObjects& texts,
                               const BenchTracks& tracks,
                               const std::vector<int>& chosen,
                               LetterCase letters,
                               const std::vector<TrackField>& fields);

/// Track numbers in the order of the tracks.
[[nodiscard]] Preview numbering(const ConfigObjects& texts,
                                const BenchTracks& tracks,
                                const std::vector<int>& chosen,
                                const NumberOrder& order);

} // namespace previews

/// The rows of a preview for a grid. Columns are "0", "1" and so on.
class PreviewRows : public GridSource
{
    Q_OBJECT

public:
    using GridSource::GridSource;

    void show(Preview preview);

    [[nodiscard]] const Preview& preview() const { return m_preview; }

    void toggle(qint64 row);

    [[nodiscard]] qint64 rowCount() const override { return qint64(m_preview.rows.size()); }

    [[nodiscard]] int columnCount() const override { return int(m_preview.headings.size()); }

    [[nodiscard]] QString columnName(int index) const override { return QString::number(index); }

    [[nodiscard]] Value cell(qint64 row, int column) const override;

private:
    Preview m_preview;
};

} // namespace melovane
