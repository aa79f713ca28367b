#include "platform/qt/progress_dialog.h"

#include <QCoreApplication>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QVBoxLayout>

namespace melovane {

using namespace Qt::Literals::StringLiterals;

namespace {

/// Work that is over by then shows no window, in milliseconds.
constexpr qint64 kMoment = 400;
constexpr int kSteps = 1000;
/// Width of the text in letters; a longer one is shortened in its middle.
constexpr int kLetters = 60;

} // namespace

ProgressDialog::ProgressDialog(const QString& title, const QString& cancel)
    : DialogFrame(u"frmProgress"_s)
    , m_text(new QLabel(this))
    , m_bar(new QProgressBar(this))
{
    setWindowTitle(title);
    m_text->setObjectName(u"lblProgress"_s);
    m_text->setTextFormat(Qt::PlainText);
    m_text->setFixedWidth(fontMetrics().averageCharWidth() * kLetters);
    m_bar->setObjectName(u"ProgressBar1"_s);
    m_bar->setAccessibleName(title);
    m_bar->setRange(0, kSteps);
    m_bar->setTextVisible(false);
    column()->addWidget(m_text);
    column()->addWidget(m_bar);
    QPushButton* end = addButton(u"cmdCancel"_s, cancel, QDialog::Rejected);
    end->disconnect(this);
    connect(end, &QPushButton::clicked, this, &ProgressDialog::reject);
    m_age.start();
}

void ProgressDialog::reject()
{
    m_goesOn = false;
}

bool ProgressDialog::show(const QString& text, qint64 done, qint64 whole)
{
    m_text->setText(m_text->fontMetrics().elidedText(text, Qt::ElideMiddle, m_text->width()));
    m_bar->setValue(whole <= 0 ? 0 : int(qBound<qint64>(0, done, whole) * kSteps / whole));
    if (!isVisible() && m_age.elapsed() > kMoment) {
        QDialog::show();
    }
    // Until the window stands in front of the others nobody may click them.
    QCoreApplication::processEvents(isVisible() ? QEventLoop::AllEvents
                                                : QEventLoop::ExcludeUserInputEvents);
    return m_goesOn;
}

} // namespace melovane
