#pragma once

#include "platform/db/value.h"
#include "store/track_fields.h"

#include <QString>

#include <variant>

namespace melovane {

/// Where a record of ours, which holds some of the fields of a track, keeps one of them. A table of
/// these is the record's; reading and writing walk it.
template <typename Record> struct RecordField
{
    using Text = QString Record::*;
    using Number = int Record::*;

    TrackField field;
    std::variant<Text, Number> member;

    /// Null reads as the empty text or 0.
    void read(const Value& value, Record& record) const
    {
        if (const auto text = std::get_if<Text>(&member)) {
            record.** text = value.toText();
        } else {
            record.*std::get<Number>(member) = value.toLong();
        }
    }
};

} // namespace melovane
