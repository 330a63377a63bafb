#include "vxunusedwindow.h"

#include <QtCore/QPointer>
#include <QtWidgets/QHeaderView>
#include <QtWidgets/QTableWidget>
#include <QtWidgets/QVBoxLayout>

namespace {
QPointer<TvxUnusedIdsWindow> theWindow;
}

TvxUnusedIdsWindow::TvxUnusedIdsWindow(QWidget *parent) : QWidget(parent, Qt::Window)
{
    setObjectName(QStringLiteral("frmUnusedIds"));
    setAttribute(Qt::WA_DeleteOnClose);
    setWindowTitle(QStringLiteral("Unused string identifiers"));
    m_grid = new QTableWidget(0, 1, this);
    m_grid->setObjectName(QStringLiteral("sgUnused"));
    m_grid->setHorizontalHeaderLabels({QStringLiteral("String ID:")});
    m_grid->verticalHeader()->hide();
    m_grid->horizontalHeader()->setStretchLastSection(true);
    m_grid->setEditTriggers(QAbstractItemView::NoEditTriggers);
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(m_grid);
    resize(260, 320);
}

TvxUnusedIdsWindow *TvxUnusedIdsWindow::instance(QWidget *parent)
{
    if (!theWindow)
        theWindow = new TvxUnusedIdsWindow(parent);
    return theWindow;
}

TvxUnusedIdsWindow *TvxUnusedIdsWindow::existing()
{
    return theWindow;
}

void TvxUnusedIdsWindow::setIdentifiers(const QStringList &ids)
{
    m_grid->setRowCount(int(ids.size()));
    for (int i = 0; i < ids.size(); ++i)
        m_grid->setItem(i, 0, new QTableWidgetItem(ids.at(i)));
}

QStringList TvxUnusedIdsWindow::identifiers() const
{
    QStringList ids;
    for (int i = 0; i < m_grid->rowCount(); ++i)
        ids << m_grid->item(i, 0)->text();
    return ids;
}
