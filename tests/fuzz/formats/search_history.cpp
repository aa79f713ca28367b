#include "library/search_history.h"

#include "fuzz/formats/formats.h"

namespace melovane::fuzz {

using namespace Qt::Literals::StringLiterals;

namespace {

/// All entries from the oldest on, by steps alone; the newest is shown afterwards.
std::vector<HistoryEntry> walked(SearchHistory& history)
{
    while (history.back()) {
    }
    std::vector<HistoryEntry> entries;
    while (const auto entry = history.forward()) {
        entries.push_back(*entry);
    }
    return entries;
}

QString check(const QByteArray& bytes)
{
    SearchHistory history;
    history.read(bytes);
    if (history.last() < 0 || history.last() > SearchHistory::kLastIndex ||
        history.cursor() != history.last()) {
        return u"%1 of %2 is shown"_s.arg(history.cursor()).arg(history.last());
    }
    const QByteArray text = history.toText();
    SearchHistory again;
    again.read(text);
    if (again.toText() != text) {
        return u"reads back otherwise: "_s + QString::fromUtf8(text);
    }
    const auto entries = walked(history);
    if (int(entries.size()) != history.last()) {
        return u"%1 steps over %2 entries"_s.arg(entries.size()).arg(history.last());
    }
    const HistoryEntry newest{kTextSearch.toString(), u"f"_s, u"one that is new"_s, 0};
    history.push(newest);
    const bool isShown = !history.canGoForward() && history.last() <= SearchHistory::kLastIndex &&
                         walked(history).back() == newest;
    return isShown ? QString() : u"a new view is not the shown one"_s;
}

std::vector<QByteArray> seeds()
{
    SearchHistory some;
    some.push({kTextSearch.toString(), QString(), u"abba \"gold\""_s, 0});
    some.push({u"INT"_s, u"Interpret"_s, u"AC/DC, live\nzwei"_s, 0});
    some.push({u"tday"_s, u"LDatum"_s, u"20260101"_s, 1});
    SearchHistory full;
    for (int i = 0; i < 40; ++i) {
        full.push({kTextSearch.toString(), QString(), QString::number(i), 0});
    }
    return {SearchHistory().toText(), some.toText(), full.toText()};
}

} // namespace

Format searchHistory()
{
    return {"search_history", check, seeds};
}

} // namespace melovane::fuzz
