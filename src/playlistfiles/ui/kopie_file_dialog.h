#pragma once

#include "platform/qt/dialog_frame.h"
#include "playlistfiles/kopie_file.h"

class QButtonGroup;
class QLabel;
class QLineEdit;
class QListWidget;
class QPlainTextEdit;
class QProgressBar;

namespace melovane {

class IconSet;

/// The window of an export; made for one showing.
class KopieFileWindow : public DialogFrame
{
    Q_OBJECT

public:
    KopieFileWindow(frmKopieFile& logic, const ConfigObjects& texts);

    /// Escape does what the button does.
    void reject() override;

    // The controls that change while the window is open.
    QLabel* subject;
    QLineEdit* folder;
    QLabel* folderNote;
    QPushButton* cmdDir;
    QLineEdit* text1; ///< the template
    QLabel* preview;
    QListWidget* list1;
    QButtonGroup* fileOptions;
    QButtonGroup* folderOptions;
    QProgressBar* progressBar;
    QLabel* outcomePicture;
    QLabel* outcome;
    QPlainTextEdit* txProgress;
    QPushButton* cmdStart;
    QPushButton* cmdAbbruch;

protected:
    /// Makes it as large as its content, but never larger than the screen.
    void showEvent(QShowEvent* event) override;

    /// The close box closes the window, as soon as the logic has ended what goes on.
    void closeEvent(QCloseEvent* event) override;

private:
    [[nodiscard]] QLayout* makeFields(const ConfigObjects& texts);
    [[nodiscard]] QLayout* makeChoices(const ConfigObjects& texts);
    [[nodiscard]] QLayout*
    makeOptions(const ConfigObjects& texts, const QString& frame, QButtonGroup& group, int count);
    [[nodiscard]] QLayout* makeProgress(const ConfigObjects& texts);
    void connectLogic();

    frmKopieFile& m_logic;
};

/// The dialog `frmKopieFile`.
class KopieFileDialog : public KopieForm
{
public:
    KopieFileDialog(const IconSet& icons, const ConfigObjects& texts);

    void open(frmKopieFile& logic) override;
    void run() override;
    void close() override;
    void setSubject(const QString& sentence) override;
    void setTemplates(const QStringList& offered) override;
    void setFolder(const QString& folder) override;
    void setFolderNote(const QString& note, bool isGood) override;
    void setTemplate(const QString& text) override;
    void setPreview(const QString& text) override;
    void setOptions(std::optional<int> file, std::optional<int> folders) override;
    void setRunning(bool running) override;
    void setProgress(qint64 position, qint64 count) override;
    void setLog(const QString& text) override;
    void appendLog(const QString& line) override;
    void setOutcome(const QString& text, bool isGood) override;
    [[nodiscard]] std::optional<QString> chooseFolder(const QString& present) override;

private:
    const IconSet& m_icons;
    const ConfigObjects& m_texts;
    std::unique_ptr<KopieFileWindow> m_window;
};

} // namespace melovane
