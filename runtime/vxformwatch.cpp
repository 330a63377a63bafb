#include "vxformwatch.h"

#include "vxcomponents.h"

#include <QtCore/QEvent>

TvxFormWatch::TvxFormWatch(QObject *parent)
    : QObject(parent)
{
}

TvxFormWatch::~TvxFormWatch() = default;

quint64 &TvxFormWatch::componentsGeneration()
{
    static quint64 generation = 0;
    return generation;
}

std::shared_ptr<const TvxComponentList> TvxFormWatch::components(QObject *owner)
{
    if (m_list && !m_changed && m_list->owner() == owner && m_generation == componentsGeneration()
        && m_list->stillCurrent())
        return m_list;
    auto list = std::make_shared<const TvxComponentList>(owner);
    // Installing again moves the filter to the front; it is never doubled.
    for (QObject *entered : list->entered())
        entered->installEventFilter(this);
    m_list = std::move(list);
    m_generation = componentsGeneration();
    m_changed = false;
    return m_list;
}

bool TvxFormWatch::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::ChildAdded || event->type() == QEvent::ChildRemoved)
        m_changed = true;
    return QObject::eventFilter(watched, event);
}
