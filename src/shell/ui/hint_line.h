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
    explicit HintLine(const IconSet& icons, QWidget* parent = nullptr);

    /// Empty for none.
    void setHint(const QString& hint);

    void translate(const ConfigObjects& texts);

signals:
    void putAway();

private:
    QLabel* m_words;
    QToolButton* m_button;
};

} // namespace melovane
