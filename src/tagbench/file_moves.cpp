#include "tagbench/file_moves.h"

#include "platform/system/files.h"
#include "platform/system/path_text.h"

#include <algorithm>

namespace melovane {

using namespace Qt::Literals::StringLiterals;

FileMoves::FileMoves(Files& files, const QString& dataFolder)
    : m_files(files)
    , m_locator(files, dataFolder)
{}

FileMoves::~FileMoves()
{
    takeBack();
}

QString FileMoves::targetOf(const QString& actual, const QString& stored, const QString& wanted)
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

bool FileMoves::isFree(const QString& stored, const QString& wanted)
{
    const QString actual = m_locator.placeOf(stored);
    if (actual.isEmpty()) {
        return true; // move() says what is wrong
    }
    const QString target = targetOf(actual, stored, wanted);
    const auto there = m_files.facts(target);
    const auto own = m_files.facts(actual);
    return !there || (own && there->device == own->device && there->inode == own->inode);
}

void FileMoves::move(const QString& stored, const QString& wanted)
{
    const QString actual = m_locator.placeOf(stored);
    if (actual.isEmpty()) {
        throw IoError(stored, u"No such file or directory"_s);
    }
    const QString target = targetOf(actual, stored, wanted);
    QStringList missing;
    for (QString folder = path::parent(target); !folder.isEmpty() && !m_files.folderExists(folder);
         folder = path::parent(folder)) {
        missing.prepend(folder);
    }
    if (!missing.isEmpty()) {
        m_files.makeFolders(missing.last());
        m_made += missing;
    }
    m_files.rename(actual, target);
    m_moved.emplace_back(actual, target);
}

void FileMoves::keep(bool removeEmptyFolders)
{
    if (removeEmptyFolders) {
        for (const auto& [from, to] : m_moved) {
            // Ends by itself at the first folder that still holds something.
            for (QString folder = path::parent(from); m_files.removeFolder(folder);) {
                folder = path::parent(folder);
            }
        }
    }
    m_moved.clear();
    m_made.clear();
}

void FileMoves::takeBack()
{
    for (auto moved = m_moved.rbegin(); moved != m_moved.rend(); ++moved) {
        try {
            m_files.rename(moved->second, moved->first);
        } catch (const IoError&) {
            // Its row then names a file that is gone, which the search for missing files finds.
        }
    }
    for (auto folder = m_made.rbegin(); folder != m_made.rend(); ++folder) {
        m_files.removeFolder(*folder);
    }
    m_moved.clear();
    m_made.clear();
}

} // namespace melovane
