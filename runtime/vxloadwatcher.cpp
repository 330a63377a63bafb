#include "vxloadwatcher.h"

#include <QtCore/QEvent>
#include <QtCore/QTimer>
#include <QtWidgets/QWidget>

#include <exception>

TvxLoadWatcher::TvxLoadWatcher(QObject *owner, std::function<void()> onLoaded, QObject *parent)
    : QObject(parent)
    , m_owner(owner)
    , m_onLoaded(std::move(onLoaded))
{
    // Only a window that is still being built can be loading.
    auto *window = qobject_cast<QWidget *>(owner);
    if (!window || window->isVisible())
        return;
    m_loading = true;
    window->installEventFilter(this);
    QTimer::singleShot(0, this, &TvxLoadWatcher::finishFromEvent);
}

void TvxLoadWatcher::finishFromEvent()
{
    // Called from the event loop: nothing may be thrown past it.
    try {
        finish();
    } catch (const std::exception &e) {
        qWarning("Vexil: ending the load of a form failed: %s", e.what());
    } catch (...) {
        qWarning("Vexil: ending the load of a form failed");
    }
}

void TvxLoadWatcher::finish()
{
    if (!m_loading)
        return;
    m_loading = false;
    if (m_owner)
        m_owner->removeEventFilter(this);
    if (m_onLoaded)
        m_onLoaded();
}

bool TvxLoadWatcher::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == m_owner && event->type() == QEvent::Show)
        finishFromEvent();
    return QObject::eventFilter(watched, event);
}
