#include "vxdesignericons.h"

#include <QtGui/QPainter>
#include <QtGui/QPainterPath>
#include <QtGui/QPaintEvent>
#include <QtGui/QPixmap>
#include <QtWidgets/QWidget>

namespace VexilDesigner {

namespace {

QPixmap drawFlag(int size, const QColor &cloth, const QString &mark)
{
    QPixmap pixmap(size, size);
    pixmap.fill(Qt::transparent);
    QPainter p(&pixmap);
    p.setRenderHint(QPainter::Antialiasing);
    const qreal u = size / 24.0;
    // The pole.
    p.setPen(Qt::NoPen);
    p.setBrush(QColor(90, 70, 50));
    p.drawRect(QRectF(3 * u, 2 * u, 2 * u, 20 * u));
    // The cloth, with a swallow-tail fly.
    QPainterPath flag;
    flag.moveTo(5 * u, 3 * u);
    flag.lineTo(22 * u, 3 * u);
    flag.lineTo(18.5 * u, 9 * u);
    flag.lineTo(22 * u, 15 * u);
    flag.lineTo(5 * u, 15 * u);
    flag.closeSubpath();
    p.setBrush(cloth);
    p.setPen(QPen(cloth.darker(150), u));
    p.drawPath(flag);
    // The mark.
    QFont font;
    font.setBold(true);
    font.setPixelSize(qMax(6, int((mark.size() > 1 ? 6.5 : 9) * u)));
    p.setFont(font);
    p.setPen(cloth.lightnessF() > 0.6 ? Qt::black : Qt::white);
    p.drawText(QRectF(5 * u, 3 * u, 14 * u, 12 * u), Qt::AlignCenter, mark);
    return pixmap;
}

// Paints the icon over a hidden-at-run-time component while it sits on a
// form in the designer.
class DesignerFace : public QObject
{
public:
    DesignerFace(QWidget *component, const QIcon &icon) : QObject(component), m_icon(icon)
    {
        component->installEventFilter(this);
    }

    bool eventFilter(QObject *watched, QEvent *event) override
    {
        if (event->type() == QEvent::Paint) {
            auto *widget = static_cast<QWidget *>(watched);
            QPainter p(widget);
            const QRect r = widget->rect().adjusted(0, 0, -1, -1);
            p.fillRect(r, widget->palette().color(QPalette::Button));
            p.setPen(widget->palette().color(QPalette::Mid));
            p.drawRect(r);
            const int side = qMin(24, qMin(r.width(), r.height()) - 2);
            if (side > 0)
                m_icon.paint(&p, QRect(r.center().x() - side / 2 + 1, r.center().y() - side / 2 + 1, side, side));
            return true;
        }
        return false;
    }

private:
    QIcon m_icon;
};

} // namespace

QIcon flagIcon(const QColor &cloth, const QString &mark)
{
    QIcon icon;
    for (int size : {16, 24, 32, 48})
        icon.addPixmap(drawFlag(size, cloth, mark));
    return icon;
}

void showInDesigner(QWidget *component, const QIcon &icon)
{
    new DesignerFace(component, icon);
    component->setAttribute(Qt::WA_DontShowOnScreen, false);
    component->resize(28, 28);
    component->setVisible(true);
}

} // namespace VexilDesigner
