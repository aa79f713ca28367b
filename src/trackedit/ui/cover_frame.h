#pragma once

#include <QByteArray>
#include <QImage>
#include <QScrollArea>

class QLabel;

namespace melovane {

/// The scroll frame with the cover, `ImageX1`. The picture is as wide as the frame, or as high
/// where it is broader than high; the scroll bars move what does not fit. Nothing is enlarged.
class CoverFrame : public QScrollArea
{
    Q_OBJECT

public:
    explicit CoverFrame(QWidget* parent = nullptr);

    /// \param picture a picture file; empty, or one that cannot be read, shows the program's own
    void setPicture(const QByteArray& picture);

    /// The side of the square.
    void setSide(int side);

    /// The picture shown is that of a track.
    [[nodiscard]] bool hasPicture() const { return !m_picture.isNull(); }

signals:
    /// A click, Enter or the space bar.
    void picturePressed();

protected:
    void mouseReleaseEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    void refresh();

    QLabel* m_image;
    QImage m_picture;
};

} // namespace melovane
