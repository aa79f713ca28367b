#pragma once

#include <QObject>
#include <QString>

#include <vector>

class QWidget;

namespace melovane {

/// Walks through the console's window as a user would, by key presses, and tells what it saw on the
/// standard output.
class Tour : public QObject
{
    Q_OBJECT

public:
    /// \param picture file that receives the picture of the window (PNG); the list that is saved,
    ///        the folder of the export and the picture of its window stand beside it
    /// \param stay leave the window open at the end
    Tour(QString picture, bool stay, QObject* parent = nullptr);

    /// Begins when the message loop turns.
    void start();

    /// 0 when each search found tracks, the list holds the hits of the last one, was saved and
    /// exported with all of them, and the pictures were written.
    [[nodiscard]] int result() const { return m_result; }

private:
    using Step = void (Tour::*)();

    /// Runs the next step when the window has had its turn.
    void goOn();
    void nextStep();
    void search(const QString& text);
    void typeLetter();
    void finishSearch();

    // The steps.
    void searchInside();
    void searchBeginnings();
    void makeGroup();
    void makeList();
    void nameList();
    void openList();
    void appendHits();
    void saveList();
    void checkSavedList();
    void exportList();
    void answerExportWindow();
    void checkExport();
    void takePicture();

    void click(const QString& panel, const QString& button);
    void answerSaveDialog();
    void fail(const QString& reason);
    [[nodiscard]] QWidget* mainWindow() const;
    [[nodiscard]] int rowsOf(const QString& grid) const;

    QString m_picture;
    QString m_listFile;
    QString m_exportFolder;
    bool m_stay;
    std::vector<Step> m_steps; ///< still to come
    QString m_toType;
    int m_result = 0;
};

} // namespace melovane
