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

/// Rows and tracks of one folder, whatever the volume: "C:\Music\" and "c:\music\" are one.
struct PathCount
{
    QString folded;
    qint64 below = 0; ///< tracks with a path that begins so
};

/// What counts for the rows of one label, or for all.
class Totals
{
public:
    void add(QStringView path, qint64 count)
    {
        m_counts.push_back({textcompare::fold(path), count});
    }

    /// Adds up; to be called once, behind the last add().
    void addUp();

    [[nodiscard]] qint64 below(QStringView path) const;

private:
    std::vector<PathCount> m_counts; ///< then one per folder, in the order of the folded paths
};

void Totals::addUp()
{
    std::sort(m_counts.begin(), m_counts.end(),
              [](const PathCount& a, const PathCount& b) { return a.folded < b.folded; });
    std::vector<PathCount> summed;
    summed.reserve(m_counts.size());
    // What begins with an open folder's path follows it without a gap.
    std::vector<std::size_t> open;
    for (PathCount& next : m_counts) {
        while (!open.empty() && !next.folded.startsWith(summed[open.back()].folded)) {
            open.pop_back();
        }
        const bool isSame = !open.empty() && summed[open.back()].folded == next.folded;
        for (const std::size_t above : open) {
            summed[above].below += next.below;
        }
        if (!isSame) {
            open.push_back(summed.size());
            summed.push_back(std::move(next));
        }
    }
    m_counts = std::move(summed);
}

qint64 Totals::below(QStringView path) const
{
    const QString folded = textcompare::fold(path);
    const auto found =
        std::lower_bound(m_counts.begin(), m_counts.end(), folded,
                         [](const PathCount& a, const QString& b) { return a.folded < b; });
    return found != m_counts.end() && found->folded == folded ? found->below : 0;
}

/// The path with the closing separator taken off, in components; a network's "\\" stays with the
/// name of the server.
QStringList componentsOf(const QString& path)
{
    const QChar separator = path::separatorOf(path);
    const QString network = QString(2, separator);
    const bool isNetwork = path.startsWith(network);
    QStringList components = path.mid(isNetwork ? 2 : 0).chopped(1).split(separator);
    if (isNetwork) {
        components.first().prepend(network);
    }
    return components;
}

QString imageOf(const FolderRow& row)
{
    if (row.rLevel == 0) {
        return u"DRIVE_"_s + QString::number(row.Drive);
    }
    return row.anzahl == 0 ? u"DIR"_s : u"Audio"_s;
}

} // namespace

std::vector<FolderRow> rowsOfFolder(const TrackFolder& folder)
{
    std::vector<FolderRow> rows;
    if (folder.Path.size() < 1) {
        return rows;
    }
    const QChar separator = path::separatorOf(folder.Path);
    const QStringList components = componentsOf(folder.Path);
    QString path;
    for (qsizetype i = 0; i < components.size(); ++i) {
        const bool isLast = i == components.size() - 1;
        path += components[i] + separator;
        FolderRow& row = rows.emplace_back();
        row.rLevel = int(i);
        // The root of this system has no name but its separator.
        row.bname = components[i].isEmpty() && i == 0 ? QString(separator) : components[i];
        row.vName = folder.DriveName;
        row.Drive = folder.DriveTyp;
        row.anzahl = isLast ? folder.anzahl : 0;
        row.Path = isLast ? folder.Path : path;
        row.Name = folder.DriveTyp == kDisc ? row.bname + u' ' + folder.DriveName : row.bname;
        row.imgkey = imageOf(row);
    }
    return rows;
}

std::vector<FolderRow> folderRows(const std::vector<TrackFolder>& folders)
{
    std::vector<FolderRow> rows;
    // As the unique key of the table would refuse them.
    QSet<std::pair<QString, QString>> known;
    for (const TrackFolder& folder : folders) {
        for (FolderRow& row : rowsOfFolder(folder)) {
            const auto key = std::pair(textcompare::fold(row.Path), textcompare::fold(row.vName));
            if (!known.contains(key)) {
                known.insert(key);
                rows.push_back(std::move(row));
            }
        }
    }
    return rows;
}

void fillTotals(std::vector<FolderRow>& rows, const std::vector<TrackFolder>& folders)
{
    Totals all;
    QHash<QString, Totals> ofLabel;
    for (const TrackFolder& folder : folders) {
        all.add(folder.Path, folder.anzahl);
    }
    for (const FolderRow& row : rows) {
        all.add(row.Path, 0);
        if (row.Drive == kDisc) {
            ofLabel[textcompare::fold(row.vName)];
        }
    }
    for (const FolderRow& row : rows) {
        if (const auto label = ofLabel.find(textcompare::fold(row.vName)); label != ofLabel.end()) {
            label->add(row.Path, row.anzahl);
        }
    }
    all.addUp();
    for (Totals& label : ofLabel) {
        label.addUp();
    }
    for (FolderRow& row : rows) {
        if (row.Drive != kDisc) {
            row.BAnzahl = int(all.below(row.Path));
        } else if (row.anzahl == 0) {
            row.BAnzahl = int(ofLabel[textcompare::fold(row.vName)].below(row.Path));
        }
    }
}

} // namespace melovane
