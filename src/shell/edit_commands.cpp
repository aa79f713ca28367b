#include "shell/edit_commands.h"

#include "bus/message_names.h"
#include "config/config_objects.h"
#include "shell/mlvdb_parts.h"

namespace melovane {

using namespace Qt::Literals::StringLiterals;

std::span<const EditRow> editRows()
{
    static constexpr EditRow kRows[] = {
        {u"mnuPasteAppend", u"append", bus::kAllDbAppend, u"row.append.db", u"all.clip.append",
         u"row.append.pl"},
        {u"mnuPaste", u"insert", bus::kAllDbInsert, u"row.insert.db", u"all.clip.insert",
         u"row.insert.pl"},
        {u"mnuCopy", u"copy", u"all.copy", u"row.copy", u"all.copy", u"row.copy"},
        {u"mnuCut", u"cut", {}, {}, u"all.clip.cut", u"row.cut"},
        {u"mnuDelete", u"delete", u"all.delete", u"row.delete.db", u"all.delete", u"row.delete.pl"},
        {u"mnuSelectAll", u"selectall", u"all.data.select", u"mnuSelectAll", u"all.data.select",
         u"mnuSelectAll"},
    };
    return kRows;
}

const EditRow* editRow(QStringView name)
{
    for (const EditRow& row : editRows()) {
        if (row.name == name) {
            return &row;
        }
    }
    return nullptr;
}

EditCommands::EditCommands(Parts parts)
    : m_parts(parts)
{}

void EditCommands::run(const EditRow& row, EditPlace place) const
{
    switch (place) {
    case EditPlace::None:
        break;
    case EditPlace::Library:
        m_parts.library.press(row.library.toString());
        break;
    case EditPlace::Playlist:
        m_parts.playlist.press(row.playlist.toString());
        break;
    case EditPlace::Text:
        m_parts.menus.editText(row.name);
        break;
    }
}

QString EditCommands::whyNot(const EditRow& row, EditPlace place) const
{
    switch (place) {
    case EditPlace::None:
        break;
    case EditPlace::Library:
        return row.library.isEmpty() ? m_parts.texts.text(u"command.nocut"_s)
                                     : m_parts.library.whyNot(row.library, true);
    case EditPlace::Playlist:
        return m_parts.playlist.whyNot(row.playlist, true);
    case EditPlace::Text:
        return m_parts.menus.canEditText(row.name) ? QString()
                                                   : m_parts.texts.text(u"command.notext"_s);
    }
    return m_parts.texts.text(u"command.nofocus"_s);
}

void EditCommands::run(const EditRow& row) const
{
    run(row, m_parts.menus.editPlace());
}

QString EditCommands::whyNot(const EditRow& row) const
{
    return whyNot(row, m_parts.menus.editPlace());
}

} // namespace melovane
