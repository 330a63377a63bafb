#include "secondwindow.h"

SecondWindow::SecondWindow(QWidget *parent)
    : QWidget(parent, Qt::Window)
{
    ui.setupUi(this);
    ui.tvOrders->expandAll();
    connect(ui.btnDone, &QPushButton::clicked, this, &QWidget::close);
}
