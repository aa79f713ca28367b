#pragma once

#include <QObject>
#include <QString>
#include <QStringList>

class QWidget;

namespace melovane {

/// Walks through the console's window as a user would, by key presses, and tells what it saw on the
/// standard output.
class Tour : public QObject
{
    Q_OBJECT

public:
    /// \param picture file that receives the picture of the window (PNG)
    /// \param stay leave the window open at the end
    Tour(QString picture, bool stay, QObject* parent = nullptr);

    /// Begins when the message loop turns.
    void start();

    /// 0 when each search found tracks and the picture was written.
    [[nodiscard]] int result() const { return m_result; }

private:
    void nextStep();
    void typeLetter();
    void finishSearch();
    void takePicture();
    void fail(const QString& reason);
    [[nodiscard]] QWidget* mainWindow() const;
    [[nodiscard]] int shownRows() const;

    QString m_picture;
    bool m_stay;
    QStringList m_searches;
    QString m_toType;
    int m_result = 0;
};

} // namespace melovane
