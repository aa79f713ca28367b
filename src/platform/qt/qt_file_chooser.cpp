#include "platform/qt/qt_file_chooser.h"

#include <QFileDialog>

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
    return QFileDialog::getOpenFileNames(m_window, question.title, question.start,
                                         filterOf(question));
}

QString QtFileChooser::saveFile(const FileQuestion& question)
{
    return QFileDialog::getSaveFileName(m_window, question.title, question.start,
                                        filterOf(question));
}

} // namespace melovane
