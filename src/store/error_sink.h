#pragma once

#include "platform/db/db_error.h"
#include "platform/system/io_error.h"

#include <QString>

#include <functional>

namespace melovane {

/// Where quiet operations tell their failures: name of the operation and one sentence. An empty
/// function drops them.
using ErrorSink = std::function<void(const QString& where, const QString& what)>;

/// For a quiet trap: throws the error again when it is kReleased. \see quietly
inline void passReleased(const DbError& error)
{
    if (error.number() == dberror::kReleased) {
        throw error;
    }
}

/// Runs a step whose failure must not stop the ones behind it. A DbError or IoError ends the step
/// and goes to the sink; everything else passes. So does kReleased, behind the sink: the step has
/// not failed, it has to wait, and the user is told so by the guard of the event.
/// \return error number of the database, kDiskError for a failed file, 0 when all went well
template <typename Step> int quietly(const ErrorSink& sink, const QString& where, Step&& step)
{
    const auto tell = [&](const QString& what) {
        if (sink) {
            sink(where, what);
        }
    };
    try {
        step();
        return 0;
    } catch (const DbError& error) {
        tell(error.text());
        passReleased(error);
        return error.number();
    } catch (const IoError& error) {
        tell(QString::fromUtf8(error.what()));
        return dberror::kDiskError;
    }
}

} // namespace melovane
