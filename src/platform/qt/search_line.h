#pragma once

#include "platform/controls/search_box.h"

#include <QComboBox>

class QAction;

namespace melovane {

class IconSet;

/// The line that a search is typed into, `Text1`: a magnifier in front, a cross that empties it.
class SearchLine : public QComboBox, public SearchBox
{
    Q_OBJECT

public:
    explicit SearchLine(const IconSet& icons, QWidget* parent = nullptr);

    [[nodiscard]] QString text() const override;
    void setText(const QString& text) override;

    [[nodiscard]] QStringList list() const override;
    void setList(const QStringList& texts) override;

    /// Words for the cross.
    void setClearTip(const QString& tip);

    /// Gives it the keyboard and selects the text, so that typing begins anew.
    void focus() override;

signals:
    void textChanged(const QString& text);
    /// Enter, or a choice from the list.
    void entered(const QString& text);
    /// The user wants to go on to the list below.
    void downPressed();

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;

private:
    QAction* m_clear;
};

} // namespace melovane
