#pragma once

#include "vexil_export.h"

#include <QtWidgets/QStyledItemDelegate>

/// Draws and edits the grid editor's cells: the key column looks fixed when
/// it cannot be edited, an in-place editor takes the font of its language,
/// and the table delimiter cannot be typed into a cell.
class VEXIL_EXPORT TvxCellDelegate : public QStyledItemDelegate
{
    Q_OBJECT
public:
    explicit TvxCellDelegate(QObject *parent = nullptr);

    void setDelimiter(QChar delim) { m_delim = delim; }
    void setFixedKeys(bool fixed) { m_fixedKeys = fixed; }

    QWidget *createEditor(QWidget *parent, const QStyleOptionViewItem &option, const QModelIndex &index) const override;

protected:
    void initStyleOption(QStyleOptionViewItem *option, const QModelIndex &index) const override;

private:
    QChar m_delim = QLatin1Char('\t');
    bool m_fixedKeys = true;
};
