#pragma once

#include "platform/db/value.h"

#include <QString>

namespace melovane {

/// A named message among the views.
///
/// Each view owns one and uses it again and again: its content is valid during delivery only. Who
/// needs the values after sending something copies them first (SetMessageValue).
class MLVMessage
{
public:
    /// The name, such as "refresh.all". Receivers compare it in lower case.
    QString Command;
    /// The sending view; set once, when the view starts.
    QString Sender;

    // Arguments. One that the sender leaves out is null.
    Value Value1;
    Value Value2;
    Value Value3;
    Value Value4;

    /// Takes the four values of another message; name and sender stay.
    void SetMessageValue(const MLVMessage& other)
    {
        Value1 = other.Value1;
        Value2 = other.Value2;
        Value3 = other.Value3;
        Value4 = other.Value4;
    }

    /// Makes the four values null.
    void ClearValue() { SetMessageValue({}); }
};

/// A failure that a part of the program reports to whoever listens.
class MLVErrorMessage
{
public:
    qint32 ErrorNumber = 0;
    QString ErrorDescription;
    QString ErrorSource;  ///< object or routine where it arose
    QString ErrorProgram; ///< part of the program that reports it
};

} // namespace melovane
