#pragma once

#include <QtCore/QTimer>
#include <QtWidgets/QApplication>
#include <QtWidgets/QWidget>

#include <functional>

/// Runs @p check on the next modal dialog once it is up, so a test can look
/// at it and close it while exec() blocks.
inline void onNextModal(std::function<void(QWidget *)> check)
{
    auto *timer = new QTimer;
    timer->setInterval(10);
    QObject::connect(timer, &QTimer::timeout, [timer, check] {
        QWidget *modal = QApplication::activeModalWidget();
        if (!modal || !modal->isVisible())
            return;
        timer->stop();
        timer->deleteLater();
        check(modal);
    });
    timer->start();
}
