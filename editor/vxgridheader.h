#pragma once

#include "vexil_export.h"

#include <QtWidgets/QHeaderView>

/// The grid editor's column header: a click with any button but the right
/// one asks to sort by the column clicked, the column last sorted carries a
/// small upward mark, and a header held down with the mouse looks pressed.
class VEXIL_EXPORT TvxGridHeader : public QHeaderView
{
    Q_OBJECT
public:
    explicit TvxGridHeader(QWidget *parent = nullptr);

    /// The column whose mark is drawn, or -1.
    int sortColumn() const { return m_sortColumn; }
    void setSortColumn(int column);
    /// The column held down with the mouse, or -1.
    int pressedColumn() const { return m_pressed; }

Q_SIGNALS:
    void sortRequested(int column);

protected:
    void paintSection(QPainter *painter, const QRect &rect, int logicalIndex) const override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;

private:
    int m_sortColumn = -1;
    int m_pressed = -1;
};
