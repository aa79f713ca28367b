#include "platform/qt/empty_view.h"

#include "platform/qt/icon_set.h"

#include <QLabel>
#include <QPainter>
#include <QPushButton>
#include <QVBoxLayout>

namespace melovane {

using namespace Qt::Literals::StringLiterals;

namespace {

/// A large, pale icon that follows the theme.
class PictureLabel : public QWidget
{
public:
    PictureLabel(QIcon icon, int side, QWidget* parent)
        : QWidget(parent)
        , m_icon(std::move(icon))
    {
        setFixedSize(side, side);
    }

protected:
    void paintEvent(QPaintEvent*) override
    {
        QPainter painter(this);
        m_icon.paint(&painter, rect(), Qt::AlignCenter, QIcon::Disabled);
    }

private:
    QIcon m_icon;
};

QLabel* centredLabel(const QString& name, QWidget* parent)
{
    auto* label = new QLabel(parent);
    label->setObjectName(name);
    label->setAlignment(Qt::AlignHCenter | Qt::AlignTop);
    label->setTextFormat(Qt::PlainText);
    label->setWordWrap(true);
    return label;
}

} // namespace

EmptyView::EmptyView(const IconSet& icons, const QString& icon, QWidget* parent)
    : QWidget(parent)
    , m_picture(new PictureLabel(icons.icon(icon), fontMetrics().height() * 5 / 2, this))
    , m_title(centredLabel(u"EmptyTitle"_s, this))
    , m_text(centredLabel(u"EmptyText"_s, this))
    , m_button(new QPushButton(this))
{
    const int line = fontMetrics().height();
    QFont large = font();
    large.setPointSizeF(large.pointSizeF() * 1.15);
    large.setWeight(QFont::DemiBold);
    m_title->setFont(large);
    m_button->setObjectName(u"EmptyButton"_s);
    m_button->setCursor(Qt::PointingHandCursor);
    connect(m_button, &QPushButton::clicked, this, &EmptyView::buttonClicked);

    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(line, line, line, line);
    column->setSpacing(line / 2);
    column->addStretch(2);
    column->addWidget(m_picture, 0, Qt::AlignHCenter);
    column->addWidget(m_title);
    column->addWidget(m_text);
    column->addSpacing(line / 2);
    column->addWidget(m_button, 0, Qt::AlignHCenter);
    column->addStretch(3);
    setNote({});
}

void EmptyView::resizeEvent(QResizeEvent* event)
{
    QWidget::resizeEvent(event);
    fit();
}

void EmptyView::fit()
{
    constexpr int kLinesWithPicture = 12;
    constexpr int kLinesWithMargins = 8;
    const int line = fontMetrics().height();
    const int margin = height() >= kLinesWithMargins * line ? line : line / 4;
    layout()->setContentsMargins(line, margin, line, margin);
    layout()->setSpacing(margin / 2);
    m_picture->setVisible(height() >= kLinesWithPicture * line);
    // A sentence that has no room is read in the tool tip; half of it is read by nobody.
    m_text->setVisible(!m_note.text.isEmpty());
    layout()->invalidate();
    const bool hasRoom = layout()->totalHeightForWidth(width()) <= height();
    m_text->setVisible(!m_note.text.isEmpty() && hasRoom);
    setToolTip(hasRoom ? QString() : m_note.text.toHtmlEscaped());
}

void EmptyView::setQuiet()
{
    // The style sheet looks at it.
    setProperty("quiet", true);
    m_title->setFont(font());
}

void EmptyView::setNote(const EmptyNote& note)
{
    m_note = note;
    m_title->setText(note.title);
    m_text->setText(note.text);
    m_button->setText(note.button);
    m_button->setVisible(!note.button.isEmpty());
    fit();
}

} // namespace melovane
