#include "trees/info_rows.h"

#include "config/config_objects.h"
#include "platform/db/database.h"
#include "platform/db/sql_text.h"
#include "platform/system/leading_number.h"
#include "platform/system/trim_blanks.h"
#include "store/all_data.h"
#include "store/make_fid.h"
#include "trees/tree_key.h"
#include "trees/tree_rows.h"

#include <QDate>

namespace melovane {

using namespace Qt::Literals::StringLiterals;

namespace {

/// Letters at the end of an identifier that tell files of the same audio apart.
constexpr qsizetype kFidTail = 4;

/// The day that an identifier or a date text of the library begins with, "dd.mm.yyyy"; empty when
/// it is none.
QString dayOf(const QString& date)
{
    constexpr qsizetype kDay = 10;
    const QString day = date.left(kDay);
    return QDate::fromString(day, u"dd.MM.yyyy"_s).isValid() ? day : QString();
}

/// The same for a key.
QString dayKey(QString day)
{
    return day.replace(u'.', u'/');
}

class InfoRows
{
public:
    InfoRows(const ConfigObjects& texts, const MlvAllData& track)
        : m_texts(texts)
        , m_track(track)
    {}

    [[nodiscard]] std::vector<TreeRow> take() { return std::move(m_rows); }

    void addTexts();
    void addMusicMatch();
    void addDates();
    void addTempo(int range);
    void addCounts();
    void addPlaybacks(Database& database);
    void addLists(Database& database);
    void addCover(const QString& file);

private:
    void add(int level, const QString& text, const QString& key, QStringView picture)
    {
        m_rows.push_back(treerows::row(level, text, key, picture.toString()));
    }

    void addText(const QString& value, QStringView field, QStringView picture)
    {
        if (!value.isEmpty()) {
            add(1, value + u' ', treekey::information(field.toString(), searchPattern(value)),
                picture);
        }
    }

    void addMatch(const QString& value, QStringView field, QStringView caption)
    {
        if (!value.isEmpty()) {
            add(2, m_texts.text(caption, value),
                treekey::information(field.toString(), searchPattern(value)), u"tree.info");
        }
    }

