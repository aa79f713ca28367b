#pragma once

#include <QImage>
#include <QPixmap>
#include <QPointF>
#include <QWidget>

namespace melovane {

class Skin;

/// The dark ground on which a picture lies, as large as it has room or larger; a picture larger
/// than the stage is moved with the mouse. Without a picture a note stands there.
class SleeveStage : public QWidget
{
    Q_OBJECT

public:
    explicit SleeveStage(const Skin& skin, QWidget* parent = nullptr);

    /// Another picture is shown as a whole; the same one stays as it lies. Null for none.
    void setImage(const QImage& image);

    /// What stands in the middle without a picture; may be empty.
    void setNote(const QString& title, const QString& text);

    /// Whether the pointer says that a click does something.
    void setClickable(bool clickable);

    /// One step larger or smaller, about the middle; never smaller than the whole picture.
    void zoom(int steps);
    /// The whole picture.
    void fit();

    /// Length of a side as it is shown, to that of the whole picture in the stage.
    [[nodiscard]] double zoomFactor() const { return m_zoom; }

    [[nodiscard]] QSize sizeHint() const override;

signals:
    void clicked();
    /// The wheel was turned by so many notches; positive goes on.
    void stepped(int steps);

protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    [[nodiscard]] QRectF place() const;
    void zoomAbout(QPointF point, int steps);
    void keepOnStage();
    void paintNote(QPainter& painter) const;

    const Skin& m_skin;
    QImage m_image;
    QPixmap m_shown; ///< as large as it was painted last
    QString m_noteTitle;
    QString m_noteText;
    bool m_isClickable = false;
    double m_zoom = 1;
    QPointF m_shift; ///< of the picture's middle from that of the stage
    QPointF m_pressed;
    QPointF m_shiftAtPress;
    bool m_isPressed = false;
    bool m_isMoved = false; ///< since it was pressed: no click
    int m_turned = 0;       ///< eighths of a degree of the wheel that make no notch yet
};

} // namespace melovane
