#pragma once

#include <QString>

namespace melovane {

/// Writes down how this process died, for those who mend the program.
///
/// After a fault (bad memory, abort, an error that nobody has caught, a full stack) a text file
/// tells program, release, moment, signal and the way that led there, as places in program and
/// libraries. It holds no texts of the user, no paths and no names of files. The process then ends
/// as it would have without this. One at a time; at its end the signals do again what they did.
class CrashFile
{
public:
    /// \param path    of the file, which is made when it comes to that; a report that stands there
    ///                goes on in it
    /// \param program name and release, one line
    CrashFile(const QString& path, const QString& program);
    ~CrashFile();
    CrashFile(const CrashFile&) = delete;
    CrashFile& operator=(const CrashFile&) = delete;
};

} // namespace melovane
