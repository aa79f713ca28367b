#pragma once

#include <QByteArray>
#include <QString>

#include <vector>

/// What is read from files and from other programs, and what must hold of it for any bytes.
namespace melovane::fuzz {

struct Format
{
    /// Folder of the kept inputs and word for tools/fuzz.sh.
    const char* name;
    /// Reads the bytes as the program does. \return what went wrong; empty when all holds
    QString (*check)(const QByteArray& bytes);
    /// What the program's own writers make: inputs that are read to their end.
    std::vector<QByteArray> (*seeds)();
};

[[nodiscard]] Format changeDir();
[[nodiscard]] Format disc();
[[nodiscard]] Format dragText();
[[nodiscard]] Format entryTexts();
[[nodiscard]] Format layout();
[[nodiscard]] Format messagePacket();
[[nodiscard]] Format mounts();
[[nodiscard]] Format sampleState();
[[nodiscard]] Format schemaTexts();
[[nodiscard]] Format searchHistory();
[[nodiscard]] Format settings();
[[nodiscard]] Format snapshot();
[[nodiscard]] Format sound();
[[nodiscard]] Format tags();
[[nodiscard]] Format tagSplice();
[[nodiscard]] Format theme();
[[nodiscard]] Format treeKey();
[[nodiscard]] Format undoStep();

} // namespace melovane::fuzz
