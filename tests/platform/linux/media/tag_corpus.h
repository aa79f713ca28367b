#pragma once

#include <QByteArray>
#include <QList>

#include <random>
#include <string>

namespace melovane::test {

/// An audio file of the corpus, and what of it no change of tags may touch.
struct CorpusFile
{
    std::string shape; ///< what is odd about it
    QByteArray tags;   ///< ID3v2 tags at its beginning; empty for none
    QByteArray sound;  ///< all between them and the old tag at its end, other tags included
    QByteArray oldTag; ///< ID3v1; empty for none

    /// What other programs put into the tags, as it must stand there after a change, in this order.
    QList<QByteArray> foreign;

    /// False for a shape that the tag library cannot read, whoever has written it.
    bool isReadByTagLibrary = true;

    [[nodiscard]] QByteArray bytes() const { return tags + sound + oldTag; }
};

/// The file of that number: versions, shapes, tags around the sound and streams in all combinations
/// that their counts give. The same seed gives the same files.
[[nodiscard]] CorpusFile corpusFile(int number, std::mt19937& random);

} // namespace melovane::test
