#include "store/keep_aside.h"

#include "platform/system/files.h"

namespace melovane {

using namespace Qt::Literals::StringLiterals;

namespace {

/// Copies of one file that are kept; who damages it again and again must not fill the disk.
constexpr int kMostCopies = 9;

/// What a database has not yet written into its file.
const QString kJournal = u"-wal"_s;

} // namespace

QString keepAside(Files& files, const QString& file)
{
    const QString name = file + u".damaged"_s;
    QString copy = name;
    for (int number = 2; number <= kMostCopies && files.fileExists(copy); ++number) {
        copy = name + u".%1"_s.arg(number);
    }
    files.copy(file, copy);
    if (files.fileExists(file + kJournal)) {
        files.copy(file + kJournal, copy + kJournal);
    }
    return copy;
}

} // namespace melovane
