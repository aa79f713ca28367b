#include "trackedit/panel_choices.h"

#include "config/global_settings.h"
#include "platform/db/database.h"
#include "platform/db/db_error.h"
#include "platform/system/letter_case.h"
#include "platform/system/trim_blanks.h"
#include "store/error_sink.h"
#include "trackedit/edit_tag_form.h"

#include <algorithm>
#include <utility>

namespace melovane {

using namespace Qt::Literals::StringLiterals;

namespace {

/// The genres by the setting "EditTag.Load.Genre"; the second one is spelt so and gives none.
QString genreStatement(const QString& source)
{
    if (source == "id3"_L1) {
        return u"select distint name from genre"_s;
    }
    return source == "verwendete"_L1
               ? u"select name from tree_genre"_s
               : u"select name from genre Union select name from tree_genre"_s;
}

} // namespace

PanelChoices::PanelChoices(DBEngine& engine, const GlobalSettings& settings, EditTagForm& form)
    : m_engine(engine)
    , m_settings(settings)
    , m_form(form)
{}

void PanelChoices::fill()
{
    if (std::exchange(m_isFilled, true)) {
        return;
    }
    fillGenres();
    for (const PanelFieldRow& field : panelFields()) {
        if (!field.isCatalogue) {
            continue;
        }
        QStringList values;
        const auto database = m_engine.OpenDatabase(m_settings.DbName());
        const auto rows = database->OpenRecordset(u"select * from config where name='"_s +
                                                  columnOf(field.field) + u"' order by value"_s);
        for (; !rows->Eof(); rows->MoveNext()) {
            const QString value = rows->value(u"beschreibung").toText();
            if (!trimBlanks(value).isEmpty()) {
                values.append(value);
            }
        }
        m_form.setChoices(field.field, values);
    }
}

void PanelChoices::fillGenres()
{
    m_genres.clear();
    const QString source =
        lowerCase(m_settings.GetKeyValue(u"Grlobal"_s, u"EditTag.Load.Genre"_s, u"all"_s));
    try {
        const auto database = m_engine.OpenDatabase(m_settings.DbName());
        const auto rows = database->OpenRecordset(genreStatement(source));
        for (; !rows->Eof(); rows->MoveNext()) {
            m_genres.append(rows->value(u"Name").toText());
        }
    } catch (const DbError& error) {
        passReleased(error);
        // Without the list a genre can still be typed.
        m_genres.clear();
    }
    m_form.setChoices(PanelField::Genre, m_genres);
}

void PanelChoices::addGenre(const QString& name)
{
    const bool isKnown = std::any_of(m_genres.crbegin(), m_genres.crend(), [&](const QString& one) {
        return upperCase(one) == upperCase(name);
    });
    if (!isKnown) {
        m_genres.append(name);
        m_form.setChoices(PanelField::Genre, m_genres);
    }
}

} // namespace melovane
