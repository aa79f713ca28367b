#include "store/change_dir.h"

#include "platform/db/text_compare.h"
#include "platform/system/path_text.h"
#include "platform/system/text_file.h"
#include "platform/system/trim_blanks.h"

#include <algorithm>

namespace melovane::changedir {

using namespace Qt::Literals::StringLiterals;

namespace {

/// No mapping fits into fewer letters.
constexpr int kShortestLine = 6;

} // namespace

std::vector<Record> parse(const QString& text)
{
    std::vector<Record> records;
    for (const QString& line : textfile::lines(text)) {
        const QString trimmed = trimBlanks(line);
        if (trimmed.size() < kShortestLine) {
            continue;
        }
        const QStringList pieces = trimmed.split(u"??"_s);
        if (pieces.size() != 2) {
            continue;
        }
        Record record{kDir.toString(), trimBlanks(pieces[0]), trimBlanks(pieces[1])};
        if (!record.oldFolder.isEmpty()) {
            records.push_back(std::move(record));
        }
    }
    return records;
}

QString withMappings(const QString& text, const std::vector<Record>& records)
{
    QString result = text;
    for (const Record& record : records) {
        const QString line = record.oldFolder + u" ?? "_s + record.newFolder;
        const bool isWhole =
            !record.newFolder.isEmpty() && parse(line) == std::vector<Record>{record};
        const std::vector<Record> known = parse(result);
        if (!isWhole || std::find(known.begin(), known.end(), record) != known.end()) {
            continue;
        }
        if (!result.isEmpty() && !result.endsWith(u'\n')) {
            result += u'\n';
        }
        result += line + u'\n';
    }
    return result;
}

std::optional<QString> mapped(const Record& record, QStringView folder)
{
    const QStringList old = path::components(record.oldFolder);
    const QStringList parts = path::components(folder);
    const auto same = [](const QString& left, const QString& right) {
        return textcompare::equal(left, right);
    };
    if (old.isEmpty() || old.size() > parts.size() ||
        !std::equal(old.begin(), old.end(), parts.begin(), same)) {
        return std::nullopt;
    }
    QString result = record.newFolder;
    for (qsizetype i = old.size(); i < parts.size(); ++i) {
        result = path::join(result, parts[i]);
    }
    return path::isSeparator(folder.back()) ? path::withSeparator(result) : result;
}

} // namespace melovane::changedir
