#pragma once

#include "platform/system/files.h"

namespace melovane {

/// Starts programs, also those whose path is known.
class Programs : public Processes
{
public:
    /// Starts exactly this program detached, never through a shell: a program named X.exe as it
    /// stands, then without ".exe". False when there is none.
    ///
    /// Processes::start guesses where the program of a line ends and so may start a file with a
    /// shorter path; it is for lines that the user has typed.
    ///
    /// \param program   path; its blanks and quotes are letters
    /// \param arguments separated by blanks, double quotes hold one together; blanks in front and
    ///                  behind mean nothing
    virtual bool
    startProgram(const QString& program, const QString& arguments, WindowStyle style) = 0;
};

} // namespace melovane
