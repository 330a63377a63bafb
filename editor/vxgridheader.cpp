#include "vxgridheader.h"

#include <QtGui/QMouseEvent>
#include <QtGui/QPainter>

TvxGridHeader::TvxGridHeader(QWidget *parent)
    : QHeaderView(Qt::Horizontal, parent)
{
    setSectionsClickable(false); // the header draws its own pressed look
    setHighlightSections(false);
}

void TvxGridHeader::setSortColumn(int column)
{
    if (m_sortColumn == column)
        return;
    m_sortColumn = column;
    viewport()->update();
}

void TvxGridHeader::paintSection(QPainter *painter, const QRect &rect, int logicalIndex) const
{
    const QPalette &pal = palette();
    if (logicalIndex == m_pressed) {
        // Sunken: button face inside a frame dark at the top left.
        const QRect inner = rect.adjusted(1, 1, -1, -1);
        painter->fillRect(inner, pal.button());
        painter->setPen(pal.color(QPalette::Dark));
        painter->drawLine(inner.topLeft(), inner.topRight());
        painter->drawLine(inner.topLeft(), inner.bottomLeft());
        painter->setPen(pal.color(QPalette::Light));
        painter->drawLine(inner.bottomLeft(), inner.bottomRight());
        painter->drawLine(inner.topRight(), inner.bottomRight());
        painter->setPen(pal.color(QPalette::ButtonText));
        painter->drawText(inner.adjusted(3, 0, -3, 0), Qt::AlignVCenter | Qt::AlignLeft,
                          model() ? model()->headerData(logicalIndex, orientation()).toString() : QString());
    } else {
        QHeaderView::paintSection(painter, rect, logicalIndex);
    }
    if (logicalIndex == m_sortColumn) {
        // A small upward triangle at the right edge.
        const int r = rect.right();
        const int t = rect.top() + (rect.height() - 11) / 2;
        painter->save();
        painter->setPen(pal.color(QPalette::Light));
        painter->drawLine(r - 3, t + 11, r - 13, t + 11);
        painter->setPen(pal.color(QPalette::Dark));
        painter->drawLine(r - 13, t + 11, r - 8, t + 2);
        painter->setPen(pal.color(QPalette::Light));
        painter->drawLine(r - 8, t + 2, r - 3, t + 11);
        painter->restore();
    }
}

void TvxGridHeader::mousePressEvent(QMouseEvent *event)
{
    if (event->button() != Qt::RightButton) {
        const int x = int(event->position().x());
        const int column = logicalIndexAt(x);
        // A press on a column's edge resizes it instead.
        const int edge = column >= 0 ? sectionViewportPosition(column) + sectionSize(column) : 0;
        const bool onEdge = column >= 0 && sectionResizeMode(column) == QHeaderView::Interactive
            && (edge - x <= 3 || x - sectionViewportPosition(column) <= 3);
        if (column >= 0 && !onEdge) {
            m_pressed = column;
            viewport()->update();
        }
    }
    QHeaderView::mousePressEvent(event);
}

void TvxGridHeader::mouseReleaseEvent(QMouseEvent *event)
{
    QHeaderView::mouseReleaseEvent(event);
    if (event->button() == Qt::RightButton)
        return;
    const int pressed = m_pressed;
    m_pressed = -1;
    viewport()->update();
    if (pressed >= 0 && rect().contains(event->position().toPoint()))
        Q_EMIT sortRequested(pressed);
}
