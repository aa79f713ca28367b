#include "trees/folder_rows.h"

#include "platform/db/text_compare.h"
#include "platform/system/files.h"
#include "platform/system/path_text.h"

#include <QHash>
#include <QSet>

#include <algorithm>

namespace melovane {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int kDisc = int(VolumeKind::Optical);

/// What counts for the rows of one label, or for all: "C:\\Music\\" and "c:\\music\\" are one.
///
/// Paths are given in the form in which they compare, and outlive this.
class Totals
{
public:
    /// A folder whose total is asked for; all of them come before the tracks.
    void addFolder(QStringView path)
    {
        m_below.insert(path, 0);
        if (!path.isEmpty() && !m_ends.contains(path.back())) {
            m_ends.append(path.back());
        }
    }

    /// Counts for every folder whose path the tracks' begins with.
    void addTracks(QStringView path, qint64 count)
    {
        for (qsizetype i = 0; i < path.size(); ++i) {
            if (!m_ends.contains(path[i])) {
                continue;
            }
            if (const auto folder = m_below.find(path.first(i + 1)); folder != m_below.end()) {
                *folder += count;
            }
        }
    }

    [[nodiscard]] qint64 below(QStringView path) const { return m_below.value(path); }

private:
    QHash<QStringView, qint64> m_below;
    QString m_ends; ///< letters with which paths of folders end: the separators, as a rule
};

QString imageOf(const FolderRow& row)
{
    if (row.rLevel == 0) {
        return u"DRIVE_"_s + QString::number(row.Drive);
    }
    return row.anzahl == 0 ? u"DIR"_s : u"Audio"_s;
}

/// Adds the rows of a folder and of all folders above it to `rows`, the drive first. A network's
/// "\\\\" stays with the name of the server.
/// \param known path whose folders have their rows already
void addRows(const TrackFolder& folder, QStringView known, std::vector<FolderRow>& rows)
{
    const QStringView path = folder.Path;
    const QChar separator = path::separatorOf(folder.Path);
    const QString network = QString(2, separator);
    const qsizetype first = path.startsWith(network) ? network.size() : 0;
    const qsizetype close = std::max(first, path.size() - 1); // of the closing separator
    qsizetype begin = first;
    for (int level = 0; begin <= close; ++level) {
        const qsizetype next = path.indexOf(separator, begin);
        const bool isLast = next < 0 || next >= close;
        const qsizetype end = isLast ? close : next;
        const QStringView component =
            level == 0 ? path.first(end) : path.sliced(begin, end - begin);
        begin = end + 1;
        if (known.size() > end && known[end] == separator && known.startsWith(path.first(end))) {
            continue;
        }
        FolderRow& row = rows.emplace_back();
        row.rLevel = level;
        // The root of this system has no name but its separator.
        row.bname = component.isEmpty() && level == 0 ? QString(separator) : component.toString();
        row.vName = folder.DriveName;
        row.Drive = folder.DriveTyp;
        row.anzahl = isLast ? folder.anzahl : 0;
        row.Path = isLast ? folder.Path : path.first(end + 1).toString();
        row.Name = folder.DriveTyp == kDisc ? row.bname + u' ' + folder.DriveName : row.bname;
        row.imgkey = imageOf(row);
        row.folded = textcompare::fold(row.Path);
    }
}

} // namespace

std::vector<FolderRow> folderRows(const std::vector<TrackFolder>& folders)
{
    std::vector<FolderRow> rows;
    std::vector<FolderRow> added;
    // As the unique key of the table would refuse them.
    QSet<std::pair<QString, QString>> taken;
    const TrackFolder* previous = nullptr;
    for (const TrackFolder& folder : folders) {
        // Folders come in the order of their paths: most of those above are the last one's, too.
        const bool goesOn = previous && previous->DriveName == folder.DriveName;
        added.clear();
        addRows(folder, goesOn ? QStringView(previous->Path) : QStringView(), added);
        const QString label = textcompare::fold(folder.DriveName);
        for (FolderRow& row : added) {
            const auto key = std::pair(row.folded, label);
            if (!taken.contains(key)) {
                taken.insert(key);
                rows.push_back(std::move(row));
            }
        }
        previous = &folder;
    }
    return rows;
}

namespace {

/// The totals of each label that a disc carries.
QHash<QString, Totals> totalsOfDiscs(const std::vector<FolderRow>& rows)
{
    QHash<QString, Totals> labels;
    for (const FolderRow& row : rows) {
        if (row.Drive == kDisc) {
            labels[textcompare::fold(row.vName)];
        }
    }
    if (labels.isEmpty()) {
        return labels;
    }
    const auto ofLabel = [&](const auto& work) {
        for (const FolderRow& row : rows) {
            if (const auto label = labels.find(textcompare::fold(row.vName));
                label != labels.end()) {
                work(*label, row);
            }
        }
    };
    ofLabel([](Totals& label, const FolderRow& row) { label.addFolder(row.folded); });
    ofLabel([](Totals& label, const FolderRow& row) { label.addTracks(row.folded, row.anzahl); });
    return labels;
}

} // namespace

void fillTotals(std::vector<FolderRow>& rows, const std::vector<TrackFolder>& folders)
{
    Totals all;
    for (const FolderRow& row : rows) {
        all.addFolder(row.folded);
    }
    for (const TrackFolder& folder : folders) {
        all.addTracks(textcompare::fold(folder.Path), folder.anzahl);
    }
    QHash<QString, Totals> discs = totalsOfDiscs(rows);
    for (FolderRow& row : rows) {
        if (row.Drive != kDisc) {
            row.BAnzahl = int(all.below(row.folded));
        } else if (row.anzahl == 0) {
            row.BAnzahl = int(discs[textcompare::fold(row.vName)].below(row.folded));
        }
    }
}

} // namespace melovane