    const ConfigObjects& m_texts;
    const MlvAllData& m_track;
    std::vector<TreeRow> m_rows;
};

void InfoRows::addTexts()
{
    m_rows.push_back(
        treerows::root(m_texts.text(u"info.root"), treekey::informationRoot(), u"all.BOOK"_s));
    if (!m_track.Path.isEmpty()) {
        add(1, m_track.Path, treekey::information(u"Path"_s, m_track.Path), u"tree.DIR");
    }
    if (!m_track.Genre.isEmpty()) {
        add(1, m_track.Genre, treekey::information(u"Genre"_s, m_track.Genre), u"tree.genre");
    }
    addText(m_track.Interpret, u"Interpret", u"tree.interpret");
    addText(m_track.Titel, u"Titel", u"all.audio");
    addText(m_track.Album, u"Album", u"tree.album");
    addText(m_track.Kommentar, u"Kommentar", u"tree.info");
}

void InfoRows::addMusicMatch()
{
    if (!m_track.IsMusicMatch() && !m_track.IsUser()) {
        return;
    }
    add(1, m_texts.text(u"info.id3v2"), {}, u"tree.info");
    addMatch(m_track.Kategorie, u"Kategorie", u"info.kategorie");
    addMatch(m_track.Stimmung, u"Stimmung", u"info.stimmung");
    addMatch(m_track.Situation, u"Situation", u"info.situation");
    addMatch(m_track.Tempo, u"Tempo", u"info.tempo");
    const QString users[] = {m_track.User1, m_track.User2, m_track.User3, m_track.User4,
                             m_track.User5};
    int number = 0;
    for (const QString& user : users) {
        ++number;
        if (!user.isEmpty()) {
            add(2, m_texts.text(u"info.user", number, user),
                treekey::information(u"User%1"_s.arg(number), searchPattern(user)), u"tree.info");
        }
    }
}

void InfoRows::addDates()
{
    if (m_track.FID.size() > kFidTail) {
        const QDate made = Mod_Make_FID::FidToDate(m_track.FID).date();
        if (made.isValid()) {
            add(1, m_texts.text(u"info.firstimport", made.toString(u"dd.MM.yyyy"_s)),
                treekey::information(u"FID"_s, m_track.FID.chopped(kFidTail) + u'*'), u"tree.info");
        }
    }
    if (const QString day = dayOf(m_track.DTSImport); !day.isEmpty()) {
        add(1, m_texts.text(u"info.lastimport", day),
            treekey::information(u"DTSImport:date"_s, dayKey(day)), u"tree.info");
    }
    if (const QString day = dayOf(m_track.DTSDatei); !day.isEmpty()) {
        add(1, m_texts.text(u"info.filedate", day),
            treekey::information(u"DTSDatei:date"_s, dayKey(day)), u"tree.info");
    }
    if (leadingLong(m_track.Jahr) > 0) {
        add(1, m_texts.text(u"info.year", m_track.Jahr),
            treekey::information(u"Jahr"_s, m_track.Jahr), u"tree.kalender");
    }
}

void InfoRows::addTempo(int range)
{
    const int tempo = leadingLong(m_track.BPM);
    if (tempo <= 0) {
        return;
    }
    add(1, m_texts.text(u"info.bpm", m_track.BPM), treekey::information(u"BPM"_s, m_track.BPM),
        u"all.sample");
    for (int near = tempo - range; near <= tempo + range; ++near) {
        if (near != tempo && near > 0) {
            const QString text = QString::number(near);
            add(2, m_texts.text(u"info.bpm", text), treekey::information(u"BPM"_s, text),
                u"all.sample");
        }
    }
}

void InfoRows::addCounts()
{
    if (m_track.PlayCountDay > 0) {
        add(1, m_texts.text(u"info.today", m_track.PlayCountDay),
            treekey::information(u"PlayCountDay:long"_s, QString::number(m_track.PlayCountDay)),
            u"tree.kalender");
    }
    if (m_track.PlayCountAll > 0) {
        add(1, m_texts.text(u"info.total", m_track.PlayCountAll),
            treekey::information(u"PlayCountall:long"_s, QString::number(m_track.PlayCountAll)),
            u"tree.kalender");
    }
}

void InfoRows::addPlaybacks(Database& database)
{
    const auto days = database.OpenRecordset("select * from vpl_getstat where fid="_L1 +
                                             sql::text(m_track.FID) + " order by tday"_L1);
    for (; !days->Eof(); days->MoveNext()) {
        add(1, m_texts.text(u"info.played", days->value(u"datum").toText()),
            treekey::information(u"Statistik"_s, days->value(u"tday").toText()), u"tree.kalender");
    }
}

void InfoRows::addLists(Database& database)
{
    const QString ofTrack = " where fid="_L1 + sql::text(m_track.FID);
    const auto count = database.OpenRecordset("select count(*) as anz from pl_all"_L1 + ofTrack);
    if (count->value(u"anz").toLong() <= 0) {
        return;
    }
    const auto lists = database.OpenRecordset("select * from vpl_getinfo"_L1 + ofTrack);
    for (; !lists->Eof(); lists->MoveNext()) {
        add(1, lists->value(u"gName").toText() + " / "_L1 + lists->value(u"pName").toText(),
            treekey::informationPlaylist(lists->value(u"PNID").toLong()), u"tree.Playlist");
    }
}

void InfoRows::addCover(const QString& file)
{
    if (!file.isEmpty()) {
        add(1, {}, treekey::runProc(u"Sleeve.Viewer"_s, m_track.Image), {});
        m_rows.back().image = file;
    }
}

} // namespace

QString searchPattern(const QString& text)
{
    QString pattern = trimBlanks(text);
    for (QChar& sign : pattern) {
        const bool isDigit = sign >= u'0' && sign <= u'9';
        if (sign.toLower() == sign.toUpper() && !isDigit) {
            sign = u'*';
        }
    }
    return pattern;
}

std::vector<TreeRow> informationRows(Database& database,
                                     const ConfigObjects& texts,
                                     const MlvAllData& track,
                                     int bpmRange,
                                     const QString& cover)
{
    InfoRows rows(texts, track);
    rows.addTexts();
    rows.addMusicMatch();
    rows.addDates();
    rows.addTempo(bpmRange);
    rows.addCounts();
    rows.addPlaybacks(database);
    rows.addLists(database);
    rows.addCover(cover);
    return rows.take();
}

} // namespace melovane
