#include "player/sound_shapes.h"

#include "platform/system/files.h"
#include "platform/system/io_error.h"
#include "platform/system/path_text.h"
#include "platform/system/worker.h"

#include <QCryptographicHash>

#include <algorithm>
#include <utility>

namespace melovane {

using namespace Qt::Literals::StringLiterals;

ShapeCache::ShapeCache(Files& files, QString folder, qint64 mostBytes)
    : m_files(files)
    , m_folder(std::move(folder))
    , m_mostBytes(mostBytes)
{}

/// Empty for a file that is not there.
QString ShapeCache::nameOf(const QString& file) const
{
    const auto facts = m_files.facts(file);
    if (!facts) {
        return {};
    }
    const QString known = file + u'|' + QString::number(facts->size) + u'|' +
                          QString::number(facts->modified.toMSecsSinceEpoch());
    const QByteArray hash = QCryptographicHash::hash(known.toUtf8(), QCryptographicHash::Sha1);
    return path::join(m_folder, QString::fromLatin1(hash.toHex()) + u".shape"_s);
}

std::optional<SoundShape> ShapeCache::find(const QString& file) const
{
    const QString name = nameOf(file);
    if (name.isEmpty() || !m_files.fileExists(name)) {
        return {};
    }
    try {
        return shapeOfBytes(m_files.read(name));
    } catch (const IoError&) {
        return {};
    }
}

void ShapeCache::keep(const QString& file, const SoundShape& shape)
{
    const QString name = nameOf(file);
    if (name.isEmpty() || !m_files.makeFolders(m_folder)) {
        return;
    }
    const QByteArray bytes = shapeToBytes(shape);
    try {
        m_files.writeWhole(name, bytes);
    } catch (const IoError&) {
        return;
    }
    m_bytes = m_bytes < 0 ? -1 : m_bytes + bytes.size();
    if (m_bytes < 0 || m_bytes > m_mostBytes) {
        makeRoom();
    }
}

/// The oldest go until a tenth is free, so that it is not done again with the next one.
void ShapeCache::makeRoom()
{
    std::vector<std::pair<FileFacts, QString>> kept;
    m_bytes = 0;
    for (const QString& name : m_files.names(m_folder)) {
        const QString file = path::join(m_folder, name);
        const auto facts = m_files.facts(file);
        if (facts && name.endsWith(u".shape")) {
            m_bytes += facts->size;
            kept.emplace_back(*facts, file);
        }
    }
    if (m_bytes <= m_mostBytes) {
        return;
    }
    std::ranges::sort(kept, {}, [](const auto& one) { return one.first.modified; });
    for (const auto& [facts, file] : kept) {
        if (m_bytes <= m_mostBytes / 10 * 9) {
            return;
        }
        m_bytes -= m_files.remove(file) ? facts.size : 0;
    }
}

struct SoundShapes::Work
{
    SoundStreamMaker makeStream;
    ShapeCache cache;

    std::optional<SoundShape> shapeOf(const QString& file)
    {
        if (auto known = cache.find(file)) {
            return known;
        }
        const auto stream = makeStream();
        if (stream->open(file) != PlayFault::None) {
            return {};
        }
        SoundShape shape = measureShape(*stream);
        cache.keep(file, shape);
        return shape;
    }
};

SoundShapes::SoundShapes(Worker& worker, SoundStreamMaker makeStream, ShapeCache cache)
    : m_worker(worker)
    , m_work(std::make_shared<Work>(Work{std::move(makeStream), std::move(cache)}))
{}

void SoundShapes::want(const QString& file, std::function<void(const SoundShape& shape)> done)
{
    const auto found = std::make_shared<std::optional<SoundShape>>();
    m_worker.run([work = m_work, file, found] { *found = work->shapeOf(file); },
                 [found, done = std::move(done)] {
                     if (*found) {
                         done(**found);
                     }
                 });
}

} // namespace melovane
