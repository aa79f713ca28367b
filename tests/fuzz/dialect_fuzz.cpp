#include "fuzz/dialect_check.h"

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <random>

// The fuzzing engine's names: keep.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);
extern "C" std::size_t
LLVMFuzzerCustomMutator(std::uint8_t* data, std::size_t size, std::size_t most, unsigned int seed);
extern "C" std::size_t LLVMFuzzerMutate(std::uint8_t* data, std::size_t size, std::size_t most);

namespace {

using namespace Qt::Literals::StringLiterals;

/// Words that make other statements of a statement; letters alone rarely meet one.
const char* const kWords[] = {
    "select",     "from",       "where",       "group by",    "order by",
    "having",     "union",      "union all",   "distinct",    "top 2",
    "percent",    "into neu",   "insert into", "values",      "update",
    "set",        "delete",     "and",         "or",          "not",
    "xor",        "eqv",        "imp",         "like",        "in",
    "between",    "is null",    "exists",      "any",         "all",
    "inner join", "left join",  "right join",  "on",          "as x",
    "asc",        "desc",       "null",        "true",        "now",
    "transform",  "pivot",      "execute",     "distinctrow", "parameters",
    "(",          ")",          ",",           "+",           "-",
    "*",          "/",          "\\",          "^",           "mod",
    "&",          "=",          "<>",          "<",           ">=",
    ".",          ";",          "[",           "]",           "'",
    "\"",         "#",          "&HFF",        "1",           "2.5",
    "-1",         "3000000000", "'a'",         "'Rock'",      "''",
    "#1/2/2026#", "db_all",     "pl_all",      "pl_name",     "pl_group",
    "pl_stat",    "genre",      "todo",        "VPL_ALL",     "VPL_GROUPNAME",
    "v_state",    "vpl_save",   "tree_genre",  "QU_FindFile", "VDB_ALL",
    "fid",        "titel",      "interpret",   "dlen",        "del",
    "pnid",       "plid",       "nid",         "grid",        "name",
    "sid",        "activ",      "tstamp",      "db_all.fid",  "pl_all.fid",
    "count(*)",   "sum(",       "max(",        "first(",      "iif(",
    "nz(",        "left(",      "format(",     "instr(",      "replace(",
    "string(",    "dateadd(",   "dcount('*',", "dlookup(",    "switch(",
    "choose(",    "mid(",       "val(",        "cdate(",      "(select",
};

melovane::fuzz::DialectCheck& check()
{
    static melovane::fuzz::DialectCheck made;
    return made;
}

/// Where the word begins that stands at a place; blanks and signs end a word.
std::size_t wordStart(const std::string& text, std::size_t at)
{
    while (at > 0 &&
           (std::isalnum(static_cast<unsigned char>(text[at - 1])) != 0 || text[at - 1] == '_')) {
        --at;
    }
    return at;
}

std::size_t wordEnd(const std::string& text, std::size_t at)
{
    while (at < text.size() &&
           (std::isalnum(static_cast<unsigned char>(text[at])) != 0 || text[at] == '_')) {
        ++at;
    }
    return at;
}

std::string changed(std::string text, std::minstd_rand& random)
{
    const auto below = [&](std::size_t limit) { return limit == 0 ? 0 : random() % limit; };
    const std::string word = kWords[below(std::size(kWords))];
    const std::size_t start = wordStart(text, below(text.size() + 1));
    const std::size_t end = wordEnd(text, start);
    switch (below(4)) {
    case 0: // another word
        return text.replace(start, end - start, word);
    case 1: // one word more
        return text.insert(start, word + ' ');
    case 2: // some words less
        return text.erase(start, wordEnd(text, std::min(text.size(), end + below(20))) - start);
    default: { // a piece once more, elsewhere
        const std::string piece = text.substr(start, below(40));
        return text.insert(wordStart(text, below(text.size() + 1)), piece + ' ');
    }
    }
}

} // namespace

std::size_t
LLVMFuzzerCustomMutator(std::uint8_t* data, std::size_t size, std::size_t most, unsigned int seed)
{
    std::minstd_rand random(seed);
    if (random() % 3 == 0) {
        return LLVMFuzzerMutate(data, size, most);
    }
    std::string text(reinterpret_cast<const char*>(data), size);
    for (unsigned int i = 0, changes = 1 + random() % 3; i < changes; ++i) {
        text = changed(std::move(text), random);
    }
    const std::size_t made = std::min(text.size(), most);
    std::copy_n(text.begin(), made, data);
    return made;
}

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const QString text =
        QString::fromUtf8(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
    const QString trouble = check().check(text);
    if (!trouble.isEmpty()) {
        std::fprintf(stderr, "%s\nin: %s\n", qPrintable(trouble), qPrintable(text));
        std::abort();
    }
    return 0;
}
