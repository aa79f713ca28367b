#include "tagbench/move_plan.h"

#include "platform/system/files.h"
#include "platform/system/path_text.h"

#include <QHash>

#include <algorithm>
#include <optional>

namespace melovane {

using namespace Qt::Literals::StringLiterals;

namespace {

const QString kMissing = u"No such file or directory"_s;
const QString kExists = u"File exists"_s;

/// Where a file that lies at `actual` for its stored name belongs for the wanted one.
QString targetOf(const QString& actual, const QString& stored, const QString& wanted)
{
    const QStringList from = path::components(path::parent(stored));
    const QStringList to = path::components(path::parent(wanted));
    qsizetype same = 0;
    while (same < std::min(from.size(), to.size()) && from[same] == to[same]) {
        ++same;
    }
    QString folder = path::parent(actual);
    for (qsizetype up = same; up < from.size(); ++up) {
        folder = path::parent(folder);
    }
    for (const QString& name : to.sliced(same)) {
        folder = path::join(folder, name);
    }
    return path::join(folder, path::fileName(wanted));
}

} // namespace

MovePlan::MovePlan(const Files& files, const QString& dataFolder)
    : m_files(files)
    , m_locator(files, dataFolder)
{}

std::vector<MovePlan::Group> MovePlan::groups(std::vector<FileMove>& moves)
{
    find(moves);
    std::vector<Group> result;
    addFree(result);
    addRings(result);
    for (size_t index = 0; index < moves.size(); ++index) {
        if (!m_nodes[index].isPlanned && moves[index].fault.isEmpty()) {
            moves[index].fault = kExists;
        }
    }
    return result;
}

void MovePlan::find(std::vector<FileMove>& moves)
{
    m_nodes.assign(moves.size(), {});
    QHash<QString, size_t> owners; // by the name that the file has on the disc
    for (size_t index = 0; index < moves.size(); ++index) {
        Node& node = m_nodes[index];
        node.from = m_locator.placeOf(moves[index].stored);
        if (node.from.isEmpty()) {
            moves[index].fault = kMissing;
            node.waitsFor = kBlocked;
            continue;
        }
        node.to = targetOf(node.from, moves[index].stored, moves[index].wanted);
        owners.insert(node.from, index);
    }
    for (size_t index = 0; index < m_nodes.size(); ++index) {
        Node& node = m_nodes[index];
        if (node.waitsFor == kNobody) {
            const auto owner = owners.constFind(node.to);
            node.waitsFor =
                owner == owners.cend() || *owner == index ? inTheWayOf(index) : int(*owner);
        }
    }
}

/// Whom a target belongs to whose name is none of those of the moves.
int MovePlan::inTheWayOf(size_t node) const
{
    const auto there = m_files.facts(m_nodes[node].to);
    if (!there) {
        return kNobody;
    }
    const auto isThere = [&](const Node& other) {
        const auto facts = m_files.facts(other.from);
        return facts && facts->device == there->device && facts->inode == there->inode;
    };
    // The file itself, on a volume that does not tell the letter case of its names.
    if (isThere(m_nodes[node])) {
        return kNobody;
    }
    const auto other = std::ranges::find_if(m_nodes, isThere);
    return other == m_nodes.end() ? kBlocked : int(other - m_nodes.begin());
}

void MovePlan::addFree(std::vector<Group>& groups)
{
    QHash<int, std::vector<size_t>> waiting; // by whom they wait for
    std::vector<size_t> free;
    for (size_t index = 0; index < m_nodes.size(); ++index) {
        const int before = m_nodes[index].waitsFor;
        if (before == kNobody) {
            free.push_back(index);
        } else if (before != kBlocked) {
            waiting[before].push_back(index);
        }
    }
    for (size_t at = 0; at < free.size(); ++at) {
        Node& node = m_nodes[free[at]];
        node.isPlanned = true;
        groups.push_back({{free[at], node.from, node.to}});
        const std::vector<size_t> next = waiting.value(int(free[at]));
        free.insert(free.end(), next.begin(), next.end());
    }
}

/// The ring that a file is part of, each waiting for the next one; empty when it waits for one that
/// stays.
std::vector<size_t> MovePlan::ringOf(size_t node) const
{
    std::vector<size_t> ring;
    for (size_t at = node; ring.size() < m_nodes.size(); at = size_t(m_nodes[at].waitsFor)) {
        ring.push_back(at);
        const int next = m_nodes[at].waitsFor;
        if (next == int(node)) {
            return ring;
        }
        if (next < 0 || m_nodes[size_t(next)].isPlanned) {
            break;
        }
    }
    return {};
}

void MovePlan::addRings(std::vector<Group>& groups)
{
    for (size_t index = 0; index < m_nodes.size(); ++index) {
        const std::vector<size_t> ring =
            m_nodes[index].isPlanned ? std::vector<size_t>() : ringOf(index);
        if (ring.empty()) {
            continue;
        }
        const QString beside = waitingPlace(m_nodes[index].from);
        Group group{{index, m_nodes[index].from, beside}};
        for (auto member = ring.rbegin(); member != ring.rend() - 1; ++member) {
            group.push_back({*member, m_nodes[*member].from, m_nodes[*member].to});
        }
        group.push_back({index, beside, m_nodes[index].to});
        for (const size_t member : ring) {
            m_nodes[member].isPlanned = true;
        }
        groups.push_back(std::move(group));
    }
}

/// A free name beside a file, which no program takes for music.
QString MovePlan::waitingPlace(const QString& place) const
{
    QString beside = place + u".renaming"_s;
    for (int number = 2; m_files.facts(beside); ++number) {
        beside = place + u".renaming"_s + QString::number(number);
    }
    return beside;
}

QStringList MovePlan::missingFolders(const std::vector<Group>& groups) const
{
    QStringList result;
    for (const Group& group : groups) {
        for (const MoveStep& step : group) {
            qsizetype at = result.size();
            for (QString folder = path::parent(step.to);
                 !folder.isEmpty() && !result.contains(folder) && !m_files.folderExists(folder);
                 folder = path::parent(folder)) {
                result.insert(at, folder);
            }
        }
    }
    return result;
}

} // namespace melovane
