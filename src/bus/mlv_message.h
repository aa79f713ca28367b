#pragma once

#include "platform/db/value.h"

#include <QString>

class QObject;

namespace melovane {

/// A named message among the views.
///
/// Each view owns one and uses it again and again: its content is valid during delivery only. Who
/// needs the values after sending something copies them first (SetMessageValue).
class MLVMessage
{
public:
    // In the order of the suite's record: keep. What is spare travels with the message and has no
    // reader in the console.

    /// Spare: the object that a message is about. Not owned, valid during delivery.
    QObject* Source = nullptr;
    /// The name, such as "refresh.all". Receivers compare it in lower case.
    QString Command;
    qint32 Spare1 = 0;
    qint32 Spare2 = 0;
    /// The sending view; set once, when the view starts.
    QString Sender;

    // Arguments. One that the sender leaves out is null.
    Value Value1;
    Value Value2;
    Value Value3;
    Value Value4;

    QString Spare3;

    /// Takes the four values of another message; all else stays.
    void SetMessageValue(const MLVMessage& other)
    {
        Value1 = other.Value1;
        Value2 = other.Value2;
        Value3 = other.Value3;
        Value4 = other.Value4;
    }

    /// Makes the four values null.
    void ClearValue() { SetMessageValue({}); }

    /// Empty: where a debugger can stop at a message.
    void PrintValue() const {}
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
