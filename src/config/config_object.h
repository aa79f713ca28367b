#pragma once

#include "platform/db/value.h"

#include <QString>

namespace melovane {

/// One named text of the catalogue, with or without a setting of the user.
class ConfigObject
{
public:
    QString Typ;  ///< kind of setting for a dialog, "Checkbox" or "Edit.Number"; else empty
    QString Name; ///< the key as it is written in the files
    QString ToolTip;
    QString Group; ///< of a setting: "Player", "other.settings", "Keys" ...; else empty
    QString Description;
    QString DescriptionEx; ///< a note, or choices "value#;label|value#;label"
    melovane::Value Value; ///< of a setting; null and the empty text mean none
    melovane::Value ValueLoaded;
    melovane::Value DefaultValue;
    bool HasValue = false; ///< whether this is a setting

    /// The text with `$1` to `$4` filled in, one after the other on the growing text: a value that
    /// holds "$3" given as p1 is expanded by a later pass. The two signs "\n" become a line feed.
    /// An empty text and the word "Null" give nothing.
    [[nodiscard]] QString GetDescription(const melovane::Value& p1 = {},
                                         const melovane::Value& p2 = {},
                                         const melovane::Value& p3 = {},
                                         const melovane::Value& p4 = {}) const;
    /// The same of the second text.
    [[nodiscard]] QString GetDescriptionEx(const melovane::Value& p1 = {},
                                           const melovane::Value& p2 = {},
                                           const melovane::Value& p3 = {},
                                           const melovane::Value& p4 = {}) const;
};

} // namespace melovane
