#include "platform/qt/file_dialogs.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileDialog>
#include <QFileIconProvider>
#include <QFileInfo>
#include <QHeaderView>
#include <QMimeDatabase>
#include <QScreen>
#include <QTreeView>

namespace melovane {

using namespace Qt::Literals::StringLiterals;

namespace {

/// Wide enough for the columns of names, kinds and dates.
constexpr int kWidth = 860;
constexpr int kHeight = 540;
/// At most so much of a small screen.
constexpr double kPart = 0.85;

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
        return entry.isDir() ? m_folderKind
                             : QMimeDatabase()
                                   .mimeTypeForFile(entry.fileName(), QMimeDatabase::MatchExtension)
                                   .comment();
    }

private:
    QIcon m_folder;
    QIcon m_file;
    QIcon m_drive;
    /// The toolkit's own word, in the language that its texts have.
    QString m_folderKind =
        QCoreApplication::translate("QAbstractFileIconProvider", "Folder", "All other platforms");
};

/// Where the user was last, for questions without a proposal.
QString& lastFolder()
{
    static QString folder;
    return folder;
}

/// The folder of a proposal, or the nearest above it that is there.
QString folderToShow(const QString& proposal)
{
    if (QDir::isRelativePath(proposal)) {
        return QFileInfo(lastFolder()).isDir() ? lastFolder() : QDir::homePath();
    }
    QFileInfo place(proposal);
    while (!place.isDir() && !place.isRoot()) {
        place.setFile(place.absolutePath());
    }
    return place.absoluteFilePath();
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
    // Those of the desktops read files in this process, too.
    dialog.setOption(QFileDialog::DontUseNativeDialog);
    dialog.setIconProvider(&kinds);
    dialog.setFileMode(question.mode);
    dialog.setAcceptMode(question.accept);
    dialog.setOption(QFileDialog::ShowDirsOnly, question.mode == QFileDialog::Directory);

    dialog.resize(QSize(kWidth, kHeight).boundedTo(dialog.screen()->availableSize() * kPart));
    if (auto* rows = dialog.findChild<QTreeView*>(u"treeView"_s)) {
        rows->header()->setSectionResizeMode(QHeaderView::ResizeToContents);
        rows->header()->setSectionResizeMode(0, QHeaderView::Stretch);
    }
    dialog.setDirectory(folderToShow(question.from));
    const QFileInfo proposal(question.from);
    if (question.mode == QFileDialog::AnyFile ? !proposal.isDir() : proposal.isFile()) {
        dialog.selectFile(proposal.fileName());
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
