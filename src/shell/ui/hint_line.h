#pragma once

#include <QFrame>

class QLabel;
class QToolButton;

namespace melovane {

class ConfigObjects;
class IconSet;

/// One sentence for a newcomer, with a button that puts it away. Takes no room without a sentence.
class HintLine : public QFrame
{
    Q_OBJECT

public:
    /// \param icons outlives the line
    explicit HintLine(const IconSet& icons, QWidget* parent = nullptr);

    /// Empty for none.
    void setHint(const QString& hint);

    void translate(const ConfigObjects& texts);

signals:
    void putAway();

protected:
    void changeEvent(QEvent* event) override;

private:
    void showSign();

    const IconSet& m_icons;
    QLabel* m_sign;
    QLabel* m_words;
    QToolButton* m_button;
};

} // namespace melovane
