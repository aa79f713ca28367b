#pragma once

#include "player/sound_shape.h"

#include <QString>

#include <functional>
#include <memory>

namespace melovane {

class Files;
class Worker;

/// Shapes of files, kept in a folder of what can be made again.
///
/// Known by path, size and time of a file: one that is changed is measured anew. When more is kept
/// than the folder may hold the oldest go.
class ShapeCache
{
public:
    static constexpr qint64 kMostBytes = qint64{256} << 20;

    /// \param files outlives the cache
    ShapeCache(Files& files, QString folder, qint64 mostBytes = kMostBytes);

    /// Nothing for a file that is unknown, changed or gone.
    [[nodiscard]] std::optional<SoundShape> find(const QString& file) const;
    /// A disc that is full or cannot be written keeps nothing, which is no failure.
    void keep(const QString& file, const SoundShape& shape);

private:
    [[nodiscard]] QString nameOf(const QString& file) const;
    void makeRoom();

    Files& m_files;
    QString m_folder;
    qint64 m_mostBytes;
    qint64 m_bytes = -1; ///< in the folder; -1 as long as that is not known
};

/// Finds the shapes of files beside the window.
class SoundShapes
{
public:
    /// \param worker outlives the shapes; the cache belongs to its thread from now on
    SoundShapes(Worker& worker, SoundStreamMaker makeStream, ShapeCache cache);

    /// \param done called by the message loop; not for a file that cannot be read
    void want(const QString& file, std::function<void(const SoundShape& shape)> done);

private:
    struct Work;

    Worker& m_worker;
    std::shared_ptr<Work> m_work; ///< outlives this while the worker is at it
};

} // namespace melovane
