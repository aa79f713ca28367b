#include "trackedit/ui/cover_frame.h"

#include "platform/qt/painted_face.h"

#include <QBuffer>
#include <QIcon>
#include <QImageReader>
#include <QKeyEvent>
#include <QLabel>
#include <QMouseEvent>
#include <QScrollBar>

#include <algorithm>

namespace melovane {

using namespace Qt::Literals::StringLiterals;

namespace {

/// The program's picture takes this part of the square, in hundredths.
constexpr int kOwnPart = 60;

} // namespace

CoverFrame::CoverFrame(QWidget* parent)
    : QScrollArea(parent)
    , m_image(new QLabel)
{
    setObjectName(u"ScrollFrame"_s);
    m_image->setObjectName(u"ImageX1"_s);
    m_image->setAlignment(Qt::AlignCenter);
    m_image->setAttribute(Qt::WA_TransparentForMouseEvents);
    horizontalScrollBar()->setObjectName(u"HScroll1"_s);
    verticalScrollBar()->setObjectName(u"VScroll1"_s);
    setFrameShape(QFrame::StyledPanel);
    setAlignment(Qt::AlignCenter);
    setWidget(m_image);
    setFocusPolicy(Qt::StrongFocus);
    setCursor(Qt::PointingHandCursor);
    setPaintedFace(*this, QAccessible::Button, [this] { emit picturePressed(); });
}

void CoverFrame::setPicture(const QByteArray& picture)
{
    QBuffer bytes;
    bytes.setData(picture);
    QImageReader reader(&bytes);
    reader.setAutoTransform(true);
    m_picture = picture.isEmpty() ? QImage() : reader.read();
    refresh();
}

void CoverFrame::setSide(int side)
{
    setFixedSize(side, side);
    refresh();
}

void CoverFrame::refresh()
{
    const double scale = devicePixelRatioF();
    const int side = qRound(width() * scale);
    QPixmap shown;
    if (m_picture.isNull()) {
        const int own = width() * kOwnPart / 100;
        shown = QIcon(u":/suite/melovane.svg"_s).pixmap(QSize(own, own), scale);
    } else {
        const QSize size = m_picture.size();
        const bool isSmall = std::min(size.width(), size.height()) <= side;
        const QSize wanted =
            isSmall ? size : size.scaled(side, side, Qt::KeepAspectRatioByExpanding);
        shown = QPixmap::fromImage(
            m_picture.scaled(wanted, Qt::IgnoreAspectRatio, Qt::SmoothTransformation));
        shown.setDevicePixelRatio(scale);
    }
    m_image->setPixmap(shown);
    m_image->resize(shown.deviceIndependentSize().toSize());
    const auto needed = [](bool isNeeded) {
        return isNeeded ? Qt::ScrollBarAsNeeded : Qt::ScrollBarAlwaysOff;
    };
    // A bar that takes room must not call for the other one.
    setHorizontalScrollBarPolicy(needed(m_image->width() > width()));
    setVerticalScrollBarPolicy(needed(m_image->height() > height()));
}

void CoverFrame::mouseReleaseEvent(QMouseEvent* event)
{
    if (event->button() == Qt::LeftButton && rect().contains(event->pos())) {
        emit picturePressed();
    }
}

void CoverFrame::keyPressEvent(QKeyEvent* event)
{
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter ||
        event->key() == Qt::Key_Space) {
        emit picturePressed();
        return;
    }
    QScrollArea::keyPressEvent(event);
}

} // namespace melovane
