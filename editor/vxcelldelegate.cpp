#include "vxcelldelegate.h"

#include <QtGui/QRegularExpressionValidator>
#include <QtWidgets/QApplication>
#include <QtWidgets/QLineEdit>

TvxCellDelegate::TvxCellDelegate(QObject *parent)
    : QStyledItemDelegate(parent)
{
}

QWidget *TvxCellDelegate::createEditor(QWidget *parent, const QStyleOptionViewItem &option,
                                       const QModelIndex &index) const
{
    QWidget *editor = QStyledItemDelegate::createEditor(parent, option, index);
    const QVariant font = index.data(Qt::FontRole);
    if (editor && font.isValid())
        editor->setFont(font.value<QFont>());
    if (auto *line = qobject_cast<QLineEdit *>(editor)) {
        // The delimiter would cut the cell in two when the line is joined.
        const QString notDelim = QStringLiteral("[^") + QRegularExpression::escape(QString(m_delim)) + QStringLiteral("]*");
        line->setValidator(new QRegularExpressionValidator(QRegularExpression(notDelim), line));
    }
    return editor;
}

void TvxCellDelegate::initStyleOption(QStyleOptionViewItem *option, const QModelIndex &index) const
{
    QStyledItemDelegate::initStyleOption(option, index);
    if (index.column() == 0 && m_fixedKeys) {
        const QPalette pal = option->widget ? option->widget->palette() : QApplication::palette();
        option->backgroundBrush = pal.button();
    }
}
