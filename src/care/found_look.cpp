#include "care/found_look.h"

#include "config/config_objects.h"

namespace melovane {

using namespace Qt::Literals::StringLiterals;
using namespace foundcolumn;

namespace {

/// Of the columns, in figures.
constexpr double kTickWidth = 3;
constexpr double kFolderWidth = 16;
constexpr double kHitsWidth = 11;
constexpr double kTitleWidth = 13;
constexpr double kAgreesWidth = 22;

/// The colour of warnings; the grid makes it readable on every ground.
constexpr Colour kAmber{0xF0, 0xA2, 0x28};

CellStyle tickStyle(const ConfigObjects& texts, bool isTicked)
{
    CellStyle style;
    style.icon = isTicked ? u"ticked"_s : u"unticked"_s;
    style.iconText = texts.text(isTicked ? u"find.ticked"_s : u"find.unticked"_s);
    return style;
}

} // namespace

QString evidenceText(const ConfigObjects& texts, const FoundTrack& track)
{
    if (!track.isFound()) {
        return texts.text(u"find.lost"_s);
    }
    const FoundEvidence& evidence = track.evidence;
    QStringList parts;
    for (const auto& [agrees, key] :
         {std::pair{evidence.name, u"find.name"_s}, std::pair{evidence.length, u"find.length"_s},
          std::pair{evidence.fid, u"find.fid"_s}, std::pair{evidence.audio, u"find.audio"_s}}) {
        if (agrees) {
            parts.append(texts.text(key));
        }
    }
    const QString text = parts.isEmpty() ? texts.text(u"find.nothing"_s) : parts.join(u", "_s);
    if (evidence.isCertain()) {
        return text;
    }
    return texts.text(evidence.otherFid ? u"find.otherfid"_s : u"find.otherlength"_s, text);
}

RuleRows::RuleRows(const FindAgain& find, const ConfigObjects& texts)
    : m_find(find)
    , m_texts(texts)
{}

std::vector<GridColumn> RuleRows::columns() const
{
    return {{.field = columnName(kTick),
             .heading = {},
             .width = kTickWidth,
             .alignment = CellAlignment::Centre,
             .fixed = true},
            {.field = columnName(kOldFolder),
             .heading = m_texts.text(u"find.old"_s),
             .width = kFolderWidth,
             .stretched = true},
            {.field = columnName(kArrow),
             .heading = {},
             .width = kTickWidth,
             .alignment = CellAlignment::Centre,
             .fixed = true},
            {.field = columnName(kNewFolder),
             .heading = m_texts.text(u"find.new"_s),
             .width = kFolderWidth,
             .stretched = true},
            {.field = columnName(kHits),
             .heading = m_texts.text(u"find.hits"_s),
             .width = kHitsWidth,
             .alignment = CellAlignment::Right}};
}

qint64 RuleRows::rowCount() const
{
    return qint64(m_find.rules().size());
}

QString RuleRows::columnName(int index) const
{
    return QString::number(index);
}

Value RuleRows::cell(qint64 row, int column) const
{
    const FoundRule& rule = m_find.rules()[size_t(row)];
    switch (column) {
    case kOldFolder:
        return rule.oldFolder;
    case kArrow:
        return u"→"_s;
    case kNewFolder:
        return rule.newFolder.isEmpty() ? m_texts.text(u"find.nofolder"_s) : rule.newFolder;
    case kHits:
        return m_texts.text(u"find.hits.of"_s, rule.foundCount(), qint64(rule.tracks.size()));
    default:
        return {};
    }
}

QString RuleRows::text(const QString&, const Value& value) const
{
    return value.toText();
}

CellStyle RuleRows::style(const QString& field, const RowValues& row) const
{
    const FoundRule& rule = m_find.rules()[size_t(row.row())];
    const int column = field.toInt();
    if (column == kTick && !rule.newFolder.isEmpty()) {
        return tickStyle(m_texts, rule.isChosen);
    }
    CellStyle style;
    style.dimmed = column == kArrow || (rule.newFolder.isEmpty() && column == kNewFolder);
    return style;
}

void RuleRows::show(bool sameRows)
{
    if (sameRows) {
        emit cellsChanged();
    } else {
        emit refreshed();
    }
}

FoundRows::FoundRows(const FindAgain& find, const ConfigObjects& texts)
    : m_find(find)
    , m_texts(texts)
{}

std::vector<GridColumn> FoundRows::columns() const
{
    return {{.field = columnName(kTick),
             .heading = {},
             .width = kTickWidth,
             .alignment = CellAlignment::Centre,
             .fixed = true},
            {.field = columnName(kTitle),
             .heading = m_texts.text(u"find.track"_s),
             .width = kTitleWidth,
             .stretched = true},
            {.field = columnName(kPlace),
             .heading = m_texts.text(u"find.place"_s),
             .width = kFolderWidth,
             .stretched = true},
            {.field = columnName(kAgrees),
             .heading = m_texts.text(u"find.agrees"_s),
             .width = kAgreesWidth}};
}

const FoundTrack* FoundRows::at(qint64 row) const
{
    if (m_rule < 0 || row < 0 || row >= rowCount()) {
        return nullptr;
    }
    return &m_find.rules()[size_t(m_rule)].tracks[size_t(row)];
}

qint64 FoundRows::rowCount() const
{
    return m_rule < 0 ? 0 : qint64(m_find.rules()[size_t(m_rule)].tracks.size());
}

QString FoundRows::columnName(int index) const
{
    return QString::number(index);
}

Value FoundRows::cell(qint64 row, int column) const
{
    const FoundTrack* const found = at(row);
    if (!found) {
        return {};
    }
    const MissingTrack& track = m_find.tracks()[size_t(found->track)];
    switch (column) {
    case kTitle:
        return track.title.isEmpty() ? track.name : track.title;
    case kPlace:
        return found->isFound() ? found->place() : u"–"_s;
    case kAgrees:
        return evidenceText(m_texts, *found);
    default:
        return {};
    }
}

QString FoundRows::text(const QString&, const Value& value) const
{
    return value.toText();
}

CellStyle FoundRows::style(const QString& field, const RowValues& row) const
{
    const FoundTrack* const found = at(row.row());
    const int column = field.toInt();
    if (!found) {
        return {};
    }
    if (column == kTick && found->isFound()) {
        return tickStyle(m_texts, found->isChosen);
    }
    CellStyle style;
    style.dimmed = !found->isFound();
    if (column == kAgrees) {
        const bool isAmber = found->isFound() && !found->evidence.isCertain();
        style.icon = isAmber ? u"warning"_s : found->isFound() ? u"ticked"_s : u"clear"_s;
        if (isAmber) {
            style.iconText = m_texts.text(u"find.warning"_s);
            style.text = kAmber;
        }
    }
    return style;
}

void FoundRows::show(int rule, bool sameRows)
{
    m_rule = rule;
    if (sameRows) {
        emit cellsChanged();
    } else {
        emit refreshed();
    }
}

} // namespace melovane
