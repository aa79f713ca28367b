#pragma once

#include <QStringList>

namespace melovane {

class DBEngine;
class EditTagForm;
class GlobalSettings;

/// The texts that the lists of the tag panel offer: genres, and the values of the catalogue. They
/// are read once for each library.
class PanelChoices
{
public:
    /// All outlive it.
    PanelChoices(DBEngine& engine, const GlobalSettings& settings, EditTagForm& form);

    /// Fills the lists of the form, unless that was done. A list of genres that cannot be read
    /// stays empty. \throws DbError, and what was read until then is offered
    void fill();

    /// Another library: the next fill() reads anew.
    void forget() { m_isFilled = false; }

    /// Offers a genre, unless one of that name is offered without regard to letter case.
    void addGenre(const QString& name);

private:
    void fillGenres();

    DBEngine& m_engine;
    const GlobalSettings& m_settings;
    EditTagForm& m_form;
    QStringList m_genres;
    bool m_isFilled = false;
};

} // namespace melovane
