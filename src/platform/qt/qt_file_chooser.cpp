#include "platform/qt/qt_file_chooser.h"

#include "platform/qt/file_dialogs.h"

namespace melovane {

using namespace Qt::Literals::StringLiterals;

namespace {

QString filterOf(const FileQuestion& question)
{
    return u"%1 (%2)"_s.arg(question.kind, question.patterns.join(u' '));
}

} // namespace

QStringList QtFileChooser::openFiles(const FileQuestion& question)
{
    return askFiles(m_window, question.title, question.start, filterOf(question));
}

QString QtFileChooser::saveFile(const FileQuestion& question)
{
    return askSaveFile(m_window, question.title, question.start, filterOf(question));
}

} // namespace melovane
