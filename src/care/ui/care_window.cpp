#include "care/ui/care_window.h"

#include "care/ui/care_parts.h"
#include "config/config_objects.h"
#include "platform/system/timers.h"

#include <QCheckBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QScreen>
#include <QVBoxLayout>

namespace melovane {

using namespace Qt::Literals::StringLiterals;

namespace {

/// Width of the window in letters, at first.
constexpr int kWidth = 190;

/// How often the progress of the other thread is shown.
constexpr std::chrono::milliseconds kProgress{100};

} // namespace

CareWindow::CareWindow(const QString& name,
                       const QString& title,
                       int lines,
                       const ConfigObjects& texts,
                       MessageLoop& loop,
                       QWidget* parent)
    : QDialog(parent)
    , m_texts(texts)
    , m_loop(loop)
    , m_timer(loop.makeTimer(kProgress, [this] { showProgress(); }))
    , m_told(careparts::makeLabel(u"lblTold"_s, this, true))
    , m_progress(careparts::makeProgress(this))
    , m_cancel(careparts::makeButton(u"cmdAbbruch"_s, texts.text(u"find.close"_s), this))
{
    setObjectName(name);
    setWindowFlags(Qt::Window);
    setWindowModality(Qt::ApplicationModal);
    setWindowTitle(title);
    const QSize wanted(fontMetrics().averageCharWidth() * kWidth,
                       fontMetrics().lineSpacing() * lines);
    resize(wanted.boundedTo(screen()->availableSize() * 9 / 10));
}

CareWindow::~CareWindow() = default;

void CareWindow::buildFooter(QVBoxLayout& column,
                             QCheckBox* box,
                             QPushButton* button,
                             const std::function<void()>& act)
{
    auto* footer = new QWidget(this);
    footer->setObjectName(u"StatusBar1"_s);
    footer->setAttribute(Qt::WA_StyledBackground);
    auto* row = new QHBoxLayout(footer);
    row->setContentsMargins(14, 8, 14, 8);
    m_told->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    row->addWidget(box);
    row->addSpacing(12);
    row->addWidget(m_told, 1);
    row->addWidget(m_progress);
    row->addSpacing(12);
    row->addWidget(m_cancel);
    row->addWidget(button);
    column.addWidget(footer);
    // They were made before all else of the window.
    setTabOrder(box, m_cancel);
    setTabOrder(m_cancel, button);
    connect(m_cancel, &QPushButton::clicked, this, &CareWindow::reject);
    connect(button, &QPushButton::clicked, this, act);
}

bool CareWindow::beginWriting()
{
    const QString reason = whyNotNow ? whyNotNow() : QString();
    if (!reason.isEmpty()) {
        tell(reason);
        return false;
    }
    m_isWriting = true;
    m_isCancelled = false;
    showState();
    if (backUp && !backUp()) {
        endWriting();
        return false;
    }
    return true;
}

void CareWindow::endWriting()
{
    m_isWriting = false;
    showState();
}

bool CareWindow::goOn(int done, int size)
{
    setProgress(done, size);
    m_loop.turn();
    return !m_isCancelled;
}

void CareWindow::showReady(bool isReady)
{
    m_progress->setVisible(!isReady);
    m_cancel->setText(m_texts.text(isReady ? u"find.close"_s : u"find.cancel"_s));
}

void CareWindow::followWork(bool on)
{
    if (on) {
        m_timer->start();
    } else {
        m_timer->stop();
    }
}

void CareWindow::tell(const QString& text)
{
    m_told->setText(text);
}

void CareWindow::setProgress(int done, int size)
{
    m_progress->setRange(0, size);
    m_progress->setValue(done);
}

void CareWindow::reject()
{
    if (m_isWriting) {
        m_isCancelled = true;
    } else if (!endWork()) {
        QDialog::reject();
    }
}

} // namespace melovane
