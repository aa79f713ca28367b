#include "platform/qt/file_dialogs.h"

#include <QDir>
#include <QFileDialog>
#include <QFileIconProvider>
#include <QFileInfo>
#include <QMimeDatabase>

namespace melovane {

using namespace Qt::Literals::StringLiterals;

namespace {

/// Asked on a thread of the toolkit: the pictures are made before.
class KindsByName : public QFileIconProvider
{
public:
    KindsByName()
        : m_folder(QFileIconProvider::icon(Folder))
        , m_file(QFileIconProvider::icon(File))
        , m_drive(QFileIconProvider::icon(Drive))
    {}

    using QFileIconProvider::icon;

    [[nodiscard]] QIcon icon(const QFileInfo& entry) const override
    {
        return entry.isRoot() ? m_drive : entry.isDir() ? m_folder : m_file;
    }

    [[nodiscard]] QString type(const QFileInfo& entry) const override
    {
        const QMimeDatabase kinds;
        return entry.isDir()
                   ? kinds.mimeTypeForName(u"inode/directory"_s).comment()
                   : kinds.mimeTypeForFile(entry.fileName(), QMimeDatabase::MatchExtension)
                         .comment();
    }

private:
    QIcon m_folder;
    QIcon m_file;
    QIcon m_drive;
};

/// Where the user was last, for questions without a proposal.
QString& lastFolder()
{
    static QString folder;
    return folder;
}

struct Question
{
    QString title;
    QString from;
    QString filter;
    QFileDialog::FileMode mode;
    QFileDialog::AcceptMode accept = QFileDialog::AcceptOpen;
};

QStringList ask(QWidget* owner, const Question& question)
{
    KindsByName kinds;
    // Without a folder of its own the dialog starts with the last one, before it knows our kinds.
    QFileDialog dialog(owner, question.title, QDir::rootPath(), question.filter);
    dialog.setIconProvider(&kinds);
    dialog.setFileMode(question.mode);
    dialog.setAcceptMode(question.accept);
    dialog.setOption(QFileDialog::ShowDirsOnly, question.mode == QFileDialog::Directory);

    const QString from = question.from.isEmpty() ? lastFolder() : question.from;
    if (from.isEmpty() || QFileInfo(from).isDir()) {
        dialog.setDirectory(from.isEmpty() ? QDir::currentPath() : from);
    } else {
        dialog.setDirectory(QFileInfo(from).absolutePath());
        dialog.selectFile(QFileInfo(from).fileName());
    }
    if (dialog.exec() != QDialog::Accepted) {
        return {};
    }
    lastFolder() = dialog.directory().absolutePath();
    return dialog.selectedFiles();
}

} // namespace

QString askFolder(QWidget* owner, const QString& title, const QString& from)
{
    return ask(owner, {.title = title, .from = from, .filter = {}, .mode = QFileDialog::Directory})
        .value(0);
}

QString askFile(QWidget* owner, const QString& title, const QString& from, const QString& filter)
{
    return ask(owner,
               {.title = title, .from = from, .filter = filter, .mode = QFileDialog::ExistingFile})
        .value(0);
}

QStringList
askFiles(QWidget* owner, const QString& title, const QString& from, const QString& filter)
{
    return ask(
        owner,
        {.title = title, .from = from, .filter = filter, .mode = QFileDialog::ExistingFiles});
}

QString
askSaveFile(QWidget* owner, const QString& title, const QString& from, const QString& filter)
{
    return ask(owner, {.title = title,
                       .from = from,
                       .filter = filter,
                       .mode = QFileDialog::AnyFile,
                       .accept = QFileDialog::AcceptSave})
        .value(0);
}

} // namespace melovane
