#include "tagbench/file_moves.h"

#include "platform/system/files.h"
#include "platform/system/path_text.h"

namespace melovane {

FileMoves::FileMoves(Files& files, const QString& dataFolder, const QString& library)
    : m_files(files)
    , m_plan(files, dataFolder)
    , m_journal(files, library)
{}

FileMoves::~FileMoves()
{
    takeBack();
}

bool FileMoves::move(std::vector<FileMove>& moves, const std::function<bool(int)>& goOn)
{
    const std::vector<MovePlan::Group> groups = m_plan.groups(moves);
    if (groups.empty()) {
        return true;
    }
    const auto fail = [&](const MovePlan::Group& group, const QString& reason) {
        for (const MoveStep& step : group) {
            moves[step.move].fault = reason;
        }
    };
    const QStringList folders = m_plan.missingFolders(groups);
    try {
        m_journal.begin(moves, groups, folders);
    } catch (const IoError& error) {
        for (const MovePlan::Group& group : groups) {
            fail(group, error.reason());
        }
        return true;
    }
    m_made = folders;
    int done = 0;
    for (const MovePlan::Group& group : groups) {
        if (!goOn(done++)) {
            return false;
        }
        if (const QString reason = moveGroup(group); !reason.isEmpty()) {
            fail(group, reason);
        }
    }
    return true;
}

QString FileMoves::moveGroup(const MovePlan::Group& group)
{
    const size_t before = m_moved.size();
    try {
        for (const MoveStep& step : group) {
            m_files.makeFolders(path::parent(step.to));
            m_files.rename(step.from, step.to);
            m_moved.emplace_back(step.from, step.to);
        }
    } catch (const IoError& error) {
        takeBackTo(before);
        return error.reason();
    }
    return {};
}

void FileMoves::keep(bool removeEmptyFolders)
{
    for (auto folder = m_made.rbegin(); folder != m_made.rend(); ++folder) {
        m_files.removeFolder(*folder); // of a file that could not be moved there
    }
    m_made.clear();
    if (removeEmptyFolders) {
        for (const auto& [from, to] : m_moved) {
            // Ends by itself at the first folder that still holds something.
            for (QString folder = path::parent(from); m_files.removeFolder(folder);) {
                folder = path::parent(folder);
            }
        }
    }
    m_moved.clear();
    endJournal();
}

void FileMoves::takeBack()
{
    takeBackTo(0);
    for (auto folder = m_made.rbegin(); folder != m_made.rend(); ++folder) {
        m_files.removeFolder(*folder);
    }
    m_made.clear();
    endJournal();
}

void FileMoves::endJournal()
{
    if (m_isWhole) {
        m_journal.end();
    }
}

void FileMoves::takeBackTo(size_t count)
{
    for (size_t at = m_moved.size(); at > count; --at) {
        try {
            m_files.rename(m_moved[at - 1].second, m_moved[at - 1].first);
        } catch (const IoError&) {
            m_isWhole = false;
        }
    }
    m_moved.resize(count);
}

} // namespace melovane
